#include "tools/setup.h"

#include "platform/db/connection.h"
#include "support/test_databases.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QUuid>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using testdb::Engine;

int count(const QString& connectionText, const QString& table) {
    const QStringList rows = testdb::query(connectionText, QStringLiteral("SELECT COUNT(*) AS n FROM ") + table, {"n"});
    return rows.isEmpty() ? -1 : rows.first().toInt();
}

QString desktopText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=%1;").arg(file);
}

bool databaseExists(const QString& name) {
    const auto server = testdb::pgServer();
    const QString admin =
        QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;Initial Catalog=postgres;")
            .arg(server->user, server->password, server->dataSource());
    return !testdb::query(admin, QStringLiteral("SELECT datname FROM pg_database WHERE datname = '%1'").arg(name),
                          {"datname"})
                .isEmpty();
}

// The distinct postcode rows of the sample file, computed here on their own.
QSet<QString> samplePostcodes() {
    QFile file(QStringLiteral(STAFF_FIXTURES_DIR "/postcodes.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QSet<QString> rows;
    for (const QJsonValue& v : QJsonDocument::fromJson(file.readAll()).object().value("entries").toArray()) {
        const QJsonArray e = v.toArray();
        const QString digits = e.at(0).toString().mid(1);
        rows.insert(digits.left(3) + "-" + digits.mid(3) + "|" + e.at(1).toString() + e.at(2).toString() + "|" +
                    e.at(3).toString());
    }
    return rows;
}

class SetupTest : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        pathBefore_ = qgetenv("PATH");
    }

    void TearDown() override {
        qputenv("PATH", pathBefore_);
        if (!database_.isEmpty()) {
            testdb::adminExecute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(database_));
            testdb::adminExecute(QStringLiteral("DROP DATABASE IF EXISTS %1_jinji WITH (FORCE)").arg(database_));
        }
    }

    // Options for a tree under the test's folder, on the engine of the test.
    setup::Options options(const QString& name = QStringLiteral("inst")) {
        setup::Options o;
        o.root = folder_.filePath(name);
        o.postcodes = setup::Postcodes::Fixture;
        if (GetParam() == Engine::Postgres) {
            const auto server = testdb::pgServer();
            database_ = QStringLiteral("staff_setup_") + QUuid::createUuid().toString(QUuid::Id128).left(12);
            o.server = setup::Server{server->host, server->port, database_, server->user, server->password, "S"};
        }
        return o;
    }

    // Folder entries besides the ones named, hidden ones included.
    QStringList strayEntries(const QStringList& expected) {
        QStringList entries = QDir(folder_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
        for (const QString& e : expected)
            entries.removeAll(e);
        return entries;
    }

    QTemporaryDir folder_;
    QString database_;
    QByteArray pathBefore_;
};

