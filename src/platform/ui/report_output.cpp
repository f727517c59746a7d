#include "platform/ui/report_output.h"

#include "platform/ui/dialogs.h"
#include "platform/ui/messages.h"
#include "platform/ui/pdf_text_map.h"

#include <QDir>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace ui {

namespace {

// Every sheet is A4 portrait, painted from the edge of the paper.
void prepare(QPrinter& printer, const QString& title) {
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
    printer.setFullPage(true);
    printer.setDocName(title);
    printer.setCreator(title);
}

// The pages of the print range the printer was given (all when none).
bool paintOn(QPrinter& printer, ReportPages& pages) {
    int first = 0;
    int last = pages.pageCount() - 1;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = printer.fromPage() - 1;
        last = qMin(last, printer.toPage() - 1);
    }
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage())
            return false;
        pages.paintPage(painter, page);
    }
    return painter.end();
}

QPushButton* button(const QString& text, const QString& name, QWidget* parent) {
    auto* b = new QPushButton(text, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

} // namespace

QString writePdfFile(ReportPages& pages, const QString& title, const QString& file) {
    if (pages.pageCount() <= 0)
        return QStringLiteral("出力するページがありません。");
    QPdfWriter writer(file);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageOrientation(QPageLayout::Portrait);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setResolution(600);
    writer.setTitle(title);
    writer.setCreator(title);
    QPainter painter;
    if (!painter.begin(&writer))
        return QStringLiteral("PDF ファイルを作成できません: ") + file;
    for (int page = 0; page < pages.pageCount(); ++page) {
        if (page > 0 && !writer.newPage()) {
            painter.end();
            return QStringLiteral("PDF ファイルに書き込めません: ") + file;
        }
        pages.paintPage(painter, page);
    }
    if (!painter.end())
        return QStringLiteral("PDF ファイルに書き込めません: ") + file;
    if (!pdfTextMapsToIdeographs(file))
        return QStringLiteral("PDF ファイルに書き込めません: ") + file;
    return QString();
}

bool ScreenReportOutput::printerInstalled() { return !QPrinterInfo::availablePrinterNames().isEmpty(); }

PrintOutcome ScreenReportOutput::print(ReportPages& pages, const QString& title) {
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, title);
    QPrintDialog dialog(&printer);
    dialog.setWindowTitle(title);
    dialog.setMinMax(1, pages.pageCount());
    if (dialog.exec() != QDialog::Accepted)
        return PrintOutcome::Cancelled;
    return paintOn(printer, pages) ? PrintOutcome::Printed : PrintOutcome::Failed;
}

void ScreenReportOutput::preview(ReportPages& pages, const QString& title) {
    PreviewWindow window(pages, title, messages_, dialogs_, [this, &pages, &title] {
        if (!printerInstalled()) {
            messages_.show(QStringLiteral("プリンタがインストールされていません。") + QChar(13) +
                           QStringLiteral("「PDF保存」で PDF ファイルに保存できます。"));
            return PrintOutcome::Cancelled;
        }
        const PrintOutcome outcome = print(pages, title);
        if (outcome == PrintOutcome::Failed)
            messages_.show(QStringLiteral("印刷できませんでした。"));
        return outcome;
    });
    window.exec();
}

QString ScreenReportOutput::writePdf(ReportPages& pages, const QString& title, const QString& file) {
    return writePdfFile(pages, title, file);
}

