// The postal service's all-Japan postcode file: reading it, setting up an
// installation from it, replacing the postcodes of an installation with it;
// and the menu entry of an installation.

#include "tools/menu.h"
#include "tools/postcode_file.h"
#include "tools/postcode_update.h"
#include "tools/setup.h"

#include "platform/db/connection.h"
#include "support/test_databases.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QUuid>

#include <gtest/gtest.h>

namespace {

using testdb::Engine;

const QString kFixtures = QStringLiteral(STAFF_FIXTURES_DIR);
const QString kCsv = kFixtures + QStringLiteral("/postcodes-all-japan.csv");
const QString kUtf8Csv = kFixtures + QStringLiteral("/postcodes-all-japan-utf8.csv");
const QString kZip = kFixtures + QStringLiteral("/postcodes-all-japan.zip");

QByteArray readBytes(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QString joined(const QStringList& row) { return row.join(QLatin1Char('|')); }

QStringList joinedRows(const QList<QStringList>& rows) {
    QStringList out;
    for (const QStringList& row : rows)
        out.append(joined(row));
    return out;
}

// What the fixture holds, row by row in file order, as M郵便番号 takes it:
// the continued rows joined, the texts that name no town area empty.
const QStringList kFixtureRows{
    "060-0000|北海道札幌市中央区|",
    "064-0941|北海道札幌市中央区|旭ケ丘",
    "060-0042|北海道札幌市中央区|大通西（１～１９丁目）",
    "064-0820|北海道札幌市中央区|大通西（２０～２８丁目、南１条西２０～２８丁目、南２条西２０～２８丁目、"
    "南３条西２０～２８丁目、南４条西２０～２８丁目）",
    "060-0061|北海道札幌市中央区|南一条西",
    "980-0811|宮城県仙台市青葉区|一番町（１－４丁目）",
    "306-0400|茨城県猿島郡境町|",
    "100-0000|東京都千代田区|",
    "100-0001|東京都千代田区|千代田",
    "100-0001|東京都千代田区|千代田",
    "101-0021|東京都千代田区|外神田",
    "101-0051|東京都千代田区|神田神保町",
    "101-0051|東京都千代田区|神田錦町",
    "102-0072|東京都千代田区|飯田橋",
    "190-0200|東京都西多摩郡檜原村|",
    "453-0002|愛知県名古屋市中村区|名駅",
    "522-0317|滋賀県犬上郡多賀町|一円",
    "600-8008|京都府京都市下京区|四条通烏丸東入長刀鉾町",
    "600-8216|京都府京都市下京区|東塩小路町（烏丸通塩小路下る、西洞院通塩小路下る、東洞院通塩小路下る）",
    "530-0001|大阪府大阪市北区|梅田",
    "530-0003|大阪府大阪市北区|堂島（次のビルを除く）",
    "812-0011|福岡県福岡市博多区|博多駅前",
    "900-0006|沖縄県那覇市|おもろまち",
};

// The same in M郵便番号, ordered by postcode and town area, the repeated row once.
QStringList fixtureTable() {
    QStringList rows = kFixtureRows;
    rows.removeDuplicates();
    std::sort(rows.begin(), rows.end(), [](const QString& a, const QString& b) {
        const QStringList x = a.split('|'), y = b.split('|');
        return x.at(0) != y.at(0) ? x.at(0) < y.at(0) : x.at(2) < y.at(2);
    });
    return rows;
}

// A record of the file's form with the given postcode and town area.
QByteArray record(const QByteArray& postcode, const QByteArray& town, const QByteArray& city = "千代田区") {
    return "13101,\"100  \",\"" + postcode + "\",\"ﾄｳｷｮｳﾄ\",\"ﾁﾖﾀﾞｸ\",\"ｶﾅ\",\"東京都\",\"" + city + "\",\"" + town +
           "\",0,0,0,0,0,0\r\n";
}

// ---------------------------------------------------------------------------
// Reading the file

TEST(AllJapanFile, FixtureIsInThePublishedForm) {
    const QByteArray bytes = readBytes(kCsv);
    // Not UTF-8, but code page 932: half-width kana are single bytes, ～ is 0x81 0x60.
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString asUtf8 = utf8.decode(bytes);
    EXPECT_TRUE(utf8.hasError());
    EXPECT_TRUE(bytes.contains("\x81\x60"));
    EXPECT_TRUE(bytes.contains("\"\xCE\xAF\xB6\xB2\xC4\xDE\xB3\"")); // "ﾎｯｶｲﾄﾞｳ"
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    EXPECT_EQ(bytes.count("\r\n"), bytes.count('\n'));
    EXPECT_EQ(bytes.count("\r\n"), 26);
}

TEST(AllJapanFile, RowsAreJoinedAndPlaceholdersEmptied) {
    const setup::AllJapanRows file = setup::readAllJapanCsv(readBytes(kCsv), kCsv);
    ASSERT_TRUE(file.ok) << file.error.toStdString();
    EXPECT_EQ(file.records, 26);
    EXPECT_EQ(joinedRows(file.rows), kFixtureRows);
}

TEST(AllJapanFile, UnicodeFileReadsTheSame) {
    const setup::AllJapanRows file = setup::readAllJapanCsv(readBytes(kUtf8Csv), kUtf8Csv);
    ASSERT_TRUE(file.ok) << file.error.toStdString();
    EXPECT_EQ(joinedRows(file.rows), kFixtureRows);
    const setup::AllJapanRows withMark = setup::readAllJapanCsv("\xEF\xBB\xBF" + readBytes(kUtf8Csv), kUtf8Csv);
    ASSERT_TRUE(withMark.ok) << withMark.error.toStdString();
    EXPECT_EQ(joinedRows(withMark.rows), kFixtureRows);
}

TEST(AllJapanFile, QuotingAndLineEndsOfCsv) {
    // Doubled quotes and a comma inside quotes, unquoted text, LF line ends, no line end at the last record.
    const QByteArray content = "13101,\"100  \",\"1000005\",\"ｶﾅ\",\"ｶﾅ\",\"ｶﾅ\",\"東京都\",\"千代田区\","
                               "\"丸の内\"\"一\"\",二\",0,0,0,0,0,0\n"
                               "13101,100,1000006,ｶﾅ,ｶﾅ,ｶﾅ,東京都,千代田区,有楽町,0,0,0,0,0,0";
    const setup::AllJapanRows file = setup::readAllJapanCsv(content, "q.csv");
    ASSERT_TRUE(file.ok) << file.error.toStdString();
    EXPECT_EQ(joinedRows(file.rows),
              (QStringList{"100-0005|東京都千代田区|丸の内\"一\",二", "100-0006|東京都千代田区|有楽町"}));
}

TEST(AllJapanFile, TownAreaOpenWhenThePostcodeChangesIsTakenAsFarAsItWent) {
    const QByteArray content = record("1000011", "内幸町（１丁目、") + record("1000012", "日比谷公園");
    const setup::AllJapanRows file = setup::readAllJapanCsv(content, "open.csv");
    ASSERT_TRUE(file.ok) << file.error.toStdString();
    EXPECT_EQ(joinedRows(file.rows),
              (QStringList{"100-0011|東京都千代田区|内幸町（１丁目、", "100-0012|東京都千代田区|日比谷公園"}));
}

TEST(AllJapanFile, RowsOfAnotherMunicipalityAreNotJoined) {
    const QByteArray content = record("1000011", "内幸町（１丁目、") + record("1000011", "２丁目）", "中央区");
    const setup::AllJapanRows file = setup::readAllJapanCsv(content, "other.csv");
    ASSERT_TRUE(file.ok) << file.error.toStdString();
    EXPECT_EQ(joinedRows(file.rows),
              (QStringList{"100-0011|東京都千代田区|内幸町（１丁目、", "100-0011|東京都中央区|２丁目）"}));
}

TEST(AllJapanFile, PlaceholderTownAreas) {
    EXPECT_EQ(setup::townArea("以下に掲載がない場合"), "");
    EXPECT_EQ(setup::townArea("境町の次に番地がくる場合"), "");
    EXPECT_EQ(setup::townArea("檜原村一円"), "");
    EXPECT_EQ(setup::townArea("一円"), "一円");
    EXPECT_EQ(setup::townArea("千代田"), "千代田");
    EXPECT_EQ(setup::townArea("以下に掲載がない場合（その他）"), "以下に掲載がない場合（その他）");
}

// Each refused file names itself, the line and what is wrong, and yields no rows.
void expectRefused(const QByteArray& content, const QString& lineAndProblem) {
    const setup::AllJapanRows file = setup::readAllJapanCsv(content, "bad.csv");
    EXPECT_FALSE(file.ok);
    EXPECT_TRUE(file.rows.isEmpty());
    EXPECT_EQ(file.error, QStringLiteral("郵便番号データの形式が違います: bad.csv の ") + lineAndProblem)
        << file.error.toStdString();
}

TEST(AllJapanFile, TruncatedFilesAreRefused) {
    const QByteArray bytes = readBytes(kCsv);
    const qsizetype thirdLine = bytes.indexOf('\n', bytes.indexOf('\n') + 1) + 1;
    // Cut inside the quoted town area of the third record.
    const qsizetype cut = bytes.indexOf("\x91\xE5\x92\xCA", thirdLine) + 2; // 大通
    expectRefused(bytes.left(cut), QStringLiteral("3 行目: 引用符 \" が閉じていません"));
    // Cut among the flags.
    const qsizetype flags = bytes.indexOf(",1,0,1", thirdLine);
    expectRefused(bytes.left(flags + 4), QStringLiteral("3 行目: 列の数が 15 ではありません (11 列)"));
    // Cut between the first and the second row of a continued town area: the file ends inside it.
    const qsizetype continued = bytes.indexOf("0640820");
    expectRefused(bytes.left(bytes.indexOf('\n', continued) + 1),
                  QStringLiteral("4 行目: 町域名の （ が閉じないままファイルが終わっています "
                                 "(ファイルが途中で切れていませんか)"));
    // Cut between the two bytes of a character.
    expectRefused(bytes.left(cut - 1), QStringLiteral("3 行目: ファイルが文字の途中で終わっています"));
}

TEST(AllJapanFile, FilesOfAnotherKindAreRefused) {
    expectRefused(readBytes(QStringLiteral(STAFF_PACKAGING_DIR "/staffmaster.png")),
                  QStringLiteral("3 行目: テキストファイルではありません (CSV ファイルを指定してください)"));
    expectRefused("郵便番号,住所\r\n100-0001,東京都千代田区千代田\r\n",
                  QStringLiteral("1 行目: 列の数が 15 ではありません (2 列)"));
    expectRefused("\x81\x40\x85\x40\r\n", QStringLiteral("1 行目: シフトJIS (コードページ932) として読めません"));
    expectRefused(record("100-001", "千代田"),
                  QStringLiteral("1 行目: 3 列目の郵便番号が数字7桁ではありません: 100-001"));
    expectRefused(record("1000001", "千代田").replace(",0,0,0,0,0,0", ",0,0,0,0,0,x"),
                  QStringLiteral("1 行目: 15 列目が数字1桁ではありません: x"));
    expectRefused(record("1000001", "千代田").replace("\"千代田区\"", "\"\""),
                  QStringLiteral("1 行目: 7 列目の都道府県名か 8 列目の市区町村名が空です"));
    expectRefused(record("1000001", "千代田").replace("\"千代田\",", "\"千代田\"x,"),
                  QStringLiteral("1 行目: 引用符 \" で閉じた項目の後に , がありません"));
    const setup::AllJapanRows empty = setup::readAllJapanCsv("\r\n", "empty.csv");
    EXPECT_FALSE(empty.ok);
    EXPECT_EQ(empty.error, QStringLiteral("郵便番号データに行がありません: empty.csv"));
}

// ---------------------------------------------------------------------------
// Installations

// Runs statements on the engine as they stand, without the dialect translation.
void rawExecute(const QString& connectionText, const QStringList& statements) {
    db::Connection connection;
    ASSERT_TRUE(connection.open(connectionText)) << connection.lastError().description.toStdString();
    for (const QString& sql : statements) {
        QSqlQuery q(connection.database());
        ASSERT_TRUE(q.exec(sql)) << sql.toStdString() << ": " << q.lastError().text().toStdString();
    }
}

class PostcodeInstallationTest : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override { ASSERT_TRUE(folder_.isValid()); }

    void TearDown() override {
        if (!database_.isEmpty()) {
            testdb::adminExecute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(database_));
        }
    }

