#pragma once

#include "shell/context.h"

#include <QString>

class frm担当者登録;

// The staff card printed or previewed by the suite's report program, and mail
// to the staff member.

// The report program's one argument text of fixed-width fields, for mode "0"
// (print) or "1" (preview).
QString 担当者カード引数(const Context& ctx, const QString& モード);
void 担当者カード印刷(Context& ctx);
void 担当者カードプレビュ(Context& ctx);

void btn_印刷_Click(Context& ctx, frm担当者登録& form);
void btn_プレビュ_Click(Context& ctx, frm担当者登録& form);
void btn_EMAIL_Click(Context& ctx, frm担当者登録& form);