PreviewWindow::PreviewWindow(ReportPages& pages, const QString& title, Messages& messages, Dialogs& dialogs,
                             std::function<PrintOutcome()> print, QWidget* parent)
    : QDialog(parent), pages_(pages), title_(title), messages_(messages), dialogs_(dialogs), print_(std::move(print)) {
    setObjectName(QStringLiteral("PreviewWindow"));
    setWindowTitle(title + QStringLiteral(" - プレビュ"));
    prepare(printer_, title);
    // The preview draws into pictures of the sheets: it needs no printer.
    printer_.setOutputFormat(QPrinter::PdfFormat);

    view = new QPrintPreviewWidget(&printer_, this);
    view->setObjectName(QStringLiteral("view"));
    view->setViewMode(QPrintPreviewWidget::SinglePageView);
    connect(view, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
        QPainter painter(printer);
        for (int page = 0; page < pages_.pageCount(); ++page) {
            if (page > 0)
                printer->newPage();
            pages_.paintPage(painter, page);
        }
    });
    connect(view, &QPrintPreviewWidget::previewChanged, this, [this] { showPage(); });

    btn_前頁 = button(QStringLiteral("< 前頁"), QStringLiteral("btn_前頁"), this);
    btn_次頁 = button(QStringLiteral("次頁 >"), QStringLiteral("btn_次頁"), this);
    lab_頁 = new QLabel(this);
    lab_頁->setObjectName(QStringLiteral("lab_頁"));
    lab_頁->setMinimumWidth(90);
    lab_頁->setAlignment(Qt::AlignCenter);
    btn_縮小 = button(QStringLiteral("縮小"), QStringLiteral("btn_縮小"), this);
    btn_拡大 = button(QStringLiteral("拡大"), QStringLiteral("btn_拡大"), this);
    btn_全体 = button(QStringLiteral("全体表示"), QStringLiteral("btn_全体"), this);
    btn_印刷 = button(QStringLiteral("印刷..."), QStringLiteral("btn_印刷"), this);
    btn_PDF保存 = button(QStringLiteral("PDF保存..."), QStringLiteral("btn_PDF保存"), this);
    btn_閉じる = button(QStringLiteral("閉じる"), QStringLiteral("btn_閉じる"), this);

    connect(btn_前頁, &QPushButton::clicked, this, [this] { goToPage(currentPage() - 1); });
    connect(btn_次頁, &QPushButton::clicked, this, [this] { goToPage(currentPage() + 1); });
    connect(btn_縮小, &QPushButton::clicked, this, [this] { view->zoomOut(); });
    connect(btn_拡大, &QPushButton::clicked, this, [this] { view->zoomIn(); });
    connect(btn_全体, &QPushButton::clicked, this, [this] { view->fitInView(); });
    connect(btn_印刷, &QPushButton::clicked, this, [this] {
        if (print_)
            print_();
    });
    connect(btn_PDF保存, &QPushButton::clicked, this, [this] { savePdf(); });
    connect(btn_閉じる, &QPushButton::clicked, this, [this] { accept(); });

    auto* bar = new QHBoxLayout;
    for (QWidget* w : {static_cast<QWidget*>(btn_前頁), static_cast<QWidget*>(lab_頁), static_cast<QWidget*>(btn_次頁)})
        bar->addWidget(w);
    bar->addSpacing(16);
    bar->addWidget(btn_縮小);
    bar->addWidget(btn_拡大);
    bar->addWidget(btn_全体);
    bar->addStretch(1);
    bar->addWidget(btn_印刷);
    bar->addWidget(btn_PDF保存);
    bar->addWidget(btn_閉じる);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(view, 1);

    // A sheet fits the window at its start; the window fits the screen.
    QSize size(820, 1000);
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        size = size.boundedTo(screen->availableSize() * 9 / 10);
    resize(size);
    view->fitInView();
    view->updatePreview();
    showPage();
    // Scrolling through the sheets moves the current page without a signal.
    auto* follow = new QTimer(this);
    connect(follow, &QTimer::timeout, this, [this] { showPage(); });
    follow->start(250);
}

int PreviewWindow::currentPage() const { return view->currentPage(); }

int PreviewWindow::pageCount() const { return view->pageCount(); }

double PreviewWindow::zoomFactor() const { return view->zoomFactor(); }

void PreviewWindow::goToPage(int page) {
    if (page < 1 || page > pageCount())
        return;
    view->setCurrentPage(page);
    showPage();
}

void PreviewWindow::showPage() {
    const int page = currentPage();
    const int count = pageCount();
    lab_頁->setText(QStringLiteral("%1 / %2 頁").arg(page).arg(count));
    btn_前頁->setEnabled(page > 1);
    btn_次頁->setEnabled(page < count);
}

void PreviewWindow::savePdf() {
    QString file = dialogs_.saveFile(this, QStringLiteral("PDFファイル (*.pdf)|*.pdf"), 0, QDir::homePath());
    if (file.isEmpty())
        return;
    if (!file.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        file += QStringLiteral(".pdf");
    const QString error = writePdfFile(pages_, title_, file);
    if (!error.isEmpty())
        messages_.show(error);
}

} // namespace ui
