// The statements of the list windows, verbatim, built piece by piece from
// the windows' state in the three dialects.

#include "search/wnd担当者一覧.h"
#include "search/wnd選択一覧.h"
#include "search/wnd郵便番号一覧.h"

#include <gtest/gtest.h>

namespace {

const QString kColumns = QStringLiteral(
    " M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS セクション名");
const QString kJoinAS = QStringLiteral(
    " FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M担当者 ON M事業所.コード = "
    "M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON Mセクション.コード = M担当者.セクションコード");
const QString kJoinO = QStringLiteral(" FROM Mセクション,M部門,M事業所,M担当者") +
                       QStringLiteral(" WHERE M事業所.コード(+) = M担当者.事業所コード AND M部門.コード(+) = "
                                      "M担当者.部門コード AND Mセクション.コード(+) = M担当者.セクションコード");

QString base(const QString& db) {
    return QStringLiteral("SELECT TOP 1000") + kColumns + (db == QLatin1String("O") ? kJoinO : kJoinAS);
}

// The first clause after the base: " WHERE" in "A" and "S", " AND" in "O".
QString first(const QString& db, const QString& where, const QString& andForm) {
    return db == QLatin1String("O") ? andForm : where;
}

人員一覧状態 filled(short search) {
    人員一覧状態 s;
    s.検索区分 = search;
    s.コード = QStringLiteral("00010");
    s.名称 = QStringLiteral(" 山田 ");
    s.カナ = QStringLiteral(" ﾔﾏ ");
    s.部門コード = QStringLiteral("003");
    s.セクションコード = QStringLiteral("004");
    s.在籍区分 = 0;
    s.在籍区分最大 = 3;
    s.社員区分 = 8;
    s.社員区分最大 = 8;
    return s;
}

class StaffStatements : public ::testing::TestWithParam<const char*> {
protected:
    QString db() const { return QString::fromLatin1(GetParam()); }
    QString make(const 人員一覧状態& s, const QString& condition = QString(), const QString& office = QStringLiteral("000")) {
        return 担当者一覧SQLmake(s, db(), condition, office, QStringLiteral("001"));
    }
};

TEST_P(StaffStatements, CodeSearchHasTheCodeClauseAndTheCodeOrder) {
    EXPECT_EQ(make(filled(1)), base(db()) +
                                   first(db(), QStringLiteral(" WHERE M担当者.コード >= '"),
                                         QStringLiteral(" AND M担当者.コード >= '")) +
                                   QStringLiteral("00010'") + QStringLiteral(" AND M担当者.在籍区分 = '") +
                                   QStringLiteral("0'") + QStringLiteral(" ORDER BY M担当者.コード"));
}

TEST_P(StaffStatements, NameSearchTrimsTheNameAndOrdersByName) {
    EXPECT_EQ(make(filled(3)), base(db()) +
                                   first(db(), QStringLiteral(" WHERE M担当者.氏名 LIKE '%"),
                                         QStringLiteral(" AND M担当者.氏名 LIKE '%")) +
                                   QStringLiteral("山田%'") + QStringLiteral(" AND M担当者.在籍区分 = '0'") +
                                   QStringLiteral(" ORDER BY M担当者.氏名"));
}

TEST_P(StaffStatements, KanaSearchKeepsTheLeadingBlankAndOrdersByKana) {
    EXPECT_EQ(make(filled(2)), base(db()) +
                                   first(db(), QStringLiteral(" WHERE M担当者.カナ LIKE '%"),
                                         QStringLiteral(" AND M担当者.カナ LIKE '%")) +
                                   QStringLiteral(" ﾔﾏ%'") + QStringLiteral(" AND M担当者.在籍区分 = '0'") +
                                   QStringLiteral(" ORDER BY M担当者.カナ"));
}

TEST_P(StaffStatements, DepartmentAndSectionSearchesOrderByCode) {
    EXPECT_EQ(make(filled(4)), base(db()) +
                                   first(db(), QStringLiteral(" WHERE M担当者.部門コード = '"),
                                         QStringLiteral(" AND M担当者.部門コード = '")) +
                                   QStringLiteral("003'") + QStringLiteral(" AND M担当者.在籍区分 = '0'") +
                                   QStringLiteral(" ORDER BY M担当者.コード"));
    EXPECT_EQ(make(filled(5)), base(db()) +
                                   first(db(), QStringLiteral(" WHERE M担当者.セクションコード = '"),
                                         QStringLiteral(" AND M担当者.セクションコード = '")) +
                                   QStringLiteral("004'") + QStringLiteral(" AND M担当者.在籍区分 = '0'") +
                                   QStringLiteral(" ORDER BY M担当者.コード"));
}

TEST_P(StaffStatements, CompositeSearchJoinsEveryClauseInItsOrder) {
    人員一覧状態 s = filled(0);
    s.社員区分 = 2;
    EXPECT_EQ(make(s), base(db()) +
                           first(db(), QStringLiteral(" WHERE M担当者.コード >= '"),
                                 QStringLiteral(" AND M担当者.コード >= '")) +
                           QStringLiteral("00010'") + QStringLiteral(" AND M担当者.氏名 LIKE '%") +
                           QStringLiteral("山田%'") + QStringLiteral(" AND M担当者.カナ LIKE '%") +
                           QStringLiteral(" ﾔﾏ%'") + QStringLiteral(" AND M担当者.部門コード = '") +
                           QStringLiteral("003'") + QStringLiteral(" AND M担当者.セクションコード = '") +
                           QStringLiteral("004'") + QStringLiteral(" AND M担当者.在籍区分 = '0'") +
                           QStringLiteral(" AND M担当者.社員区分 = '2'") + QStringLiteral(" ORDER BY M担当者.コード"));
}

TEST_P(StaffStatements, NegativeSearchNegatesTheClausesButNotConditionOrOffice) {
    人員一覧状態 s = filled(-1);
    s.社員区分 = 2;
    EXPECT_EQ(make(s, QStringLiteral("M担当者.氏名 <> ''"), QStringLiteral("001")),
              base(db()) + first(db(), QStringLiteral(" WHERE ("), QStringLiteral(" AND (")) +
                  QStringLiteral("M担当者.氏名 <> ''") + QStringLiteral(")") +
                  QStringLiteral(" AND (M担当者.事業所コード = '") + QStringLiteral("001") +
                  QStringLiteral("' OR M担当者.事業所コード = '") + QStringLiteral("000") + QStringLiteral("')") +
                  QStringLiteral(" AND M担当者.コード < '") + QStringLiteral("00010'") +
                  QStringLiteral(" AND M担当者.氏名 NOT LIKE '%") + QStringLiteral("山田%'") +
                  QStringLiteral(" AND M担当者.カナ NOT LIKE '%") + QStringLiteral(" ﾔﾏ%'") +
                  QStringLiteral(" AND M担当者.部門コード <> '") + QStringLiteral("003'") +
                  QStringLiteral(" AND M担当者.セクションコード <> '") + QStringLiteral("004'") +
                  QStringLiteral(" AND M担当者.在籍区分 <> '0'") + QStringLiteral(" AND M担当者.社員区分 <> '2'") +
                  QStringLiteral(" ORDER BY M担当者.コード"));
}

TEST_P(StaffStatements, NothingEnteredAndAllClassesGiveTheBaseAndTheOrder) {
    人員一覧状態 s;
    s.在籍区分 = s.在籍区分最大 = 3;
    s.社員区分 = s.社員区分最大 = 8;
    EXPECT_EQ(make(s), base(db()) + QStringLiteral(" ORDER BY M担当者.コード"));
    s.検索区分 = -1;
    EXPECT_EQ(make(s), base(db()) + QStringLiteral(" ORDER BY M担当者.コード"));
}

TEST_P(StaffStatements, OfficeRestrictionKeepsHeadOfficeRows) {
    人員一覧状態 s;
    s.在籍区分 = s.在籍区分最大 = 3;
    s.社員区分 = s.社員区分最大 = 8;
    EXPECT_EQ(make(s, QString(), QStringLiteral("002")),
              base(db()) +
                  first(db(), QStringLiteral(" WHERE (M担当者.事業所コード = '"),
                        QStringLiteral(" AND (M担当者.事業所コード = '")) +
                  QStringLiteral("001' OR M担当者.事業所コード = '000')") + QStringLiteral(" ORDER BY M担当者.コード"));
}

TEST_P(StaffStatements, ANameWithAQuoteIsDoubled) {
    人員一覧状態 s;
    s.検索区分 = 3;
    s.名称 = QStringLiteral("O'Neil");
    s.在籍区分 = s.在籍区分最大 = 3;
    s.社員区分 = s.社員区分最大 = 8;
    EXPECT_TRUE(make(s).contains(QStringLiteral("M担当者.氏名 LIKE '%O''Neil%'")));
}

INSTANTIATE_TEST_SUITE_P(Dialects, StaffStatements, ::testing::Values("A", "S", "O"));

TEST(StaffStatementsOther, AnotherDialectLetterBuildsNothing) {
    EXPECT_EQ(担当者一覧SQLmake(filled(0), QStringLiteral("X"), QString(), QStringLiteral("000"), QString()), QString());
}

TEST(PostcodeStatements, TheRangeOfAHead) {
    郵便番号一覧状態 s;
    s.検索区分 = 1;
    s.郵便番号 = QStringLiteral("100");
    EXPECT_EQ(郵便番号一覧SQLmake(s), QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号") +
                                         QStringLiteral(" WHERE 郵便番号 >= '") + QStringLiteral("100") +
                                         QStringLiteral("' AND 郵便番号 < '") + QStringLiteral("101") +
                                         QStringLiteral("'") + QStringLiteral(" ORDER BY M郵便番号.郵便番号"));
    s.郵便番号 = QStringLiteral("060");
    EXPECT_TRUE(郵便番号一覧SQLmake(s).contains(QStringLiteral(" WHERE 郵便番号 >= '060' AND 郵便番号 < '061'")));
    // The mask only pads up to three digits.
    s.郵便番号 = QStringLiteral("0600");
    EXPECT_TRUE(郵便番号一覧SQLmake(s).contains(QStringLiteral(" WHERE 郵便番号 >= '0600' AND 郵便番号 < '601'")));
}

TEST(PostcodeStatements, AddressSearchesAndTheCompositeWithoutOrder) {
    郵便番号一覧状態 s;
    s.都道府県市町村 = QStringLiteral("千代田");
    s.町域名 = QStringLiteral("丸'の内");
    s.検索区分 = 2;
    EXPECT_EQ(郵便番号一覧SQLmake(s), QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号 WHERE 住所A LIKE "
                                                     "'%千代田%' ORDER BY M郵便番号.郵便番号"));
    s.検索区分 = 3;
    EXPECT_EQ(郵便番号一覧SQLmake(s), QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号 WHERE 住所B LIKE "
                                                     "'%丸''の内%' ORDER BY M郵便番号.郵便番号"));
    s.検索区分 = 0;
    EXPECT_EQ(郵便番号一覧SQLmake(s), QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号") +
                                         QStringLiteral(" WHERE 住所A LIKE '%") + QStringLiteral("千代田%'") +
                                         QStringLiteral(" AND 住所B LIKE '%") + QStringLiteral("丸''の内%'"));
    s.郵便番号 = QStringLiteral("100");
    EXPECT_EQ(郵便番号一覧SQLmake(s), QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号 WHERE 郵便番号 >= "
                                                     "'100' AND 郵便番号 < '101' AND 住所A LIKE '%千代田%' AND 住所B "
                                                     "LIKE '%丸''の内%'"));
    // With all conditions empty the whole master.
    EXPECT_EQ(郵便番号一覧SQLmake(郵便番号一覧状態()), QStringLiteral("SELECT 郵便番号,住所A,住所B FROM M郵便番号"));
}

