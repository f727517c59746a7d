#pragma once

#include "support/fake_system.h"
#include "support/memory_registry.h"
#include "support/recording_messages.h"
#include "support/recording_table_links.h"
#include "support/test_databases.h"

#include "shell/context.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// An installation tree made by the installation tool in a temporary folder,
// with its main database on the desktop file or on the test server, and a
// program context whose program folder is the tree's prgbin.
class TestInstallation {
public:
    // dialect: "S" or "O" for a tree on the server; the desktop file is always "A".
    explicit TestInstallation(testdb::Engine engine, const QString& rootName = QStringLiteral("root"),
                              const QString& dialect = QStringLiteral("S"));
    ~TestInstallation();

    bool ok() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }

    const QString& root() const { return root_; }
    QString path(const QString& relative) const { return root_ + QLatin1Char('/') + relative; }
    QString configFile() const { return path(QStringLiteral("conf/usrcnfg.accdb")); }

    // A new program context on this tree (fresh shared state, same seams).
    Context& newContext();
    // The same for another program of the suite, named in the run history.
    Context& newContext(const QString& プログラムID);
    Context& ctx() { return *ctx_; }
    FakeSystem sys;
    RecordingMessages messages;
    CountingWaitBox waitBox;
    RecordingDesktop desktop;
    RecordingDialogs dialogs;
    // An empty registry answers as this platform's does: the tool is not found.
    MemoryRegistry registry;
    RecordingTableLinks tableLinks;

    // Runs a statement on the shared configuration file or on the main database,
    // outside the program's own connections.
    bool configExecute(const QString& sql);
    bool mainExecute(const QString& sql);
    // Rows of a query, each row's columns joined by '|' (null as "~").
    QStringList configRows(const QString& sql, const QStringList& columns) const;
    QStringList mainRows(const QString& sql, const QStringList& columns) const;
    // The run history as "proccounter|摘要", in the order written.
    QStringList history() const;
    QString mainConnectionText() const { return mainConnectionText_; }

private:
    QTemporaryDir base_;
    QString root_;
    QString error_;
    QString pgDatabase_;
    QString mainConnectionText_;
    std::unique_ptr<Context> ctx_;
};
