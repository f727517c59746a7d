// The staff card report program as a whole process: 担当者カード --pdf for
// 1,000 staff cards from an installation tree on the desktop database, each
// card with a photo and a seal (the heavier case), and 1,000 cards without
// pictures. Each run reports its peak memory (the child's maximum resident
// set) and the size of the file. The raw benchmark beside them writes the
// same number of A4 pages with the same texts and pictures straight through
// the PDF writer, with no database, no layout and no process start.

#include "bench_support.h"
#include "platform/db/connection.h"
#include "shell/担当者カード引数.h"
#include "tools/setup.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

constexpr int kCards = 1000;
constexpr int kRowsPerInsert = 250;

QString pad(long value, int width) { return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0')); }

// A head-and-shoulders picture of 600 by 800 dots.
QImage portrait() {
    QImage image(600, 800, QImage::Format_RGB32);
    image.fill(QColor(0xc8, 0xdc, 0xf0));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x33, 0x3a, 0x4a));
    p.drawEllipse(QRectF(60, 500, 480, 560));
    p.setBrush(QColor(0xf1, 0xc9, 0xa5));
    p.drawEllipse(QRectF(180, 160, 240, 360));
    return image;
}

// A red ring on a transparent ground.
QImage seal() {
    QImage image(240, 240, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QPen pen(QColor(0xc8, 0x1e, 0x1e));
    pen.setWidth(12);
    p.setPen(pen);
    p.drawEllipse(QRectF(10, 10, 220, 220));
    return image;
}

// The tree: the seed of staff-setup, the report program in prgbin, and 2 x
// kCards staff rows; the first kCards have a photo and a seal each.
class Tree {
public:
    Tree() {
        const auto start = std::chrono::steady_clock::now();
        root_ = dir_.path() + QStringLiteral("/root");
        setup::Options options;
        options.root = root_;
        options.postcodes = setup::Postcodes::Fixture;
        options.reportProgramFile = QStringLiteral(STAFF_REPORT_PROGRAM);
        const setup::Result made = setup::createInstallation(options);
        if (!made.ok)
            qFatal("cannot make the installation tree: %s", qPrintable(made.message));
        db::Connection cn;
        if (!cn.open(bench::desktopConnectionText(root_ + QStringLiteral("/data/main.accdb"))))
            qFatal("cannot open the main database: %s", qPrintable(cn.lastError().description));
        photoFolder_ = root_ + QStringLiteral("/photo");
        if (!cn.execute(QStringLiteral("UPDATE Mユーザ SET 写真フォルダ = '%1'").arg(photoFolder_)))
            qFatal("cannot set the photo folder");
        fillStaff(cn);
        writePictures();
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        std::fprintf(stderr, "set-up: tree, %d staff rows, %d photos and seals: %.1f s\n", 2 * kCards, kCards, seconds);
    }

    QString program() const { return root_ + QStringLiteral("/prgbin/") + 担当者カードプログラム名(); }
    QString photo() const { return photoFolder_ + QStringLiteral("/担当者/00001.jpg"); }
    QString sealFile() const { return photoFolder_ + QStringLiteral("/担当者印/00001.png"); }
    QString out(const char* name) const { return dir_.path() + QLatin1Char('/') + QString::fromUtf8(name); }

private:
    static void fillStaff(db::Connection& cn) {
        static const char* const family[] = {"佐藤", "鈴木", "高橋", "田中", "伊藤",
                                             "渡辺", "山本", "中村", "小林", "加藤"};
        static const char* const given[] = {"太郎", "花子", "一郎", "美咲", "健太",
                                            "陽子", "翔",   "直美", "大輔", "由美"};
        for (int first = 1; first <= 2 * kCards; first += kRowsPerInsert) {
            QString sql = QStringLiteral(
                "INSERT INTO M担当者 "
                "(コード,氏名,カナ,性別区分,生年月日,郵便番号,住所A,住所B,住所C,電話,携帯電話,EMAIL,"
                "事業所コード,部門コード,セクションコード,役職コード,職責,ログインID,在籍区分,社員区分,入社日付,"
                "担当者印file,担当者メモ) VALUES ");
            for (int i = first; i < first + kRowsPerInsert && i <= 2 * kCards; ++i) {
                if (i != first)
                    sql += QLatin1Char(',');
                const QString code = pad(i, 5);
                const QStringList v{
                    code,
                    QString::fromUtf8(family[i % 10]) + QLatin1Char(' ') + QString::fromUtf8(given[(i / 10) % 10]),
                    QStringLiteral("ﾀﾝﾄｳ ｼｬ"),
                    QString::number(1 + i % 2),
                    QStringLiteral("%1%2%3").arg(1950 + i % 50).arg(pad(1 + i % 12, 2), pad(1 + i % 28, 2)),
                    QStringLiteral("1000005"),
                    QStringLiteral("東京都千代田区"),
                    QStringLiteral("丸の内一丁目%1番").arg(i % 9 + 1),
                    QStringLiteral("さくらビル%1階").arg(i % 20 + 1),
                    QStringLiteral("03-5%1-%2").arg(pad(i / 10000, 3), pad(i % 10000, 4)),
                    QStringLiteral("090-1%1-%2").arg(pad(i / 10000, 3), pad(i % 10000, 4)),
                    QStringLiteral("staff%1@sakura-shoji.example").arg(code),
                    pad(i % 3, 3),
                    pad(1 + i % 5, 3),
                    pad(1 + i % 7, 3),
                    pad(1 + i % 8, 2),
                    QStringLiteral("法人営業の担当"),
                    QStringLiteral("u") + code,
                    QStringLiteral("0"),
                    QStringLiteral("1"),
                    QStringLiteral("%1").arg(1990 + i % 30) + QStringLiteral("0401"),
                    i <= kCards ? code + QStringLiteral(".png") : QString(),
                    QStringLiteral("得意先訪問の記録は週末にまとめて提出する。")};
                sql += QStringLiteral("('") + v.join(QStringLiteral("','")) + QStringLiteral("')");
            }
            if (!cn.execute(sql))
                qFatal("cannot fill the staff rows: %s", qPrintable(cn.lastError().description));
        }
    }

    // One photo and one seal per card of the first range, each a file of its own.
    void writePictures() {
        QDir().mkpath(photoFolder_ + QStringLiteral("/担当者"));
        QDir().mkpath(photoFolder_ + QStringLiteral("/担当者印"));
        if (!portrait().save(photo(), "JPG", 90) || !seal().save(sealFile(), "PNG"))
            qFatal("cannot write the pictures");
        for (int i = 2; i <= kCards; ++i) {
            QFile::copy(photo(), photoFolder_ + QStringLiteral("/担当者/%1.jpg").arg(pad(i, 5)));
            QFile::copy(sealFile(), photoFolder_ + QStringLiteral("/担当者印/%1.png").arg(pad(i, 5)));
        }
    }

    QTemporaryDir dir_;
    QString root_;
    QString photoFolder_;
};

Tree& tree() {
    static Tree t;
    return t;
}

// The argument text of every office for a range of staff codes.
QString rangeText(int from, int to) {
    担当者カード条件 c;
    c.操作事業所コード = QStringLiteral("000");
    c.事業所コード自 = QStringLiteral("000");
    c.事業所コード至 = QStringLiteral("999");
    c.担当者コード自 = pad(from, 5);
    c.担当者コード至 = pad(to, 5);
    return 担当者カード引数make(c);
}

// Runs the program to its end; answers its exit status, its peak resident set
// in KiB and the processor time it used (user and system) in seconds.
int runProcess(const QString& program, const QStringList& arguments, long& peakKiB, double& cpuSeconds) {
    std::vector<QByteArray> storage{program.toLocal8Bit()};
    for (const QString& a : arguments)
        storage.push_back(a.toLocal8Bit());
    std::vector<char*> argv;
    for (QByteArray& s : storage)
        argv.push_back(s.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0)
        return -1;
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) != pid)
        return -1;
    peakKiB = usage.ru_maxrss;
    cpuSeconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                 static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void programPdf(benchmark::State& state, int from, const char* rawName) {
    const QString program = tree().program();
    const QString pdf = tree().out("cards.pdf");
    const QStringList arguments{rangeText(from, from + kCards - 1), QStringLiteral("--pdf"), pdf};
    long peak = 0;
    double cpu = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        long peakOfRun = 0;
        double cpuOfRun = 0;
        const int code = runProcess(program, arguments, peakOfRun, cpuOfRun);
        cpu += cpuOfRun;
        if (code != 0) {
            state.SkipWithError("the report program failed");
            return;
        }
        peak = std::max(peak, peakOfRun);
    }
    bench::reportRatio(state, rawName, bench::nsPerIteration(start, state));
    state.counters["peak_rss_MB"] = static_cast<double>(peak) / 1024.0;
    // The processor time of the child: what the run costs when the machine is shared.
    state.counters["cpu_s"] = cpu / static_cast<double>(state.iterations());
    state.counters["pdf_MB"] = static_cast<double>(QFile(pdf).size()) / (1024.0 * 1024.0);
    state.counters["cards"] = kCards;
}

