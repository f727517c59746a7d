// Reading a staff row onto the card, saving it back, the maintenance log, the
// telephone directory and the access record of each read.

#include "staff_fixture.h"

#include "staff/mod担当者保存.h"

using testdb::Engine;

namespace {

using ReadAndSave = StaffFixture;

const QStringList kLogColumns{QStringLiteral("保守事業所コード"), QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分"),
                              QStringLiteral("コード"), QStringLiteral("姓"), QStringLiteral("更新日付")};

QString logOrder() {
    return QStringLiteral(" ORDER BY 保守履歴No");
}

// ---- reading

TEST_P(ReadAndSave, OneInTheCodeReadsTheFivePlaceCode) {
    start();
    type(form->コード, QStringLiteral("1"));
    tab();
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田"));
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(rows(QStringLiteral("SELECT キー項目, 閲覧情報 FROM T閲覧"), {QStringLiteral("キー項目"), QStringLiteral("閲覧情報")}),
              QStringList{QStringLiteral("00001|担当者登録")});
}

TEST_P(ReadAndSave, OneInTheCodeOfAnEmptyTableMakesANewRecord) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM M担当者")));
    start();
    type(form->コード, QStringLiteral("1"));
    tab();
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_TRUE(form->tab_詳細->isEnabled());
}

TEST_P(ReadAndSave, LeavingTheCodeUnchangedReadsNothingAndRecordsNoAccess) {
    start();
    readExisting();
    ASSERT_EQ(count(QStringLiteral("T閲覧")), 1);
    type(form->姓, QStringLiteral("山下"));
    form->コード->setFocus(Qt::MouseFocusReason);
    tab();
    EXPECT_EQ(count(QStringLiteral("T閲覧")), 1);
    // Nothing read again: the typed name is still on the card.
    EXPECT_EQ(form->姓->text(), QStringLiteral("山下"));
    // Typed again in another form, the same code is no change either.
    type(form->コード, QStringLiteral("001"));
    tab();
    EXPECT_EQ(count(QStringLiteral("T閲覧")), 1);
}

TEST_P(ReadAndSave, ACodeNotOnFileIsANewRecordWithTheFieldsKept) {
    start();
    readExisting();
    type(form->コード, QStringLiteral("50"));
    tab();
    typeCodes();
    EXPECT_EQ(form->コード->text(), QStringLiteral("00050"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田"));
    EXPECT_EQ(form->部門名->text(), QStringLiteral("営業部"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_TRUE(ctx().screen.入力フラグ);
    // The access is recorded whether or not the row is there.
    EXPECT_EQ(count(QStringLiteral("T閲覧")), 2);
}

TEST_P(ReadAndSave, EmptyingTheCodeKeepsTheFieldsAndClosesTheDetails) {
    start();
    readExisting();
    erase(form->コード);
    tab();
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田"));
    EXPECT_EQ(form->事業所コード->text(), QStringLiteral("000"));
    EXPECT_FALSE(form->tab_詳細->isEnabled());
    EXPECT_TRUE(ctx().screen.入力フラグ);
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(count(QStringLiteral("T閲覧")), 1);
}

TEST_P(ReadAndSave, ADepartmentWhoseMasterRowIsGoneKeepsThePreviousName) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "INSERT INTO M担当者 (コード,姓,名,氏名,事業所コード,部門コード,セクションコード,役職コード) VALUES "
        "('00002','鈴木','一郎','鈴木 一郎','000','009','003','05')")));
    start();
    readExisting();
    type(form->コード, QStringLiteral("2"));
    tab();
    EXPECT_EQ(form->姓->text(), QStringLiteral("鈴木"));
    EXPECT_EQ(form->部門コード->text(), QStringLiteral("009"));
    EXPECT_EQ(form->部門名->text(), QStringLiteral("営業部"));
    EXPECT_FALSE(ctx().screen.新規フラグ);
}

