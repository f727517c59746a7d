// Benchmarks of the personnel link on a real installation tree against the raw
// engine running the same statements in the same run:
//  - the employee list filled with 1,000 of 100,000 employees by a composite
//    search on one department, on the link database, with its history row;
//  - the status of one employee on today's date, with 20 events of each kind
//    in the personnel history: up to eight statements, each with its history row.
// The raw side runs the very statements that the program ran (taken from the
// run history it left) and writes the same history rows. Each program
// benchmark reports its time as a ratio to its raw counterpart ("ratio_to_raw").

#include "bench_support.h"
#include "link/mod連携データ処理.h"
#include "platform/controls/fields.h"
#include "platform/db/translate.h"
#include "search/wnd社員一覧.h"
#include "shell/modデータ処理.h"
#include "tools/setup.h"

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <string>

namespace {

constexpr int kEmployees = 100000;
constexpr int kEvents = 20;
const QString kBusyEmployee = QStringLiteral("00001");

class NoWaitBox : public ui::WaitBox {
public:
    void show() override {}
    void close() override {}
};

// The program runs from the tree's prgbin.
class TreeSystem : public os::System {
public:
    QString folder;
    QString programFolder() const override { return folder; }
};

QString pad(int value, int width) { return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0')); }

// A desktop installation whose personnel link reaches its own main database,
// with kEmployees employees in ten offices, departments and sections, and the
// history of the busy employee.
class Tree {
public:
    Tree() {
        setup::Options options;
        options.root = dir_.filePath(QStringLiteral("root"));
        options.postcodes = setup::Postcodes::Fixture;
        const setup::Result made = setup::createInstallation(options);
        if (!made.ok)
            qFatal("cannot make the tree: %s", qPrintable(made.message));
        root_ = options.root;
        db::Connection cn;
        if (!cn.open(bench::desktopConnectionText(mainFile())))
            qFatal("cannot open the main database");
        cn.execute(QStringLiteral("PRAGMA synchronous = OFF"));
        for (int i = 3; i < 10; ++i)
            cn.execute(QStringLiteral("INSERT INTO M事業所 (コード,名称) VALUES ('%1','事業所%1')").arg(pad(i, 3)));
        for (int start = 1; start <= kEmployees; start += 500) {
            QString sql = QStringLiteral("INSERT INTO M社員 (コード,氏名,カナ,事業所コード,部門コード,セクションコード,"
                                         "役職コード,就業形態コード,社員区分,在籍区分) VALUES ");
            for (int i = start; i < start + 500 && i <= kEmployees; ++i) {
                if (i != start)
                    sql += QLatin1Char(',');
                sql += QStringLiteral("('%1','社員 %1','ｼｬｲﾝ','%2','%3','%4','05','001','1','0')")
                           .arg(i <= 99999 ? pad(i, 5) : QStringLiteral("A0000"), pad(i % 10, 3),
                                pad(1 + (i / 10) % 5, 3), pad(1 + (i / 3) % 7, 3));
            }
            if (!cn.execute(sql))
                qFatal("cannot fill the employees: %s", qPrintable(cn.lastError().description));
        }
        // Twenty events of each kind for the busy employee: transfers in the
        // past, leaves long closed, retirements to come, notices of a name.
        for (int k = 1; k <= kEvents; ++k) {
            const QString past = pad(2000 + k, 4) + QStringLiteral("0401");
            cn.execute(QStringLiteral("INSERT INTO T異動 (社員コード,異動日付,異動No,異動事業所コード,異動部門コード,"
                                      "異動セクションコード,異動役職コード,異動職責,異動就業形態コード,異動社員区分) "
                                      "VALUES ('%1','%2','001','%3','003','003','05','営業','001','1')")
                           .arg(kBusyEmployee, past, pad(k % 10, 3)));
            cn.execute(QStringLiteral("INSERT INTO T休職 (社員コード,休職開始日付,休職終了日付) VALUES "
                                      "('%1','%2','%3')")
                           .arg(kBusyEmployee, past, pad(2000 + k, 4) + QStringLiteral("0930")));
            cn.execute(QStringLiteral("INSERT INTO T退職 (社員コード,退職日付) VALUES ('%1','%2')")
                           .arg(kBusyEmployee, pad(2100 + k, 4) + QStringLiteral("0331")));
            cn.execute(QStringLiteral("INSERT INTO T諸届 (社員コード,諸届日付,諸届No,諸届区分,諸届氏名,諸届カナ氏名) "
                                      "VALUES ('%1','%2','001','1','氏名%3','ｼﾒｲ')")
                           .arg(kBusyEmployee, past, QString::number(k)));
            cn.execute(QStringLiteral("INSERT INTO T採用 (事業所コード,番号基準日付,採用No,社員コード,氏名) VALUES "
                                      "('000','99999999','%1','%2','採用%1')")
                           .arg(pad(k, 8), pad(k + 1, 5)));
        }
        // The personnel row, linked to this very database.
        cn.execute(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = 'A', 連携データソース名 = '%1' "
                                  "WHERE 業務名 = '人事就業管理'")
                       .arg(mainFile()));
    }
    QString mainFile() const { return root_ + QStringLiteral("/data/main.accdb"); }
    QString configFile() const { return root_ + QStringLiteral("/conf/usrcnfg.accdb"); }
    QString prgbin() const { return root_ + QStringLiteral("/prgbin"); }

private:
    QTemporaryDir dir_;
    QString root_;
};

Tree& tree() {
    static Tree t;
    return t;
}

// The program with the link open and the employee list loaded.
class Program {
public:
    Program() {
        system_.folder = tree().prgbin();
        ctx_ = std::make_unique<Context>(system_, messages_, wait_);
        if (!環境DBopen(*ctx_) || !業務DBopen(*ctx_) || !ユーザ情報read(*ctx_) ||
            !連携有無chk(*ctx_, QStringLiteral("人事就業管理")) || !連携DBopen(*ctx_))
            qFatal("cannot start the program on the tree");
        windows_ = std::make_unique<検索窓群>(*ctx_, nullptr);
        // Opened from a caller that asks for department 003: 10,000 match.
        ctx_->screen.検索条件 = QStringLiteral("M社員.部門コード = '003'");
        window_ = std::make_unique<wnd社員一覧>(*ctx_, *windows_);
        window_->読込();
    }
    Context& ctx() { return *ctx_; }
    wnd社員一覧& window() { return *window_; }
    // The statements of the run history written since the row counter stood at from.
    QStringList statementsSince(double from) {
        const auto counter = [](double n) {
            return QStringLiteral("%1").arg(static_cast<qint64>(n), 12, 10, QLatin1Char('0'));
        };
        QStringList statements;
        db::Recordset rs;
        if (環境SQLopen(*ctx_, rs,
                        QStringLiteral("SELECT 摘要 FROM プログラム稼動履歴 WHERE proccounter > '%1' AND proccounter <= "
                                       "'%2' AND プログラムID = '担当者登録' ORDER BY proccounter")
                            .arg(counter(from), counter(ctx_->run.稼動連番)))) {
            for (; !rs.eof(); rs.moveNext()) {
                QString text = rs.field(QStringLiteral("摘要")).text();
                if (text.startsWith(QStringLiteral("出力終了 ")))
                    statements.append(text.mid(5).replace(QStringLiteral("''"), QStringLiteral("'")));
            }
        }
        rs.close();
        return statements;
    }

private:
    TreeSystem system_;
    ui::ConsoleMessages messages_;
    NoWaitBox wait_;
    std::unique_ptr<Context> ctx_;
    std::unique_ptr<検索窓群> windows_;
    std::unique_ptr<wnd社員一覧> window_;
};

Program& program() {
    static Program p;
    return p;
}

// The raw engine: the statements translated for the desktop engine, the rows
// read column by column (up to a limit), and one history row each.
class Raw {
public:
    Raw() {
        sqlite3_open_v2(qPrintable(tree().mainFile()), &main_, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_open_v2(qPrintable(tree().configFile()), &config_, SQLITE_OPEN_READWRITE, nullptr);
    }
    ~Raw() {
        sqlite3_close(main_);
        sqlite3_close(config_);
    }
    int run(const QString& statement, int limit) {
        const QByteArray sql = db::translate(statement, db::Target::Sqlite).sql.toUtf8();
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(main_, sql.constData(), -1, &stmt, nullptr);
        int rows = 0;
        while ((limit == 0 || rows < limit) && sqlite3_step(stmt) == SQLITE_ROW) {
            for (int c = 0; c < sqlite3_column_count(stmt); ++c)
                benchmark::DoNotOptimize(sqlite3_column_text(stmt, c));
            ++rows;
        }
        sqlite3_finalize(stmt);
        const QByteArray history =
            QStringLiteral("INSERT INTO プログラム稼動履歴 (実行日付,プログラムID,proccounter,摘要,運用事業所コード,"
                           "起動担当者コード,ユーザID) VALUES ('20261123 090000', '担当者登録', '%1', '出力終了 %2', "
                           "'000', '', 'bench')")
                .arg(++counter_, 12, 10, QLatin1Char('0'))
                .arg(QString(statement).replace(QLatin1Char('\''), QStringLiteral("''")))
                .toUtf8();
        char* error = nullptr;
        if (sqlite3_exec(config_, history.constData(), nullptr, nullptr, &error) != SQLITE_OK) {
            failure_ = QString::fromUtf8(error);
            sqlite3_free(error);
        }
        return rows;
    }

    // Why the last history row could not be written; "" when all were.
    const QString& failure() const { return failure_; }

private:
    QString failure_;
    sqlite3* main_ = nullptr;
    sqlite3* config_ = nullptr;
    qint64 counter_ = 900000000;
};

void EmployeeList_Raw(benchmark::State& state) {
    Program& p = program();
    const QString statement = p.window().検索SQL();
    Raw raw;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        if (raw.run(statement, 1000) != 1000)
            state.SkipWithError("unexpected row count");
    }
    if (!raw.failure().isEmpty())
        state.SkipWithError(raw.failure().toStdString().c_str());
    bench::rememberRaw("EmployeeList", bench::nsPerIteration(start, state));
}

void EmployeeList_Program(benchmark::State& state) {
    wnd社員一覧& w = program().window();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        w.btn_複合検索->click();
        if (w.List社員->topLevelItemCount() != 1000)
            state.SkipWithError("unexpected row count");
    }
    bench::reportRatio(state, "EmployeeList", bench::nsPerIteration(start, state));
}

