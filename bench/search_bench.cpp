// Benchmarks of the list windows' searches against the raw engine doing the
// same work in the same run: a composite staff search that lists 1,000 of
// 100,000 rows, and a postcode range over the postcode master. Each runs on
// the desktop file against SQLite's own library and, when STAFF_TEST_PG names
// a server, on the server against its client library. Each program benchmark
// reports its time as a ratio to its raw counterpart ("ratio_to_raw"). The
// postcode range is measured a second time against a raw loop that also makes
// the strings the list shows, which the plain raw loop leaves as pointers.

#include "bench_support.h"
#include "platform/db/translate.h"
#include "schema/schema.h"
#include "search/wnd担当者一覧.h"
#include "search/wnd郵便番号一覧.h"
#include "shell/modデータ処理.h"
#include "tools/postcodes.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <libpq-fe.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace {

constexpr int kStaffRows = 100000;
constexpr int kSyntheticPostcodes = 150000;

class NoWaitBox : public ui::WaitBox {
public:
    void show() override {}
    void close() override {}
};

// The postcode master: the real one, from the pinned postcode package through
// npm as the installation tool takes it, or, where that cannot be had, a made
// one of a thousand heads of 150 postcodes each. Read for each database and
// let go once it is filled, so that the measured loops do not run in a heap
// that holds the whole master.
QList<QStringList> postcodeRows() {
    const setup::PostcodeRows real = setup::readPostcodes(setup::Postcodes::Npm, QString(), {}, false);
    if (real.ok && !real.rows.isEmpty()) {
        std::fprintf(stderr, "postcodes: the real master, %lld rows\n", static_cast<long long>(real.rows.size()));
        return real.rows;
    }
    std::fprintf(stderr, "postcodes: the real master cannot be had (%s); %d made rows\n", qPrintable(real.error),
                 kSyntheticPostcodes);
    QList<QStringList> made;
    for (int i = 0; i < kSyntheticPostcodes; ++i)
        made.append(
            {QStringLiteral("%1-%2").arg(i % 1000, 3, 10, QLatin1Char('0')).arg(i / 1000, 4, 10, QLatin1Char('0')),
             QStringLiteral("県%1市").arg(i % 1000, 3, 10, QLatin1Char('0')),
             QStringLiteral("町%1").arg(i / 1000, 4, 10, QLatin1Char('0'))});
    return made;
}

