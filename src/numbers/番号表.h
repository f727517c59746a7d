#pragma once

#include "shell/context.h"

#include <QString>
#include <QStringList>

// A family of number tables: a definition table with one row per kind of
// number, a dated table, a per-office table and a per-office dated table.
// The history numbers and the document numbers share the shape and the steps;
// this describes what differs between them.
struct 番号表 {
    QString 定義表;           // one row per key, with 連番種類 and the counter
    QString 期日別表;         // counter per key and 期日
    QString 事業所別表;       // counter per office and key
    QString 事業所別期日別表; // counter per office, key and 期日
    QString キー;             // the key column of all four tables
    QString 連番項目;         // the counter drawn
    QStringList 作成項目;     // the counters a new row is created with, at "00000000"
    QString 問題文;           // shown when the key has no definition row
    // True: a 連番種類 other than 0 makes sure of the dated row first, and one
    // outside 0 to 3 gives no number. False: outside 1 to 3 the undated counter is used.
    bool 種類外無番号 = false;
};

// The base date of a key for the date "yyyymmdd" by its 連番種類: "99999999"
// for 0, the fiscal year end for 1, the month period end for 2, the date itself
// for 3, "88888888" for any other. The empty text when the key has no row.
QString 番号基準日choose(Context& ctx, const 番号表& 表, const QString& id, const QString& 日付);

// Draws the next number of the key under the base date, from the plain tables
// or, when the company numbers per office, from the office's tables. The
// eight-digit number; "00000000" with two messages when the key has no
// definition row; the empty text when no counter could be read or the kind
// gives no number.
QString 番号採番(Context& ctx, const 番号表& 表, const QString& id, const QString& 基準日, const QString& 事業所コード);
