// Registration of the report folder with the desktop database tool, over a
// registry kept in memory.

#include "client/modクライアント処理.h"
#include "support/fake_system.h"
#include "support/memory_registry.h"
#include "support/recording_messages.h"

#include <gtest/gtest.h>

namespace {

using Hive = os::Registry::Hive;

const QString kAppPaths = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\MSACCESS.EXE");
const QString kExtensions = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Extensions");
const QString kLevel = QStringLiteral("Software\\Microsoft\\Office\\11.0\\Access\\Security");
const QString kTrusted14 = QStringLiteral("Software\\Microsoft\\Office\\14.0\\Access\\Security\\Trusted Locations");
const QString kReport = QStringLiteral("/srv/suite/users/tanaka/report");
const QString kCannotWrite = QStringLiteral("書き込みできません。");
const QString kCannotSet = QStringLiteral("設定できません。");
const QString kCannotOpen = QStringLiteral("オープンできません。");

QString office(const QString& folderName) { return QStringLiteral("C:\\Tools\\") + folderName + QStringLiteral("\\"); }

QString trusted(const QString& version) {
    return QStringLiteral("Software\\Microsoft\\Office\\") + version +
           QStringLiteral("\\Access\\Security\\Trusted Locations");
}

class Registration : public ::testing::Test {
protected:
    Registration() {
        ctx.registry = &registry;
        ctx.folders.reportフォルダ = kReport;
    }
    // Every key the routine opened is closed again.
    void TearDown() override { EXPECT_EQ(registry.openKeys(), 0); }

    void tool(const QString& folder) {
        registry.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"), folder);
    }
    void extensions() { registry.addKey(Hive::CurrentUser, kExtensions); }
    void location(const QString& key, const QString& name, const QString& path) {
        registry.seedText(Hive::CurrentUser, key + QStringLiteral("\\") + name, QStringLiteral("Path"), path);
    }
    std::optional<QString> pathOf(const QString& key, const QString& name) const {
        return registry.text(Hive::CurrentUser, key + QStringLiteral("\\") + name, QStringLiteral("Path"));
    }
    // The values written below a key, as "name=value".
    QStringList writesBelow(const QString& key) const {
        QStringList out;
        const QString head = QStringLiteral("HKCU\\") + key + QStringLiteral("|");
        for (const QString& w : registry.writes)
            if (w.startsWith(head))
                out.append(w.mid(head.size()));
        return out;
    }
    bool wrote(const QString& key) const { return !writesBelow(key).isEmpty(); }

    FakeSystem sys;
    RecordingMessages messages;
    CountingWaitBox wait;
    MemoryRegistry registry;
    Context ctx{sys, messages, wait};
};

// --- The cases worth testing, one by one ---

TEST_F(Registration, FirstRunWithOffice14MakesTheTrustedLocationsKeyAndLocation0) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    ASSERT_FALSE(registry.hasKey(Hive::CurrentUser, kTrusted14));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_TRUE(registry.hasKey(Hive::CurrentUser, kTrusted14));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14), QStringList{QStringLiteral("Location0")});
    EXPECT_EQ(
        writesBelow(kTrusted14 + QStringLiteral("\\Location0")),
        (QStringList{QStringLiteral("Path=") + kReport + QStringLiteral("/"), QStringLiteral("AllowSubfolder=1")}));
    EXPECT_EQ(registry.number(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"),
                              QStringLiteral("AllowSubfolder")),
              1u);
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, SecondRunFindsItsLocationAndWritesItAgain) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    ASSERT_TRUE(DBツール登録(ctx));
    registry.writes.clear();
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14), QStringList{QStringLiteral("Location0")});
    EXPECT_EQ(
        writesBelow(kTrusted14 + QStringLiteral("\\Location0")),
        (QStringList{QStringLiteral("Path=") + kReport + QStringLiteral("/"), QStringLiteral("AllowSubfolder=1")}));
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, SubkeysNumbered3And7GiveTheNewKeyNumber2) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location3"), QStringLiteral("C:\\Data\\"));
    location(kTrusted14, QStringLiteral("Location7"), QStringLiteral("D:\\Other\\"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location3"), QStringLiteral("Location7"), QStringLiteral("Location2")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location2")), kReport + QStringLiteral("/"));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location3")), QStringLiteral("C:\\Data\\"));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location7")), QStringLiteral("D:\\Other\\"));
}

