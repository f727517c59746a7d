// Benchmarks of the staff card's database paths on a real installation tree
// against the raw engine running the same statements in the same run:
//  - a field exit on the code of an existing record: the access record, the
//    staff read, the three era reads and the use check over 22 tables;
//  - one save of a new record: the free-code check, the INSERT with its history
//    row, the black log row with its history number and the telephone directory.
// Each runs on a desktop tree against SQLite's own library and, when
// STAFF_TEST_PG names a server, on a tree whose main database is on the
// server against its client library. Each program benchmark reports its time
// as a ratio to its raw counterpart ("ratio_to_raw").
//
// The tree holds 100,000 staff rows and 1,000,000 rows in the tables of the use
// check. Those rows refer only to staff above 50000; the field exit reads staff
// below 50000, so every one of them passes all 22 tables (the longest check).

#include "bench_support.h"
#include "platform/db/translate.h"
#include "schema/schema.h"
#include "setup_server.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者保存.h"
#include "staff/mod担当者登録.h"
#include "tools/setup.h"

#include <QApplication>
#include <QDateTime>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fnmatch.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr int kStaffRows = 100000;
constexpr int kUseRows = 1000000;
constexpr int kRowsPerInsert = 500;
// The field exit reads codes 00001..kReadCodes; the use rows refer to the codes above.
constexpr int kReadCodes = 49999;
constexpr int kFirstUsedCode = 50001;
constexpr int kUsedCodes = 99999 - kFirstUsedCode + 1;

const char* const kSlipTables[] = {"T営業請求", "T営業納品", "T営業発注", "T顧客注文",     "T営業受注",
                                   "T営業引合", "T営業見積", "T出金",     "T営業活動明細", "T配送手配",
                                   "T承認",     "T案件",     "T個人休日", "T個人行事",     "T個人日暦"};
const char* const kMasterTables[] = {"M得意先", "M納品先", "M仕入先", "Mメーカ", "M対応先"};
// The tables of the use check, in the order the card checks them.
const char* const kUseTables[] = {"T営業請求", "T営業納品", "T営業発注",     "T顧客注文", "T営業受注", "T営業引合",
                                  "T営業見積", "T出金",     "T営業活動明細", "T配送手配", "T承認",     "T案件",
                                  "T閲覧",     "T個人休日", "T個人行事",     "T個人日暦", "M付属書類", "M得意先",
                                  "M納品先",   "M仕入先",   "Mメーカ",       "M対応先"};
constexpr int kUseTableCount = static_cast<int>(std::size(kUseTables));

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

