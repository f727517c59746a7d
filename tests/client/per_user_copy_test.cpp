// The per-user report databases of an installation with one folder per user:
// copied once, and their report forms relinked to the user's own copy only when
// the desktop database tool could be registered.

#include "link/mod連携データ処理.h"
#include "shell/modデータ処理.h"
#include "support/installation.h"

#include "platform/db/connection.h"
#include "platform/os/files.h"

#include <QFile>

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

using Hive = os::Registry::Hive;

const qint32 kLinked = 1073741824;
const QString kAppPaths = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\MSACCESS.EXE");
const QString kExtensions = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Extensions");
const QString kTrusted14 = QStringLiteral("Software\\Microsoft\\Office\\14.0\\Access\\Security\\Trusted Locations");
const QString kNewEngine = QStringLiteral("DAO.DBEngine.120");

// The table definitions of a report form file: two linked tables, a local one,
// and one whose attributes hold more than the link.
QList<db::TableDef> formTables() {
    return {{QStringLiteral("T売上帳票"), kLinked, QStringLiteral(";DATABASE=C:\\suite\\report\\repdb.accdb")},
            {QStringLiteral("W帳票設定"), 0, QString()},
            {QStringLiteral("T担当者帳票"), kLinked, QStringLiteral(";DATABASE=C:\\suite\\report\\repdb.accdb")},
            {QStringLiteral("T隠し"), kLinked + 1, QStringLiteral(";DATABASE=C:\\old.accdb")}};
}

bool writeFile(const QString& path, const QByteArray& content) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(content) == content.size();
}

QByteArray readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(missing)");
}

// The calls that relink one form file's two linked tables.
QStringList relinked(const QString& form, const QString& engine, const QString& target) {
    const QString connect = QStringLiteral("connect|%1|;DATABASE=") + target;
    return {QStringLiteral("open|") + form + QLatin1Char('|') + engine,
            connect.arg(QStringLiteral("T売上帳票")),
            QStringLiteral("refresh|T売上帳票"),
            connect.arg(QStringLiteral("T担当者帳票")),
            QStringLiteral("refresh|T担当者帳票"),
            QStringLiteral("close")};
}

class PerUserCopy : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET インストール区分 = '1'")));
        userReport = tree->path(QStringLiteral("users/tanaka/report"));
    }
    // The shared report folder holds these files, each with its own name as content.
    void shared(const QStringList& names) {
        for (const QString& name : names)
            ASSERT_TRUE(writeFile(tree->path(QStringLiteral("report/") + name), name.toUtf8()));
    }
    // A machine whose desktop database tool is found and can be registered.
    void toolInstalled() {
        tree->registry.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"),
                                QStringLiteral("C:\\Tools\\Office14\\"));
        tree->registry.addKey(Hive::CurrentUser, kExtensions);
    }
    const db::TableDef& table(const QString& file, const QString& name) {
        for (const db::TableDef& t : tree->tableLinks.files[file])
            if (t.name == name)
                return t;
        static const db::TableDef none;
        return none;
    }
    Context& ctx() { return tree->ctx(); }
    std::unique_ptr<TestInstallation> tree;
    QString userReport;
};