TEST_P(ReadAndSave, ABlankPinComesUpEmptyAndAStoredOneReadable) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "INSERT INTO M担当者 (コード,姓,名,氏名,事業所コード,部門コード,セクションコード,役職コード,暗証番号) VALUES "
        "('00002','鈴木','一郎','鈴木 一郎','000','003','003','05','  ')")));
    start();
    readExisting();
    type(form->暗証番号, QStringLiteral("4321"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    const QStringList stored =
        rows(QStringLiteral("SELECT 暗証番号 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("暗証番号")});
    ASSERT_EQ(stored.size(), 1);
    EXPECT_FALSE(stored.first().isEmpty());
    EXPECT_NE(stored.first(), QStringLiteral("4321")); // enciphered in the table
    readExisting();
    EXPECT_EQ(form->暗証番号->text(), QStringLiteral("4321"));
    type(form->コード, QStringLiteral("2"));
    tab();
    EXPECT_EQ(form->姓->text(), QStringLiteral("鈴木"));
    EXPECT_EQ(form->暗証番号->text(), QString());
}

TEST_P(ReadAndSave, ABirthDateBeforeTheErasComesUpInWesternYears) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 生年月日 = '18500203' WHERE コード = '00001'")));
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM K年号区分 WHERE 区分 = '0'")));
    start();
    readExisting();
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("0"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("1850"));
    EXPECT_EQ(form->生年月日月->text(), QStringLiteral("02"));
    EXPECT_EQ(form->生年月日日->text(), QStringLiteral("03"));
}

// ---- saving

TEST_P(ReadAndSave, TheSecondOfTwoSavesOfOneNewCodeTakesTheNextWithoutAWord) {
    start();
    type(form->コード, QStringLiteral("50"));
    tab();
    typeCodes();
    type(form->姓, QStringLiteral("後藤"));
    tab();
    // Another user saves the same code meanwhile.
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("INSERT INTO M担当者 (コード,姓) VALUES ('00050','先客')")));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(rows(QStringLiteral("SELECT コード, 姓 FROM M担当者 WHERE コード >= '00050' ORDER BY コード"),
                   {QStringLiteral("コード"), QStringLiteral("姓")}),
              (QStringList{QStringLiteral("00050|先客"), QStringLiteral("00051|後藤")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT 赤黒区分, コード FROM L担当者"), {QStringLiteral("赤黒区分"), QStringLiteral("コード")}),
              QStringList{QStringLiteral("1|00051")});
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(ReadAndSave, TheLastCodeTakenGoesOnAtTenThousand) {
    start();
    type(form->コード, QStringLiteral("99999"));
    tab();
    ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    typeCodes();
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("INSERT INTO M担当者 (コード,姓) VALUES ('99999','先客')")));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT コード, 姓 FROM M担当者 WHERE コード IN ('99999', '10000') ORDER BY コード"),
                   {QStringLiteral("コード"), QStringLiteral("姓")}),
              (QStringList{QStringLiteral("10000|"), QStringLiteral("99999|先客")}));
}

TEST_P(ReadAndSave, AQuoteInTheSurnameIsDoubledInTheStatement) {
    start();
    readExisting();
    type(form->姓, QStringLiteral("O'Hara"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT 姓, 氏名 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("姓"), QStringLiteral("氏名")}),
              QStringList{QStringLiteral("O'Hara|O'Hara 太郎")});
    const QStringList history = tree->history();
    const auto update = std::find_if(history.begin(), history.end(),
                                     [](const QString& row) { return row.contains(QStringLiteral("|出力終了 UPDATE M担当者 SET")); });
    ASSERT_NE(update, history.end());
    // The statement had the quote doubled; the history doubles it once more.
    EXPECT_TRUE(update->contains(QStringLiteral(",姓 = ''O''''Hara''")));
}

