// The run history when the main database's server connection is lost: each
// statement that meets the loss leaves a row with the engine's own words, the
// reopen leaves a row whether it worked or not, and once the server is back
// the statements run again and find what is there.

#include "platform/throwaway_cluster.h"
#include "shell/modデータ処理.h"
#include "support/installation.h"

#include <gtest/gtest.h>

#include <memory>

using testdb::Engine;

namespace {

const QString kReopened = QStringLiteral("エラー DB_REOPEN 接続を開き直しました。文を実行し直します。");

class ReconnectHistory : public ::testing::Test {
protected:
    // A tree on the server at hand, opened as a start opens it.
    void open() {
        tree = std::make_unique<TestInstallation>(Engine::Postgres);
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ASSERT_TRUE(tree->configExecute(QStringLiteral("DELETE FROM プログラム稼動履歴")));
    }
    Context& ctx() { return tree->ctx(); }
    // The history rows written since the last call, without their counters.
    QStringList newRows() {
        const QStringList all = tree->history();
        QStringList out;
        for (const QString& row : all.mid(seen))
            out.append(row.section(QLatin1Char('|'), 1));
        seen = all.size();
        return out;
    }
    bool read(const QString& sql, bool 履歴 = false) {
        db::Recordset rs;
        const bool found = 業務SQLopen(ctx(), rs, sql, 履歴);
        rs.close();
        return found;
    }
    std::unique_ptr<TestInstallation> tree;
    qsizetype seen = 0;
};

class ReconnectHistoryShared : public ReconnectHistory {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(Engine::Postgres);
        open();
    }
};

TEST_F(ReconnectHistoryShared, AnEndedSessionLeavesTheLossAndTheReopenAndTheStatementRuns) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT pg_backend_pid() AS pid"), ctx().conn.業務DB接続));
    const QString pid = rs.field(QStringLiteral("pid")).text();
    rs.close();
    QString error;
    ASSERT_TRUE(testdb::adminExecute(QStringLiteral("SELECT pg_terminate_backend(%1)").arg(pid), &error))
        << error.toStdString();

    const QString sql = QStringLiteral("SELECT ID FROM Mユーザ");
    EXPECT_TRUE(read(sql, true));
    const QStringList rows = newRows();
    ASSERT_EQ(rows.size(), 3) << rows.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(
        rows.at(0).startsWith(QStringLiteral("エラー ") + sql + QStringLiteral("サーバーとの接続が切れました: ")))
        << rows.at(0).toStdString();
    EXPECT_TRUE(rows.at(0).contains(QStringLiteral("terminating connection due to administrator command")))
        << rows.at(0).toStdString();
    EXPECT_EQ(rows.at(1), kReopened);
    EXPECT_EQ(rows.at(2), QStringLiteral("出力終了 ") + sql);

    // The next statement finds the connection as it should be.
    EXPECT_TRUE(業務SQLexec(ctx(), QStringLiteral("UPDATE M事業所 SET 名称 = 名称 WHERE コード = '000'")));
    EXPECT_TRUE(newRows().isEmpty());
}

class ReconnectHistoryRestart : public ReconnectHistory {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(Engine::Postgres);
        cluster = std::make_unique<testdb::ThrowawayCluster>();
        ASSERT_TRUE(cluster->ok()) << cluster->error().toStdString();
        // The tree's main database lies on this test's own server.
        qputenv("STAFF_TEST_PG", cluster->dataSource().toUtf8());
        open();
    }
    void TearDown() override { tree.reset(); }
    std::unique_ptr<testdb::ThrowawayCluster> cluster;
};

TEST_F(ReconnectHistoryRestart, WhileTheServerIsDownEachStatementSaysSoAndAfterItsReturnItIsUsedAgain) {
    const QString company = QStringLiteral("SELECT ID FROM Mユーザ");
    ASSERT_TRUE(read(company));
    ASSERT_TRUE(newRows().isEmpty());

    ASSERT_TRUE(cluster->stop());

    // The first statement meets the loss; the reopen fails with the client's words.
    EXPECT_FALSE(read(company));
    QStringList rows = newRows();
    ASSERT_EQ(rows.size(), 2) << rows.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(
        rows.at(0).startsWith(QStringLiteral("エラー ") + company + QStringLiteral("サーバーとの接続が切れました: ")))
        << rows.at(0).toStdString();
    EXPECT_TRUE(rows.at(1).startsWith(QStringLiteral("エラー DB_REOPEN ERROR1004 "))) << rows.at(1).toStdString();
    EXPECT_TRUE(rows.at(1).contains(QStringLiteral("Connection refused"))) << rows.at(1).toStdString();

    // A later statement finds the connection gone and says so in words, not
    // with an empty description.
    const QString update = QStringLiteral("UPDATE M事業所 SET 名称 = 名称 WHERE コード = '000'");
    EXPECT_FALSE(業務SQLexec(ctx(), update, true));
    rows = newRows();
    ASSERT_EQ(rows.size(), 2) << rows.join(QLatin1Char('\n')).toStdString();
    QString quoted = update;
    quoted.replace(QStringLiteral("'"), QStringLiteral("''"));
    EXPECT_TRUE(
        rows.at(0).startsWith(QStringLiteral("エラー ") + quoted + QStringLiteral("サーバーとの接続が切れています (")))
        << rows.at(0).toStdString();
    EXPECT_TRUE(rows.at(0).contains(QStringLiteral("terminating connection due to administrator command")))
        << rows.at(0).toStdString();
    EXPECT_TRUE(rows.at(1).startsWith(QStringLiteral("エラー DB_REOPEN ERROR1004 "))) << rows.at(1).toStdString();

    // The server is back: the statement runs on a reopened connection and
    // finds the company row that is there.
    ASSERT_TRUE(cluster->start());
    EXPECT_TRUE(read(company, true));
    rows = newRows();
    ASSERT_EQ(rows.size(), 3) << rows.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(
        rows.at(0).startsWith(QStringLiteral("エラー ") + company + QStringLiteral("サーバーとの接続が切れています")))
        << rows.at(0).toStdString();
    EXPECT_EQ(rows.at(1), kReopened);
    EXPECT_EQ(rows.at(2), QStringLiteral("出力終了 ") + company);

    EXPECT_TRUE(業務SQLexec(ctx(), update, true));
    rows = newRows();
    ASSERT_EQ(rows.size(), 1) << rows.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(rows.at(0), QStringLiteral("出力終了 ") + quoted);
}

TEST_F(ReconnectHistoryRestart, AServerRestartedBetweenTwoStatementsIsUsedAgain) {
    ASSERT_TRUE(cluster->stop());
    ASSERT_TRUE(cluster->start());
    const QString update = QStringLiteral("UPDATE M事業所 SET 名称 = '本社' WHERE コード = '000'");
    EXPECT_TRUE(業務SQLexec(ctx(), update, false));
    const QStringList rows = newRows();
    ASSERT_EQ(rows.size(), 2) << rows.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(rows.at(0).contains(QStringLiteral("サーバーとの接続が切れました: "))) << rows.at(0).toStdString();
    EXPECT_EQ(rows.at(1), kReopened);
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 名称 FROM M事業所 WHERE コード = '000'"), {QStringLiteral("名称")}),
              QStringList{QStringLiteral("本社")});
}

} // namespace
