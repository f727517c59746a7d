#include "platform/db/translate.h"

#include <gtest/gtest.h>

using db::Target;
using db::translate;

namespace {

QString ok(const QString& sql, Target target) {
    const db::Translation t = translate(sql, target);
    EXPECT_TRUE(t.ok) << t.error.description.toStdString();
    return t.sql;
}

long refused(const QString& sql, Target target) {
    const db::Translation t = translate(sql, target);
    EXPECT_FALSE(t.ok) << t.sql.toStdString();
    EXPECT_FALSE(t.error.description.isEmpty());
    return t.error.number;
}

} // namespace

TEST(Translate, TopBecomesTrailingLimit) {
    EXPECT_EQ(ok(QStringLiteral("SELECT TOP 1 * FROM M他業務連携 WHERE コード = '003'"), Target::Sqlite),
              QStringLiteral("SELECT * FROM M他業務連携 WHERE コード = '003' LIMIT 1"));
    EXPECT_EQ(ok(QStringLiteral("SELECT TOP 1000 M担当者.コード FROM M担当者 ORDER BY M担当者.コード"), Target::Postgres),
              QStringLiteral("SELECT M担当者.コード FROM M担当者 ORDER BY M担当者.コード LIMIT 1000"));
}

TEST(Translate, TopBecomesFetchFirstForAnOracleSource) {
    EXPECT_EQ(ok(QStringLiteral("SELECT TOP 1 コード FROM M担当者 ORDER BY コード DESC"), Target::OdbcOracle),
              QStringLiteral("SELECT コード FROM M担当者 ORDER BY コード DESC FETCH FIRST 1 ROWS ONLY"));
}

TEST(Translate, NativeOdbcSourceGetsTheTextAsItStands) {
    const QString sql = QStringLiteral("SELECT TOP 1 * FROM [M担当者] WHERE 氏名 LIKE '%山%'");
    EXPECT_EQ(ok(sql, Target::OdbcNative), sql);
}

TEST(Translate, TextWithoutDialectPiecesIsUnchanged) {
    const QString sql = QStringLiteral("UPDATE 使用状況 SET プログラムID = '担当者登録', 開始日時 = '20261121 093000'"
                                       " WHERE コンピュータID = 'PC-01' AND ユーザID = 'tanaka'");
    EXPECT_EQ(ok(sql, Target::Sqlite), sql);
    EXPECT_EQ(ok(sql, Target::Postgres), sql);
}

TEST(Translate, BracketsArePlainNamesOnPostgres) {
    const QString sql = QStringLiteral("INSERT INTO [L担当者] ([保守事業所コード],[保守番号基準日付]) VALUES ('000','99999999')");
    EXPECT_EQ(ok(sql, Target::Postgres),
              QStringLiteral("INSERT INTO L担当者 (保守事業所コード,保守番号基準日付) VALUES ('000','99999999')"));
    EXPECT_EQ(ok(sql, Target::Sqlite), sql);
}

TEST(Translate, ABracketedNameBesideAWordKeepsQuotesOnPostgres) {
    // Without its brackets the name would run into what stands beside it and
    // be read as another name, or open a dollar-quoted string.
    // ("$$" opens a string that runs to the end: the name inside stays as typed.)
    EXPECT_EQ(ok(QStringLiteral("SELECT [名前]$$,[コード] FROM T"), Target::Postgres),
              QStringLiteral("SELECT \"名前\"$$,[コード] FROM T"));
    EXPECT_EQ(ok(QStringLiteral("SELECT [a][b], 1[c] FROM T"), Target::Postgres),
              QStringLiteral("SELECT a\"b\", 1\"c\" FROM T"));
}

