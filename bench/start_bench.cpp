// The whole process from its start to the visible card: the program started
// on a demo installation for staff 00001, with --screenshot, so that it ends
// as soon as the card is drawn and saved. On the desktop installation and,
// when STAFF_TEST_PG names a server, on an installation whose main database
// is on the server. There is no raw counterpart: the figure is the time a
// user waits.
//
// Besides the start to the card, the bare process of the same program
// (--version, which ends before any window or database) shows what the system
// spends on starting any process of its size.

#include "bench_support.h"
#include "setup_server.h"
#include "tools/setup.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace {

class Installation {
public:
    explicit Installation(bench::Engine engine) {
        setup::Options options;
        options.root = dir_.filePath(QStringLiteral("demo"));
        options.programFile = QStringLiteral(STAFF_APP);
        options.demo = true;
        options.postcodes = setup::Postcodes::Fixture;
        if (engine == bench::Engine::Postgres) {
            server_ = std::make_unique<bench::ServerDatabase>(QStringLiteral("start"), false);
            options.server = bench::installationServer(*server_);
        }
        const setup::Result made = setup::createInstallation(options);
        if (!made.ok)
            qFatal("cannot make the demo installation: %s", qPrintable(made.message));
        program_ = options.root + QStringLiteral("/prgbin/") + QFileInfo(QStringLiteral(STAFF_APP)).fileName();
        picture_ = dir_.filePath(QStringLiteral("card.png"));
    }
    const QString& program() const { return program_; }
    const QString& picture() const { return picture_; }

private:
    std::unique_ptr<bench::ServerDatabase> server_;
    QTemporaryDir dir_;
    QString program_;
    QString picture_;
};

Installation& installation(bench::Engine engine) {
    static std::map<bench::Engine, std::unique_ptr<Installation>> made;
    auto& i = made[engine];
    if (!i)
        i = std::make_unique<Installation>(engine);
    return *i;
}

// Runs the program once; false when it did not end well.
bool run(const QString& program, const QStringList& args, QString* why) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    if (!env.contains(QStringLiteral("QT_QPA_PLATFORM")))
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(env);
    p.start(program, args);
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
        *why = QStringLiteral("did not end within a minute");
        return false;
    }
    if (p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        *why = QStringLiteral("exit %1: %2").arg(p.exitCode()).arg(QString::fromUtf8(p.readAllStandardError()));
        return false;
    }
    return true;
}

void StartToCard(benchmark::State& state, bench::Engine engine) {
    const Installation& i = installation(engine);
    for (auto _ : state) {
        QFile::remove(i.picture());
        QString why;
        if (!run(i.program(), {QStringLiteral("--screenshot"), i.picture(), QStringLiteral("00000001")}, &why)) {
            state.SkipWithError(why.toStdString().c_str());
            break;
        }
        if (!QFile::exists(i.picture())) {
            state.SkipWithError("no picture of the card");
            break;
        }
    }
}

void BareProcess(benchmark::State& state) {
    const Installation& i = installation(bench::Engine::Sqlite);
    for (auto _ : state) {
        QString why;
        if (!run(i.program(), {QStringLiteral("--version")}, &why)) {
            state.SkipWithError(why.toStdString().c_str());
            break;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (bench::Engine engine : bench::engines())
        benchmark::RegisterBenchmark((std::string("StartToCard/") + bench::engineName(engine) + "/Program").c_str(),
                                     StartToCard, engine)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime()
            ->Iterations(20);
    benchmark::RegisterBenchmark("BareProcess/Sqlite/Program", BareProcess)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(20);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
