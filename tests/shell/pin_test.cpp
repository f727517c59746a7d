// The PIN codec of a run, under the key file that the installation tool made.

#include "shell/modデータ処理.h"
#include "shell/暗証番号.h"
#include "support/installation.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

class Pin : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
        ASSERT_TRUE(環境DBopen(tree.ctx()));
    }
    TestInstallation tree{testdb::Engine::Sqlite};
};

TEST_F(Pin, InstallationHasItsKeyAndPinsRoundTrip) {
    EXPECT_TRUE(QFile::exists(暗証番号鍵ファイル(tree.path(QStringLiteral("conf")))));
    const QString stored = 暗証番号encode(tree.ctx(), QStringLiteral("ABCD"));
    EXPECT_FALSE(stored.isEmpty());
    EXPECT_NE(stored, QStringLiteral("ABCD"));
    EXPECT_EQ(暗証番号decode(tree.ctx(), stored), QStringLiteral("ABCD"));
    EXPECT_TRUE(tree.history().isEmpty());
}

TEST_F(Pin, StoredFormOfAnotherInstallationDecodesToNothingWithAnErrorRow) {
    TestInstallation other(testdb::Engine::Sqlite);
    ASSERT_TRUE(other.ok());
    ASSERT_TRUE(環境DBopen(other.ctx()));
    const QString foreign = 暗証番号encode(other.ctx(), QStringLiteral("ABCD"));
    EXPECT_EQ(暗証番号decode(tree.ctx(), foreign), QString());
    const QStringList h = tree.history();
    ASSERT_EQ(h.size(), 1);
    EXPECT_TRUE(h.first().contains(QStringLiteral("|エラー PIN_DECODE ERROR "))) << h.first().toStdString();
}

TEST_F(Pin, MissingKeyFileDecodesToNothingWithAnErrorRow) {
    const QString stored = 暗証番号encode(tree.ctx(), QStringLiteral("ABCD"));
    tree.newContext();
    ASSERT_TRUE(環境DBopen(tree.ctx()));
    ASSERT_TRUE(QFile::remove(暗証番号鍵ファイル(tree.path(QStringLiteral("conf")))));
    EXPECT_EQ(暗証番号decode(tree.ctx(), stored), QString());
    EXPECT_EQ(暗証番号encode(tree.ctx(), QStringLiteral("WXYZ")), QString());
    const QStringList h = tree.history();
    ASSERT_EQ(h.size(), 2);
    EXPECT_TRUE(h.at(0).contains(QStringLiteral("PIN_DECODE ERROR")));
    EXPECT_TRUE(h.at(1).contains(QStringLiteral("PIN_ENCODE ERROR")));
}

} // namespace