TEST(Translate, QuotedNamesThatWouldTouchStaySeparate) {
    // "a b""c" would be one name with a quote inside; a name left open would
    // take the quoted name in front of it into itself.
    for (Target t : {Target::Postgres, Target::OdbcOracle}) {
        EXPECT_EQ(ok(QStringLiteral("SELECT [a b]\"c\" FROM T"), t), QStringLiteral("SELECT \"a b\" \"c\" FROM T"));
        EXPECT_EQ(ok(QStringLiteral("SELECT \"c\"[a b] FROM T"), t), QStringLiteral("SELECT \"c\" \"a b\" FROM T"));
        EXPECT_EQ(ok(QStringLiteral("INSERT INTO [L担当 者]\"(コード"), t),
                  QStringLiteral("INSERT INTO \"L担当 者\" \"(コード"));
    }
}

TEST(Translate, BracketsInsideStringsAreLeftAlone) {
    EXPECT_EQ(ok(QStringLiteral("SELECT * FROM M担当者 WHERE 氏名 = '[山田]'"), Target::Postgres),
              QStringLiteral("SELECT * FROM M担当者 WHERE 氏名 = '[山田]'"));
}

TEST(Translate, LikeIgnoresCaseOnPostgres) {
    EXPECT_EQ(ok(QStringLiteral("SELECT コード FROM M担当者 WHERE EMAIL LIKE '%abc%' AND カナ NOT LIKE '%ﾔ%'"),
                 Target::Postgres),
              QStringLiteral("SELECT コード FROM M担当者 WHERE EMAIL ILIKE '%abc%' AND カナ NOT ILIKE '%ﾔ%'"));
    EXPECT_EQ(ok(QStringLiteral("SELECT 1 WHERE 'a' like 'A'"), Target::Postgres),
              QStringLiteral("SELECT 1 WHERE 'a' ILIKE 'A'"));
}

TEST(Translate, OuterJoinMarkersBecomeLeftJoins) {
    const QString sql = QStringLiteral(
        "SELECT TOP 1000 M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS "
        "セクション名 FROM Mセクション,M部門,M事業所,M担当者 WHERE M事業所.コード(+) = M担当者.事業所コード AND "
        "M部門.コード(+) = M担当者.部門コード AND Mセクション.コード(+) = M担当者.セクションコード AND "
        "(M担当者.事業所コード = '001' OR M担当者.事業所コード = '000') AND M担当者.コード >= '00010' ORDER BY "
        "M担当者.コード");
    EXPECT_EQ(ok(sql, Target::Sqlite),
              QStringLiteral(
                  "SELECT M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 "
                  "AS セクション名 FROM M担当者 LEFT JOIN Mセクション ON Mセクション.コード = M担当者.セクションコード "
                  "LEFT JOIN M部門 ON M部門.コード = M担当者.部門コード LEFT JOIN M事業所 ON M事業所.コード = "
                  "M担当者.事業所コード WHERE (M担当者.事業所コード = '001' OR M担当者.事業所コード = '000') AND "
                  "M担当者.コード >= '00010' ORDER BY M担当者.コード LIMIT 1000"));
}

TEST(Translate, OuterJoinOnTheRightHandSideAndChainedTables) {
    // b is reached through a, a through the base table t.
    EXPECT_EQ(ok(QStringLiteral("SELECT * FROM b, a, t WHERE t.x = a.x(+) AND b.y(+) = a.y AND t.z = '1'"),
                 Target::Postgres),
              QStringLiteral("SELECT * FROM t LEFT JOIN a ON t.x = a.x LEFT JOIN b ON b.y = a.y WHERE t.z = '1'"));
}

TEST(Translate, OracleSourceKeepsItsOwnMarkers) {
    const QString sql = QStringLiteral("SELECT M担当者.コード FROM M事業所,M担当者 WHERE M事業所.コード(+) = M担当者.事業所コード");
    EXPECT_EQ(ok(sql, Target::OdbcOracle), sql);
}

TEST(Translate, SecondStatementIsRefused) {
    EXPECT_EQ(refused(QStringLiteral("DELETE FROM 使用状況; DROP TABLE M担当者"), Target::Sqlite),
              db::kMultipleStatements);
    EXPECT_EQ(refused(QStringLiteral("SELECT 1; SELECT 2"), Target::Postgres), db::kMultipleStatements);
}