TEST_P(SetupTest, CreatesACompleteTree) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const QString program = folder_.filePath(QStringLiteral("担当者登録"));
    {
        QFile f(program);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("program image");
    }
    setup::Options o = options();
    o.programFile = program;
    QStringList steps;
    const setup::Result result = setup::createInstallation(o, [&](const QString& s) { steps.append(s); });
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    const QString root = QDir(folder_.path()).absoluteFilePath(QStringLiteral("inst"));
    EXPECT_EQ(result.message, QStringLiteral("インストールしました: ") + root);
    EXPECT_FALSE(steps.isEmpty());

    for (const char* sub : {"prgbin", "conf", "data", "report", "manual", "users", "photo/担当者", "photo/担当者印",
                            "photo/社員", "photo/社員印", "document"})
        EXPECT_TRUE(QFileInfo(root + "/" + QString::fromUtf8(sub)).isDir()) << sub;
    QFile copied(root + QStringLiteral("/prgbin/担当者登録"));
    ASSERT_TRUE(copied.open(QIODevice::ReadOnly));
    EXPECT_EQ(copied.readAll(), QByteArray("program image"));
    EXPECT_TRUE(strayEntries({"inst", "担当者登録"}).isEmpty())
        << strayEntries({"inst", "担当者登録"}).join(' ').toStdString();
    EXPECT_EQ(QFileInfo::exists(root + "/data/main.accdb"), GetParam() == Engine::Sqlite);

    // The configuration database describes the main database.
    const QString config = desktopText(root + QStringLiteral("/conf/usrcnfg.accdb"));
    const QStringList definition = testdb::query(
        config, "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'",
        {"db", "プロバイダ名", "データベース名", "ユーザーID", "パスワード", "データソース名", "サーバー名"});
    ASSERT_EQ(definition.size(), 1);
    if (GetParam() == Engine::Sqlite) {
        EXPECT_EQ(definition.first(), "A|Microsoft.ACE.OLEDB.12.0||||" + root + "/data/main.accdb|");
    } else {
        const QString source = testdb::pgServer()->dataSource();
        EXPECT_EQ(definition.first(), "S|PostgreSQL|" + database_ + "|postgres||" + source + "|" + source);
    }
    EXPECT_EQ(
        testdb::query(config, "SELECT * FROM 動作環境定義",
                      {"動作環境定義ID", "運用事業所コード", "インストール区分", "CL更新実行区分", "起動担当者コード"}),
        QStringList{"001|000|0|0|"});
    EXPECT_EQ(testdb::query(config, "SELECT * FROM 営業支援データ管理",
                            {"プログラムID", "処理分類", "条件項目名A", "条件項目名Z"}),
              QStringList{"担当者登録|0||"});

    // The main database holds the seed rows and the sample postcodes.
    const QString main = setup::mainConnectionText(o);
    EXPECT_EQ(testdb::query(main, "SELECT * FROM K年号区分 ORDER BY 区分", {"区分", "名称", "開始日付"}),
              (QStringList{"0|西暦|00010101", "1|明治|18680908", "2|大正|19120730", "3|昭和|19261225",
                           "4|平成|19890108", "5|令和|20190501"}));
    EXPECT_EQ(testdb::query(main, "SELECT * FROM K性別区分 ORDER BY 区分", {"区分", "名称"}),
              (QStringList{"1|男", "2|女"}));
    EXPECT_EQ(testdb::query(main, "SELECT * FROM K在籍区分 ORDER BY 区分", {"区分", "名称"}),
              (QStringList{"0|在籍", "1|休職", "2|退職"}));
    EXPECT_EQ(testdb::query(main, "SELECT 名称 FROM K社員区分 WHERE 区分 = '1'", {"名称"}), QStringList{"正社員"});
    EXPECT_EQ(testdb::query(main, "SELECT 名称 FROM K稼動状況区分 ORDER BY 区分", {"名称"}).value(1), "稼動");
    EXPECT_EQ(testdb::query(main, "SELECT * FROM Mユーザ",
                            {"ID", "決算月", "決算日", "伝票番号管理区分", "暗証番号有無", "写真フォルダ",
                             "ドキュメントフォルダ"}),
              QStringList{"0001|3|31|0|0|" + root + "/photo|" + root + "/document"});
    EXPECT_FALSE(testdb::query(main, "SELECT 名称 FROM Mユーザ", {"名称"}).value(0).isEmpty());
    EXPECT_EQ(testdb::query(main, "SELECT 名称 FROM M事業所 WHERE コード = '000'", {"名称"}), QStringList{"本社"});
    EXPECT_GE(count(main, "M事業所"), 3);
    EXPECT_EQ(testdb::query(main, "SELECT * FROM B履歴番号情報", {"基本ID", "名称", "連番種類", "履歴連番"}),
              QStringList{"210|担当者保守履歴|0|00000000"});
    EXPECT_EQ(testdb::query(main, "SELECT * FROM A番号情報", {"番号ID", "名称", "連番種類", "連番", "履歴連番"}),
              QStringList{"01110|閲覧番号|0|00000000|00000000"});
    EXPECT_EQ(testdb::query(main, "SELECT * FROM M他業務連携 ORDER BY コード", {"コード", "連携有無区分"}),
              (QStringList{"002|0", "003|0", "004|0", "005|0"}));
    EXPECT_EQ(testdb::query(main, "SELECT 業務名 FROM M他業務連携 WHERE コード = '002'", {"業務名"}),
              QStringList{"人事就業管理"});
    EXPECT_GT(count(main, "M部門"), 0);
    EXPECT_EQ(count(main, "Mセクション WHERE 稼動状況区分 <> '1'"), 0);
    EXPECT_GT(count(main, "M役職"), 0);
    EXPECT_EQ(count(main, "M担当者"), 0);

    EXPECT_EQ(
        testdb::query(main, "SELECT * FROM M郵便番号 WHERE 郵便番号 = '100-0001'", {"郵便番号", "住所A", "住所B"}),
        QStringList{"100-0001|東京都千代田区|千代田"});
    const QStringList postcodes = testdb::query(main, "SELECT * FROM M郵便番号", {"郵便番号", "住所A", "住所B"});
    const QSet<QString> expected = samplePostcodes();
    EXPECT_EQ(postcodes.size(), expected.size());
    EXPECT_EQ(QSet<QString>(postcodes.begin(), postcodes.end()), expected);
}