// The same pages written straight: the texts of a card and, with pictures,
// the two picture files read and drawn on each page.
void rawPdf(benchmark::State& state, bool pictures, const char* rawName) {
    const QString pdf = tree().out("raw.pdf");
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        QPdfWriter writer(pdf);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(600);
        QPainter painter(&writer);
        QFont font(QStringLiteral("Noto Serif CJK JP"));
        font.setPointSizeF(10.5);
        painter.setFont(font);
        for (int page = 0; page < kCards; ++page) {
            if (page > 0)
                writer.newPage();
            for (int line = 0; line < 35; ++line)
                painter.drawText(QPointF(400, 400 + line * 150),
                                 QStringLiteral("担当者 %1 の項目 %2").arg(page).arg(line));
            if (pictures) {
                painter.drawImage(QRectF(3800, 1100, 700, 940), QImage(tree().photo()).scaled(354, 472));
                painter.drawImage(QRectF(3800, 5300, 660, 660), QImage(tree().sealFile()));
            }
        }
        painter.end();
    }
    bench::rememberRaw(rawName, bench::nsPerIteration(start, state));
}

void BM_RawPdfWithPictures(benchmark::State& state) { rawPdf(state, true, "pictures"); }
void BM_ReportProgramPdfWithPictures(benchmark::State& state) { programPdf(state, 1, "pictures"); }
void BM_RawPdfTextOnly(benchmark::State& state) { rawPdf(state, false, "text"); }
void BM_ReportProgramPdfTextOnly(benchmark::State& state) { programPdf(state, kCards + 1, "text"); }

BENCHMARK(BM_RawPdfWithPictures)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_ReportProgramPdfWithPictures)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_RawPdfTextOnly)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_ReportProgramPdfTextOnly)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    // The heap as the report program keeps it (its main): pictures reuse the
    // memory of the previous page instead of being mapped anew.
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 128 * 1024 * 1024);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    tree();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
