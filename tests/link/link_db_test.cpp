// The link to the personnel system: finding it among the outside systems,
// opening its environment and its database, and letting them go.

#include "link/mod連携データ処理.h"
#include "shell/modデータ処理.h"
#include "support/installation.h"

#include "platform/db/connection.h"
#include "platform/os/files.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

const QString kPersonnel = QStringLiteral("人事就業管理");

QString jetText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;User ID=;Password=;Data Source=") + file +
           QStringLiteral(";");
}

class LinkDb : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
    }
    // Opens both databases and reads the company record, as a start does.
    void start() {
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ASSERT_TRUE(ユーザ情報read(ctx()));
    }
    void main(const QString& sql) { ASSERT_TRUE(tree->mainExecute(sql)) << sql.toStdString(); }
    // The personnel row, linked, with the given columns.
    void personnel(const QString& assignments) {
        main(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', ") + assignments +
             QStringLiteral(" WHERE コード = '002'"));
    }
    // A second installation tree standing for the personnel system, with its
    // configuration under the desktop name the link opens.
    std::unique_ptr<TestInstallation> outsideTree() {
        auto other = std::make_unique<TestInstallation>(GetParam(), QStringLiteral("jinji"));
        EXPECT_TRUE(other->ok()) << other->error().toStdString();
        EXPECT_TRUE(QFile::copy(other->path(QStringLiteral("conf/usrcnfg.accdb")),
                                other->path(QStringLiteral("conf/usrcnfg.mdb"))));
        return other;
    }
    static bool executeOn(const QString& file, const QString& sql) {
        db::Connection cn;
        return cn.open(jetText(file)) && cn.execute(sql);
    }
    static int countOn(const QString& file, const QString& sql) {
        db::Connection cn;
        db::Recordset rs;
        if (!cn.open(jetText(file)) || !rs.open(sql, cn) || rs.eof())
            return -1;
        return rs.field(QStringLiteral("件数")).text().toInt();
    }
    Context& ctx() { return tree->ctx(); }
    他業務情報型& slot(int i) { return ctx().others.slot[i]; }
    std::unique_ptr<TestInstallation> tree;
};