TEST_P(ReadAndSave, WithoutThePersonnelLinkTheEmployeeCodeOfTheRowPassesThroughTheSave) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 社員コード = '00123' WHERE コード = '00001'")));
    start();
    ASSERT_FALSE(ctx().人事連携フラグ);
    readExisting();
    EXPECT_TRUE(form->社員コード->isHidden());
    EXPECT_TRUE(form->btn_社員コード->isHidden());
    type(form->姓, QStringLiteral("山下"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    EXPECT_EQ(rows(QStringLiteral("SELECT 姓, 社員コード FROM M担当者 WHERE コード = '00001'"),
                   {QStringLiteral("姓"), QStringLiteral("社員コード")}),
              QStringList{QStringLiteral("山下|00123")});
    const QStringList history = tree->history();
    const auto update = std::find_if(history.begin(), history.end(), [](const QString& row) {
        return row.contains(QStringLiteral("|出力終了 UPDATE M担当者 SET"));
    });
    ASSERT_NE(update, history.end());
    EXPECT_TRUE(update->contains(QStringLiteral(",社員コード = ''00123''"))) << update->toStdString();
    // Both log rows carry it: the red one from the row, the black one from the card.
    EXPECT_EQ(rows(QStringLiteral("SELECT 赤黒区分, 社員コード FROM L担当者 ORDER BY 保守履歴No"),
                   {QStringLiteral("赤黒区分"), QStringLiteral("社員コード")}),
              (QStringList{QStringLiteral("0|00123"), QStringLiteral("1|00123")}));
}

TEST_P(ReadAndSave, AQuoteInTheTelephoneIsNotDoubledAndTheFailureIsReported) {
    start();
    type(form->コード, QStringLiteral("60"));
    tab();
    typeCodes();
    // The field takes no quote; the record can hold one.
    ctx().担当者情報.電話 = QStringLiteral("03'1234-5678");
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("登録できませんでした。"));
    EXPECT_EQ(form->コード->text(), QStringLiteral("00060"));
    EXPECT_EQ(count(QStringLiteral("M担当者 WHERE コード = '00060'")), 0);
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
    const QStringList history = tree->history();
    const auto error = std::find_if(history.begin(), history.end(),
                                    [](const QString& row) { return row.contains(QStringLiteral("|エラー INSERT INTO M担当者 ")); });
    ASSERT_NE(error, history.end());
    EXPECT_TRUE(error->contains(QStringLiteral(",''03''1234-5678'',")));
}

TEST_P(ReadAndSave, TheTelephoneIsStoredWithItsDigits) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    type(form->電話, QStringLiteral("(03)1234-5678"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT 電話, 電話番号 FROM M担当者 WHERE コード = '00001'"),
                   {QStringLiteral("電話"), QStringLiteral("電話番号")}),
              QStringList{QStringLiteral("(03)1234-5678|0312345678")});
}