TEST_F(Registration, SubkeysNumbered0And1GiveTheNewKeyNumber2) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location0"), QStringLiteral("C:\\Data\\"));
    location(kTrusted14, QStringLiteral("Location1"), QStringLiteral("D:\\Other\\"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location0"), QStringLiteral("Location1"), QStringLiteral("Location2")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location2")), kReport + QStringLiteral("/"));
}

TEST_F(Registration, ReportFolderOnANetworkPathAllowsNetworkLocations) {
    ctx.folders.reportフォルダ = QStringLiteral("//fileserver/suite/users/tanaka/report");
    tool(office(QStringLiteral("Office14")));
    extensions();
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.number(Hive::CurrentUser, kTrusted14, QStringLiteral("AllowNetworkLocations")), 1u);
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location0")),
              QStringLiteral("//fileserver/suite/users/tanaka/report/"));
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, NamesCompareAsTextSoNumber10IsTheLowest) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location5"), QStringLiteral("C:\\Data\\"));
    location(kTrusted14, QStringLiteral("Location10"), QStringLiteral("D:\\Other\\"));
    EXPECT_TRUE(DBツール登録(ctx));
    // "Location10" sorts before "Location5": the new key is one below 10, not below 5.
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location5"), QStringLiteral("Location10"), QStringLiteral("Location9")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location9")), kReport + QStringLiteral("/"));
}

// --- Finding the tool ---

TEST_F(Registration, NoApplicationPathKeyAnswersFalseAndWritesNothing) {
    extensions();
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_TRUE(registry.writes.isEmpty());
    EXPECT_EQ(ctx.folders.Access実行パス, QString());
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, UnreadableToolPathAnswersFalseAndWritesNothing) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    registry.failQuery(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"));
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_TRUE(registry.writes.isEmpty());
    EXPECT_FALSE(registry.hasKey(Hive::CurrentUser, kTrusted14));
    EXPECT_EQ(ctx.folders.Access実行パス, QString());
}

TEST_F(Registration, ToolPathLongerThanTheBufferCannotBeRead) {
    const QString path = QStringLiteral("C:\\") + QString(250, QLatin1Char('x')) + QStringLiteral("\\Office14\\");
    ASSERT_GE(path.size(), 256);
    tool(path);
    extensions();
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_TRUE(registry.writes.isEmpty());
}

TEST_F(Registration, ToolPathIsKept) {
    tool(office(QStringLiteral("Office15")));
    extensions();
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(ctx.folders.Access実行パス, office(QStringLiteral("Office15")));
}

TEST_F(Registration, FolderWithNoKnownVersionAnswersFalseAndWritesNothing) {
    tool(QStringLiteral("C:\\Tools\\Database\\"));
    extensions();
    const QStringList before = registry.keys();
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_TRUE(registry.writes.isEmpty());
    EXPECT_EQ(registry.keys(), before);
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, VersionNamesAreCaseSensitive) {
    for (const QString& name : {QStringLiteral("office14"), QStringLiteral("Office 14"), QStringLiteral("oFFICE14")}) {
        tool(office(name));
        extensions();
        EXPECT_FALSE(DBツール登録(ctx)) << name.toStdString();
        EXPECT_TRUE(registry.writes.isEmpty()) << name.toStdString();
        EXPECT_FALSE(registry.hasKey(Hive::CurrentUser, kTrusted14));
    }
}

TEST_F(Registration, FirstNameOfTheTableDecidesWhenTheFolderHoldsTwo) {
    tool(QStringLiteral("C:\\Office14\\Office9\\"));
    extensions();
    EXPECT_TRUE(DBツール登録(ctx));
    // Office9 comes first in the table: association only, no trusted location.
    EXPECT_EQ(registry.writes, QStringList{QStringLiteral("HKCU\\") + kExtensions +
                                           QStringLiteral("|mdb=C:\\Office14\\Office9\\MSACCESS.EXE")});
    EXPECT_FALSE(registry.hasKey(Hive::CurrentUser, kTrusted14));
}

