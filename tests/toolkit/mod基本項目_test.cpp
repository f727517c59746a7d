#include "toolkit/mod基本項目.h"

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "support/test_databases.h"

#include <QStringList>
#include <QTemporaryDir>

#include "test_text.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

// ---- era dates on both engines

class 年号日付 : public ::testing::TestWithParam<testdb::Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        ASSERT_TRUE(folder_.isValid());
        scratch_ = std::make_unique<testdb::ScratchDatabase>(GetParam(), folder_.path());
        ASSERT_TRUE(scratch_->ok()) << scratch_->error().toStdString();
        ASSERT_TRUE(connection_.open(scratch_->connectionText())) << connection_.lastError().description.toStdString();
        ASSERT_TRUE(connection_.execute(q("CREATE TABLE K年号区分 (区分 text primary key, 名称 text, 開始日付 text)")))
            << connection_.lastError().description.toStdString();
    }

    void TearDown() override { connection_.close(); }

    void seedEras() {
        for (const char* row : {"'0', '西暦', '00010101'", "'1', '明治', '18680908'", "'2', '大正', '19120730'",
                                "'3', '昭和', '19261225'", "'4', '平成', '19890108'", "'5', '令和', '20190501'"}) {
            ASSERT_TRUE(connection_.execute(q("INSERT INTO K年号区分 (区分, 名称, 開始日付) VALUES (") + q(row) + q(")")))
                << connection_.lastError().description.toStdString();
        }
    }

    void insertEra(const char* values) {
        ASSERT_TRUE(connection_.execute(q("INSERT INTO K年号区分 (区分, 名称, 開始日付) VALUES (") + q(values) + q(")")))
            << connection_.lastError().description.toStdString();
    }

    // The statement routine of the program, as the routines receive it; keeps
    // the statements it was given.
    業務SQLopen型 opener() {
        return [this](db::Recordset& rs, const QString& sql) {
            statements_ << sql;
            return rs.open(sql, connection_) && !rs.bof() && !rs.eof();
        };
    }

    QTemporaryDir folder_;
    std::unique_ptr<testdb::ScratchDatabase> scratch_;
    db::Connection connection_;
    QStringList statements_;
};

TEST_P(年号日付, StatementTextOfTheDateLookUp) {
    seedEras();
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(opener(), q("19930401"), era, year));
    EXPECT_EQ(statements_, QStringList{q("SELECT TOP 1 * FROM K年号区分 WHERE 開始日付 <= '19930401' ORDER BY 開始日付 DESC")});
    EXPECT_EQ(era, 4);
    EXPECT_EQ(year, q("05"));
}

TEST_P(年号日付, FirstDayOfAnEraIsYearOne) {
    seedEras();
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(opener(), q("19890108"), era, year));
    EXPECT_EQ(era, 4);
    EXPECT_EQ(year, q("01"));
    ASSERT_TRUE(年号日付conv(opener(), q("20190501"), era, year));
    EXPECT_EQ(era, 5);
    EXPECT_EQ(year, q("01"));
}

TEST_P(年号日付, DayBeforeAnEraBelongsToTheEraBefore) {
    seedEras();
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(opener(), q("19890107"), era, year));
    EXPECT_EQ(era, 3);
    EXPECT_EQ(year, q("64"));
}

TEST_P(年号日付, DateBeforeTheEarliestRowIsFalseAndWritesNothing) {
    insertEra("'4', '平成', '19890108'");
    short era = -1;
    QString year = q("unchanged");
    EXPECT_FALSE(年号日付conv(opener(), q("19890107"), era, year));
    EXPECT_EQ(era, -1);
    EXPECT_EQ(year, q("unchanged"));
    EXPECT_EQ(statements_.size(), 1);
}

TEST_P(年号日付, WesternRowGivesCodeZeroAndFourDigitYear) {
    seedEras();
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(opener(), q("18680907"), era, year));
    EXPECT_EQ(era, 0);
    EXPECT_EQ(year, q("1868"));
}

TEST_P(年号日付, AnEraYearOfZeroOrLessIsWesternWithTheFourDigitYear) {
    // A first day that sorts before the date but reads as a later year: its
    // year is 202, while the text sorts before every date of digits.
    insertEra("'5', '令和', '+2020501'");
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(opener(), q("02020101"), era, year));
    EXPECT_EQ(era, 5);
    EXPECT_EQ(year, q("01"));
    ASSERT_TRUE(年号日付conv(opener(), q("02011231"), era, year)); // era year 0
    EXPECT_EQ(era, 0);
    EXPECT_EQ(year, q("0201"));
    era = -1;
    ASSERT_TRUE(年号日付conv(opener(), q("01500101"), era, year)); // era year -51
    EXPECT_EQ(era, 0);
    EXPECT_EQ(year, q("0150"));
    EXPECT_EQ(statements_.size(), 3);
}

TEST_P(年号日付, MalformedDatesAreFalseWithoutAStatement) {
    seedEras();
    short era = -1;
    QString year = q("unchanged");
    for (const char* date : {"1993041", "199304011", "19931301", "19930001", "19930432", "19930400", "1993ab01", "1993'--1"}) {
        EXPECT_FALSE(年号日付conv(opener(), q(date), era, year)) << date;
    }
    EXPECT_EQ(era, -1);
    EXPECT_EQ(year, q("unchanged"));
    EXPECT_TRUE(statements_.isEmpty());
}

TEST_P(年号日付, DaysOfTheMonthAreNotCheckedFurther) {
    seedEras();
    short era = -1;
    QString year;
    ASSERT_TRUE(年号日付conv(opener(), q("20260231"), era, year));
    EXPECT_EQ(era, 5);
    EXPECT_EQ(year, q("08"));
}

