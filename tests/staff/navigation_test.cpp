// Next and previous staff member and the next free code, through the card.

#include "actions_fixture.h"

using testdb::Engine;

namespace {

using Navigation = StaffActions;

TEST_P(Navigation, NextAndPreviousWalkInCodeOrderAndPutTheFocusOnTheSurname) {
    addStaff(QStringLiteral("00002"), QStringLiteral("000"), QStringLiteral("鈴木"));
    addStaff(QStringLiteral("00005"), QStringLiteral("000"), QStringLiteral("高橋"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("000");
    readExisting();
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("鈴木 花子"));
    EXPECT_FALSE(ctx().screen.新規フラグ);
    EXPECT_TRUE(form->tab_詳細->isEnabled());
    EXPECT_EQ(focused(), QStringLiteral("姓"));
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00005"));
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 太郎"));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Navigation, TheWalkKeepsToTheOfficeOfTheRun) {
    addStaff(QStringLiteral("00002"), QStringLiteral("001"), QStringLiteral("鈴木"));
    addStaff(QStringLiteral("00003"), QStringLiteral("002"), QStringLiteral("佐藤"));
    addStaff(QStringLiteral("00004"), QStringLiteral("001"), QStringLiteral("高橋"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("001");
    // From the empty card the first code of the office.
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00004"));
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
}

TEST_P(Navigation, TheHeadOfficeWalksThroughAllOffices) {
    addStaff(QStringLiteral("00002"), QStringLiteral("001"), QStringLiteral("鈴木"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("000");
    readExisting();
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
}

TEST_P(Navigation, PreviousFromTheEmptyCardFindsNothingAndFocusesTheCode) {
    start();
    ctx().run.操作事業所コード = QStringLiteral("000");
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(Navigation, OnTheLastCodeOfAnOfficeNextStaysEmptiesTheNoticeAndFocusesTheSurname) {
    addStaff(QStringLiteral("00002"), QStringLiteral("001"), QStringLiteral("鈴木"));
    addStaff(QStringLiteral("00003"), QStringLiteral("002"), QStringLiteral("佐藤"));
    useIn(QStringLiteral("T営業見積"), QStringLiteral("00002"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("001");
    type(form->コード, QStringLiteral("2"));
    tab();
    // A field exit leaves the use check's notice on the status line.
    change姓(QStringLiteral("鈴川"));
    ASSERT_EQ(form->お知らせ->text(), QStringLiteral("営業見積に登録されています。"));
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("姓"));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Navigation, WithChangesAndNoNeighbourNoQuestionIsAsked) {
    // The one staff member of the office: no neighbour either way.
    addStaff(QStringLiteral("00002"), QStringLiteral("001"), QStringLiteral("鈴木"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("001");
    type(form->コード, QStringLiteral("2"));
    tab();
    change姓(QStringLiteral("鈴川"));
    ASSERT_TRUE(ctx().screen.入力フラグ);
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(form->コード->text(), QStringLiteral("00002"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("鈴川"));
    EXPECT_TRUE(ctx().screen.入力フラグ);
}

TEST_P(Navigation, CodesThatAreNotNumbersWalkInTheOrderOfTheirText) {
    // As text 00010 < 0001A < ABCDE, while 0001A read as a number would be 1.
    addStaff(QStringLiteral("0001A"), QStringLiteral("000"), QStringLiteral("英字"));
    addStaff(QStringLiteral("00010"), QStringLiteral("000"), QStringLiteral("十番"));
    addStaff(QStringLiteral("ABCDE"), QStringLiteral("000"), QStringLiteral("大文字"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("000");
    type(form->コード, QStringLiteral("10"));
    tab();
    ASSERT_EQ(form->氏名->text(), QStringLiteral("十番 花子"));
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("0001A"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("英字 花子"));
    EXPECT_FALSE(ctx().screen.新規フラグ);
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("ABCDE"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("大文字 花子"));
    // Nothing sorts after it.
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("ABCDE"));
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("0001A"));
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00010"));
    EXPECT_EQ(form->氏名->text(), QStringLiteral("十番 花子"));
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), operatorCode());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Navigation, NoToTheQuestionKeepsTheRecordAndStillEmptiesTheNotice) {
    addStaff(QStringLiteral("00002"), QStringLiteral("000"), QStringLiteral("鈴木"));
    useIn(QStringLiteral("M得意先"), QStringLiteral("00001"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("000");
    readExisting();
    change姓(QStringLiteral("山下"));
    ASSERT_EQ(form->お知らせ->text(), QStringLiteral("得意先に登録されています。"));
    tree->messages.answers = {ui::Answer::No};
    QTest::mouseClick(form->btn_前進, Qt::LeftButton);
    ASSERT_EQ(tree->messages.shown.size(), 1);
    EXPECT_EQ(tree->messages.shown.first().text, question(QStringLiteral("クリアし前進しますか？")));
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::YesNo);
    EXPECT_EQ(tree->messages.shown.first().defaultButton, 1);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山下"));
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("姓"));
}

TEST_P(Navigation, YesToTheQuestionOfPreviousLoadsTheNeighbour) {
    addStaff(QStringLiteral("00002"), QStringLiteral("000"), QStringLiteral("鈴木"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("000");
    type(form->コード, QStringLiteral("2"));
    tab();
    change姓(QStringLiteral("鈴川"));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_後退, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts(), QStringList{question(QStringLiteral("クリアし後退しますか？"))});
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田"));
    EXPECT_FALSE(ctx().screen.入力フラグ);
    // What was typed was not saved.
    EXPECT_EQ(rows(QStringLiteral("SELECT 姓 FROM M担当者 WHERE コード = '00002'"), {QStringLiteral("姓")}),
              QStringList{QStringLiteral("鈴木")});
}

TEST_P(Navigation, AnEmptyTableYieldsTheFirstCode) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM M担当者")));
    start();
    QTest::mouseClick(form->btn_最新コード, Qt::LeftButton);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_TRUE(ctx().screen.入力フラグ);
    EXPECT_FALSE(form->tab_詳細->isEnabled());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Navigation, TheNewCodeIsTheHighestPlusOneOverAllOfficesAndKeepsTheOtherFields) {
    addStaff(QStringLiteral("00007"), QStringLiteral("002"), QStringLiteral("鈴木"));
    start();
    ctx().run.操作事業所コード = QStringLiteral("001");
    readExisting();
    change姓(QStringLiteral("山下"));
    QTest::mouseClick(form->btn_最新コード, Qt::LeftButton);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(form->コード->text(), QStringLiteral("00008"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山下"));
    EXPECT_EQ(form->部門名->text(), QStringLiteral("営業部"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_EQ(form->お知らせ->text(), QString());
}

TEST_P(Navigation, TheNewCodeIsTheNumberOfTheHighestCodeUpTo99999PlusOne) {
    // ABCDE sorts above 99999 and is not read; 0009A is the highest code below,
    // and its number is 9.
    addStaff(QStringLiteral("ABCDE"), QStringLiteral("000"), QStringLiteral("大文字"));
    addStaff(QStringLiteral("0009A"), QStringLiteral("000"), QStringLiteral("英字"));
    start();
    QTest::mouseClick(form->btn_最新コード, Qt::LeftButton);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(form->コード->text(), QStringLiteral("00010"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(Navigation, WithTheHighestCodeInUseTheCodeIsLeftEmptyAndTheRestAsItWas) {
    addStaff(QStringLiteral("99999"), QStringLiteral("000"), QStringLiteral("鈴木"));
    addStaff(QStringLiteral("00003"), QStringLiteral("000"), QStringLiteral("佐藤"));
    start();
    readExisting();
    QTest::mouseClick(form->btn_最新コード, Qt::LeftButton);
    ASSERT_EQ(tree->messages.shown.size(), 1);
    EXPECT_EQ(tree->messages.shown.first().text, QStringLiteral("最大値のコードが登録済です。") + QChar(13) +
                                                     QStringLiteral("未使用のコードを指定してください。"));
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::Ok);
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 太郎"));
    EXPECT_FALSE(ctx().screen.新規フラグ);
    EXPECT_FALSE(ctx().screen.入力フラグ);
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

INSTANTIATE_TEST_SUITE_P(Engines, Navigation, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
