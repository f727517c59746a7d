#pragma once

#include "platform/db/table_links.h"

#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

// A desktop engine over table definitions that a test gives per file. A file
// opens when it is on disk and has definitions here; every call is kept, and
// the connect texts set can be read back.
class RecordingTableLinks : public db::TableLinks {
public:
    QMap<QString, QList<db::TableDef>> files; // by the file's path
    QSet<QString> failConnect, failRefresh;   // table names whose call fails
    // "open|file|engine", "connect|table|text", "refresh|table", "close"
    QStringList calls;

    bool open(const QString& file, const QString& engine) override {
        calls.append(QStringLiteral("open|") + file + QLatin1Char('|') + engine);
        if (!QFileInfo::exists(file) || !files.contains(file)) {
            error_ = QStringLiteral("cannot open ") + file;
            return false;
        }
        open_ = file;
        return true;
    }
    QList<db::TableDef> tableDefs() override { return open_.isEmpty() ? QList<db::TableDef>() : files.value(open_); }
    bool setConnect(const QString& table, const QString& connect) override {
        calls.append(QStringLiteral("connect|") + table + QLatin1Char('|') + connect);
        if (failConnect.contains(table))
            return fail(table);
        for (db::TableDef& t : files[open_])
            if (t.name == table)
                t.connect = connect;
        return true;
    }
    bool refreshLink(const QString& table) override {
        calls.append(QStringLiteral("refresh|") + table);
        return failRefresh.contains(table) ? fail(table) : true;
    }
    void close() override {
        calls.append(QStringLiteral("close"));
        open_.clear();
    }
    QString lastError() const override { return error_; }

private:
    bool fail(const QString& table) {
        error_ = QStringLiteral("cannot relink ") + table;
        return false;
    }
    QString open_;
    QString error_;
};
