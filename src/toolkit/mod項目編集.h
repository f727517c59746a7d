#pragma once

#include <QString>

// Character conversion, field limits and code formats, and the taking of one
// column's condition out of a handed-over piece of SQL. Pure text routines:
// none of them changes its arguments (except the out text of 検索条件parse).

// Makes a text safe between single quotes in a statement: each ' doubled,
// trailing blanks (U+0020) removed, leading blanks kept.
QString 引用符conv(const QString& source);

// Half-width to full-width: ASCII letters, digits and symbols, the half-width
// prolonged sound mark, voiced and semi-voiced kana pairs, single kana. Other
// characters pass unchanged. A source of more than 32,767 characters is beyond
// the routine's count and comes back unchanged.
QString 全角conv(const QString& source);

// Where 文字数chk writes its notice: the label お知らせ of the current form.
struct お知らせ先 {
    virtual ~お知らせ先() = default;
    virtual void お知らせset(const QString& text) = 0;
};

// Clears the notice when the text fits the limit (bytes of code page 932),
// otherwise shows how many characters must go ("3文字オーバーです。"). Counts
// are held wider than 16 bits, so a text of any length gets its true notice.
void 文字数chk(お知らせ先& current, const QString& text, short limit);

// The longest leading part of the text that fits the limit in bytes; never
// splits a full-width character. Any length is cut by the same rule; a
// negative limit gives the empty text.
QString 文字数cut(const QString& text, short limit);

// A text in the bytes of code page 932, as the suite's files hold it. A
// character the code page cannot hold is written as "?"; 置換数 counts them.
QByteArray CP932conv(const QString& text, int* 置換数 = nullptr);

// The value formatted with a mask of zeros ("00000") and cut to the mask's
// length; a value that is not a number is only cut. An empty mask returns the
// value as it stands.
QString コードfmt(const QString& value, const QString& mask);

// Runs of "0", "9" and "Z"; empty for a count of 0 or less.
QString ゼロ列make(short count);
QString 九列make(short count);
QString Z列make(short count);

// The ends of a code range for a search: zeros and nines as long as the code;
// an empty lower end stays empty, an empty upper end becomes fallback Z's.
// A code longer than 32,767 characters gives the empty text (no bound).
QString 範囲下限make(const QString& code);
QString 範囲上限make(const QString& code, short fallback);

// Steps the last character of a code through 0-9, A-Z; at Z (or any other
// character) the code grows by "0". No carry.
QString コード次make(const QString& code);

// Only the digits of a text (ASCII and full-width), order kept.
QString 数字抽出conv(const QString& text);

// The text without its "%".
QString パーセント除去conv(const QString& text);

// Takes the condition on 項目名 out of 条件文: returns its value and writes the
// shortened text to 残り. Returns the empty text and leaves 残り alone when no
// condition on the column is found, when its value has no closing quote, or
// when 条件文 is longer than 32,767 characters. 条件文 and 残り may be the
// same object.
QString 検索条件parse(const QString& 項目名, const QString& 条件文, QString& 残り);
