// Folders, the two connections and the statement routines, on a tree made by
// the installation tool.

#include "shell/modデータ処理.h"
#include "support/installation.h"

#include "platform/os/files.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

class Connections : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
    }
    Context& ctx() { return tree->ctx(); }
    std::unique_ptr<TestInstallation> tree;
};

TEST_P(Connections, BothDatabasesOpenOnAFreshTree) {
    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_TRUE(ctx().conn.環境DB接続中);
    const auto& f = ctx().folders;
    EXPECT_EQ(f.基準フォルダ, tree->root());
    EXPECT_EQ(f.prgbinフォルダ, tree->path(QStringLiteral("prgbin")));
    EXPECT_EQ(f.共通confフォルダ, tree->path(QStringLiteral("conf")));
    EXPECT_EQ(f.共通reportフォルダ, tree->path(QStringLiteral("report")));
    EXPECT_EQ(f.manualフォルダ, tree->path(QStringLiteral("manual")));
    EXPECT_EQ(f.confフォルダ, tree->path(QStringLiteral("conf")));
    EXPECT_EQ(f.reportフォルダ, tree->path(QStringLiteral("report")));
    EXPECT_EQ(f.usrcnfg種別, 1);
    EXPECT_EQ(ctx().conn.db, GetParam() == Engine::Sqlite ? QStringLiteral("A") : QStringLiteral("S"));
    EXPECT_EQ(ctx().terminal.ユーザID, QStringLiteral("tanaka"));
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("000"));

    ASSERT_TRUE(業務DBopen(ctx()));
    EXPECT_TRUE(ctx().conn.業務DB接続中);
    if (GetParam() == Engine::Sqlite) {
        EXPECT_EQ(f.Accessデータパス, tree->path(QStringLiteral("data/main.accdb")));
    }
    // The start of the run is in the usage table.
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT * FROM 使用状況"),
                             {QStringLiteral("コンピュータID"), QStringLiteral("ユーザID"), QStringLiteral("プログラムID"),
                              QStringLiteral("開始日時"), QStringLiteral("終了日時")}),
              QStringList{QStringLiteral("PC-01|tanaka|担当者登録|20261121 093000|")});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Connections, StatementRoutinesAnswerAndLog) {
    ASSERT_TRUE(環境DBopen(ctx()));
    ASSERT_TRUE(業務DBopen(ctx()));
    const int before = tree->history().size();

    db::Recordset rs;
    EXPECT_TRUE(業務SQLopen(ctx(), rs, QStringLiteral("SELECT * FROM M事業所 WHERE コード = '000'")));
    rs.close();
    EXPECT_FALSE(業務SQLopen(ctx(), rs, QStringLiteral("SELECT * FROM M事業所 WHERE コード = 'zzz'")));
    rs.close();
    EXPECT_EQ(tree->history().size(), before); // an empty answer is no error

    EXPECT_FALSE(業務SQLopen(ctx(), rs, QStringLiteral("SELECT * FROM 無い表")));
    rs.close();
    QStringList h = tree->history();
    ASSERT_EQ(h.size(), before + 1);
    EXPECT_TRUE(h.last().contains(QStringLiteral("|エラー SELECT * FROM 無い表"))) << h.last().toStdString();
    EXPECT_GT(h.last().size(), QStringLiteral("|エラー SELECT * FROM 無い表").size() + 12); // the description follows

    EXPECT_TRUE(業務SQLexec(ctx(), QStringLiteral("UPDATE M事業所 SET 名称 = '本社' WHERE コード = '000'"), true));
    h = tree->history();
    EXPECT_TRUE(h.last().endsWith(QStringLiteral("|出力終了 UPDATE M事業所 SET 名称 = ''本社'' WHERE コード = ''000''")))
        << h.last().toStdString();
    EXPECT_TRUE(業務SQLexec(ctx(), QStringLiteral("UPDATE M事業所 SET 名称 = '本社' WHERE コード = '000'"), false));
    EXPECT_EQ(tree->history().size(), h.size());
}

TEST_P(Connections, FailingConfigurationStatementNamingTheHistoryWritesNoRow) {
    ASSERT_TRUE(環境DBopen(ctx()));
    const int before = tree->history().size();
    EXPECT_FALSE(環境SQLexec(ctx(), QStringLiteral("DELETE FROM プログラム稼動履歴 WHERE 無い列 = '1'")));
    db::Recordset rs;
    EXPECT_FALSE(環境SQLopen(ctx(), rs, QStringLiteral("SELECT 無い列 FROM プログラム稼動履歴")));
    rs.close();
    EXPECT_EQ(tree->history().size(), before);
    // Any other failing statement is logged.
    EXPECT_FALSE(環境SQLexec(ctx(), QStringLiteral("DELETE FROM プログラム連携情報 WHERE 無い列 = '1'")));
    EXPECT_EQ(tree->history().size(), before + 1);
}

