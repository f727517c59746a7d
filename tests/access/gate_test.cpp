// The quiet parts of the operator gate: the remembered operator, the setting
// that turns PINs off, the remembering of a confirmed operator and the staff
// look-ups of the PIN dialog.

#include "access/mod暗証番号.h"
#include "access_fixture.h"

namespace access_test {
namespace {

using Gate = AccessTest;

TEST_P(Gate, WithoutPinsEveryGateAnswersTrueWithNoDialogAndNoOperator) {
    ctx().pin.暗証番号有無 = 0;
    DialogDriver driver;
    driver.arm([](msg暗証番号確認&) {});
    EXPECT_EQ(操作許可chk(ctx(), kMenu, kProgram, 0), 許可回答::許可);
    EXPECT_EQ(操作許可chk(ctx(), kMenu, kProgram, 3), 許可回答::許可);
    EXPECT_FALSE(driver.shown);
    EXPECT_EQ(ctx().op.操作担当者コード, QString());
    EXPECT_FALSE(ctx().pin.暗証確認済);
    EXPECT_TRUE(tree->messages.texts().isEmpty());
}

TEST_P(Gate, WithoutPinsARememberedOperatorWithoutTheRightStillPasses) {
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"),
             {{QStringLiteral("処理分類0操作許可"), QStringLiteral("1")}});
    remember(QStringLiteral("00001"));
    ctx().pin.暗証番号有無 = 2;
    DialogDriver driver;
    driver.arm([](msg暗証番号確認&) {});
    EXPECT_EQ(操作許可chk(ctx(), kMenu, kProgram, 0), 許可回答::許可);
    EXPECT_FALSE(driver.shown);
    EXPECT_FALSE(ctx().pin.暗証確認済); // the right was not there; the setting lets it go
    EXPECT_EQ(ctx().op.操作担当者コード, QStringLiteral("00001"));
}

TEST_P(Gate, ARememberedOperatorWithTheRightPassesWithoutDialog) {
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"));
    remember(QStringLiteral("00001"));
    ctx().pin.暗証番号有無 = 1;
    DialogDriver driver;
    driver.arm([](msg暗証番号確認&) {});
    EXPECT_EQ(操作許可chk(ctx(), kMenu, kProgram, 0), 許可回答::許可);
    EXPECT_FALSE(driver.shown);
    EXPECT_TRUE(ctx().pin.暗証確認済);
    EXPECT_EQ(ctx().op.操作担当者コード, QStringLiteral("00001"));
    EXPECT_EQ(ctx().op.氏名, QStringLiteral("佐藤 一郎"));
    EXPECT_TRUE(tree->messages.texts().isEmpty());
}

TEST_P(Gate, QuietCheckFailsWithoutARememberedOperator) {
    ctx().pin.暗証確認済 = true;
    EXPECT_FALSE(起動担当者chk(ctx(), kMenu, kProgram, 0));
    EXPECT_FALSE(ctx().pin.暗証確認済);
    EXPECT_EQ(ctx().op.操作担当者コード, QString());
}

TEST_P(Gate, QuietCheckFailsForARememberedCodeWithoutRow) {
    remember(QStringLiteral("00099"));
    EXPECT_FALSE(起動担当者chk(ctx(), kMenu, kProgram, 0));
    EXPECT_FALSE(ctx().pin.暗証確認済);
}

TEST_P(Gate, QuietCheckFailsWhenTheRememberedOperatorLacksTheRight) {
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"), {{QStringLiteral("削除許可"), QStringLiteral("1")}});
    remember(QStringLiteral("00001"));
    EXPECT_TRUE(起動担当者chk(ctx(), kMenu, kProgram, 0));
    EXPECT_TRUE(ctx().pin.暗証確認済);
    EXPECT_FALSE(起動担当者chk(ctx(), kMenu, kProgram, 3));
    EXPECT_FALSE(ctx().pin.暗証確認済);
}

TEST_P(Gate, SaveRemembersTheOperatorAndReadsTheRecord) {
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"));
    ctx().op.操作担当者コード = QStringLiteral("00001");
    起動担当者save(ctx());
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00001"));
    EXPECT_EQ(ctx().op.氏名, QStringLiteral("佐藤 一郎"));
    EXPECT_TRUE(tree->messages.texts().isEmpty());
    const QStringList h = tree->history();
    ASSERT_FALSE(h.isEmpty());
    EXPECT_TRUE(h.last().endsWith(QStringLiteral(
        "|出力終了 UPDATE 動作環境定義 SET 起動担当者コード = ''00001''  WHERE 動作環境定義ID = ''001''")))
        << h.last().toStdString();
}

TEST_P(Gate, SaveWithoutOperatorWritesNothing) {
    remember(QStringLiteral("00001"));
    const int before = int(tree->history().size());
    ctx().op.操作担当者コード = QStringLiteral("  ");
    起動担当者save(ctx());
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00001"));
    EXPECT_EQ(tree->history().size(), before);
    EXPECT_TRUE(tree->messages.texts().isEmpty());
}

TEST_P(Gate, AFailingSaveIsShownAndTheRecordIsNotRead) {
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"));
    loseRememberedOperatorColumn();
    ctx().op.操作担当者コード = QStringLiteral("00001");
    起動担当者save(ctx());
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("データベースに問題が発生し修正できませんでした。")});
    EXPECT_EQ(ctx().op.氏名, QString());
    const QStringList h = tree->history();
    ASSERT_GE(h.size(), 2);
    EXPECT_TRUE(h.at(h.size() - 2).contains(QStringLiteral("|エラー UPDATE 動作環境定義 SET 起動担当者コード")))
        << h.at(h.size() - 2).toStdString();
}