    setup::Options options(setup::Postcodes source, const QString& file = {}) {
        setup::Options o;
        o.root = folder_.filePath(QStringLiteral("inst"));
        o.postcodes = source;
        o.postcodeFile = file;
        if (GetParam() == Engine::Postgres) {
            const auto server = testdb::pgServer();
            database_ = QStringLiteral("staff_postcodes_") + QUuid::createUuid().toString(QUuid::Id128).left(12);
            o.server = setup::Server{server->host, server->port, database_, server->user, server->password, "S"};
        }
        return o;
    }

    QStringList table(const setup::Options& o) {
        return testdb::query(setup::mainConnectionText(o), "SELECT * FROM M郵便番号 ORDER BY 郵便番号, 住所B",
                             {"郵便番号", "住所A", "住所B"});
    }

    // An installation with the built-in sample postcodes.
    setup::Options installed() {
        setup::Options o = options(setup::Postcodes::Fixture);
        const setup::Result made = setup::createInstallation(o);
        EXPECT_TRUE(made.ok) << made.message.toStdString();
        return o;
    }

    // A copy of the fixture cut after `bytes` bytes.
    QString truncatedCopy(qsizetype bytes) {
        const QString path = folder_.filePath(QStringLiteral("truncated.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(readBytes(kCsv).left(bytes));
        return path;
    }

    QTemporaryDir folder_;
    QString database_;
};

TEST_P(PostcodeInstallationTest, SetupTakesTheCsvFile) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = options(setup::Postcodes::File, kCsv);
    QStringList steps;
    const setup::Result result = setup::createInstallation(o, [&](const QString& s) { steps.append(s); });
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_EQ(table(o), fixtureTable());
    EXPECT_TRUE(steps.contains(QStringLiteral("郵便番号データ: 26 行を読みました (続きの行をまとめて 23 件)")))
        << steps.join('\n').toStdString();
}

TEST_P(PostcodeInstallationTest, SetupTakesTheZipFile) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = options(setup::Postcodes::File, kZip);
    const setup::Result result = setup::createInstallation(o);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_EQ(table(o), fixtureTable());
}

