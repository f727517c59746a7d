#include "bench_support.h"

#include <QCoreApplication>
#include <QUuid>

#include <libpq-fe.h>

#include <map>

namespace bench {

namespace {

std::map<std::string, double>& rawTimes() {
    static std::map<std::string, double> times;
    return times;
}

} // namespace

double nsPerIteration(std::chrono::steady_clock::time_point start, const benchmark::State& state) {
    const auto ns = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
    return state.iterations() > 0 ? ns / static_cast<double>(state.iterations()) : 0.0;
}

void rememberRaw(const std::string& name, double ns) {
    rawTimes()[name] = ns;
}

void reportRatio(benchmark::State& state, const std::string& name, double ns) {
    const auto raw = rawTimes().find(name);
    if (raw != rawTimes().end() && raw->second > 0)
        state.counters["ratio_to_raw"] = ns / raw->second;
}

QString desktopConnectionText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + file +
           QStringLiteral(";");
}

const char* engineName(Engine engine) {
    return engine == Engine::Sqlite ? "Sqlite" : "Postgres";
}

std::optional<PgServer> pgServer() {
    const QString address = qEnvironmentVariable("STAFF_TEST_PG");
    if (address.isEmpty())
        return std::nullopt;
    PgServer server;
    const qsizetype colon = address.lastIndexOf(QLatin1Char(':'));
    server.host = colon > 0 ? address.left(colon) : address;
    if (colon > 0)
        server.port = address.mid(colon + 1).toInt();
    return server;
}

std::vector<Engine> engines() {
    if (pgServer())
        return {Engine::Sqlite, Engine::Postgres};
    return {Engine::Sqlite};
}

namespace {

QByteArray conninfoOf(const PgServer& server, const QString& database) {
    return QStringLiteral("host=%1 port=%2 user=postgres dbname=%3").arg(server.host).arg(server.port).arg(database).toUtf8();
}

void adminExecute(const PgServer& server, const QString& sql) {
    PgHandle admin(conninfoOf(server, QStringLiteral("postgres")));
    if (!admin.exec(sql))
        qFatal("the server refused: %s", qPrintable(sql));
}

} // namespace

ServerDatabase::ServerDatabase(const QString& purpose, bool create) {
    const auto server = pgServer();
    if (!server)
        qFatal("no server for the benchmark (STAFF_TEST_PG is not set)");
    server_ = *server;
    name_ = QStringLiteral("staff_bench_%1_%2").arg(purpose, QUuid::createUuid().toString(QUuid::Id128).left(8));
    if (create)
        adminExecute(server_, QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' "
                                         "LC_CTYPE 'C'")
                              .arg(name_));
}

ServerDatabase::~ServerDatabase() {
    adminExecute(server_, QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name_));
}

QString ServerDatabase::connectionText() const {
    return QStringLiteral("Provider=PostgreSQL;User ID=postgres;Password=;Data Source=%1:%2;Initial Catalog=%3;")
        .arg(server_.host)
        .arg(server_.port)
        .arg(name_);
}

QByteArray ServerDatabase::conninfo() const {
    return conninfoOf(server_, name_);
}

PgHandle::PgHandle(const QByteArray& conninfo) : conn_(PQconnectdb(conninfo.constData())) {
    if (PQstatus(conn_) != CONNECTION_OK)
        qFatal("cannot reach the server: %s", PQerrorMessage(conn_));
    // As the program's own connection: standard strings.
    exec(QStringLiteral("SET standard_conforming_strings = on"));
}

PgHandle::~PgHandle() {
    PQfinish(conn_);
}

bool PgHandle::exec(const QString& sql) {
    PGresult* result = PQexec(conn_, sql.toUtf8().constData());
    const ExecStatusType status = PQresultStatus(result);
    PQclear(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

std::optional<std::vector<QString>> PgHandle::first(const QString& sql, std::initializer_list<int> columns) {
    PGresult* result = PQexec(conn_, sql.toUtf8().constData());
    std::optional<std::vector<QString>> row;
    if (PQresultStatus(result) == PGRES_TUPLES_OK && PQntuples(result) > 0) {
        row.emplace();
        const auto take = [&](int c) {
            row->push_back(QString::fromUtf8(PQgetvalue(result, 0, c), PQgetlength(result, 0, c)));
        };
        if (columns.size() == 0)
            for (int c = 0; c < PQnfields(result); ++c)
                take(c);
        for (int c : columns)
            take(c);
    }
    PQclear(result);
    return row;
}

long PgHandle::count(const QString& sql) {
    const auto row = first(sql, {0});
    return row ? row->front().toLong() : -1;
}

} // namespace bench
