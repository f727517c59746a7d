#pragma once

// What the fuzz targets share: the input read as text, and the rule that
// stops the run when a property does not hold.

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace fuzz {

inline void require(bool condition) {
    if (!condition)
        std::abort();
}

// The first byte chooses how the rest is read: as UTF-8, or as raw UTF-16
// units (which reaches lone surrogates and every code unit).
inline QString decode(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return QString();
    if (data[0] & 1) {
        QString text;
        for (std::size_t i = 1; i + 1 < size; i += 2)
            text += QChar(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
        return text;
    }
    return QString::fromUtf8(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
}

} // namespace fuzz
