// The program as a process, started from an installation's prgbin: the exit
// status of a start that a gate refuses, and the installation check of
// --check with its lines and its exit status, on sound and on damaged
// installations.

#include "support/installation.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <memory>

using testdb::Engine;

namespace {

struct Outcome {
    int code = -1;
    QString out;
    QString err;
    QStringList lines() const { return out.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
    // The line of one check, "" when there is none.
    QString check(const QString& name) const {
        for (const QString& line : lines())
            if (line.mid(8).startsWith(name + QLatin1Char(':')))
                return line;
        return QString();
    }
    std::string text() const { return (out + err).toStdString(); }
};

class Process : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        program = tree->path(QStringLiteral("prgbin/担当者登録"));
        ASSERT_TRUE(QFile::copy(QStringLiteral(STAFF_APP), program));
    }
    void TearDown() override {
        if (!readOnly.isEmpty())
            QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    }

    Outcome start(const QStringList& args) {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p.setProcessEnvironment(env);
        p.start(program, args);
        Outcome o;
        if (!p.waitForFinished(60000)) {
            p.kill();
            p.waitForFinished();
            o.err = QStringLiteral("the program did not end within a minute");
            return o;
        }
        o.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2;
        o.out = QString::fromUtf8(p.readAllStandardOutput());
        o.err = QString::fromUtf8(p.readAllStandardError());
        return o;
    }
    // A start that saves the card as a picture: its message boxes go to the error stream.
    Outcome screenshot() { return start({QStringLiteral("--screenshot"), tree->path(QStringLiteral("card.png"))}); }
    Outcome check() { return start({QStringLiteral("--check")}); }

    void truncate(const QString& file) {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    }
    QString mainFile() const { return tree->path(QStringLiteral("data/main.accdb")); }

    std::unique_ptr<TestInstallation> tree;
    QString program;
    QString readOnly; // a file the test made read-only, given back its rights at the end
};

using ProcessDesktop = Process;

TEST_P(Process, ASoundInstallationPassesEveryCheck) {
    const Outcome o = check();
    EXPECT_EQ(o.code, 0) << o.text();
    EXPECT_EQ(o.lines().last(), QStringLiteral("databases: ok (%1 checks)").arg(o.lines().size() - 1)) << o.text();
    for (const QString& line : o.lines().mid(0, o.lines().size() - 1))
        EXPECT_TRUE(line.startsWith(QStringLiteral("ok      "))) << line.toStdString();
    for (const char* name :
         {"configuration database integrity", "configuration database tables", "configuration database writable",
          "main database of the run", "main database tables", "company record", "photo folder", "document folder"})
        EXPECT_FALSE(o.check(QString::fromUtf8(name)).isEmpty()) << name << "\n" << o.text();
    if (GetParam() == Engine::Postgres) {
        EXPECT_TRUE(o.check(QStringLiteral("main database writable")).startsWith(QStringLiteral("ok")));
    }
    // The check ran as a start runs: its start and end rows are in the history.
    const QStringList h = tree->history();
    ASSERT_GE(h.size(), 2);
    EXPECT_EQ(h.first().section(QLatin1Char('|'), 1), QStringLiteral("開始 "));
    EXPECT_EQ(h.last().section(QLatin1Char('|'), 1), QStringLiteral("終了"));
}

TEST_P(Process, AnEmptyConfigurationFileFailsTheCheckAndTheStart) {
    truncate(tree->configFile());
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("configuration database tables")).startsWith(QStringLiteral("FAILED")))
        << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("configuration database tables")).contains(QStringLiteral("データベース定義")));
    EXPECT_TRUE(o.lines().last().startsWith(QStringLiteral("databases: FAILED"))) << o.text();
}

TEST_P(Process, AMissingConfigurationEndsTheStartWithStatusOne) {
    ASSERT_TRUE(QFile::remove(tree->configFile()));
    const Outcome start = screenshot();
    EXPECT_EQ(start.code, 1) << start.text();
    EXPECT_TRUE(start.err.contains(QStringLiteral("データベースが使用できません。"))) << start.text();
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("configuration database file")).startsWith(QStringLiteral("FAILED")))
        << o.text();
}

TEST_P(Process, AMainDatabaseThatCannotBeOpenedEndsTheStartWithStatusOne) {
    ASSERT_TRUE(
        tree->configExecute(QStringLiteral("UPDATE データベース定義 SET db = 'A', プロバイダ名 = "
                                           "'Microsoft.ACE.OLEDB.12.0', データソース名 = '/nowhere/main.accdb'")));
    const Outcome start = screenshot();
    EXPECT_EQ(start.code, 1) << start.text();
    EXPECT_TRUE(start.err.contains(QStringLiteral("データベースが使用できません。"))) << start.text();
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("main database file")).startsWith(QStringLiteral("FAILED"))) << o.text();
}

