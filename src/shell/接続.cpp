// Folders and database connections: where the program finds its places and
// the two connections of the run, and the five routines every statement goes through.

#include "shell/modデータ処理.h"

#include "platform/os/files.h"
#include "shell/値変換.h"

namespace {

const QString& sep() {
    return パス区切り();
}

// Connection settings of both connections.
void 接続設定(db::Connection& cn) {
    cn.connectionTimeout = 60;
    cn.commandTimeout = 30000;
    cn.cursorLocation = 3;
}

QString 環境DB接続文字列(short 種別, const QString& パス) {
    const QString provider = 種別 == 1 ? QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;")
                                       : QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;");
    return provider + QStringLiteral("User ID=;") + QStringLiteral("Password=;") + QStringLiteral("Data Source=") + パス;
}

bool containsIgnoringCase(const QString& text, const QString& word) {
    return text.contains(word, Qt::CaseInsensitive);
}

// The rows of a statement that found its server connection lost: the loss,
// with the statement, and then whether the one reopen worked.
void 接続回復履歴add(Context& ctx, const db::Recovery& r, const QString& sql) {
    if (!r.lost)
        return;
    エラー履歴add(ctx, sql + r.loss.description);
    if (r.reopened)
        エラー履歴add(ctx, QStringLiteral("DB_REOPEN 接続を開き直しました。文を実行し直します。"));
    else
        エラー履歴add(ctx, QStringLiteral("DB_REOPEN ERROR") + QString::number(r.reopenError.number) +
                                QLatin1Char(' ') + r.reopenError.description);
}

// The error row of a failed statement. When the loss of the connection was
// its failure and no reopen followed, the loss row has said it already.
void 文エラー履歴add(Context& ctx, const db::Recovery& r, const QString& sql, const db::Error& e) {
    if (!r.lost || r.reopened)
        エラー履歴add(ctx, sql + e.description);
}

} // namespace

bool 業務SQLopen(Context& ctx, db::Recordset& rs, const QString& sql, bool 履歴) {
    const bool ok = rs.open(sql, ctx.conn.業務DB接続);
    接続回復履歴add(ctx, rs.lastRecovery(), sql);
    if (!ok) {
        文エラー履歴add(ctx, rs.lastRecovery(), sql, rs.lastError());
        return false;
    }
    if (履歴)
        出力終了履歴add(ctx, sql);
    return !rs.bof() && !rs.eof();
}

bool 業務SQLexec(Context& ctx, const QString& sql, bool 履歴) {
    db::Connection& cn = ctx.conn.業務DB接続;
    const bool ok = cn.execute(sql);
    const db::Recovery r = cn.lastRecovery();
    const db::Error e = cn.lastError();
    接続回復履歴add(ctx, r, sql);
    if (!ok) {
        文エラー履歴add(ctx, r, sql, e);
        return false;
    }
    if (履歴)
        出力終了履歴add(ctx, sql);
    return true;
}

bool 環境SQLopen(Context& ctx, db::Recordset& rs, const QString& sql) {
    const bool ok = rs.open(sql, ctx.conn.環境DB接続);
    // A failing history write must not log itself without end.
    const bool 記録 = !containsIgnoringCase(sql, QStringLiteral("プログラム稼動履歴"));
    if (記録)
        接続回復履歴add(ctx, rs.lastRecovery(), sql);
    if (!ok) {
        if (記録)
            文エラー履歴add(ctx, rs.lastRecovery(), sql, rs.lastError());
        return false;
    }
    return !rs.bof() && !rs.eof();
}

bool 環境SQLexec(Context& ctx, const QString& sql) {
    db::Connection& cn = ctx.conn.環境DB接続;
    const bool ok = cn.execute(sql);
    const db::Recovery r = cn.lastRecovery();
    const db::Error e = cn.lastError();
    if (!containsIgnoringCase(sql, QStringLiteral("プログラム稼動履歴"))) {
        接続回復履歴add(ctx, r, sql);
        if (!ok)
            文エラー履歴add(ctx, r, sql, e);
    }
    return ok;
}

bool 環境SQL記録exec(Context& ctx, const QString& sql) {
    const bool ok = 環境SQLexec(ctx, sql);
    出力終了履歴add(ctx, sql);
    return ok;
}

