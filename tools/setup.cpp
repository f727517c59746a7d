#include "tools/setup.h"

#include "platform/db/connection.h"
#include "platform/pin/pin_codec.h"
#include "platform/db/recordset.h"
#include "schema/schema.h"
#include "tools/pictures.h"
#include "tools/postcodes.h"
#include "tools/rows.h"
#include "tools/seed.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>

#include <sys/stat.h>

namespace setup {

namespace {

using Progress = std::function<void(const QString&)>;

const char* const kFolders[] = {"prgbin", "conf",         "data",           "report",     "manual",       "users",
                                "photo",  "photo/担当者", "photo/担当者印", "photo/社員", "photo/社員印", "document"};

constexpr char kDesktopProvider[] = "Microsoft.ACE.OLEDB.12.0";
constexpr qsizetype kPostcodesPerStep = 10000;

QString absoluteRoot(const QString& root) { return QDir::cleanPath(QFileInfo(root).absoluteFilePath()); }

QString desktopText(const QString& file) {
    return QStringLiteral("Provider=%1;User ID=;Password=;Data Source=%2;")
        .arg(QString::fromLatin1(kDesktopProvider), file);
}

QString dataSource(const Server& server) { return server.host + QLatin1Char(':') + QString::number(server.port); }

// A server addressed by its source name ("O") names its database there: "host:port/database".
QString sourceName(const Server& server) {
    return server.dialect == QLatin1String("O") ? dataSource(server) + QLatin1Char('/') + server.database
                                                : dataSource(server);
}

QString serverText(const Server& server, const QString& database) {
    return QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;Initial Catalog=%4;")
        .arg(server.user, server.password, dataSource(server), database);
}

class Installer {
public:
    Installer(const Options& options, const Progress& progress)
        : options_(options), progress_(progress ? progress : [](const QString&) {}) {}

    Result run() {
        const bool done = check() && readPostcodeSource() && prepareServer() && makeTree() && makeConfiguration() &&
                          makeMain() && makePersonnel() && finish();
        if (!done) {
            rollback();
            return {false, message_};
        }
        QString message = QStringLiteral("インストールしました: ") + root_;
        if (!note_.isEmpty())
            message += QLatin1Char('\n') + note_;
        return {true, message};
    }

private:
    bool fail(const QString& message) {
        message_ = message;
        return false;
    }