TEST_P(PerUserCopy, RegisteredToolRelinksTheUsersReportForms) {
    shared({QStringLiteral("repdb.accdb"), QStringLiteral("repfrmdb.accdb")});
    toolInstalled();
    const QString form = userReport + QStringLiteral("/repfrmdb.accdb");
    tree->tableLinks.files[form] = formTables();

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_EQ(ctx().folders.repdb種別, 1);
    EXPECT_EQ(readFile(userReport + QStringLiteral("/repdb.accdb")), QByteArray("repdb.accdb"));
    EXPECT_EQ(readFile(form), QByteArray("repfrmdb.accdb"));

    EXPECT_EQ(tree->tableLinks.calls, relinked(form, kNewEngine, userReport + QStringLiteral("/repdb.accdb")));
    EXPECT_EQ(table(form, QStringLiteral("T売上帳票")).connect,
              QStringLiteral(";DATABASE=") + userReport + QStringLiteral("/repdb.accdb"));
    EXPECT_EQ(table(form, QStringLiteral("T担当者帳票")).connect,
              QStringLiteral(";DATABASE=") + userReport + QStringLiteral("/repdb.accdb"));
    EXPECT_EQ(table(form, QStringLiteral("T隠し")).connect, QStringLiteral(";DATABASE=C:\\old.accdb"));
    EXPECT_EQ(table(form, QStringLiteral("W帳票設定")).connect, QString());

    // The user's report folder is the trusted location.
    EXPECT_EQ(
        tree->registry.text(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"), QStringLiteral("Path")),
        userReport + QStringLiteral("/"));
    EXPECT_EQ(tree->waitBox.shownCount, 1);
    EXPECT_FALSE(tree->waitBox.visible);
    EXPECT_TRUE(tree->history().isEmpty()) << tree->history().join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(tree->messages.shown.isEmpty());

    // A second start finds the user's copy: nothing is copied, registered or relinked again.
    ctx().conn.環境DB接続.close();
    tree->tableLinks.calls.clear();
    tree->registry.writes.clear();
    tree->newContext();
    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_TRUE(tree->tableLinks.calls.isEmpty());
    EXPECT_TRUE(tree->registry.writes.isEmpty());
    EXPECT_EQ(tree->waitBox.shownCount, 1);
}

TEST_P(PerUserCopy, OlderReportKindRelinksBothFormFilesToTheOlderDatabase) {
    shared({QStringLiteral("repdb.mdb"), QStringLiteral("repfrmdb.mdb"), QStringLiteral("repfrmdb.accdb")});
    toolInstalled();
    const QString oldForm = userReport + QStringLiteral("/repfrmdb.mdb");
    const QString newForm = userReport + QStringLiteral("/repfrmdb.accdb");
    tree->tableLinks.files[oldForm] = formTables();
    tree->tableLinks.files[newForm] = formTables();

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_EQ(ctx().folders.repdb種別, 2);
    for (const char* name : {"repdb.mdb", "repfrmdb.mdb", "repfrmdb.accdb"})
        EXPECT_EQ(readFile(userReport + QLatin1Char('/') + QString::fromUtf8(name)), QByteArray(name));

    const QString target = userReport + QStringLiteral("/repdb.mdb");
    // The older form file with the default engine, then the newer one.
    EXPECT_EQ(tree->tableLinks.calls, relinked(oldForm, QString(), target) + relinked(newForm, kNewEngine, target));
    EXPECT_EQ(table(newForm, QStringLiteral("T売上帳票")).connect, QStringLiteral(";DATABASE=") + target);
    EXPECT_EQ(table(oldForm, QStringLiteral("T担当者帳票")).connect, QStringLiteral(";DATABASE=") + target);
    EXPECT_EQ(table(oldForm, QStringLiteral("T隠し")).connect, QStringLiteral(";DATABASE=C:\\old.accdb"));
    EXPECT_TRUE(tree->history().isEmpty()) << tree->history().join(QLatin1Char('\n')).toStdString();
}

TEST_P(PerUserCopy, OlderReportKindWithoutTheNewerFormFileRelinksTheOlderOneOnly) {
    shared({QStringLiteral("repdb.mdb"), QStringLiteral("repfrmdb.mdb")});
    toolInstalled();
    const QString oldForm = userReport + QStringLiteral("/repfrmdb.mdb");
    tree->tableLinks.files[oldForm] = formTables();
    tree->tableLinks.files[userReport + QStringLiteral("/repfrmdb.accdb")] = formTables();

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_FALSE(os::fileExists(userReport + QStringLiteral("/repfrmdb.accdb")));
    EXPECT_EQ(tree->tableLinks.calls, relinked(oldForm, QString(), userReport + QStringLiteral("/repdb.mdb")));
}

TEST_P(PerUserCopy, ThisPlatformsRegistryRelinksNothingButCopiesTheFiles) {
    shared({QStringLiteral("repdb.accdb"), QStringLiteral("repfrmdb.accdb")});
    const QString form = userReport + QStringLiteral("/repfrmdb.accdb");
    tree->tableLinks.files[form] = formTables();
    ctx().registry = &os::SystemRegistry::instance();

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_TRUE(tree->tableLinks.calls.isEmpty());
    EXPECT_EQ(table(form, QStringLiteral("T売上帳票")).connect,
              QStringLiteral(";DATABASE=C:\\suite\\report\\repdb.accdb"));
    EXPECT_EQ(readFile(userReport + QStringLiteral("/repdb.accdb")), QByteArray("repdb.accdb"));
    EXPECT_EQ(readFile(form), QByteArray("repfrmdb.accdb"));
    EXPECT_EQ(tree->waitBox.shownCount, 1);
    EXPECT_FALSE(tree->waitBox.visible);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(PerUserCopy, EmptyRegistryRelinksNothingOfTheOlderKind) {
    shared({QStringLiteral("repdb.mdb"), QStringLiteral("repfrmdb.mdb"), QStringLiteral("repfrmdb.accdb")});
    tree->tableLinks.files[userReport + QStringLiteral("/repfrmdb.mdb")] = formTables();
    tree->tableLinks.files[userReport + QStringLiteral("/repfrmdb.accdb")] = formTables();

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_TRUE(tree->tableLinks.calls.isEmpty());
    EXPECT_TRUE(tree->registry.writes.isEmpty());
    for (const char* name : {"repdb.mdb", "repfrmdb.mdb", "repfrmdb.accdb"})
        EXPECT_TRUE(os::fileExists(userReport + QLatin1Char('/') + QString::fromUtf8(name))) << name;
    EXPECT_EQ(ctx().folders.repdb種別, 2);
}

TEST_P(PerUserCopy, NoHookCountsAsNotRegistered) {
    shared({QStringLiteral("repdb.accdb"), QStringLiteral("repfrmdb.accdb")});
    toolInstalled();
    tree->tableLinks.files[userReport + QStringLiteral("/repfrmdb.accdb")] = formTables();
    ctx().DBツール登録 = nullptr;

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_TRUE(tree->tableLinks.calls.isEmpty());
    EXPECT_TRUE(tree->registry.writes.isEmpty());
    EXPECT_TRUE(os::fileExists(userReport + QStringLiteral("/repfrmdb.accdb")));
}

TEST_P(PerUserCopy, FailedRelinkStepIsPassedOverAndTheNextOnesRun) {
    shared({QStringLiteral("repdb.accdb"), QStringLiteral("repfrmdb.accdb")});
    toolInstalled();
    const QString form = userReport + QStringLiteral("/repfrmdb.accdb");
    tree->tableLinks.files[form] = formTables();
    tree->tableLinks.failConnect.insert(QStringLiteral("T売上帳票"));

    ASSERT_TRUE(環境DBopen(ctx()));
    EXPECT_EQ(tree->tableLinks.calls, relinked(form, kNewEngine, userReport + QStringLiteral("/repdb.accdb")));
    EXPECT_EQ(table(form, QStringLiteral("T担当者帳票")).connect,
              QStringLiteral(";DATABASE=") + userReport + QStringLiteral("/repdb.accdb"));
    EXPECT_FALSE(tree->waitBox.visible);
}

TEST_P(PerUserCopy, FormFileThatCannotBeOpenedEndsItsRelinking) {
    shared({QStringLiteral("repdb.accdb"), QStringLiteral("repfrmdb.accdb")});
    toolInstalled(); // the fake engine knows no tables of this file, so it cannot open it

    ASSERT_TRUE(環境DBopen(ctx()));
    const QString form = userReport + QStringLiteral("/repfrmdb.accdb");
    EXPECT_EQ(tree->tableLinks.calls, QStringList{QStringLiteral("open|") + form + QLatin1Char('|') + kNewEngine});
    EXPECT_TRUE(os::fileExists(form));
    EXPECT_FALSE(tree->waitBox.visible);
}

INSTANTIATE_TEST_SUITE_P(Engines, PerUserCopy, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

// The personnel system's per-user copy relinks its report forms in the same way.
class LinkPerUserCopy : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        other = std::make_unique<TestInstallation>(GetParam(), QStringLiteral("jinji"));
        ASSERT_TRUE(other->ok()) << other->error().toStdString();
        const QString conf = other->path(QStringLiteral("conf/usrcnfg.mdb"));
        ASSERT_TRUE(QFile::copy(other->path(QStringLiteral("conf/usrcnfg.accdb")), conf));
        db::Connection cn;
        ASSERT_TRUE(cn.open(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;User ID=;Password=;Data Source=") + conf +
                            QStringLiteral(";")));
        ASSERT_TRUE(cn.execute(QStringLiteral("UPDATE 動作環境定義 SET インストール区分 = '1'")));
        cn.close();
        for (const char* name : {"repdb.mdb", "repfrmdb.mdb"})
            ASSERT_TRUE(writeFile(other->path(QStringLiteral("report/") + QString::fromUtf8(name)), name));
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携アプリフォルダ = '%1' WHERE コード = '002'")
                .arg(other->root())));
        userReport = other->path(QStringLiteral("users/tanaka/report"));
    }
    void open() {
        ASSERT_TRUE(環境DBopen(tree->ctx()));
        ASSERT_TRUE(業務DBopen(tree->ctx()));
        ASSERT_TRUE(ユーザ情報read(tree->ctx()));
        ASSERT_TRUE(連携有無chk(tree->ctx(), QStringLiteral("人事就業管理")));
        ASSERT_TRUE(連携DBopen(tree->ctx())) << tree->history().join(QLatin1Char('\n')).toStdString();
    }
    std::unique_ptr<TestInstallation> tree;
    std::unique_ptr<TestInstallation> other;
    QString userReport;
};

