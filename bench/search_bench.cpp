// Benchmarks of the list windows' searches against the raw engine doing the
// same work in the same run: a composite staff search that lists 1,000 of
// 100,000 rows, and a postcode range over a large postcode master. Each
// program benchmark reports its time as a ratio to its raw counterpart
// ("ratio_to_raw").

#include "bench_support.h"
#include "platform/db/translate.h"
#include "schema/schema.h"
#include "search/wnd担当者一覧.h"
#include "search/wnd郵便番号一覧.h"
#include "shell/modデータ処理.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <map>
#include <string>

namespace {

constexpr int kStaffRows = 100000;
constexpr int kPostcodeRows = 150000;

class NoWaitBox : public ui::WaitBox {
public:
    void show() override {}
    void close() override {}
};

// A desktop database with the masters, kStaffRows staff and kPostcodeRows postcodes.
class SearchDatabase {
public:
    SearchDatabase() {
        path_ = dir_.filePath(QStringLiteral("main.accdb"));
        QFile(path_).open(QIODevice::WriteOnly);
        db::Connection cn;
        if (!cn.open(connectionText()))
            qFatal("cannot open the bench database");
        for (const QString& s : schema::createStatements(schema::Database::Main, schema::Flavor::Sqlite))
            cn.execute(s);
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
        // A thousand heads of 150 postcodes each.
        for (int start = 0; start < kPostcodeRows; start += 500) {
            QString sql = QStringLiteral("INSERT INTO M郵便番号 (郵便番号,住所A,住所B) VALUES ");
            for (int i = start; i < start + 500 && i < kPostcodeRows; ++i) {
                if (i != start)
                    sql += QLatin1Char(',');
                sql += QStringLiteral("('%1-%2','県%1市','町%2')")
                           .arg(i % 1000, 3, 10, QLatin1Char('0'))
                           .arg(i / 1000, 4, 10, QLatin1Char('0'));
            }
            if (!cn.execute(sql))
                qFatal("cannot fill the postcodes: %s", qPrintable(cn.lastError().description));
        }
    }
    QString connectionText() const {
        return bench::desktopConnectionText(path_);
    }
    const QString& path() const { return path_; }

private:
    QTemporaryDir dir_;
    QString path_;
};

SearchDatabase& searchDatabase() {
    static SearchDatabase database;
    return database;
}

// The composite search on department 003: 10,000 rows match, 1,000 are listed.
QString staffSearch() {
    人員一覧状態 s;
    s.部門コード = QStringLiteral("003");
    return 担当者一覧SQLmake(s, QStringLiteral("A"), QString(), QStringLiteral("000"), QString());
}

QString postcodeRange() {
    郵便番号一覧状態 s;
    s.検索区分 = 1;
    s.郵便番号 = QStringLiteral("100");
    return 郵便番号一覧SQLmake(s);
}

// The raw engine: the translated statement, every row read column by column.
void runRaw(benchmark::State& state, const QString& statement, int columns, int expected, const char* name) {
    sqlite3* handle = nullptr;
    sqlite3_open_v2(qPrintable(searchDatabase().path()), &handle, SQLITE_OPEN_READONLY, nullptr);
    const QByteArray sql = db::translate(statement, db::Target::Sqlite).sql.toUtf8();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(handle, sql.constData(), -1, &stmt, nullptr);
        int rows = 0;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            for (int c = 0; c < columns; ++c)
                benchmark::DoNotOptimize(sqlite3_column_text(stmt, c));
            ++rows;
        }
        sqlite3_finalize(stmt);
        if (rows != expected)
            state.SkipWithError("unexpected row count");
    }
    bench::rememberRaw(name, bench::nsPerIteration(start, state));
    sqlite3_close(handle);
}

// The program: the statement routine and the fill's loop over the fields.
void runProgram(benchmark::State& state, const QString& statement, const QStringList& columns, int limit,
                int expected, const char* name) {
    os::System system;
    ui::ConsoleMessages messages;
    NoWaitBox wait;
    Context ctx(system, messages, wait);
    ctx.conn.業務DB接続.open(searchDatabase().connectionText());
    ctx.conn.業務DB接続中 = true;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        db::Recordset rs;
        int rows = 0;
        if (業務SQLopen(ctx, rs, statement, false)) {
            while (!rs.eof() && (limit == 0 || rows < limit)) {
                for (const QString& column : columns)
                    benchmark::DoNotOptimize(rs.field(column).text());
                ++rows;
                rs.moveNext();
            }
        }
        rs.close();
        if (rows != expected)
            state.SkipWithError("unexpected row count");
    }
    bench::reportRatio(state, name, bench::nsPerIteration(start, state));
}

void StaffComposite_Raw(benchmark::State& state) {
    runRaw(state, staffSearch(), 5, 1000, "StaffComposite");
}

void StaffComposite_Program(benchmark::State& state) {
    runProgram(state, staffSearch(),
               {QStringLiteral("コード"), QStringLiteral("氏名"), QStringLiteral("事業所名"), QStringLiteral("部門名"),
                QStringLiteral("セクション名")},
               1000, 1000, "StaffComposite");
}

void PostcodeRange_Raw(benchmark::State& state) {
    runRaw(state, postcodeRange(), 3, kPostcodeRows / 1000, "PostcodeRange");
}

void PostcodeRange_Program(benchmark::State& state) {
    runProgram(state, postcodeRange(),
               {QStringLiteral("郵便番号"), QStringLiteral("住所A"), QStringLiteral("住所B")}, 0, kPostcodeRows / 1000,
               "PostcodeRange");
}

} // namespace

BENCHMARK(StaffComposite_Raw)->Unit(benchmark::kMicrosecond);
BENCHMARK(StaffComposite_Program)->Unit(benchmark::kMicrosecond);
BENCHMARK(PostcodeRange_Raw)->Unit(benchmark::kMicrosecond);
BENCHMARK(PostcodeRange_Program)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    searchDatabase();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