bool 環境DBopen(Context& ctx) {
    auto& f = ctx.folders;
    auto& c = ctx.conn;

    ctx.terminal.ユーザ名 = ctx.sys.userName();
    ctx.terminal.コンピュータ名 = ctx.sys.computerName();
    ctx.terminal.ユーザID = ctx.terminal.ユーザ名;

    // The root is the part of the program's folder in front of "prgbin" (or "prgsrc").
    const QString folder = ctx.sys.programFolder();
    qsizetype p = folder.indexOf(QStringLiteral("prgbin"), 0, Qt::CaseInsensitive);
    if (p < 0)
        p = folder.indexOf(QStringLiteral("prgsrc"), 0, Qt::CaseInsensitive);
    if (p < 0) {
        c.環境DB接続中 = false;
        return false;
    }
    // p is 0-based here: the first p characters end with the separator.
    const QString head = folder.left(p);
    f.基準フォルダ = p > 0 ? folder.left(p - 1) : QString();
    f.prgbinフォルダ = head + QStringLiteral("prgbin");

    f.gnrdb種別 = 0;
    f.gnrdbパス.clear();
    if (os::fileExists(head + QStringLiteral("data") + sep() + QStringLiteral("gnrdb.accdb"))) {
        f.gnrdbパス = head + QStringLiteral("data") + sep() + QStringLiteral("gnrdb.accdb");
        f.gnrdb種別 = 1;
    } else if (os::fileExists(head + QStringLiteral("data") + sep() + QStringLiteral("gnrdb.mdb"))) {
        f.gnrdbパス = head + QStringLiteral("data") + sep() + QStringLiteral("gnrdb.mdb");
        f.gnrdb種別 = 2;
    }
    QString usrcnfg;
    f.usrcnfg種別 = 0;
    if (os::fileExists(head + QStringLiteral("conf") + sep() + QStringLiteral("usrcnfg.accdb"))) {
        usrcnfg = head + QStringLiteral("conf") + sep() + QStringLiteral("usrcnfg.accdb");
        f.usrcnfg種別 = 1;
    } else if (os::fileExists(head + QStringLiteral("conf") + sep() + QStringLiteral("usrcnfg.mdb"))) {
        usrcnfg = head + QStringLiteral("conf") + sep() + QStringLiteral("usrcnfg.mdb");
        f.usrcnfg種別 = 2;
    }

    const QString& root = head;
    f.共通confフォルダ = root + QStringLiteral("conf");
    f.共通reportフォルダ = root + QStringLiteral("report");
    f.manualフォルダ = root + QStringLiteral("manual");

    f.repdb種別 = 0;
    if (os::fileExists(f.共通reportフォルダ + sep() + QStringLiteral("repdb.accdb")))
        f.repdb種別 = 1;
    else if (os::fileExists(f.共通reportフォルダ + sep() + QStringLiteral("repdb.mdb")))
        f.repdb種別 = 2;

    if (f.usrcnfg種別 == 0) {
        c.環境DB接続中 = false;
        return false;
    }

    接続設定(c.環境DB接続);
    if (!c.環境DB接続.open(環境DB接続文字列(f.usrcnfg種別, usrcnfg))) {
        c.環境DB接続中 = false;
        const db::Error& e = c.環境DB接続.lastError();
        ctx.msg.show(QStringLiteral("SYB_OPEN ERROR") + QString::number(e.number) + QLatin1Char(' ') + e.description +
                     QChar(13) + QStringLiteral("sysopen error"));
        return false;
    }
    c.環境DB接続中 = true;

    // From here a failure ends the start without a message of this routine.
    db::Recordset rs;
    if (環境SQLopen(ctx, rs, QStringLiteral("SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'"))) {
        const db::Field dbField = rs.field(QStringLiteral("db"));
        const db::Field dbmwField = rs.field(QStringLiteral("dbmw"));
        if (dbField.isNull() || dbmwField.isNull()) {
            rs.close();
            return false;
        }
        c.db = dbField.text();
        c.dbmw = dbmwField.text();
        c.プロバイダ名 = 文字列(rs.field(QStringLiteral("プロバイダ名")));
        c.データベース名 = 文字列(rs.field(QStringLiteral("データベース名")));
        c.ドライバ名 = 文字列(rs.field(QStringLiteral("ドライバ名")));
        c.ユーザーID = 文字列(rs.field(QStringLiteral("ユーザーID")));
        c.パスワード = 文字列(rs.field(QStringLiteral("パスワード")));
        c.データソース名 = 文字列(rs.field(QStringLiteral("データソース名")));
        c.サーバー名 = 文字列(rs.field(QStringLiteral("サーバー名")));
        c.接続文字列 = 文字列(rs.field(QStringLiteral("接続文字列")));
    }
    rs.close();

    動作環境read(ctx, false);
    c.環境DB接続.close();

    switch (ctx.env.インストール区分) {
    case 0:
        f.confフォルダ = root + QStringLiteral("conf");
        f.reportフォルダ = root + QStringLiteral("report");
        break;
    case 1:
        f.confフォルダ = root + QStringLiteral("users") + sep() + ctx.terminal.ユーザ名 + sep() + QStringLiteral("conf");
        f.reportフォルダ =
            root + QStringLiteral("users") + sep() + ctx.terminal.ユーザ名 + sep() + QStringLiteral("report");
        利用者環境copy(ctx);
        break;
    default:
        f.confフォルダ.clear();
        f.reportフォルダ.clear();
        break;
    }

    const QString source = f.confフォルダ + sep() +
                           (f.usrcnfg種別 == 1 ? QStringLiteral("usrcnfg.accdb;") : QStringLiteral("usrcnfg.mdb;"));
    接続設定(c.環境DB接続);
    if (!c.環境DB接続.open(環境DB接続文字列(f.usrcnfg種別, source))) {
        c.環境DB接続中 = false;
        return false;
    }
    c.環境DB接続中 = true;

    動作環境read(ctx, true);
    ctx.run.操作事業所コード = ctx.env.運用事業所コード;
    return true;
}

