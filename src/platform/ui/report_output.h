#pragma once

#include <QDialog>
#include <QPrinter>
#include <QString>

#include <functional>

class QLabel;
class QPainter;
class QPrintPreviewWidget;
class QPushButton;

namespace ui {

class Dialogs;
class Messages;

// The pages of a report on A4 portrait sheets.
class ReportPages {
public:
    virtual ~ReportPages() = default;
    virtual int pageCount() const = 0;
    // Paints one page (from 0) on a painter whose device is the whole sheet.
    virtual void paintPage(QPainter& painter, int page) = 0;
};

enum class PrintOutcome { Printed, Cancelled, Failed };

// Where a report goes: a printer, a preview window or a PDF file.
class ReportOutput {
public:
    virtual ~ReportOutput() = default;
    // Whether the system has a printer to print on.
    virtual bool printerInstalled() = 0;
    // The print dialog on the default printer, then the pages on the printer chosen.
    virtual PrintOutcome print(ReportPages& pages, const QString& title) = 0;
    // A window that shows the pages and can page, zoom, print and save them as
    // a PDF file; returns when it is closed.
    virtual void preview(ReportPages& pages, const QString& title) = 0;
    // Writes the pages into a PDF file; "" when it was written, else what went wrong.
    virtual QString writePdf(ReportPages& pages, const QString& title, const QString& file) = 0;
};

// Writes the pages into a PDF file of A4 portrait sheets; "" when it was
// written, else what went wrong.
QString writePdfFile(ReportPages& pages, const QString& title, const QString& file);

// The printers of the system, its print dialog and a preview window; the
// preview asks for the PDF file through the dialogs and tells failures
// through the message boxes.
class ScreenReportOutput : public ReportOutput {
public:
    ScreenReportOutput(Messages& messages, Dialogs& dialogs) : messages_(messages), dialogs_(dialogs) {}
    bool printerInstalled() override;
    PrintOutcome print(ReportPages& pages, const QString& title) override;
    void preview(ReportPages& pages, const QString& title) override;
    QString writePdf(ReportPages& pages, const QString& title, const QString& file) override;

private:
    Messages& messages_;
    Dialogs& dialogs_;
};

// The preview window: the pages one under the other, a bar of buttons to go
// to the previous or next page, zoom in and out, fit the page, print, save as
// PDF and close.
class PreviewWindow : public QDialog {
public:
    // print is what the print button does.
    PreviewWindow(ReportPages& pages, const QString& title, Messages& messages, Dialogs& dialogs,
                  std::function<PrintOutcome()> print, QWidget* parent = nullptr);

    int currentPage() const; // from 1
    int pageCount() const;
    double zoomFactor() const;
    void goToPage(int page);

    QPrintPreviewWidget* view = nullptr;
    QPushButton* btn_前頁 = nullptr;
    QPushButton* btn_次頁 = nullptr;
    QLabel* lab_頁 = nullptr;
    QPushButton* btn_縮小 = nullptr;
    QPushButton* btn_拡大 = nullptr;
    QPushButton* btn_全体 = nullptr;
    QPushButton* btn_印刷 = nullptr;
    QPushButton* btn_PDF保存 = nullptr;
    QPushButton* btn_閉じる = nullptr;

private:
    void showPage();
    void savePdf();

    ReportPages& pages_;
    QString title_;
    Messages& messages_;
    Dialogs& dialogs_;
    std::function<PrintOutcome()> print_;
    QPrinter printer_{QPrinter::HighResolution};
};

} // namespace ui