TEST_P(Connections, RecordedConfigurationStatementAlwaysLeavesItsRow) {
    ASSERT_TRUE(環境DBopen(ctx()));
    const int before = tree->history().size();
    EXPECT_FALSE(環境SQL記録exec(ctx(), QStringLiteral("UPDATE 無い表 SET a = '1'")));
    const QStringList h = tree->history();
    ASSERT_EQ(h.size(), before + 2);
    EXPECT_TRUE(h.at(before).contains(QStringLiteral("|エラー UPDATE 無い表 SET a = ''1''")));
    EXPECT_TRUE(h.at(before + 1).endsWith(QStringLiteral("|出力終了 UPDATE 無い表 SET a = ''1''")));
}

TEST_P(Connections, NoGnrRowMakesNoConnectionAndTheFirstStatementFails) {
    ASSERT_TRUE(tree->configExecute(QStringLiteral("DELETE FROM データベース定義 WHERE 情報種類 = 'GNR'")));
    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_EQ(ctx().conn.db, QString());
    EXPECT_TRUE(業務DBopen(ctx()));
    EXPECT_TRUE(ctx().conn.業務DB接続中);
    EXPECT_FALSE(ctx().conn.業務DB接続.isOpen());
    // The clean-up of the usage table is the first statement on the main connection.
    const QStringList h = tree->history();
    ASSERT_FALSE(h.isEmpty());
    EXPECT_TRUE(h.first().contains(QStringLiteral("|エラー DELETE FROM 使用状況 WHERE 終了日時 < ''20261021'' AND "
                                                  "終了日時 <> ''''")))
        << h.first().toStdString();
}

TEST_P(Connections, MainDatabaseThatCannotOpenIsLoggedWithoutAMessage) {
    ASSERT_TRUE(tree->configExecute(
        QStringLiteral("UPDATE データベース定義 SET db = 'A', プロバイダ名 = 'Microsoft.ACE.OLEDB.12.0', データソース名 = '") +
        tree->path(QStringLiteral("data/missing.accdb")) + QStringLiteral("' WHERE 情報種類 = 'GNR'")));
    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_FALSE(業務DBopen(ctx()));
    EXPECT_FALSE(ctx().conn.業務DB接続中);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    const QStringList h = tree->history();
    ASSERT_FALSE(h.isEmpty());
    EXPECT_TRUE(h.last().contains(QStringLiteral("|エラー DB_OPEN ERROR1004 "))) << h.last().toStdString();
}

TEST_P(Connections, NullDialectEndsTheStart) {
    ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE データベース定義 SET db = NULL WHERE 情報種類 = 'GNR'")));
    EXPECT_FALSE(環境DBopen(ctx()));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Connections, MissingEnvironmentRowEndsTheProgramWithItsMessage) {
    ASSERT_TRUE(tree->configExecute(QStringLiteral("DELETE FROM 動作環境定義")));
    ASSERT_TRUE(環境DBopen(ctx()));
    ctx().run.稼動連番 = 0;
    EXPECT_THROW(業務DBopen(ctx()), ProcessEnded);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("動作環境に問題があります。")});
    // The shut-down wrote its end row and closed the connections.
    EXPECT_TRUE(tree->history().last().endsWith(QStringLiteral("|終了")));
    EXPECT_FALSE(ctx().conn.環境DB接続中);
    EXPECT_FALSE(ctx().conn.業務DB接続中);
}

TEST_P(Connections, RememberedOperatorIsReadAtTheEnvironmentCheck) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,アクセス権限,処理分類3操作許可,修正許可) VALUES "
        "('00012','山田 太郎','001','010','2','1','1')")));
    ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '00012'")));
    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_EQ(ctx().env.起動担当者コード, QStringLiteral("00012"));
    ASSERT_TRUE(業務DBopen(ctx()));
    const auto& op = ctx().op;
    EXPECT_EQ(op.操作担当者コード, QStringLiteral("00012"));
    EXPECT_EQ(op.氏名, QStringLiteral("山田 太郎"));
    EXPECT_EQ(op.事業所コード, QStringLiteral("001"));
    EXPECT_EQ(op.アクセス権限, 2);
    EXPECT_EQ(op.処理分類操作許可[3], QStringLiteral("1"));
    EXPECT_EQ(op.修正許可, QStringLiteral("1"));
}

