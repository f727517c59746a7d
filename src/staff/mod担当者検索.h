#pragma once

struct Context;
class frm担当者登録;

// The card's ways into the list windows: the button, the Ctrl key and the
// double click of each code field open the window that fills it.
void 担当者検索wire(Context& ctx, frm担当者登録& form);
