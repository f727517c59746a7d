#pragma once

#include "platform/ui/report_output.h"
#include "shell/context.h"
#include "shell/担当者カード引数.h"

#include <QString>

// The run of the staff card report program, once its argument text is read:
// the databases as every program of the suite opens them, the staff of the
// ranges, the cards to the printer, the preview or a PDF file, and the run
// history under the program's own name.

// The exit codes of the report program.
namespace 担当者カード終了 {
constexpr int 正常 = 0;         // the cards went out, or the user stopped at a dialog
constexpr int データベース = 1; // the installation, a database or the company record cannot be used
constexpr int 引数 = 2;         // the argument text or an option is wrong
constexpr int 該当なし = 3;     // no staff member in the ranges
constexpr int 出力失敗 = 4;     // the PDF file or the printing failed, or there is no screen for a window
} // namespace 担当者カード終了

// The program's name in the run history and the usage rows.
QString 担当者カードプログラムID();
// The title of the cards, of their window and of their print job.
QString 担当者カード表題();

// Runs the report for the conditions and answers the exit code. pdf names a
// PDF file to write in place of the printer or the preview ("" for none).
int 担当者カードrun(Context& ctx, ui::ReportOutput& output, const 担当者カード条件& 条件, const QString& pdf);
