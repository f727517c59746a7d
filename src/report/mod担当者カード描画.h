#pragma once

#include "platform/ui/report_output.h"
#include "report/mod担当者カード読込.h"

#include <QList>
#include <QString>

class QPainter;

// The staff card: one A4 portrait sheet per staff member, a ruled form with
// the company and the print date at its head.

struct 担当者カード見出し {
    QString 会社名;
    QString 印刷日;   // era form
    QString 印刷日付; // "yyyymmdd", for the age
};

// Paints the card of one staff member on the whole sheet of the painter's
// device; 頁 counts from 1.
void 担当者カードdraw(QPainter& painter, const 担当者カード見出し& 見出し, const 担当者カード行& 行, int 頁, int 頁数);

// The cards of a run as the pages of a report. Pictures are loaded for each
// page as it is painted.
class 担当者カード頁 : public ui::ReportPages {
public:
    担当者カード頁(担当者カード見出し 見出し, QList<担当者カード行> 行);
    int pageCount() const override;
    void paintPage(QPainter& painter, int page) override;

private:
    担当者カード見出し 見出し_;
    QList<担当者カード行> 行_;
};