TEST_P(SetupTest, DemoCompanyHasAboutAHundredStaff) {
    STAFF_REQUIRE_ENGINE(GetParam());
    setup::Options o = options();
    o.demo = true;
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    const QString main = setup::mainConnectionText(o);
    const int staff = count(main, "M担当者");
    EXPECT_GE(staff, 90);
    EXPECT_LE(staff, 120);
    EXPECT_GT(count(main, "M事業所"), 3);
    EXPECT_GT(count(main, "M社員"), 0);
    EXPECT_GT(count(main, "T異動"), 0);
    EXPECT_GT(count(main, "T休職"), 0);
    EXPECT_GT(count(main, "T退職"), 0);

    // Names are family name, one blank, given name; dates have eight digits.
    for (const QString& row :
         testdb::query(main, "SELECT * FROM M担当者", {"姓", "名", "氏名", "カナ", "生年月日", "入社日付"})) {
        const QStringList v = row.split('|');
        EXPECT_EQ(v[2], v[0] + " " + v[1]) << row.toStdString();
        EXPECT_FALSE(v[3].trimmed().isEmpty()) << row.toStdString();
        EXPECT_EQ(v[4].size(), 8) << row.toStdString();
        EXPECT_EQ(v[5].size(), 8) << row.toStdString();
    }
    // Every staff member's office, department and section exists.
    EXPECT_EQ(count(main, "M担当者 WHERE 事業所コード NOT IN (SELECT コード FROM M事業所)"), 0);
    EXPECT_EQ(count(main, "M担当者 WHERE 部門コード NOT IN (SELECT コード FROM M部門)"), 0);
    EXPECT_EQ(count(main, "M担当者 WHERE セクションコード NOT IN (SELECT コード FROM Mセクション)"), 0);
    // A retired employee has a retirement row.
    EXPECT_EQ(count(main, "M社員 WHERE 在籍区分 = '2' AND コード NOT IN (SELECT 社員コード FROM T退職)"), 0);
}

