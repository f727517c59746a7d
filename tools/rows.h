#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

#include "schema/schema.h"

namespace db {
class Connection;
}

namespace setup {

// Column name and value of one row.
using Values = QList<std::pair<QString, QString>>;

// Writes rows into the tables of the schema as plain INSERT statements, one
// statement standing alone each time. Rows of a table that the database
// written to does not hold are passed over, so that one seed serves the main
// database and the personnel system's.
class RowWriter {
public:
    RowWriter(db::Connection& connection, schema::Database database)
        : connection_(connection), database_(database) {}

    // One row with every column of the table: the columns not named get the
    // empty text (0 for a number column).
    bool insert(const QString& table, const Values& values);

    // Rows of the named columns, many to a statement.
    bool insertMany(const QString& table, const QStringList& columns, const QList<QStringList>& rows,
                    qsizetype rowsPerStatement = 500);

    // Why the last insert failed.
    const QString& error() const { return error_; }

private:
    bool run(const QString& table, const QString& sql);

    db::Connection& connection_;
    schema::Database database_;
    QString error_;
};

// A text as an SQL literal, quotes doubled.
QString quoted(const QString& text);

} // namespace setup