TEST(Translate, TrailingSemicolonAndSemicolonsInsideValuesAreOneStatement) {
    EXPECT_EQ(ok(QStringLiteral("SELECT 1;  "), Target::Postgres), QStringLiteral("SELECT 1"));
    EXPECT_EQ(ok(QStringLiteral("SELECT * FROM M担当者 WHERE 担当者メモ = 'a; DROP TABLE x'"), Target::Postgres),
              QStringLiteral("SELECT * FROM M担当者 WHERE 担当者メモ = 'a; DROP TABLE x'"));
}

TEST(Translate, QuotePastedIntoAValueCannotSmuggleAStatement) {
    // Values the program pastes between quotes without doubling them.
    const QString value = QStringLiteral("x'); DROP TABLE M担当者; --");
    const QString sql = QStringLiteral("INSERT INTO M付属書類 (情報名,書類名) VALUES ('担当者登録','") + value + QStringLiteral("')");
    for (Target t : {Target::Sqlite, Target::Postgres, Target::OdbcNative, Target::OdbcOracle})
        EXPECT_EQ(refused(sql, t), db::kMultipleStatements);
}

TEST(Translate, EscapeStringOfTheServerCannotHideASemicolon) {
    // On the server E'\'' is a quote inside the string; the statement after it is a second one.
    const QString sql = QStringLiteral("SELECT * FROM M担当者 WHERE 氏名 = '' || E'\\''; DROP TABLE M担当者; --'");
    EXPECT_EQ(refused(sql, Target::Postgres), db::kMultipleStatements);
}

TEST(Translate, DollarQuotedStringCannotHideASemicolon) {
    const QString sql = QStringLiteral("SELECT * FROM M担当者 WHERE 氏名 = 'x' || $$'$$; DROP TABLE M担当者; --'");
    EXPECT_EQ(refused(sql, Target::Postgres), db::kMultipleStatements);
}

TEST(Translate, ACommentInsideACommentCannotHideASemicolonFromTheServer) {
    // The server nests comments: for it the string below starts after the comment's end.
    const QString sql = QStringLiteral("SELECT 1 /* /* */ 'x */ ; DROP TABLE M担当者; --'");
    EXPECT_EQ(refused(sql, Target::Postgres), db::kTranslateError);
    EXPECT_EQ(ok(QStringLiteral("SELECT 1 /* a comment */"), Target::Postgres), QStringLiteral("SELECT 1 /* a comment */"));
}

TEST(Translate, AnUnclosedBracketIsRefusedOnTheServer) {
    // The server knows no brackets and would read the semicolon inside.
    const QString sql = QStringLiteral("SELECT [a; DROP TABLE M担当者");
    EXPECT_EQ(refused(sql, Target::Postgres), db::kTranslateError);
    EXPECT_EQ(refused(sql, Target::OdbcOracle), db::kTranslateError);
}

TEST(Translate, TextThatIsNotValidUnicodeIsRefused) {
    // Two different broken characters reach the engine as one replacement
    // character: dollar quotes that differ here would match there.
    QString sql = QStringLiteral("SELECT $#$ x $@$ ; DROP TABLE M担当者; $@$ y $#$");
    sql.replace(QLatin1Char('#'), QChar(0xD800)).replace(QLatin1Char('@'), QChar(0xD801));
    for (Target t : {Target::Sqlite, Target::Postgres, Target::OdbcNative, Target::OdbcOracle})
        EXPECT_EQ(refused(sql, t), db::kTranslateError);
}

