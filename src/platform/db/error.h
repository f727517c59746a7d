#pragma once

#include <QString>

namespace db {

// Error numbers of the data access layer. Engine errors carry the engine's own
// number where it gives one (SQLite result codes); the rest use these.
enum ErrorNumber : long {
    kNoError = 0,
    kEngineError = 1000,        // the engine failed without a number of its own
    kTranslateError = 1001,     // the statement cannot be put into the engine's dialect
    kMultipleStatements = 1002, // a second statement follows the first
    kNotOpen = 1003,            // the connection or recordset is not open
    kOpenFailed = 1004,         // the connection could not be opened
    kBadConnectionText = 1005,  // provider unknown or a required part missing
    kConnectionLost = 1006,     // the server connection has gone
};

// An error as the program sees it: a number and a description.
struct Error {
    long number = kNoError;
    QString description;

    bool failed() const { return number != kNoError; }
    void clear() {
        number = kNoError;
        description.clear();
    }
};

} // namespace db
