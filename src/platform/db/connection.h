#pragma once

#include "platform/db/connection_text.h"
#include "platform/db/error.h"
#include "platform/db/translate.h"

#include <QString>

#include <memory>
#include <vector>

class QSqlDatabase;
class QSqlQuery;
struct sqlite3;

namespace db {

class DesktopStatement;

// What a statement met when the server connection had gone: the loss as the
// engine told it, and the one reopen that followed.
struct Recovery {
    bool lost = false;     // the statement found the server connection lost
    Error loss;            // the loss in words, with the engine's own text
    bool reopened = false; // the connection was opened again and the statement ran once more
    Error reopenError;     // why the connection could not be opened again
};

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

    // Runs a text already in the engine's dialect on a new query of this
    // connection; query holds it afterwards. When the server connection turns
    // out to be lost, before or by this statement, the connection is opened
    // once more with the same connection text and the statement runs again.
    // No transaction is opened: each statement stands alone. Inside a
    // transaction of beginTransaction a lost connection is not reopened: the
    // statement fails, since the work before it is gone with the connection.
    bool run(std::unique_ptr<QSqlQuery>& query, const QString& text, bool forwardOnly);

    // One transaction over the statements that follow, for tools that replace
    // a table's rows as a whole. The program's own saves use none.
    bool beginTransaction();
    bool commitTransaction();
    void rollbackTransaction();

    const Error& lastError() const { return error_; }
    // The loss and the reopen that the last statement met; lost is false when
    // it found the connection as it should be.
    const Recovery& lastRecovery() const { return recovery_; }
    Engine engine() const { return engine_; }
    Target target() const;

    // The engine's own connection, for the recordset of this layer.
    QSqlDatabase database() const;
    // The desktop engine's own handle, where the recordset may read rows
    // through it directly (the engine's driver and this layer share one
    // engine library); null otherwise.
    sqlite3* desktopHandle() const { return desktop_; }
    // The statements open on that handle; closing the connection lets go of them.
    void attach(DesktopStatement* statement);
    void detach(DesktopStatement* statement);

private:
    bool fail(long number, const QString& description);
    bool serverEngine() const { return engine_ == Engine::Postgres || engine_ == Engine::Odbc; }
    bool reopen(Error* why);
    sqlite3* sharedDesktopHandle() const;

    QString name_;
    QString lossText_; // the engine's text of the failure that lost the connection
    QString dialect_;
    Engine engine_ = Engine::None;
    bool open_ = false;
    bool inTransaction_ = false;
    Error error_;
    Recovery recovery_;
    sqlite3* desktop_ = nullptr;
    std::vector<DesktopStatement*> statements_;
};

} // namespace db