QString pad(long value, int width) { return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0')); }

// The staff codes on file: 00001..99999 and, as the hundred-thousandth, A0000.
QString staffCode(int i) { return i <= 99999 ? pad(i, 5) : QStringLiteral("A0000"); }

QString date(int year, int month, int day) { return pad(year, 4) + pad(month, 2) + pad(day, 2); }

// ---- the installation tree

class Raw;

class Tree {
public:
    explicit Tree(bench::Engine engine) : engine_(engine) {
        const auto start = std::chrono::steady_clock::now();
        root_ = dir_.path() + QStringLiteral("/root");
        setup::Options options;
        options.root = root_;
        options.postcodes = setup::Postcodes::Fixture;
        if (engine == bench::Engine::Postgres) {
            // The installation tool makes the database; it is dropped at the end.
            server_ = std::make_unique<bench::ServerDatabase>(QStringLiteral("card"), false);
            options.server = bench::installationServer(*server_);
        }
        const setup::Result made = setup::createInstallation(options);
        if (!made.ok)
            qFatal("cannot make the installation tree: %s", qPrintable(made.message));
        db::Connection cn;
        if (!cn.open(setup::mainConnectionText(options)))
            qFatal("cannot open the main database: %s", qPrintable(cn.lastError().description));
        if (engine == bench::Engine::Sqlite)
            run(cn, QStringLiteral("PRAGMA synchronous = OFF"));
        fillStaff(cn);
        fillUse(cn);
        if (engine == bench::Engine::Postgres)
            run(cn, QStringLiteral("ANALYZE"));
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        std::fprintf(stderr, "set-up (%s): tree and %d staff rows, %d rows in %d use tables: %.1f s\n",
                     bench::engineName(engine), kStaffRows, kUseRows, kUseTableCount, seconds);
    }

    const QString& root() const { return root_; }
    bench::Engine engine() const { return engine_; }
    QString mainFile() const { return root_ + QStringLiteral("/data/main.accdb"); }
    QString configFile() const { return root_ + QStringLiteral("/conf/usrcnfg.accdb"); }
    // The raw engine on the main database: SQLite's library on the file, the
    // client library on the server.
    std::unique_ptr<Raw> openMain() const;

private:
    static void run(db::Connection& cn, const QString& sql) {
        if (!cn.execute(sql))
            qFatal("cannot fill the main database: %s", qPrintable(cn.lastError().description));
    }

    // Runs "INSERT INTO <head> VALUES" for rows first..last-1 in statements of kRowsPerInsert rows.
    template <typename Row>
    static void insertRows(db::Connection& cn, const QString& head, int first, int last, Row row) {
        for (int start = first; start < last; start += kRowsPerInsert) {
            QString sql = QStringLiteral("INSERT INTO ") + head + QStringLiteral(" VALUES ");
            for (int i = start; i < start + kRowsPerInsert && i < last; ++i) {
                if (i != start)
                    sql += QLatin1Char(',');
                sql += row(i);
            }
            run(cn, sql);
        }
    }

    // Offices 000-002, departments 001-005, sections 001-007 and positions 01-08 are in the seed.
    static void fillStaff(db::Connection& cn) {
        static const char* const family[] = {"佐藤", "鈴木", "高橋", "田中", "伊藤",
                                             "渡辺", "山本", "中村", "小林", "加藤"};
        static const char* const familyKana[] = {"ｻﾄｳ",   "ｽｽﾞｷ", "ﾀｶﾊｼ", "ﾀﾅｶ",   "ｲﾄｳ",
                                                 "ﾜﾀﾅﾍﾞ", "ﾔﾏﾓﾄ", "ﾅｶﾑﾗ", "ｺﾊﾞﾔｼ", "ｶﾄｳ"};
        static const char* const given[] = {"太郎", "花子", "一郎", "美咲", "健太",
                                            "陽子", "翔",   "直美", "大輔", "由美"};
        static const char* const givenKana[] = {"ﾀﾛｳ", "ﾊﾅｺ", "ｲﾁﾛｳ", "ﾐｻｷ", "ｹﾝﾀ", "ﾖｳｺ", "ｼｮｳ", "ﾅｵﾐ", "ﾀﾞｲｽｹ", "ﾕﾐ"};
        insertRows(cn,
                   QStringLiteral("M担当者 (コード,姓,名,氏名,カナ姓,カナ名,カナ,性別区分,生年月日,郵便番号,住所A,"
                                  "電話,電話番号,事業所コード,部門コード,セクションコード,役職コード,在籍区分,社員区分,"
                                  "入社日付,退社日付,ユーザID,登録日付)"),
                   1, kStaffRows + 1, [](int i) {
                       const QString f = QString::fromUtf8(family[i % 10]);
                       const QString g = QString::fromUtf8(given[(i / 10) % 10]);
                       const QString fk = QString::fromUtf8(familyKana[i % 10]);
                       const QString gk = QString::fromUtf8(givenKana[(i / 10) % 10]);
                       const QString phone = QStringLiteral("03-5%1-%2").arg(pad(i / 10000, 3), pad(i % 10000, 4));
                       QStringList v{staffCode(i),
                                     f,
                                     g,
                                     f + QLatin1Char(' ') + g,
                                     fk,
                                     gk,
                                     fk + QLatin1Char(' ') + gk,
                                     QString::number(1 + i % 2),
                                     date(1950 + i % 50, 1 + i % 12, 1 + i % 28),
                                     QStringLiteral("100-0005"),
                                     QStringLiteral("東京都千代田区"),
                                     phone,
                                     QString(phone).remove(QLatin1Char('-')),
                                     pad(i % 3, 3),
                                     pad(1 + i % 5, 3),
                                     pad(1 + i % 7, 3),
                                     pad(1 + i % 8, 2),
                                     QStringLiteral("0"),
                                     QStringLiteral("1"),
                                     date(1990 + i % 30, 4, 1),
                                     date(2020 + i % 5, 3, 31),
                                     QStringLiteral("bench"),
                                     QStringLiteral("20240401 090000")};
                       return QStringLiteral("('") + v.join(QStringLiteral("','")) + QStringLiteral("')");
                   });
    }

    // kUseRows rows spread over the 22 tables, each referring to a staff code above 50000.
    static void fillUse(db::Connection& cn) {
        const auto used = [](int i) { return pad(kFirstUsedCode + i % kUsedCodes, 5); };
        int table = 0;
        const auto rowsOf = [&table] {
            return kUseRows / kUseTableCount + (table < kUseRows % kUseTableCount ? 1 : 0);
        };
        for (const char* slip : kSlipTables) {
            insertRows(cn,
                       QString::fromUtf8(slip) +
                           QStringLiteral(" (事業所コード,番号基準日付,伝票No,伝票日付,担当者コード)"),
                       0, rowsOf(), [&used](int i) {
                           return QStringLiteral("('%1','20250331','%2','%3','%4')")
                               .arg(pad(i % 3, 3), pad(i, 8), date(2024, 4 + i % 9, 1 + i % 28), used(i));
                       });
            ++table;
        }
        // The access records of the fill lie under a base date that the series "01110" never draws under.
        insertRows(
            cn,
            QStringLiteral("T閲覧 (事業所コード,番号基準日付,閲覧No,閲覧日付,閲覧時刻,担当者コード,担当者名,"
                           "閲覧情報,キー項目,閲覧区分,承認区分)"),
            0, rowsOf(), [&used](int i) {
                return QStringLiteral("('%1','20250331','%2','%3','09:00:00','%4','担当 %4','担当者登録','%5','0','0')")
                    .arg(pad(i % 3, 3), pad(i, 8), date(2024, 4 + i % 9, 1 + i % 28), used(i), pad(i % 99999 + 1, 5));
            });
        ++table;
        insertRows(cn, QStringLiteral("M付属書類 (情報名,情報識別ID,SEQNo,書類名,タイトル,担当者コード,対象金額)"), 0,
                   rowsOf(), [&used](int i) {
                       return QStringLiteral("('担当者','%1','001','書類%1','資料','%2',0)").arg(pad(i, 8), used(i));
                   });
        ++table;
        for (const char* master : kMasterTables) {
            insertRows(cn, QString::fromUtf8(master) + QStringLiteral(" (コード,名称,担当者コード)"), 0, rowsOf(),
                       [&used](int i) { return QStringLiteral("('%1','取引先%1','%2')").arg(pad(i, 8), used(i)); });
            ++table;
        }
    }

    bench::Engine engine_;
    std::unique_ptr<bench::ServerDatabase> server_;
    QTemporaryDir dir_;
    QString root_;
};

Tree& tree(bench::Engine engine) {
    static std::map<bench::Engine, std::unique_ptr<Tree>> trees;
    auto& t = trees[engine];
    if (!t)
        t = std::make_unique<Tree>(engine);
    return *t;
}

// ---- the program, started on the tree as the card starts

class Program {
public:
    explicit Program(bench::Engine engine) : ctx(system, messages, wait) {
        system.folder = tree(engine).root() + QStringLiteral("/prgbin");
        if (!環境DBopen(ctx) || !業務DBopen(ctx) || !ユーザ情報read(ctx))
            qFatal("the program cannot start on the tree");
        form = std::make_unique<frm担当者登録>(ctx);
        ctx.主画面 = form.get();
    }

    TreeSystem system;
    ui::ConsoleMessages messages;
    NoWaitBox wait;
    Context ctx;
    std::unique_ptr<frm担当者登録> form;
};

Program& program(bench::Engine engine) {
    static std::map<bench::Engine, std::unique_ptr<Program>> programs;
    auto& p = programs[engine];
    if (!p)
        p = std::make_unique<Program>(engine);
    return *p;
}

// ---- the raw engine

// What the raw side asks of a database.
class Raw {
public:
    virtual ~Raw() = default;
    // Runs a statement that returns no rows.
    virtual bool exec(const QString& sql) = 0;
    // The first row of a query, the columns at the positions asked for (all of them for none).
    virtual std::optional<std::vector<QString>> first(const QString& sql, std::initializer_list<int> columns = {}) = 0;
    long count(const QString& sql) {
        const auto row = first(sql, {0});
        return row ? row->front().toLong() : -1;
    }
};

// The server through its client library.
class PgRaw : public Raw {
public:
    explicit PgRaw(const QByteArray& conninfo) : h_(conninfo) {}
    bool exec(const QString& sql) override { return h_.exec(sql); }
    std::optional<std::vector<QString>> first(const QString& sql, std::initializer_list<int> columns = {}) override {
        return h_.first(sql, columns);
    }

private:
    bench::PgHandle h_;
};

// A desktop database file through SQLite's library.
class Handle : public Raw {
public:
    explicit Handle(const QString& file) {
        if (sqlite3_open_v2(file.toUtf8().constData(), &h_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
            qFatal("cannot open %s", qPrintable(file));
        sqlite3_busy_timeout(h_, 30000);
    }
    ~Handle() { sqlite3_close(h_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool exec(const QString& sql) override {
        const QByteArray text = sql.toUtf8();
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(h_, text.constData(), static_cast<int>(text.size()), &stmt, nullptr) != SQLITE_OK)
            return false;
        const bool done = sqlite3_step(stmt) == SQLITE_DONE;
        sqlite3_finalize(stmt);
        return done;
    }

    std::optional<std::vector<QString>> first(const QString& sql, std::initializer_list<int> columns = {}) override {
        const QByteArray text = sql.toUtf8();
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(h_, text.constData(), static_cast<int>(text.size()), &stmt, nullptr) != SQLITE_OK)
            return std::nullopt;
        std::optional<std::vector<QString>> row;
        if (sqlite3_step(stmt) == SQLITE_ROW) {
            row.emplace();
            const auto take = [&](int c) {
                row->push_back(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, c)),
                                                 sqlite3_column_bytes(stmt, c)));
            };
            if (columns.size() == 0)
                for (int c = 0; c < sqlite3_column_count(stmt); ++c)
                    take(c);
            for (int c : columns)
                take(c);
        }
        sqlite3_finalize(stmt);
        return row;
    }

private:
    sqlite3* h_ = nullptr;
};

