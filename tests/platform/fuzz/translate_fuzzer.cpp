// Feeds arbitrary text to the dialect translator, for every target engine.
// Besides the sanitizers, a broken rule stops the run:
//  - the lexer gives the text back exactly when its tokens are put together;
//  - a translated text holds one statement: behind a ';' that the lexer finds
//    outside strings, quoted and bracketed names and comments, there is
//    nothing but blanks and comments;
//  - on a server, which knows no brackets, no bracket is left open (it would
//    read what the lexer takes for the bracket's name);
//  - a translated text ends open (inside a string, a quoted name or a
//    comment) only with the very token that the input ends open with: what
//    the translator moves or puts behind never lands inside it;
//  - a row limit ("TOP n" behind a SELECT) comes out as the last words of the
//    text, not inside a comment or a string;
//  - a refused text comes back with a number and a description.
#include "platform/db/sql_lexer.h"
#include "platform/db/translate.h"
#include "support/fuzz_input.h"

#include <cstddef>
#include <cstdint>

namespace {

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

// Whether a SELECT with TOP behind it stands in the text.
bool takesTop(const QList<db::Token>& tokens) {
    qsizetype previous = -1;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (tokens.at(i).isBlank())
            continue;
        if (previous >= 0 && tokens.at(previous).isWord("SELECT") && tokens.at(i).isWord("TOP"))
            return true;
        previous = i;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = fuzz::decode(data, size);
    const QList<db::Token> inputTokens = db::lex(input);
    fuzz::require(db::join(inputTokens) == input);

    for (db::Target target : {db::Target::Sqlite, db::Target::Postgres, db::Target::OdbcNative, db::Target::OdbcOracle}) {
        const db::Translation t = db::translate(input, target);
        if (!t.ok) {
            fuzz::require(t.error.failed());
            fuzz::require(!t.error.description.isEmpty());
            continue;
        }
        const QList<db::Token> tokens = db::lex(t.sql);
        fuzz::require(oneStatement(tokens));
        if (target != db::Target::OdbcNative && takesTop(inputTokens)) {
            fuzz::require(!tokens.isEmpty());
            const db::Token& last = tokens.last();
            fuzz::require(target == db::Target::OdbcOracle ? last.isWord("ONLY") : last.kind == db::Token::Number);
        }
        if (!tokens.isEmpty() && !tokens.last().closed)
            fuzz::require(!inputTokens.isEmpty() && !inputTokens.last().closed &&
                          inputTokens.last().text == tokens.last().text);
        if (target == db::Target::Postgres || target == db::Target::OdbcOracle)
            for (const db::Token& token : tokens)
                fuzz::require(token.kind != db::Token::Bracketed || token.closed);
        // The input held one statement too: the translator refuses a second one.
        fuzz::require(oneStatement(inputTokens));
    }
    return 0;
}
