// The run history (プログラム稼動履歴, configuration database) and the usage
// row of this computer and user (使用状況, main database).

#include "shell/modデータ処理.h"

#include "toolkit/mod項目編集.h"

namespace {

QString 日時(const Context& ctx) {
    return ctx.sys.now().toString(QStringLiteral("yyyyMMdd HHmmss"));
}

// Builds and runs one history row straight on the configuration connection.
// Its counter is raised also for a row that then fails to be written.
bool 履歴行add(Context& ctx, const QString& 摘要) {
    ctx.run.稼動連番 += 1;
    const QString counter = QStringLiteral("%1").arg(static_cast<qint64>(ctx.run.稼動連番), 12, 10, QLatin1Char('0'));
    const QString sql = QStringLiteral("INSERT INTO プログラム稼動履歴 (") + QStringLiteral("実行日付,") +
                        QStringLiteral("プログラムID,") + QStringLiteral("proccounter,") + QStringLiteral("摘要,") +
                        QStringLiteral("運用事業所コード,") + QStringLiteral("起動担当者コード,") +
                        QStringLiteral("ユーザID)") + QStringLiteral("VALUES (") + QStringLiteral("'") + 日時(ctx) +
                        QStringLiteral("'") + QStringLiteral(", '") + ctx.プログラムID + QStringLiteral("', '") +
                        counter + QStringLiteral("', '") + 摘要 + QStringLiteral("', '") + ctx.env.運用事業所コード +
                        QStringLiteral("', '") + ctx.op.操作担当者コード + QStringLiteral("', '") +
                        ctx.terminal.ユーザID + QStringLiteral("')");
    return ctx.conn.環境DB接続.execute(sql);
}

QString 使用状況条件(const Context& ctx) {
    return QStringLiteral(" WHERE コンピュータID = '") + ctx.terminal.コンピュータ名 + QStringLiteral("'") +
           QStringLiteral(" AND ユーザID = '") + ctx.terminal.ユーザ名 + QStringLiteral("'");
}

// The usage row at the start (開始日時) or at the end (終了日時) of a run.
void 使用状況set(Context& ctx, bool 開始) {
    const QString where = 使用状況条件(ctx);
    db::Recordset rs;
    const bool exists = 業務SQLopen(ctx, rs, QStringLiteral("SELECT * FROM 使用状況") + where);
    rs.close();
    const QString stamp = 日時(ctx);
    QString sql;
    if (exists) {
        sql = QStringLiteral("UPDATE 使用状況 SET") + QStringLiteral(" プログラムID = '") + ctx.プログラムID +
              QStringLiteral("',") + (開始 ? QStringLiteral(" 開始日時 = '") : QStringLiteral(" 終了日時 = '")) + stamp +
              QStringLiteral("'") + where;
    } else {
        sql = QStringLiteral("INSERT INTO 使用状況 (") + QStringLiteral("コンピュータID,") + QStringLiteral("ユーザID,") +
              QStringLiteral("プログラムID,") + QStringLiteral("開始日時,") + QStringLiteral("終了日時)") +
              QStringLiteral("VALUES ('") + ctx.terminal.コンピュータ名 + QStringLiteral("', '") +
              ctx.terminal.ユーザ名 + QStringLiteral("', '") + ctx.プログラムID + QStringLiteral("', '") +
              (開始 ? stamp : QString()) + QStringLiteral("', '") + (開始 ? QString() : stamp) + QStringLiteral("')");
    }
    業務SQLexec(ctx, sql, false);
}

} // namespace

void 開始履歴add(Context& ctx) {
    起動担当者read(ctx);
    履歴行add(ctx, QStringLiteral("開始 ") + 引用符conv(ctx.run.起動コマンド));
}

void 終了履歴add(Context& ctx) {
    if (履歴行add(ctx, QStringLiteral("終了")))
        使用状況終了set(ctx);
}

void 出力終了履歴add(Context& ctx, const QString& 文) {
    履歴行add(ctx, QStringLiteral("出力終了 ") + 引用符conv(引用符conv(文)));
}

void エラー履歴add(Context& ctx, const QString& 文) {
    履歴行add(ctx, QStringLiteral("エラー ") + 引用符conv(引用符conv(文)));
}

void 使用状況開始set(Context& ctx) {
    使用状況set(ctx, true);
}

void 使用状況終了set(Context& ctx) {
    使用状況set(ctx, false);
}

void 使用状況整理(Context& ctx) {
    const QString date = ctx.sys.now().date().addMonths(-1).toString(QStringLiteral("yyyyMMdd"));
    業務SQLexec(ctx,
                QStringLiteral("DELETE FROM 使用状況") + QStringLiteral(" WHERE 終了日時 < '") + date +
                    QStringLiteral("' AND 終了日時 <> ''"),
                false);
    使用状況開始set(ctx);
}

void 履歴purge(Context& ctx) {
    struct Target {
        const char* table;
        const char* column;
        bool months; // six months back, or three days
    };
    static const Target targets[] = {
        {"プログラム稼動履歴", "実行日付", true},
        {"プログラム連携情報", "発信日時", false},
        {"プログラムクリップボード", "貼付日時", false},
        {"プログラムクリップボード明細", "貼付日時", false},
    };
    for (const Target& t : targets) {
        const auto bound = [&] {
            const QDateTime now = ctx.sys.now();
            return (t.months ? now.addMonths(-6) : now.addDays(-3)).toString(QStringLiteral("yyyyMMdd HHmmss"));
        };
        const QString table = QString::fromUtf8(t.table);
        const QString where =
            QStringLiteral(" WHERE ") + QString::fromUtf8(t.column) + QStringLiteral(" <= ") + QStringLiteral("'");
        db::Recordset rs;
        const bool old = 環境SQLopen(ctx, rs, QStringLiteral("SELECT *") + QStringLiteral(" FROM ") + table + where +
                                                  bound() + QStringLiteral("'"));
        rs.close();
        if (old)
            環境SQLexec(ctx, QStringLiteral("DELETE FROM ") + table + where + bound() + QStringLiteral("'"));
    }
}