TEST_P(LinkDb, UnlinkedPersonnelSystemIsNotFoundAndNothingOpens) {
    start(); // the tree's personnel row has 連携有無区分 0
    EXPECT_FALSE(連携有無chk(ctx(), kPersonnel));
    EXPECT_EQ(ctx().others.連携番号, -1);
    EXPECT_FALSE(連携DBopen(ctx()));
    for (const 他業務情報型& s : ctx().others.slot) {
        EXPECT_FALSE(s.環境DB接続中);
        EXPECT_FALSE(s.業務DB接続中);
        EXPECT_FALSE(s.業務DB接続.isOpen());
    }
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(LinkDb, NameThatDiffersInAnyWayIsNotTheLink) {
    for (const QString& name : {QStringLiteral("人事就業管理 "), QStringLiteral(" 人事就業管理"),
                                QStringLiteral("人事就業"), QStringLiteral("人事就業管理システム")}) {
        tree->newContext();
        personnel(QStringLiteral("業務名 = '") + name + QStringLiteral("'"));
        start();
        EXPECT_FALSE(連携有無chk(ctx(), kPersonnel)) << name.toStdString();
        EXPECT_EQ(ctx().others.連携番号, -1);
        データ処理term(ctx());
    }
    tree->newContext();
    personnel(QStringLiteral("業務名 = '人事就業管理'"));
    start();
    EXPECT_TRUE(連携有無chk(ctx(), kPersonnel));
    EXPECT_EQ(ctx().others.連携番号, 1); // element 1 holds code "002"
}

TEST_P(LinkDb, LowerOfTwoEqualSlotsWins) {
    main(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1' WHERE コード = '005'"));
    start();
    EXPECT_TRUE(連携有無chk(ctx(), QStringLiteral("販売管理")));
    EXPECT_EQ(ctx().others.連携番号, 3);
}

TEST_P(LinkDb, RowWithoutAnApplicationFolderOpensFromItsOwnColumns) {
    ASSERT_TRUE(環境DBopen(ctx()));
    const auto& c = ctx().conn;
    // The tree's own main database stands for the personnel system's.
    personnel(
        QStringLiteral("連携DB = '%1', 連携データソース名 = '%2', 連携サーバー名 = '%3', 連携データベース名 = '%4', "
                       "連携ユーザーID = '%5', 連携パスワード = '%6'")
            .arg(c.db, c.データソース名, c.サーバー名, c.データベース名, c.ユーザーID, c.パスワード));
    ASSERT_TRUE(業務DBopen(ctx()));
    ASSERT_TRUE(ユーザ情報read(ctx()));
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    ASSERT_TRUE(連携DBopen(ctx())) << tree->history().join(QLatin1Char('\n')).toStdString();

    const 他業務情報型& s = slot(1);
    EXPECT_FALSE(s.環境DB接続中); // the environment steps are skipped
    EXPECT_EQ(s.confフォルダ, QString());
    EXPECT_TRUE(s.業務DB接続中);
    EXPECT_EQ(s.写真フォルダ, tree->path(QStringLiteral("photo")));
    EXPECT_EQ(s.ドキュメントフォルダ, tree->path(QStringLiteral("document")));
    db::Recordset rs;
    EXPECT_TRUE(連携SQLopen(ctx(), rs, QStringLiteral("SELECT 名称 FROM M事業所 WHERE コード = '001'")));
    EXPECT_EQ(rs.field(QStringLiteral("名称")).text(), QStringLiteral("大阪支店"));
    rs.close();
    if (GetParam() == Engine::Sqlite) {
        EXPECT_EQ(ctx().folders.Accessデータパス, tree->path(QStringLiteral("data/main.accdb")));
    }
    EXPECT_TRUE(tree->history().isEmpty());

    連携DBclose(ctx());
    EXPECT_FALSE(slot(1).業務DB接続中);
    EXPECT_FALSE(slot(1).業務DB接続.isOpen());
    // The run's own connections stay.
    EXPECT_TRUE(ctx().conn.業務DB接続中);
}

TEST_P(LinkDb, UnknownDialectLetterOpensNothingAndFails) {
    personnel(QStringLiteral("連携DB = 'X'"));
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    EXPECT_FALSE(連携DBopen(ctx()));
    EXPECT_FALSE(slot(1).業務DB接続中);
    EXPECT_FALSE(slot(1).業務DB接続.isOpen());
    const QStringList h = tree->history();
    ASSERT_FALSE(h.isEmpty());
    EXPECT_TRUE(h.first().contains(QStringLiteral("|エラー SELECT * FROM Mユーザ WHERE ID = ''0001''")))
        << h.first().toStdString();
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(LinkDb, MainDatabaseThatCannotBeOpenedIsLogged) {
    personnel(QStringLiteral("連携DB = 'A', 連携データソース名 = '/nowhere/main.accdb'"));
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    EXPECT_FALSE(連携DBopen(ctx()));
    const QStringList h = tree->history();
    ASSERT_EQ(h.size(), 1);
    EXPECT_TRUE(h.first().contains(QStringLiteral("|エラー 連携db_OPEN ERROR"))) << h.first().toStdString();
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(LinkDb, OutsideEnvironmentOutranksTheRowAndItsRequestIsTaken) {
    auto other = outsideTree();
    ASSERT_TRUE(other->ok());
    const QString otherConf = other->path(QStringLiteral("conf/usrcnfg.mdb"));
    // A request for this program's line, waiting in the outside system's configuration.
    tree->sys.line = QStringLiteral("00100012");
    ASSERT_TRUE(executeOn(otherConf, QStringLiteral("INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,"
                                                    "受信プログラムID,受信期限,連携区分,起動連携情報) VALUES "
                                                    "('20261121 092930','社員登録','担当者登録','','00','00100012')")));
    personnel(
        QStringLiteral("連携DB = 'Z', 連携データソース名 = '/nowhere', 連携アプリフォルダ = '%1'").arg(other->root()));
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    ASSERT_TRUE(連携DBopen(ctx())) << tree->history().join(QLatin1Char('\n')).toStdString();

    const 他業務情報型& s = slot(1);
    EXPECT_EQ(s.prgbinフォルダ, other->path(QStringLiteral("prgbin")));
    EXPECT_EQ(s.共通confフォルダ, other->path(QStringLiteral("conf")));
    EXPECT_EQ(s.gnrdbパス, other->path(QStringLiteral("data/gnrdb.mdb")));
    EXPECT_EQ(s.manualフォルダ, other->path(QStringLiteral("manual")));
    EXPECT_EQ(s.共通reportフォルダ, other->path(QStringLiteral("report")));
    EXPECT_EQ(s.confフォルダ, other->path(QStringLiteral("conf")));
    EXPECT_EQ(s.reportフォルダ, other->path(QStringLiteral("report")));
    EXPECT_EQ(s.連携DB, GetParam() == Engine::Sqlite ? QStringLiteral("A") : QStringLiteral("S"));
    EXPECT_EQ(s.運用事業所コード, QStringLiteral("000"));
    EXPECT_EQ(s.インストール区分, 0);
    EXPECT_TRUE(s.環境DB接続中);
    EXPECT_TRUE(s.業務DB接続中);
    EXPECT_EQ(s.写真フォルダ, other->path(QStringLiteral("photo")));
    EXPECT_FALSE(os::folderExists(other->path(QStringLiteral("users/tanaka"))));

    // The request was taken from the outside system's configuration.
    EXPECT_EQ(ctx().link.発信プログラムID, QStringLiteral("社員登録"));
    EXPECT_EQ(ctx().link.起動連携情報, QStringLiteral("00100012"));
    EXPECT_EQ(countOn(otherConf, QStringLiteral("SELECT COUNT(*) AS 件数 FROM プログラム連携情報")), 0);

    // The slot's database is the outside system's, not the run's.
    ASSERT_TRUE(other->mainExecute(QStringLiteral("UPDATE M事業所 SET 名称 = '人事本部' WHERE コード = '000'")));
    db::Recordset rs;
    EXPECT_TRUE(連携SQLopen(ctx(), rs, QStringLiteral("SELECT 名称 FROM M事業所 WHERE コード = '000'")));
    EXPECT_EQ(rs.field(QStringLiteral("名称")).text(), QStringLiteral("人事本部"));
    rs.close();
    EXPECT_TRUE(連携環境SQLexec(ctx(), QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '00077'")));
    EXPECT_TRUE(連携環境SQLopen(ctx(), rs, QStringLiteral("SELECT 起動担当者コード FROM 動作環境定義")));
    EXPECT_EQ(rs.field(QStringLiteral("起動担当者コード")).text(), QStringLiteral("00077"));
    rs.close();
    EXPECT_TRUE(連携環境DBreopen(ctx()));
    EXPECT_TRUE(slot(1).環境DB接続中);

    連携DBclose(ctx());
    EXPECT_FALSE(slot(1).環境DB接続中);
    EXPECT_FALSE(slot(1).業務DB接続中);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(LinkDb, PerUserInstallationCopiesTheUsersFilesOnce) {
    auto other = outsideTree();
    ASSERT_TRUE(other->ok());
    ASSERT_TRUE(executeOn(other->path(QStringLiteral("conf/usrcnfg.mdb")),
                          QStringLiteral("UPDATE 動作環境定義 SET インストール区分 = '1', 運用事業所コード = '001'")));
    for (const char* name : {"repdb.mdb", "repfrmdb.mdb"}) {
        QFile f(other->path(QStringLiteral("report/") + QString::fromUtf8(name)));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(name);
    }
    personnel(QStringLiteral("連携アプリフォルダ = '%1'").arg(other->root()));
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    ASSERT_TRUE(連携DBopen(ctx())) << tree->history().join(QLatin1Char('\n')).toStdString();

    const 他業務情報型& s = slot(1);
    EXPECT_EQ(s.confフォルダ, other->path(QStringLiteral("users/tanaka/conf")));
    EXPECT_EQ(s.reportフォルダ, other->path(QStringLiteral("users/tanaka/report")));
    EXPECT_EQ(s.インストール区分, 1);
    EXPECT_EQ(s.運用事業所コード, QStringLiteral("001"));
    EXPECT_TRUE(os::fileExists(other->path(QStringLiteral("users/tanaka/conf/usrcnfg.mdb"))));
    EXPECT_TRUE(os::fileExists(other->path(QStringLiteral("users/tanaka/report/repdb.mdb"))));
    EXPECT_TRUE(os::fileExists(other->path(QStringLiteral("users/tanaka/report/repfrmdb.mdb"))));
    EXPECT_EQ(tree->waitBox.shownCount, 1);
    EXPECT_FALSE(tree->waitBox.visible);
    EXPECT_TRUE(s.環境DB接続中);

    // The environment connection is the user's copy.
    ASSERT_TRUE(連携環境SQLexec(ctx(), QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '00077'")));
    EXPECT_EQ(countOn(other->path(QStringLiteral("users/tanaka/conf/usrcnfg.mdb")),
                      QStringLiteral("SELECT COUNT(*) AS 件数 FROM 動作環境定義 WHERE 起動担当者コード = '00077'")),
              1);
    EXPECT_EQ(countOn(other->path(QStringLiteral("conf/usrcnfg.mdb")),
                      QStringLiteral("SELECT COUNT(*) AS 件数 FROM 動作環境定義 WHERE 起動担当者コード = '00077'")),
              0);
    連携DBclose(ctx());

    // A second start copies nothing again.
    tree->newContext();
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    ASSERT_TRUE(連携DBopen(ctx()));
    EXPECT_EQ(tree->waitBox.shownCount, 1);
    EXPECT_EQ(countOn(other->path(QStringLiteral("users/tanaka/conf/usrcnfg.mdb")),
                      QStringLiteral("SELECT COUNT(*) AS 件数 FROM 動作環境定義 WHERE 起動担当者コード = '00077'")),
              1);
    EXPECT_TRUE(tree->history().isEmpty()) << tree->history().join(QLatin1Char('\n')).toStdString();
}

TEST_P(LinkDb, MissingOutsideConfigurationShowsItsErrorAndFails) {
    auto other = outsideTree();
    ASSERT_TRUE(other->ok());
    ASSERT_TRUE(QFile::remove(other->path(QStringLiteral("conf/usrcnfg.mdb"))));
    personnel(QStringLiteral("連携アプリフォルダ = '%1'").arg(other->root()));
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    EXPECT_FALSE(連携DBopen(ctx()));
    EXPECT_FALSE(slot(1).環境DB接続中);
    EXPECT_FALSE(slot(1).業務DB接続中);
    const QStringList shown = tree->messages.texts();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().startsWith(QStringLiteral("連携syb_open ERROR"))) << shown.first().toStdString();
    EXPECT_TRUE(shown.first().endsWith(QChar(13) + QStringLiteral("sysopen error")));
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::Ok);
}

TEST_P(LinkDb, PerUserCopyWithoutTheSharedReportFilesSaysSoInTheHistory) {
    auto other = outsideTree();
    ASSERT_TRUE(other->ok());
    ASSERT_TRUE(executeOn(other->path(QStringLiteral("conf/usrcnfg.mdb")),
                          QStringLiteral("UPDATE 動作環境定義 SET インストール区分 = '1'")));
    personnel(QStringLiteral("連携アプリフォルダ = '%1'").arg(other->root()));
    start();
    ASSERT_TRUE(連携有無chk(ctx(), kPersonnel));
    ASSERT_TRUE(連携DBopen(ctx()));
    // The configuration is copied; each report file that is not there leaves its row.
    EXPECT_TRUE(os::fileExists(other->path(QStringLiteral("users/tanaka/conf/usrcnfg.mdb"))));
    const QString tail = QStringLiteral(" User ConfF=") + other->path(QStringLiteral("users/tanaka/conf")) +
                         QStringLiteral(" User Report =") + other->path(QStringLiteral("users/tanaka/report"));
    QStringList errors;
    for (const QString& row : tree->history())
        if (row.section(QLatin1Char('|'), 1).startsWith(QStringLiteral("エラー ")))
            errors.append(row.section(QLatin1Char('|'), 1));
    EXPECT_EQ(errors, (QStringList{QStringLiteral("エラー ファイルをコピーできません: ") +
                                       other->path(QStringLiteral("report/repdb.mdb")) + tail,
                                   QStringLiteral("エラー ファイルをコピーできません: ") +
                                       other->path(QStringLiteral("report/repfrmdb.mdb")) + tail}));
    EXPECT_TRUE(QFileInfo(other->path(QStringLiteral("users/tanaka/report"))).isDir());
    連携DBclose(ctx());
}

INSTANTIATE_TEST_SUITE_P(Engines, LinkDb, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);

} // namespace