TEST(Translate, WhatCannotBeTranslatedIsAnErrorWithADescription) {
    EXPECT_EQ(refused(QStringLiteral("SELECT * FROM M担当者 WHERE コード IN (SELECT TOP 1 コード FROM M担当者)"),
                      Target::Sqlite),
              db::kTranslateError);
    EXPECT_EQ(refused(QStringLiteral("SELECT TOP x * FROM M担当者"), Target::Sqlite), db::kTranslateError);
    // The limit behind the whole text would limit both halves together.
    for (Target t : {Target::Sqlite, Target::Postgres, Target::OdbcOracle})
        EXPECT_EQ(refused(QStringLiteral("SELECT TOP 5 コード FROM M担当者 UNION SELECT コード FROM M社員"), t),
                  db::kTranslateError);
    EXPECT_EQ(
        ok(QStringLiteral("SELECT TOP 5 コード FROM M担当者 WHERE コード IN (SELECT コード FROM M社員 UNION "
                          "SELECT コード FROM L担当者) ORDER BY コード"),
           Target::Sqlite),
        QStringLiteral("SELECT コード FROM M担当者 WHERE コード IN (SELECT コード FROM M社員 UNION SELECT コード FROM "
                       "L担当者) ORDER BY コード LIMIT 5"));
    EXPECT_EQ(refused(QStringLiteral("SELECT * FROM a, t WHERE a.x(+) = t.x OR t.y = '1'"), Target::Sqlite),
              db::kTranslateError);
    EXPECT_EQ(refused(QStringLiteral("SELECT * FROM a, t WHERE x(+) = t.x"), Target::Sqlite), db::kTranslateError);
    EXPECT_EQ(refused(QStringLiteral("SELECT * FROM a, t WHERE a.x(+) = t.x AND t.y(+) = a.y"), Target::Sqlite),
              db::kTranslateError);
}

TEST(Translate, DoubleWhereOfTheOuterJoinFormIsRefused) {
    const QString sql = QStringLiteral(
        "SELECT TOP 1000 M社員.コード,M社員.氏名 FROM Mセクション,M部門,M事業所,M社員 WHERE M事業所.コード(+) = "
        "M社員.事業所コード AND M部門.コード(+) = M社員.部門コード AND Mセクション.コード(+) = M社員.セクションコード "
        "WHERE M社員.コード >= '00010' ORDER BY M社員.コード");
    EXPECT_EQ(refused(sql, Target::Sqlite), db::kTranslateError);
    EXPECT_EQ(refused(sql, Target::Postgres), db::kTranslateError);
}

TEST(Translate, UnterminatedTextIsLeftToTheEngine) {
    const QString sql = QStringLiteral("SELECT * FROM M担当者 WHERE 姓 = 'O'Brien'");
    EXPECT_EQ(ok(sql, Target::Postgres), sql);
    // The blanks at the end are inside the string that the text leaves open: they stay.
    const QString blanks = QStringLiteral("  UPDATE M担当者 SET 姓 = 'O'Brien', 名 = 'x' WHERE コード = '00001';  ");
    EXPECT_EQ(ok(blanks, Target::Sqlite), blanks.mid(2));
    EXPECT_EQ(ok(QStringLiteral(" SELECT 1 \n"), Target::Sqlite), QStringLiteral("SELECT 1"));
}

TEST(Translate, ALimitPutBehindTheTextDoesNotLandInItsLastComment) {
    const QString sql = QStringLiteral("SELECT TOP 5 コード FROM M担当者 -- 先頭の五件");
    EXPECT_EQ(ok(sql, Target::Sqlite), QStringLiteral("SELECT コード FROM M担当者 LIMIT 5"));
    EXPECT_EQ(ok(sql, Target::Postgres), QStringLiteral("SELECT コード FROM M担当者 LIMIT 5"));
    EXPECT_EQ(ok(sql, Target::OdbcOracle), QStringLiteral("SELECT コード FROM M担当者 FETCH FIRST 5 ROWS ONLY"));
}

