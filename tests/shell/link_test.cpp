// The program link: a request of another program taken at the start and the
// answer written at the end.

#include "shell/modデータ処理.h"
#include "support/installation.h"
#include "support/test_databases.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

class Link : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
        ASSERT_TRUE(環境DBopen(tree.ctx()));
        ASSERT_TRUE(業務DBopen(tree.ctx()));
    }
    void request(const char* sent, const char* line) {
        ASSERT_TRUE(tree.configExecute(
            QStringLiteral("INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,受信プログラムID,受信期限,連携区分,"
                           "起動連携情報) VALUES ('%1','受注入力','担当者登録','','00','%2')")
                .arg(QString::fromUtf8(sent), QString::fromUtf8(line))));
    }
    QStringList linkRows() {
        return tree.configRows(QStringLiteral("SELECT * FROM プログラム連携情報 ORDER BY 連携区分"),
                               {QStringLiteral("発信日時"), QStringLiteral("発信プログラムID"),
                                QStringLiteral("受信プログラムID"), QStringLiteral("受信期限"), QStringLiteral("連携区分"),
                                QStringLiteral("起動連携情報"), QStringLiteral("終了連携情報"),
                                QStringLiteral("運用事業所コード"), QStringLiteral("起動担当者コード"),
                                QStringLiteral("ユーザID")});
    }
    // The stamp of the start: now less one minute.
    QString stamp() { return tree.sys.clock.addSecs(-60).toString(QStringLiteral("yyyyMMdd HHmmss")); }
    TestInstallation tree{Engine::Sqlite};
};

TEST_F(Link, RequestOfTheLastMinuteIsTakenAndAnsweredAtTheEnd) {
    request("20261121 092930", "00100012");
    連携受信read(tree.ctx(), QStringLiteral("00100012"), stamp());
    EXPECT_EQ(tree.ctx().link.発信プログラムID, QStringLiteral("受注入力"));
    EXPECT_EQ(tree.ctx().link.起動連携情報, QStringLiteral("00100012"));
    EXPECT_TRUE(linkRows().isEmpty()); // the request is taken away

    tree.ctx().link.終了連携情報 = QStringLiteral("00013");
    tree.sys.clock = tree.sys.clock.addSecs(300);
    データ処理term(tree.ctx());
    EXPECT_EQ(linkRows(), QStringList{QStringLiteral(
                              "20261121 093500|受注入力|担当者登録|20261121 093500|99|00100012|00013|000||tanaka")});
    // The end row of the run is written after the answer, on the reopened connection.
    EXPECT_TRUE(tree.history().last().endsWith(QStringLiteral("|終了")));
    EXPECT_FALSE(tree.ctx().conn.環境DB接続中);
}

TEST_F(Link, TheEndRowFollowsTheAnswerOnTheConnectionOpenedAfterIt) {
    request("20261121 092930", "00100012");
    連携受信read(tree.ctx(), QStringLiteral("00100012"), stamp());
    ASSERT_EQ(tree.ctx().link.起動連携情報, QStringLiteral("00100012"));
    // The configuration folder moves while the run goes on: a connection opened
    // from now on reaches the copy, the one still open the first file.
    const QString moved = tree.path(QStringLiteral("conf2"));
    ASSERT_TRUE(QDir().mkpath(moved));
    ASSERT_TRUE(QFile::copy(tree.configFile(), moved + QStringLiteral("/usrcnfg.accdb")));
    tree.ctx().folders.confフォルダ = moved;
    // Each reading of the clock moves it on: the stamps tell the order of the rows.
    tree.sys.advance = true;
    tree.ctx().link.終了連携情報 = QStringLiteral("00013");
    データ処理term(tree.ctx());

    const auto rowsOf = [](const QString& file, const QString& sql, const QStringList& columns) {
        return testdb::query(QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") +
                                 file + QStringLiteral(";"),
                             sql, columns);
    };
    const QString answers = QStringLiteral("SELECT 発信日時, 連携区分 FROM プログラム連携情報 WHERE 連携区分 = '99'");
    const QString ends = QStringLiteral("SELECT 実行日付, 摘要 FROM プログラム稼動履歴 WHERE 摘要 = '終了'");
    const QStringList answerColumns{QStringLiteral("発信日時"), QStringLiteral("連携区分")};
    const QStringList endColumns{QStringLiteral("実行日付"), QStringLiteral("摘要")};
    const QString first = tree.configFile();
    const QString second = moved + QStringLiteral("/usrcnfg.accdb");

    // The answer went through the connection the run had open ...
    const QStringList answer = rowsOf(first, answers, answerColumns);
    ASSERT_EQ(answer.size(), 1) << answer.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(rowsOf(second, answers, answerColumns).isEmpty());
    // ... and the end row through the one opened after it.
    const QStringList end = rowsOf(second, ends, endColumns);
    ASSERT_EQ(end.size(), 1) << end.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(rowsOf(first, ends, endColumns).isEmpty());
    const QString answeredAt = answer.first().section(QLatin1Char('|'), 0, 0);
    const QString endedAt = end.first().section(QLatin1Char('|'), 0, 0);
    EXPECT_EQ(answeredAt, QStringLiteral("20261121 093000"));
    EXPECT_GT(endedAt, answeredAt);
    EXPECT_FALSE(tree.ctx().conn.環境DB接続中);
}

TEST_F(Link, RequestOlderThanAMinuteStaysUnclaimed) {
    request("20261121 092859", "00100012");
    連携受信read(tree.ctx(), QStringLiteral("00100012"), stamp());
    EXPECT_EQ(tree.ctx().link.起動連携情報, QString());
    EXPECT_EQ(linkRows().size(), 1);
}

TEST_F(Link, OnlyTheSameLineIsTaken) {
    request("20261121 092930", "00100099");
    連携受信read(tree.ctx(), QStringLiteral("00100012"), stamp());
    EXPECT_EQ(tree.ctx().link.起動連携情報, QString());
    EXPECT_EQ(linkRows().size(), 1);
}

TEST_F(Link, EmptyCommandLineTakesARequestWithAnEmptyLine) {
    request("20261121 092930", "");
    連携受信read(tree.ctx(), QString(), stamp());
    EXPECT_EQ(tree.ctx().link.発信プログラムID, QStringLiteral("受注入力"));
    EXPECT_TRUE(linkRows().isEmpty());
}

TEST_F(Link, NoRequestNoAnswerWhateverTheClosingTextHolds) {
    tree.ctx().link.終了連携情報 = QStringLiteral("00013");
    データ処理term(tree.ctx());
    EXPECT_TRUE(linkRows().isEmpty());
}

TEST_F(Link, QuoteInTheClosingTextLosesTheAnswerQuietly) {
    request("20261121 092930", "00100012");
    連携受信read(tree.ctx(), QStringLiteral("00100012"), stamp());
    連携応答send(tree.ctx(), QStringLiteral("O'Neil"));
    EXPECT_TRUE(linkRows().isEmpty());
    EXPECT_TRUE(tree.messages.shown.isEmpty());
    EXPECT_TRUE(tree.ctx().conn.環境DB接続中); // reopened all the same
}

} // namespace