QString quoted(QString text) {
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

// The masters, kStaffRows staff and the postcode master, on the desktop engine or on the server.
class SearchDatabase {
public:
    explicit SearchDatabase(bench::Engine engine) {
        if (engine == bench::Engine::Postgres) {
            server_ = std::make_unique<bench::ServerDatabase>(QStringLiteral("search"));
        } else {
            path_ = dir_.filePath(QStringLiteral("main.accdb"));
            QFile(path_).open(QIODevice::WriteOnly);
        }
        db::Connection cn;
        if (!cn.open(connectionText()))
            qFatal("cannot open the bench database: %s", qPrintable(cn.lastError().description));
        const auto flavor = engine == bench::Engine::Sqlite ? schema::Flavor::Sqlite : schema::Flavor::Postgres;
        for (const QString& s : schema::createStatements(schema::Database::Main, flavor))
            cn.execute(s);
        if (engine == bench::Engine::Sqlite)
            cn.execute(QStringLiteral("PRAGMA synchronous = OFF"));
        for (int i = 0; i < 10; ++i) {
            const QString code = QStringLiteral("%1").arg(i, 3, 10, QLatin1Char('0'));
            cn.execute(QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ('%1','事業所%1')").arg(code));
            cn.execute(QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('%1','部門%1','1')").arg(code));
            cn.execute(QStringLiteral("INSERT INTO Mセクション (コード,名称,稼動状況区分) VALUES ('%1','課%1','1')").arg(code));
        }
        for (int start = 1; start <= kStaffRows; start += 500) {
            QString sql = QStringLiteral("INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,"
                                         "在籍区分,社員区分) VALUES ");
            for (int i = start; i < start + 500 && i <= kStaffRows; ++i) {
                if (i != start)
                    sql += QLatin1Char(',');
                sql += QStringLiteral("('%1','担当 %1','%2','%3','%4','0','1')")
                           .arg(i, 5, 10, QLatin1Char('0'))
                           .arg(i % 10, 3, 10, QLatin1Char('0'))
                           .arg((i / 10) % 10, 3, 10, QLatin1Char('0'))
                           .arg((i / 3) % 10, 3, 10, QLatin1Char('0'));
            }
            if (!cn.execute(sql))
                qFatal("cannot fill the staff rows: %s", qPrintable(cn.lastError().description));
        }
        const QList<QStringList> postcodes = postcodeRows();
        for (qsizetype start = 0; start < postcodes.size(); start += 500) {
            QString sql = QStringLiteral("INSERT INTO M郵便番号 (郵便番号,住所A,住所B) VALUES ");
            for (qsizetype i = start; i < start + 500 && i < postcodes.size(); ++i) {
                const QStringList& r = postcodes.at(i);
                if (i != start)
                    sql += QLatin1Char(',');
                sql += QLatin1Char('(') + quoted(r.value(0)) + QLatin1Char(',') + quoted(r.value(1)) +
                       QLatin1Char(',') + quoted(r.value(2)) + QLatin1Char(')');
            }
            if (!cn.execute(sql))
                qFatal("cannot fill the postcodes: %s", qPrintable(cn.lastError().description));
        }
        if (engine == bench::Engine::Postgres)
            cn.execute(QStringLiteral("ANALYZE"));
    }
    QString connectionText() const {
        return server_ ? server_->connectionText() : bench::desktopConnectionText(path_);
    }
    const QString& path() const { return path_; }
    QByteArray conninfo() const { return server_->conninfo(); }

private:
    QTemporaryDir dir_;
    QString path_;
    std::unique_ptr<bench::ServerDatabase> server_;
};

SearchDatabase& searchDatabase(bench::Engine engine) {
    static std::map<bench::Engine, std::unique_ptr<SearchDatabase>> databases;
    auto& database = databases[engine];
    if (!database)
        database = std::make_unique<SearchDatabase>(engine);
    return *database;
}

// The composite search on department 003: 10,000 rows match, 1,000 are listed.
QString staffSearch() {
    人員一覧状態 s;
    s.部門コード = QStringLiteral("003");
    return 担当者一覧SQLmake(s, QStringLiteral("A"), QString(), QStringLiteral("000"), QString());
}

// The postcodes of the head "100" (Chiyoda in the real master).
QString postcodeRange() {
    郵便番号一覧状態 s;
    s.検索区分 = 1;
    s.郵便番号 = QStringLiteral("100");
    return 郵便番号一覧SQLmake(s);
}

struct Path {
    const char* name;
    QString (*statement)();
    QStringList columns; // the columns the list shows
    int limit;           // the list's row limit, 0 for none
    bool rawStrings;     // the raw loop makes a string of each value, as the program must
};

const Path& staffComposite() {
    static const Path p{"StaffComposite",
                        staffSearch,
                        {QStringLiteral("コード"), QStringLiteral("氏名"), QStringLiteral("事業所名"),
                         QStringLiteral("部門名"), QStringLiteral("セクション名")},
                        1000,
                        false};
    return p;
}

const Path& postcodes() {
    static const Path p{"PostcodeRange",
                        postcodeRange,
                        {QStringLiteral("郵便番号"), QStringLiteral("住所A"), QStringLiteral("住所B")},
                        0,
                        false};
    return p;
}

const Path& postcodesAsStrings() {
    static const Path p{"PostcodeRangeWithStrings", postcodeRange, postcodes().columns, 0, true};
    return p;
}

std::string key(const Path& path, bench::Engine engine) {
    return std::string(path.name) + '/' + bench::engineName(engine);
}

// The rows the raw engine finds for the statement; the program must list as many.
int expectedRows(const Path& path, bench::Engine engine) {
    static std::map<std::string, int> counts;
    const std::string k = key(path, engine);
    if (!counts.count(k)) {
        db::Connection cn;
        cn.open(searchDatabase(engine).connectionText());
        db::Recordset rs;
        int rows = 0;
        if (rs.open(path.statement(), cn))
            for (; !rs.eof() && (path.limit == 0 || rows < path.limit); rs.moveNext())
                ++rows;
        counts[k] = rows;
        std::fprintf(stderr, "%s: %d rows\n", k.c_str(), rows);
    }
    return counts.at(k);
}

// The raw engine: the translated statement, every row read column by column.
void Raw(benchmark::State& state, const Path& path, bench::Engine engine) {
    SearchDatabase& database = searchDatabase(engine);
    const int expected = expectedRows(path, engine);
    const int columns = static_cast<int>(path.columns.size());
    if (engine == bench::Engine::Postgres) {
        bench::PgHandle handle(database.conninfo());
        const QByteArray sql = db::translate(path.statement(), db::Target::Postgres).sql.toUtf8();
        const auto start = std::chrono::steady_clock::now();
        for (auto _ : state) {
            PGresult* result = PQexec(handle.raw(), sql.constData());
            const int rows = PQntuples(result);
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c) {
                    if (path.rawStrings)
                        benchmark::DoNotOptimize(
                            QString::fromUtf8(PQgetvalue(result, r, c), PQgetlength(result, r, c)));
                    else
                        benchmark::DoNotOptimize(PQgetvalue(result, r, c));
                }
            PQclear(result);
            if (rows != expected)
                state.SkipWithError("unexpected row count");
        }
        bench::rememberRaw(key(path, engine), bench::nsPerIteration(start, state));
        return;
    }
    sqlite3* handle = nullptr;
    sqlite3_open_v2(qPrintable(database.path()), &handle, SQLITE_OPEN_READONLY, nullptr);
    const QByteArray sql = db::translate(path.statement(), db::Target::Sqlite).sql.toUtf8();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(handle, sql.constData(), -1, &stmt, nullptr);
        int rows = 0;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            for (int c = 0; c < columns; ++c) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
                if (path.rawStrings)
                    benchmark::DoNotOptimize(QString::fromUtf8(text, sqlite3_column_bytes(stmt, c)));
                else
                    benchmark::DoNotOptimize(text);
            }
            ++rows;
        }
        sqlite3_finalize(stmt);
        if (rows != expected)
            state.SkipWithError("unexpected row count");
    }
    bench::rememberRaw(key(path, engine), bench::nsPerIteration(start, state));
    sqlite3_close(handle);
}

