// The statements of the program, run through the data access layer on the
// desktop database file and on the database server: the same rows on both.

#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/server_result.h"
#include "schema/schema.h"
#include "support/test_databases.h"

#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

using testdb::Engine;

namespace {

const char* const kStaffColumns[] = {
    "コード", "姓", "名", "氏名", "カナ姓", "カナ名", "カナ", "性別区分", "生年月日", "郵便番号", "住所A", "住所B",
    "住所C", "電話", "携帯電話", "職責", "EMAIL", "担当者メモ", "事業所コード", "部門コード", "セクションコード",
    "役職コード", "ログインID", "在籍区分", "社員区分", "入社日付", "退社日付", "担当者印file", "電話番号",
    "携帯電話番号", "社員コード", "暗証番号", "処理分類0操作許可", "処理分類1操作許可", "処理分類2操作許可",
    "処理分類3操作許可", "処理分類4操作許可", "処理分類5操作許可", "処理分類6操作許可", "処理分類7操作許可",
    "処理分類8操作許可", "処理分類9操作許可", "操作許可", "入力許可", "修正許可", "削除許可", "印刷許可",
    "プレビュ許可", "テキスト出力許可", "イメージ出力許可", "ユーザID", "登録日付", "更新日付"};

const QString kStaffListBaseAS = QStringLiteral(
    "SELECT TOP 1000 M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS "
    "セクション名 FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M担当者 ON M事業所.コード = "
    "M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON Mセクション.コード = M担当者.セクションコード");

const QString kStaffListBaseO = QStringLiteral(
    "SELECT TOP 1000 M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS "
    "セクション名 FROM Mセクション,M部門,M事業所,M担当者 WHERE M事業所.コード(+) = M担当者.事業所コード AND "
    "M部門.コード(+) = M担当者.部門コード AND Mセクション.コード(+) = M担当者.セクションコード");

class DbEngines : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        ASSERT_TRUE(dir_.isValid());
        database_ = std::make_unique<testdb::ScratchDatabase>(GetParam(), dir_.path());
        ASSERT_TRUE(database_->ok()) << database_->error().toStdString();
        ASSERT_TRUE(cn_.open(database_->connectionText())) << cn_.lastError().description.toStdString();
        const auto flavor = GetParam() == Engine::Sqlite ? schema::Flavor::Sqlite : schema::Flavor::Postgres;
        for (const QString& statement : schema::createStatements(schema::Database::Main, flavor))
            ASSERT_TRUE(cn_.execute(statement)) << statement.toStdString() << ": "
                                                << cn_.lastError().description.toStdString();
        seed();
    }

    void run(const QString& sql) {
        ASSERT_TRUE(cn_.execute(sql)) << sql.toStdString() << ": " << cn_.lastError().description.toStdString();
    }

    void seed() {
        run(QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ('000','本社')"));
        run(QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ('001','大阪支店')"));
        run(QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ('002','名古屋支店')"));
        run(QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('010','営業部','1')"));
        run(QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('020','総務部','1')"));
        run(QStringLiteral("INSERT INTO Mセクション (コード,名称,稼動状況区分) VALUES ('101','第一課','1')"));
        run(QStringLiteral("INSERT INTO Mセクション (コード,名称,稼動状況区分) VALUES ('102','第二課','1')"));
        run(QStringLiteral("INSERT INTO M役職 (コード,名称) VALUES ('01','部長')"));
        run(QStringLiteral("INSERT INTO M役職 (コード,名称) VALUES ('02','課長')"));
        const char* const staff[][8] = {
            {"00001", "山田 太郎", "001", "010", "101", "01", "0", "yamada@example.jp"},
            {"00002", "佐藤 花子", "000", "020", "102", "02", "0", "sato@example.jp"},
            {"00003", "山本 一郎", "001", "099", "101", "02", "0", "yamamoto@example.jp"},
            {"00004", "鈴木 次郎", "002", "010", "101", "01", "1", "suzuki@example.jp"},
            {"00005", "山口 三郎", "001", "010", "999", "01", "0", "YAMAGUCHI@EXAMPLE.JP"},
            {"00006", "中山 由紀", "000", "010", "101", "02", "0", "nakayama@example.jp"},
            {"00007", "山下 四郎", "002", "020", "102", "02", "0", "yamashita@example.jp"},
        };
        for (const auto& s : staff) {
            run(QStringLiteral("INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,役職コード,"
                               "在籍区分,EMAIL) VALUES ('%1','%2','%3','%4','%5','%6','%7','%8')")
                    .arg(QString::fromUtf8(s[0]), QString::fromUtf8(s[1]), QString::fromUtf8(s[2]),
                         QString::fromUtf8(s[3]), QString::fromUtf8(s[4]), QString::fromUtf8(s[5]),
                         QString::fromUtf8(s[6]), QString::fromUtf8(s[7])));
        }
    }

    // The rows of a statement, each as its columns joined by '|', a null as "~".
    QStringList rows(const QString& sql, const QStringList& columns) {
        db::Recordset rs;
        EXPECT_TRUE(rs.open(sql, cn_)) << sql.toStdString() << ": " << rs.lastError().description.toStdString();
        QStringList out;
        for (; !rs.eof(); rs.moveNext()) {
            QStringList row;
            for (const QString& c : columns) {
                const db::Field f = rs.field(c);
                EXPECT_TRUE(f.exists) << c.toStdString();
                row.append(f.isNull() ? QStringLiteral("~") : f.text());
            }
            out.append(row.join(QLatin1Char('|')));
        }
        rs.close();
        return out;
    }

    // Opens a connection of its own with the staff codes on it in rs, standing
    // on the first, and closes the connection under it.
    void closeTheConnectionUnder(db::Recordset& rs) {
        db::Connection cn;
        ASSERT_TRUE(cn.open(database_->connectionText()));
        ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード FROM M担当者 ORDER BY コード"), cn));
        ASSERT_EQ(rs.field(QStringLiteral("コード")).text(), QStringLiteral("00001"));
    }

    long failure(const QString& sql) {
        db::Recordset rs;
        EXPECT_FALSE(rs.open(sql, cn_)) << sql.toStdString();
        EXPECT_FALSE(rs.lastError().description.isEmpty());
        return rs.lastError().number;
    }

    QTemporaryDir dir_;
    std::unique_ptr<testdb::ScratchDatabase> database_;
    db::Connection cn_;
};

TEST_P(DbEngines, StaffReadWithRightJoinChainAndTop) {
    const QString sql = QStringLiteral(
        "SELECT TOP 1 M担当者.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名, "
        "M役職.名称 AS 役職名 FROM M役職 RIGHT JOIN (Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN "
        "M担当者 ON M事業所.コード = M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON Mセクション.コード "
        "= M担当者.セクションコード) ON M役職.コード = M担当者.役職コード WHERE M担当者.コード = '");
    const QStringList columns{QStringLiteral("コード"),       QStringLiteral("氏名"),     QStringLiteral("事業所名"),
                              QStringLiteral("部門コード"),   QStringLiteral("部門名"),   QStringLiteral("セクション名"),
                              QStringLiteral("役職名")};
    EXPECT_EQ(rows(sql + QStringLiteral("00001'"), columns),
              QStringList{QStringLiteral("00001|山田 太郎|大阪支店|010|営業部|第一課|部長")});
    // A department whose master row has gone gives a null name with the code kept.
    EXPECT_EQ(rows(sql + QStringLiteral("00003'"), columns),
              QStringList{QStringLiteral("00003|山本 一郎|大阪支店|099|~|第一課|課長")});
    EXPECT_TRUE(rows(sql + QStringLiteral("09999'"), columns).isEmpty());
}

TEST_P(DbEngines, StaffListInBothFormsGivesTheSameRows) {
    const QStringList columns{QStringLiteral("コード"), QStringLiteral("氏名"), QStringLiteral("事業所名"),
                              QStringLiteral("部門名"), QStringLiteral("セクション名")};
    const QString clauses = QStringLiteral("(M担当者.事業所コード = '001' OR M担当者.事業所コード = '000')") +
                            QStringLiteral(" AND M担当者.氏名 LIKE '%山%'") +
                            QStringLiteral(" AND M担当者.在籍区分 = '0'") + QStringLiteral(" ORDER BY M担当者.コード");
    const QStringList expected{QStringLiteral("00001|山田 太郎|大阪支店|営業部|第一課"),
                               QStringLiteral("00003|山本 一郎|大阪支店|~|第一課"),
                               QStringLiteral("00005|山口 三郎|大阪支店|営業部|~"),
                               QStringLiteral("00006|中山 由紀|本社|営業部|第一課")};
    EXPECT_EQ(rows(kStaffListBaseAS + QStringLiteral(" WHERE ") + clauses, columns), expected);
    EXPECT_EQ(rows(kStaffListBaseO + QStringLiteral(" AND ") + clauses, columns), expected);
}

TEST_P(DbEngines, StaffListWithoutConditionsAndWithACodeStart) {
    const QStringList columns{QStringLiteral("コード"), QStringLiteral("部門名")};
    const QString order = QStringLiteral(" ORDER BY M担当者.コード");
    const QStringList all = rows(kStaffListBaseAS + order, columns);
    EXPECT_EQ(all.size(), 7);
    EXPECT_EQ(rows(kStaffListBaseO + order, columns), all);
    const QStringList fromCode{QStringLiteral("00006|営業部"), QStringLiteral("00007|総務部")};
    EXPECT_EQ(rows(kStaffListBaseAS + QStringLiteral(" WHERE M担当者.コード >= '00006'") + order, columns), fromCode);
    EXPECT_EQ(rows(kStaffListBaseO + QStringLiteral(" AND M担当者.コード >= '00006'") + order, columns), fromCode);
}

TEST_P(DbEngines, LikeMatchesWithoutRegardToCase) {
    const QStringList columns{QStringLiteral("コード")};
    EXPECT_EQ(rows(QStringLiteral("SELECT コード FROM M担当者 WHERE EMAIL LIKE '%YAMA%' ORDER BY コード"), columns),
              (QStringList{QStringLiteral("00001"), QStringLiteral("00003"), QStringLiteral("00005"),
                           QStringLiteral("00006"), QStringLiteral("00007")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT コード FROM M担当者 WHERE EMAIL NOT LIKE '%yama%' ORDER BY コード"), columns),
              (QStringList{QStringLiteral("00002"), QStringLiteral("00004")}));
}

TEST_P(DbEngines, NavigationStatementsOfEveryDialectForm) {
    const QStringList columns{QStringLiteral("コード")};
    // Next, with the trailing blank of the desktop form and without it.
    for (const QString& from : {QStringLiteral(" FROM M担当者 "), QStringLiteral(" FROM M担当者")}) {
        const QString head = QStringLiteral("SELECT TOP 1 M担当者.コード ") + from;
        EXPECT_EQ(rows(head + QStringLiteral(" WHERE M担当者.コード > '00001'") +
                           QStringLiteral(" AND M担当者.事業所コード = '001'") + QStringLiteral(" ORDER BY M担当者.コード"),
                       columns),
                  QStringList{QStringLiteral("00003")});
        EXPECT_EQ(rows(head + QStringLiteral(" WHERE M担当者.コード > '00005'") +
                           QStringLiteral(" AND M担当者.事業所コード = '001'") + QStringLiteral(" ORDER BY M担当者.コード"),
                       columns),
                  QStringList{});
    }
    EXPECT_EQ(rows(QStringLiteral("SELECT TOP 1 M担当者.コード") + QStringLiteral(" FROM M担当者") +
                       QStringLiteral(" WHERE M担当者.コード < '00005'") + QStringLiteral(" ORDER BY M担当者.コード DESC"),
                   columns),
              QStringList{QStringLiteral("00004")});
    EXPECT_EQ(rows(QStringLiteral("SELECT TOP 1 コード") + QStringLiteral(" FROM M担当者") +
                       QStringLiteral(" WHERE コード <= '99999'") + QStringLiteral(" ORDER BY コード DESC"),
                   columns),
              QStringList{QStringLiteral("00007")});
}

TEST_P(DbEngines, BracketedInsertOfTheMaintenanceLog) {
    QString names = QStringLiteral("([保守事業所コード],[保守番号基準日付],[保守履歴No],[赤黒区分],[コード]");
    QString values = QStringLiteral("('001','99999999','00000001','1','00001'");
    for (size_t i = 1; i < std::size(kStaffColumns); ++i) {
        names += QLatin1Char(',') + QString::fromUtf8(kStaffColumns[i]);
        values += QStringLiteral(",'") + (i == 1 ? QStringLiteral("O''Brien") : QString::number(i)) + QLatin1Char('\'');
    }
    const QString insert = QStringLiteral("INSERT INTO [L担当者] ") + names + QStringLiteral(")") +
                           QStringLiteral(" VALUES ") + values + QStringLiteral(")");
    run(insert);
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM L担当者"),
                   {QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分"), QStringLiteral("姓"),
                    QStringLiteral("更新日付")}),
              QStringList{QStringLiteral("00000001|1|O'Brien|52")});
    // The key of the log refuses the same number twice.
    EXPECT_FALSE(cn_.execute(insert));
    EXPECT_FALSE(cn_.lastError().description.isEmpty());
}

TEST_P(DbEngines, BracketedInsertOfTheAccessRecord) {
    const QString insert = QStringLiteral(
        "INSERT INTO [T閲覧] ([事業所コード],[番号基準日付],[閲覧No],[閲覧日付],[閲覧時刻],[担当者コード],[担当者名],"
        "[閲覧情報],[伝票事業所コード],[伝票番号基準日付],[伝票No],[キー項目],[閲覧区分],[閲覧メモ],[承認日付],"
        "[承認者コード],[承認区分],[ユーザID],[登録日付],[更新日付]) VALUES ('000','99999999','00000001','20261121',"
        "'09:30:00','00001','山田 太郎','担当者登録','','','','00003','0','','','','0','tanaka00001PC-01','20261121 "
        "093000','')");
    run(insert);
    EXPECT_EQ(rows(QStringLiteral("SELECT 閲覧No FROM T閲覧 WHERE 事業所コード = '000' AND 番号基準日付 = "
                                  "'99999999' AND 閲覧No = '00000001'"),
                   {QStringLiteral("閲覧No")}),
              QStringList{QStringLiteral("00000001")});
    EXPECT_FALSE(cn_.execute(insert));
}

TEST_P(DbEngines, CountOfOfficesAndFieldsByNameWithoutCase) {
    EXPECT_EQ(rows(QStringLiteral("SELECT COUNT(*) AS 事業所件数 FROM M事業所 WHERE コード <> '000'"),
                   {QStringLiteral("事業所件数")}),
              QStringList{QStringLiteral("2")});
    EXPECT_EQ(rows(QStringLiteral("SELECT EMAIL FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("email")}),
              QStringList{QStringLiteral("yamada@example.jp")});
    EXPECT_EQ(rows(QStringLiteral("SELECT email FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("EMAIL")}),
              QStringList{QStringLiteral("yamada@example.jp")});
}

// The server folds unquoted names to lower case; the program asks in its own
// case on every row, and a recordset opened anew finds its own columns.
TEST_P(DbEngines, NamesAskedInAnotherCaseFindTheirColumnsOnEveryRowAndAfterAReopen) {
    EXPECT_EQ(rows(QStringLiteral("SELECT コード, EMAIL FROM M担当者 WHERE コード < '00004' ORDER BY コード"),
                   {QStringLiteral("Email"), QStringLiteral("コード"), QStringLiteral("email")}),
              (QStringList{QStringLiteral("yamada@example.jp|00001|yamada@example.jp"),
                           QStringLiteral("sato@example.jp|00002|sato@example.jp"),
                           QStringLiteral("yamamoto@example.jp|00003|yamamoto@example.jp")}));
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード, EMAIL FROM M担当者 WHERE コード = '00002'"), cn_));
    EXPECT_EQ(rs.field(QStringLiteral("Email")).text(), QStringLiteral("sato@example.jp"));
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT EMAIL, 氏名 AS Email2, コード FROM M担当者 WHERE コード = '00005'"), cn_));
    EXPECT_EQ(rs.field(QStringLiteral("Email")).text(), QStringLiteral("YAMAGUCHI@EXAMPLE.JP"));
    EXPECT_EQ(rs.field(QStringLiteral("EMAIL2")).text(), QStringLiteral("山口 三郎"));
    EXPECT_FALSE(rs.field(QStringLiteral("Email3")).exists);
    rs.close();
}

TEST_P(DbEngines, EmptyResultStandsOnNoRow) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT TOP 1 * FROM M他業務連携 WHERE コード = '003'"), cn_));
    EXPECT_TRUE(rs.bof());
    EXPECT_TRUE(rs.eof());
    EXPECT_TRUE(rs.field(QStringLiteral("業務名")).isNull());
    rs.close();
}

TEST_P(DbEngines, WhereNamingATableOutsideFromFails) {
    failure(QStringLiteral("SELECT B履歴番号情報.* FROM B履歴番号情報 WHERE B事業所別履歴番号情報.基本ID = '210'"));
    failure(QStringLiteral("SELECT A番号情報.* FROM A番号情報 WHERE A事業所別番号情報.番号ID = '01110'"));
}

TEST_P(DbEngines, DoubleWhereOfTheEmployeeListFails) {
    failure(QStringLiteral(
        "SELECT TOP 1000 M社員.コード,M社員.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS "
        "セクション名 FROM Mセクション,M部門,M事業所,M社員 WHERE M事業所.コード(+) = M社員.事業所コード AND "
        "M部門.コード(+) = M社員.部門コード AND Mセクション.コード(+) = M社員.セクションコード WHERE M社員.コード >= "
        "'00010' ORDER BY M社員.コード"));
}

TEST_P(DbEngines, SecondStatementRunsNothing) {
    EXPECT_FALSE(cn_.execute(QStringLiteral("DELETE FROM M担当者 WHERE コード = '00001'; DROP TABLE M担当者")));
    EXPECT_EQ(cn_.lastError().number, db::kMultipleStatements);
    // A value pasted without doubling its quote cannot add a statement.
    const QString pasted = QStringLiteral("x'); DELETE FROM M担当者; --");
    EXPECT_FALSE(cn_.execute(QStringLiteral("INSERT INTO M電話番号 (電話番号,名称) VALUES ('0312345678','") + pasted +
                             QStringLiteral("')")));
    EXPECT_EQ(rows(QStringLiteral("SELECT COUNT(*) AS 件数 FROM M担当者"), {QStringLiteral("件数")}),
              QStringList{QStringLiteral("7")});
    EXPECT_EQ(rows(QStringLiteral("SELECT COUNT(*) AS 件数 FROM M電話番号"), {QStringLiteral("件数")}),
              QStringList{QStringLiteral("0")});
}

TEST_P(DbEngines, EngineErrorsComeBackAsNumberAndDescription) {
    EXPECT_FALSE(cn_.execute(QStringLiteral("UPDATE M担当者 SET 姓 = 'O'Brien' WHERE コード = '00001'")));
    EXPECT_NE(cn_.lastError().number, db::kNoError);
    EXPECT_FALSE(cn_.lastError().description.isEmpty());
    EXPECT_NE(failure(QStringLiteral("SELECT * FROM 無い表")), db::kNoError);
}

TEST_P(DbEngines, ValuesComeBackAsTheProgramWroteThem) {
    db::Recordset rs;
    ASSERT_TRUE(
        rs.open(QStringLiteral("SELECT 42 AS 整数, 1.5 AS 実数, '山田 太郎' AS 文字, NULL AS 空, '' AS 空文字"), cn_))
        << rs.lastError().description.toStdString();
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.field(QStringLiteral("整数")).value.toLongLong(), 42);
    EXPECT_EQ(rs.field(QStringLiteral("整数")).text(), QStringLiteral("42"));
    EXPECT_DOUBLE_EQ(rs.field(QStringLiteral("実数")).value.toDouble(), 1.5);
    EXPECT_EQ(rs.field(QStringLiteral("文字")).text(), QStringLiteral("山田 太郎"));
    EXPECT_TRUE(rs.field(QStringLiteral("空")).exists);
    EXPECT_TRUE(rs.field(QStringLiteral("空")).isNull());
    EXPECT_FALSE(rs.field(QStringLiteral("空文字")).isNull());
    EXPECT_EQ(rs.field(QStringLiteral("空文字")).text(), QString());
    EXPECT_FALSE(rs.field(QStringLiteral("無い列")).exists);
    rs.moveNext();
    EXPECT_TRUE(rs.eof());
    EXPECT_TRUE(rs.field(QStringLiteral("文字")).isNull());
}

TEST_P(DbEngines, AStatementWithoutRowsThroughARecordsetRunsOnce) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("INSERT INTO M役職 (コード,名称) VALUES ('03','係長')"), cn_))
        << rs.lastError().description.toStdString();
    EXPECT_TRUE(rs.bof());
    EXPECT_TRUE(rs.eof());
    rs.moveNext();
    rs.moveNext();
    rs.close();
    EXPECT_EQ(rows(QStringLiteral("SELECT コード,名称 FROM M役職 ORDER BY コード"),
                   {QStringLiteral("コード"), QStringLiteral("名称")}),
              (QStringList{QStringLiteral("01|部長"), QStringLiteral("02|課長"), QStringLiteral("03|係長")}));
}

TEST_P(DbEngines, AStatementRunWhileARecordsetIsOpenLeavesItsRowsToIt) {
    // A list looks up each row's office on the same connection while it reads its rows.
    db::Recordset staff;
    ASSERT_TRUE(staff.open(QStringLiteral("SELECT コード,事業所コード FROM M担当者 ORDER BY コード"), cn_))
        << staff.lastError().description.toStdString();
    QStringList read;
    for (; !staff.eof(); staff.moveNext()) {
        const QStringList office = rows(QStringLiteral("SELECT 名称 FROM M事業所 WHERE コード = '%1'")
                                            .arg(staff.field(QStringLiteral("事業所コード")).text()),
                                        {QStringLiteral("名称")});
        run(QStringLiteral("UPDATE M役職 SET 名称 = '部長' WHERE コード = '01'"));
        read.append(staff.field(QStringLiteral("コード")).text() + QLatin1Char('|') + office.join(QLatin1Char(',')));
    }
    EXPECT_FALSE(staff.lastError().failed()) << staff.lastError().description.toStdString();
    EXPECT_EQ(read, (QStringList{QStringLiteral("00001|大阪支店"), QStringLiteral("00002|本社"),
                                 QStringLiteral("00003|大阪支店"), QStringLiteral("00004|名古屋支店"),
                                 QStringLiteral("00005|大阪支店"), QStringLiteral("00006|本社"),
                                 QStringLiteral("00007|名古屋支店")}));
}

TEST_P(DbEngines, ClosingTheConnectionUnderAnOpenRecordsetEndsItsRows) {
    db::Recordset rs;
    ASSERT_NO_FATAL_FAILURE(closeTheConnectionUnder(rs));
    // Nothing of the closed connection is read any more: the recordset stands behind its last row.
    rs.moveNext();
    EXPECT_TRUE(rs.eof());
    EXPECT_TRUE(rs.field(QStringLiteral("コード")).isNull());
    rs.close();
}

INSTANTIATE_TEST_SUITE_P(Engines, DbEngines, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

// The desktop file's rows, read through the engine itself.
class DesktopReads : public DbEngines {
protected:
    // What a second connection that waits for no lock meets when it writes: nothing, or the engine's words.
    QString anotherWriterMeets() {
        db::Connection other;
        other.commandTimeout = 0;
        if (!other.open(database_->connectionText()))
            return other.lastError().description;
        if (!other.execute(QStringLiteral("DELETE FROM M役職 WHERE コード = '02'")))
            return other.lastError().description;
        return QString();
    }
};

TEST_P(DesktopReads, TheDriverAndTheLayerShareOneEngine) {
    // Debian's driver runs on the system's engine library, as this layer does.
    EXPECT_NE(cn_.desktopHandle(), nullptr);
}

TEST_P(DesktopReads, BytesComeBackAsBytes) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT X'00FF41' AS 画像"), cn_)) << rs.lastError().description.toStdString();
    EXPECT_EQ(rs.field(QStringLiteral("画像")).value.toByteArray(), QByteArray("\x00\xff\x41", 3));
}

TEST_P(DesktopReads, AFailureBetweenRowsEndsTheRowsWithTheEnginesWords) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード, abs(CASE WHEN コード = '00003' THEN -9223372036854775807 - 1 "
                                       "ELSE 1 END) AS 値 FROM M担当者 ORDER BY コード"),
                        cn_))
        << rs.lastError().description.toStdString();
    QStringList codes;
    for (; !rs.eof(); rs.moveNext())
        codes.append(rs.field(QStringLiteral("コード")).text());
    EXPECT_EQ(codes, (QStringList{QStringLiteral("00001"), QStringLiteral("00002")}));
    EXPECT_EQ(rs.lastError().number, 1);
    EXPECT_EQ(rs.lastError().description, QStringLiteral("integer overflow"));
}

