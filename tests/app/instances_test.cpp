// The previous-instance rule between real processes of the program, started
// from one installation's prgbin: a start without a staff code gives way to any
// instance that started before it and still runs; a start for a staff record
// always goes on.

#include "support/installation.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>

using testdb::Engine;

namespace {

class Instances : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        program = tree->path(QStringLiteral("prgbin/担当者登録"));
        ASSERT_TRUE(QFile::copy(QStringLiteral(STAFF_APP), program));
    }
    void TearDown() override {
        for (auto& p : processes) {
            if (p->state() != QProcess::NotRunning) {
                p->kill();
                p->waitForFinished(10000);
            }
        }
        processes.clear();
        tree.reset();
    }

    // Starts the program with a command line and waits until its start row is
    // in the run history: from then on it has announced itself.
    QProcess* start(const QString& line) {
        const qsizetype before = startRows();
        auto p = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p->setProcessEnvironment(env);
        p->setProgram(program);
        p->setArguments(line.isEmpty() ? QStringList() : QStringList{line});
        p->start();
        EXPECT_TRUE(p->waitForStarted(10000));
        QDeadlineTimer deadline(30000);
        while (startRows() == before && p->state() != QProcess::NotRunning && !deadline.hasExpired())
            QThread::msleep(50);
        EXPECT_GT(startRows(), before) << "no start row for \"" << line.toStdString() << "\"";
        processes.push_back(std::move(p));
        return processes.back().get();
    }
    qsizetype startRows() const {
        qsizetype n = 0;
        for (const QString& row : tree->history())
            n += row.section(QLatin1Char('|'), 1).startsWith(QStringLiteral("開始")) ? 1 : 0;
        return n;
    }
    // True when the process ended by itself within the time, with exit code 0.
    static bool endsQuietly(QProcess* p) {
        return p->waitForFinished(30000) && p->exitStatus() == QProcess::NormalExit && p->exitCode() == 0;
    }
    // A process that the rule lets run is still running after a while.
    static bool keepsRunning(QProcess* p) {
        return !p->waitForFinished(3000) && p->state() == QProcess::Running;
    }
    static void end(QProcess* p) {
        p->kill();
        p->waitForFinished(10000);
    }

    std::unique_ptr<TestInstallation> tree;
    QString program;
    std::vector<std::unique_ptr<QProcess>> processes;
};

TEST_P(Instances, EveryPairOfInstancesKeepsTheRule) {
    QProcess* plain = start(QString());
    ASSERT_TRUE(keepsRunning(plain));

    // A second plain start ends at once, leaving its start and end rows. A
    // message box would have kept it waiting for an answer.
    QProcess* second = start(QString());
    EXPECT_TRUE(endsQuietly(second));
    EXPECT_EQ(tree->history().last().section(QLatin1Char('|'), 1), QStringLiteral("終了"));

    // A start for one staff record goes on beside it.
    QProcess* record = start(QStringLiteral("00000001"));
    EXPECT_TRUE(keepsRunning(record));

    // The first plain instance ends: the record instance still counts.
    end(plain);
    QProcess* third = start(QString());
    EXPECT_TRUE(endsQuietly(third));

    // With nothing running a plain start goes on.
    end(record);
    QProcess* fourth = start(QString());
    EXPECT_TRUE(keepsRunning(fourth));
}

TEST_P(Instances, AnInstanceWaitingForItsPinIsSeen) {
    // The first start stops at the PIN before the rule; the company then drops
    // its PINs, so that the second one runs straight up to the rule.
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE Mユーザ SET 暗証番号有無 = '1'")));
    QProcess* waiting = start(QString());
    ASSERT_TRUE(keepsRunning(waiting));
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE Mユーザ SET 暗証番号有無 = '0'")));
    QProcess* second = start(QString());
    EXPECT_TRUE(endsQuietly(second));
    EXPECT_EQ(waiting->state(), QProcess::Running);
}

INSTANTIATE_TEST_SUITE_P(Engines, Instances, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
