// The rights of an operation: the personal row, the class of the program in
// its menu table, the office rule and the eight rights.

#include "access/mod操作許可.h"
#include "access_fixture.h"

namespace access_test {
namespace {

class Rights : public AccessTest {
protected:
    // Makes the staff member the operator, as a confirmed PIN would.
    void operate(const QString& code) {
        ctx().op.操作担当者コード = code;
        ASSERT_TRUE(操作担当者read(ctx(), code));
    }
    void addProgram(const QString& program, const QString& klass) {
        ASSERT_TRUE(
            tree->configExecute(QStringLiteral("INSERT INTO 営業支援データ管理 (プログラムID, 処理分類) VALUES ('") +
                                program + QStringLiteral("', '") + klass + QStringLiteral("')")));
    }
    bool allowed(int operation, const QString& program = kProgram, const QString& menu = kMenu) {
        return 操作許可判定(ctx(), menu, program, operation);
    }
};

TEST_P(Rights, ClassFlagDecidesWithoutPersonalRow) {
    addStaff(QStringLiteral("00001"), QStringLiteral("可"));
    addStaff(QStringLiteral("00002"), QStringLiteral("不可"),
             {{QStringLiteral("処理分類0操作許可"), QStringLiteral("1")}});
    operate(QStringLiteral("00001"));
    EXPECT_TRUE(allowed(操作番号::起動));
    operate(QStringLiteral("00002"));
    EXPECT_FALSE(allowed(操作番号::起動));
}

TEST_P(Rights, APersonalRowReplacesTheClassTest) {
    addStaff(QStringLiteral("00002"), QStringLiteral("不可"),
             {{QStringLiteral("処理分類0操作許可"), QStringLiteral("1")}});
    addPersonalRow(QStringLiteral("00002"), kMenu, kProgram, {{QStringLiteral("操作許可"), QStringLiteral("0")}});
    operate(QStringLiteral("00002"));
    EXPECT_TRUE(allowed(操作番号::起動));
}

TEST_P(Rights, APersonalRowThatForbidsRefusesWhateverTheClassSays) {
    addStaff(QStringLiteral("00001"), QStringLiteral("可"));
    addPersonalRow(QStringLiteral("00001"), kMenu, kProgram, {{QStringLiteral("操作許可"), QStringLiteral("1")}});
    operate(QStringLiteral("00001"));
    EXPECT_FALSE(allowed(操作番号::起動));
}

TEST_P(Rights, ChangeRightOneRefusesChangesButNotNewRecords) {
    addStaff(QStringLiteral("00001"), QStringLiteral("可"));
    addPersonalRow(
        QStringLiteral("00001"), kMenu, kProgram,
        {{QStringLiteral("操作許可"), QStringLiteral("0")}, {QStringLiteral("修正許可"), QStringLiteral("1")}});
    operate(QStringLiteral("00001"));
    EXPECT_TRUE(allowed(操作番号::起動));
    EXPECT_TRUE(allowed(操作番号::入力));
    EXPECT_FALSE(allowed(操作番号::修正));
}

TEST_P(Rights, EachOperationTestsItsOwnRight) {
    const char* rights[] = {"操作許可", "入力許可",     "修正許可",         "削除許可",
                            "印刷許可", "プレビュ許可", "テキスト出力許可", "イメージ出力許可"};
    // Every right written, so that no value stays from the operator before.
    for (int forbidden = 0; forbidden < 8; ++forbidden) {
        Columns columns;
        for (int op = 0; op < 8; ++op)
            columns.append(
                {QString::fromUtf8(rights[op]), op == forbidden ? QStringLiteral("1") : QStringLiteral("0")});
        addStaff(QStringLiteral("%1").arg(forbidden + 1, 5, 10, QLatin1Char('0')), QStringLiteral("担当"), columns);
    }
    for (int staff = 0; staff < 8; ++staff) {
        operate(QStringLiteral("%1").arg(staff + 1, 5, 10, QLatin1Char('0')));
        for (int op = 0; op < 8; ++op)
            EXPECT_EQ(allowed(op), op != staff) << "staff " << staff << " operation " << op;
        EXPECT_TRUE(allowed(8)); // no right is tested for another number
    }
}

TEST_P(Rights, PersonalRightsStayForLaterGatesOfAnotherProgram) {
    addStaff(QStringLiteral("00001"), QStringLiteral("可"));
    addPersonalRow(
        QStringLiteral("00001"), kMenu, kProgram,
        {{QStringLiteral("操作許可"), QStringLiteral("0")}, {QStringLiteral("修正許可"), QStringLiteral("1")}});
    addProgram(QStringLiteral("別プログラム"), QStringLiteral("0"));
    operate(QStringLiteral("00001"));
    EXPECT_TRUE(allowed(操作番号::修正, QStringLiteral("別プログラム"))); // its own right is empty
    EXPECT_TRUE(allowed(操作番号::起動));
    EXPECT_EQ(ctx().op.修正許可, QStringLiteral("1"));
    EXPECT_FALSE(allowed(操作番号::修正, QStringLiteral("別プログラム")));
}

TEST_P(Rights, WithoutMenuRowOnlyAPersonalRowLetsIn) {
    addStaff(QStringLiteral("00001"), QStringLiteral("個人行なし"));
    addStaff(QStringLiteral("00002"), QStringLiteral("個人行あり"));
    addPersonalRow(QStringLiteral("00002"), kMenu, QStringLiteral("未登録"),
                   {{QStringLiteral("操作許可"), QStringLiteral("0")}});
    const QString program = QStringLiteral("未登録");
    EXPECT_FALSE(allowed(操作番号::起動, program)); // no operator
    operate(QStringLiteral("00001"));
    EXPECT_FALSE(allowed(操作番号::起動, program));
    operate(QStringLiteral("00002"));
    EXPECT_TRUE(allowed(操作番号::起動, program));
}

TEST_P(Rights, AnUnknownMenuCountsAPersonalRowOfAnyMenu) {
    addStaff(QStringLiteral("00002"), QStringLiteral("不可"),
             {{QStringLiteral("処理分類0操作許可"), QStringLiteral("1")}});
    addPersonalRow(QStringLiteral("00002"), QStringLiteral("営業支援"), kProgram,
                   {{QStringLiteral("操作許可"), QStringLiteral("0")}});
    operate(QStringLiteral("00002"));
    // The known menu asks for its own row only, finds none, and the class forbids.
    EXPECT_FALSE(allowed(操作番号::起動));
    EXPECT_TRUE(allowed(操作番号::起動, kProgram, QStringLiteral("独自メニュ")));
}

TEST_P(Rights, AnUnknownMenuWithoutPersonalRowRefusesAndLogsTheFailedRead) {
    addStaff(QStringLiteral("00001"), QStringLiteral("可"));
    operate(QStringLiteral("00001"));
    EXPECT_FALSE(allowed(操作番号::起動, kProgram, QStringLiteral("独自メニュ")));
    const QStringList h = tree->history();
    ASSERT_FALSE(h.isEmpty());
    EXPECT_TRUE(
        h.last().contains(QStringLiteral("|エラー SELECT * FROM 独自メニュ WHERE プログラムID = ''担当者登録''")))
        << h.last().toStdString();
}

TEST_P(Rights, WithoutOperatorTheEmptyRightsAllow) {
    EXPECT_EQ(ctx().op.操作担当者コード, QString());
    for (int op = 0; op < 8; ++op)
        EXPECT_TRUE(allowed(op)) << op;
}

TEST_P(Rights, ClassesFourToNineTestTheirOwnFlag) {
    addStaff(QStringLiteral("00001"), QStringLiteral("担当"),
             {{QStringLiteral("処理分類7操作許可"), QStringLiteral("1")}});
    addProgram(QStringLiteral("分類6"), QStringLiteral("6"));
    addProgram(QStringLiteral("分類7"), QStringLiteral("7"));
    operate(QStringLiteral("00001"));
    EXPECT_TRUE(allowed(操作番号::起動, QStringLiteral("分類6")));
    EXPECT_FALSE(allowed(操作番号::起動, QStringLiteral("分類7")));
}

TEST_P(Rights, AClassOutsideZeroToNineAlwaysAllows) {
    addStaff(QStringLiteral("00001"), QStringLiteral("担当"));
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral("UPDATE M担当者 SET 処理分類%1操作許可 = '1' WHERE コード = '00001'").arg(i)));
    addProgram(QStringLiteral("分類12"), QStringLiteral("12"));
    operate(QStringLiteral("00001"));
    EXPECT_FALSE(allowed(操作番号::起動));
    EXPECT_TRUE(allowed(操作番号::起動, QStringLiteral("分類12")));
}

