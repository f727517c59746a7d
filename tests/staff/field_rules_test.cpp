// The rules of the card's fields on leaving them, and the lookups of the codes
// and the postcode in their masters.

#include "staff_fixture.h"

using testdb::Engine;

namespace {

using FieldRules = StaffFixture;

TEST_P(FieldRules, TwoDigitsInTheDepartmentLookUpThePaddedCode) {
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('012','企画開発部','1')")));
    start();
    readExisting();
    type(form->部門コード, QStringLiteral("12"));
    tab();
    EXPECT_EQ(form->部門コード->text(), QStringLiteral("012"));
    EXPECT_EQ(form->部門名->text(), QStringLiteral("企画開発部"));
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_TRUE(form->btn_登録->isEnabled());
}

TEST_P(FieldRules, EachMasterCodeIsPaddedAndFetchesItsName) {
    start();
    readExisting();
    type(form->事業所コード, QStringLiteral("1"));
    tab();
    EXPECT_EQ(form->事業所コード->text(), QStringLiteral("001"));
    EXPECT_EQ(form->事業所名->text(), QStringLiteral("大阪支店"));
    type(form->セクションコード, QStringLiteral("7"));
    tab();
    EXPECT_EQ(form->セクションコード->text(), QStringLiteral("007"));
    EXPECT_EQ(form->セクション名->text(), QStringLiteral("人事課"));
    type(form->役職コード, QStringLiteral("8"));
    tab();
    EXPECT_EQ(form->役職コード->text(), QStringLiteral("08"));
    EXPECT_EQ(form->役職名->text(), QStringLiteral("一般"));
    // Changing the office leaves the other codes alone.
    EXPECT_EQ(form->部門コード->text(), QStringLiteral("003"));
}

TEST_P(FieldRules, EmptiedOfficeKeepsItsNameMarksTheRecordAndGatesTheDepartment) {
    start();
    readExisting();
    const QString name = form->事業所名->text();
    ASSERT_FALSE(name.isEmpty());
    erase(form->事業所コード);
    tab();
    EXPECT_EQ(form->事業所コード->text(), QString());
    EXPECT_EQ(form->事業所名->text(), name);
    EXPECT_TRUE(ctx().screen.入力フラグ);
    EXPECT_TRUE(form->btn_登録->isEnabled());
    EXPECT_EQ(form->お知らせ->text(), QString());
    form->部門コード->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(focused(), QStringLiteral("事業所コード"));
}

TEST_P(FieldRules, UnknownCodePutsThePreviousOneBackWithTheNotice) {
    start();
    readExisting();
    type(form->事業所コード, QStringLiteral("987"));
    tab();
    EXPECT_EQ(form->事業所コード->text(), QStringLiteral("000"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("該当情報がありません。"));
    EXPECT_TRUE(ctx().screen.入力フラグ);
    type(form->役職コード, QStringLiteral("77"));
    tab();
    EXPECT_EQ(form->役職コード->text(), QStringLiteral("05"));
    EXPECT_EQ(form->役職名->text(), QStringLiteral("課長"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("該当情報がありません。"));
}

// The section lies on the page that is hidden while the address page shows:
// the gate brings its page to the front.
TEST_P(FieldRules, EnteringThePostcodeWithAnEmptySectionGoesToTheSection) {
    start();
    readExisting();
    erase(form->セクションコード);
    tab();
    ASSERT_EQ(form->セクションコード->text(), QString());
    // The address page sends the focus to the postcode, whose gate sends it on.
    form->tab_詳細->setCurrentIndex(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(focused(), QStringLiteral("セクションコード"));
    EXPECT_EQ(form->tab_詳細->currentIndex(), 0);
}

TEST_P(FieldRules, LeavingTheSurnameUnchangedWritesNothing) {
    start();
    readExisting();
    form->姓->setFocus(Qt::MouseFocusReason);
    tab();
    EXPECT_FALSE(ctx().screen.入力フラグ);
    EXPECT_FALSE(form->btn_登録->isEnabled());
    // Even over a full name changed by hand.
    type(form->氏名, QStringLiteral("山田 太郎左衛門"));
    tab();
    ASSERT_TRUE(ctx().screen.入力フラグ);
    form->姓->setFocus(Qt::MouseFocusReason);
    tab();
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 太郎左衛門"));
    // A changed surname joins the name anew.
    type(form->姓, QStringLiteral("山下"));
    tab();
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山下 太郎"));
}

TEST_P(FieldRules, SameDigitsInTheTelephoneAreNoChange) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 電話 = '(03)1234-5678' WHERE コード = '00001'")));
    start();
    readExisting();
    ASSERT_EQ(form->電話->text(), QStringLiteral("(03)1234-5678"));
    type(form->電話, QStringLiteral("03-1234-5678"));
    tab();
    EXPECT_FALSE(ctx().screen.入力フラグ);
    EXPECT_FALSE(form->btn_登録->isEnabled());
    // Saved with another change, the number keeps its old form.
    type(form->EMAIL, QStringLiteral("t@example.jp"));
    tab(); // the end of the page saves
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    EXPECT_EQ(rows(QStringLiteral("SELECT 電話, EMAIL FROM M担当者 WHERE コード = '00001'"),
                   {QStringLiteral("電話"), QStringLiteral("EMAIL")}),
              QStringList{QStringLiteral("(03)1234-5678|t@example.jp")});
}

TEST_P(FieldRules, TelephoneWithOtherDigitsIsStoredAsTyped) {
    start();
    readExisting();
    type(form->携帯電話, QStringLiteral("(090)1111-2222"));
    tab();
    EXPECT_TRUE(ctx().screen.入力フラグ);
    EXPECT_EQ(form->携帯電話->text(), QStringLiteral("(090)1111-2222"));
}

TEST_P(FieldRules, AnEraForAnEmptyDateStaysAsChosen) {
    start();
    readExisting();
    type(form->退社日付年号区分, QStringLiteral("4"));
    tab();
    EXPECT_EQ(form->退社日付年号区分->text(), QStringLiteral("4"));
    EXPECT_EQ(form->退社日付年号区分名称->currentText(), QStringLiteral("平成"));
    EXPECT_EQ(form->退社日付年->text(), QString());
    EXPECT_TRUE(ctx().screen.入力フラグ);
}

TEST_P(FieldRules, AnEraForADateIsReplacedByTheDatesOwnEra) {
    start();
    readExisting();
    ASSERT_EQ(form->生年月日年号区分->text(), QStringLiteral("3"));
    type(form->生年月日年号区分, QStringLiteral("5"));
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("3"));
    EXPECT_EQ(form->生年月日年号区分名称->currentText(), QStringLiteral("昭和"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("55"));
    EXPECT_TRUE(ctx().screen.入力フラグ);
    // Era 0 gives the western year.
    type(form->生年月日年号区分, QStringLiteral("0"));
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("0"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("1980"));
    EXPECT_EQ(form->生年月日月->text(), QStringLiteral("01"));
    EXPECT_EQ(form->生年月日日->text(), QStringLiteral("15"));
    // Chosen in the list, an era goes the same way.
    form->生年月日年号区分名称->setFocus(Qt::MouseFocusReason);
    Q_EMIT form->生年月日年号区分名称->activated(2);
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("3"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("55"));
}

TEST_P(FieldRules, ABlankedDayKeepsTheOldDateOnSave) {
    start();
    readExisting();
    erase(form->生年月日日);
    tab();
    EXPECT_TRUE(ctx().screen.入力フラグ);
    EXPECT_EQ(form->生年月日日->text(), QString());
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    EXPECT_EQ(rows(QStringLiteral("SELECT 生年月日 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("生年月日")}),
              QStringList{QStringLiteral("19800115")});
}

TEST_P(FieldRules, AWholeDateTypedInItsEraIsStoredInWesternYears) {
    start();
    readExisting();
    type(form->生年月日年, QStringLiteral("56"));
    tab();
    type(form->生年月日月, QStringLiteral("3"));
    tab();
    EXPECT_EQ(form->生年月日月->text(), QStringLiteral("03"));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT 生年月日 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("生年月日")}),
              QStringList{QStringLiteral("19810315")});
}

TEST_P(FieldRules, AFourDigitYearTypedUnderAnEraIsAWesternYearAndIsSaved) {
    start();
    readExisting();
    ASSERT_EQ(form->生年月日年号区分->text(), QStringLiteral("3"));
    ASSERT_EQ(form->生年月日年->text(), QStringLiteral("55"));
    type(form->生年月日年, QStringLiteral("1985"));
    tab();
    // The screen keeps what was typed under the era; the stored date follows it.
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("1985"));
    EXPECT_EQ(ctx().担当者情報.生年月日, QStringLiteral("19850115"));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    EXPECT_EQ(rows(QStringLiteral("SELECT 生年月日 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("生年月日")}),
              QStringList{QStringLiteral("19850115")});
    // Read again, the date comes up in its own era.
    readExisting();
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("3"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("60"));
}

TEST_P(FieldRules, APostcodeWithLongLinesFillsBothAddressLines) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "UPDATE M郵便番号 SET 住所A = '東京都千代田区千代', 住所B = '田一丁目二番三号' WHERE 郵便番号 = '100-0001'")));
    start();
    readExisting();
    type(form->郵便番号, QStringLiteral("1000001"));
    tab();
    EXPECT_EQ(form->郵便番号->postcode(), QStringLiteral("100-0001"));
    EXPECT_EQ(form->住所A->text(), QStringLiteral("東京都千代田区千代"));
    EXPECT_EQ(form->住所B->text(), QStringLiteral("田一丁目二番三号"));
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_TRUE(ctx().screen.入力フラグ);
}

