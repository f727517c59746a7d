// Benchmarks of the program's database paths against the raw engine doing
// the same work in the same run: the desktop file against SQLite's own
// library, the server (when STAFF_TEST_PG names one) against its client
// library. Each program benchmark reports its time as a ratio to its raw
// counterpart ("ratio_to_raw").

#include "bench_support.h"
#include "platform/db/translate.h"
#include "schema/schema.h"
#include "shell/modデータ処理.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <libpq-fe.h>
#include <sqlite3.h>

#include <chrono>
#include <map>
#include <memory>
#include <string>

namespace {

constexpr int kStaffRows = 100000;

class NoWaitBox : public ui::WaitBox {
public:
    void show() override {}
    void close() override {}
};

// The main tables with kStaffRows staff rows, on the desktop engine or on the server.
class StaffDatabase {
public:
    explicit StaffDatabase(bench::Engine engine) {
        if (engine == bench::Engine::Postgres) {
            server_ = std::make_unique<bench::ServerDatabase>(QStringLiteral("staff"));
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
            cn.execute(QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ('%1','事業所%2')").arg(i, 3, 10, QLatin1Char('0')).arg(i));
            cn.execute(QStringLiteral("INSERT INTO M部門 (コード,名称,稼動状況区分) VALUES ('%1','部門%2','1')").arg(i, 3, 10, QLatin1Char('0')).arg(i));
            cn.execute(QStringLiteral("INSERT INTO Mセクション (コード,名称,稼動状況区分) VALUES ('%1','課%2','1')").arg(i, 3, 10, QLatin1Char('0')).arg(i));
            cn.execute(QStringLiteral("INSERT INTO M役職 (コード,名称) VALUES ('%1','役職%2')").arg(i, 2, 10, QLatin1Char('0')).arg(i));
        }
        static const char* const family[] = {"佐藤", "鈴木", "高橋", "田中", "伊藤", "渡辺", "山本", "中村", "小林", "加藤"};
        static const char* const given[] = {"太郎", "花子", "一郎", "美咲", "健太", "陽子", "翔", "直美", "大輔", "由美"};
        for (int start = 1; start <= kStaffRows; start += 500) {
            QString sql = QStringLiteral("INSERT INTO M担当者 (コード,姓,名,氏名,事業所コード,部門コード,セクションコード,"
                                         "役職コード,在籍区分,社員区分) VALUES ");
            for (int i = start; i < start + 500 && i <= kStaffRows; ++i) {
                const QString f = QString::fromUtf8(family[i % 10]);
                const QString g = QString::fromUtf8(given[(i / 10) % 10]);
                if (i != start)
                    sql += QLatin1Char(',');
                sql += QStringLiteral("('%1','%2','%3','%2 %3','%4','%5','%6','%7','0','1')")
                           .arg(i, 5, 10, QLatin1Char('0'))
                           .arg(f, g)
                           .arg(i % 10, 3, 10, QLatin1Char('0'))
                           .arg((i / 7) % 10, 3, 10, QLatin1Char('0'))
                           .arg((i / 3) % 10, 3, 10, QLatin1Char('0'))
                           .arg(i % 10, 2, 10, QLatin1Char('0'));
            }
            if (!cn.execute(sql))
                qFatal("cannot fill the bench database: %s", qPrintable(cn.lastError().description));
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

StaffDatabase& staffDatabase(bench::Engine engine) {
    static std::map<bench::Engine, std::unique_ptr<StaffDatabase>> databases;
    auto& database = databases[engine];
    if (!database)
        database = std::make_unique<StaffDatabase>(engine);
    return *database;
}

QString staffCode(long i) {
    return QStringLiteral("%1").arg(i % kStaffRows + 1, 5, 10, QLatin1Char('0'));
}

const QString& staffRead() {
    static const QString sql = QStringLiteral(
        "SELECT TOP 1 M担当者.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名, "
        "M役職.名称 AS 役職名 FROM M役職 RIGHT JOIN (Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN "
        "M担当者 ON M事業所.コード = M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON Mセクション.コード "
        "= M担当者.セクションコード) ON M役職.コード = M担当者.役職コード WHERE M担当者.コード = '");
    return sql;
}

std::string key(bench::Engine engine) {
    return std::string("StaffPointRead/") + bench::engineName(engine);
}

// The raw engine: the translated statement, the row's name column found by its name.
void StaffPointRead_Raw(benchmark::State& state, bench::Engine engine) {
    StaffDatabase& database = staffDatabase(engine);
    long i = 0;
    if (engine == bench::Engine::Postgres) {
        bench::PgHandle handle(database.conninfo());
        const auto start = std::chrono::steady_clock::now();
        for (auto _ : state) {
            const QByteArray sql =
                db::translate(staffRead() + staffCode(i++) + QStringLiteral("'"), db::Target::Postgres).sql.toUtf8();
            PGresult* result = PQexec(handle.raw(), sql.constData());
            if (PQresultStatus(result) != PGRES_TUPLES_OK || PQntuples(result) != 1)
                state.SkipWithError("no row");
            for (int c = 0; c < PQnfields(result); ++c)
                if (std::string(PQfname(result, c)) == "氏名")
                    benchmark::DoNotOptimize(PQgetvalue(result, 0, c));
            PQclear(result);
        }
        bench::rememberRaw(key(engine), bench::nsPerIteration(start, state));
        return;
    }
    sqlite3* handle = nullptr;
    sqlite3_open_v2(qPrintable(database.path()), &handle, SQLITE_OPEN_READONLY, nullptr);
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        const QByteArray sql =
            db::translate(staffRead() + staffCode(i++) + QStringLiteral("'"), db::Target::Sqlite).sql.toUtf8();
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(handle, sql.constData(), -1, &stmt, nullptr);
        if (sqlite3_step(stmt) != SQLITE_ROW)
            state.SkipWithError("no row");
        for (int c = 0; c < sqlite3_column_count(stmt); ++c)
            if (std::string(sqlite3_column_name(stmt, c)) == "氏名")
                benchmark::DoNotOptimize(sqlite3_column_text(stmt, c));
        sqlite3_finalize(stmt);
    }
    bench::rememberRaw(key(engine), bench::nsPerIteration(start, state));
    sqlite3_close(handle);
}

void StaffPointRead_Program(benchmark::State& state, bench::Engine engine) {
    StaffDatabase& database = staffDatabase(engine);
    os::System system;
    ui::ConsoleMessages messages;
    NoWaitBox wait;
    Context ctx(system, messages, wait);
    ctx.conn.業務DB接続.open(database.connectionText());
    ctx.conn.業務DB接続中 = true;
    long i = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        db::Recordset rs;
        if (!業務SQLopen(ctx, rs, staffRead() + staffCode(i++) + QStringLiteral("'")))
            state.SkipWithError("no row");
        benchmark::DoNotOptimize(rs.field(QStringLiteral("氏名")).text());
        rs.close();
    }
    bench::reportRatio(state, key(engine), bench::nsPerIteration(start, state));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (bench::Engine engine : bench::engines()) {
        const std::string name = key(engine);
        benchmark::RegisterBenchmark((name + "/Raw").c_str(), StaffPointRead_Raw, engine)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark((name + "/Program").c_str(), StaffPointRead_Program, engine)
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