// The look-ups of the dialog, on a form that is made (and so loaded) but not shown.
TEST_P(Gate, LookupFillsTheFormThePinToCheckAndTheRights) {
    addStaff(QStringLiteral("00012"), QStringLiteral("山田 太郎"),
             {{QStringLiteral("暗証番号"), stored(QStringLiteral("ABCD"))},
              {QStringLiteral("ログインID"), QStringLiteral("yamada")},
              {QStringLiteral("アクセス権限"), QStringLiteral("2")},
              {QStringLiteral("処理分類4操作許可"), QString()},
              {QStringLiteral("処理分類5操作許可"), QStringLiteral("1")},
              {QStringLiteral("修正許可"), QStringLiteral("1")}});
    ctx().op.入力許可 = QStringLiteral("9"); // a null right clears what the record held
    ctx().op.処理分類操作許可[4] = QStringLiteral("7");
    msg暗証番号確認 form(ctx());
    EXPECT_TRUE(確認担当者read(ctx(), form, QStringLiteral("00012")));
    EXPECT_EQ(form.担当者コード->text(), QStringLiteral("00012"));
    EXPECT_EQ(form.担当者名->text(), QStringLiteral("山田 太郎"));
    EXPECT_EQ(form.確認暗証番号, QStringLiteral("ABCD"));
    EXPECT_EQ(ctx().op.ログインID, QStringLiteral("yamada"));
    EXPECT_EQ(ctx().op.アクセス権限, 2);
    EXPECT_EQ(ctx().op.処理分類操作許可[4], QStringLiteral("0"));
    EXPECT_EQ(ctx().op.処理分類操作許可[5], QStringLiteral("1"));
    EXPECT_EQ(ctx().op.修正許可, QStringLiteral("1"));
    EXPECT_EQ(ctx().op.入力許可, QString());
    EXPECT_EQ(ctx().op.操作担当者コード, QString()); // the form's load forgot the operator
}

