#pragma once

#include "platform/db/recordset.h"

#include <QString>

// The numeric value of a text as the program reads numbers kept in text columns:
// the leading number (blanks, a sign, digits, a decimal part), 0 when there is none.
double 数値(const QString& text);

// The same, cut to a 16-bit number as the program keeps its class columns.
short 整数(const QString& text);

// A column read for the shared state: the trimmed text, "" when null.
QString 文字列(const db::Field& field);

// Copies a column into a kept value when it is not null; a null leaves the
// value as it was. Numbers go through 整数.
void 項目copy(const db::Field& field, QString& into);
void 項目copy(const db::Field& field, short& into);