TEST_P(年号日付, EraDateToWesternWithOneDigitYear) {
    seedEras();
    QString western;
    ASSERT_TRUE(西暦日付conv(opener(), 4, q("50401"), western));
    EXPECT_EQ(western, q("19930401"));
    EXPECT_EQ(statements_, QStringList{q("SELECT TOP 1 * FROM K年号区分 WHERE 区分 = '4'")});
}

TEST_P(年号日付, EraDateToWesternWithTwoDigitYear) {
    seedEras();
    QString western;
    ASSERT_TRUE(西暦日付conv(opener(), 3, q("640107"), western));
    EXPECT_EQ(western, q("19890107"));
    ASSERT_TRUE(西暦日付conv(opener(), 5, q("010501"), western));
    EXPECT_EQ(western, q("20190501"));
}

TEST_P(年号日付, WesternCodeOrLongTextPassesThrough) {
    seedEras();
    QString western = q("old");
    EXPECT_FALSE(西暦日付conv(opener(), 0, q("50401"), western));
    EXPECT_EQ(western, q("50401"));
    EXPECT_FALSE(西暦日付conv(opener(), 4, q("19930401"), western));
    EXPECT_EQ(western, q("19930401"));
    EXPECT_TRUE(statements_.isEmpty());
}

TEST_P(年号日付, OtherLengthsLeaveTheOutAlone) {
    seedEras();
    QString western = q("old");
    EXPECT_FALSE(西暦日付conv(opener(), 4, q("0401"), western));
    EXPECT_FALSE(西暦日付conv(opener(), 4, q("1234567"), western));
    EXPECT_FALSE(西暦日付conv(opener(), 4, QString(), western));
    EXPECT_FALSE(西暦日付conv(opener(), 4, q("x0401"), western));
    EXPECT_EQ(western, q("old"));
    EXPECT_TRUE(statements_.isEmpty());
}

TEST_P(年号日付, UnknownEraIsFalse) {
    seedEras();
    QString western = q("old");
    EXPECT_FALSE(西暦日付conv(opener(), 9, q("50401"), western));
    EXPECT_EQ(western, q("old"));
    EXPECT_EQ(statements_, QStringList{q("SELECT TOP 1 * FROM K年号区分 WHERE 区分 = '9'")});
}

TEST_P(年号日付, RoundTripOverEveryEra) {
    seedEras();
    for (const char* date : {"18680908", "19120730", "19261225", "19450815", "19890108", "20190501", "20261231"}) {
        short era = -1;
        QString year;
        ASSERT_TRUE(年号日付conv(opener(), q(date), era, year)) << date;
        QString western;
        ASSERT_TRUE(西暦日付conv(opener(), era, year + q(date).mid(4), western)) << date;
        EXPECT_EQ(western, q(date));
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, 年号日付, ::testing::Values(testdb::Engine::Sqlite, testdb::Engine::Postgres),
                         testdb::engineParamName);

// ---- fiscal dates

TEST(年度末日get, MonthEndPairOnTheLastDay) {
    EXPECT_EQ(年度末日get(q("20260331"), 3, 31), q("20260331"));
}

TEST(年度末日get, DayAfterMovesOneYearOn) {
    EXPECT_EQ(年度末日get(q("20260401"), 3, 31), q("20270331"));
}

TEST(年度末日get, LeapDayPairMovesOnToTheTwentyEighth) {
    EXPECT_EQ(年度末日get(q("20240301"), 2, 29), q("20250228"));
}

TEST(年度末日get, TwentyEighthOfFebruaryIsTheMonthEndInALeapYear) {
    EXPECT_EQ(年度末日get(q("20240101"), 2, 28), q("20240229"));
}

TEST(年度末日get, OtherDayRollsOverTheMonthEnd) {
    EXPECT_EQ(年度末日get(q("20260101"), 4, 31), q("20260501"));
    EXPECT_EQ(年度末日get(q("20260101"), 3, 20), q("20260320"));
    EXPECT_EQ(年度末日get(q("20260321"), 3, 20), q("20270320"));
}

TEST(年度末日get, MalformedDateGivesEmptyText) {
    EXPECT_EQ(年度末日get(q("2026041"), 3, 31), QString());
    EXPECT_EQ(年度末日get(q("2026O401"), 3, 31), QString());
    EXPECT_EQ(年度末日get(q("00000615"), 3, 31), QString());
}

TEST(月度末日get, MonthEndPairGivesTheLastDayOfTheDatesMonth) {
    EXPECT_EQ(月度末日get(q("20260215"), 3, 31), q("20260228"));
    EXPECT_EQ(月度末日get(q("20240215"), 3, 31), q("20240229"));
    EXPECT_EQ(月度末日get(q("20261205"), 6, 30), q("20261231"));
}

TEST(月度末日get, ClosingDayOnTheDate) {
    EXPECT_EQ(月度末日get(q("20260320"), 3, 20), q("20260320"));
}

TEST(月度末日get, DayAfterTheClosingDayGoesToTheNextMonth) {
    EXPECT_EQ(月度末日get(q("20260321"), 3, 20), q("20260420"));
    EXPECT_EQ(月度末日get(q("20261221"), 3, 20), q("20270120"));
}

TEST(月度末日get, OverflowingClosingDayRollsOver) {
    EXPECT_EQ(月度末日get(q("20260210"), 1, 30), q("20260302"));
}

TEST(月度末日get, MalformedDateGivesEmptyText) {
    EXPECT_EQ(月度末日get(QString(), 3, 20), QString());
    EXPECT_EQ(月度末日get(q("00000615"), 3, 20), QString());
}

} // namespace
