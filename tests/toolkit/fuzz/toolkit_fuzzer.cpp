// Feeds arbitrary text to the text routines of the toolkit. Besides the
// sanitizers, a broken invariant of a routine stops the run.
#include "support/fuzz_input.h"
#include "toolkit/mod項目編集.h"

#include <cstddef>
#include <cstdint>

namespace {

struct Notice : お知らせ先 {
    QString text;
    void お知らせset(const QString& t) override { text = t; }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = fuzz::decode(data, size);

    const QString wide = 全角conv(input);
    fuzz::require(wide.size() <= input.size());
    fuzz::require(全角conv(wide) == wide);

    // The first line is a column name, the rest the condition text.
    const qsizetype newline = input.indexOf(QLatin1Char('\n'));
    const QString column = newline < 0 ? QString() : input.left(newline);
    const QString condition = newline < 0 ? input : input.mid(newline + 1);
    QString rest = QStringLiteral("untouched");
    const QString value = 検索条件parse(column, condition, rest);
    // What stays is at most the part before the condition and the whole text.
    if (rest != QLatin1String("untouched"))
        fuzz::require(rest.size() <= 2 * condition.size());
    QString inPlace = condition;
    fuzz::require(検索条件parse(column, inPlace, inPlace) == value);

    const short limit = size >= 3 ? static_cast<short>(data[1] | (data[2] << 8)) : 0;
    const QString cut = 文字数cut(input, limit);
    fuzz::require(input.startsWith(cut));
    Notice notice;
    notice.text = QStringLiteral("old");
    文字数chk(notice, cut, limit);
    fuzz::require(notice.text.isEmpty() || limit < 0);

    fuzz::require(コード次make(input).size() >= input.size());
    fuzz::require(コードfmt(input, QStringLiteral("00000")).size() <= 5);
    fuzz::require(数字抽出conv(input).size() <= input.size());
    fuzz::require(!パーセント除去conv(input).contains(QLatin1Char('%')));
    fuzz::require(!引用符conv(input).endsWith(QLatin1Char(' ')));
    return 0;
}
