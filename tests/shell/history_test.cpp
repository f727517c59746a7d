// The run history and the usage table.

#include "shell/modデータ処理.h"
#include "support/installation.h"

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

class History : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        tree->sys.line = QStringLiteral("00100012");
        ctx().run.起動コマンド = tree->sys.line;
        ASSERT_TRUE(環境DBopen(ctx()));
    }
    Context& ctx() { return tree->ctx(); }
    QStringList usage() {
        return tree->mainRows(QStringLiteral("SELECT * FROM 使用状況 ORDER BY コンピュータID, ユーザID"),
                              {QStringLiteral("コンピュータID"), QStringLiteral("ユーザID"), QStringLiteral("プログラムID"),
                               QStringLiteral("開始日時"), QStringLiteral("終了日時")});
    }
    std::unique_ptr<TestInstallation> tree;
};

TEST_P(History, FirstRowOfARunIsTheStartRowNumberOne) {
    開始履歴add(ctx());
    EXPECT_EQ(tree->configRows(QStringLiteral("SELECT * FROM プログラム稼動履歴"),
                               {QStringLiteral("実行日付"), QStringLiteral("プログラムID"), QStringLiteral("proccounter"),
                                QStringLiteral("摘要"), QStringLiteral("運用事業所コード"),
                                QStringLiteral("起動担当者コード"), QStringLiteral("ユーザID")}),
              QStringList{QStringLiteral("20261121 093000|担当者登録|000000000001|開始 00100012|000||tanaka")});
}

TEST_P(History, StartRowNamesTheRememberedOperatorAndQuotesTheCommandLineOnce) {
    ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '00007'")));
    ctx().run.起動コマンド = QStringLiteral("001O'Neil");
    開始履歴add(ctx());
    EXPECT_EQ(tree->configRows(QStringLiteral("SELECT * FROM プログラム稼動履歴"),
                               {QStringLiteral("摘要"), QStringLiteral("起動担当者コード")}),
              QStringList{QStringLiteral("開始 001O'Neil|00007")});
}

TEST_P(History, StatementWithAQuoteIsWrittenWithTheQuoteDoubled) {
    ASSERT_TRUE(業務DBopen(ctx()));
    const QString sql = QStringLiteral("UPDATE M事業所 SET 名称 = '本社' WHERE コード = '000'");
    ASSERT_TRUE(業務SQLexec(ctx(), sql, true));
    const QStringList rows = tree->configRows(
        QStringLiteral("SELECT 摘要 FROM プログラム稼動履歴 WHERE 摘要 LIKE '出力終了%'"), {QStringLiteral("摘要")});
    EXPECT_EQ(rows, QStringList{QStringLiteral("出力終了 UPDATE M事業所 SET 名称 = ''本社'' WHERE コード = ''000''")});
}

TEST_P(History, CounterRunsOnAlsoForARowThatCannotBeWritten) {
    開始履歴add(ctx());
    ctx().conn.環境DB接続.close();
    エラー履歴add(ctx(), QStringLiteral("lost"));
    EXPECT_EQ(ctx().run.稼動連番, 2.0);
    ASSERT_TRUE(環境DBreopen(ctx()));
    出力終了履歴add(ctx(), QStringLiteral("SELECT 1"));
    EXPECT_EQ(tree->history(),
              (QStringList{QStringLiteral("000000000001|開始 00100012"), QStringLiteral("000000000003|出力終了 SELECT 1")}));
}

TEST_P(History, EndRowClosesTheUsageRow) {
    ASSERT_TRUE(業務DBopen(ctx()));
    tree->sys.clock = tree->sys.clock.addSecs(3600);
    終了履歴add(ctx());
    EXPECT_TRUE(tree->history().last().endsWith(QStringLiteral("|終了")));
    EXPECT_EQ(usage(), QStringList{QStringLiteral("PC-01|tanaka|担当者登録|20261121 093000|20261121 103000")});
}

TEST_P(History, EndWithoutAStartRowInsertsTheUsageRow) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM 使用状況")));
    ASSERT_TRUE(業務DBopen(ctx()));
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM 使用状況")));
    使用状況終了set(ctx());
    EXPECT_EQ(usage(), QStringList{QStringLiteral("PC-01|tanaka|担当者登録||20261121 093000")});
}

TEST_P(History, FailedEndRowSkipsTheUsageRow) {
    ASSERT_TRUE(業務DBopen(ctx()));
    ctx().conn.環境DB接続.close();
    tree->sys.clock = tree->sys.clock.addSecs(60);
    終了履歴add(ctx());
    EXPECT_EQ(usage(), QStringList{QStringLiteral("PC-01|tanaka|担当者登録|20261121 093000|")});
}

TEST_P(History, StartOverwritesTheStartOfAnEarlierRunAndKeepsItsEnd) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("INSERT INTO 使用状況 (コンピュータID,ユーザID,プログラムID,開始日時,"
                                                 "終了日時) VALUES ('PC-01','tanaka','受注入力','20261120 080000',"
                                                 "'20261120 170000')")));
    ASSERT_TRUE(業務DBopen(ctx()));
    EXPECT_EQ(usage(), QStringList{QStringLiteral("PC-01|tanaka|担当者登録|20261121 093000|20261120 170000")});
}

