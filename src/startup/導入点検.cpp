// The installation check: the databases and folders as a start needs them,
// reported line by line. It reads what the start reads and opens what the
// start opens; it takes no waiting link request, so that a real start still
// finds it.

#include "startup/導入点検.h"

#include "link/mod連携データ処理.h"
#include "schema/schema.h"
#include "shell/modデータ処理.h"
#include "startup/mod担当者登録起動.h"

#include <QDir>
#include <QFileInfo>

namespace {

// The tables the program writes on the main database.
const char* const kWrittenTables[] = {
    "M担当者",
    "L担当者",
    "使用状況",
    "M付属書類",
    "M電話番号",
    "T閲覧",
    "A番号情報",
    "A期日別番号情報",
    "A事業所別番号情報",
    "A事業所別期日別番号情報",
    "B履歴番号情報",
    "B期日別履歴番号情報",
    "B事業所別履歴番号情報",
    "B事業所別期日別履歴番号情報",
};

// What was found, check by check.
class Report {
public:
    explicit Report(QTextStream& out) : out_(out) {}

    bool line(bool ok, const QString& check, const QString& found) {
        ++checks_;
        if (!ok)
            ++failed_;
        out_ << (ok ? "ok      " : "FAILED  ") << check << ": " << found << Qt::endl;
        return ok;
    }
    int finish() {
        if (failed_ == 0)
            out_ << "databases: ok (" << checks_ << " checks)" << Qt::endl;
        else
            out_ << "databases: FAILED (" << failed_ << " of " << checks_ << " checks)" << Qt::endl;
        return failed_ == 0 ? 0 : 1;
    }

private:
    QTextStream& out_;
    int checks_ = 0;
    int failed_ = 0;
};

QString desktopText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + file +
           QStringLiteral(";");
}

// Why the program could not write a file or folder, "" when it can. A file
// that no one may write counts as read-only also for a user who could write it
// all the same (as the system's administrator can): the other users of the
// suite could not.
QString writeProblem(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("missing");
    if (!info.isWritable())
        return QStringLiteral("not writable for this user");
    const auto anyWrite = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    if (!(info.permissions() & anyWrite))
        return QStringLiteral("read-only (no write permission for anyone)");
    return QString();
}

// Every table of one database in the definition, read through the
// connection: missing tables and columns, named.
void tableCheck(Report& r, const QString& label, db::Connection& cn, schema::Database which) {
    int tables = 0;
    QStringList missing;
    for (const schema::Table& t : schema::tables()) {
        if (!t.databases.contains(which))
            continue;
        ++tables;
        db::Recordset rs;
        if (!rs.open(QStringLiteral("SELECT * FROM ") + t.name + QStringLiteral(" WHERE 1 = 0"), cn)) {
            missing.append(QStringLiteral("table ") + t.name + QStringLiteral(" (") +
                           rs.lastError().description.simplified().left(120) + QLatin1Char(')'));
            continue;
        }
        const QStringList names = rs.columnNames();
        rs.close();
        for (const schema::Column& c : t.columns) {
            bool found = false;
            for (const QString& n : names)
                found = found || n.compare(c.name, Qt::CaseInsensitive) == 0;
            if (!found)
                missing.append(QStringLiteral("column ") + t.name + QLatin1Char('.') + c.name);
        }
    }
    if (missing.isEmpty()) {
        r.line(true, label + QStringLiteral(" tables"),
               QString::number(tables) + QStringLiteral(" tables with all their columns"));
        return;
    }
    QString found = QString::number(missing.size()) + QStringLiteral(" missing of ") + QString::number(tables) +
                    QStringLiteral(" tables: ") + missing.mid(0, 6).join(QStringLiteral("; "));
    if (missing.size() > 6)
        found += QStringLiteral("; ...");
    r.line(false, label + QStringLiteral(" tables"), found);
}