TEST_P(SetupTest, DemoHasAPersonnelSystemLinkedToTheCompanyWithPicturesOfItsEmployees) {
    STAFF_REQUIRE_ENGINE(GetParam());
    setup::Options o = options();
    o.demo = true;
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    const QString main = setup::mainConnectionText(o);
    const QString app = o.root + QStringLiteral("/jinji");

    // The link row names the personnel system's tree.
    EXPECT_EQ(testdb::query(main, "SELECT * FROM M他業務連携 WHERE 業務名 = '人事就業管理'",
                            {"連携有無区分", "連携アプリフォルダ"}),
              QStringList{"1|" + app});
    // Its own configuration, under the name the link opens, describes its own database.
    const QStringList definition =
        testdb::query(desktopText(app + "/conf/usrcnfg.mdb"), "SELECT * FROM データベース定義",
                      {"情報種類", "db", "プロバイダ名", "データソース名", "データベース名"});
    ASSERT_EQ(definition.size(), 1);
    QString personnel;
    if (o.server) {
        const auto server = testdb::pgServer();
        EXPECT_EQ(definition.first(), "GNR|S|PostgreSQL|" + server->dataSource() + "|" + database_ + "_jinji");
        personnel = QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;Initial Catalog=%4_jinji;")
                        .arg(server->user, server->password, server->dataSource(), database_);
    } else {
        EXPECT_EQ(definition.first(), "GNR|A|Microsoft.Jet.OLEDB.4.0|" + app + "/data/jinji.mdb|");
        personnel = QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;User ID=;Password=;Data Source=%1;")
                        .arg(app + "/data/jinji.mdb");
    }
    EXPECT_EQ(testdb::query(desktopText(app + "/conf/usrcnfg.mdb"), "SELECT * FROM 動作環境定義",
                            {"動作環境定義ID", "運用事業所コード"}),
              QStringList{"001|000"});

    // The personnel database holds the same employees and history as the main one, and no staff.
    const QStringList columns{"コード", "氏名", "事業所コード", "在籍区分", "採用No"};
    const QStringList employees = testdb::query(personnel, "SELECT * FROM M社員 ORDER BY コード", columns);
    EXPECT_GT(employees.size(), 60);
    EXPECT_EQ(employees, testdb::query(main, "SELECT * FROM M社員 ORDER BY コード", columns));
    for (const char* table : {"T異動", "T採用", "T休職", "T退職", "T諸届"})
        EXPECT_EQ(count(personnel, table), count(main, table)) << table;
    EXPECT_EQ(testdb::query(personnel, "SELECT 名称 FROM Mユーザ", {"名称"}), QStringList{"株式会社さくら商事"});
    EXPECT_EQ(testdb::query(personnel, "SELECT 写真フォルダ FROM Mユーザ", {"写真フォルダ"}),
              QStringList{o.root + "/photo"});
    // Every state is there: on leave, retired, a past and a future transfer, a change of name.
    EXPECT_GT(count(personnel, "T休職 WHERE 休職終了日付 >= '20991231'"), 0);
    EXPECT_GT(count(personnel, "T退職"), 0);
    EXPECT_GT(count(personnel, "T異動 WHERE 異動日付 < '20260101'"), 0);
    EXPECT_GT(count(personnel, "T異動 WHERE 異動日付 > '20990101'"), 0);
    EXPECT_EQ(count(personnel, "T諸届 WHERE 諸届区分 = '1'"), 1);
    // New hires who are no staff yet.
    EXPECT_GE(count(main, "M社員 WHERE コード NOT IN (SELECT 社員コード FROM M担当者)"), 5);

    // Pictures in the shared photo folder: portraits and seals that load.
    const QStringList photos = QDir(o.root + "/photo/社員").entryList(QDir::Files);
    const QStringList seals = QDir(o.root + "/photo/社員印").entryList(QDir::Files);
    EXPECT_GT(photos.size(), 20);
    EXPECT_GT(seals.size(), 10);
    EXPECT_TRUE(photos.contains("10002.jpg"));
    EXPECT_TRUE(photos.contains("10008_2.jpg"));
    for (const QString& name : photos.mid(0, 3) + seals.mid(0, 3)) {
        const QString folder = name.endsWith(".png") ? "/photo/社員印/" : "/photo/社員/";
        const QImage picture(o.root + folder + name);
        EXPECT_FALSE(picture.isNull()) << name.toStdString();
    }
}

TEST_P(SetupTest, ExistingNonEmptyRootIsRefusedAndLeftAlone) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = options();
    ASSERT_TRUE(QDir().mkpath(o.root));
    {
        QFile keep(o.root + QStringLiteral("/keep.txt"));
        ASSERT_TRUE(keep.open(QIODevice::WriteOnly));
        keep.write("mine");
    }
    const setup::Result result = setup::createInstallation(o);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, QStringLiteral("インストール先フォルダが空ではありません: ") +
                                  QDir(folder_.path()).absoluteFilePath(QStringLiteral("inst")));
    EXPECT_EQ(QDir(o.root).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList{"keep.txt"});
    QFile keep(o.root + QStringLiteral("/keep.txt"));
    ASSERT_TRUE(keep.open(QIODevice::ReadOnly));
    EXPECT_EQ(keep.readAll(), QByteArray("mine"));
    EXPECT_TRUE(strayEntries({"inst"}).isEmpty());
    if (GetParam() == Engine::Postgres) {
        EXPECT_FALSE(databaseExists(database_));
    }
}