TEST_P(History, CleanUpDeletesRowsEndedMoreThanAMonthAgo) {
    const char* const rows[][3] = {
        {"PC-02", "20260901 080000", "20260901 170000"}, // ended long ago: goes
        {"PC-03", "20261101 080000", "20261101 170000"}, // ended this month: stays
        {"PC-04", "20260901 080000", ""},                // never ended: stays
        {"PC-05", "", "20261020 235959"},                // the day before the bound: goes
        {"PC-06", "", "20261021 000000"},                // on the bound (text comparison): stays
    };
    for (const auto& r : rows)
        ASSERT_TRUE(tree->mainExecute(QStringLiteral("INSERT INTO 使用状況 (コンピュータID,ユーザID,プログラムID,"
                                                     "開始日時,終了日時) VALUES ('%1','suzuki','担当者登録','%2','%3')")
                                          .arg(QString::fromUtf8(r[0]), QString::fromUtf8(r[1]), QString::fromUtf8(r[2]))));
    ASSERT_TRUE(業務DBopen(ctx())); // runs the clean-up, then the start of this run
    EXPECT_EQ(usage(), (QStringList{QStringLiteral("PC-01|tanaka|担当者登録|20261121 093000|"),
                                    QStringLiteral("PC-03|suzuki|担当者登録|20261101 080000|20261101 170000"),
                                    QStringLiteral("PC-04|suzuki|担当者登録|20260901 080000|"),
                                    QStringLiteral("PC-06|suzuki|担当者登録||20261021 000000")}));
}

TEST_P(History, RunningProgramLosesItsOldRowToAnotherStartAndInsertsAtItsEnd) {
    // This run started long ago and is still running; the row says it ended two months back.
    ASSERT_TRUE(業務DBopen(ctx()));
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE 使用状況 SET 終了日時 = '20260915 170000'")));
    // Another program's start on another computer cleans the table up.
    TestInstallation& t = *tree;
    FakeSystem other;
    other.computer = QStringLiteral("PC-09");
    other.folder = t.sys.folder;
    Context another(other, t.messages, t.waitBox);
    ASSERT_TRUE(環境DBopen(another));
    ASSERT_TRUE(業務DBopen(another));
    EXPECT_EQ(usage(), QStringList{QStringLiteral("PC-09|tanaka|担当者登録|20261121 093000|")});
    // This run's end inserts a new row.
    tree->sys.clock = tree->sys.clock.addSecs(120);
    終了履歴add(ctx());
    EXPECT_EQ(usage(), (QStringList{QStringLiteral("PC-01|tanaka|担当者登録||20261121 093200"),
                                    QStringLiteral("PC-09|tanaka|担当者登録|20261121 093000|")}));
}

TEST_P(History, PurgeDeletesOldRowsOfTheFourTables) {
    const auto insertHistory = [&](const char* stamp) {
        ASSERT_TRUE(tree->configExecute(QStringLiteral("INSERT INTO プログラム稼動履歴 (実行日付,プログラムID,proccounter,"
                                                       "摘要) VALUES ('%1','営業支援','000000000001','x')")
                                            .arg(QString::fromUtf8(stamp))));
    };
    insertHistory("20260521 093000"); // six months back to the second: goes
    insertHistory("20260521 093001"); // stays
    const auto insertLink = [&](const char* stamp) {
        ASSERT_TRUE(tree->configExecute(QStringLiteral("INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,"
                                                       "受信プログラムID,連携区分) VALUES ('%1','受注入力','担当者登録','00')")
                                            .arg(QString::fromUtf8(stamp))));
        ASSERT_TRUE(tree->configExecute(QStringLiteral("INSERT INTO プログラムクリップボード (貼付日時,貼付プログラムID) "
                                                       "VALUES ('%1','受注入力')")
                                            .arg(QString::fromUtf8(stamp))));
        ASSERT_TRUE(tree->configExecute(QStringLiteral("INSERT INTO プログラムクリップボード明細 (貼付日時,"
                                                       "貼付プログラムID,貼付連番) VALUES ('%1','受注入力','1')")
                                            .arg(QString::fromUtf8(stamp))));
    };
    insertLink("20261118 093000"); // three days back: goes
    insertLink("20261118 093001"); // stays
    履歴purge(ctx());
    EXPECT_EQ(tree->configRows(QStringLiteral("SELECT 実行日付 FROM プログラム稼動履歴"), {QStringLiteral("実行日付")}),
              QStringList{QStringLiteral("20260521 093001")});
    for (const char* table : {"プログラム連携情報", "プログラムクリップボード", "プログラムクリップボード明細"}) {
        const QString column = QString::fromUtf8(table) == QStringLiteral("プログラム連携情報") ? QStringLiteral("発信日時")
                                                                                                 : QStringLiteral("貼付日時");
        EXPECT_EQ(tree->configRows(QStringLiteral("SELECT ") + column + QStringLiteral(" FROM ") + QString::fromUtf8(table),
                                   {column}),
                  QStringList{QStringLiteral("20261118 093001")})
            << table;
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, History, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);

} // namespace
