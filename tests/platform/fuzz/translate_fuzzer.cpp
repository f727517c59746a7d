// Feeds arbitrary text to the dialect translator, for every target engine.
// Besides the sanitizers, a broken rule stops the run:
//  - the lexer gives the text back exactly when its tokens are put together;
//  - a translated text holds one statement: behind a ';' that the lexer finds
//    outside strings, quoted and bracketed names and comments, there is
//    nothing but blanks and comments;
//  - on a server, which knows no brackets, no bracket is left open (it would
//    read what the lexer takes for the bracket's name);
//  - a refused text comes back with a number and a description.
#include "platform/db/sql_lexer.h"
#include "platform/db/translate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

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

bool oneStatement(const QList<db::Token>& tokens) {
    bool ended = false;
    for (const db::Token& t : tokens) {
        if (ended && !t.isBlank())
            return false;
        if (t.isSymbol(';'))
            ended = true;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = decode(data, size);
    require(db::join(db::lex(input)) == input);

    for (db::Target target : {db::Target::Sqlite, db::Target::Postgres, db::Target::OdbcNative, db::Target::OdbcOracle}) {
        const db::Translation t = db::translate(input, target);
        if (!t.ok) {
            require(t.error.failed());
            require(!t.error.description.isEmpty());
            continue;
        }
        const QList<db::Token> tokens = db::lex(t.sql);
        require(oneStatement(tokens));
        if (target == db::Target::Postgres || target == db::Target::OdbcOracle)
            for (const db::Token& token : tokens)
                require(token.kind != db::Token::Bracketed || token.closed);
        // The input held one statement too: the translator refuses a second one.
        require(oneStatement(db::lex(input)));
    }
    return 0;
}
