// The run of the report program inside the test: where the cards go by mode
// (printer, preview, the question when no printer is installed), the rows it
// writes, the statement in each dialect, and the era forms of its dates.

#include "report/mod担当者カード出力.h"
#include "report/mod担当者カード読込.h"
#include "report_fixture.h"
#include "shell/modデータ処理.h"

#include <QImage>

using testdb::Engine;
using namespace report_test;

namespace {

// An output that keeps what it was asked for and paints every page it is given
// on a small picture, as a printer or the preview would.
class RecordingOutput : public ui::ReportOutput {
public:
    bool installed = false;
    ui::PrintOutcome outcome = ui::PrintOutcome::Printed;
    QStringList calls;
    QList<QImage> painted;

    bool printerInstalled() override {
        calls.append(QStringLiteral("printer?"));
        return installed;
    }
    ui::PrintOutcome print(ui::ReportPages& pages, const QString& title) override {
        calls.append(QStringLiteral("print|%1|%2").arg(title).arg(pages.pageCount()));
        paint(pages);
        return outcome;
    }
    void preview(ui::ReportPages& pages, const QString& title) override {
        calls.append(QStringLiteral("preview|%1|%2").arg(title).arg(pages.pageCount()));
        paint(pages);
    }
    QString writePdf(ui::ReportPages& pages, const QString& title, const QString& file) override {
        calls.append(QStringLiteral("pdf|%1|%2").arg(title).arg(pages.pageCount()));
        return ui::writePdfFile(pages, title, file);
    }

private:
    void paint(ui::ReportPages& pages) {
        for (int i = 0; i < pages.pageCount(); ++i) {
            // A4 at 50 dots per inch.
            QImage sheet(413, 585, QImage::Format_RGB32);
            sheet.setDotsPerMeterX(1969);
            sheet.setDotsPerMeterY(1969);
            sheet.fill(Qt::white);
            QPainter painter(&sheet);
            pages.paintPage(painter, i);
            painter.end();
            painted.append(sheet);
        }
    }
};

// Dark dots of a painted sheet: a card with its rules and text has many.
int darkDots(const QImage& sheet) {
    int n = 0;
    for (int y = 0; y < sheet.height(); ++y)
        for (int x = 0; x < sheet.width(); ++x)
            n += qGray(sheet.pixel(x, y)) < 128 ? 1 : 0;
    return n;
}

class ReportRun : public ReportFixture {
protected:
    void SetUp() override {
        ReportFixture::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"), QStringLiteral("000"));
        addStaff(QStringLiteral("00002"), QStringLiteral("鈴木 花子"), QStringLiteral("000"));
    }

    // Runs the report in this process with the text as its command line.
    int run(const QString& text, const QString& pdf = QString()) {
        tree->sys.line = text;
        Context& ctx = tree->newContext(担当者カードプログラムID());
        担当者カード条件 c;
        QString error;
        EXPECT_TRUE(担当者カード引数parse(text, c, error)) << error.toStdString();
        return 担当者カードrun(ctx, output, c, pdf);
    }

    QString both(const QString& mode) const {
        return rangeText(QStringLiteral("000"), QStringLiteral("00001"), QStringLiteral("00002"), mode);
    }

