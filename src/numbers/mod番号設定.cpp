#include "numbers/mod番号設定.h"

#include "numbers/番号表.h"
#include "shell/modデータ処理.h"

#include <QStringList>

namespace {

const 番号表& 伝票番号表() {
    static const 番号表 t{QStringLiteral("A番号情報"),
                          QStringLiteral("A期日別番号情報"),
                          QStringLiteral("A事業所別番号情報"),
                          QStringLiteral("A事業所別期日別番号情報"),
                          QStringLiteral("番号ID"),
                          QStringLiteral("連番"),
                          {QStringLiteral("連番"), QStringLiteral("履歴連番")},
                          QStringLiteral("番号情報に問題が発生設定できませんでした。"),
                          true};
    return t;
}

QString 今日(Context& ctx) { return ctx.sys.now().date().toString(QStringLiteral("yyyyMMdd")); }

// The series of the access records.
QString 閲覧番号ID() { return QStringLiteral("01110"); }

// How often a taken number is drawn anew before the row is written with it.
constexpr int 閲覧番号試行上限 = 1000;

} // namespace

QString 番号基準日get(Context& ctx, const QString& 番号ID, const QString& 日付) {
    const QString date = 日付 == QStringLiteral("99999999") ? 今日(ctx) : 日付;
    return 番号基準日choose(ctx, 伝票番号表(), 番号ID, date);
}

QString 番号get(Context& ctx, const QString& 番号ID, const QString& 基準日, const QString& 事業所コード) {
    return 番号採番(ctx, 伝票番号表(), 番号ID, 基準日, 事業所コード);
}

void 閲覧insert(Context& ctx, const QString& 閲覧情報, const QString& 伝票事業所コード, const QString& 伝票番号基準日付,
                const QString& 伝票No, const QString& キー項目) {
    const QString& 事業所コード = ctx.run.操作事業所コード;
    const QString 基準日 = 番号基準日get(ctx, 閲覧番号ID(), 今日(ctx));

    // Numbers are drawn without a lock, so another client may have used the
    // same one: draw again while T閲覧 already holds it.
    QString 閲覧No;
    bool taken = true;
    for (int i = 0; taken && i < 閲覧番号試行上限; ++i) {
        閲覧No = 番号get(ctx, 閲覧番号ID(), 基準日, ctx.env.運用事業所コード);
        db::Recordset rs;
        taken = 業務SQLopen(ctx, rs,
                            QStringLiteral("SELECT 閲覧No FROM T閲覧") + QStringLiteral(" WHERE 事業所コード = '") +
                                事業所コード + QLatin1Char('\'') + QStringLiteral(" AND 番号基準日付 = '") + 基準日 +
                                QLatin1Char('\'') + QStringLiteral(" AND 閲覧No = '") + 閲覧No + QLatin1Char('\''));
        rs.close();
    }
    if (taken)
        エラー履歴add(ctx, QStringLiteral("T閲覧の閲覧No「%1」(事業所コード %2、番号基準日付 %3) は%4回引き直しても"
                                          "使用済みのままです。この番号で書き込みます。")
                               .arg(閲覧No, 事業所コード, 基準日)
                               .arg(閲覧番号試行上限));

    // Each time value reads the clock anew.
    const QString 閲覧日付 = 今日(ctx);
    const QString 閲覧時刻 = ctx.sys.now().time().toString(QStringLiteral("hh:mm:ss"));
    const QString 登録日付 = ctx.sys.now().toString(QStringLiteral("yyyyMMdd hhmmss"));
    const QString ユーザID = ctx.terminal.ユーザID + ctx.op.操作担当者コード + ctx.terminal.コンピュータ名;

    // The values go in as they stand, without quote doubling.
    const QStringList 値{事業所コード,
                         基準日,
                         閲覧No,
                         閲覧日付,
                         閲覧時刻,
                         ctx.op.操作担当者コード,
                         ctx.op.氏名,
                         閲覧情報,
                         伝票事業所コード,
                         伝票番号基準日付,
                         伝票No,
                         キー項目,
                         QStringLiteral("0"), // 閲覧区分
                         QString(),           // 閲覧メモ
                         QString(),           // 承認日付
                         QString(),           // 承認者コード
                         QStringLiteral("0"), // 承認区分
                         ユーザID,
                         登録日付,
                         QString()}; // 更新日付
    業務SQLexec(
        ctx, QStringLiteral("INSERT INTO [T閲覧] ") + QStringLiteral("([事業所コード]") +
                 QStringLiteral(",[番号基準日付]") + QStringLiteral(",[閲覧No]") + QStringLiteral(",[閲覧日付]") +
                 QStringLiteral(",[閲覧時刻]") + QStringLiteral(",[担当者コード]") + QStringLiteral(",[担当者名]") +
                 QStringLiteral(",[閲覧情報]") + QStringLiteral(",[伝票事業所コード]") +
                 QStringLiteral(",[伝票番号基準日付]") + QStringLiteral(",[伝票No]") + QStringLiteral(",[キー項目]") +
                 QStringLiteral(",[閲覧区分]") + QStringLiteral(",[閲覧メモ]") + QStringLiteral(",[承認日付]") +
                 QStringLiteral(",[承認者コード]") + QStringLiteral(",[承認区分]") + QStringLiteral(",[ユーザID]") +
                 QStringLiteral(",[登録日付]") + QStringLiteral(",[更新日付])") + QStringLiteral(" VALUES ") +
                 QStringLiteral("('") + 値.join(QStringLiteral("','")) + QStringLiteral("')"));
}
