#include "toolkit/mod基本項目.h"

#include "platform/db/recordset.h"

#include <QDate>

#include <algorithm>

namespace {

// A number zero-padded to at least width digits, the sign in front.
QString padded(int value, int width) {
    const QString digits = QString::number(qAbs(static_cast<qint64>(value))).rightJustified(width, QLatin1Char('0'));
    return value < 0 ? QLatin1Char('-') + digits : digits;
}

// The number a piece of a date text reads as; false when it is none.
bool readPiece(const QString& piece, int& value) {
    bool ok = false;
    value = piece.toInt(&ok);
    return ok;
}

// "yyyymmdd" of eight ASCII digits into its three numbers.
bool splitDate(const QString& date, int& year, int& month, int& day) {
    if (date.size() != 8 || !std::all_of(date.begin(), date.end(), [](QChar c) {
            return c >= QLatin1Char('0') && c <= QLatin1Char('9');
        }))
        return false;
    year = date.left(4).toInt();
    month = date.mid(4, 2).toInt();
    day = date.mid(6, 2).toInt();
    return true;
}

// The day of a month as date arithmetic counts it: a month beyond December
// rolls into the next year, day 0 is the last day of the month before, and a
// day beyond the month's end rolls into the next month.
QDate dateOf(int year, int month, int day) {
    return QDate(year, 1, 1).addMonths(month - 1).addDays(day - 1);
}

QString text(const QDate& date) {
    return date.toString(QStringLiteral("yyyyMMdd"));
}

// True for the pairs that mean "the last day of the month".
bool isMonthEnd(short month, short day) {
    switch (month) {
    case 2: return day == 28 || day == 29;
    case 4: case 6: case 9: case 11: return day == 30;
    case 1: case 3: case 5: case 7: case 8: case 10: case 12: return day == 31;
    default: return false;
    }
}

// The era row of a statement: its code and the year of its first day.
bool readEra(db::Recordset& rs, int& code, int& startYear) {
    return readPiece(rs.field(QStringLiteral("区分")).text(), code) &&
           readPiece(rs.field(QStringLiteral("開始日付")).text().left(4), startYear);
}

} // namespace

bool 年号日付conv(const 業務SQLopen型& open, const QString& date, short& era, QString& year) {
    if (date.size() != 8)
        return false;
    int y = 0, m = 0, d = 0;
    if (!readPiece(date.left(4), y) || !readPiece(date.mid(4, 2), m) || !readPiece(date.mid(6, 2), d))
        return false;
    if (m < 1 || m > 12 || d < 1 || d > 31)
        return false;

    const QString sql = QStringLiteral("SELECT TOP 1 *") + QStringLiteral(" FROM") + QStringLiteral(" K年号区分") +
                        QStringLiteral(" WHERE 開始日付 <= '") + date + QStringLiteral("'") +
                        QStringLiteral(" ORDER BY 開始日付 DESC");
    db::Recordset rs;
    int code = 0, startYear = 0;
    const bool found = open(rs, sql) && readEra(rs, code, startYear);
    rs.close();
    // A row whose code or first day cannot be read applies no more than a missing one.
    if (!found)
        return false;

    const int eraYear = y - startYear + 1;
    if (code != 0 && eraYear > 0) {
        era = static_cast<short>(code);
        year = padded(eraYear, 2);
    } else {
        era = 0;
        year = date.left(4);
    }
    return true;
}

bool 西暦日付conv(const 業務SQLopen型& open, short era, const QString& eraDate, QString& western) {
    if (era == 0 || eraDate.size() >= 8) {
        western = eraDate;
        return false;
    }
    const qsizetype yearDigits = eraDate.size() == 6 ? 2 : eraDate.size() == 5 ? 1 : 0;
    int eraYear = 0;
    if (yearDigits == 0 || !readPiece(eraDate.left(yearDigits), eraYear))
        return false;
    const QString monthDay = eraDate.mid(yearDigits);

    const QString sql = QStringLiteral("SELECT TOP 1 *") + QStringLiteral(" FROM") + QStringLiteral(" K年号区分") +
                        QStringLiteral(" WHERE 区分 = '") + QString::number(era) + QStringLiteral("'");
    db::Recordset rs;
    int code = 0, startYear = 0;
    const bool found = open(rs, sql) && readEra(rs, code, startYear);
    rs.close();
    if (!found)
        return false;

    western = padded(eraYear + startYear - 1, 4) + monthDay;
    return true;
}

QString 年度末日get(const QString& date, short 決算月, short 決算日) {
    int y = 0, m = 0, d = 0;
    if (!splitDate(date, y, m, d))
        return QString();
    QDate candidate = isMonthEnd(決算月, 決算日) ? dateOf(y, 決算月 + 1, 0) : dateOf(y, 決算月, 決算日);
    if (text(candidate) < date)
        candidate = candidate.addYears(1);
    return text(candidate);
}

QString 月度末日get(const QString& date, short 決算月, short 決算日) {
    int y = 0, m = 0, d = 0;
    if (!splitDate(date, y, m, d))
        return QString();
    if (isMonthEnd(決算月, 決算日))
        return text(dateOf(y, m + 1, 0));
    if (決算日 >= d)
        return text(dateOf(y, m, 決算日));
    return text(dateOf(y, m + 1, 決算日));
}
