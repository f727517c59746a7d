#pragma once

#include "platform/db/connection.h"

#include <QList>
#include <QString>

#include <memory>

namespace db {

// One table definition of a desktop database file: its name, its attributes
// and, for a linked table, the text that tells where its data lies.
struct TableDef {
    QString name;
    qint32 attributes = 0;
    QString connect;
};

// The table definitions of one desktop database file at a time, for pointing
// its linked tables at another file. Opened by the name of a desktop engine;
// an empty name is the default engine.
class TableLinks {
public:
    virtual ~TableLinks() = default;

    virtual bool open(const QString& file, const QString& engine) = 0;
    // The definitions of the open file; none when nothing is open.
    virtual QList<TableDef> tableDefs() = 0;
    virtual bool setConnect(const QString& table, const QString& connect) = 0;
    virtual bool refreshLink(const QString& table) = 0;
    virtual void close() = 0;
    // Why the last operation failed.
    virtual QString lastError() const = 0;
};

// The desktop files of this port. Every engine opens the same SQLite file,
// whose tables are all its own: there is no linked table to point elsewhere.
class DesktopTableLinks : public TableLinks {
public:
    bool open(const QString& file, const QString& engine) override;
    QList<TableDef> tableDefs() override;
    bool setConnect(const QString& table, const QString& connect) override;
    bool refreshLink(const QString& table) override;
    void close() override;
    QString lastError() const override { return error_; }
    static DesktopTableLinks& instance();

private:
    bool notLinked(const QString& table);

    // Held only while a file is open, so that nothing of the engine outlives the program's run.
    std::unique_ptr<Connection> file_;
    QString error_;
};

} // namespace db
