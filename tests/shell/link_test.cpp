// The program link: a request of another program taken at the start and the
// answer written at the end.

#include "shell/modデータ処理.h"
#include "support/installation.h"

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