TEST_P(FieldRules, APostcodeWithShortLinesFillsOneLine) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "UPDATE M郵便番号 SET 住所A = '東京都千代田区', 住所B = '田一丁目二番三号' WHERE 郵便番号 = '100-0001'")));
    start();
    readExisting();
    type(form->郵便番号, QStringLiteral("1000001"));
    tab();
    EXPECT_EQ(form->住所A->text(), QStringLiteral("東京都千代田区田一丁目二番三号"));
    EXPECT_EQ(form->住所B->text(), QString());
}

TEST_P(FieldRules, APostcodeOverAnAddressChangesNothingElse) {
    start();
    readExisting();
    type(form->住所A, QStringLiteral("大阪府大阪市"));
    tab();
    type(form->郵便番号, QStringLiteral("1000001"));
    tab();
    EXPECT_EQ(form->郵便番号->postcode(), QStringLiteral("100-0001"));
    EXPECT_EQ(form->住所A->text(), QStringLiteral("大阪府大阪市"));
    EXPECT_EQ(form->住所B->text(), QString());
}

TEST_P(FieldRules, AnUnknownPostcodeBringsTheOldOneBack) {
    start();
    readExisting();
    type(form->郵便番号, QStringLiteral("1000001"));
    tab();
    const QString address = form->住所A->text();
    ASSERT_FALSE(address.isEmpty());
    type(form->郵便番号, QStringLiteral("9999999"));
    tab();
    EXPECT_EQ(form->郵便番号->postcode(), QStringLiteral("100-0001"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("該当情報がありません。"));
    EXPECT_EQ(form->住所A->text(), address);
}

INSTANTIATE_TEST_SUITE_P(Engines, FieldRules, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