void EmployeeStatus_Raw(benchmark::State& state) {
    Program& p = program();
    const double from = p.ctx().run.稼動連番;
    p.window().社員状態read(kBusyEmployee);
    const QStringList statements = p.statementsSince(from);
    if (statements.size() != 4)
        state.SkipWithError(("the program ran another set of statements: " +
                             statements.join(QLatin1Char('\n')).toStdString())
                                .c_str());
    Raw raw;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        for (const QString& statement : statements)
            raw.run(statement, 1);
    }
    if (!raw.failure().isEmpty())
        state.SkipWithError(raw.failure().toStdString().c_str());
    bench::rememberRaw("EmployeeStatus", bench::nsPerIteration(start, state));
}

void EmployeeStatus_Program(benchmark::State& state) {
    wnd社員一覧& w = program().window();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        w.社員状態read(kBusyEmployee);
        if (w.社員状態.事業所コード != QStringLiteral("000"))
            state.SkipWithError("unexpected status");
    }
    bench::reportRatio(state, "EmployeeStatus", bench::nsPerIteration(start, state));
}

} // namespace

BENCHMARK(EmployeeList_Raw)->Unit(benchmark::kMillisecond);
BENCHMARK(EmployeeList_Program)->Unit(benchmark::kMillisecond);
BENCHMARK(EmployeeStatus_Raw)->Unit(benchmark::kMicrosecond);
BENCHMARK(EmployeeStatus_Program)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    program();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