std::unique_ptr<Raw> Tree::openMain() const {
    if (engine_ == bench::Engine::Postgres)
        return std::make_unique<PgRaw>(server_->conninfo());
    return std::make_unique<Handle>(mainFile());
}

QString doubled(QString text) { return text.replace(QLatin1Char('\''), QStringLiteral("''")); }

// The stored counter plus one as eight digits.
QString nextNumber(const QString& stored) { return pad(stored.toLong() + 1, 8); }

QString stamp() { return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd HHmmss")); }

// The program's staff read, put once through the translation with a marker for
// the code: the raw engine runs the translated text with the code in its place.
struct StaffRead {
    QString head, tail;
};

const StaffRead& staffRead(bench::Engine engine) {
    static std::map<bench::Engine, StaffRead> reads;
    if (reads.count(engine))
        return reads.at(engine);
    const StaffRead read = [engine] {
        const QString marker = QStringLiteral("#####");
        const db::Translation t = db::translate(
            QStringLiteral(
                "SELECT TOP 1 M担当者.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS "
                "セクション名, M役職.名称 AS 役職名") +
                QStringLiteral(
                    " FROM M役職 RIGHT JOIN (Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN "
                    "M担当者 ON M事業所.コード = M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON "
                    "Mセクション.コード = M担当者.セクションコード) ON M役職.コード = M担当者.役職コード") +
                QStringLiteral(" WHERE M担当者.コード = '") + marker + QStringLiteral("'"),
            engine == bench::Engine::Sqlite ? db::Target::Sqlite : db::Target::Postgres);
        const qsizetype at = t.sql.indexOf(marker);
        if (!t.ok || at < 0 || t.sql.indexOf(marker, at + 1) >= 0)
            qFatal("the staff read does not translate as expected");
        return StaffRead{t.sql.left(at), t.sql.mid(at + marker.size())};
    }();
    return reads[engine] = read;
}

// The columns of M担当者 as the save writes them: the table's columns without アクセス権限.
const QStringList& staffColumns() {
    static const QStringList names = [] {
        QStringList list;
        for (const schema::Column& c : schema::find(QStringLiteral("M担当者"))->columns)
            if (c.name != QStringLiteral("アクセス権限"))
                list.append(c.name);
        return list;
    }();
    return names;
}

// ---- field exit

QString readCode(long i) { return pad(i % kReadCodes + 1, 5); }

// The raw engine does what a field exit on the code asks of the database, statement by statement:
//  - the access record: the definition row of the series "01110" read for its kind (kind 0: base
//    date "99999999"), read again for its counter, the counter raised, the number checked against
//    T閲覧 and the row inserted;
//  - the staff read, every column taken;
//  - the era of each of the three dates;
//  - the first file of the code in the photo folder;
//  - the 22 tables of the use check.
// Where it differs from the program: its statements are written in the engine's own dialect (the
// staff read translated once, beforehand), columns are taken by position, the fiscal period ends that
// kind 0 does not use are not computed, a taken access number would be an error instead of a re-draw,
// and the folder is read with opendir/readdir and fnmatch.
std::string key(const char* path, bench::Engine engine) {
    return std::string(path) + '/' + bench::engineName(engine);
}

void FieldExit_Raw(benchmark::State& state, bench::Engine engine) {
    const std::unique_ptr<Raw> owned = tree(engine).openMain();
    Raw& main = *owned;
    const Context& ctx = program(engine).ctx;
    const QString office = ctx.run.操作事業所コード;
    const QString operatorCode = ctx.op.操作担当者コード;
    const QString userId = ctx.terminal.ユーザID + ctx.op.操作担当者コード + ctx.terminal.コンピュータ名;
    const QByteArray photoFolder = (ctx.company.写真フォルダ + QStringLiteral("/担当者")).toUtf8();
    const QString definition = QStringLiteral("SELECT A番号情報.* FROM A番号情報 WHERE A番号情報.番号ID = '01110'");
    const long accessBefore = main.count(QStringLiteral("SELECT COUNT(*) FROM T閲覧"));
    long i = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        const QString code = readCode(i++);
        // The access record. Columns of A番号情報: 番号ID, 名称, 連番種類, 連番, 履歴連番.
        const auto kind = main.first(definition, {2});
        const QString base = kind && kind->front().toInt() == 0 ? QStringLiteral("99999999") : QString();
        const auto counter = main.first(definition, {2, 3});
        if (!counter) {
            state.SkipWithError("no row for the series 01110");
            break;
        }
        const QString number = nextNumber(counter->at(1));
        main.exec(QStringLiteral("UPDATE A番号情報 SET  連番 = '") + number +
                  QStringLiteral("' WHERE A番号情報.番号ID = '01110'"));
        if (main.first(QStringLiteral("SELECT 閲覧No FROM T閲覧 WHERE 事業所コード = '") + office +
                       QStringLiteral("' AND 番号基準日付 = '") + base + QStringLiteral("' AND 閲覧No = '") + number +
                       QStringLiteral("'"))) {
            state.SkipWithError("access number already taken");
            break;
        }
        const QDateTime now = QDateTime::currentDateTime();
        const QStringList values{office,
                                 base,
                                 number,
                                 now.toString(QStringLiteral("yyyyMMdd")),
                                 now.toString(QStringLiteral("hh:mm:ss")),
                                 operatorCode,
                                 ctx.op.氏名,
                                 ctx.プログラムID,
                                 QString(),
                                 QString(),
                                 QString(),
                                 code,
                                 QStringLiteral("0"),
                                 QString(),
                                 QString(),
                                 QString(),
                                 QStringLiteral("0"),
                                 userId,
                                 now.toString(QStringLiteral("yyyyMMdd hhmmss")),
                                 QString()};
        if (!main.exec(
                QStringLiteral("INSERT INTO T閲覧 (事業所コード,番号基準日付,閲覧No,閲覧日付,閲覧時刻,担当者コード,"
                               "担当者名,閲覧情報,伝票事業所コード,伝票番号基準日付,伝票No,キー項目,閲覧区分,"
                               "閲覧メモ,承認日付,承認者コード,承認区分,ユーザID,登録日付,更新日付) VALUES ('") +
                values.join(QStringLiteral("','")) + QStringLiteral("')"))) {
            state.SkipWithError("cannot write the access record");
            break;
        }
        // The staff row. Its dates are columns 8 (生年月日), 25 (入社日付) and 26 (退社日付).
        const auto staff = main.first(staffRead(engine).head + code + staffRead(engine).tail);
        if (!staff || staff->front() != code) {
            state.SkipWithError("no staff row");
            break;
        }
        for (int column : {8, 25, 26}) {
            const auto era = main.first(QStringLiteral("SELECT * FROM K年号区分 WHERE 開始日付 <= '") +
                                            staff->at(static_cast<size_t>(column)) +
                                            QStringLiteral("' ORDER BY 開始日付 DESC LIMIT 1"),
                                        {0, 2});
            if (!era || era->front().toInt() == 0) {
                state.SkipWithError("no era for a date");
                break;
            }
        }
        const QByteArray pattern = code.toUtf8() + '*';
        if (DIR* folder = opendir(photoFolder.constData())) {
            while (const dirent* entry = readdir(folder)) {
                if (fnmatch(pattern.constData(), entry->d_name, 0) == 0) {
                    benchmark::DoNotOptimize(entry->d_name);
                    break;
                }
            }
            closedir(folder);
        }
        for (const char* table : kUseTables) {
            if (main.first(QStringLiteral("SELECT 担当者コード FROM ") + QString::fromUtf8(table) +
                           QStringLiteral(" WHERE 担当者コード = '") + code + QStringLiteral("' LIMIT 1"))) {
                state.SkipWithError("a read staff code is in use");
                break;
            }
        }
    }
    bench::rememberRaw(key("FieldExit", engine), bench::nsPerIteration(start, state));
    if (main.count(QStringLiteral("SELECT COUNT(*) FROM T閲覧")) !=
        accessBefore + static_cast<long>(state.iterations()))
        state.SkipWithError("the access records written do not match the iterations");
}

