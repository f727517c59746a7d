#pragma once

#include "shell/context.h"

#include "platform/db/recordset.h"

#include <QString>

// The numbered operations and the right each one tests.
namespace 操作番号 {
constexpr int 起動 = 0;         // 操作許可
constexpr int 入力 = 1;         // 入力許可
constexpr int 修正 = 2;         // 修正許可
constexpr int 削除 = 3;         // 削除許可
constexpr int 印刷 = 4;         // 印刷許可
constexpr int プレビュ = 5;     // プレビュ許可
constexpr int テキスト出力 = 6; // テキスト出力許可
constexpr int イメージ出力 = 7; // イメージ出力許可
} // namespace 操作番号

// Whether the operator may do the operation in the program: the operator's own
// row for the program, else the class of the program in its menu table, then
// the operation's right. Rights are negative: 0 or empty allows. No dialog, no
// message. A personal row's rights stay in the operator's record.
bool 操作許可判定(Context& ctx, const QString& メニュ名, const QString& プログラム名, int 操作);

// Copies the eight rights of the current row into the operator's record; a
// null column becomes the empty text.
void 操作権利read(操作担当者情報& 担当者, const db::Recordset& rs);

// Writes the title line: the program's display name, the office of the
// installation and the operator's name. Sets 運用事業所名 and the caption of
// the label "prg_ttl" of the main screen when there is one; returns the title.
QString プログラム見出しset(Context& ctx);