TEST_P(LinkPerUserCopy, RegisteredToolRelinksTheOlderFormFile) {
    tree->registry.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"),
                            QStringLiteral("C:\\Tools\\Office14\\"));
    tree->registry.addKey(Hive::CurrentUser, kExtensions);
    const QString form = userReport + QStringLiteral("/repfrmdb.mdb");
    tree->tableLinks.files[form] = formTables();
    open();

    EXPECT_EQ(tree->tableLinks.calls, relinked(form, QString(), userReport + QStringLiteral("/repdb.mdb")));
    EXPECT_EQ(readFile(form), QByteArray("repfrmdb.mdb"));
    // The folder registered is this installation's report folder.
    EXPECT_EQ(
        tree->registry.text(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"), QStringLiteral("Path")),
        tree->path(QStringLiteral("report/")));
    EXPECT_EQ(tree->waitBox.shownCount, 1);
    EXPECT_FALSE(tree->waitBox.visible);
    EXPECT_TRUE(tree->history().isEmpty()) << tree->history().join(QLatin1Char('\n')).toStdString();
}

TEST_P(LinkPerUserCopy, FailedRelinkStepsAreLoggedAndTheNextOnesRun) {
    tree->registry.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"),
                            QStringLiteral("C:\\Tools\\Office14\\"));
    tree->registry.addKey(Hive::CurrentUser, kExtensions);
    const QString form = userReport + QStringLiteral("/repfrmdb.mdb");
    tree->tableLinks.files[form] = formTables();
    tree->tableLinks.failConnect.insert(QStringLiteral("T売上帳票"));
    tree->tableLinks.failRefresh.insert(QStringLiteral("T担当者帳票"));
    open();

    EXPECT_EQ(tree->tableLinks.calls, relinked(form, QString(), userReport + QStringLiteral("/repdb.mdb")));
    const QString folders = QStringLiteral(" User ConfF=") + other->path(QStringLiteral("users/tanaka/conf")) +
                            QStringLiteral(" User Report =") + userReport;
    const QStringList h = tree->history();
    ASSERT_EQ(h.size(), 2) << h.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(h.at(0).endsWith(QStringLiteral("|エラー cannot relink T売上帳票") + folders)) << h.at(0).toStdString();
    EXPECT_TRUE(h.at(1).endsWith(QStringLiteral("|エラー cannot relink T担当者帳票") + folders))
        << h.at(1).toStdString();
}

TEST_P(LinkPerUserCopy, UnregisteredToolRelinksNothingButCopiesTheFiles) {
    const QString form = userReport + QStringLiteral("/repfrmdb.mdb");
    tree->tableLinks.files[form] = formTables();
    open();

    EXPECT_TRUE(tree->tableLinks.calls.isEmpty());
    EXPECT_TRUE(tree->registry.writes.isEmpty());
    EXPECT_EQ(readFile(form), QByteArray("repfrmdb.mdb"));
    EXPECT_EQ(readFile(userReport + QStringLiteral("/repdb.mdb")), QByteArray("repdb.mdb"));
}

INSTANTIATE_TEST_SUITE_P(Engines, LinkPerUserCopy, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