TEST(PickerStatements, OfficesNeverOfferTheHeadOffice) {
    EXPECT_EQ(事業所一覧SQLmake(QString()), QStringLiteral("SELECT") + QStringLiteral(" M事業所.コード, M事業所.名称") +
                                                QStringLiteral(" FROM M事業所") +
                                                QStringLiteral(" WHERE M事業所.コード <>'000'") +
                                                QStringLiteral(" ORDER BY M事業所.コード"));
    EXPECT_EQ(事業所一覧SQLmake(QStringLiteral("M事業所.名称 LIKE '%支店%'")),
              QStringLiteral("SELECT M事業所.コード, M事業所.名称 FROM M事業所 WHERE M事業所.コード <>'000' AND "
                             "(M事業所.名称 LIKE '%支店%') ORDER BY M事業所.コード"));
}

TEST(PickerStatements, DepartmentsAndSectionsByTheirClass) {
    EXPECT_EQ(部門一覧SQLmake(1, 4), QStringLiteral("SELECT コード,名称 FROM M部門") +
                                         QStringLiteral(" WHERE M部門.稼動状況区分 = '") + QStringLiteral("1") +
                                         QStringLiteral("'") + QStringLiteral(" ORDER BY M部門.コード"));
    EXPECT_EQ(部門一覧SQLmake(4, 4), QStringLiteral("SELECT コード,名称 FROM M部門 ORDER BY M部門.コード"));
    EXPECT_EQ(セクション一覧SQLmake(0, 4),
              QStringLiteral("SELECT コード,名称 FROM Mセクション WHERE Mセクション.稼動状況区分 = '0' ORDER BY "
                             "Mセクション.コード"));
    EXPECT_EQ(セクション一覧SQLmake(4, 4), QStringLiteral("SELECT コード,名称 FROM Mセクション ORDER BY Mセクション.コード"));
    // An unreadable class table: index 1 above the maximum 0 still restricts.
    EXPECT_EQ(部門一覧SQLmake(1, 0),
              QStringLiteral("SELECT コード,名称 FROM M部門 WHERE M部門.稼動状況区分 = '1' ORDER BY M部門.コード"));
}

TEST(PickerStatements, PositionsWithAndWithoutACondition) {
    EXPECT_EQ(役職一覧SQLmake(QStringLiteral(" ")), QStringLiteral("SELECT コード,名称 FROM M役職 ORDER BY M役職.コード"));
    EXPECT_EQ(役職一覧SQLmake(QStringLiteral("コード < '05'")),
              QStringLiteral("SELECT コード,名称 FROM M役職 WHERE ") + QStringLiteral("コード < '05'") +
                  QStringLiteral(" ORDER BY M役職.コード"));
}

} // namespace