TEST(Translate, AMovedOuterJoinConditionDoesNotTakeItsLineCommentAlong) {
    // The comment ends with its line; joined onto one line it would swallow the rest of the WHERE.
    const QString sql = QStringLiteral(
        "SELECT M担当者.コード FROM M事業所,M担当者 WHERE M事業所.コード(+) = M担当者.事業所コード -- 事業所\n"
        "AND M担当者.在籍区分 = '0'");
    EXPECT_EQ(
        ok(sql, Target::Sqlite),
        QStringLiteral("SELECT M担当者.コード FROM M担当者 LEFT JOIN M事業所 ON M事業所.コード = M担当者.事業所コード "
                       "WHERE M担当者.在籍区分 = '0'"));
}

TEST(Translate, TextLeftOpenIsRefusedWhenSomethingWouldBePutBehindIt) {
    // An unterminated string moved into an ON would read the rest of the
    // statement as its own, up to a quote further on.
    const QString outer = QStringLiteral(
        "SELECT M担当者.コード FROM M部門,M事業所,M担当者 WHERE M事業所.コード(+) = M担当者.事業所コード AND "
        "M部門.コード(+) = M担当者.部門コード AND M担当者.氏名 LIKE '%");
    EXPECT_EQ(refused(outer, Target::Sqlite), db::kTranslateError);
    EXPECT_EQ(refused(outer, Target::Postgres), db::kTranslateError);
    EXPECT_EQ(ok(outer, Target::OdbcOracle), outer);
    // The desktop engine runs a statement that ends inside a comment: the limit would be lost in it.
    EXPECT_EQ(refused(QStringLiteral("SELECT TOP 5 コード FROM M担当者 /* 先頭の"), Target::Sqlite),
              db::kTranslateError);
    EXPECT_EQ(refused(QStringLiteral("SELECT TOP 5 コード FROM M担当者 WHERE 氏名 = 'O'Brien'"), Target::Postgres),
              db::kTranslateError);
    EXPECT_EQ(
        refused(QStringLiteral("SELECT * FROM M事業所 RIGHT JOIN M担当者 ON M事業所.コード = M担当者.事業所コード "
                               "WHERE 氏名 = \"O'"),
                Target::Sqlite),
        db::kTranslateError);
}

TEST(Translate, RightJoinChainsAreTurnedRoundForTheDesktopEngine) {
    const QString sql = QStringLiteral(
        "SELECT TOP 1 M担当者.*, M事業所.名称 AS 事業所名 FROM M役職 RIGHT JOIN (M事業所 RIGHT JOIN M担当者 ON "
        "M事業所.コード = M担当者.事業所コード) ON M役職.コード = M担当者.役職コード WHERE M担当者.コード = '00001'");
    EXPECT_EQ(ok(sql, Target::Sqlite),
              QStringLiteral("SELECT M担当者.*, M事業所.名称 AS 事業所名 FROM (M担当者 LEFT JOIN M事業所 ON M事業所.コード "
                             "= M担当者.事業所コード) LEFT JOIN M役職 ON M役職.コード = M担当者.役職コード WHERE "
                             "M担当者.コード = '00001' LIMIT 1"));
    // The server takes the chain as it is written.
    EXPECT_TRUE(ok(sql, Target::Postgres).contains(QStringLiteral("M役職 RIGHT JOIN (M事業所 RIGHT JOIN M担当者")));
}

TEST(Translate, AliasedRightJoinsAndInnerJoinsKeepTheirShape) {
    EXPECT_EQ(ok(QStringLiteral("SELECT * FROM M事業所 AS M異動事業所 RIGHT JOIN T異動 ON M異動事業所.コード = "
                                "T異動.異動事業所コード INNER JOIN M社員 ON M社員.コード = T異動.社員コード"),
                 Target::Sqlite),
              QStringLiteral("SELECT * FROM (T異動 LEFT JOIN M事業所 AS M異動事業所 ON M異動事業所.コード = "
                             "T異動.異動事業所コード) INNER JOIN M社員 ON M社員.コード = T異動.社員コード"));
}
