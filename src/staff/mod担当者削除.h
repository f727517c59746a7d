#pragma once

#include "shell/context.h"

class frm担当者登録;

// Deleting the staff record on the screen: the gate, the use check, the
// question with No as its default, then 担当者delete.
void btn_削除_Click(Context& ctx, frm担当者登録& form);

// The red log row, the DELETE, the photos of the code once the row is gone,
// and the seal file in any case. The outcome is in 処理結果区分 (7 deleted,
// 6 not) and 処理結果文.
void 担当者delete(Context& ctx);