void FieldExit_Program(benchmark::State& state, bench::Engine engine) {
    Context& ctx = program(engine).ctx;
    frm担当者登録& form = *program(engine).form;
    const std::unique_ptr<Raw> owned = tree(engine).openMain();
    Raw& check = *owned;
    const long accessBefore = check.count(QStringLiteral("SELECT COUNT(*) FROM T閲覧"));
    long i = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        const QString code = readCode(i++);
        if (!担当者get(ctx, code)) {
            state.SkipWithError("no staff row");
            break;
        }
        担当者set(ctx);
        const 担当者情報型& r = ctx.担当者情報;
        if (r.コード != code || r.生年月日年号区分 == 0 || r.入社日付年号区分 == 0 || r.退社日付年号区分 == 0) {
            state.SkipWithError("the record was not taken over with its eras");
            break;
        }
        if (!担当者使用chk(ctx, form)) {
            state.SkipWithError("a read staff code is in use");
            break;
        }
    }
    const double ns = bench::nsPerIteration(start, state);
    if (check.count(QStringLiteral("SELECT COUNT(*) FROM T閲覧")) !=
        accessBefore + static_cast<long>(state.iterations()))
        state.SkipWithError("the access records written do not match the iterations");
    bench::reportRatio(state, key("FieldExit", engine), ns);
}