TEST_P(Process, ACompanyRecordThatCannotBeReadEndsTheStartWithStatusThree) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("DELETE FROM Mユーザ")));
    const Outcome start = screenshot();
    EXPECT_EQ(start.code, 3) << start.text();
    EXPECT_TRUE(start.err.contains(QStringLiteral("ユーザ情報が使用できません。"))) << start.text();
    EXPECT_FALSE(QFile::exists(tree->path(QStringLiteral("card.png"))));
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("company record")).startsWith(QStringLiteral("FAILED"))) << o.text();
}

TEST_P(Process, APersonnelLinkThatCannotBeOpenedEndsTheStartWithStatusFour) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = 'A', "
                                                 "連携データソース名 = '/nowhere.accdb' WHERE コード = '002'")));
    const Outcome start = screenshot();
    EXPECT_EQ(start.code, 4) << start.text();
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("personnel link")).startsWith(QStringLiteral("FAILED"))) << o.text();
}

TEST_P(Process, ASoundStartSavesTheCardAndEndsWithStatusZero) {
    const Outcome start = screenshot();
    EXPECT_EQ(start.code, 0) << start.text();
    EXPECT_TRUE(QFile::exists(tree->path(QStringLiteral("card.png"))));
}

TEST_P(Process, ABadOptionEndsWithStatusTwo) {
    const Outcome o = start({QStringLiteral("--screenshot")});
    EXPECT_EQ(o.code, 2) << o.text();
}

TEST_P(ProcessDesktop, AnEmptyMainDatabaseFailsTheCheckAndTheStart) {
    truncate(mainFile());
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("main database tables")).startsWith(QStringLiteral("FAILED"))) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("main database tables")).contains(QStringLiteral("M担当者"))) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("company record")).startsWith(QStringLiteral("FAILED"))) << o.text();
    const Outcome start = screenshot();
    EXPECT_EQ(start.code, 3) << start.text();
    EXPECT_TRUE(start.err.contains(QStringLiteral("ユーザ情報が使用できません。"))) << start.text();
}

TEST_P(ProcessDesktop, DamagedPagesFailTheIntegrityCheck) {
    // Overwrite a page in the middle of the file; the engine's own header stays.
    QFile f(mainFile());
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    ASSERT_GT(f.size(), 40 * 4096);
    ASSERT_TRUE(f.seek(20 * 4096));
    ASSERT_EQ(f.write(QByteArray(600, '\x37')), 600);
    f.close();
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    const QString line = o.check(QStringLiteral("main database integrity"));
    EXPECT_TRUE(line.startsWith(QStringLiteral("FAILED"))) << o.text();
    EXPECT_TRUE(line.contains(QStringLiteral("malformed")) || line.contains(QStringLiteral("Page")))
        << line.toStdString();
}

TEST_P(ProcessDesktop, AReadOnlyMainDatabaseFailsTheCheck) {
    readOnly = mainFile();
    ASSERT_TRUE(QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    const QString line = o.check(QStringLiteral("main database writable"));
    EXPECT_TRUE(line.startsWith(QStringLiteral("FAILED"))) << o.text();
    EXPECT_TRUE(line.contains(QStringLiteral("read-only")) || line.contains(QStringLiteral("not writable")))
        << line.toStdString();
}

TEST_P(ProcessDesktop, AMissingPhotoFolderFailsTheCheck) {
    ASSERT_TRUE(QDir(tree->path(QStringLiteral("photo/担当者印"))).removeRecursively());
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("seal folder")).startsWith(QStringLiteral("FAILED"))) << o.text();
    EXPECT_TRUE(o.check(QStringLiteral("seal folder")).contains(QStringLiteral("missing"))) << o.text();
}

// On the server: a database whose sessions may not write fails the check.
using ProcessServer = Process;

TEST_P(ProcessServer, AReadOnlyServerDatabaseFailsTheCheck) {
    const QString database =
        tree->mainConnectionText().section(QStringLiteral("Initial Catalog="), 1).section(';', 0, 0);
    ASSERT_FALSE(database.isEmpty());
    ASSERT_TRUE(
        testdb::adminExecute(QStringLiteral("ALTER DATABASE %1 SET default_transaction_read_only = on").arg(database)));
    const Outcome o = check();
    EXPECT_EQ(o.code, 1) << o.text();
    const QString line = o.check(QStringLiteral("main database writable"));
    EXPECT_TRUE(line.startsWith(QStringLiteral("FAILED"))) << o.text();
    EXPECT_TRUE(line.contains(QStringLiteral("read-only"))) << line.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, Process, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);
INSTANTIATE_TEST_SUITE_P(Engines, ProcessDesktop, ::testing::Values(Engine::Sqlite), testdb::engineParamName);
INSTANTIATE_TEST_SUITE_P(Engines, ProcessServer, ::testing::Values(Engine::Postgres), testdb::engineParamName);

} // namespace
