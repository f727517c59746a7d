#pragma once

#include "platform/db/error.h"

#include <QString>

namespace db {

// What the translated text is for.
enum class Target {
    Sqlite,     // desktop database file
    Postgres,   // database server
    OdbcNative, // ODBC source that speaks the program's dialect itself ("S" on its own server)
    OdbcOracle, // ODBC source of dialect "O": outer-join markers are its own, TOP is not
};

struct Translation {
    bool ok = false;
    QString sql;   // what the engine runs
    Error error;   // why it could not be translated
};

// Turns the program's statement text into the text the engine runs:
//  - exactly one statement: a second statement after the first is refused;
//  - "SELECT TOP n" becomes a trailing "LIMIT n" (or "FETCH FIRST n ROWS ONLY");
//  - comma-joined FROM lists with "col(+) = col" conditions become LEFT JOINs;
//  - "[name]" becomes a plain name on PostgreSQL;
//  - LIKE and NOT LIKE match without regard to case on PostgreSQL (ILIKE).
// Anything it cannot translate comes back with ok false and a description.
Translation translate(const QString& sql, Target target);

// The refusal of a text that holds a second statement behind the first.
Error multipleStatements();

} // namespace db