// ---- save

// Fresh codes for the saves, above every code on file: B0000, B0001, ... Z9999.
long& saveCounter() {
    static long n = 0;
    return n;
}

std::optional<QString> nextSaveCode(long n) {
    if (n >= 25 * 10000)
        return std::nullopt;
    return QChar(u'B' + static_cast<char16_t>(n / 10000)) + pad(n % 10000, 4);
}

// The record of one new staff member, as the screen would hand it to the save.
担当者情報型 newRecord(const QString& code, long n) {
    担当者情報型 r;
    r.コード = code;
    r.姓 = QStringLiteral("新井");
    r.名 = QStringLiteral("健");
    r.氏名 = QStringLiteral("新井 健");
    r.カナ姓 = QStringLiteral("ｱﾗｲ");
    r.カナ名 = QStringLiteral("ｹﾝ");
    r.カナ = QStringLiteral("ｱﾗｲ ｹﾝ");
    r.性別区分 = 1;
    r.生年月日 = date(1970 + static_cast<int>(n % 30), 5, 14);
    r.郵便番号 = QStringLiteral("100-0005");
    r.住所A = QStringLiteral("東京都千代田区");
    r.住所B = QStringLiteral("丸の内二丁目4番1号");
    r.電話 = QStringLiteral("03-%1-%2").arg(pad(n / 10000, 4), pad(n % 10000, 4));
    r.事業所コード = QStringLiteral("000");
    r.部門コード = QStringLiteral("003");
    r.セクションコード = QStringLiteral("004");
    r.役職コード = QStringLiteral("08");
    r.在籍区分 = 0;
    r.社員区分 = 1;
    r.入社日付 = QStringLiteral("20250401");
    for (QString& flag : r.処理分類操作許可)
        flag = QStringLiteral("1");
    return r;
}

