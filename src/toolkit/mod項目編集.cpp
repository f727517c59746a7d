#include "toolkit/mod項目編集.h"

#include <QtGlobal>

#include <iconv.h>

#include <array>
#include <cstdint>
#include <iterator>

namespace {

// The longest text a signed 16-bit count or position can hold. Routines that
// cannot keep their rule beyond it refuse longer texts, each as it says.
constexpr qsizetype kLongestText = 32767;

// ---------------------------------------------------------------------------
// Width conversion

// One-character rule: ASCII letters, digits, symbols and the half-width
// prolonged sound mark. The apostrophe, the backslash and the tilde are not a
// plain shift by 0xFEE0, on purpose.
char16_t fullWidthOfSymbol(char16_t c) {
    if ((c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'))
        return static_cast<char16_t>(c + 0xFEE0);
    switch (c) {
    case u'!': return u'！';
    case u'#': return u'＃';
    case u'$': return u'＄';
    case u'%': return u'％';
    case u'&': return u'＆';
    case u'\'': return u'\u2019';
    case u'(': return u'（';
    case u')': return u'）';
    case u'=': return u'＝';
    case u'~': return u'\uFF5E';
    case u'|': return u'｜';
    case u'\\': return u'\uFFE5';
    case u'-': return u'－';
    case u'+': return u'＋';
    case u'*': return u'＊';
    case u'[': return u'［';
    case u']': return u'］';
    case u'@': return u'＠';
    case u':': return u'：';
    case u';': return u'；';
    case u'.': return u'．';
    case u',': return u'，';
    case u'/': return u'／';
    case u'?': return u'？';
    case u'<': return u'＜';
    case u'>': return u'＞';
    case u'{': return u'｛';
    case u'}': return u'｝';
    case u'\uFF70': return u'ー';
    case u'_': return u'＿';
    default: return 0;
    }
}

// The 26 voiced and semi-voiced pairs: base kana, mark, full-width kana.
constexpr char16_t kVoicedBase[] = u"ｳｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾊﾋﾌﾍﾎ";
constexpr char16_t kVoicedFull[] = u"ヴガギグゲゴザジズゼゾダヂヅデドバビブベボ";
constexpr char16_t kSemiVoicedBase[] = u"ﾊﾋﾌﾍﾎ";
constexpr char16_t kSemiVoicedFull[] = u"パピプペポ";

// The 55 single kana, small ones last.
constexpr char16_t kKanaHalf[] = u"ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝｧｨｩｪｫｯｬｭｮ";
constexpr char16_t kKanaFull[] = u"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲンァィゥェォッャュョ";

static_assert(std::size(kVoicedBase) == 22 && std::size(kVoicedFull) == 22);
static_assert(std::size(kSemiVoicedBase) == 6 && std::size(kSemiVoicedFull) == 6);
static_assert(std::size(kKanaHalf) == 56 && std::size(kKanaFull) == 56);

// Looks c up in a zero-terminated table; the matching entry of the other table, or 0.
template <std::size_t N>
char16_t lookUp(const char16_t (&from)[N], const char16_t (&to)[N], char16_t c) {
    for (std::size_t i = 0; i + 1 < N; ++i) {
        if (from[i] == c)
            return to[i];
    }
    return 0;
}

char16_t fullWidthOfPair(char16_t base, char16_t mark) {
    if (mark == u'\uFF9E')
        return lookUp(kVoicedBase, kVoicedFull, base);
    if (mark == u'\uFF9F')
        return lookUp(kSemiVoicedBase, kSemiVoicedFull, base);
    return 0;
}

// ---------------------------------------------------------------------------
// Bytes of code page 932

// The bytes each UTF-16 unit takes in code page 932, as the C library's
// converter says. A unit the code page cannot hold takes the one byte of its
// replacement character, as on the systems the limits were made for.
class Cp932Widths {
public:
    Cp932Widths() {
        iconv_t cd = iconv_open("CP932", "UTF-16LE");
        if (cd == reinterpret_cast<iconv_t>(-1)) {
            // Without the converter every unit outside ASCII and the half-width
            // kana block is taken as full-width.
            qCritical("code page 932 is not available to iconv; byte counts are estimated");
            for (std::size_t u = 0; u < widths_.size(); ++u)
                widths_[u] = (u < 0x80 || (u >= 0xFF61 && u <= 0xFF9F)) ? 1 : 2;
            return;
        }
        for (std::size_t u = 0; u < widths_.size(); ++u) {
            char in[2] = {static_cast<char>(u & 0xFF), static_cast<char>(u >> 8)};
            char out[8];
            char* inPtr = in;
            char* outPtr = out;
            std::size_t inLeft = sizeof in;
            std::size_t outLeft = sizeof out;
            iconv(cd, nullptr, nullptr, nullptr, nullptr);
            const std::size_t done = iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft);
            const std::size_t written = sizeof out - outLeft;
            widths_[u] = (done == static_cast<std::size_t>(-1) || written == 0) ? 1
                                                                                  : static_cast<std::uint8_t>(written);
        }
        iconv_close(cd);
    }

    int operator()(QChar c) const { return widths_[c.unicode()]; }

private:
    std::array<std::uint8_t, 0x10000> widths_{};
};

int bytesOf(QChar c) {
    static const Cp932Widths widths;
    return widths(c);
}

qsizetype bytesOf(const QString& text) {
    qsizetype total = 0;
    for (QChar c : text)
        total += bytesOf(c);
    return total;
}

// The count of the prefix loop: characters are taken from the left while the
// prefix taken so far fits the limit, so the prefix ends with the character
// that crossed it. Counts are held wide, so the rule holds at any length.
qsizetype crossingCount(const QString& text, short limit) {
    qsizetype count = 0;
    qsizetype prefixBytes = 0;
    while (prefixBytes <= limit && count < text.size()) {
        prefixBytes += bytesOf(text.at(count));
        ++count;
    }
    return count;
}

QString repeated(QChar c, short count) {
    return count > 0 ? QString(count, c) : QString();
}

// ---------------------------------------------------------------------------
// Numbers for code masks

bool isDigit(QChar c) {
    const char16_t u = c.unicode();
    return (u >= u'0' && u <= u'9') || (u >= u'０' && u <= u'９');
}

int digitValue(QChar c) {
    const char16_t u = c.unicode();
    return u <= u'9' ? u - u'0' : u - u'０';
}

// A value that reads as a number: blanks around, an optional sign, digits
// (ASCII or full-width) and an optional decimal fraction. Gives the sign and
// the integer digits rounded half away from zero; false for anything else.
bool readNumber(const QString& value, bool& negative, QString& digits) {
    const QString text = value.trimmed();
    qsizetype i = 0;
    negative = false;
    if (i < text.size() && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+'))) {
        negative = text.at(i) == QLatin1Char('-');
        ++i;
    }
    QString integer;
    for (; i < text.size() && isDigit(text.at(i)); ++i)
        integer += QLatin1Char(static_cast<char>('0' + digitValue(text.at(i))));
    int firstFraction = -1;
    qsizetype fractionDigits = 0;
    if (i < text.size() && text.at(i) == QLatin1Char('.')) {
        for (++i; i < text.size() && isDigit(text.at(i)); ++i, ++fractionDigits) {
            if (firstFraction < 0)
                firstFraction = digitValue(text.at(i));
        }
    }
    if (i != text.size() || (integer.isEmpty() && fractionDigits == 0))
        return false;
    if (firstFraction >= 5) {
        qsizetype k = integer.size() - 1;
        while (k >= 0 && integer.at(k) == QLatin1Char('9')) {
            integer[k] = QLatin1Char('0');
            --k;
        }
        if (k < 0)
            integer.prepend(QLatin1Char('1'));
        else
            integer[k] = QLatin1Char(static_cast<char>(integer.at(k).toLatin1() + 1));
    }
    qsizetype lead = 0;
    while (lead < integer.size() - 1 && integer.at(lead) == QLatin1Char('0'))
        ++lead;
    digits = integer.mid(lead);
    if (digits.isEmpty() || digits == QLatin1String("0"))
        negative = false;
    return true;
}

// ---------------------------------------------------------------------------
// Condition extraction

// 1-based position of what in text at or behind start, case ignored; 0 if absent.
qsizetype inStr(qsizetype start, const QString& text, const QString& what) {
    if (start > text.size())
        return 0;
    const qsizetype at = text.indexOf(what, start - 1, Qt::CaseInsensitive);
    return at < 0 ? 0 : at + 1;
}

bool beginsAt(const QString& text, qsizetype position, const QString& what) {
    const qsizetype index = position - 1;
    return index + what.size() <= text.size() &&
           QStringView(text).sliced(index, what.size()).compare(what, Qt::CaseInsensitive) == 0;
}

// How one operator finds its condition: the operator itself, the pattern whose
// position is Q, and the pattern that finds S again behind a " WHERE ". The
// last four do not look for themselves; that is how the routine behaves, and
// what stays of the text depends on it.
struct Operator {
    QString text;
    QString qPattern;
    QString secondPattern;
    bool like;
};

const std::array<Operator, 6>& operators() {
    static const std::array<Operator, 6> table{{
        {QStringLiteral(" >= '"), QStringLiteral(" >= '"), QStringLiteral(" >= '"), false},
        {QStringLiteral(" <= '"), QStringLiteral(" <= '"), QStringLiteral(" <= '"), false},
        {QStringLiteral(" = '"), QStringLiteral(" = '"), QStringLiteral(" >= '"), false},
        {QStringLiteral(" > '"), QStringLiteral(" >= '"), QStringLiteral(" >= '"), false},
        {QStringLiteral(" < '"), QStringLiteral(" >= '"), QStringLiteral(" >= '"), false},
        {QStringLiteral(" LIKE '"), QStringLiteral(" >= '"), QStringLiteral(" >= '"), true},
    }};
    return table;
}

} // namespace

QString 引用符conv(const QString& source) {
    QString result;
    result.reserve(source.size() + 8);
    for (QChar c : source) {
        if (c == QLatin1Char('\''))
            result += QStringLiteral("''");
        else
            result += c;
    }
    qsizetype end = result.size();
    while (end > 0 && result.at(end - 1) == QLatin1Char(' '))
        --end;
    result.truncate(end);
    return result;
}

QString 全角conv(const QString& source) {
    // Beyond the routine's signed 16-bit position: the text is returned as it
    // is, nothing lost.
    if (source.size() > kLongestText)
        return source;
    QString result;
    result.reserve(source.size());
    qsizetype i = 0;
    while (i < source.size()) {
        const char16_t c = source.at(i).unicode();
        if (const char16_t full = fullWidthOfSymbol(c)) {
            result += QChar(full);
            ++i;
            continue;
        }
        if (i + 1 < source.size()) {
            if (const char16_t full = fullWidthOfPair(c, source.at(i + 1).unicode())) {
                result += QChar(full);
                i += 2;
                continue;
            }
        }
        const char16_t single = lookUp(kKanaHalf, kKanaFull, c);
        result += QChar(single ? single : c);
        ++i;
    }
    return result;
}

void 文字数chk(お知らせ先& current, const QString& text, short limit) {
    if (bytesOf(text) <= limit) {
        current.お知らせset(QString());
        return;
    }
    const qsizetype over = text.size() - crossingCount(text, limit) + 1;
    current.お知らせset(QString::number(over) + QStringLiteral("文字オーバーです。"));
}

QString 文字数cut(const QString& text, short limit) {
    if (bytesOf(text) <= limit)
        return text;
    // A negative limit takes no character at all: nothing fits.
    const qsizetype count = crossingCount(text, limit);
    return count > 0 ? text.left(count - 1) : QString();
}

QString コードfmt(const QString& value, const QString& mask) {
    if (mask.isEmpty())
        return value;
    bool negative = false;
    QString digits;
    if (!readNumber(value, negative, digits))
        return value.left(mask.size());
    const qsizetype zeros = mask.count(QLatin1Char('0'));
    if (digits.size() < zeros)
        digits.prepend(QString(zeros - digits.size(), QLatin1Char('0')));
    if (negative)
        digits.prepend(QLatin1Char('-'));
    return digits.left(mask.size());
}

QString ゼロ列make(short count) {
    return repeated(QLatin1Char('0'), count);
}

QString 九列make(short count) {
    return repeated(QLatin1Char('9'), count);
}

QString Z列make(short count) {
    return repeated(QLatin1Char('Z'), count);
}

QString 範囲下限make(const QString& code) {
    // A code longer than a signed 16-bit count gives no bound (empty).
    if (code.isEmpty() || code.size() > kLongestText)
        return QString();
    return ゼロ列make(static_cast<short>(code.size()));
}

QString 範囲上限make(const QString& code, short fallback) {
    if (code.isEmpty())
        return Z列make(fallback);
    // As for the lower end, a code beyond a signed 16-bit count gives no bound.
    if (code.size() > kLongestText)
        return QString();
    return 九列make(static_cast<short>(code.size()));
}

QString コード次make(const QString& code) {
    if (code.isEmpty())
        return QStringLiteral("0");
    const char16_t last = code.back().unicode();
    QString next = code;
    if ((last >= u'0' && last <= u'8') || (last >= u'A' && last <= u'Y'))
        next.back() = QChar(static_cast<char16_t>(last + 1));
    else if (last == u'9')
        next.back() = QLatin1Char('A');
    else
        next += QLatin1Char('0');
    return next;
}

QString 数字抽出conv(const QString& text) {
    QString digits;
    for (QChar c : text) {
        if (isDigit(c))
            digits += c;
    }
    return digits;
}

QString パーセント除去conv(const QString& text) {
    QString result = text;
    result.remove(QLatin1Char('%'));
    return result;
}

QString 検索条件parse(const QString& 項目名, const QString& 条件文, QString& 残り) {
    // Positions are signed 16-bit counts: a longer text is not searched, as if
    // no condition were in it.
    if (条件文.size() > kLongestText)
        return QString();
    const QString text = 条件文; // 残り may be the same object

    const Operator* op = nullptr;
    for (const Operator& candidate : operators()) {
        if (inStr(1, text, 項目名 + candidate.text) > 0) {
            op = &candidate;
            break;
        }
    }
    if (!op)
        return QString();

    const QString found = 項目名 + op->text;
    const qsizetype valueStart = inStr(1, text, found) + found.size();
    const qsizetype close = inStr(valueStart, text, QStringLiteral("'"));
    // A value without its closing quote is not a condition the routine
    // understands: nothing is taken out.
    if (close == 0)
        return QString();
    QString value = text.mid(valueStart - 1, close - valueStart);
    if (op->like)
        value = パーセント除去conv(value);

    const QString kAnd = QStringLiteral(" AND ");
    const QString kOr = QStringLiteral(" OR ");
    // The connector right behind the condition goes with it.
    auto takeConnectorBehind = [&](qsizetype& end) {
        if (beginsAt(text, close + 1, kAnd))
            end += kAnd.size();
        else if (beginsAt(text, close + 1, kOr))
            end += kOr.size();
    };

    qsizetype end = close;
    qsizetype start = 0;
    const qsizetype q = inStr(1, text, 項目名 + op->qPattern);
    if (q >= 8) {
        if (inStr(q - 7, text, QStringLiteral(" WHERE ")) > 0) {
            start = inStr(1, text, 項目名 + op->secondPattern);
            takeConnectorBehind(end);
        } else {
            start = inStr(q - 5, text, kAnd);
        }
        if (start == 0)
            start = inStr(q - 4, text, kOr);
        if (start == 0)
            start = 1;
    } else if (q >= 6) {
        start = inStr(q - 5, text, kAnd);
        if (start == 0)
            start = inStr(q - 4, text, kOr);
        if (start == 0)
            start = 1;
    } else if (q == 5) {
        start = inStr(1, text, kOr);
        if (start == 0)
            start = 1;
    } else {
        start = 1;
        if (q == 1)
            takeConnectorBehind(end);
    }

    if (start == 1) {
        残り = text.mid(end);
    } else {
        const qsizetype paren = inStr(start, text, QStringLiteral("("));
        if (paren <= start || paren >= end) {
            残り = text.left(start - 1) + text.mid(end);
        } else {
            // The condition stands inside a parenthesis opened between its
            // connector and its end: the parenthesis goes with it, up to the
            // first ")" behind the condition. Without one, the whole text
            // follows the part before the condition.
            const qsizetype closing = inStr(end, text, QStringLiteral(")"));
            残り = text.left(start - 1) + (closing > 0 ? text.mid(closing) : text);
        }
    }
    return value;
}

QByteArray CP932conv(const QString& text, int* 置換数) {
    QByteArray out;
    out.reserve(text.size() * 2);
    int replaced = 0;
    iconv_t cd = iconv_open("CP932", "UTF-16LE");
    for (qsizetype i = 0; i < text.size(); ++i) {
        // A character outside the basic plane is two units and one character.
        const qsizetype units = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        char in[4];
        for (qsizetype u = 0; u < units; ++u) {
            const char16_t c = text.at(i + u).unicode();
            in[2 * u] = static_cast<char>(c & 0xFF);
            in[2 * u + 1] = static_cast<char>(c >> 8);
        }
        char buffer[8];
        char* inPtr = in;
        char* outPtr = buffer;
        std::size_t inLeft = std::size_t(units) * 2;
        std::size_t outLeft = sizeof buffer;
        bool done = false;
        if (cd != reinterpret_cast<iconv_t>(-1)) {
            iconv(cd, nullptr, nullptr, nullptr, nullptr);
            done = iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) != static_cast<std::size_t>(-1) && inLeft == 0;
        } else if (text.at(i).unicode() < 0x80) {
            buffer[0] = static_cast<char>(text.at(i).unicode());
            outLeft = sizeof buffer - 1;
            done = true;
        }
        if (done && outLeft < sizeof buffer) {
            out.append(buffer, qsizetype(sizeof buffer - outLeft));
        } else {
            out.append('?');
            ++replaced;
        }
        i += units - 1;
    }
    if (cd != reinterpret_cast<iconv_t>(-1))
        iconv_close(cd);
    if (置換数)
        *置換数 = replaced;
    return out;
}
