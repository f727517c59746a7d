// Deleting a staff record through the card: the gate, the use check, the
// question, the red log row, the photos and the seal.

#include "access/msg暗証番号確認.h"
#include "actions_fixture.h"

using testdb::Engine;

namespace {

using Deleting = StaffActions;

const QString kDeleteQuestion = QStringLiteral("削除しますか?");

TEST_P(Deleting, TheQuestionDefaultsToNoAndEnterOnItKeepsTheRow) {
    start();
    readExisting();
    ASSERT_TRUE(form->btn_削除->isEnabled());
    // No answer queued: the box is answered with its default button, as Enter does.
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    ASSERT_EQ(tree->messages.shown.size(), 1);
    EXPECT_EQ(tree->messages.shown.first().text, kDeleteQuestion);
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::YesNo);
    EXPECT_EQ(tree->messages.shown.first().defaultButton, 2);
    EXPECT_EQ(codes(), (QStringList{QStringLiteral("00001"), operatorCode()}));
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 太郎"));
    // Back to the field left for the button.
    EXPECT_EQ(focused(), QStringLiteral("姓"));
}

TEST_P(Deleting, YesRemovesTheRowLeavesARedRowAndClearsTheCard) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "UPDATE M担当者 SET ユーザID = 'suzukiPC-09', 登録日付 = '20200401 080000', 更新日付 = '20210401 080000', "
        "住所A = '東京都千代田区' WHERE コード = '00001'")));
    start();
    readExisting();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts(), QStringList{kDeleteQuestion});
    EXPECT_EQ(codes(), QStringList{operatorCode()});
    EXPECT_TRUE(inHistory(QStringLiteral("DELETE FROM M担当者 WHERE コード = '00001'")));
    const QStringList log = rows(QStringLiteral("SELECT * FROM L担当者"),
                                 {QStringLiteral("赤黒区分"), QStringLiteral("コード"), QStringLiteral("氏名"),
                                  QStringLiteral("住所A"), QStringLiteral("生年月日"), QStringLiteral("EMAIL"),
                                  QStringLiteral("ユーザID"), QStringLiteral("登録日付"), QStringLiteral("更新日付")});
    EXPECT_EQ(log, QStringList{QStringLiteral("0|00001|山田 太郎|東京都千代田区|19800115|yamada@example.jp|"
                                              "suzukiPC-09|20200401 080000|20261121 093000")});
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(form->氏名->text(), QString());
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_FALSE(ctx().screen.入力フラグ);
    EXPECT_FALSE(form->tab_詳細->isEnabled());
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(Deleting, ALeftEnabledButtonOnTheEmptyCardAsksThenFindsNoRowAndClears) {
    start();
    ASSERT_EQ(ctx().op.操作担当者コード, operatorCode());
    readExisting();
    ASSERT_TRUE(form->btn_削除->isEnabled());
    // Clear keeps the buttons as they were: the delete stays enabled on the empty card.
    QTest::mouseClick(form->btn_画面クリア, Qt::LeftButton);
    ASSERT_EQ(form->コード->text(), QString());
    ASSERT_TRUE(form->btn_削除->isEnabled());
    const qsizetype historyBefore = tree->history().size();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    // No table holds the empty code: the question comes, with No as its default.
    ASSERT_EQ(tree->messages.shown.size(), 1);
    EXPECT_EQ(tree->messages.shown.first().text, kDeleteQuestion);
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::YesNo);
    EXPECT_EQ(tree->messages.shown.first().defaultButton, 2);
    // No row to log and none deleted; the statement ran all the same, and only it.
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
    EXPECT_EQ(codes(), (QStringList{QStringLiteral("00001"), operatorCode()}));
    const QStringList after = tree->history().mid(historyBefore);
    ASSERT_EQ(after.size(), 1) << after.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(after.first().endsWith(QStringLiteral("|出力終了 DELETE FROM M担当者 WHERE コード = ''''")))
        << after.first().toStdString();
    // The result 7 clears the card: the notice empty, the focus on the code.
    EXPECT_EQ(ctx().screen.処理結果区分, 7);
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_FALSE(ctx().screen.入力フラグ);
    EXPECT_FALSE(form->tab_詳細->isEnabled());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(Deleting, ThePhotosOfTheCodeAndTheSealGoWithTheRow) {
    start();
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 担当者印file = '00001.png'")));
    for (const char* name :
         {"担当者/00001.jpg", "担当者/00001_001.jpg", "担当者/00002.jpg", "担当者印/00001.png", "担当者印/00002.png"})
        makeFile(photoPath(QString::fromUtf8(name)));
    readExisting();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    ASSERT_EQ(codes(), QStringList{operatorCode()});
    EXPECT_FALSE(QFile::exists(photoPath(QStringLiteral("担当者/00001.jpg"))));
    EXPECT_FALSE(QFile::exists(photoPath(QStringLiteral("担当者/00001_001.jpg"))));
    EXPECT_FALSE(QFile::exists(photoPath(QStringLiteral("担当者印/00001.png"))));
    // Other staff members' files stay.
    EXPECT_TRUE(QFile::exists(photoPath(QStringLiteral("担当者/00002.jpg"))));
    EXPECT_TRUE(QFile::exists(photoPath(QStringLiteral("担当者印/00002.png"))));
}