// --- Every row of the version table, in both spellings ---

struct VersionRow {
    const char* name;
    const char* capital;
    const char* trustedVersion; // "" for none
    bool level;
};

class Versions : public Registration, public ::testing::WithParamInterface<VersionRow> {};

TEST_P(Versions, EachSpellingRunsTheRowsSteps) {
    const VersionRow row = GetParam();
    for (const char* spelling : {row.name, row.capital}) {
        SCOPED_TRACE(spelling);
        MemoryRegistry fresh;
        ctx.registry = &fresh;
        fresh.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"), office(QString::fromUtf8(spelling)));
        fresh.addKey(Hive::CurrentUser, kExtensions);

        EXPECT_TRUE(DBツール登録(ctx));
        EXPECT_EQ(fresh.text(Hive::CurrentUser, kExtensions, QStringLiteral("mdb")),
                  office(QString::fromUtf8(spelling)) + QStringLiteral("MSACCESS.EXE"));
        EXPECT_EQ(fresh.number(Hive::CurrentUser, kLevel, QStringLiteral("Level")),
                  row.level ? std::optional<quint32>(1) : std::nullopt);

        // Only the row's own trusted locations key is made.
        for (const char* version : {"11.0", "12.0", "14.0", "15.0", "16.0", "17.0", "18.0"}) {
            const QString key = trusted(QString::fromUtf8(version));
            const bool expected = qstrcmp(version, row.trustedVersion) == 0;
            EXPECT_EQ(fresh.hasKey(Hive::CurrentUser, key), expected) << version;
            if (expected) {
                EXPECT_EQ(fresh.text(Hive::CurrentUser, key + QStringLiteral("\\Location0"), QStringLiteral("Path")),
                          kReport + QStringLiteral("/"));
            }
        }
        EXPECT_EQ(fresh.openKeys(), 0);
        ctx.registry = &registry;
    }
    EXPECT_TRUE(messages.shown.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, Versions,
                         ::testing::Values(VersionRow{"Office9", "OFFICE9", "", false},
                                           VersionRow{"Office10", "OFFICE10", "", false},
                                           VersionRow{"Office11", "OFFICE11", "", true},
                                           VersionRow{"Office12", "OFFICE12", "12.0", false},
                                           VersionRow{"Office14", "OFFICE14", "14.0", false},
                                           VersionRow{"Office15", "OFFICE15", "15.0", false},
                                           VersionRow{"Office16", "OFFICE16", "16.0", false},
                                           VersionRow{"Office17", "OFFICE17", "16.0", false},
                                           VersionRow{"Office18", "OFFICE18", "17.0", false}),
                         [](const ::testing::TestParamInfo<VersionRow>& info) { return std::string(info.param.name); });

// --- The file association ---

TEST_F(Registration, AssociationAlreadyRightIsNotWritten) {
    tool(office(QStringLiteral("Office10")));
    registry.seedText(Hive::CurrentUser, kExtensions, QStringLiteral("mdb"),
                      office(QStringLiteral("Office10")) + QStringLiteral("MSACCESS.EXE"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_TRUE(registry.writes.isEmpty());
}

TEST_F(Registration, DifferentAssociationIsWritten) {
    tool(office(QStringLiteral("Office10")));
    registry.seedText(Hive::CurrentUser, kExtensions, QStringLiteral("mdb"),
                      QStringLiteral("C:\\Old\\Office9\\MSACCESS.EXE"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.writes, QStringList{QStringLiteral("HKCU\\") + kExtensions + QStringLiteral("|mdb=") +
                                           office(QStringLiteral("Office10")) + QStringLiteral("MSACCESS.EXE")});
}

TEST_F(Registration, UnreadableAssociationCountsAsEmptyAndIsWritten) {
    tool(office(QStringLiteral("Office10")));
    registry.seedText(Hive::CurrentUser, kExtensions, QStringLiteral("mdb"),
                      office(QStringLiteral("Office10")) + QStringLiteral("MSACCESS.EXE"));
    registry.failQuery(Hive::CurrentUser, kExtensions, QStringLiteral("mdb"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(writesBelow(kExtensions), QStringList{QStringLiteral("mdb=") + office(QStringLiteral("Office10")) +
                                                    QStringLiteral("MSACCESS.EXE")});
}

TEST_F(Registration, AssociationThatCannotBeWrittenShowsItsMessageAndStillAnswersTrue) {
    tool(office(QStringLiteral("Office9")));
    extensions();
    registry.failSet(Hive::CurrentUser, kExtensions, QStringLiteral("mdb"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), QStringList{kCannotWrite});
    EXPECT_EQ(messages.shown.first().buttons, ui::Buttons::Ok);
    EXPECT_TRUE(registry.writes.isEmpty());
}

TEST_F(Registration, AssociationKeyThatCannotBeOpenedAnswersFalse) {
    tool(office(QStringLiteral("Office10")));
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_TRUE(registry.writes.isEmpty());
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, AssociationKeyThatCannotBeOpenedStillLetsTheLocationRun) {
    tool(office(QStringLiteral("Office16")));
    registry.addKey(Hive::CurrentUser, kExtensions);
    registry.failOpen(Hive::CurrentUser, kExtensions);
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_FALSE(wrote(kExtensions));
    EXPECT_EQ(pathOf(trusted(QStringLiteral("16.0")), QStringLiteral("Location0")), kReport + QStringLiteral("/"));
}

// --- The security level ---

TEST_F(Registration, Office11SetsTheLevel) {
    tool(office(QStringLiteral("Office11")));
    extensions();
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_TRUE(registry.hasKey(Hive::CurrentUser, kLevel));
    EXPECT_EQ(writesBelow(kLevel), QStringList{QStringLiteral("Level=1")});
    EXPECT_EQ(registry.number(Hive::CurrentUser, kLevel, QStringLiteral("Level")), 1u);
}

TEST_F(Registration, Office11LevelThatCannotBeWrittenShowsItsMessage) {
    tool(office(QStringLiteral("Office11")));
    extensions();
    registry.failSet(Hive::CurrentUser, kLevel, QStringLiteral("Level"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), QStringList{kCannotWrite});
}

TEST_F(Registration, Office11LevelKeyAloneMakesTheAnswerTrue) {
    tool(office(QStringLiteral("Office11")));
    EXPECT_TRUE(DBツール登録(ctx)); // no association key, but the level is set
    EXPECT_EQ(registry.number(Hive::CurrentUser, kLevel, QStringLiteral("Level")), 1u);
}

TEST_F(Registration, Office11LevelKeyThatCannotBeMadeKeepsTheAssociationsAnswer) {
    tool(office(QStringLiteral("Office11")));
    registry.failCreate(Hive::CurrentUser, kLevel);
    EXPECT_FALSE(DBツール登録(ctx)); // no association key either
    extensions();
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_FALSE(registry.hasKey(Hive::CurrentUser, kLevel));
    EXPECT_TRUE(messages.shown.isEmpty());
}

// --- The trusted location ---

TEST_F(Registration, LocationsKeyThatCannotBeOpenedIsMade) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location4"), kReport + QStringLiteral("/"));
    registry.failOpen(Hive::CurrentUser, kTrusted14);
    EXPECT_TRUE(DBツール登録(ctx));
    // Made over the existing key, which is then read as usual: its location is found.
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14), QStringList{QStringLiteral("Location4")});
    EXPECT_EQ(
        writesBelow(kTrusted14 + QStringLiteral("\\Location4")),
        (QStringList{QStringLiteral("Path=") + kReport + QStringLiteral("/"), QStringLiteral("AllowSubfolder=1")}));
}

TEST_F(Registration, LocationsKeyThatCannotBeMadeEndsWithTheAssociationsAnswer) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    registry.failCreate(Hive::CurrentUser, kTrusted14);
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_FALSE(registry.hasKey(Hive::CurrentUser, kTrusted14));
    EXPECT_TRUE(messages.shown.isEmpty());

    MemoryRegistry bare; // no association key
    ctx.registry = &bare;
    bare.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"), office(QStringLiteral("Office14")));
    bare.failCreate(Hive::CurrentUser, kTrusted14);
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_TRUE(bare.writes.isEmpty());
    EXPECT_EQ(bare.openKeys(), 0);
}

TEST_F(Registration, LocalFolderDoesNotAllowNetworkLocations) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.number(Hive::CurrentUser, kTrusted14, QStringLiteral("AllowNetworkLocations")), std::nullopt);
}