TEST_P(Gate, AStaffMemberWhoLeftYesterdayIsNotFoundAndTheFormStays) {
    addStaff(QStringLiteral("00007"), QStringLiteral("退社 済"),
             {{QStringLiteral("在籍区分"), QStringLiteral("1")},
              {QStringLiteral("退社日付"), QStringLiteral("20261120")},
              {QStringLiteral("暗証番号"), stored(QStringLiteral("WXYZ"))}});
    msg暗証番号確認 form(ctx());
    form.担当者コード->setText(QStringLiteral("7"));
    form.確認暗証番号 = QStringLiteral("KEEP");
    EXPECT_FALSE(確認担当者read(ctx(), form, QStringLiteral("00007")));
    EXPECT_EQ(form.担当者コード->text(), QStringLiteral("7"));
    EXPECT_EQ(form.担当者名->text(), QString());
    EXPECT_EQ(form.確認暗証番号, QStringLiteral("KEEP"));
}

TEST_P(Gate, AStaffMemberOnLeaveUntilTomorrowIsFound) {
    addStaff(
        QStringLiteral("00008"), QStringLiteral("休職 中"),
        {{QStringLiteral("在籍区分"), QStringLiteral("1")}, {QStringLiteral("退社日付"), QStringLiteral("20261122")}});
    msg暗証番号確認 form(ctx());
    EXPECT_TRUE(確認担当者read(ctx(), form, QStringLiteral("00008")));
    EXPECT_EQ(form.担当者名->text(), QStringLiteral("休職 中"));
}

TEST_P(Gate, RetiredAndOnLeaveWithoutDateAreNotFound) {
    addStaff(QStringLiteral("00009"), QStringLiteral("退職 者"), {{QStringLiteral("在籍区分"), QStringLiteral("2")}});
    addStaff(QStringLiteral("00010"), QStringLiteral("休職 者"), {{QStringLiteral("在籍区分"), QStringLiteral("1")}});
    msg暗証番号確認 form(ctx());
    EXPECT_FALSE(確認担当者read(ctx(), form, QStringLiteral("00009")));
    EXPECT_FALSE(確認担当者read(ctx(), form, QStringLiteral("00010")));
}

TEST_P(Gate, OnlyStaffOfTheRunsOfficeOrTheHeadOfficeAreFound) {
    addStaff(QStringLiteral("00021"), QStringLiteral("大阪 一"),
             {{QStringLiteral("事業所コード"), QStringLiteral("001")}});
    addStaff(QStringLiteral("00022"), QStringLiteral("本社 二"));
    msg暗証番号確認 form(ctx());
    EXPECT_FALSE(確認担当者read(ctx(), form, QStringLiteral("00021"))); // the run is the head office's
    ctx().run.操作事業所コード = QStringLiteral("001");
    EXPECT_TRUE(確認担当者read(ctx(), form, QStringLiteral("00021")));
    EXPECT_TRUE(確認担当者read(ctx(), form, QStringLiteral("00022")));
    ctx().run.操作事業所コード = QStringLiteral("002");
    EXPECT_FALSE(確認担当者read(ctx(), form, QStringLiteral("00021")));
}

TEST_P(Gate, LoginLookupFillsCodeNameAndPin) {
    addStaff(QStringLiteral("00012"), QStringLiteral("山田 太郎"),
             {{QStringLiteral("暗証番号"), stored(QStringLiteral("ABCD"))},
              {QStringLiteral("ログインID"), QStringLiteral("yamada")}});
    msg暗証番号確認 form(ctx());
    EXPECT_FALSE(ログイン担当者read(ctx(), form, QStringLiteral("suzuki")));
    EXPECT_EQ(form.担当者コード->text(), QString());
    EXPECT_TRUE(ログイン担当者read(ctx(), form, QStringLiteral("yamada")));
    EXPECT_EQ(form.担当者コード->text(), QStringLiteral("00012"));
    EXPECT_EQ(form.担当者名->text(), QStringLiteral("山田 太郎"));
    EXPECT_EQ(form.確認暗証番号, QStringLiteral("ABCD"));
}

INSTANTIATE_TEST_SUITE_P(Engines, Gate, ::testing::Values(Engine::Sqlite, Engine::Postgres), testdb::engineParamName);

} // namespace
} // namespace access_test