TEST_P(PostcodeInstallationTest, UpdateReplacesTheMaster) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = installed();
    const QStringList before = table(o);
    ASSERT_GT(before.size(), 1000);
    QStringList steps;
    const setup::Result result =
        setup::updatePostcodes(o.root, setup::Postcodes::File, kZip, [&](const QString& s) { steps.append(s); });
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_EQ(table(o), fixtureTable());
    EXPECT_EQ(result.message, QStringLiteral("郵便番号データを入れ替えました: 22 件 (前は %1 件): %2")
                                  .arg(before.size())
                                  .arg(QFileInfo(o.root).absoluteFilePath()));
    EXPECT_TRUE(steps.contains(QStringLiteral("郵便番号を入れ替えています: 22 / 22 件")))
        << steps.join('\n').toStdString();
}

TEST_P(PostcodeInstallationTest, RefusedFilesLeaveTheMasterAlone) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = installed();
    const QStringList before = table(o);

    const QString truncated = truncatedCopy(readBytes(kCsv).indexOf("0640820") + 40);
    setup::Result result = setup::updatePostcodes(o.root, setup::Postcodes::File, truncated);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("郵便番号データの形式が違います: ") + truncated +
                                          QStringLiteral(" の 4 行目: ")))
        << result.message.toStdString();
    EXPECT_TRUE(result.message.endsWith(QStringLiteral("郵便番号データは入れ替えていません。")));
    EXPECT_EQ(table(o), before);

    const QString notCsv = QStringLiteral(STAFF_PACKAGING_DIR "/staffmaster.png");
    result = setup::updatePostcodes(o.root, setup::Postcodes::File, notCsv);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.contains(QStringLiteral("テキストファイルではありません")))
        << result.message.toStdString();
    EXPECT_EQ(table(o), before);

    // A zip cut short.
    const QString brokenZip = folder_.filePath(QStringLiteral("broken.zip"));
    {
        QFile file(brokenZip);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(readBytes(kZip).left(200));
    }
    result = setup::updatePostcodes(o.root, setup::Postcodes::File, brokenZip);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.startsWith(
        QStringLiteral("zip ファイルを展開できません (壊れているか、途中で切れています): ") + brokenZip))
        << result.message.toStdString();
    EXPECT_EQ(table(o), before);
}

