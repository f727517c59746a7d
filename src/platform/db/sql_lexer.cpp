#include "platform/db/sql_lexer.h"

namespace db {

bool Token::isWord(const char* upper) const {
    return kind == Word && text.compare(QLatin1String(upper), Qt::CaseInsensitive) == 0;
}

namespace {

bool isWordStart(QChar c) {
    return c.isLetter() || c == QLatin1Char('_') || c.unicode() > 0x7f;
}

bool isWordPart(QChar c) {
    if (c.unicode() > 0x7f)
        return !c.isSpace();
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
}

// End of a dollar-quote tag "$tag$" that starts at i, or i when there is none.
qsizetype dollarTagEnd(const QString& sql, qsizetype i) {
    qsizetype k = i + 1;
    if (k < sql.size() && sql.at(k).isDigit())
        return i; // $1 is a parameter
    while (k < sql.size() && sql.at(k) != QLatin1Char('$')) {
        if (!isWordPart(sql.at(k)) || sql.at(k) == QLatin1Char('$'))
            return i;
        ++k;
    }
    return k < sql.size() ? k + 1 : i;
}

} // namespace

QList<Token> lex(const QString& sql) {
    QList<Token> out;
    const qsizetype n = sql.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = sql.at(i);
        const qsizetype start = i;
        if (c.isSpace()) {
            while (i < n && sql.at(i).isSpace())
                ++i;
            out.append({Token::Space, sql.mid(start, i - start)});
        } else if (c == QLatin1Char('-') && i + 1 < n && sql.at(i + 1) == QLatin1Char('-')) {
            while (i < n && sql.at(i) != QLatin1Char('\n'))
                ++i;
            out.append({Token::Comment, sql.mid(start, i - start)});
        } else if (c == QLatin1Char('/') && i + 1 < n && sql.at(i + 1) == QLatin1Char('*')) {
            const qsizetype end = sql.indexOf(QLatin1String("*/"), i + 2);
            i = end < 0 ? n : end + 2;
            out.append({Token::Comment, sql.mid(start, i - start), end >= 0});
        } else if (c == QLatin1Char('$') && dollarTagEnd(sql, i) > i) {
            // A dollar-quoted string of the server: $tag$ ... $tag$.
            const qsizetype tagEnd = dollarTagEnd(sql, i);
            const QString tag = sql.mid(i, tagEnd - i);
            const qsizetype close = sql.indexOf(tag, tagEnd);
            i = close < 0 ? n : close + tag.size();
            out.append({Token::String, sql.mid(start, i - start), close >= 0});
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            // An escape string E'...' of the server takes a backslash before any character.
            const bool escapes = c == QLatin1Char('\'') && !out.isEmpty() && out.last().kind == Token::Word &&
                                 out.last().text.compare(QLatin1String("E"), Qt::CaseInsensitive) == 0;
            bool closed = false;
            ++i;
            while (i < n) {
                if (escapes && sql.at(i) == QLatin1Char('\\')) {
                    i += 2;
                    continue;
                }
                if (sql.at(i) == c) {
                    if (i + 1 < n && sql.at(i + 1) == c) {
                        i += 2;
                        continue;
                    }
                    ++i;
                    closed = true;
                    break;
                }
                ++i;
            }
            out.append({c == QLatin1Char('\'') ? Token::String : Token::Quoted, sql.mid(start, i - start), closed});
        } else if (c == QLatin1Char('[')) {
            const qsizetype end = sql.indexOf(QLatin1Char(']'), i + 1);
            i = end < 0 ? n : end + 1;
            out.append({Token::Bracketed, sql.mid(start, i - start), end >= 0});
        } else if (c.isDigit() && c.unicode() < 0x80) {
            while (i < n && sql.at(i).unicode() < 0x80 && (sql.at(i).isDigit() || sql.at(i) == QLatin1Char('.')))
                ++i;
            out.append({Token::Number, sql.mid(start, i - start)});
        } else if (isWordStart(c)) {
            while (i < n && isWordPart(sql.at(i)))
                ++i;
            out.append({Token::Word, sql.mid(start, i - start)});
        } else {
            static const char* const pairs[] = {"<=", ">=", "<>", "!=", "||"};
            qsizetype len = 1;
            if (i + 1 < n) {
                const QString two = sql.mid(i, 2);
                for (const char* p : pairs)
                    if (two == QLatin1String(p))
                        len = 2;
            }
            i += len;
            out.append({Token::Symbol, sql.mid(start, len)});
        }
    }
    return out;
}

QString join(const QList<Token>& tokens) {
    QString s;
    for (const Token& t : tokens)
        s += t.text;
    return s;
}

} // namespace db
