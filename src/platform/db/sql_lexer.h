#pragma once

#include <QList>
#include <QString>

namespace db {

// One token of a statement text. The text of all tokens put together again is
// the statement exactly as it was given.
struct Token {
    enum Kind {
        Space,       // blanks, tabs, line ends
        Comment,     // -- to the end of the line, or /* ... */
        Word,        // a name or keyword: letters, digits, '_', '$' and all non-ASCII characters
        Number,      // digits, with an optional decimal part
        String,      // '...' with '' inside; `closed` is false when the text ends inside it
        Quoted,      // "..." identifier
        Bracketed,   // [...] identifier
        Symbol,      // one operator or punctuation mark; "<=", ">=", "<>", "!=" and "||" as one
    };
    Kind kind;
    QString text;
    bool closed = true;

    bool isWord(const char* upper) const;
    bool isSymbol(char c) const { return kind == Symbol && text.size() == 1 && text.at(0) == QLatin1Char(c); }
    bool isBlank() const { return kind == Space || kind == Comment; }
};

QList<Token> lex(const QString& sql);
QString join(const QList<Token>& tokens);

} // namespace db
