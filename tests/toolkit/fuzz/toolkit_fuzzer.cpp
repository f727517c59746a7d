// Feeds arbitrary text to the text routines of the toolkit. Besides the
// sanitizers, a broken invariant of a routine stops the run.
#include "toolkit/mod項目編集.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

struct Notice : お知らせ先 {
    QString text;
    void お知らせset(const QString& t) override { text = t; }
};

void require(bool condition) {
    if (!condition)
        std::abort();
}

// The first byte chooses how the rest is read: as UTF-8, or as raw UTF-16
// units (which reaches lone surrogates and every code unit).
QString decode(const std::uint8_t* data, std::size_t size) {
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = decode(data, size);

    const QString wide = 全角conv(input);
    require(wide.size() <= input.size());
    require(全角conv(wide) == wide);

    // The first line is a column name, the rest the condition text.
    const qsizetype newline = input.indexOf(QLatin1Char('\n'));
    const QString column = newline < 0 ? QString() : input.left(newline);
    const QString condition = newline < 0 ? input : input.mid(newline + 1);
    QString rest = QStringLiteral("untouched");
    const QString value = 検索条件parse(column, condition, rest);
    // What stays is at most the part before the condition and the whole text.
    if (rest != QLatin1String("untouched"))
        require(rest.size() <= 2 * condition.size());
    QString inPlace = condition;
    require(検索条件parse(column, inPlace, inPlace) == value);

    const short limit = size >= 3 ? static_cast<short>(data[1] | (data[2] << 8)) : 0;
    const QString cut = 文字数cut(input, limit);
    require(input.startsWith(cut));
    Notice notice;
    notice.text = QStringLiteral("old");
    文字数chk(notice, cut, limit);
    require(notice.text.isEmpty() || limit < 0);

    require(コード次make(input).size() >= input.size());
    require(コードfmt(input, QStringLiteral("00000")).size() <= 5);
    require(数字抽出conv(input).size() <= input.size());
    require(!パーセント除去conv(input).contains(QLatin1Char('%')));
    require(!引用符conv(input).endsWith(QLatin1Char(' ')));
    return 0;
}
