#pragma once

#include "shell/context.h"

#include <QString>

class frm担当者登録;

// Walking through M担当者 in code order, within the office of the run unless
// that is the head office, and proposing the next free code of all offices.

// The next code after the given one, or the given code when there is none.
QString 次担当者get(Context& ctx, const QString& コード);
// The code before the given one, or the given code when there is none.
QString 前担当者get(Context& ctx, const QString& コード);
// Gives the record the highest code in use plus 1 as a new record; with
// "99999" in use it says so and leaves the record's code empty.
void 最新コードset(Context& ctx);

void btn_前進_Click(Context& ctx, frm担当者登録& form);
void btn_後退_Click(Context& ctx, frm担当者登録& form);
void btn_最新コード_Click(Context& ctx, frm担当者登録& form);