// The values of M担当者 in column order, as the save writes them (no text holds a quote).
QStringList recordValues(const 担当者情報型& r, const QString& userId) {
    QStringList v{r.コード,
                  r.姓,
                  r.名,
                  r.氏名,
                  r.カナ姓,
                  r.カナ名,
                  r.カナ,
                  QString::number(r.性別区分),
                  r.生年月日,
                  r.郵便番号,
                  r.住所A,
                  r.住所B,
                  r.住所C,
                  r.電話,
                  r.携帯電話,
                  r.職責,
                  r.EMAIL,
                  r.担当者メモ,
                  r.事業所コード,
                  r.部門コード,
                  r.セクションコード,
                  r.役職コード,
                  r.ログインID,
                  QString::number(r.在籍区分),
                  QString::number(r.社員区分),
                  r.入社日付,
                  r.退社日付,
                  r.担当者印file,
                  QString(r.電話).remove(QLatin1Char('-')),
                  QString(r.携帯電話).remove(QLatin1Char('-')),
                  r.社員コード,
                  QString()};
    for (const QString& flag : r.処理分類操作許可)
        v.append(flag);
    v << r.操作許可 << r.入力許可 << r.修正許可 << r.削除許可 << r.印刷許可 << r.プレビュ許可 << r.テキスト出力許可
      << r.イメージ出力許可 << userId << r.登録日付 << r.更新日付;
    return v;
}

