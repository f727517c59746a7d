// The staff card printed and previewed by the report program, and mail.

#include "staff_fixture.h"

#include "staff/mod担当者印刷.h"

using testdb::Engine;

namespace {

using Printing = StaffFixture;

TEST_P(Printing, PrintAsksAndStartsTheReportProgramWithItsFields) {
    start();
    readExisting();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_印刷, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("印刷しますか?")});
    // Office of the run, mode, office from-to, the fixed pairs, staff from-to, the two classes.
    EXPECT_EQ(tree->desktop.started,
              QStringList{tree->path(QStringLiteral("prgbin/担当者カード")) +
                          QStringLiteral("|00000000000009990009990099000010000101")});
}

TEST_P(Printing, PreviewAnsweredNoStartsNothing) {
    start();
    readExisting();
    tree->messages.answers = {ui::Answer::No};
    QTest::mouseClick(form->btn_プレビュ, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("プレビュしますか?")});
    EXPECT_TRUE(tree->desktop.started.isEmpty());
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_プレビュ, Qt::LeftButton);
    ASSERT_EQ(tree->desktop.started.size(), 1);
    EXPECT_TRUE(tree->desktop.started.first().endsWith(QStringLiteral("|00010000000009990009990099000010000101")))
        << tree->desktop.started.first().toStdString();
}

TEST_P(Printing, CodeOfThreeCharactersIsPaddedToFiveWithBlanks) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,社員区分) VALUES "
        "('123','三文字','01','003','003','05','2','3')")));
    start(QStringLiteral("000123"));
    ASSERT_EQ(form->コード->text(), QStringLiteral("123"));
    // (Leaving the code field would pad the code to 00123 and read that: the fields are built from the record.)
    EXPECT_EQ(担当者カード引数(ctx(), QStringLiteral("0")), QStringLiteral("000001 01 0009990009990099123  123  23"));
}

TEST_P(Printing, EmptyMailFieldMovesTheFocusAndOpensNothing) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    erase(form->EMAIL);
    QTest::mouseClick(form->btn_EMAIL, Qt::LeftButton);
    EXPECT_TRUE(tree->desktop.opened.isEmpty());
    EXPECT_EQ(focused(), QStringLiteral("EMAIL"));
}

TEST_P(Printing, MailGoesToTheDesktopAsALink) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    QTest::mouseClick(form->btn_EMAIL, Qt::LeftButton);
    EXPECT_EQ(tree->desktop.opened, QStringList{QStringLiteral("mailto:yamada@example.jp|")});
}

INSTANTIATE_TEST_SUITE_P(Engines, Printing, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
