// The preview window: paging, zoom, print and saving as a PDF file, driven by
// its buttons on the offscreen screen.

#include "platform/ui/report_output.h"
#include "report_fixture.h"
#include "support/recording_messages.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace report_test;

namespace {

// Three sheets, each with its number in large type.
class NumberedPages : public ui::ReportPages {
public:
    int painted = 0;
    int pageCount() const override { return 3; }
    void paintPage(QPainter& painter, int page) override {
        ++painted;
        QFont font(QStringLiteral("Noto Sans CJK JP"));
        font.setPointSize(40);
        painter.setFont(font);
        painter.drawText(QRect(0, 0, painter.device()->width(), painter.device()->height()), Qt::AlignCenter,
                         QStringLiteral("第%1頁").arg(page + 1));
    }
};

class Preview : public ::testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<ui::PreviewWindow>(pages, QStringLiteral("担当者カード"), messages, dialogs, [this] {
            ++prints;
            return ui::PrintOutcome::Printed;
        });
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    NumberedPages pages;
    RecordingMessages messages;
    RecordingDialogs dialogs;
    int prints = 0;
    std::unique_ptr<ui::PreviewWindow> window;
    QTemporaryDir out;
};

TEST_F(Preview, ShowsEveryPageAndGoesFromPageToPage) {
    EXPECT_EQ(window->windowTitle(), QStringLiteral("担当者カード - プレビュ"));
    EXPECT_EQ(window->pageCount(), 3);
    EXPECT_GE(pages.painted, 3);
    EXPECT_EQ(window->lab_頁->text(), QStringLiteral("1 / 3 頁"));
    EXPECT_FALSE(window->btn_前頁->isEnabled());
    QTest::mouseClick(window->btn_次頁, Qt::LeftButton);
    EXPECT_EQ(window->currentPage(), 2);
    EXPECT_EQ(window->lab_頁->text(), QStringLiteral("2 / 3 頁"));
    QTest::mouseClick(window->btn_次頁, Qt::LeftButton);
    EXPECT_EQ(window->lab_頁->text(), QStringLiteral("3 / 3 頁"));
    EXPECT_FALSE(window->btn_次頁->isEnabled());
    QTest::mouseClick(window->btn_前頁, Qt::LeftButton);
    EXPECT_EQ(window->currentPage(), 2);
}

TEST_F(Preview, ZoomsInAndOutAndFitsThePageAgain) {
    const double fitted = window->zoomFactor();
    QTest::mouseClick(window->btn_拡大, Qt::LeftButton);
    EXPECT_GT(window->zoomFactor(), fitted);
    QTest::mouseClick(window->btn_縮小, Qt::LeftButton);
    QTest::mouseClick(window->btn_縮小, Qt::LeftButton);
    EXPECT_LT(window->zoomFactor(), fitted);
    QTest::mouseClick(window->btn_全体, Qt::LeftButton);
    EXPECT_NEAR(window->zoomFactor(), fitted, fitted * 0.01);
}

TEST_F(Preview, ThePrintButtonPrints) {
    QTest::mouseClick(window->btn_印刷, Qt::LeftButton);
    EXPECT_EQ(prints, 1);
}

TEST_F(Preview, SavesThePagesAsAPdfFile) {
    REQUIRE_POPPLER();
    // A name typed without its extension gets it.
    dialogs.files = {out.filePath(QStringLiteral("cards"))};
    QTest::mouseClick(window->btn_PDF保存, Qt::LeftButton);
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_TRUE(dialogs.asked.first().startsWith(QStringLiteral("save|PDFファイル (*.pdf)|*.pdf|0|")));
    const QString pdf = out.filePath(QStringLiteral("cards.pdf"));
    ASSERT_TRUE(QFile::exists(pdf));
    EXPECT_EQ(pdfPageCount(pdf), 3);
    const QStringList texts = pdfPages(pdf);
    ASSERT_EQ(texts.size(), 3);
    EXPECT_TRUE(texts.at(2).contains(QStringLiteral("第3頁")));
    EXPECT_TRUE(messages.texts().isEmpty());
}

TEST_F(Preview, ACancelledSaveWritesNothingAndAFailedOneSaysWhy) {
    dialogs.files = {QString()};
    QTest::mouseClick(window->btn_PDF保存, Qt::LeftButton);
    EXPECT_TRUE(QDir(out.path()).isEmpty());
    EXPECT_TRUE(messages.texts().isEmpty());
    const QString bad = out.filePath(QStringLiteral("missing/cards.pdf"));
    dialogs.files = {bad};
    QTest::mouseClick(window->btn_PDF保存, Qt::LeftButton);
    EXPECT_EQ(messages.texts(), QStringList{QStringLiteral("PDF ファイルを作成できません: ") + bad});
}

TEST_F(Preview, TheCloseButtonEndsTheWindow) {
    QTest::mouseClick(window->btn_閉じる, Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->result(), QDialog::Accepted);
}

} // namespace