// A desktop database file: there, opening as a database, whole by the
// engine's integrity check, the tables there, writable with its folder (the
// engine writes its journal beside the file). False when it cannot be opened.
bool desktopCheck(Report& r, const QString& label, const QString& file, schema::Database which) {
    const QFileInfo info(file);
    if (!r.line(info.isFile(), label + QStringLiteral(" file"),
                info.isFile() ? info.absoluteFilePath() + QStringLiteral(", ") + QString::number(info.size()) +
                                    QStringLiteral(" bytes")
                              : file + QStringLiteral(" is missing")))
        return false;
    db::Connection cn;
    cn.commandTimeout = 5;
    const bool opens = cn.open(desktopText(file));
    if (!r.line(opens, label + QStringLiteral(" opens"),
                opens ? QStringLiteral("a desktop (SQLite) database") : cn.lastError().description))
        return false;

    db::Recordset rs;
    QStringList problems;
    if (!rs.open(QStringLiteral("PRAGMA integrity_check(8)"), cn)) {
        problems.append(rs.lastError().description);
    } else {
        for (; !rs.eof(); rs.moveNext())
            problems.append(rs.field(QStringLiteral("integrity_check")).text());
        if (rs.lastError().failed())
            problems.append(rs.lastError().description);
    }
    rs.close();
    const bool whole = problems == QStringList{QStringLiteral("ok")};
    r.line(whole, label + QStringLiteral(" integrity"),
           whole ? QStringLiteral("the engine's integrity check passes")
                 : problems.join(QStringLiteral("; ")).simplified().left(400));

    tableCheck(r, label, cn, which);

    const QString fileProblem = writeProblem(file);
    const QString folderProblem = writeProblem(info.absolutePath());
    r.line(fileProblem.isEmpty() && folderProblem.isEmpty(), label + QStringLiteral(" writable"),
           fileProblem.isEmpty() && folderProblem.isEmpty()
               ? QStringLiteral("the file and its folder can be written")
               : (fileProblem.isEmpty() ? QString() : QStringLiteral("file ") + fileProblem) +
                     (fileProblem.isEmpty() || folderProblem.isEmpty() ? QString() : QStringLiteral(", ")) +
                     (folderProblem.isEmpty()
                          ? QString()
                          : QStringLiteral("folder ") + info.absolutePath() + QLatin1Char(' ') + folderProblem));
    return true;
}

// A server database: the session may write, and the user holds the rights to
// insert, change and delete in every table the program writes.
void serverWriteCheck(Report& r, const QString& label, db::Connection& cn) {
    QStringList problems;
    db::Recordset rs;
    if (rs.open(QStringLiteral("SELECT current_setting('transaction_read_only') AS ro"), cn) && !rs.eof() &&
        rs.field(QStringLiteral("ro")).text() == QLatin1String("on"))
        problems.append(QStringLiteral("the session is read-only"));
    rs.close();
    for (const char* name : kWrittenTables) {
        const QString table = QString::fromUtf8(name);
        if (!schema::find(table))
            continue;
        if (!rs.open(QStringLiteral("SELECT has_table_privilege('%1', 'INSERT') AS i, has_table_privilege('%1', "
                                    "'UPDATE') AS u, has_table_privilege('%1', 'DELETE') AS d")
                         .arg(table),
                     cn)) {
            // A missing table has been named by the table check.
            rs.close();
            continue;
        }
        QStringList lacking;
        for (const char* right : {"i", "u", "d"})
            if (rs.eof() || !rs.field(QString::fromLatin1(right)).value.toBool())
                lacking.append(QString::fromLatin1(right));
        rs.close();
        if (!lacking.isEmpty())
            problems.append(table + QStringLiteral(" (no right: ") +
                            lacking.join(QLatin1Char(','))
                                .replace(QLatin1Char('i'), QStringLiteral("INSERT"))
                                .replace(QLatin1Char('u'), QStringLiteral("UPDATE"))
                                .replace(QLatin1Char('d'), QStringLiteral("DELETE")) +
                            QLatin1Char(')'));
    }
    r.line(problems.isEmpty(), label + QStringLiteral(" writable"),
           problems.isEmpty() ? QStringLiteral("the user may write every table the program writes")
                              : problems.join(QStringLiteral("; ")));
}