    RecordingOutput output;
};

TEST_P(ReportRun, ModeOneOpensThePreviewWithACardPerRecord) {
    EXPECT_EQ(run(both(QStringLiteral("1"))), 0);
    EXPECT_EQ(output.calls, QStringList{QStringLiteral("preview|担当者カード|2")});
    ASSERT_EQ(output.painted.size(), 2);
    EXPECT_GT(darkDots(output.painted.at(0)), 2000);
    EXPECT_TRUE(tree->messages.texts().isEmpty());
    const QStringList history = reportHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_TRUE(history.at(1).startsWith(QStringLiteral("出力終了 SELECT")));
}

TEST_P(ReportRun, ModeZeroPrintsAfterThePrintDialog) {
    output.installed = true;
    EXPECT_EQ(run(both(QStringLiteral("0"))), 0);
    EXPECT_EQ(output.calls, (QStringList{QStringLiteral("printer?"), QStringLiteral("print|担当者カード|2")}));
    EXPECT_EQ(reportHistory().size(), 3);
}

TEST_P(ReportRun, ACancelledPrintDialogOutputsNothing) {
    output.installed = true;
    output.outcome = ui::PrintOutcome::Cancelled;
    EXPECT_EQ(run(both(QStringLiteral("0"))), 0);
    EXPECT_EQ(reportHistory(),
              (QStringList{QStringLiteral("開始 ") + both(QStringLiteral("0")), QStringLiteral("終了")}));
}

TEST_P(ReportRun, AFailedPrintIsToldAndLogged) {
    output.installed = true;
    output.outcome = ui::PrintOutcome::Failed;
    EXPECT_EQ(run(both(QStringLiteral("0"))), 4);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("印刷できませんでした。")});
    const QStringList history = reportHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history.at(1), QStringLiteral("エラー 印刷できませんでした。"));
}

TEST_P(ReportRun, WithoutAPrinterThePreviewIsOffered) {
    tree->messages.answers = {ui::Answer::Yes};
    EXPECT_EQ(run(both(QStringLiteral("0"))), 0);
    ASSERT_EQ(tree->messages.shown.size(), 1);
    EXPECT_EQ(tree->messages.shown.first().text, QStringLiteral("プリンタがインストールされていません。") + QChar(13) +
                                                     QStringLiteral("プレビュしますか?"));
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::YesNo);
    EXPECT_EQ(output.calls, (QStringList{QStringLiteral("printer?"), QStringLiteral("preview|担当者カード|2")}));
    EXPECT_EQ(reportHistory().size(), 3);
}

TEST_P(ReportRun, WithoutAPrinterAndNoPreviewNothingComesOut) {
    tree->messages.answers = {ui::Answer::No};
    EXPECT_EQ(run(both(QStringLiteral("0"))), 0);
    EXPECT_EQ(output.calls, QStringList{QStringLiteral("printer?")});
    EXPECT_EQ(reportHistory().size(), 2);
}

TEST_P(ReportRun, ClassesSelectTheirStaffAndAStarTakesEvery) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 在籍区分 = '2' WHERE コード = '00002'")));
    担当者カード条件 c;
    QString error;
    ASSERT_TRUE(担当者カード引数parse(both(QStringLiteral("1")), c, error));
    c.在籍区分 = QStringLiteral("2");
    EXPECT_EQ(run(担当者カード引数make(c)), 0);
    EXPECT_EQ(output.calls, QStringList{QStringLiteral("preview|担当者カード|1")});
    output.calls.clear();
    c.在籍区分 = QStringLiteral("*");
    EXPECT_EQ(run(担当者カード引数make(c)), 0);
    EXPECT_EQ(output.calls, QStringList{QStringLiteral("preview|担当者カード|2")});
}

TEST_P(ReportRun, DatesComeInTheirEra) {
    Context& ctx = tree->newContext(担当者カードプログラムID());
    ASSERT_TRUE(環境DBopen(ctx));
    ASSERT_TRUE(業務DBopen(ctx));
    const 和暦表示 era(ctx);
    EXPECT_EQ(era.日付(QStringLiteral("20261123")), QStringLiteral("令和8年11月23日"));
    EXPECT_EQ(era.日付(QStringLiteral("20190501")), QStringLiteral("令和元年5月1日"));
    EXPECT_EQ(era.日付(QStringLiteral("20190430")), QStringLiteral("平成31年4月30日"));
    EXPECT_EQ(era.日付(QStringLiteral("19890107")), QStringLiteral("昭和64年1月7日"));
    EXPECT_EQ(era.日付(QStringLiteral("19121231")), QStringLiteral("大正元年12月31日"));
    // Before the first era the Western calendar.
    EXPECT_EQ(era.日付(QStringLiteral("18000101")), QStringLiteral("1800年1月1日"));
    EXPECT_EQ(era.日付(QString()), QString());
    EXPECT_EQ(era.日付(QStringLiteral("2026011")), QStringLiteral("2026011"));
    EXPECT_EQ(和暦表示::満年齢(QStringLiteral("19800115"), QStringLiteral("20260114")), 45);
    EXPECT_EQ(和暦表示::満年齢(QStringLiteral("19800115"), QStringLiteral("20260115")), 46);
    EXPECT_EQ(和暦表示::満年齢(QString(), QStringLiteral("20260115")), -1);
    データ処理term(ctx);
}