    // Everything that can be judged before anything is made.
    bool check() {
        if (options_.root.trimmed().isEmpty())
            return fail(QStringLiteral("インストール先フォルダが指定されていません"));
        root_ = absoluteRoot(options_.root);
        const QFileInfo root(root_);
        if (root.fileName().isEmpty())
            return fail(QStringLiteral("インストール先フォルダに使えない場所です: ") + root_);
        if (root.exists() || root.isSymLink()) {
            if (!root.isDir() || root.isSymLink())
                return fail(QStringLiteral("インストール先はフォルダではありません: ") + root_);
            if (!QDir(root_).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
                return fail(QStringLiteral("インストール先フォルダが空ではありません: ") + root_);
            rootExisted_ = true;
        }
        if (!options_.programFile.isEmpty() && !QFileInfo(options_.programFile).isFile())
            return fail(QStringLiteral("プログラムファイルが見つかりません: ") + options_.programFile);
        if (!options_.reportProgramFile.isEmpty() && !QFileInfo(options_.reportProgramFile).isFile())
            return fail(QStringLiteral("帳票プログラムファイルが見つかりません: ") + options_.reportProgramFile);
        if (options_.postcodes == Postcodes::File && !QFileInfo(options_.postcodeFile).isFile())
            return fail(QStringLiteral("郵便番号データのファイルが見つかりません: ") + options_.postcodeFile);
        if (options_.postcodes == Postcodes::Npm && !npmAvailable())
            return fail(QStringLiteral("npm が見つかりません (PATH にありません)。郵便番号データを取得できません。"
                                       "npm を入れるか、郵便番号データのファイルを指定してください。"));
        if (options_.server)
            return checkServerOptions(*options_.server);
        return true;
    }

    bool checkServerOptions(const Server& server) {
        static const QRegularExpression name(QStringLiteral("^[a-z_][a-z0-9_]{0,62}$"));
        if (server.host.trimmed().isEmpty())
            return fail(QStringLiteral("データベースサーバーが指定されていません"));
        if (server.port < 1 || server.port > 65535)
            return fail(QStringLiteral("データベースサーバーのポート番号が正しくありません: ") +
                        QString::number(server.port));
        if (!name.match(server.database).hasMatch())
            return fail(QStringLiteral("データベース名は英小文字・数字・_ で指定してください: ") + server.database);
        // The demo's personnel system takes the name with "_jinji" behind it.
        if (options_.demo && server.database.size() > 57)
            return fail(QStringLiteral("デモのデータベース名は57文字までで指定してください: ") + server.database);
        if (server.dialect != QLatin1String("S") && server.dialect != QLatin1String("O"))
            return fail(QStringLiteral("SQL の方言は S か O で指定してください: ") + server.dialect);
        // The parts go into a connection text of the form "key=value;".
        for (const QString& part : {server.host, server.user, server.password}) {
            if (part.contains(QLatin1Char(';')))
                return fail(QStringLiteral("サーバー名・ユーザーID・パスワードに ; は使えません"));
        }
        return true;
    }

    bool readPostcodeSource() {
        postcodes_ = readPostcodes(options_.postcodes, options_.postcodeFile, progress_);
        if (!postcodes_.ok)
            return fail(postcodes_.error);
        note_ = postcodes_.note;
        return true;
    }

    bool prepareServer() {
        if (!options_.server)
            return true;
        return serverDatabase(*options_.server, createdDatabase_, usedEmptyDatabase_);
    }

    // Connects to the server, then creates the database or accepts an empty one.
    bool serverDatabase(const Server& server, bool& created, bool& usedEmpty) {
        progress_(QStringLiteral("データベースサーバーに接続しています: ") + dataSource(server));
        db::Connection admin;
        admin.connectionTimeout = 10;
        if (!admin.open(serverText(server, QStringLiteral("postgres"))))
            return fail(QStringLiteral("データベースサーバーに接続できません: %1 (%2)")
                            .arg(dataSource(server), admin.lastError().description));
        db::Recordset existing;
        if (!existing.open(QStringLiteral("SELECT datname FROM pg_database WHERE datname = '%1'").arg(server.database),
                           admin))
            return fail(QStringLiteral("データベースの有無を確かめられません: ") + existing.lastError().description);
        const bool exists = !existing.eof();
        existing.close();
        if (exists) {
            db::Connection target;
            db::Recordset tables;
            if (!target.open(serverText(server, server.database)) ||
                !tables.open(QStringLiteral("SELECT COUNT(*) AS n FROM information_schema.tables "
                                            "WHERE table_schema = 'public'"),
                             target))
                return fail(QStringLiteral("データベース %1 を調べられません: %2")
                                .arg(server.database, target.lastError().description + tables.lastError().description));
            if (tables.field(QStringLiteral("n")).value.toInt() > 0)
                return fail(QStringLiteral("データベース %1 は既にあり、表が入っています (%2)")
                                .arg(server.database, dataSource(server)));
            usedEmpty = true;
            return true;
        }
        if (!admin.execute(
                QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C'")
                    .arg(server.database)))
            return fail(QStringLiteral("データベース %1 を作成できません: %2")
                            .arg(server.database, admin.lastError().description));
        created = true;
        return true;
    }

    // The folders, in a hidden sibling that becomes the root at the very end.
    bool makeTree() {
        progress_(QStringLiteral("フォルダを作成しています: ") + root_);
        const QString parent = QFileInfo(root_).path();
        QString missing = parent;
        while (!QFileInfo::exists(missing)) {
            madeParents_.prepend(missing);
            missing = QFileInfo(missing).path();
        }
        if (!QDir().mkpath(parent))
            return fail(QStringLiteral("フォルダを作成できません: ") + parent);
        temp_ = std::make_unique<QTemporaryDir>(parent + QStringLiteral("/.") + QFileInfo(root_).fileName() +
                                                QStringLiteral(".setup-XXXXXX"));
        if (!temp_->isValid())
            return fail(QStringLiteral("作業フォルダを作成できません: %1 (%2)").arg(parent, temp_->errorString()));
        // The work folder is made for its owner alone; renamed into the tree's
        // root it must open to the others like any folder made here, since the
        // tree is often a folder that the office shares.
        const mode_t mask = ::umask(0);
        ::umask(mask);
        if (::chmod(QFile::encodeName(temp_->path()).constData(), 0777 & ~mask) != 0)
            return fail(QStringLiteral("作業フォルダの権限を設定できません: ") + temp_->path());
        for (const char* folder : kFolders) {
            if (!QDir(temp_->path()).mkpath(QString::fromUtf8(folder)))
                return fail(QStringLiteral("フォルダを作成できません: ") + QString::fromUtf8(folder));
        }
        if (!options_.programFile.isEmpty()) {
            const QString target =
                temp_->filePath(QStringLiteral("prgbin/") + QFileInfo(options_.programFile).fileName());
            if (!QFile::copy(options_.programFile, target))
                return fail(QStringLiteral("プログラムをコピーできません: ") + options_.programFile);
        }
        // The card starts the report program by this name.
        if (!options_.reportProgramFile.isEmpty() &&
            !QFile::copy(options_.reportProgramFile, temp_->filePath(QStringLiteral("prgbin/担当者カード"))))
            return fail(QStringLiteral("帳票プログラムをコピーできません: ") + options_.reportProgramFile);
        return true;
    }

    // Creates an empty desktop database file and opens it.
    bool openDesktop(db::Connection& connection, const QString& relative) {
        const QString path = temp_->filePath(relative);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return fail(QStringLiteral("データベースファイルを作成できません: ") + path);
        file.close();
        if (!connection.open(desktopText(path)))
            return fail(QStringLiteral("データベースファイルを開けません: %1 (%2)")
                            .arg(path, connection.lastError().description));
        return true;
    }

    bool createTables(db::Connection& connection, schema::Database database, schema::Flavor flavor) {
        for (const QString& statement : schema::createStatements(database, flavor)) {
            if (!connection.execute(statement))
                return fail(
                    QStringLiteral("表を作成できません: %1 (%2)").arg(statement, connection.lastError().description));
        }
        return true;
    }

    // The row of データベース定義 that names a main database: the server's, or a
    // desktop file of the provider given.
    static Values definitionRow(const std::optional<Server>& server, const QString& provider, const QString& file) {
        Values definition{{QStringLiteral("情報種類"), QStringLiteral("GNR")}};
        if (server) {
            definition += {{QStringLiteral("db"), server->dialect},
                           {QStringLiteral("プロバイダ名"), QStringLiteral("PostgreSQL")},
                           {QStringLiteral("データベース名"), server->database},
                           {QStringLiteral("ユーザーID"), server->user},
                           {QStringLiteral("パスワード"), server->password},
                           {QStringLiteral("データソース名"), sourceName(*server)},
                           {QStringLiteral("サーバー名"), dataSource(*server)}};
        } else {
            definition += {{QStringLiteral("db"), QStringLiteral("A")},
                           {QStringLiteral("プロバイダ名"), provider},
                           {QStringLiteral("データソース名"), file}};
        }
        return definition;
    }

    // The environment row of a new installation: the head office, shared folders.
    static Values environmentRow() {
        Values environment{{QStringLiteral("動作環境定義ID"), QStringLiteral("001")},
                           {QStringLiteral("運用事業所コード"), QStringLiteral("000")}};
        for (const char* column : {"インストール区分", "CL更新実行区分", "バックアップ方法", "バックアップ日指定",
                                   "月曜バックアップ", "火曜バックアップ", "水曜バックアップ", "木曜バックアップ",
                                   "金曜バックアップ", "土曜バックアップ", "日曜バックアップ"})
            environment.append({QString::fromUtf8(column), QStringLiteral("0")});
        return environment;
    }

    bool makeConfiguration() {
        progress_(QStringLiteral("暗証番号の鍵ファイルを作成しています: conf/pin.key"));
        QString keyError;
        if (!pin::Codec::createKeyFile(temp_->filePath(QStringLiteral("conf/pin.key")), &keyError))
            return fail(keyError);
        progress_(QStringLiteral("環境データベースを作成しています: conf/usrcnfg.accdb"));
        db::Connection config;
        if (!openDesktop(config, QStringLiteral("conf/usrcnfg.accdb")) ||
            !createTables(config, schema::Database::Configuration, schema::Flavor::Sqlite))
            return false;
        RowWriter writer(config, schema::Database::Configuration);
        const Values definition = definitionRow(options_.server, QString::fromLatin1(kDesktopProvider),
                                                root_ + QStringLiteral("/data/main.accdb"));
        const bool written = writer.insert(QStringLiteral("データベース定義"), definition) &&
                             writer.insert(QStringLiteral("動作環境定義"), environmentRow()) &&
                             writer.insert(QStringLiteral("営業支援データ管理"),
                                           {{QStringLiteral("プログラムID"), QStringLiteral("担当者登録")},
                                            {QStringLiteral("処理分類"), QStringLiteral("0")}});
        return written || fail(writer.error());
    }

    bool makeMain() {
        progress_(QStringLiteral("業務データベースを作成しています"));
        main_ = std::make_unique<db::Connection>();
        schema::Flavor flavor = schema::Flavor::Sqlite;
        if (options_.server) {
            flavor = schema::Flavor::Postgres;
            if (!main_->open(serverText(*options_.server, options_.server->database)))
                return fail(QStringLiteral("業務データベースに接続できません: ") + main_->lastError().description);
        } else {
            if (!openDesktop(*main_, QStringLiteral("data/main.accdb")))
                return false;
            // The file is new and only counts once renamed into place: no need to wait for the disk.
            main_->execute(QStringLiteral("PRAGMA synchronous = OFF"));
        }
        tablesCreated_ = true;
        if (!createTables(*main_, schema::Database::Main, flavor))
            return false;

        RowWriter writer(*main_, schema::Database::Main);
        progress_(QStringLiteral("初期データを登録しています"));
        if (!seedMain(writer, root_ + QStringLiteral("/photo"), root_ + QStringLiteral("/document")))
            return fail(writer.error());
        if (options_.demo) {
            progress_(QStringLiteral("デモデータを登録しています"));
            if (!seedDemo(writer))
                return fail(writer.error());
        }
        const QList<QStringList>& rows = postcodes_.rows;
        const QStringList columns{QStringLiteral("郵便番号"), QStringLiteral("住所A"), QStringLiteral("住所B")};
        for (qsizetype first = 0; first < rows.size(); first += kPostcodesPerStep) {
            if (!writer.insertMany(QStringLiteral("M郵便番号"), columns, rows.mid(first, kPostcodesPerStep)))
                return fail(writer.error());
            progress_(QStringLiteral("郵便番号を登録しています: %1 / %2 件")
                          .arg(std::min(rows.size(), first + kPostcodesPerStep))
                          .arg(rows.size()));
        }
        main_->close();
        return true;
    }

    // The demo company's personnel system: a second tree under the root with
    // its own configuration and main database, pictures of its employees in the
    // photo folder the two systems share, and the link row that puts the
    // employee code on the staff card. The main database holds the same
    // employee tables: keeping them alike is the personnel system's business.
    bool makePersonnel() {
        if (!options_.demo)
            return true;
        progress_(QStringLiteral("人事就業管理のデモデータを作成しています: jinji"));
        for (const char* folder : {"jinji/prgbin", "jinji/conf", "jinji/data", "jinji/report", "jinji/manual",
                                   "jinji/users"}) {
            if (!QDir(temp_->path()).mkpath(QString::fromUtf8(folder)))
                return fail(QStringLiteral("フォルダを作成できません: ") + QString::fromUtf8(folder));
        }
        const QString app = root_ + QStringLiteral("/jinji");
        Values definition;
        Values link{{QStringLiteral("連携有無区分"), QStringLiteral("1")},
                    {QStringLiteral("連携アプリフォルダ"), app}};
        db::Connection personnel;
        schema::Flavor flavor = schema::Flavor::Sqlite;
        if (options_.server) {
            Server server = *options_.server;
            server.database += QStringLiteral("_jinji");
            if (!serverDatabase(server, createdPersonnelDatabase_, usedEmptyPersonnelDatabase_))
                return false;
            if (!personnel.open(serverText(server, server.database)))
                return fail(QStringLiteral("人事就業管理のデータベースに接続できません: ") +
                            personnel.lastError().description);
            flavor = schema::Flavor::Postgres;
            definition = definitionRow(server, {}, {});
            link += {{QStringLiteral("連携DB"), server.dialect},
                     {QStringLiteral("連携データベース名"), server.database},
                     {QStringLiteral("連携ユーザーID"), server.user},
                     {QStringLiteral("連携パスワード"), server.password},
                     {QStringLiteral("連携データソース名"), sourceName(server)},
                     {QStringLiteral("連携サーバー名"), dataSource(server)}};
        } else {
            if (!openDesktop(personnel, QStringLiteral("jinji/data/jinji.mdb")))
                return false;
            const QString file = app + QStringLiteral("/data/jinji.mdb");
            definition = definitionRow(std::nullopt, QStringLiteral("Microsoft.Jet.OLEDB.4.0"), file);
            link += {{QStringLiteral("連携DB"), QStringLiteral("A")}, {QStringLiteral("連携データソース名"), file}};
        }
        if (!createTables(personnel, schema::Database::Personnel, flavor))
            return false;
        RowWriter rows(personnel, schema::Database::Personnel);
        if (!seedMain(rows, root_ + QStringLiteral("/photo"), root_ + QStringLiteral("/document")) ||
            !seedDemo(rows))
            return fail(rows.error());
        personnel.close();

        // Its configuration, under the older desktop name that the link opens.
        db::Connection config;
        if (!openDesktop(config, QStringLiteral("jinji/conf/usrcnfg.mdb")) ||
            !createTables(config, schema::Database::Configuration, schema::Flavor::Sqlite))
            return false;
        RowWriter configRows(config, schema::Database::Configuration);
        if (!configRows.insert(QStringLiteral("データベース定義"), definition) ||
            !configRows.insert(QStringLiteral("動作環境定義"), environmentRow()))
            return fail(configRows.error());
        config.close();

        for (const DemoEmployee& e : demoEmployees()) {
            const int number = e.code.toInt();
            for (int i = 1; i <= e.photos; ++i) {
                const QString name = e.code + (i == 1 ? QString() : QStringLiteral("_%1").arg(i)) + QStringLiteral(".jpg");
                if (!writePortrait(temp_->filePath(QStringLiteral("photo/社員/") + name), number + i, e.woman))
                    return fail(QStringLiteral("写真を作成できません: ") + name);
            }
            if (e.seal && !writeSeal(temp_->filePath(QStringLiteral("photo/社員印/") + e.code + QStringLiteral(".png")),
                                     e.familyName))
                return fail(QStringLiteral("印影を作成できません: ") + e.code);
        }

        // The link row of the main database.
        db::Connection main;
        if (!(options_.server ? main.open(serverText(*options_.server, options_.server->database))
                              : main.open(desktopText(temp_->filePath(QStringLiteral("data/main.accdb"))))))
            return fail(QStringLiteral("業務データベースを開けません: ") + main.lastError().description);
        QStringList assignments;
        for (const auto& [column, value] : link)
            assignments.append(column + QStringLiteral(" = ") + quoted(value));
        if (!main.execute(QStringLiteral("UPDATE M他業務連携 SET ") + assignments.join(QStringLiteral(", ")) +
                          QStringLiteral(" WHERE 業務名 = '人事就業管理'")))
            return fail(QStringLiteral("他業務連携を登録できません: ") + main.lastError().description);
        return true;
    }

    bool finish() {
        if (rootExisted_ && !QDir().rmdir(root_))
            return fail(QStringLiteral("インストール先フォルダを置き換えられません: ") + root_);
        if (!QDir().rename(temp_->path(), root_)) {
            if (rootExisted_)
                QDir().mkdir(root_);
            return fail(QStringLiteral("インストール先フォルダを作成できません: ") + root_);
        }
        temp_->setAutoRemove(false);
        return true;
    }

    // Takes back what this run made: the work folder, parents it created, and
    // the server database (or the tables it put into an empty one).
    void rollback() {
        if (main_)
            main_->close();
        temp_.reset();
        for (auto it = madeParents_.crbegin(); it != madeParents_.crend(); ++it)
            QDir().rmdir(*it);
        if (!options_.server)
            return;
        Server personnel = *options_.server;
        personnel.database += QStringLiteral("_jinji");
        dropServerDatabase(personnel, createdPersonnelDatabase_, usedEmptyPersonnelDatabase_,
                           schema::Database::Personnel);
        if (!createdDatabase_ && !(usedEmptyDatabase_ && tablesCreated_))
            return;
        dropServerDatabase(*options_.server, createdDatabase_, usedEmptyDatabase_, schema::Database::Main);
    }

    // Drops a database this run created, or the tables it put into an empty one.
    void dropServerDatabase(const Server& server, bool created, bool usedEmpty, schema::Database database) {
        if (!created && !usedEmpty)
            return;
        if (created) {
            db::Connection admin;
            if (admin.open(serverText(server, QStringLiteral("postgres"))))
                admin.execute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(server.database));
            return;
        }
        db::Connection target;
        if (!target.open(serverText(server, server.database)))
            return;
        for (const schema::Table& table : schema::tables()) {
            if (table.databases.contains(database))
                target.execute(QStringLiteral("DROP TABLE IF EXISTS ") + table.name);
        }
    }

    const Options& options_;
    Progress progress_;
    QString root_;
    QString message_;
    QString note_;
    bool rootExisted_ = false;
    bool createdDatabase_ = false;
    bool usedEmptyDatabase_ = false;
    bool tablesCreated_ = false;
    bool createdPersonnelDatabase_ = false;
    bool usedEmptyPersonnelDatabase_ = false;
    QStringList madeParents_;
    PostcodeRows postcodes_;
    std::unique_ptr<QTemporaryDir> temp_;
    std::unique_ptr<db::Connection> main_;
};

} // namespace

Result createInstallation(const Options& options, const std::function<void(const QString&)>& progress) {
    return Installer(options, progress).run();
}

QString mainConnectionText(const Options& options) {
    if (!options.server)
        return desktopText(absoluteRoot(options.root) + QStringLiteral("/data/main.accdb"));
    const Server& server = *options.server;
    if (server.dialect == QLatin1String("O"))
        return QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;")
            .arg(server.user, server.password, sourceName(server));
    return serverText(server, server.database);
}

} // namespace setup