QString valueList(const QStringList& values) {
    return QStringLiteral("('") + values.join(QStringLiteral("','")) + QStringLiteral("')");
}

// The raw engine does what the save of a new record asks of the databases:
//  - the free-code check on M担当者;
//  - the INSERT of the row, and its history row on the configuration database;
//  - the definition row of the history series "210" read for its kind and again for its
//    counter, the counter raised, and the black row of L担当者 written under it;
//  - the telephone directory: the number looked up, then inserted.
// Where it differs from the program: its statements are written in the engine's own dialect,
// columns are taken by position, the record's texts are not put through the quote doubling
// (none holds a quote), the empty PIN is written without the codec, and no events are processed.
void Save_Raw(benchmark::State& state, bench::Engine engine) {
    const std::unique_ptr<Raw> owned = tree(engine).openMain();
    Raw& main = *owned;
    Handle config(tree(engine).configFile());
    const Context& ctx = program(engine).ctx;
    const QString office = ctx.run.操作事業所コード;
    const QString userId = ctx.terminal.ユーザID + ctx.op.操作担当者コード + ctx.terminal.コンピュータ名;
    const QString names = staffColumns().join(QLatin1Char(','));
    const QString definition =
        QStringLiteral("SELECT B履歴番号情報.* FROM B履歴番号情報 WHERE B履歴番号情報.基本ID = '210'");
    const long logBefore = main.count(QStringLiteral("SELECT COUNT(*) FROM L担当者"));
    static long history = 1000000; // this benchmark's own counter of history rows
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        const long n = saveCounter()++;
        const std::optional<QString> code = nextSaveCode(n);
        if (!code) {
            state.SkipWithError("no fresh codes left");
            break;
        }
        if (main.first(QStringLiteral("SELECT コード FROM M担当者 WHERE コード = '") + *code +
                       QStringLiteral("' LIMIT 1"))) {
            state.SkipWithError("a fresh code is taken");
            break;
        }
        担当者情報型 r = newRecord(*code, n);
        r.登録日付 = stamp();
        const QStringList values = recordValues(r, userId);
        const QString insert =
            QStringLiteral("INSERT INTO M担当者 (") + names + QStringLiteral(") VALUES ") + valueList(values);
        if (!main.exec(insert)) {
            state.SkipWithError("cannot insert the staff row");
            break;
        }
        config.exec(
            QStringLiteral("INSERT INTO プログラム稼動履歴 (実行日付,プログラムID,proccounter,摘要,運用事業所コード,"
                           "起動担当者コード,ユーザID) VALUES ('") +
            stamp() + QStringLiteral("', '") + ctx.プログラムID + QStringLiteral("', '") + pad(++history, 12) +
            QStringLiteral("', '") + QStringLiteral("出力終了 ") + doubled(doubled(insert)) + QStringLiteral("', '") +
            ctx.env.運用事業所コード + QStringLiteral("', '") + ctx.op.操作担当者コード + QStringLiteral("', '") +
            ctx.terminal.ユーザID + QStringLiteral("')"));
        // Columns of B履歴番号情報: 基本ID, 名称, 連番種類, 履歴連番.
        const auto kind = main.first(definition, {2});
        const QString base = kind && kind->front().toInt() == 0 ? QStringLiteral("99999999") : QString();
        const auto counter = main.first(definition, {2, 3});
        if (!counter) {
            state.SkipWithError("no row for the series 210");
            break;
        }
        const QString number = nextNumber(counter->at(1));
        main.exec(QStringLiteral("UPDATE B履歴番号情報 SET  履歴連番 = '") + number +
                  QStringLiteral("' WHERE B履歴番号情報.基本ID = '210'"));
        if (!main.exec(QStringLiteral("INSERT INTO L担当者 (保守事業所コード,保守番号基準日付,保守履歴No,赤黒区分,") +
                       names + QStringLiteral(") VALUES ") +
                       valueList(QStringList{office, base, number, QStringLiteral("1")} + values))) {
            state.SkipWithError("cannot write the log row");
            break;
        }
        const QString digits = values.at(28);
        if (main.first(QStringLiteral("SELECT * FROM M電話番号 WHERE 電話番号 = '") + digits + QStringLiteral("'"))) {
            state.SkipWithError("a fresh telephone number is on file");
            break;
        }
        main.exec(
            QStringLiteral("INSERT INTO M電話番号 (電話,名称,郵便番号,住所A,住所B,住所C,電話番号,法人個人区分,ユーザID,"
                           "登録日付) VALUES ('") +
            r.電話 + QStringLiteral("', '") + r.氏名 + QStringLiteral("', '") + r.郵便番号 + QStringLiteral("', '") +
            r.住所A + QStringLiteral("', '") + r.住所B + QStringLiteral("', '") + r.住所C + QStringLiteral("', '") +
            digits + QStringLiteral("', '0', '") + userId + QStringLiteral("', '") + stamp() + QStringLiteral("')"));
    }
    bench::rememberRaw(key("Save", engine), bench::nsPerIteration(start, state));
    if (main.count(QStringLiteral("SELECT COUNT(*) FROM L担当者")) != logBefore + static_cast<long>(state.iterations()))
        state.SkipWithError("the log rows written do not match the iterations");
}