bool 環境DBreopen(Context& ctx) {
    auto& c = ctx.conn;
    if (c.環境DB接続中)
        c.環境DB接続.close();
    const QString source =
        ctx.folders.confフォルダ + sep() +
        (ctx.folders.usrcnfg種別 == 1 ? QStringLiteral("usrcnfg.accdb;") : QStringLiteral("usrcnfg.mdb;"));
    接続設定(c.環境DB接続);
    c.環境DB接続中 = c.環境DB接続.open(環境DB接続文字列(ctx.folders.usrcnfg種別, source));
    return c.環境DB接続中;
}

bool 業務DBopen(Context& ctx) {
    auto& c = ctx.conn;
    QString text;
    if (c.db == QLatin1String("A")) {
        text = QStringLiteral("Provider=") + c.プロバイダ名 + QStringLiteral(";") + QStringLiteral("User ID=") +
               c.ユーザーID + QStringLiteral(";") + QStringLiteral("Password=") + c.パスワード + QStringLiteral(";") +
               QStringLiteral("Data Source=") + c.データソース名 + QStringLiteral(";");
        ctx.folders.Accessデータパス = c.データソース名.trimmed();
    } else if (c.db == QLatin1String("S")) {
        text = QStringLiteral("Provider=") + c.プロバイダ名 + QStringLiteral(";") + QStringLiteral("User ID=") +
               c.ユーザーID + QStringLiteral(";") + QStringLiteral("Password=") + c.パスワード + QStringLiteral(";") +
               QStringLiteral("Data Source=") + c.サーバー名 + QStringLiteral(";") + QStringLiteral("Initial Catalog=") +
               c.データベース名 + QStringLiteral(";");
    } else if (c.db == QLatin1String("O")) {
        text = QStringLiteral("Provider=") + c.プロバイダ名 + QStringLiteral(";") + QStringLiteral("User ID=") +
               c.ユーザーID + QStringLiteral(";") + QStringLiteral("Password=") + c.パスワード + QStringLiteral(";") +
               QStringLiteral("Data Source=") + c.データソース名 + QStringLiteral(";");
    }
    if (!text.isEmpty()) {
        接続設定(c.業務DB接続);
        c.業務DB接続.setDialect(c.db);
        if (!c.業務DB接続.open(text)) {
            c.業務DB接続中 = false;
            const db::Error& e = c.業務DB接続.lastError();
            エラー履歴add(ctx, QStringLiteral("DB_OPEN ERROR") + QString::number(e.number) + QLatin1Char(' ') +
                                    e.description);
            return false;
        }
    }
    // With no dialect no connection is made, and the first statement fails.
    c.業務DB接続中 = true;
    return 環境定義chk(ctx);
}

