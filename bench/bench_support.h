#pragma once

#include <QByteArray>
#include <QString>

#include <benchmark/benchmark.h>

#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

typedef struct pg_conn PGconn;

// What every benchmark program of this folder shares: each raw benchmark runs
// first and keeps its time per iteration; the program's benchmark beside it
// reports its own time as a ratio to it.
namespace bench {

// Nanoseconds per iteration of the loop that began at start.
double nsPerIteration(std::chrono::steady_clock::time_point start, const benchmark::State& state);

// Keeps the time of a raw benchmark under a name.
void rememberRaw(const std::string& name, double ns);
// Sets counters["ratio_to_raw"] of a program benchmark against the raw one of that name.
void reportRatio(benchmark::State& state, const std::string& name, double ns);

// The connection text of a desktop database file.
QString desktopConnectionText(const QString& file);

// The engines a benchmark runs on, as its name says them: "Sqlite", "Postgres".
enum class Engine { Sqlite, Postgres };
const char* engineName(Engine engine);

// The PostgreSQL server of the run (STAFF_TEST_PG, "host:port"; user
// "postgres" without password), when one is set.
struct PgServer {
    QString host;
    int port = 5432;
};
std::optional<PgServer> pgServer();
// The engines at hand: the desktop engine, and the server when one is set.
std::vector<Engine> engines();

// A new database on the server, dropped again when the object goes. With
// create false only its name is drawn, for a tool that makes it.
class ServerDatabase {
public:
    explicit ServerDatabase(const QString& purpose, bool create = true);
    ~ServerDatabase();
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;

    const QString& name() const { return name_; }
    // "Provider=PostgreSQL;...": what the program opens.
    QString connectionText() const;
    // "host=... port=... dbname=...": what the raw client library opens.
    QByteArray conninfo() const;

private:
    PgServer server_;
    QString name_;
};

// The raw client library of the server (libpq) running statement texts.
class PgHandle {
public:
    explicit PgHandle(const QByteArray& conninfo);
    ~PgHandle();
    PgHandle(const PgHandle&) = delete;
    PgHandle& operator=(const PgHandle&) = delete;

    PGconn* raw() const { return conn_; }
    // Runs a statement that returns no rows.
    bool exec(const QString& sql);
    // The first row of a query, the columns at the positions asked for (all of them for none).
    std::optional<std::vector<QString>> first(const QString& sql, std::initializer_list<int> columns = {});
    long count(const QString& sql);

private:
    PGconn* conn_ = nullptr;
};

} // namespace bench