TEST_F(Registration, NetworkSettingThatCannotBeWrittenSkipsTheSearchOfLocations) {
    ctx.folders.reportフォルダ = QStringLiteral("//fileserver/suite/report");
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location0"), QStringLiteral("C:\\Data\\"));
    location(kTrusted14, QStringLiteral("Location1"), QStringLiteral("//fileserver/suite/report/"));
    registry.failSet(Hive::CurrentUser, kTrusted14, QStringLiteral("AllowNetworkLocations"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), QStringList{kCannotWrite});
    // With no location seen, Location0 is taken as new, over the one that is there.
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location0")), QStringLiteral("//fileserver/suite/report/"));
    EXPECT_FALSE(wrote(kTrusted14 + QStringLiteral("\\Location1")));
}

TEST_F(Registration, HighestNameComparesAsTextToo) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location0"), QStringLiteral("C:\\A\\"));
    location(kTrusted14, QStringLiteral("Location10"), QStringLiteral("C:\\B\\"));
    location(kTrusted14, QStringLiteral("Location9"), QStringLiteral("C:\\C\\"));
    EXPECT_TRUE(DBツール登録(ctx));
    // Lowest "Location0" leaves no room below; the highest as text is "Location9",
    // so "Location10" is taken again and rewritten.
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location0"), QStringLiteral("Location10"), QStringLiteral("Location9")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location10")), kReport + QStringLiteral("/"));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location9")), QStringLiteral("C:\\C\\"));
}