INSTANTIATE_TEST_SUITE_P(Engines, ReportRun, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

TEST(ReportStatement, TheWholeRangeOfAFieldSetsNoConditionAndBlankEndsAreOpen) {
    担当者カード条件 c;
    c.事業所コード自 = QStringLiteral("001");
    c.事業所コード至 = QStringLiteral("001");
    c.担当者コード自 = QStringLiteral("123");
    c.担当者コード至 = QString();
    c.在籍区分 = QStringLiteral("*");
    c.社員区分 = QStringLiteral("1");
    const QString sql = 担当者カードSQLmake(c, QStringLiteral("S"));
    EXPECT_TRUE(
        sql.endsWith(QStringLiteral(" WHERE M担当者.事業所コード >= '001' AND M担当者.事業所コード <= '001' AND "
                                    "M担当者.コード >= '123' AND M担当者.社員区分 = '1' ORDER BY M担当者.コード")))
        << sql.toStdString();
    EXPECT_FALSE(sql.contains(QStringLiteral("部門コード >=")));
    EXPECT_FALSE(sql.contains(QStringLiteral("在籍区分 =")));
    const QString o = 担当者カードSQLmake(c, QStringLiteral("O"));
    EXPECT_TRUE(o.contains(QStringLiteral("K社員区分.区分(+) = M担当者.社員区分 AND M担当者.事業所コード >= '001'")))
        << o.toStdString();
    EXPECT_TRUE(担当者カードSQLmake(c, QStringLiteral("X")).isEmpty());
}

// The comma joins with their markers, on the server.
TEST(ReportDialect, TheCommaJoinsReadTheStaffWithTheirNames) {
    STAFF_REQUIRE_ENGINE(Engine::Postgres);
    TestInstallation tree(Engine::Postgres, QStringLiteral("root"), QStringLiteral("O"));
    ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
    ASSERT_TRUE(tree.mainExecute(
        QStringLiteral("INSERT INTO M担当者 "
                       "(コード,氏名,性別区分,事業所コード,部門コード,セクションコード,役職コード,在籍区分,社員区分) "
                       "VALUES ('00001','山田 太郎','2','001','003','003','05','0','1'),"
                       "('00002','部門 なし','1','001','','','','0','1')")));
    Context& ctx = tree.newContext(担当者カードプログラムID());
    ASSERT_TRUE(環境DBopen(ctx));
    ASSERT_TRUE(業務DBopen(ctx));
    ASSERT_TRUE(ユーザ情報read(ctx));
    ASSERT_EQ(ctx.conn.db, QStringLiteral("O"));
    担当者カード条件 c;
    c.事業所コード自 = QStringLiteral("001");
    c.事業所コード至 = QStringLiteral("001");
    c.在籍区分 = QStringLiteral("0");
    QList<担当者カード行> rows;
    QString sql;
    ASSERT_TRUE(担当者カード読込(ctx, c, rows, sql));
    EXPECT_TRUE(sql.contains(QStringLiteral("M事業所.コード(+) = M担当者.事業所コード")));
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.at(0).事業所名, QStringLiteral("大阪支店"));
    EXPECT_EQ(rows.at(0).性別名, QStringLiteral("女"));
    EXPECT_EQ(rows.at(0).在籍区分名, QStringLiteral("在籍"));
    EXPECT_EQ(rows.at(0).社員区分名, QStringLiteral("正社員"));
    EXPECT_FALSE(rows.at(0).部門名.isEmpty());
    // A record without its organisation comes all the same.
    EXPECT_EQ(rows.at(1).氏名, QStringLiteral("部門 なし"));
    EXPECT_TRUE(rows.at(1).部門名.isEmpty());
    データ処理term(ctx);
}

} // namespace