TEST_P(PostcodeInstallationTest, FailureHalfwayRollsBack) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = installed();
    const QStringList before = table(o);
    // The database refuses the last row of the fixture, after the old rows are gone and most new ones are in.
    if (GetParam() == Engine::Sqlite) {
        rawExecute(setup::mainConnectionText(o),
                   {"CREATE TRIGGER staff_test_refuse BEFORE INSERT ON M郵便番号 WHEN NEW.郵便番号 = '900-0006' "
                    "BEGIN SELECT RAISE(ABORT, 'refused by the test'); END"});
    } else {
        rawExecute(setup::mainConnectionText(o),
                   {"CREATE FUNCTION staff_test_refuse() RETURNS trigger AS $$ BEGIN IF NEW.郵便番号 = '900-0006' "
                    "THEN RAISE EXCEPTION 'refused by the test'; END IF; RETURN NEW; END $$ LANGUAGE plpgsql",
                    "CREATE TRIGGER staff_test_refuse BEFORE INSERT ON M郵便番号 FOR EACH ROW "
                    "EXECUTE FUNCTION staff_test_refuse()"});
    }
    const setup::Result result = setup::updatePostcodes(o.root, setup::Postcodes::File, kCsv);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("M郵便番号 に登録できません: ")))
        << result.message.toStdString();
    EXPECT_TRUE(result.message.contains(QStringLiteral("refused by the test"))) << result.message.toStdString();
    EXPECT_TRUE(result.message.endsWith(QStringLiteral("郵便番号データは元のままです (%1 件)。").arg(before.size())))
        << result.message.toStdString();
    EXPECT_EQ(table(o), before);
}