TEST_P(Deleting, AFailingDeleteKeepsTheRowAndPhotosButTheSealFileGoes) {
    start();
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 担当者印file = '00001.png'")));
    makeFile(photoPath(QStringLiteral("担当者/00001.jpg")));
    makeFile(photoPath(QStringLiteral("担当者印/00001.png")));
    readExisting();
    // The table goes away under the card: the DELETE fails.
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("ALTER TABLE M担当者 RENAME TO M担当者旧")));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    EXPECT_EQ(rows(QStringLiteral("SELECT コード FROM M担当者旧 ORDER BY コード"), {QStringLiteral("コード")}),
              (QStringList{QStringLiteral("00001"), operatorCode()}));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("既に削除されています。削除できませんでした。"));
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(focused(), QStringLiteral("姓"));
    EXPECT_TRUE(QFile::exists(photoPath(QStringLiteral("担当者/00001.jpg"))));
    EXPECT_FALSE(QFile::exists(photoPath(QStringLiteral("担当者印/00001.png"))));
}

TEST_P(Deleting, ACodeInUseReportsTheFirstTableOfTheListAndIsNotDeleted) {
    start();
    readExisting();
    ASSERT_TRUE(form->btn_削除->isEnabled());
    // Another program starts using the code while the card shows it.
    useIn(QStringLiteral("M得意先"), QStringLiteral("00001"));
    useIn(QStringLiteral("T営業見積"), QStringLiteral("00001"));
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    ASSERT_EQ(tree->messages.shown.size(), 1);
    EXPECT_EQ(tree->messages.shown.first().text,
              QStringLiteral("削除できません。") + QChar(13) + QStringLiteral("情報として使用されています。"));
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::Ok);
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("営業見積に登録されています。"));
    EXPECT_EQ(codes(), (QStringList{QStringLiteral("00001"), operatorCode()}));
    EXPECT_EQ(focused(), QStringLiteral("btn_削除"));
}

TEST_P(Deleting, TheUseNoticeSurvivesAFieldExitWithoutANoticeOfItsOwn) {
    useIn(QStringLiteral("M得意先"), QStringLiteral("00001"));
    start();
    readExisting();
    // The code field writes its own notice over the use check's at once.
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_FALSE(form->btn_削除->isEnabled());
    change姓(QStringLiteral("山下"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("得意先に登録されています。"));
    EXPECT_FALSE(form->btn_削除->isEnabled());
}

TEST_P(Deleting, AGateGivenUpShowsNoRightAndDeletesNothing) {
    start();
    readExisting();
    ctx().pin.暗証番号有無 = 1;
    bool dialogShown = false;
    QTimer::singleShot(0, form.get(), [&dialogShown] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w->objectName() == QStringLiteral("msg暗証番号確認")) {
                dialogShown = true;
                dynamic_cast<msg暗証番号確認*>(w)->reject();
            }
    });
    QTest::mouseClick(form->btn_削除, Qt::LeftButton);
    EXPECT_TRUE(dialogShown);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("操作権限がありません。")});
    EXPECT_EQ(codes(), (QStringList{QStringLiteral("00001"), operatorCode()}));
    // The card's focus, for when it is active again after the dialog.
    ASSERT_NE(form->focusWidget(), nullptr);
    EXPECT_EQ(form->focusWidget()->objectName(), QStringLiteral("姓"));
}

TEST_P(Deleting, StartedForOneRecordASuccessfulDeleteEndsTheProgram) {
    start(QStringLiteral("00000001"));
    ASSERT_TRUE(ctx().screen.単独起動フラグ);
    tree->messages.answers = {ui::Answer::Yes};
    ASSERT_TRUE(form->btn_削除->isEnabled());
    EXPECT_THROW(QTest::mouseClick(form->btn_削除, Qt::LeftButton), ProcessEnded);
    EXPECT_EQ(codes(), QStringList{operatorCode()});
    EXPECT_TRUE(tree->history().last().endsWith(QStringLiteral("|終了")));
}

INSTANTIATE_TEST_SUITE_P(Engines, Deleting, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
