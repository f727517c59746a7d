#include "numbers/mod基本履歴番号.h"

#include "numbers/番号表.h"

namespace {

const 番号表& 履歴番号表() {
    static const 番号表 t{QStringLiteral("B履歴番号情報"),
                          QStringLiteral("B期日別履歴番号情報"),
                          QStringLiteral("B事業所別履歴番号情報"),
                          QStringLiteral("B事業所別期日別履歴番号情報"),
                          QStringLiteral("基本ID"),
                          QStringLiteral("履歴連番"),
                          {QStringLiteral("履歴連番")},
                          QStringLiteral("履歴番号情報に問題が発生設定できませんでした。"),
                          false};
    return t;
}

} // namespace

QString 履歴基準日get(Context& ctx, const QString& 基本ID) {
    return 番号基準日choose(ctx, 履歴番号表(), 基本ID, ctx.sys.now().date().toString(QStringLiteral("yyyyMMdd")));
}

QString 履歴番号get(Context& ctx, const QString& 基本ID, const QString& 基準日, const QString& 事業所コード) {
    return 番号採番(ctx, 履歴番号表(), 基本ID, 基準日, 事業所コード);
}
