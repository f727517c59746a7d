// Paths handed to the desktop: documents, links and the manual; the file and
// folder routines and the folder maker.

#include "shell/modデータ処理.h"
#include "support/installation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <gtest/gtest.h>

namespace {

class DesktopFiles : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
        ASSERT_TRUE(環境DBopen(tree.ctx()));
    }
    TestInstallation tree{testdb::Engine::Sqlite};
};

TEST_F(DesktopFiles, PathGoesWithItsFolderAsTheWorkingFolder) {
    ファイル実行open(tree.ctx(), QStringLiteral("/srv/docs/報告.doc"));
    EXPECT_EQ(tree.desktop.opened, QStringList{QStringLiteral("/srv/docs/報告.doc|/srv/docs")});
}

TEST_F(DesktopFiles, LinkWithoutAFolderHasNoWorkingFolder) {
    ファイル実行open(tree.ctx(), QStringLiteral("mailto:taro@example.jp"));
    EXPECT_EQ(tree.desktop.opened, QStringList{QStringLiteral("mailto:taro@example.jp|")});
}

TEST_F(DesktopFiles, ManualIsTheProgramTitleInTheManualFolder) {
    マニュアルopen(tree.ctx());
    EXPECT_EQ(tree.desktop.opened, QStringList{tree.path(QStringLiteral("manual/担当者登録.doc")) + QLatin1Char('|') +
                                               tree.path(QStringLiteral("manual"))});
}

class FileRoutines : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(tree.ok()) << tree.error().toStdString();
        ASSERT_TRUE(環境DBopen(tree.ctx()));
        tree.sys.madeFolders.clear();
        tree.messages.shown.clear();
    }
    QString path(const QString& relative) const { return tree.path(relative); }
    static void write(const QString& file, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(file).absolutePath());
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
    static QByteArray read(const QString& file) {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(missing)");
    }
    TestInstallation tree{testdb::Engine::Sqlite};
};

TEST_F(FileRoutines, ExistenceOfFilesAndFolders) {
    write(path(QStringLiteral("x/a.txt")), "a");
    EXPECT_TRUE(ファイル存在chk(path(QStringLiteral("x/a.txt"))));
    EXPECT_FALSE(ファイル存在chk(path(QStringLiteral("x"))));
    EXPECT_FALSE(ファイル存在chk(path(QStringLiteral("x/b.txt"))));
    EXPECT_TRUE(フォルダ存在chk(path(QStringLiteral("x"))));
    EXPECT_FALSE(フォルダ存在chk(path(QStringLiteral("x/a.txt"))));
    EXPECT_FALSE(フォルダ存在chk(path(QStringLiteral("y"))));
}

TEST_F(FileRoutines, ACopyOntoAnExistingFileOverwritesIt) {
    write(path(QStringLiteral("x/new.txt")), "new contents");
    write(path(QStringLiteral("x/old.txt")), "old");
    ASSERT_TRUE(QFile::setPermissions(path(QStringLiteral("x/old.txt")), QFileDevice::ReadOwner));
    EXPECT_TRUE(ファイル複写copy(path(QStringLiteral("x/new.txt")), path(QStringLiteral("x/old.txt"))));
    EXPECT_EQ(read(path(QStringLiteral("x/old.txt"))), QByteArray("new contents"));
    EXPECT_FALSE(ファイル複写copy(path(QStringLiteral("x/none.txt")), path(QStringLiteral("x/old.txt"))));
    EXPECT_EQ(read(path(QStringLiteral("x/old.txt"))), QByteArray("new contents"));
}

