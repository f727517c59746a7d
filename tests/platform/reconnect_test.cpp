// A server connection that goes away between two statements: the next
// statement finds it lost, the connection is opened once more with the same
// connection text and the statement runs again. When the server is not back,
// the statement fails and says that the connection is gone.

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/throwaway_cluster.h"
#include "support/test_databases.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

using testdb::Engine;

// The server process that serves the connection.
QString backendOf(db::Connection& cn) {
    db::Recordset rs;
    if (!rs.open(QStringLiteral("SELECT pg_backend_pid() AS pid"), cn) || rs.eof())
        return QString();
    return rs.field(QStringLiteral("pid")).text();
}

QStringList codes(db::Connection& cn) {
    db::Recordset rs;
    QStringList out;
    if (!rs.open(QStringLiteral("SELECT コード FROM T ORDER BY コード"), cn))
        return {QStringLiteral("cannot read: ") + rs.lastError().description};
    for (; !rs.eof(); rs.moveNext())
        out.append(rs.field(QStringLiteral("コード")).text());
    return out;
}

class ReconnectShared : public ::testing::Test {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(Engine::Postgres);
        database = std::make_unique<testdb::ScratchDatabase>(Engine::Postgres, dir.path());
        ASSERT_TRUE(database->ok()) << database->error().toStdString();
        ASSERT_TRUE(cn.open(database->connectionText())) << cn.lastError().description.toStdString();
        ASSERT_TRUE(cn.execute(QStringLiteral("CREATE TABLE T (コード varchar(5) PRIMARY KEY)")));
        ASSERT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00001')")));
        EXPECT_FALSE(cn.lastRecovery().lost);
    }
    void terminate() {
        const QString pid = backendOf(cn);
        ASSERT_FALSE(pid.isEmpty());
        QString error;
        ASSERT_TRUE(testdb::adminExecute(QStringLiteral("SELECT pg_terminate_backend(%1)").arg(pid), &error))
            << error.toStdString();
    }
    QTemporaryDir dir;
    std::unique_ptr<testdb::ScratchDatabase> database;
    db::Connection cn;
};

TEST_F(ReconnectShared, AStatementAfterTheSessionWasEndedRunsOnAReopenedConnection) {
    const QString before = backendOf(cn);
    terminate();
    EXPECT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00002')")))
        << cn.lastError().description.toStdString();
    const db::Recovery& r = cn.lastRecovery();
    EXPECT_TRUE(r.lost);
    EXPECT_TRUE(r.reopened);
    EXPECT_EQ(r.loss.number, db::kConnectionLost);
    EXPECT_TRUE(r.loss.description.startsWith(QStringLiteral("サーバーとの接続が切れました: ")))
        << r.loss.description.toStdString();
    EXPECT_TRUE(r.loss.description.contains(QStringLiteral("terminating connection due to administrator command")))
        << r.loss.description.toStdString();
    EXPECT_FALSE(cn.lastError().failed());
    // The statement ran once: one row, on a new session.
    EXPECT_EQ(codes(cn), (QStringList{QStringLiteral("00001"), QStringLiteral("00002")}));
    EXPECT_FALSE(cn.lastRecovery().lost);
    EXPECT_NE(backendOf(cn), before);
}

TEST_F(ReconnectShared, ARecordsetOpensOnAReopenedConnection) {
    terminate();
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード FROM T WHERE コード = '00001'"), cn))
        << rs.lastError().description.toStdString();
    EXPECT_FALSE(rs.eof());
    EXPECT_EQ(rs.field(QStringLiteral("コード")).text(), QStringLiteral("00001"));
    EXPECT_TRUE(rs.lastRecovery().lost);
    EXPECT_TRUE(rs.lastRecovery().reopened);
}

TEST_F(ReconnectShared, AStatementThatFailsOnItsOwnIsNotRunAgain) {
    // A key that is taken: an error of the statement, not of the connection.
    EXPECT_FALSE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00001')")));
    EXPECT_FALSE(cn.lastRecovery().lost);
    EXPECT_NE(cn.lastError().number, db::kConnectionLost);
    EXPECT_FALSE(cn.lastError().description.isEmpty());
    EXPECT_EQ(codes(cn), QStringList{QStringLiteral("00001")});
}

TEST_F(ReconnectShared, EachLostStatementReopensOnce) {
    terminate();
    EXPECT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00002')")));
    EXPECT_TRUE(cn.lastRecovery().reopened);
    terminate();
    EXPECT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00003')")));
    EXPECT_TRUE(cn.lastRecovery().reopened);
    EXPECT_EQ(codes(cn), (QStringList{QStringLiteral("00001"), QStringLiteral("00002"), QStringLiteral("00003")}));
}

