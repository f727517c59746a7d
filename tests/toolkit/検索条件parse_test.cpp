#include "toolkit/mod項目編集.h"

#include "test_text.h"

#include <gtest/gtest.h>

namespace {

const QString kUntouched = QStringLiteral("<untouched>");

// Runs the routine as the search windows do: the same text is searched and
// receives what stays.
struct InPlace {
    QString value;
    QString text;
};
InPlace parseInPlace(const QString& column, const QString& condition) {
    InPlace result{QString(), condition};
    result.value = 検索条件parse(column, result.text, result.text);
    return result;
}

TEST(検索条件parse, OnlyConditionLeavesEmptyText) {
    const auto r = parseInPlace(q("M担当者.コード"), q("M担当者.コード >= '00010'"));
    EXPECT_EQ(r.value, q("00010"));
    EXPECT_EQ(r.text, QString());
}

TEST(検索条件parse, FirstConditionTakesTheConnectorBehindIt) {
    const auto r = parseInPlace(q("M担当者.コード"), q("M担当者.コード >= '00010' AND M担当者.部門コード = '2'"));
    EXPECT_EQ(r.value, q("00010"));
    EXPECT_EQ(r.text, q("M担当者.部門コード = '2'"));
}

TEST(検索条件parse, LaterConditionTakesTheConnectorBeforeIt) {
    const auto r = parseInPlace(q("M担当者.部門コード"), q("M担当者.コード >= '00010' AND M担当者.部門コード = '2'"));
    EXPECT_EQ(r.value, q("2"));
    EXPECT_EQ(r.text, q("M担当者.コード >= '00010'"));
}

TEST(検索条件parse, LikeLosesItsPercentAndLeavesTheConnector) {
    const auto r = parseInPlace(q("a"), q("a LIKE '%x%' AND b = '1'"));
    EXPECT_EQ(r.value, q("x"));
    EXPECT_EQ(r.text, q(" AND b = '1'"));
}

TEST(検索条件parse, GreaterThanRemovesEverythingBeforeIt) {
    const auto r = parseInPlace(q("a"), q("c = '1' AND a > '5'"));
    EXPECT_EQ(r.value, q("5"));
    EXPECT_EQ(r.text, QString());
}

TEST(検索条件parse, LessThanRemovesEverythingBeforeIt) {
    const auto r = parseInPlace(q("a"), q("c = '1' AND a < '5' AND d = '2'"));
    EXPECT_EQ(r.value, q("5"));
    EXPECT_EQ(r.text, q(" AND d = '2'"));
}

TEST(検索条件parse, ColumnNotThereLeavesTextAlone) {
    QString rest = kUntouched;
    EXPECT_EQ(検索条件parse(q("M担当者.コード"), q("M担当者.部門コード = '2'"), rest), QString());
    EXPECT_EQ(rest, kUntouched);
    const auto r = parseInPlace(q("M担当者.コード"), q("M担当者.部門コード = '2'"));
    EXPECT_EQ(r.value, QString());
    EXPECT_EQ(r.text, q("M担当者.部門コード = '2'"));
}

TEST(検索条件parse, EmptyTextFindsNothing) {
    QString rest = kUntouched;
    EXPECT_EQ(検索条件parse(q("a"), QString(), rest), QString());
    EXPECT_EQ(rest, kUntouched);
}

TEST(検索条件parse, ColumnNameCaseIsIgnored) {
    const auto r = parseInPlace(q("m担当者.コード"), q("M担当者.コード >= '00010'"));
    EXPECT_EQ(r.value, q("00010"));
    EXPECT_EQ(r.text, QString());
}

TEST(検索条件parse, LowerCaseLikeMatches) {
    const auto r = parseInPlace(q("M担当者.コード"), q("m担当者.コード like '%山%'"));
    EXPECT_EQ(r.value, q("山"));
    EXPECT_EQ(r.text, QString());
}

TEST(検索条件parse, LowerCaseConnectorBehindIsTaken) {
    const auto r = parseInPlace(q("a"), q("a >= '1' and x = '2'"));
    EXPECT_EQ(r.value, q("1"));
    EXPECT_EQ(r.text, q("x = '2'"));
}

TEST(検索条件parse, OrBehindTheFirstConditionIsTaken) {
    const auto r = parseInPlace(q("a"), q("a = '1' OR b = '2'"));
    EXPECT_EQ(r.value, q("1"));
    EXPECT_EQ(r.text, q("b = '2'"));
}

TEST(検索条件parse, OperatorsAreTriedInTheirOrder) {
    // Both ends of a range: the lower end first, then the upper.
    auto r = parseInPlace(q("M担当者.コード"), q("M担当者.コード <= '00099' AND M担当者.コード >= '00001'"));
    EXPECT_EQ(r.value, q("00001"));
    EXPECT_EQ(r.text, q("M担当者.コード <= '00099'"));
    r = parseInPlace(q("M担当者.コード"), r.text);
    EXPECT_EQ(r.value, q("00099"));
    EXPECT_EQ(r.text, QString());
}

TEST(検索条件parse, PositionSixTakesTheOrBeforeIt) {
    const auto r = parseInPlace(q("a"), q("b OR a = '1' OR c = '2'"));
    EXPECT_EQ(r.value, q("1"));
    EXPECT_EQ(r.text, q("b OR c = '2'"));
}

TEST(検索条件parse, PositionFiveWithoutOrStartsAtTheBeginning) {
    const auto r = parseInPlace(q("a"), q("zzz a = '1'"));
    EXPECT_EQ(r.value, q("1"));
    EXPECT_EQ(r.text, QString());
}

TEST(検索条件parse, DoubledQuoteEndsTheValueAtTheFirstQuote) {
    const auto r = parseInPlace(q("a"), q("a = 'O''Brien'"));
    EXPECT_EQ(r.value, q("O"));
    EXPECT_EQ(r.text, q("'Brien'"));
}

TEST(検索条件parse, ParenthesisBetweenConnectorAndEndGoesUpToItsClose) {
    const auto r = parseInPlace(q("a"), q("x = '1' AND a = '(2' AND y = '3') AND z = '4'"));
    EXPECT_EQ(r.value, q("(2"));
    EXPECT_EQ(r.text, q("x = '1' AND z = '4'"));
}

TEST(検索条件parse, ConnectorBehindAParenthesisIsNotTheOneBefore) {
    // The connector is looked for from five characters before the column; the
    // " AND (" lies further back, so the first " AND " found is the one behind
    // the parenthesis, and the text is put together around it as it stands.
    const auto r = parseInPlace(q("a"), q("x = '1' AND (a = '2' OR b = '3') AND c = '4'"));
    EXPECT_EQ(r.value, q("2"));
    EXPECT_EQ(r.text, q("x = '1' AND (a = '2' OR b = '3') OR b = '3') AND c = '4'"));
}

TEST(検索条件parse, WhereBeforeGreaterOrEqualFindsTheConditionAgain) {
    const auto r = parseInPlace(q("a"), q("x = '1' WHERE a >= '2' OR y = '3'"));
    EXPECT_EQ(r.value, q("2"));
    EXPECT_EQ(r.text, q("x = '1' WHERE y = '3'"));
}

TEST(検索条件parse, WhereBeforeEqualsLooksForTheWrongOperatorAndStartsAtTheBeginning) {
    const auto r = parseInPlace(q("a"), q("x = '1' WHERE a = '2' AND y = '3'"));
    EXPECT_EQ(r.value, q("2"));
    EXPECT_EQ(r.text, q("y = '3'"));
}

TEST(検索条件parse, SeparateOutTextReceivesTheRest) {
    const QString condition = q("M担当者.コード >= '00010' AND M担当者.部門コード = '2'");
    QString rest;
    EXPECT_EQ(検索条件parse(q("M担当者.コード"), condition, rest), q("00010"));
    EXPECT_EQ(rest, q("M担当者.部門コード = '2'"));
    EXPECT_EQ(condition, q("M担当者.コード >= '00010' AND M担当者.部門コード = '2'"));
}

TEST(検索条件parse, ValueWithoutClosingQuoteTakesNothingOut) {
    QString rest = kUntouched;
    EXPECT_EQ(検索条件parse(q("a"), q("a = '12"), rest), QString());
    EXPECT_EQ(rest, kUntouched);
}

TEST(検索条件parse, EmptyValueBetweenQuotesIsStillTakenOut) {
    const auto r = parseInPlace(q("a"), q("a = '' AND b = '1'"));
    EXPECT_EQ(r.value, QString());
    EXPECT_EQ(r.text, q("b = '1'"));
}

TEST(検索条件parse, TextBeyondSigned16BitCountIsNotSearched) {
    const QString condition = q("a = '1'") + QString(32761, QLatin1Char(' '));
    ASSERT_EQ(condition.size(), 32768);
    QString rest = kUntouched;
    EXPECT_EQ(検索条件parse(q("a"), condition, rest), QString());
    EXPECT_EQ(rest, kUntouched);

    const QString longest = condition.left(32767);
    EXPECT_EQ(検索条件parse(q("a"), longest, rest), q("1"));
    EXPECT_EQ(rest, QString(32760, QLatin1Char(' ')));
}

} // namespace
