// The program link: another program of the suite starts this one with a
// request row and reads the answer row that this run leaves at its end.

#include "shell/modデータ処理.h"

namespace {

QString 日時(const Context& ctx) {
    return ctx.sys.now().toString(QStringLiteral("yyyyMMdd HHmmss"));
}

} // namespace

void 連携受信read(Context& ctx, const QString& コマンド, const QString& 基準日時) {
    連携受信read(
        ctx, コマンド, 基準日時, [&ctx](db::Recordset& rs, const QString& sql) { return 環境SQLopen(ctx, rs, sql); },
        [&ctx](const QString& sql) { return 環境SQLexec(ctx, sql); });
}

void 連携受信read(Context& ctx, const QString& コマンド, const QString& 基準日時, const 環境SQL読込& 読込,
                  const 環境SQL実行& 実行) {
    ctx.link.発信プログラムID.clear();
    db::Recordset rs;
    const QString sql = QStringLiteral("SELECT * FROM プログラム連携情報") + QStringLiteral(" WHERE 発信日時 >= '") +
                        基準日時 + QStringLiteral("'") + QStringLiteral(" AND 受信プログラムID = '") + ctx.プログラムID +
                        QStringLiteral("'") + QStringLiteral(" AND 起動連携情報 = '") + コマンド + QStringLiteral("'") +
                        QStringLiteral(" AND 連携区分 = '00'");
    if (読込(rs, sql)) {
        const QString sent = rs.field(QStringLiteral("発信日時")).text();
        const QString sender = rs.field(QStringLiteral("発信プログラムID")).text();
        const QString receiver = rs.field(QStringLiteral("受信プログラムID")).text();
        ctx.link.発信プログラムID = sender;
        ctx.link.起動連携情報 = rs.field(QStringLiteral("起動連携情報")).text();
        rs.close();
        // The request is taken by the first program that finds it.
        実行(QStringLiteral("DELETE FROM プログラム連携情報") + QStringLiteral(" WHERE 発信日時 = '") + sent +
             QStringLiteral("'") + QStringLiteral(" AND 発信プログラムID = '") + sender + QStringLiteral("'") +
             QStringLiteral(" AND 受信プログラムID = '") + receiver + QStringLiteral("'") +
             QStringLiteral(" AND 連携区分 = '00'"));
    }
    rs.close();
}

void 連携応答send(Context& ctx, const QString& 終了文) {
    起動担当者read(ctx);
    ctx.link.終了連携情報 = 終了文;
    const QString stamp = QStringLiteral("'") + 日時(ctx) + QStringLiteral("'");
    // The texts go in as they stand: a quote in one of them loses the answer.
    const QString sql =
        QStringLiteral("INSERT INTO プログラム連携情報 (") + QStringLiteral("発信日時,") +
        QStringLiteral("発信プログラムID,") + QStringLiteral("受信プログラムID,") + QStringLiteral("受信期限,") +
        QStringLiteral("連携区分,") + QStringLiteral("起動連携情報,") + QStringLiteral("終了連携情報,") +
        QStringLiteral("運用事業所コード,") + QStringLiteral("起動担当者コード,") + QStringLiteral("ユーザID)") +
        QStringLiteral("VALUES (") + stamp + QStringLiteral(", '") + ctx.link.発信プログラムID + QStringLiteral("', '") +
        ctx.プログラムID + QStringLiteral("', ") + stamp + QStringLiteral(", '") + QStringLiteral("99") +
        QStringLiteral("', '") + ctx.link.起動連携情報 + QStringLiteral("', '") + 終了文 + QStringLiteral("', '") +
        ctx.env.運用事業所コード + QStringLiteral("', '") + ctx.op.操作担当者コード + QStringLiteral("', '") +
        ctx.terminal.ユーザID + QStringLiteral("')");
    環境SQLexec(ctx, sql);
    環境DBreopen(ctx);
}
