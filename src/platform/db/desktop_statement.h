#pragma once

#include "platform/db/error.h"

#include <QString>
#include <QVariant>

struct sqlite3_stmt;

namespace db {

class Connection;

// One statement on the desktop engine's own connection, read a row at a time.
// A value is taken from the engine only when the program asks for it, as the
// engine keeps it (UTF-8 text), so that a list converts nothing it does not
// show.
class DesktopStatement {
public:
    explicit DesktopStatement(Connection& connection);
    ~DesktopStatement();
    DesktopStatement(const DesktopStatement&) = delete;
    DesktopStatement& operator=(const DesktopStatement&) = delete;

    // Prepares the text (already in the engine's dialect) and steps to its
    // first row. False with *error set when either fails.
    bool exec(const QString& text, Error* error);
    // Steps to the next row. False at the end, and with *error set on a
    // failure; a statement that has reached its end stays there.
    bool next(Error* error);
    // Whether the statement stands on a row.
    bool atRow() const { return row_; }

    int columnCount() const;
    QString columnName(int column) const;
    // The column of the current row: integer, real, text, bytes, or null.
    QVariant value(int column) const;

    // The connection closes: the engine's statement goes with it.
    void connectionClosed();

private:
    void release();
    Error failure(int code) const;

    Connection* connection_; // null once the connection has closed
    sqlite3_stmt* statement_ = nullptr;
    int columns_ = 0; // the prepared statement's column count
    bool row_ = false;
    bool done_ = false;
};

} // namespace db
