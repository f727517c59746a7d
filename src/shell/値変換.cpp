#include "shell/値変換.h"

#include <cmath>
#include <limits>

double 数値(const QString& text) {
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && text.at(i).isSpace())
        ++i;
    const qsizetype start = i;
    if (i < n && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        ++i;
    while (i < n && text.at(i).unicode() < 0x80 && text.at(i).isDigit())
        ++i;
    if (i < n && text.at(i) == QLatin1Char('.')) {
        ++i;
        while (i < n && text.at(i).unicode() < 0x80 && text.at(i).isDigit())
            ++i;
    }
    bool ok = false;
    const double value = text.mid(start, i - start).toDouble(&ok);
    return ok ? value : 0.0;
}

short 整数(const QString& text) {
    const double v = std::round(数値(text));
    if (v > std::numeric_limits<short>::max())
        return std::numeric_limits<short>::max();
    if (v < std::numeric_limits<short>::min())
        return std::numeric_limits<short>::min();
    return static_cast<short>(v);
}

QString 文字列(const db::Field& field) {
    return field.isNull() ? QString() : field.text().trimmed();
}

void 項目copy(const db::Field& field, QString& into) {
    if (!field.isNull())
        into = field.text();
}

void 項目copy(const db::Field& field, short& into) {
    if (!field.isNull())
        into = 整数(field.text());
}
