// From the card to the report program: what the print and preview buttons
// start is the program in prgbin with one argument, and the report program
// reads that argument back into the record's own fields and prints its card.

#include "report_fixture.h"
#include "staff/mod担当者印刷.h"
#include "staff/staff_fixture.h"

using testdb::Engine;
using namespace report_test;

namespace {

using CardToReport = StaffFixture;

// The one start the card made: the program and its arguments.
struct Started {
    QString program;
    QStringList arguments;
};

Started onlyStart(const TestInstallation& tree) {
    EXPECT_EQ(tree.desktop.startedArguments.size(), 1);
    if (tree.desktop.startedArguments.size() != 1)
        return {};
    const QString line = tree.desktop.started.first();
    return {line.left(line.indexOf(QLatin1Char('|'))), tree.desktop.startedArguments.first()};
}

TEST_P(CardToReport, PrintStartsTheReportProgramWhichReadsTheRecordsFieldsAndPrintsItsCard) {
    REQUIRE_POPPLER();
    start();
    readExisting();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_印刷, Qt::LeftButton);
    const Started s = onlyStart(*tree);
    EXPECT_EQ(s.program, tree->path(QStringLiteral("prgbin/担当者カード")));
    ASSERT_EQ(s.arguments.size(), 1) << "one argument text";

    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(s.arguments.first(), read, error)) << error.toStdString();
    EXPECT_EQ(read.操作事業所コード, ctx().run.操作事業所コード);
    EXPECT_EQ(read.モード, QStringLiteral("0"));
    EXPECT_EQ(read.事業所コード自, QStringLiteral("000"));
    EXPECT_EQ(read.事業所コード至, QStringLiteral("000"));
    EXPECT_EQ(read.部門コード自, QStringLiteral("000"));
    EXPECT_EQ(read.部門コード至, QStringLiteral("999"));
    EXPECT_EQ(read.セクションコード自, QStringLiteral("000"));
    EXPECT_EQ(read.セクションコード至, QStringLiteral("999"));
    EXPECT_EQ(read.役職コード自, QStringLiteral("00"));
    EXPECT_EQ(read.役職コード至, QStringLiteral("99"));
    EXPECT_EQ(read.担当者コード自, QStringLiteral("00001"));
    EXPECT_EQ(read.担当者コード至, QStringLiteral("00001"));
    EXPECT_EQ(read.在籍区分, QStringLiteral("0"));
    EXPECT_EQ(read.社員区分, QStringLiteral("1"));

    // The program the card names, started with what the card passed, prints that card.
    ASSERT_EQ(installProgram(*tree), s.program);
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("card.pdf"));
    const ProgramRun run = runProgram(s.program, {s.arguments.first(), QStringLiteral("--pdf"), pdf});
    ASSERT_FALSE(run.crashed);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList pages = pdfPages(pdf);
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(pages.first().contains(QStringLiteral("00001")));
    EXPECT_TRUE(pages.first().contains(QStringLiteral("山田 太郎")));
    EXPECT_TRUE(pages.first().contains(QStringLiteral("本社")));
    EXPECT_EQ(reportHistory(*tree).value(0), QStringLiteral("開始 ") + s.arguments.first());
}

TEST_P(CardToReport, PreviewPassesModeOne) {
    start();
    readExisting();
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_プレビュ, Qt::LeftButton);
    const Started s = onlyStart(*tree);
    ASSERT_EQ(s.arguments.size(), 1);
    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(s.arguments.first(), read, error)) << error.toStdString();
    EXPECT_EQ(read.モード, QStringLiteral("1"));
    EXPECT_EQ(read.担当者コード自, QStringLiteral("00001"));
}

TEST_P(CardToReport, ACodeOfThreeCharactersTravelsPaddedAndFindsItsRecord) {
    REQUIRE_POPPLER();
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("INSERT INTO M担当者 "
                       "(コード,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,社員区分) VALUES "
                       "('123','三文字','001','003','003','05','2','3')")));
    start(QStringLiteral("000123"));
    ASSERT_EQ(form->コード->text(), QStringLiteral("123"));
    // The print button's own routine: a click would first leave the code field,
    // which pads the code to 00123 and reads that.
    担当者カード印刷(ctx());
    const Started s = onlyStart(*tree);
    ASSERT_EQ(s.arguments.size(), 1);
    EXPECT_EQ(s.arguments.first(), QStringLiteral("00000010010009990009990099123  123  23"));

    担当者カード条件 read;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(s.arguments.first(), read, error)) << error.toStdString();
    EXPECT_EQ(read.担当者コード自, QStringLiteral("123"));
    EXPECT_EQ(read.担当者コード至, QStringLiteral("123"));
    EXPECT_EQ(read.在籍区分, QStringLiteral("2"));
    EXPECT_EQ(read.社員区分, QStringLiteral("3"));

    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("card.pdf"));
    const ProgramRun run = runProgram(installProgram(*tree), {s.arguments.first(), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList pages = pdfPages(pdf);
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(pages.first().contains(QStringLiteral("三文字")));
    EXPECT_TRUE(pages.first().contains(QStringLiteral("大阪支店")));
}

INSTANTIATE_TEST_SUITE_P(Engines, CardToReport, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
