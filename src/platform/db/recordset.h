#pragma once

#include "platform/db/connection.h"
#include "platform/db/error.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class QSqlQuery;

namespace db {

class DesktopStatement;
class ServerResult;

// One column of the current row.
struct Field {
    QVariant value;
    bool exists = false; // false when the recordset has no column of that name

    bool isNull() const { return !exists || value.isNull(); }
    QString text() const {
        if (isNull())
            return QString();
        // Most values are texts already: take them as they are, without a conversion.
        if (value.metaType() == QMetaType::fromType<QString>())
            return *static_cast<const QString*>(value.constData());
        return value.toString();
    }
};

// A forward-only, read-only recordset over the result of one statement.
class Recordset {
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Runs the statement on the connection. False when it failed; the
    // recordset may then be closed as any other.
    bool open(const QString& sql, Connection& connection);
    void close();
    bool isOpen() const { return open_; }

    // Before the first row / behind the last row. Both are true for an empty result.
    bool bof() const { return bof_; }
    bool eof() const { return eof_; }

    // The column of the current row; names compare without regard to case.
    Field field(const QString& name) const;
    void moveNext();

    const Error& lastError() const { return error_; }
    // The loss of the server connection that the open met, and its reopen.
    const Recovery& lastRecovery() const { return recovery_; }
    // The names of the result's columns, as the program knows them.
    const QStringList& columnNames() const { return names_; }

private:
    int indexOf(const QString& name) const;

    std::unique_ptr<QSqlQuery> query_;          // a server's rows, through the engine's driver
    std::unique_ptr<DesktopStatement> desktop_; // the desktop engine's rows, read directly
    std::unique_ptr<ServerResult> server_;      // the server's rows under the driver, read directly
    QStringList names_; // the column names of the result, as the program knows them
    // Names the program asked for that matched a column only without regard
    // to case, as it wrote them, with the column they found.
    mutable QList<QPair<QString, int>> caseBlindHits_;
    bool open_ = false;
    bool bof_ = true;
    bool eof_ = true;
    Error error_;
    Recovery recovery_;
};

} // namespace db
