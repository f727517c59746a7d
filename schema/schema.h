#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The one definition of every table of the configuration database, the main
// database and the personnel system's database, emitted as DDL per engine.
namespace schema {

enum class Database {
    Configuration, // conf/usrcnfg.accdb
    Main,          // the main database; also holds the personnel tables
    Personnel,     // the personnel system's own main database
};

struct Column {
    enum Type { Text, Number };
    QString name;
    Type type = Text;
};

struct Table {
    QString name;
    QList<Database> databases;     // where the table is created
    QList<Column> columns;         // in the order the program writes them
    QStringList primaryKey;        // may be empty
    QList<QStringList> indexes;    // further indexes, one column list each
};

enum class Flavor { Sqlite, Postgres };

// All tables, in a fixed order.
const QList<Table>& tables();
// The table of that name, or nullptr.
const Table* find(const QString& name);
// CREATE TABLE and CREATE INDEX statements for one database, one statement each.
QStringList createStatements(Database database, Flavor flavor);

} // namespace schema