void 帳票リンクrefresh(Context& ctx, const QString& 帳票file, const QString& エンジン, const QString& データfile,
                   const std::function<void(const QString&)>& 報告) {
    db::TableLinks& links = *ctx.tableLinks;
    if (!links.open(帳票file, エンジン)) {
        報告(links.lastError());
        return;
    }
    const qint32 linkedTable = 1073741824;
    const QString connect = QStringLiteral(";DATABASE=") + データfile;
    for (const db::TableDef& table : links.tableDefs()) {
        if (table.attributes != linkedTable)
            continue;
        if (!links.setConnect(table.name, connect))
            報告(links.lastError());
        if (!links.refreshLink(table.name))
            報告(links.lastError());
    }
    links.close();
}

void 利用者環境copy(Context& ctx) {
    const auto& f = ctx.folders;
    const auto report = [&](const QString& what) {
        エラー履歴add(ctx, what + QStringLiteral(" User ConfF=") + f.confフォルダ + QStringLiteral(" User Report =") +
                                f.reportフォルダ);
    };
    const auto copy = [&](const QString& from, const QString& to) {
        if (!os::copyFile(from, to))
            report(QStringLiteral("ファイルをコピーできません: ") + from);
    };

    if (f.usrcnfg種別 == 1 || f.usrcnfg種別 == 2) {
        フォルダ作成make(ctx, f.confフォルダ + sep());
        const QString name = f.usrcnfg種別 == 1 ? QStringLiteral("usrcnfg.accdb") : QStringLiteral("usrcnfg.mdb");
        if (!os::fileExists(f.confフォルダ + sep() + name))
            copy(f.共通confフォルダ + sep() + name, f.confフォルダ + sep() + name);
    }

    // The linked tables of a per-user report form file are pointed at the user's
    // own report database.
    const auto relink = [&](const QString& file, const QString& engine, const QString& repdb) {
        帳票リンクrefresh(ctx, f.reportフォルダ + sep() + file, engine, f.reportフォルダ + sep() + repdb, report);
    };

    // Report databases are copied once. Their links are refreshed only where
    // the desktop database tool could be registered for the user's report folder.
    const auto copyReports = [&](const QString& repdb, const QStringList& files, const auto& relinkAll) {
        フォルダ作成make(ctx, f.reportフォルダ + sep());
        if (os::fileExists(f.reportフォルダ + sep() + repdb))
            return;
        ctx.wait.show();
        for (const QString& file : files)
            copy(f.共通reportフォルダ + sep() + file, f.reportフォルダ + sep() + file);
        if (ctx.DBツール登録 && ctx.DBツール登録(ctx))
            relinkAll();
        ctx.wait.close();
    };
    const QString newEngine = QStringLiteral("DAO.DBEngine.120");
    if (f.repdb種別 == 1) {
        copyReports(QStringLiteral("repdb.accdb"), {QStringLiteral("repdb.accdb"), QStringLiteral("repfrmdb.accdb")},
                    [&] { relink(QStringLiteral("repfrmdb.accdb"), newEngine, QStringLiteral("repdb.accdb")); });
    } else if (f.repdb種別 == 2) {
        copyReports(QStringLiteral("repdb.mdb"),
                    {QStringLiteral("repdb.mdb"), QStringLiteral("repfrmdb.mdb"), QStringLiteral("repfrmdb.accdb")},
                    [&] {
                        // The older form file opens with the default engine.
                        relink(QStringLiteral("repfrmdb.mdb"), QString(), QStringLiteral("repdb.mdb"));
                        if (os::fileExists(f.reportフォルダ + sep() + QStringLiteral("repfrmdb.accdb")))
                            relink(QStringLiteral("repfrmdb.accdb"), newEngine, QStringLiteral("repdb.mdb"));
                    });
        ctx.folders.repdb種別 = 2;
    }
}

void データ処理term(Context& ctx) {
    if (!ctx.link.起動連携情報.isEmpty())
        連携応答send(ctx, ctx.link.終了連携情報);
    終了履歴add(ctx);
    if (ctx.conn.環境DB接続中) {
        ctx.conn.環境DB接続.close();
        ctx.conn.環境DB接続中 = false;
    }
    if (ctx.conn.業務DB接続中) {
        ctx.conn.業務DB接続.close();
        ctx.conn.業務DB接続中 = false;
    }
}
