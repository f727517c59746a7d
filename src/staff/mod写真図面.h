#pragma once

#include "shell/context.h"

#include <QString>

class frm担当者登録;

// Photos of a staff member lie in 写真フォルダ/<kind>/ under the code's name,
// the seal in 写真フォルダ/<kind>印/.

// The first file of the code in the kind's folder, "" when there is none.
QString 写真最初get(Context& ctx, const QString& 種別, const QString& コード);
// Removes every file of the code in the kind's folder; True when at least one matched.
bool 写真全delete(Context& ctx, const QString& 種別, const QString& コード);
// Loads img_写真 and img_担当者印 from the record's photo and seal state.
void 写真display(Context& ctx, frm担当者登録& form);
// The enabled state of the five photo buttons and of the two seal buttons.
void 写真button設定(Context& ctx, frm担当者登録& form);
void 担当者印button設定(Context& ctx, frm担当者登録& form);
