#pragma once

#include <QString>

#include <ostream>

// A text written in the test source.
inline QString q(const char* utf8) {
    return QString::fromUtf8(utf8);
}

// Failure messages show texts as text, not as arrays of code units.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}