// The program: the statement routine and the fill's loop over the fields.
void Program(benchmark::State& state, const Path& path, bench::Engine engine) {
    SearchDatabase& database = searchDatabase(engine);
    const int expected = expectedRows(path, engine);
    os::System system;
    ui::ConsoleMessages messages;
    NoWaitBox wait;
    Context ctx(system, messages, wait);
    ctx.conn.業務DB接続.open(database.connectionText());
    ctx.conn.業務DB接続中 = true;
    const QString statement = path.statement();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        db::Recordset rs;
        int rows = 0;
        if (業務SQLopen(ctx, rs, statement, false)) {
            while (!rs.eof() && (path.limit == 0 || rows < path.limit)) {
                for (const QString& column : path.columns)
                    benchmark::DoNotOptimize(rs.field(column).text());
                ++rows;
                rs.moveNext();
            }
        }
        rs.close();
        if (rows != expected)
            state.SkipWithError("unexpected row count");
    }
    bench::reportRatio(state, key(path, engine), bench::nsPerIteration(start, state));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (bench::Engine engine : bench::engines()) {
        for (const Path* path : {&staffComposite(), &postcodes(), &postcodesAsStrings()}) {
            const std::string name = key(*path, engine);
            benchmark::RegisterBenchmark((name + "/Raw").c_str(), Raw, *path, engine)->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark((name + "/Program").c_str(), Program, *path, engine)
                ->Unit(benchmark::kMicrosecond);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