TEST_F(FileRoutines, AFolderCopyOverwritesWhatIsThereAndKeepsTheRest) {
    write(path(QStringLiteral("from/a.txt")), "a new");
    write(path(QStringLiteral("from/sub/b.txt")), "b new");
    write(path(QStringLiteral("to/a.txt")), "a old");
    write(path(QStringLiteral("to/sub/b.txt")), "b old");
    write(path(QStringLiteral("to/c.txt")), "c stays");
    EXPECT_TRUE(フォルダ複写copy(path(QStringLiteral("from")), path(QStringLiteral("to"))));
    EXPECT_EQ(read(path(QStringLiteral("to/a.txt"))), QByteArray("a new"));
    EXPECT_EQ(read(path(QStringLiteral("to/sub/b.txt"))), QByteArray("b new"));
    EXPECT_EQ(read(path(QStringLiteral("to/c.txt"))), QByteArray("c stays"));
}

TEST_F(FileRoutines, AFolderIsDeletedWithReadOnlyContents) {
    write(path(QStringLiteral("gone/sub/locked.txt")), "x");
    ASSERT_TRUE(QFile::setPermissions(path(QStringLiteral("gone/sub/locked.txt")), QFileDevice::ReadOwner));
    EXPECT_TRUE(フォルダ削除del(path(QStringLiteral("gone"))));
    EXPECT_FALSE(フォルダ存在chk(path(QStringLiteral("gone"))));
    EXPECT_FALSE(フォルダ削除del(path(QStringLiteral("gone"))));
}

TEST_F(FileRoutines, TheFolderMakerMakesNothingWhereEveryLevelExists) {
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("a/b/c"))));
    フォルダ作成make(tree.ctx(), path(QStringLiteral("a/b/c/file.txt")));
    フォルダ作成make(tree.ctx(), path(QStringLiteral("a/b/c/")));
    EXPECT_EQ(tree.sys.madeFolders, QStringList());
    EXPECT_TRUE(tree.messages.shown.isEmpty());
}

TEST_F(FileRoutines, TheFolderMakerMakesTheMissingLevelsInOrderAndNotTheFileName) {
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("a"))));
    フォルダ作成make(tree.ctx(), path(QStringLiteral("a/b/c/file.txt")));
    EXPECT_EQ(tree.sys.madeFolders, (QStringList{path(QStringLiteral("a/b")), path(QStringLiteral("a/b/c"))}));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("a/b/c/file.txt"))));
    // A folder's own last level is made only behind a separator.
    tree.sys.madeFolders.clear();
    フォルダ作成make(tree.ctx(), path(QStringLiteral("a/d")));
    EXPECT_EQ(tree.sys.madeFolders, QStringList());
}

TEST_F(FileRoutines, AFileWhereAFolderLevelShouldBeIsFoundAndNothingIsMadeOrSaid) {
    write(path(QStringLiteral("pictures/担当者")), "a file, not a folder");
    フォルダ作成make(tree.ctx(), path(QStringLiteral("pictures/担当者/00001.jpg")));
    EXPECT_EQ(tree.sys.madeFolders, QStringList());
    EXPECT_TRUE(tree.messages.shown.isEmpty());
    EXPECT_TRUE(ファイル存在chk(path(QStringLiteral("pictures/担当者"))));
}

TEST_F(FileRoutines, ALevelThatCannotBeMadeIsReportedAndTheNextLevelIsTried) {
    write(path(QStringLiteral("blocked")), "a file");
    フォルダ作成make(tree.ctx(), path(QStringLiteral("blocked/x/y/file.txt")));
    EXPECT_EQ(tree.sys.madeFolders, (QStringList{path(QStringLiteral("blocked/x")), path(QStringLiteral("blocked/x/y"))}));
    ASSERT_EQ(tree.messages.shown.size(), 2);
    const QString first = tree.messages.texts().first();
    EXPECT_TRUE(first.startsWith(QStringLiteral("DIREXISTCHK ERROR") + QString::number(ENOTDIR) + QLatin1Char(' ')))
        << first.toStdString();
    EXPECT_TRUE(first.contains(QChar(13) + QStringLiteral("direxeistchk") + QChar(13) +
                               path(QStringLiteral("blocked/x/y/file.txt")) + QChar(13) +
                               path(QStringLiteral("blocked/x")) + QChar(13)));
    EXPECT_EQ(tree.messages.shown.first().buttons, ui::Buttons::Ok);
}

} // namespace