TEST_P(DesktopReads, ARecordsetReadToItsEndLeavesTheFileToOthers) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード FROM M担当者"), cn_));
    while (!rs.eof())
        rs.moveNext();
    EXPECT_EQ(anotherWriterMeets(), QString());
}

TEST_P(DesktopReads, ClosingTheConnectionUnderAnOpenRecordsetLetsGoOfTheFile) {
    db::Recordset rs;
    ASSERT_NO_FATAL_FAILURE(closeTheConnectionUnder(rs));
    // The file is no longer held: another connection writes at once.
    EXPECT_EQ(anotherWriterMeets(), QString());
}

INSTANTIATE_TEST_SUITE_P(Desktop, DesktopReads, ::testing::Values(Engine::Sqlite), testdb::engineParamName);

// The server's rows, read from the client library's result under the driver.
class ServerReads : public DbEngines {};

TEST_P(ServerReads, TheDriverKeepsItsRowsInTheClientLibrarysResult) {
    // Debian's driver runs on the system's client library, as this layer does.
    QSqlQuery query(cn_.database());
    query.setForwardOnly(false);
    ASSERT_TRUE(query.exec(QStringLiteral("SELECT コード, 42 AS 数 FROM M担当者")));
    const db::ServerResult result(query);
    ASSERT_TRUE(result.available());
    EXPECT_EQ(result.columnCount(), 2);
    EXPECT_EQ(result.columnName(0), QStringLiteral("コード"));
    EXPECT_TRUE(result.isText(0));
    EXPECT_FALSE(result.isText(1));
    EXPECT_FALSE(result.isText(2));
}

