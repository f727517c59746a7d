#pragma once

#include <QString>

#include <functional>

namespace db {
class Recordset;
}

// Opens a statement on the main database through the program's statement
// routine: true when the recordset stands on a row. The caller closes it.
using 業務SQLopen型 = std::function<bool(db::Recordset&, const QString&)>;

// Western date "yyyymmdd" to era code and era year ("01"; the four-digit year
// for era code 0) by the table K年号区分. False when the date is malformed or no
// era applies; the outs are then not written.
bool 年号日付conv(const 業務SQLopen型& open, const QString& date, short& era, QString& year);

// Era date "yymmdd" or "ymmdd" of era code era to the Western "yyyymmdd".
// Era code 0 or a text of 8 characters or more passes through to western
// unchanged (result false). False, western untouched, when the text cannot be
// read or the era is unknown.
bool 西暦日付conv(const 業務SQLopen型& open, short era, const QString& eraDate, QString& western);

// The last day of the fiscal year on or after date, by the company's 決算月 and
// 決算日; "yyyymmdd". The empty text for a date that is not eight digits or
// lies in the year 0000, which the calendar does not have.
QString 年度末日get(const QString& date, short 決算月, short 決算日);

// The last day of the monthly period on or after date; "yyyymmdd". The empty
// text as for 年度末日get.
QString 月度末日get(const QString& date, short 決算月, short 決算日);
