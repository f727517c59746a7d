// Text written into a PDF file reads back as the same characters, also the
// ideographs whose glyph a CJK font shares with a radical form.

#include "platform/ui/report_output.h"
#include "report_fixture.h"

using namespace report_test;

namespace {

class OneLine : public ui::ReportPages {
public:
    explicit OneLine(QString text) : text_(std::move(text)) {}
    int pageCount() const override { return 1; }
    void paintPage(QPainter& painter, int) override {
        int top = 600;
        for (const char16_t* family : {u"Noto Sans CJK JP", u"Noto Serif CJK JP"}) {
            QFont font(QString::fromUtf16(family));
            font.setPointSize(12);
            painter.setFont(font);
            painter.drawText(QRect(0, top, painter.device()->width(), 400), Qt::AlignCenter, text_);
            top += 600;
        }
    }

private:
    QString text_;
};

TEST(PdfText, IdeographsSharedWithRadicalFormsReadBackAsIdeographs) {
    REQUIRE_POPPLER();
    QTemporaryDir out;
    const QString text = QStringLiteral("長谷川 西田 日付 江戸川 青木 斉藤 亀井 母子 人事部 入社 生年月日 門脇 長");
    OneLine pages(text);
    const QString pdf = out.filePath(QStringLiteral("text.pdf"));
    ASSERT_EQ(ui::writePdfFile(pages, QStringLiteral("試験"), pdf), QString());
    const QStringList read = pdfPages(pdf);
    ASSERT_EQ(read.size(), 1);
    EXPECT_EQ(read.first().count(text), 2) << read.first().toStdString();
    EXPECT_EQ(pdfPageCount(pdf), 1);
}

} // namespace