TEST_P(Connections, ReopenOfTheConfigurationConnection) {
    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_TRUE(環境DBreopen(ctx()));
    EXPECT_TRUE(ctx().conn.環境DB接続中);
    QFile::remove(tree->configFile());
    EXPECT_FALSE(環境DBreopen(ctx()));
    EXPECT_FALSE(ctx().conn.環境DB接続中);
}

INSTANTIATE_TEST_SUITE_P(Engines, Connections, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

// Folder discovery needs only the configuration file, which is a desktop file on every tree.
class Folders : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(tree.ok()) << tree.error().toStdString(); }
    TestInstallation tree{Engine::Sqlite};
};

TEST_F(Folders, ProgramFolderInCapitalsIsFound) {
    tree.sys.folder = tree.path(QStringLiteral("PRGBIN"));
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.prgbinフォルダ, tree.path(QStringLiteral("prgbin")));
    EXPECT_EQ(tree.ctx().folders.基準フォルダ, tree.root());
}

TEST_F(Folders, ProgramStartedFromPrgsrc) {
    tree.sys.folder = tree.path(QStringLiteral("prgsrc"));
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.prgbinフォルダ, tree.path(QStringLiteral("prgbin")));
}

TEST_F(Folders, NoProgramFolderWordEndsQuietly) {
    tree.sys.folder = tree.root() + QStringLiteral("/bin");
    EXPECT_FALSE(環境DBopen(tree.ctx()));
    EXPECT_FALSE(tree.ctx().conn.環境DB接続中);
    EXPECT_TRUE(tree.messages.shown.isEmpty());
}

TEST_F(Folders, BothConfigurationFilesPresentTheFirstIsUsed) {
    QFile mdb(tree.path(QStringLiteral("conf/usrcnfg.mdb")));
    ASSERT_TRUE(mdb.open(QIODevice::WriteOnly));
    mdb.write("not a database");
    mdb.close();
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.usrcnfg種別, 1);
}

TEST_F(Folders, OnlyTheOlderConfigurationFileKind) {
    ASSERT_TRUE(QFile::rename(tree.configFile(), tree.path(QStringLiteral("conf/usrcnfg.mdb"))));
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.usrcnfg種別, 2);
    EXPECT_TRUE(業務DBopen(tree.ctx()));
}

TEST_F(Folders, NoConfigurationFileEndsQuietly) {
    QFile::remove(tree.configFile());
    EXPECT_FALSE(環境DBopen(tree.ctx()));
    EXPECT_TRUE(tree.messages.shown.isEmpty());
}

TEST_F(Folders, ConfigurationFileThatIsNoDatabaseShowsItsErrorBox) {
    QFile file(tree.configFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("this is a text file and no database at all, however long it may be made to look.");
    file.close();
    EXPECT_FALSE(環境DBopen(tree.ctx()));
    ASSERT_EQ(tree.messages.shown.size(), 1);
    const QString text = tree.messages.shown.first().text;
    EXPECT_TRUE(text.startsWith(QStringLiteral("SYB_OPEN ERROR1004 "))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QChar(13) + QStringLiteral("sysopen error")));
}

TEST_F(Folders, GeneralDatabaseKinds) {
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.gnrdb種別, 0);
    EXPECT_EQ(tree.ctx().folders.gnrdbパス, QString());
    QFile(tree.path(QStringLiteral("data/gnrdb.mdb"))).open(QIODevice::WriteOnly);
    tree.newContext();
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.gnrdb種別, 2);
    EXPECT_EQ(tree.ctx().folders.gnrdbパス, tree.path(QStringLiteral("data/gnrdb.mdb")));
    QFile(tree.path(QStringLiteral("data/gnrdb.accdb"))).open(QIODevice::WriteOnly);
    tree.newContext();
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.gnrdb種別, 1);
    EXPECT_EQ(tree.ctx().folders.gnrdbパス, tree.path(QStringLiteral("data/gnrdb.accdb")));
}

TEST(FoldersOnAServer, NoDataFolderTheStartGoesOn) {
    STAFF_REQUIRE_ENGINE(Engine::Postgres);
    TestInstallation tree(Engine::Postgres);
    ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
    ASSERT_TRUE(QDir(tree.path(QStringLiteral("data"))).removeRecursively());
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.gnrdb種別, 0);
    EXPECT_EQ(tree.ctx().folders.gnrdbパス, QString());
    EXPECT_TRUE(業務DBopen(tree.ctx()));
}

