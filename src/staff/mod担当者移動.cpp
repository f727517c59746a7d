// Next and previous staff member, and the next free code.

#include "staff/mod担当者移動.h"

#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"
#include "toolkit/mod項目編集.h"

namespace {

// The office clause: the head office walks through all offices.
QString 事業所条件(const Context& ctx) {
    if (ctx.run.操作事業所コード == ゼロ列make(3))
        return QString();
    return QStringLiteral(" AND M担当者.事業所コード = '") + ctx.run.操作事業所コード + QStringLiteral("'");
}

// The neighbour's code from a finished statement; the code itself when the
// statement finds nothing or cannot be run.
QString 隣get(Context& ctx, const QString& sql, const QString& コード) {
    db::Recordset rs;
    QString found = コード;
    if (業務SQLopen(ctx, rs, sql))
        found = rs.field(QStringLiteral("コード")).text();
    rs.close();
    return found;
}

// Other dialects have no statement: there is no neighbour to find.
bool 既知の方言(const QString& db) {
    return db == QLatin1String("A") || db == QLatin1String("S") || db == QLatin1String("O");
}

// One step in either direction, with its question.
void 移動(Context& ctx, frm担当者登録& f, const QString& 次, const QString& 問い) {
    if (次 != f.コード->text()) {
        bool go = true;
        if (ctx.screen.入力フラグ)
            go = ctx.msg.show(QStringLiteral("入力がありました。") + QChar(13) + 問い, ui::Buttons::YesNo, 1) ==
                 ui::Answer::Yes;
        if (go) {
            // A row removed by someone else in between leaves the screen as it was.
            if (担当者get(ctx, 次))
                担当者set(ctx);
            担当者show(ctx, f);
            画面状態set(ctx, f);
        }
    }
    f.お知らせ->setText(QString());
    項目focus(ctx, 空白(f.コード->text()) ? ctx.screen.先頭項目 : static_cast<QWidget*>(f.姓));
}

} // namespace

QString 次担当者get(Context& ctx, const QString& コード) {
    const QString& db = ctx.conn.db;
    if (!既知の方言(db))
        return コード;
    // The desktop dialect's table name keeps a blank behind it.
    const QString from = db == QLatin1String("A") ? QStringLiteral(" FROM M担当者 ") : QStringLiteral(" FROM M担当者");
    return 隣get(ctx,
                 QStringLiteral("SELECT TOP 1 M担当者.コード ") + from + QStringLiteral(" WHERE M担当者.コード > '") +
                     コード + QStringLiteral("'") + 事業所条件(ctx) + QStringLiteral(" ORDER BY M担当者.コード"),
                 コード);
}

QString 前担当者get(Context& ctx, const QString& コード) {
    if (!既知の方言(ctx.conn.db))
        return コード;
    return 隣get(ctx,
                 QStringLiteral("SELECT TOP 1 M担当者.コード") + QStringLiteral(" FROM M担当者") +
                     QStringLiteral(" WHERE M担当者.コード < '") + コード + QStringLiteral("'") + 事業所条件(ctx) +
                     QStringLiteral(" ORDER BY M担当者.コード DESC"),
                 コード);
}

void 最新コードset(Context& ctx) {
    const QString mask = QStringLiteral("00000");
    担当者情報型& r = ctx.担当者情報;
    r.コード.clear();
    const QString upper = 範囲上限make(mask, static_cast<short>(mask.size()));
    db::Recordset rs;
    QString last;
    if (業務SQLopen(ctx, rs,
                    QStringLiteral("SELECT TOP 1 コード") + QStringLiteral(" FROM M担当者") +
                        QStringLiteral(" WHERE コード <= '") + upper + QStringLiteral("'") +
                        QStringLiteral(" ORDER BY コード DESC")))
        last = rs.field(QStringLiteral("コード")).text().left(5);
    rs.close();
    if (last == upper) {
        ctx.msg.show(QStringLiteral("最大値のコードが登録済です。") + QChar(13) +
                     QStringLiteral("未使用のコードを指定してください。"));
        return;
    }
    // Gaps are not looked for: the series goes on from its highest code.
    r.コード = last.isEmpty() ? コードfmt(QStringLiteral("1"), mask)
                              : コードfmt(QString::number(static_cast<qint64>(数値(last)) + 1), mask);
    ctx.screen.新規フラグ = true;
    ctx.screen.入力フラグ = true;
}

void btn_前進_Click(Context& ctx, frm担当者登録& f) {
    移動(ctx, f, 次担当者get(ctx, f.コード->text()), QStringLiteral("クリアし前進しますか？"));
}

void btn_後退_Click(Context& ctx, frm担当者登録& f) {
    移動(ctx, f, 前担当者get(ctx, f.コード->text()), QStringLiteral("クリアし後退しますか？"));
}

void btn_最新コード_Click(Context& ctx, frm担当者登録& f) {
    // No question, however much was typed: only the code changes.
    最新コードset(ctx);
    担当者show(ctx, f);
    画面初期set(ctx, f);
    項目focus(ctx, ctx.screen.先頭項目);
}
