// The shell's part of the start of the program.

#include "shell/mod起動.h"

#include "shell/modデータ処理.h"
#include "toolkit/項目移動.h"

bool データ処理init(Context& ctx) {
    画面解像度get(ctx.screen.画面幅, ctx.screen.画面高);
    ctx.run.稼動連番 = 0;
    const QString コマンド = ctx.sys.commandLine().trimmed();
    ctx.run.起動コマンド = コマンド;

    if (!環境DBopen(ctx))
        return false;
    開始履歴add(ctx);
    // A request of another program is taken only within a minute of its sending.
    const QString 基準日時 = ctx.sys.now().addSecs(-60).toString(QStringLiteral("yyyyMMdd HHmmss"));
    連携受信read(ctx, コマンド, 基準日時);
    // The old history rows are purged by the menu program, not here.
    return 業務DBopen(ctx);
}

void 担当者条件項目set(Context& ctx) {
    QString sql = QStringLiteral("UPDATE 営業支援データ管理 SET ");
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        const QString value = letter == u'A'   ? QStringLiteral("事業所コード")
                              : letter == u'B' ? QStringLiteral("担当者コード")
                                               : QString();
        sql += QStringLiteral(" 条件項目名") + QChar(letter) + QStringLiteral(" = '") + value +
               (letter == u'Z' ? QStringLiteral("'") : QStringLiteral("',"));
    }
    sql += QStringLiteral(" WHERE プログラムID = '") + ctx.プログラムID + QStringLiteral("'");
    if (!環境SQLexec(ctx, sql))
        ctx.msg.show(QStringLiteral("システムデータベースに問題があり登録できません"), ui::Buttons::Ok, 1);
}

void 起動コマンドparse(Context& ctx) {
    const QString line = ctx.sys.commandLine().trimmed();
    auto& s = ctx.screen;
    s.単独起動フラグ = false;
    s.新規フラグ = true;
    if (line.size() > 0) {
        ctx.run.操作事業所コード = line.left(3);
        ctx.担当者情報.コード = line.mid(3, 5);
        if (ctx.担当者情報.コード.size() > 0) {
            s.単独起動フラグ = true;
            s.新規フラグ = false;
        }
    }
}
