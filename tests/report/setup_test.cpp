// The installation tool places the report program in prgbin beside the
// program, under the name the card starts it by.

#include "report_fixture.h"

#include <QDir>
#include <QFileInfo>

using namespace report_test;

namespace {

class SetupPlacesTheReportProgram : public ::testing::Test {
protected:
    // A built program and the report program beside it, as the build leaves them.
    void SetUp() override {
        ASSERT_TRUE(work.isValid());
        ASSERT_TRUE(QDir().mkpath(work.filePath(QStringLiteral("build"))));
        program = work.filePath(QStringLiteral("build/担当者登録"));
        QFile file(program);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("program");
        file.close();
    }

    ProgramRun setup(const QStringList& more) {
        return runProgram(QStringLiteral(STAFF_SETUP_TOOL),
                          QStringList{QStringLiteral("--root"), root(), QStringLiteral("--postcodes"),
                                      QStringLiteral("fixture")} +
                              more);
    }
    QString root() const { return work.filePath(QStringLiteral("tree")); }
    QString placed() const { return root() + QStringLiteral("/prgbin/担当者カード"); }

    QTemporaryDir work;
    QString program;
};

TEST_F(SetupPlacesTheReportProgram, FoundBesideTheProgram) {
    ASSERT_TRUE(QFile::copy(QStringLiteral(STAFF_REPORT_PROGRAM), work.filePath(QStringLiteral("build/担当者カード"))));
    const ProgramRun run = setup({QStringLiteral("--program"), program});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(QFileInfo(root() + QStringLiteral("/prgbin/担当者登録")).isFile());
    ASSERT_TRUE(QFileInfo(placed()).isFile());
    EXPECT_TRUE(QFileInfo(placed()).isExecutable());
    EXPECT_EQ(QFileInfo(placed()).size(), QFileInfo(QStringLiteral(STAFF_REPORT_PROGRAM)).size());
}

TEST_F(SetupPlacesTheReportProgram, NamedByItsOptionUnderTheNameTheCardStarts) {
    const QString report = work.filePath(QStringLiteral("elsewhere/report-build"));
    ASSERT_TRUE(QDir().mkpath(work.filePath(QStringLiteral("elsewhere"))));
    ASSERT_TRUE(QFile::copy(QStringLiteral(STAFF_REPORT_PROGRAM), report));
    const ProgramRun run = setup({QStringLiteral("--program"), program, QStringLiteral("--report-program"), report});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(QFileInfo(placed()).isFile());
}

TEST_F(SetupPlacesTheReportProgram, NoneBesideTheProgramNoneIsPlaced) {
    const ProgramRun run = setup({QStringLiteral("--program"), program});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(placed()));
}

TEST_F(SetupPlacesTheReportProgram, AMissingFileIsRefusedBeforeAnythingIsMade) {
    const QString missing = work.filePath(QStringLiteral("no-such-report"));
    const ProgramRun run = setup({QStringLiteral("--report-program"), missing});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("帳票プログラムファイルが見つかりません: ") + missing))
        << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(root()));
}

} // namespace
