#pragma once

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

namespace testdb {

enum class Engine { Sqlite, Postgres };

// For parametrised test names: "Sqlite", "Postgres".
std::string engineName(Engine engine);
inline std::string engineParamName(const ::testing::TestParamInfo<Engine>& info) {
    return engineName(info.param);
}

// The PostgreSQL server that the test command started (environment STAFF_TEST_PG,
// "host:port"; user "postgres", no password).
struct PgServer {
    QString host;
    int port = 5432;
    QString user = QStringLiteral("postgres");
    QString password;
    QString dataSource() const { return host + QLatin1Char(':') + QString::number(port); }
};
std::optional<PgServer> pgServer();

// True when tests must not skip a missing server (CI=true).
bool serverRequired();

// A new empty database, dropped or deleted again when the object goes.
class ScratchDatabase {
public:
    ScratchDatabase(Engine engine, const QString& folder);
    ~ScratchDatabase();
    ScratchDatabase(const ScratchDatabase&) = delete;
    ScratchDatabase& operator=(const ScratchDatabase&) = delete;

    bool ok() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }
    Engine engine() const { return engine_; }

    // "Provider=...;User ID=...;Password=...;Data Source=...;[Initial Catalog=...;]"
    QString connectionText() const;
    // The file for SQLite, the database name for PostgreSQL.
    const QString& name() const { return name_; }

private:
    Engine engine_;
    QString name_;
    QString error_;
};

// Runs a statement on the server's maintenance database.
bool adminExecute(const QString& sql, QString* error = nullptr);

// The rows of a query on a database of its own connection, each row's columns
// joined by '|'; a database or statement that fails is a test failure.
QStringList query(const QString& connectionText, const QString& sql, const QStringList& columns);

} // namespace testdb

// In a test body: skip (or, under CI=true, fail) when the engine is not at hand.
#define STAFF_REQUIRE_ENGINE(engine)                                                                    \
    do {                                                                                                \
        if ((engine) == ::testdb::Engine::Postgres && !::testdb::pgServer()) {                          \
            if (::testdb::serverRequired())                                                             \
                FAIL() << "PostgreSQL is required (STAFF_TEST_PG is not set) and CI=true";              \
            GTEST_SKIP() << "no PostgreSQL server for this test run (STAFF_TEST_PG is not set)";        \
        }                                                                                               \
    } while (0)
