#pragma once

#include "shell/context.h"

#include <QString>

// Document numbers of the A number tables, and the access records of T閲覧.

// The base date of the 番号ID for the date "yyyymmdd"; "99999999" as the date
// stands for today. The empty text when the 番号ID has no row.
QString 番号基準日get(Context& ctx, const QString& 番号ID, const QString& 日付);

// Draws the next number of the 番号ID under the base date; per office when the
// company numbers per office. Eight digits; "00000000" and two messages when
// the 番号ID has no row; the empty text when its 連番種類 is outside 0 to 3 or
// the counter row cannot be read or created.
QString 番号get(Context& ctx, const QString& 番号ID, const QString& 基準日, const QString& 事業所コード);

// Records that the operator looked at a record: one row of T閲覧 numbered from
// the series "01110", re-drawn while the number is already taken.
void 閲覧insert(Context& ctx, const QString& 閲覧情報, const QString& 伝票事業所コード, const QString& 伝票番号基準日付,
                const QString& 伝票No, const QString& キー項目);
