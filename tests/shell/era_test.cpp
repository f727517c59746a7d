// The era routines on the eras that the installation tool seeds, read through
// the program's own statement routine.

#include "shell/modデータ処理.h"
#include "support/installation.h"
#include "toolkit/mod基本項目.h"

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

class EraOnTree : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(環境DBopen(tree->ctx()));
        ASSERT_TRUE(業務DBopen(tree->ctx()));
    }
    業務SQLopen型 open() {
        return [this](db::Recordset& rs, const QString& sql) { return 業務SQLopen(tree->ctx(), rs, sql); };
    }
    std::unique_ptr<TestInstallation> tree;
};

TEST_P(EraOnTree, EraFourAndAOneDigitYear) {
    QString western;
    ASSERT_TRUE(西暦日付conv(open(), 4, QStringLiteral("50401"), western));
    EXPECT_EQ(western, QStringLiteral("19930401"));
}

TEST_P(EraOnTree, FirstDayOfAnEraGivesYearOne) {
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(open(), QStringLiteral("20190501"), era, year));
    EXPECT_EQ(era, 5);
    EXPECT_EQ(year, QStringLiteral("01"));
    ASSERT_TRUE(年号日付conv(open(), QStringLiteral("20190430"), era, year));
    EXPECT_EQ(era, 4);
    EXPECT_EQ(year, QStringLiteral("31"));
}

TEST_P(EraOnTree, DateBeforeTheFirstEraIsWestern) {
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(open(), QStringLiteral("18500101"), era, year));
    EXPECT_EQ(era, 0);
    EXPECT_EQ(year, QStringLiteral("1850"));
    // No history row: the reads did not fail.
    for (const QString& row : tree->history())
        EXPECT_FALSE(row.contains(QStringLiteral("エラー"))) << row.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, EraOnTree, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);

} // namespace