TEST_P(SetupTest, EmptyExistingRootIsFilled) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = options();
    ASSERT_TRUE(QDir().mkpath(o.root));
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_TRUE(QFileInfo(o.root + QStringLiteral("/conf/usrcnfg.accdb")).isFile());
    EXPECT_TRUE(strayEntries({"inst"}).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, SetupTest, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

class SetupFailureTest : public SetupTest {};

TEST_P(SetupFailureTest, UnreachableServerLeavesNoFolder) {
    setup::Options o = options();
    o.root = folder_.filePath(QStringLiteral("new/inst"));
    o.server = setup::Server{"127.0.0.1", 1, "staff_unreachable", "postgres", "", "S"};
    const setup::Result result = setup::createInstallation(o);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("データベースサーバーに接続できません: 127.0.0.1:1")))
        << result.message.toStdString();
    EXPECT_TRUE(strayEntries({}).isEmpty()) << strayEntries({}).join(' ').toStdString();
}

TEST_P(SetupFailureTest, MissingNpmIsNamed) {
    QTemporaryDir emptyBin;
    ASSERT_TRUE(emptyBin.isValid());
    qputenv("PATH", emptyBin.path().toLocal8Bit());
    setup::Options o = options();
    o.postcodes = setup::Postcodes::Npm;
    const setup::Result result = setup::createInstallation(o);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("npm が見つかりません"))) << result.message.toStdString();
    EXPECT_TRUE(strayEntries({}).isEmpty());
}

TEST_P(SetupFailureTest, BadPostcodeFileIsNamed) {
    setup::Options o = options();
    o.postcodes = setup::Postcodes::File;
    o.postcodeFile = folder_.filePath(QStringLiteral("none.tgz"));
    const setup::Result result = setup::createInstallation(o);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, QStringLiteral("郵便番号データのファイルが見つかりません: ") + o.postcodeFile);
    EXPECT_TRUE(strayEntries({}).isEmpty());
}

// A tree on a shared folder is entered by the other users of the office: its
// root opens to them as a folder made with the user's file mode mask.
TEST(SetupPermissions, RootFollowsTheFileModeMask) {
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const mode_t before = ::umask(022);
    setup::Options o;
    o.root = folder.filePath(QStringLiteral("shared/inst"));
    o.postcodes = setup::Postcodes::Fixture;
    const setup::Result result = setup::createInstallation(o);
    ::umask(before);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    struct stat root {};
    ASSERT_EQ(::stat(QFile::encodeName(o.root).constData(), &root), 0);
    EXPECT_EQ(root.st_mode & 0777, 0755u);
    struct stat prgbin {};
    ASSERT_EQ(::stat(QFile::encodeName(o.root + QStringLiteral("/prgbin")).constData(), &prgbin), 0);
    EXPECT_EQ(prgbin.st_mode & 0777, 0755u);
}

INSTANTIATE_TEST_SUITE_P(Desktop, SetupFailureTest, ::testing::Values(Engine::Sqlite), testdb::engineParamName);

class ServerSetupTest : public SetupTest {};