TEST_P(PostcodeInstallationTest, UnreachableNpmReplacesNothing) {
    STAFF_REQUIRE_ENGINE(GetParam());
    const setup::Options o = installed();
    const QStringList before = table(o);
    const QByteArray path = qgetenv("PATH");
    QTemporaryDir bin;
    ASSERT_TRUE(bin.isValid());
    QFile npm(bin.filePath(QStringLiteral("npm")));
    ASSERT_TRUE(npm.open(QIODevice::WriteOnly));
    npm.write("#!/bin/sh\necho 'network unreachable' >&2\nexit 1\n");
    npm.close();
    ASSERT_TRUE(npm.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("PATH", bin.path().toLocal8Bit() + ":" + path);
    const setup::Result result = setup::updatePostcodes(o.root, setup::Postcodes::Npm, {});
    qputenv("PATH", path);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("郵便番号データを npm から取得できませんでした: ")))
        << result.message.toStdString();
    EXPECT_EQ(table(o), before);
}

INSTANTIATE_TEST_SUITE_P(Engines, PostcodeInstallationTest, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

TEST(PostcodeUpdate, FolderThatIsNoInstallationIsNamed) {
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const setup::Result result = setup::updatePostcodes(folder.path(), setup::Postcodes::File, kCsv);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message,
              QStringLiteral("インストール先ではありません (conf/usrcnfg.accdb がありません): ") + folder.path());
    const setup::Result missing = setup::updatePostcodes(folder.filePath("none"), setup::Postcodes::File, kCsv);
    EXPECT_EQ(missing.message, QStringLiteral("インストール先フォルダがありません: ") + folder.filePath("none"));
}

// ---------------------------------------------------------------------------
// The menu entry

class MenuEntryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        dataHomeBefore_ = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", folder_.filePath(QStringLiteral("data-home")).toLocal8Bit());
    }
    void TearDown() override {
        if (dataHomeBefore_.isNull())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", dataHomeBefore_);
    }

    // A tree with a program in prgbin, under a name with the characters the Exec key must quote.
    QString tree(const QString& name) {
        const QString root = folder_.filePath(name);
        EXPECT_TRUE(QDir().mkpath(root + QStringLiteral("/prgbin")));
        QFile program(root + QStringLiteral("/prgbin/担当者登録"));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n");
        program.close();
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return root;
    }

    QTemporaryDir folder_;
    QByteArray dataHomeBefore_;
};