void Save_Program(benchmark::State& state, bench::Engine engine) {
    Context& ctx = program(engine).ctx;
    const std::unique_ptr<Raw> owned = tree(engine).openMain();
    Raw& main = *owned;
    Handle config(tree(engine).configFile());
    const long logBefore = main.count(QStringLiteral("SELECT COUNT(*) FROM L担当者"));
    const long phonesBefore = main.count(QStringLiteral("SELECT COUNT(*) FROM M電話番号"));
    const long historyBefore = config.count(QStringLiteral("SELECT COUNT(*) FROM プログラム稼動履歴"));
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        const long n = saveCounter()++;
        const std::optional<QString> code = nextSaveCode(n);
        if (!code) {
            state.SkipWithError("no fresh codes left");
            break;
        }
        ctx.担当者情報 = newRecord(*code, n);
        ctx.screen.新規フラグ = true;
        担当者insert(ctx);
        if (ctx.screen.処理結果区分 != 1 || ctx.担当者情報.コード != *code) {
            state.SkipWithError("the save did not write the record under its code");
            break;
        }
    }
    const double ns = bench::nsPerIteration(start, state);
    const long saved = static_cast<long>(state.iterations());
    if (main.count(QStringLiteral("SELECT COUNT(*) FROM L担当者")) != logBefore + saved ||
        main.count(QStringLiteral("SELECT COUNT(*) FROM M電話番号")) != phonesBefore + saved ||
        config.count(QStringLiteral("SELECT COUNT(*) FROM プログラム稼動履歴")) != historyBefore + saved)
        state.SkipWithError("the log, directory and history rows do not match the iterations");
    bench::reportRatio(state, key("Save", engine), ns);
}

} // namespace

int main(int argc, char** argv) {
    // The card is made but never shown: no display is needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (bench::Engine engine : bench::engines()) {
        using Run = void (*)(benchmark::State&, bench::Engine);
        for (const auto& [path, raw, prog] : {std::tuple<const char*, Run, Run>{"FieldExit", FieldExit_Raw, FieldExit_Program},
                                              std::tuple<const char*, Run, Run>{"Save", Save_Raw, Save_Program}}) {
            const std::string name = key(path, engine);
            benchmark::RegisterBenchmark((name + "/Raw").c_str(), raw, engine)->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark((name + "/Program").c_str(), prog, engine)->Unit(benchmark::kMicrosecond);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