TEST_P(ServerSetupTest, FailureAfterCreatingTheDatabaseDropsIt) {
    STAFF_REQUIRE_ENGINE(GetParam());
    // A file where the root's parent folder should be: the tree cannot be made.
    QFile blocker(folder_.filePath(QStringLiteral("blocker")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    setup::Options o = options();
    o.root = folder_.filePath(QStringLiteral("blocker/inst"));
    const setup::Result result = setup::createInstallation(o);
    EXPECT_FALSE(result.ok);
    EXPECT_FALSE(result.message.isEmpty());
    EXPECT_FALSE(databaseExists(database_));
    EXPECT_TRUE(strayEntries({"blocker"}).isEmpty());
}

TEST_P(ServerSetupTest, DatabaseWithTablesIsRefusedAndKept) {
    STAFF_REQUIRE_ENGINE(GetParam());
    setup::Options o = options();
    ASSERT_TRUE(testdb::adminExecute(
        QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C'")
            .arg(database_)));
    db::Connection existing;
    ASSERT_TRUE(existing.open(setup::mainConnectionText(o)));
    ASSERT_TRUE(existing.execute(QStringLiteral("CREATE TABLE 顧客 (コード text)")));
    existing.close();

    const setup::Result result = setup::createInstallation(o);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.contains(database_)) << result.message.toStdString();
    EXPECT_TRUE(databaseExists(database_));
    EXPECT_EQ(count(setup::mainConnectionText(o), "顧客"), 0);
    EXPECT_TRUE(strayEntries({}).isEmpty());
}

TEST_P(ServerSetupTest, DialectOConnectsByDataSource) {
    STAFF_REQUIRE_ENGINE(GetParam());
    setup::Options o = options();
    o.server->dialect = "O";
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    const QString source = testdb::pgServer()->dataSource();
    EXPECT_EQ(testdb::query(desktopText(o.root + "/conf/usrcnfg.accdb"), "SELECT * FROM データベース定義",
                            {"情報種類", "db", "データソース名", "サーバー名", "データベース名"}),
              QStringList{"GNR|O|" + source + "/" + database_ + "|" + source + "|" + database_});
    EXPECT_EQ(setup::mainConnectionText(o),
              "Provider=PostgreSQL;User ID=postgres;Password=;Data Source=" + source + "/" + database_ + ";");
    // The connection the program builds from that row reaches the installation's database.
    EXPECT_EQ(count(setup::mainConnectionText(o), "K年号区分"), 6);
}

INSTANTIATE_TEST_SUITE_P(Server, ServerSetupTest, ::testing::Values(Engine::Postgres), testdb::engineParamName);

// Postcode packages made here: a few JSONP files packed the way the npm package is.
class PostcodePackageTest : public SetupTest {
protected:
    QString makePackage(const QString& name) {
        const QString json = folder_.filePath(QStringLiteral("pkg/package/json"));
        EXPECT_TRUE(QDir().mkpath(json));
        const QList<std::pair<QString, QByteArray>> files{
            {"000.json", "jQuery_jpostal_callback(\n[[\"_000info\",\"\",\"ver\",\"\",\"\",\"\",\"\",\"\",\"\"]]\n);\n"},
            {"100.json",
             "jQuery_jpostal_callback(\n[[\"_1000000\",\"\\u6771\\u4eac\\u90fd\",\"\\u5343\\u4ee3\\u7530\\u533a\","
             "\"\\u4ee5\\u4e0b\\u306b\\u63b2\\u8f09\\u304c\\u306a\\u3044\\u5834\\u5408\",\"\",\"\",\"\",\"\",\"\"],"
             "[\"_1000001\",\"\\u6771\\u4eac\\u90fd\",\"\\u5343\\u4ee3\\u7530\\u533a\",\"\\u5343\\u4ee3\\u7530\",\"\","
             "\"\","
             "\"\",\"\",\"\"],"
             "[\"_1000001\",\"\\u6771\\u4eac\\u90fd\",\"\\u5343\\u4ee3\\u7530\\u533a\",\"\\u5343\\u4ee3\\u7530\",\"\","
             "\"\","
             "\"\",\"\",\"\"],"
             "[\"_100\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"]]\n);\n"},
            {"060.json",
             "jQuery_jpostal_callback(\n[[\"_0600042\",\"北海道\",\"札幌市中央区\",\"大通西\",\"\"]]\n);\n"},
        };
        for (const auto& [file, text] : files) {
            QFile f(json + "/" + file);
            EXPECT_TRUE(f.open(QIODevice::WriteOnly));
            f.write(text);
        }
        const QString tgz = folder_.filePath(name);
        EXPECT_EQ(QProcess::execute("tar", {"-czf", tgz, "-C", folder_.filePath("pkg"), "package"}), 0);
        QDir(folder_.filePath("pkg")).removeRecursively();
        return tgz;
    }

    // An npm on the PATH that answers "pack" by copying the given package, or fails.
    void fakeNpm(const QString& package) {
        ASSERT_TRUE(bin_.isValid());
        QFile npm(bin_.filePath(QStringLiteral("npm")));
        ASSERT_TRUE(npm.open(QIODevice::WriteOnly));
        npm.write(package.isEmpty()
                      ? "#!/bin/sh\necho 'network unreachable' >&2\nexit 1\n"
                      : ("#!/bin/sh\n[ \"$1\" = pack ] && [ \"$2\" = jquery-jpostal-ja@2.14.73 ] && cp '" +
                         package.toLocal8Bit() + "' ./jquery-jpostal-ja-2.14.73.tgz\n"));
        npm.close();
        ASSERT_TRUE(npm.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qputenv("PATH", bin_.path().toLocal8Bit() + ":" + pathBefore_);
    }

    QStringList postcodes(const setup::Options& o) {
        return testdb::query(setup::mainConnectionText(o), "SELECT * FROM M郵便番号 ORDER BY 郵便番号",
                             {"郵便番号", "住所A", "住所B"});
    }

    QTemporaryDir bin_;
};