TEST_P(ServerReads, TextsOfEveryKindComeBackAsTheServerKeepsThem) {
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT CAST('ab' AS CHAR(4)) AS 固定, CAST('山田' AS VARCHAR(10)) AS 可変, "
                                       "CAST(NULL AS VARCHAR(10)) AS 空, CAST('' AS TEXT) AS 空文字, "
                                       "CAST(1.25 AS NUMERIC(5,2)) AS 数"),
                        cn_))
        << rs.lastError().description.toStdString();
    EXPECT_EQ(rs.field(QStringLiteral("固定")).text(), QStringLiteral("ab  "));
    EXPECT_EQ(rs.field(QStringLiteral("可変")).text(), QStringLiteral("山田"));
    EXPECT_TRUE(rs.field(QStringLiteral("空")).isNull());
    EXPECT_FALSE(rs.field(QStringLiteral("空文字")).isNull());
    EXPECT_EQ(rs.field(QStringLiteral("空文字")).text(), QString());
    EXPECT_DOUBLE_EQ(rs.field(QStringLiteral("数")).value.toDouble(), 1.25);
}

INSTANTIATE_TEST_SUITE_P(Server, ServerReads, ::testing::Values(Engine::Postgres), testdb::engineParamName);

TEST(DesktopFile, AFileThatIsNoDatabaseIsRefusedWithAClearDescription) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("usrcnfg.accdb"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Standard Jet DB? no: this is a text file, not a database file, long enough to be read as one.\n");
    file.close();
    db::Connection cn;
    EXPECT_FALSE(cn.open(QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + path +
                         QStringLiteral(";")));
    EXPECT_TRUE(cn.lastError().description.contains(QStringLiteral("SQLite")))
        << cn.lastError().description.toStdString();
    EXPECT_FALSE(cn.isOpen());
}