TEST_P(ReadAndSave, ASaveOfTheOneRecordAProgramAskedForEndsTheProgram) {
    start(QStringLiteral("00000001"));
    ctx().link.起動連携情報 = QStringLiteral("00000001");
    ctx().link.発信プログラムID = QStringLiteral("受注登録");
    type(form->姓, QStringLiteral("山下"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    EXPECT_THROW(QTest::mouseClick(form->btn_登録, Qt::LeftButton), ProcessEnded);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    EXPECT_EQ(rows(QStringLiteral("SELECT 姓 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("姓")}),
              QStringList{QStringLiteral("山下")});
    EXPECT_TRUE(tree->history().last().endsWith(QStringLiteral("|終了")));
    // An update owes no code to the caller.
    EXPECT_EQ(tree->configRows(QStringLiteral("SELECT 受信プログラムID, 終了連携情報 FROM プログラム連携情報 WHERE 発信プログラムID = '受注登録'"),
                               {QStringLiteral("受信プログラムID"), QStringLiteral("終了連携情報")}),
              QStringList{QStringLiteral("担当者登録|")});
}

TEST_P(ReadAndSave, ANewRecordSavedForACallerEndsTheProgramAndAnswersTheCode) {
    start(QStringLiteral("00000070"));
    ctx().link.起動連携情報 = QStringLiteral("00000070");
    ctx().link.発信プログラムID = QStringLiteral("受注登録");
    type(form->コード, QStringLiteral("70"));
    tab();
    typeCodes();
    type(form->姓, QStringLiteral("中野"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    EXPECT_THROW(QTest::mouseClick(form->btn_登録, Qt::LeftButton), ProcessEnded);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(ctx().link.終了連携情報, QStringLiteral("00070"));
    EXPECT_EQ(tree->configRows(QStringLiteral("SELECT 終了連携情報 FROM プログラム連携情報 WHERE 発信プログラムID = '受注登録'"),
                               {QStringLiteral("終了連携情報")}),
              QStringList{QStringLiteral("00070")});
}

// ---- the maintenance log

TEST_P(ReadAndSave, ANewRecordLeavesOneBlackRow) {
    start();
    type(form->コード, QStringLiteral("40"));
    tab();
    typeCodes();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM L担当者"), kLogColumns),
              QStringList{QStringLiteral("000|00000001|1|00040||")});
}

TEST_P(ReadAndSave, AnUpdateLeavesARedAndABlackRowWithConsecutiveNumbers) {
    start();
    readExisting();
    type(form->姓, QStringLiteral("山下"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM L担当者") + logOrder(), kLogColumns),
              (QStringList{QStringLiteral("000|00000001|0|00001|山田|20261121 093000"),
                           QStringLiteral("000|00000002|1|00001|山下|20261121 093000")}));
}

TEST_P(ReadAndSave, AnUpdateOfARowDeletedMeanwhileWritesNoRedRow) {
    start();
    readExisting();
    type(form->姓, QStringLiteral("山下"));
    tab();
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM M担当者 WHERE コード = '00001'")));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    // The UPDATE touched nothing and counts as done: the black row follows.
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(count(QStringLiteral("M担当者 WHERE コード = '00001'")), 0);
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM L担当者"), kLogColumns),
              QStringList{QStringLiteral("000|00000002|1|00001|山下|20261121 093000")});
}

TEST_P(ReadAndSave, WithoutItsHistoryNumberRowTheLogRowTakesZeros) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM B履歴番号情報 WHERE 基本ID = '210'")));
    start();
    type(form->コード, QStringLiteral("40"));
    tab();
    typeCodes();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_TRUE(tree->messages.texts().contains(QStringLiteral("番号情報に問題が発生設定できませんでした。")));
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM L担当者"), kLogColumns),
              QStringList{QStringLiteral("000|00000000|1|00040||")});
    EXPECT_EQ(count(QStringLiteral("M担当者 WHERE コード = '00040'")), 1);
}

// ---- the telephone directory

TEST_P(ReadAndSave, TwoFormsOfOneNumberKeyOnTheSameDigits) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    type(form->電話, QStringLiteral("03-1234-5678"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    const QStringList columns{QStringLiteral("電話"), QStringLiteral("名称"), QStringLiteral("電話番号"),
                              QStringLiteral("法人個人区分"), QStringLiteral("登録日付"), QStringLiteral("更新日付")};
    const QString now = QStringLiteral("20261121 093000");
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M電話番号 WHERE 電話番号 = '0312345678'"), columns),
              QStringList{QStringLiteral("03-1234-5678|山田 太郎|0312345678|0|") + now + QStringLiteral("|~")});
    type(form->コード, QStringLiteral("2"));
    tab();
    typeCodes();
    type(form->姓, QStringLiteral("鈴木"));
    type(form->名, QStringLiteral("次郎"));
    tab();
    form->tab_詳細->setCurrentIndex(1);
    type(form->電話, QStringLiteral("(03)1234-5678"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(tree->messages.texts().last(), QStringLiteral("登録しますか"));
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M電話番号 WHERE 電話番号 = '0312345678'"), columns),
              QStringList{QStringLiteral("(03)1234-5678|鈴木 次郎|0312345678|0|") + now + QStringLiteral("|") + now});
}

TEST_P(ReadAndSave, ANumberOfSixDigitsAddsNothing) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    type(form->電話, QStringLiteral("(12)3456"));
    tab();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    ASSERT_EQ(rows(QStringLiteral("SELECT 電話 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("電話")}),
              QStringList{QStringLiteral("(12)3456")});
    EXPECT_EQ(count(QStringLiteral("M電話番号")), 0);
}

INSTANTIATE_TEST_SUITE_P(Engines, ReadAndSave, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
