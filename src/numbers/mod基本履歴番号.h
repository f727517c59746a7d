#pragma once

#include "shell/context.h"

#include <QString>

// History numbers: the running numbers of the maintenance logs, one series per
// 基本ID, kept in the B number tables.

// The base date under which the next number of the 基本ID is drawn today:
// "99999999" for one series for ever, the fiscal year end, the month period
// end or today by the 連番種類 of B履歴番号情報, "88888888" for any other kind.
// The empty text when the 基本ID has no row.
QString 履歴基準日get(Context& ctx, const QString& 基本ID);

// Draws the next history number of the 基本ID under the base date; per office
// when the company numbers per office. Eight digits (nine past 99999999);
// "00000000" and two messages when the 基本ID has no row; the empty text when
// the counter row cannot be read or created.
QString 履歴番号get(Context& ctx, const QString& 基本ID, const QString& 基準日, const QString& 事業所コード);
