// The argument text between the staff card and the report program: made by
// the one routine, read back by the other.

#include "shell/担当者カード引数.h"

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }

namespace {

担当者カード条件 card(const QString& office, const QString& code) {
    担当者カード条件 c;
    c.操作事業所コード = QStringLiteral("000");
    c.モード = QStringLiteral("1");
    c.事業所コード自 = office;
    c.事業所コード至 = office;
    c.担当者コード自 = code;
    c.担当者コード至 = code;
    c.在籍区分 = QStringLiteral("2");
    c.社員区分 = QStringLiteral("3");
    return c;
}

void expectSame(const 担当者カード条件& a, const 担当者カード条件& b) {
    EXPECT_EQ(a.操作事業所コード, b.操作事業所コード);
    EXPECT_EQ(a.モード, b.モード);
    EXPECT_EQ(a.事業所コード自, b.事業所コード自);
    EXPECT_EQ(a.事業所コード至, b.事業所コード至);
    EXPECT_EQ(a.部門コード自, b.部門コード自);
    EXPECT_EQ(a.部門コード至, b.部門コード至);
    EXPECT_EQ(a.セクションコード自, b.セクションコード自);
    EXPECT_EQ(a.セクションコード至, b.セクションコード至);
    EXPECT_EQ(a.役職コード自, b.役職コード自);
    EXPECT_EQ(a.役職コード至, b.役職コード至);
    EXPECT_EQ(a.担当者コード自, b.担当者コード自);
    EXPECT_EQ(a.担当者コード至, b.担当者コード至);
    EXPECT_EQ(a.在籍区分, b.在籍区分);
    EXPECT_EQ(a.社員区分, b.社員区分);
}

// Parses a text that must be refused, and answers the message.
QString refused(const QString& text) {
    担当者カード条件 c;
    c.担当者コード自 = QStringLiteral("untouched");
    QString error;
    EXPECT_FALSE(担当者カード引数parse(text, c, error)) << text.toStdString();
    EXPECT_EQ(c.担当者コード自, QStringLiteral("untouched"));
    EXPECT_TRUE(error.startsWith(QStringLiteral("担当者カードの引数が正しくありません。"))) << error.toStdString();
    return error;
}

TEST(CardArguments, TheProgramIsNamedForThePlatform) {
#ifdef Q_OS_WIN
    EXPECT_EQ(担当者カードプログラム名(), QStringLiteral("担当者カード.exe"));
#else
    EXPECT_EQ(担当者カードプログラム名(), QStringLiteral("担当者カード"));
#endif
}

TEST(CardArguments, FieldsStandAtTheirFixedPlaces) {
    EXPECT_EQ(担当者カード引数make(card(QStringLiteral("000"), QStringLiteral("00001"))),
              QStringLiteral("00010000000009990009990099000010000123"));
}

TEST(CardArguments, ACodeOfThreeCharactersIsPaddedWithBlanksAndReadBackWithout) {
    const 担当者カード条件 c = card(QStringLiteral("01"), QStringLiteral("123"));
    const QString text = 担当者カード引数make(c);
    EXPECT_EQ(text, QStringLiteral("000101 01 0009990009990099123  123  23"));
    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(text, read, error)) << error.toStdString();
    expectSame(read, c);
    EXPECT_EQ(read.担当者コード自, QStringLiteral("123"));
    EXPECT_EQ(read.事業所コード自, QStringLiteral("01"));
}

TEST(CardArguments, RoundTripOfEveryField) {
    担当者カード条件 c;
    c.操作事業所コード = QStringLiteral("002");
    c.モード = QStringLiteral("0");
    c.事業所コード自 = QStringLiteral("001");
    c.事業所コード至 = QStringLiteral("002");
    c.部門コード自 = QStringLiteral("010");
    c.部門コード至 = QStringLiteral("020");
    c.セクションコード自 = QStringLiteral("3");
    c.セクションコード至 = QStringLiteral("4");
    c.役職コード自 = QStringLiteral("01");
    c.役職コード至 = QStringLiteral("09");
    c.担当者コード自 = QStringLiteral("00010");
    c.担当者コード至 = QStringLiteral("00200");
    c.在籍区分 = QStringLiteral("*");
    c.社員区分 = QStringLiteral("0");
    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(担当者カード引数make(c), read, error)) << error.toStdString();
    expectSame(read, c);
}

TEST(CardArguments, BlankRangesAndAShortOfficeOfTheRunAreRead) {
    // An office of the run as held may be shorter than three characters.
    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(QStringLiteral("11      0009990009990099          01"), read, error))
        << error.toStdString();
    EXPECT_EQ(read.操作事業所コード, QStringLiteral("1"));
    EXPECT_EQ(read.モード, QStringLiteral("1"));
    EXPECT_TRUE(read.事業所コード自.isEmpty());
    EXPECT_TRUE(read.担当者コード至.isEmpty());
    EXPECT_EQ(read.社員区分, QStringLiteral("1"));
}

TEST(CardArguments, SurroundingBlanksAndALineEndAreNotPartOfTheText) {
    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(QStringLiteral("  00010000000009990009990099000010000123\n"), read, error))
        << error.toStdString();
    EXPECT_EQ(read.担当者コード自, QStringLiteral("00001"));
}

TEST(CardArguments, MalformedTextsAreRefusedWithTheReason) {
    EXPECT_TRUE(refused(QString()).contains(QStringLiteral("(0 文字)")));
    EXPECT_TRUE(refused(QStringLiteral("0001")).contains(QStringLiteral("36 から 38 文字")));
    // One character too many: the office of the run would be four long.
    EXPECT_TRUE(
        refused(QStringLiteral("000010000000009990009990099000010000123")).contains(QStringLiteral("(39 文字)")));
    EXPECT_TRUE(refused(QStringLiteral("00020000000009990009990099000010000123")).contains(QStringLiteral("モード")));
    // A code that is not left-aligned.
    EXPECT_TRUE(
        refused(QStringLiteral("0001000000000999000999009900001  00123")).contains(QStringLiteral("担当者コード(至)")));
    EXPECT_TRUE(
        refused(QStringLiteral("0001 00 000009990009990099000010000123")).contains(QStringLiteral("事業所コード(自)")));
    // A quote would reach the statement.
    EXPECT_TRUE(
        refused(QStringLiteral("0001000000000999000999009900001000'123")).contains(QStringLiteral("担当者コード(至)")));
    EXPECT_TRUE(refused(QStringLiteral("000100000000099900099900990000100001x3")).contains(QStringLiteral("在籍区分")));
    EXPECT_TRUE(refused(QStringLiteral("000100000000099900099900990000100001 3")).contains(QStringLiteral("在籍区分")));
    EXPECT_TRUE(refused(QStringLiteral("0001000000000999000999009900001000011-")).contains(QStringLiteral("社員区分")));
    EXPECT_TRUE(
        refused(QStringLiteral("0 010000000009990009990099000010000123")).contains(QStringLiteral("操作事業所コード")));
    EXPECT_TRUE(refused(QStringLiteral("担当者カードを印刷してください")).contains(QStringLiteral("文字")));
}

} // namespace