TEST_F(ReconnectShared, ALossInsideATransactionFailsAndIsNotReopened) {
    // The work before the loss went with the session: running on would commit
    // only the rest of it.
    ASSERT_TRUE(cn.beginTransaction()) << cn.lastError().description.toStdString();
    ASSERT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00002')")));
    terminate();
    EXPECT_FALSE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00003')")));
    EXPECT_TRUE(cn.lastRecovery().lost);
    EXPECT_FALSE(cn.lastRecovery().reopened);
    EXPECT_EQ(cn.lastError().number, db::kConnectionLost);
    cn.rollbackTransaction();
    // Out of the transaction the next statement reopens as usual; neither row landed.
    EXPECT_EQ(codes(cn), QStringList{QStringLiteral("00001")});
    EXPECT_TRUE(cn.lastRecovery().reopened);
}

// A cluster of this test's own, stopped and started between statements.
class ReconnectRestart : public ::testing::Test {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(Engine::Postgres);
        cluster = std::make_unique<testdb::ThrowawayCluster>();
        ASSERT_TRUE(cluster->ok()) << cluster->error().toStdString();
        ASSERT_TRUE(cn.open(cluster->connectionText())) << cn.lastError().description.toStdString();
        ASSERT_TRUE(cn.execute(QStringLiteral("CREATE TABLE T (コード varchar(5) PRIMARY KEY)")));
        ASSERT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00001')")));
    }
    std::unique_ptr<testdb::ThrowawayCluster> cluster;
    db::Connection cn;
};

TEST_F(ReconnectRestart, AServerRestartedBetweenTwoStatementsIsUsedAgain) {
    ASSERT_TRUE(cluster->stop());
    ASSERT_TRUE(cluster->start());
    EXPECT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00002')")))
        << cn.lastError().description.toStdString();
    EXPECT_TRUE(cn.lastRecovery().lost);
    EXPECT_TRUE(cn.lastRecovery().reopened);
    EXPECT_EQ(codes(cn), (QStringList{QStringLiteral("00001"), QStringLiteral("00002")}));
}

TEST_F(ReconnectRestart, AServerThatCrashedAndCameBackIsUsedAgain) {
    // An immediate stop leaves the client without a word from the server.
    ASSERT_TRUE(cluster->stop(QStringLiteral("immediate")));
    ASSERT_TRUE(cluster->start());
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード FROM T"), cn)) << rs.lastError().description.toStdString();
    EXPECT_EQ(rs.field(QStringLiteral("コード")).text(), QStringLiteral("00001"));
    EXPECT_TRUE(rs.lastRecovery().lost);
    EXPECT_TRUE(rs.lastRecovery().reopened);
}

TEST_F(ReconnectRestart, WhileTheServerIsDownStatementsFailAndSaySoThenItIsUsedAgain) {
    ASSERT_TRUE(cluster->stop());

    EXPECT_FALSE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00002')")));
    db::Recovery r = cn.lastRecovery();
    EXPECT_TRUE(r.lost);
    EXPECT_FALSE(r.reopened);
    EXPECT_EQ(cn.lastError().number, db::kConnectionLost);
    EXPECT_TRUE(cn.lastError().description.startsWith(QStringLiteral("サーバーとの接続が切れました")))
        << cn.lastError().description.toStdString();
    // The reopen failed with the client library's own words.
    EXPECT_EQ(r.reopenError.number, db::kOpenFailed);
    EXPECT_TRUE(r.reopenError.description.contains(QStringLiteral("Connection refused")) ||
                r.reopenError.description.contains(QStringLiteral("could not connect")))
        << r.reopenError.description.toStdString();

    // A later statement finds the connection already gone and says so too.
    db::Recordset rs;
    EXPECT_FALSE(rs.open(QStringLiteral("SELECT コード FROM T"), cn));
    EXPECT_EQ(rs.lastError().number, db::kConnectionLost);
    EXPECT_TRUE(rs.lastError().description.startsWith(QStringLiteral("サーバーとの接続が切れています")))
        << rs.lastError().description.toStdString();
    EXPECT_TRUE(rs.lastRecovery().lost);
    EXPECT_FALSE(rs.lastRecovery().reopened);
    rs.close();

    ASSERT_TRUE(cluster->start());
    EXPECT_TRUE(cn.execute(QStringLiteral("INSERT INTO T (コード) VALUES ('00003')")))
        << cn.lastError().description.toStdString();
    EXPECT_TRUE(cn.lastRecovery().reopened);
    EXPECT_EQ(codes(cn), (QStringList{QStringLiteral("00001"), QStringLiteral("00003")}));
}

TEST(ReconnectDesktop, AFailingStatementOnTheDesktopFileIsNoLoss) {
    QTemporaryDir dir;
    testdb::ScratchDatabase database(Engine::Sqlite, dir.path());
    ASSERT_TRUE(database.ok());
    db::Connection cn;
    ASSERT_TRUE(cn.open(database.connectionText()));
    EXPECT_FALSE(cn.execute(QStringLiteral("INSERT INTO nowhere (a) VALUES ('1')")));
    EXPECT_FALSE(cn.lastRecovery().lost);
    EXPECT_TRUE(cn.lastError().description.contains(QStringLiteral("no such table")))
        << cn.lastError().description.toStdString();
}

} // namespace