TEST(DesktopFile, AMissingFileIsNotCreated) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("main.accdb"));
    db::Connection cn;
    EXPECT_FALSE(cn.open(QStringLiteral("Provider=microsoft.jet.oledb.4.0;Data Source=") + path + QStringLiteral(";")));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(cn.lastError().number, db::kOpenFailed);
}

TEST(ConnectionText, UnknownProviderIsRefused) {
    db::Connection cn;
    EXPECT_FALSE(cn.open(QStringLiteral("Provider=SQLOLEDB;Data Source=x;")));
    EXPECT_EQ(cn.lastError().number, db::kBadConnectionText);
    EXPECT_FALSE(cn.execute(QStringLiteral("SELECT 1")));
    EXPECT_EQ(cn.lastError().number, db::kNotOpen);
}

TEST(ConnectionText, PartsAndEngines) {
    const auto t = db::ConnectionText::parse(
        QStringLiteral("Provider=PostgreSQL;User ID=staff;Password=p;Data Source=127.0.0.1:5433;Initial Catalog=main;"));
    EXPECT_EQ(t.engine(), db::Engine::Postgres);
    EXPECT_EQ(t.userId, QStringLiteral("staff"));
    EXPECT_EQ(t.password, QStringLiteral("p"));
    EXPECT_EQ(t.dataSource, QStringLiteral("127.0.0.1:5433"));
    EXPECT_EQ(t.initialCatalog, QStringLiteral("main"));
    EXPECT_EQ(db::ConnectionText::parse(QStringLiteral("Provider=MICROSOFT.ACE.OLEDB.12.0;")).engine(), db::Engine::Sqlite);
    EXPECT_EQ(db::ConnectionText::parse(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;")).engine(), db::Engine::Sqlite);
    EXPECT_EQ(db::ConnectionText::parse(QStringLiteral("Provider=MSDASQL;Data Source=dsn;")).engine(), db::Engine::Odbc);
}

TEST(Server, AnUnreachableServerFailsWithADescription) {
    db::Connection cn;
    cn.connectionTimeout = 2;
    EXPECT_FALSE(cn.open(QStringLiteral("Provider=PostgreSQL;User ID=postgres;Password=;Data Source=127.0.0.1:1;Initial "
                                        "Catalog=none;")));
    EXPECT_FALSE(cn.lastError().description.isEmpty());
    EXPECT_FALSE(cn.isOpen());
}

} // namespace

namespace {

// An ODBC data source, named in Data Source as a site names its server's.
TEST(Odbc, DataSourceNamedInTheConnectionTextOpens) {
    QFile drivers(QStringLiteral("/etc/odbcinst.ini"));
    if (!drivers.open(QIODevice::ReadOnly) || !drivers.readAll().contains("[SQLite3]")) {
        if (testdb::serverRequired())
            FAIL() << "the SQLite3 ODBC driver is required under CI=true (package libsqliteodbc)";
        GTEST_SKIP() << "no SQLite3 ODBC driver installed";
    }
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("odbc.db"));
    QFile ini(dir.filePath(QStringLiteral("odbc.ini")));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write(QStringLiteral("[staff_test_source]\nDriver=SQLite3\nDatabase=%1\n").arg(file).toUtf8());
    ini.close();
    qputenv("ODBCINI", ini.fileName().toLocal8Bit());

    db::Connection cn;
    cn.setDialect(QStringLiteral("S"));
    ASSERT_TRUE(cn.open(QStringLiteral("Provider=MSDASQL;User ID=;Password=;Data Source=staff_test_source;")))
        << cn.lastError().description.toStdString();
    EXPECT_EQ(cn.engine(), db::Engine::Odbc);
    ASSERT_TRUE(cn.execute(QStringLiteral("CREATE TABLE M役職 (コード text primary key, 名称 text)")))
        << cn.lastError().description.toStdString();
    ASSERT_TRUE(cn.execute(QStringLiteral("INSERT INTO [M役職] ([コード],[名称]) VALUES ('01','部長')")));
    db::Recordset rs;
    ASSERT_TRUE(rs.open(QStringLiteral("SELECT コード, 名称 FROM M役職 WHERE コード = '01'"), cn))
        << rs.lastError().description.toStdString();
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.field(QStringLiteral("コード")).text(), QStringLiteral("01"));
    EXPECT_EQ(rs.field(QStringLiteral("名称")).text(), QStringLiteral("部長"));
    rs.close();
    EXPECT_FALSE(cn.execute(QStringLiteral("DELETE FROM M役職; DROP TABLE M役職")));
    EXPECT_EQ(cn.lastError().number, db::kMultipleStatements);
    cn.close();
    qunsetenv("ODBCINI");
}

} // namespace