class OfficeRule : public Rights {
protected:
    void SetUp() override {
        Rights::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        addProgram(QStringLiteral("支店業務"), QStringLiteral("3"));
        addStaff(QStringLiteral("00001"), QStringLiteral("可"));
        addStaff(QStringLiteral("00002"), QStringLiteral("不可"),
                 {{QStringLiteral("処理分類3操作許可"), QStringLiteral("1")}});
    }
    bool branchWork() { return allowed(操作番号::起動, QStringLiteral("支店業務")); }
};

TEST_P(OfficeRule, ACompanyWithoutOfficesAllowsClassThreeToEveryone) {
    ctx().事業所件数 = 0;
    operate(QStringLiteral("00002"));
    EXPECT_TRUE(branchWork());
}

TEST_P(OfficeRule, TheHeadOfficeInstallationOfACompanyWithOfficesIsClosed) {
    ctx().事業所件数 = 2;
    ctx().env.運用事業所コード = QStringLiteral("000");
    operate(QStringLiteral("00001"));
    EXPECT_FALSE(branchWork());
}

TEST_P(OfficeRule, ABranchInstallationTestsTheClassFlag) {
    ctx().事業所件数 = 2;
    ctx().env.運用事業所コード = QStringLiteral("001");
    operate(QStringLiteral("00001"));
    EXPECT_TRUE(branchWork());
    operate(QStringLiteral("00002"));
    EXPECT_FALSE(branchWork());
}

INSTANTIATE_TEST_SUITE_P(Engines, Rights, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);
INSTANTIATE_TEST_SUITE_P(Engines, OfficeRule, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
} // namespace access_test