TEST_P(PostcodePackageTest, PackageFileIsReadWithoutDuplicatesAndUnlistedTowns) {
    setup::Options o = options();
    o.postcodes = setup::Postcodes::File;
    o.postcodeFile = makePackage(QStringLiteral("package.tgz"));
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_EQ(postcodes(o), (QStringList{"060-0042|北海道札幌市中央区|大通西", "100-0000|東京都千代田区|",
                                         "100-0001|東京都千代田区|千代田"}));
}

TEST_P(PostcodePackageTest, NpmPackIsUsedWhenItWorks) {
    fakeNpm(makePackage(QStringLiteral("fetched.tgz")));
    setup::Options o = options();
    o.postcodes = setup::Postcodes::Npm;
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_EQ(postcodes(o).size(), 3);
}

TEST_P(PostcodePackageTest, FailedNpmPackFallsBackToTheSample) {
    fakeNpm(QString());
    setup::Options o = options();
    o.postcodes = setup::Postcodes::Npm;
    QStringList steps;
    const setup::Result result = setup::createInstallation(o, [&](const QString& s) { steps.append(s); });
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_TRUE(result.message.contains(QStringLiteral("同梱の見本データだけを登録しました")))
        << result.message.toStdString();
    EXPECT_TRUE(result.message.contains(QStringLiteral("network unreachable"))) << result.message.toStdString();
    EXPECT_EQ(postcodes(o).size(), samplePostcodes().size());
}

INSTANTIATE_TEST_SUITE_P(Desktop, PostcodePackageTest, ::testing::Values(Engine::Sqlite), testdb::engineParamName);

TEST(SetupDeterminism, DemoRowsAreTheSameOnEveryRun) {
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    QStringList runs[2];
    for (int run = 0; run < 2; ++run) {
        setup::Options o;
        o.root = folder.filePath(QStringLiteral("run%1").arg(run));
        o.postcodes = setup::Postcodes::Fixture;
        o.demo = true;
        const setup::Result result = setup::createInstallation(o);
        ASSERT_TRUE(result.ok) << result.message.toStdString();
        const QString main = setup::mainConnectionText(o);
        runs[run] =
            testdb::query(main, "SELECT * FROM M担当者 ORDER BY コード",
                          {"コード", "氏名", "カナ", "生年月日", "電話", "事業所コード", "部門コード", "社員コード"}) +
            testdb::query(main, "SELECT * FROM T異動 ORDER BY 社員コード, 異動日付",
                          {"社員コード", "異動日付", "異動事業所コード"});
    }
    EXPECT_GT(runs[0].size(), 90);
    EXPECT_EQ(runs[0], runs[1]);
}

} // namespace