// A folder that the program writes files into.
void folderCheck(Report& r, const QString& check, const QString& folder) {
    if (folder.trimmed().isEmpty()) {
        r.line(false, check, QStringLiteral("not set in the company record"));
        return;
    }
    const QString problem = writeProblem(folder);
    r.line(problem.isEmpty() && QFileInfo(folder).isDir(), check,
           folder + QLatin1Char(' ') +
               (problem.isEmpty()
                    ? (QFileInfo(folder).isDir() ? QStringLiteral("can be written") : QStringLiteral("is not a folder"))
                    : problem));
}

QString mainDescription(const Context& ctx) {
    const auto& c = ctx.conn;
    if (c.db == QLatin1String("A"))
        return QStringLiteral("dialect A, desktop file ") + c.データソース名;
    if (c.db == QLatin1String("S"))
        return QStringLiteral("dialect S, provider ") + c.プロバイダ名 + QStringLiteral(", server ") + c.サーバー名 +
               QStringLiteral(", database ") + c.データベース名;
    return QStringLiteral("dialect ") + c.db + QStringLiteral(", provider ") + c.プロバイダ名 +
           QStringLiteral(", source ") + c.データソース名;
}

} // namespace

int 導入点検(Context& ctx, QTextStream& out) {
    Report r(out);
    ctx.run.稼動連番 = 0;
    ctx.run.起動コマンド = ctx.sys.commandLine().trimmed();

    // The root of the tree, as the start finds it.
    const QString program = ctx.sys.programFolder();
    qsizetype p = program.indexOf(QStringLiteral("prgbin"), 0, Qt::CaseInsensitive);
    if (p < 0)
        p = program.indexOf(QStringLiteral("prgsrc"), 0, Qt::CaseInsensitive);
    if (!r.line(p >= 0, QStringLiteral("installation"),
                p >= 0 ? QStringLiteral("root ") + program.left(p > 0 ? p - 1 : 0) + QStringLiteral(", programs in ") +
                             program
                       : QStringLiteral("the program's folder ") + program +
                             QStringLiteral(" lies in no prgbin or prgsrc folder")))
        return r.finish();
    const QString head = program.left(p);
    QString shared = head + QStringLiteral("conf/usrcnfg.accdb");
    if (!QFileInfo::exists(shared) && QFileInfo::exists(head + QStringLiteral("conf/usrcnfg.mdb")))
        shared = head + QStringLiteral("conf/usrcnfg.mdb");
    desktopCheck(r, QStringLiteral("configuration database"), shared, schema::Database::Configuration);

    // The start's own opening: the folders, the row 'GNR', the connection of the run.
    const bool configuration = 環境DBopen(ctx);
    r.line(configuration, QStringLiteral("configuration of the run"),
           configuration
               ? QStringLiteral("conf folder ") + ctx.folders.confフォルダ + QStringLiteral(", ") + mainDescription(ctx)
               : QStringLiteral("データベースが使用できません。 (the start cannot open the configuration "
                                "database or read its row 'GNR' of データベース定義)"));
    if (!configuration)
        return r.finish();
    開始履歴add(ctx);
    const QString own = ctx.folders.confフォルダ + パス区切り() + QFileInfo(shared).fileName();
    if (QFileInfo(own).absoluteFilePath() != QFileInfo(shared).absoluteFilePath())
        desktopCheck(r, QStringLiteral("user's configuration database"), own, schema::Database::Configuration);

    // The row the environment check of the start stops at: without it the start
    // ends with "動作環境に問題があります。".
    db::Recordset rs;
    const bool environment =
        rs.open(QStringLiteral("SELECT * FROM 動作環境定義 WHERE 動作環境定義ID = '001'"), ctx.conn.環境DB接続) &&
        !rs.eof();
    rs.close();
    r.line(environment, QStringLiteral("operating environment"),
           environment
               ? QStringLiteral("row '001' of 動作環境定義, office ") + ctx.env.運用事業所コード +
                     QStringLiteral(", install kind ") + QString::number(ctx.env.インストール区分)
               : QStringLiteral("no row '001' in 動作環境定義: the start ends with \"動作環境に問題があります。\""));

    const auto& c = ctx.conn;
    const bool dialect = c.db == QLatin1String("A") || c.db == QLatin1String("S") || c.db == QLatin1String("O");
    if (!r.line(dialect, QStringLiteral("main database definition"),
                dialect ? mainDescription(ctx)
                        : QStringLiteral("dialect \"") + c.db +
                              QStringLiteral("\" is none of A, S, O: no main database is opened")) ||
        !environment) {
        データ処理term(ctx);
        return r.finish();
    }
    if (c.db == QLatin1String("A"))
        desktopCheck(r, QStringLiteral("main database"), c.データソース名.trimmed(), schema::Database::Main);

    const bool opened = 業務DBopen(ctx);
    r.line(opened, QStringLiteral("main database of the run"),
           opened ? QStringLiteral("opens: ") + mainDescription(ctx)
                  : QStringLiteral("データベースが使用できません。 (") + ctx.conn.業務DB接続.lastError().description +
                        QLatin1Char(')'));
    if (!opened) {
        データ処理term(ctx);
        return r.finish();
    }
    if (c.db != QLatin1String("A")) {
        tableCheck(r, QStringLiteral("main database"), ctx.conn.業務DB接続, schema::Database::Main);
        if (ctx.conn.業務DB接続.engine() == db::Engine::Postgres)
            serverWriteCheck(r, QStringLiteral("main database"), ctx.conn.業務DB接続);
    }

    rs.open(QStringLiteral("SELECT COUNT(*) AS 件数 FROM M担当者"), ctx.conn.業務DB接続);
    const QString staff = rs.eof() ? QStringLiteral("?") : rs.field(QStringLiteral("件数")).text();
    rs.close();

    const bool company = ユーザ情報read(ctx);
    r.line(company, QStringLiteral("company record"),
           company ? QStringLiteral("Mユーザ ") + ctx.company.ID + QLatin1Char(' ') + ctx.company.名称 +
                         QStringLiteral(", ") + staff + QStringLiteral(" staff rows")
                   : QStringLiteral("ユーザ情報が使用できません。"));
    if (company) {
        folderCheck(r, QStringLiteral("photo folder"), ctx.company.写真フォルダ);
        if (!ctx.company.写真フォルダ.trimmed().isEmpty()) {
            folderCheck(r, QStringLiteral("staff photo folder"), ctx.company.写真フォルダ + QStringLiteral("/担当者"));
            folderCheck(r, QStringLiteral("seal folder"), ctx.company.写真フォルダ + QStringLiteral("/担当者印"));
        }
        folderCheck(r, QStringLiteral("document folder"), ctx.company.ドキュメントフォルダ);

        // The personnel link as the start opens it, without taking its link requests.
        if (連携有無chk(ctx, QStringLiteral("人事就業管理"))) {
            他業務情報型& s = ctx.others.slot[ctx.others.連携番号];
            const bool linked = (s.連携アプリフォルダ.isEmpty() || 連携環境DBopen(ctx)) && 連携業務DBopen(ctx);
            r.line(linked, QStringLiteral("personnel link"),
                   linked ? QStringLiteral("opens: dialect ") + s.連携DB + QStringLiteral(", ") +
                                (s.連携DB == QLatin1String("S")
                                     ? s.連携サーバー名 + QLatin1Char(' ') + s.連携データベース名
                                     : s.連携データソース名)
                          : QStringLiteral("人事就業管理連携データベースが使用できません。 (") +
                                s.業務DB接続.lastError().description + QLatin1Char(')'));
            if (linked)
                tableCheck(r, QStringLiteral("personnel database"), s.業務DB接続, schema::Database::Personnel);
            連携DBclose(ctx);
        }
    }

    // The register of running instances; a user's temporary folder serves when
    // it cannot be written, so this is told but not failed.
    const QString instances = 起動登録フォルダ(ctx);
    const QString where = QFileInfo(instances).exists() ? instances : QFileInfo(instances).absolutePath();
    const QString problem = writeProblem(where);
    r.line(true, QStringLiteral("instance register"),
           problem.isEmpty() ? where + QStringLiteral(" can be written")
                             : where + QLatin1Char(' ') + problem +
                                   QStringLiteral(": a folder of the user's temporary files serves"));

    データ処理term(ctx);
    return r.finish();
}