TEST_F(MenuEntryTest, EntryStartsTheProgramOfTheTree) {
    const QString root = tree(QStringLiteral("営業 支援"));
    const setup::Result result = setup::writeMenuEntry(root);
    ASSERT_TRUE(result.ok) << result.message.toStdString();
    const setup::MenuEntry entry = setup::menuEntryFor(root);
    EXPECT_EQ(result.message, QStringLiteral("メニューに登録しました: ") + entry.file);
    EXPECT_TRUE(entry.file.startsWith(folder_.filePath(QStringLiteral("data-home/applications/staffmaster-"))));
    EXPECT_TRUE(entry.file.endsWith(QStringLiteral(".desktop")));
    EXPECT_EQ(entry.icon, folder_.filePath(QStringLiteral("data-home/icons/hicolor/256x256/apps/staffmaster.png")));
    EXPECT_TRUE(readBytes(entry.icon).startsWith("\x89PNG"));

    const QStringList lines = QString::fromUtf8(readBytes(entry.file)).split('\n');
    EXPECT_EQ(lines.first(), QStringLiteral("[Desktop Entry]"));
    EXPECT_TRUE(lines.contains(QStringLiteral("Name=担当者登録")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Categories=Office;")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Exec=\"") + root + QStringLiteral("/prgbin/担当者登録\"")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Icon=") + entry.icon));

    // Another tree has an entry of its own; the same tree's entry is written over.
    const QString other = tree(QStringLiteral("other"));
    ASSERT_TRUE(setup::writeMenuEntry(other).ok);
    ASSERT_TRUE(setup::writeMenuEntry(root).ok);
    EXPECT_EQ(QDir(folder_.filePath(QStringLiteral("data-home/applications"))).entryList(QDir::Files).size(), 2);
}

TEST_F(MenuEntryTest, EntryPassesTheValidator) {
    const QString validator = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    if (validator.isEmpty()) {
        if (qgetenv("CI") == "true")
            FAIL() << "desktop-file-validate is missing (Debian package desktop-file-utils)";
        GTEST_SKIP() << "desktop-file-validate is missing (Debian package desktop-file-utils)";
    }
    for (const QString& name :
         {QStringLiteral("plain"), QStringLiteral("with \"quotes\" $HOME `x` 100% back\\slash")}) {
        const QString root = tree(name);
        ASSERT_TRUE(setup::writeMenuEntry(root).ok);
        QProcess check;
        check.setProcessChannelMode(QProcess::MergedChannels);
        check.start(validator, {setup::menuEntryFor(root).file});
        ASSERT_TRUE(check.waitForFinished(30000));
        const QByteArray said = check.readAll().trimmed();
        EXPECT_EQ(check.exitCode(), 0) << said.toStdString();
        // The validator also reports hints and warnings with exit code 0: there must be none.
        EXPECT_EQ(said, QByteArray()) << name.toStdString();
    }
}

TEST_F(MenuEntryTest, ExecQuotingKeepsTheCharactersOfThePath) {
    const QString root = QStringLiteral("/srv/a \"b\" $c `d` 100% e\\f");
    const QString text = setup::desktopEntryText(root, QStringLiteral("/icons/x.png"));
    EXPECT_TRUE(text.contains(
        QStringLiteral("\nExec=\"/srv/a \\\\\"b\\\\\" \\\\$c \\\\`d\\\\` 100%% e\\\\\\\\f/prgbin/担当者登録\"\n")))
        << text.toStdString();
}

TEST_F(MenuEntryTest, TreeWithoutTheProgramIsRefused) {
    const QString root = folder_.filePath(QStringLiteral("empty"));
    ASSERT_TRUE(QDir().mkpath(root));
    const setup::Result result = setup::writeMenuEntry(root);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, QStringLiteral("メニューに登録するプログラムがありません: ") + root +
                                  QStringLiteral("/prgbin/担当者登録"));
    EXPECT_FALSE(QFileInfo::exists(folder_.filePath(QStringLiteral("data-home/applications"))));
}

} // namespace