TEST(ServerBySourceName, DialectOOpensAndRunsTheOuterJoinForm) {
    STAFF_REQUIRE_ENGINE(Engine::Postgres);
    TestInstallation tree(Engine::Postgres, QStringLiteral("root"), QStringLiteral("O"));
    ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().conn.db, QStringLiteral("O"));
    ASSERT_TRUE(業務DBopen(tree.ctx()));
    db::Recordset rs;
    EXPECT_TRUE(業務SQLopen(tree.ctx(), rs,
                            QStringLiteral("SELECT TOP 1000 M事業所.コード,M事業所.名称 FROM M事業所,Mユーザ WHERE "
                                           "Mユーザ.ID(+) = M事業所.コード AND M事業所.コード = '000'")));
    EXPECT_EQ(rs.field(QStringLiteral("コード")).text(), QStringLiteral("000"));
    rs.close();
}

TEST(FoldersWithBothWords, PrgbinDecides) {
    // The tree's root folder is itself named "prgsrc".
    TestInstallation tree(Engine::Sqlite, QStringLiteral("prgsrc"));
    ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    EXPECT_EQ(tree.ctx().folders.基準フォルダ, tree.root());
    EXPECT_EQ(tree.ctx().folders.prgbinフォルダ, tree.path(QStringLiteral("prgbin")));
}

TEST_F(Folders, PerUserFoldersAreMadeAndCopiedOnceOnly) {
    ASSERT_TRUE(tree.configExecute(QStringLiteral("UPDATE 動作環境定義 SET インストール区分 = '1'")));
    for (const char* name : {"report/repdb.accdb", "report/repfrmdb.accdb"}) {
        QFile f(tree.path(QString::fromUtf8(name)));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("shared report database");
    }
    Context& first = tree.ctx();
    ASSERT_TRUE(環境DBopen(first));
    const QString userConf = tree.path(QStringLiteral("users/tanaka/conf"));
    const QString userReport = tree.path(QStringLiteral("users/tanaka/report"));
    EXPECT_EQ(first.folders.confフォルダ, userConf);
    EXPECT_EQ(first.folders.reportフォルダ, userReport);
    EXPECT_TRUE(os::fileExists(userConf + QStringLiteral("/usrcnfg.accdb")));
    EXPECT_TRUE(os::fileExists(userReport + QStringLiteral("/repdb.accdb")));
    EXPECT_TRUE(os::fileExists(userReport + QStringLiteral("/repfrmdb.accdb")));
    EXPECT_EQ(tree.waitBox.shownCount, 1);
    EXPECT_FALSE(tree.waitBox.visible);
    first.conn.環境DB接続.close();

    // The user's own copy is the one in use, and it is not refreshed on the next start.
    QFile mine(userReport + QStringLiteral("/repdb.accdb"));
    ASSERT_TRUE(mine.open(QIODevice::WriteOnly | QIODevice::Truncate));
    mine.write("my own report database");
    mine.close();
    Context& second = tree.newContext();
    ASSERT_TRUE(環境DBopen(second));
    EXPECT_EQ(tree.waitBox.shownCount, 1);
    QFile again(userReport + QStringLiteral("/repdb.accdb"));
    ASSERT_TRUE(again.open(QIODevice::ReadOnly));
    EXPECT_EQ(again.readAll(), QByteArray("my own report database"));
}

TEST_F(Folders, FolderMakerSkipsWhatExistsAndTheShareOfANetworkPath) {
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    const QString deep = tree.path(QStringLiteral("a/b/c/"));
    フォルダ作成make(tree.ctx(), deep + QStringLiteral("file.txt"));
    EXPECT_TRUE(os::folderExists(deep));
    EXPECT_FALSE(os::folderExists(deep + QStringLiteral("file.txt")));
    フォルダ作成make(tree.ctx(), deep); // all there: nothing to make, nothing to say
    EXPECT_TRUE(tree.messages.shown.isEmpty());
    // Server and share are never made; the folder behind them cannot be made here and is reported.
    フォルダ作成make(tree.ctx(), QStringLiteral("//staff-no-server/no-share/x/"));
    EXPECT_FALSE(os::folderExists(QStringLiteral("/staff-no-server")));
    ASSERT_EQ(tree.messages.shown.size(), 1);
    EXPECT_TRUE(tree.messages.texts().first().startsWith(QStringLiteral("DIREXISTCHK ERROR")));
    EXPECT_TRUE(tree.messages.texts().first().contains(QStringLiteral("//staff-no-server/no-share/x")));
}

} // namespace