TEST_F(Registration, LowestNumber1GivesALocationWithoutANumber) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location1"), QStringLiteral("C:\\A\\"));
    location(kTrusted14, QStringLiteral("Location4"), QStringLiteral("C:\\B\\"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location1"), QStringLiteral("Location4"), QStringLiteral("Location")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location")), kReport + QStringLiteral("/"));
}

TEST_F(Registration, MatchIgnoresCase) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location0"), QStringLiteral("C:\\A\\"));
    location(kTrusted14, QStringLiteral("Location3"), kReport.toUpper() + QStringLiteral("/"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location0"), QStringLiteral("Location3")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location3")), kReport + QStringLiteral("/"));
    EXPECT_FALSE(wrote(kTrusted14 + QStringLiteral("\\Location0")));
}

TEST_F(Registration, PathThatOnlyBeginsLikeTheReportFolderIsNoMatch) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location2"), kReport + QStringLiteral("s/"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14),
              (QStringList{QStringLiteral("Location2"), QStringLiteral("Location1")}));
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location2")), kReport + QStringLiteral("s/"));
}

TEST_F(Registration, LaterMatchReplacesAnEarlierOne) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location1"), kReport + QStringLiteral("/"));
    location(kTrusted14, QStringLiteral("Location0"), kReport + QStringLiteral("/"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_FALSE(wrote(kTrusted14 + QStringLiteral("\\Location1")));
    EXPECT_EQ(
        writesBelow(kTrusted14 + QStringLiteral("\\Location0")),
        (QStringList{QStringLiteral("Path=") + kReport + QStringLiteral("/"), QStringLiteral("AllowSubfolder=1")}));
    EXPECT_EQ(registry.subkeys(Hive::CurrentUser, kTrusted14).size(), 2);
}

TEST_F(Registration, SubkeyNamesAreTrimmed) {
    const QString key = trusted(QStringLiteral("15.0"));
    tool(office(QStringLiteral("Office15")));
    extensions();
    location(key, QStringLiteral(" Location3 "), QStringLiteral("C:\\A\\"));
    EXPECT_TRUE(DBツール登録(ctx));
    // The trimmed name is the lowest; its number 3 gives Location2.
    EXPECT_EQ(pathOf(key, QStringLiteral("Location2")), kReport + QStringLiteral("/"));
}

TEST_F(Registration, Office14ReportsLocationsItCannotRead) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    location(kTrusted14, QStringLiteral("Location3"), QStringLiteral("C:\\A\\"));
    location(kTrusted14, QStringLiteral("Location5"), QStringLiteral("C:\\B\\"));
    registry.failOpen(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location3"));
    registry.failQuery(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location5"), QStringLiteral("Path"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), (QStringList{kCannotOpen, kCannotOpen}));
    // The names still count: the new key is one below the lowest.
    EXPECT_EQ(pathOf(kTrusted14, QStringLiteral("Location2")), kReport + QStringLiteral("/"));
}

TEST_F(Registration, OtherVersionsPassOverLocationsTheyCannotRead) {
    for (const char* version : {"Office12", "Office15", "Office16", "Office17", "Office18"}) {
        SCOPED_TRACE(version);
        MemoryRegistry fresh;
        ctx.registry = &fresh;
        fresh.seedText(Hive::LocalMachine, kAppPaths, QStringLiteral("Path"), office(QString::fromUtf8(version)));
        fresh.addKey(Hive::CurrentUser, kExtensions);
        for (const char* v : {"12.0", "15.0", "16.0", "17.0"}) {
            const QString key = trusted(QString::fromUtf8(v));
            fresh.seedText(Hive::CurrentUser, key + QStringLiteral("\\Location3"), QStringLiteral("Path"),
                           QStringLiteral("C:\\A\\"));
            fresh.seedText(Hive::CurrentUser, key + QStringLiteral("\\Location5"), QStringLiteral("Path"),
                           QStringLiteral("C:\\B\\"));
            fresh.failOpen(Hive::CurrentUser, key + QStringLiteral("\\Location3"));
            fresh.failQuery(Hive::CurrentUser, key + QStringLiteral("\\Location5"), QStringLiteral("Path"));
        }
        EXPECT_TRUE(DBツール登録(ctx));
        EXPECT_EQ(fresh.openKeys(), 0);
        ctx.registry = &registry;
    }
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(Registration, NewLocationThatCannotBeMadeShowsItsMessage) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    registry.failCreate(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), QStringList{kCannotSet});
    EXPECT_TRUE(registry.subkeys(Hive::CurrentUser, kTrusted14).isEmpty());
    EXPECT_FALSE(wrote(kTrusted14 + QStringLiteral("\\Location0")));
}

TEST_F(Registration, LocationPathThatCannotBeWrittenShowsItsMessage) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    registry.failSet(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"), QStringLiteral("Path"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), QStringList{kCannotWrite});
    EXPECT_EQ(writesBelow(kTrusted14 + QStringLiteral("\\Location0")), QStringList{QStringLiteral("AllowSubfolder=1")});
}

TEST_F(Registration, BothLocationValuesThatCannotBeWrittenShowAMessageEach) {
    tool(office(QStringLiteral("Office14")));
    extensions();
    registry.failSet(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"), QStringLiteral("Path"));
    registry.failSet(Hive::CurrentUser, kTrusted14 + QStringLiteral("\\Location0"), QStringLiteral("AllowSubfolder"));
    EXPECT_TRUE(DBツール登録(ctx));
    EXPECT_EQ(messages.texts(), (QStringList{kCannotWrite, kCannotWrite}));
    EXPECT_FALSE(wrote(kTrusted14 + QStringLiteral("\\Location0")));
}

// --- This platform ---

TEST(SystemRegistration, ThisPlatformHasNoToolAndAnswersFalse) {
    FakeSystem sys;
    RecordingMessages messages;
    CountingWaitBox wait;
    Context ctx(sys, messages, wait);
    ctx.folders.reportフォルダ = kReport;
    ASSERT_EQ(ctx.registry, &os::SystemRegistry::instance());
    EXPECT_FALSE(DBツール登録(ctx));
    EXPECT_EQ(ctx.folders.Access実行パス, QString());
    EXPECT_TRUE(messages.shown.isEmpty());
}

} // namespace
