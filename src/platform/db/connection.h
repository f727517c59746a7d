#pragma once

#include "platform/db/connection_text.h"
#include "platform/db/error.h"
#include "platform/db/translate.h"

#include <QString>

class QSqlDatabase;

namespace db {

// A connection to one database, opened from a connection text
// ("Provider=...;User ID=...;Password=...;Data Source=...;").
// Statements are translated into the engine's dialect before they run; the text
// the program built is never changed on its way back to the program.
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Settings applied at the next open, where the engine has an equivalent:
    // seconds to wait for the server, seconds a statement may run, and the
    // cursor location (3, client-side, is the only one this layer offers).
    int connectionTimeout = 15;
    int commandTimeout = 30;
    int cursorLocation = 3;

    // The program's SQL dialect ("A", "S" or "O"); tells an ODBC source how to
    // take row limits and outer joins.
    void setDialect(const QString& dialect) { dialect_ = dialect; }

    bool open(const QString& connectionText);
    void close();
    bool isOpen() const;

    // Runs one statement that returns no rows.
    bool execute(const QString& sql);

    const Error& lastError() const { return error_; }
    Engine engine() const { return engine_; }
    Target target() const;

    // The engine's own connection, for the recordset of this layer.
    QSqlDatabase database() const;

private:
    bool fail(long number, const QString& description);

    QString name_;
    QString dialect_;
    Engine engine_ = Engine::None;
    bool open_ = false;
    Error error_;
};

} // namespace db
