// The file system and the desktop as the program uses them: folder listings in
// name order, and the desktop's opener started in the working folder given.

#include "platform/os/files.h"
#include "platform/ui/desktop.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

void touch(const QString& path) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << path.toStdString();
}

TEST(FolderListing, NamesComeInTheOrderOfTheirCharacterCodesWhateverOrderTheyWereMadeIn) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QStringList names{QStringLiteral("00012.jpeg"), QStringLiteral("00012_001.gif"), QStringLiteral("00012_002.bmp")};
    for (int i = 3; i < 60; ++i)
        names.append(QStringLiteral("00012_%1.png").arg(i, 3, 10, QLatin1Char('0')));
    // Made in a shuffled order, so that no file system keeps them sorted by chance.
    QStringList shuffled = names;
    std::shuffle(shuffled.begin(), shuffled.end(), *QRandomGenerator::global());
    for (const QString& name : shuffled)
        touch(dir.filePath(name));
    touch(dir.filePath(QStringLiteral("00013.jpg")));

    const QStringList listed = os::listFolder(dir.path(), QStringLiteral("00012*"));
    EXPECT_EQ(listed, names);
    // The base file comes before its numbered followers: '.' sorts before '_'.
    EXPECT_EQ(listed.first(), QStringLiteral("00012.jpeg"));
    EXPECT_EQ(listed.last(), QStringLiteral("00012_059.png"));
}

TEST(FolderListing, AnythingThatStandsAtAPathExists) {
    QTemporaryDir dir;
    touch(dir.filePath(QStringLiteral("file")));
    EXPECT_TRUE(os::entryExists(dir.filePath(QStringLiteral("file"))));
    EXPECT_TRUE(os::entryExists(dir.path()));
    EXPECT_FALSE(os::entryExists(dir.filePath(QStringLiteral("none"))));
    EXPECT_FALSE(os::entryExists(QString()));
}

// A desktop opener that writes its working folder and its argument into a file.
class Opener : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bin.isValid());
        const QString script = bin.filePath(QStringLiteral("xdg-open"));
        QFile f(script);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("#!/bin/sh\npwd > \"$STAFF_OPENED.tmp\"\nprintf '%s\\n' \"$1\" >> \"$STAFF_OPENED.tmp\"\n"
                "mv \"$STAFF_OPENED.tmp\" \"$STAFF_OPENED\"\n");
        f.close();
        ASSERT_TRUE(QFile::setPermissions(script, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                      QFileDevice::ExeOwner));
        oldPath = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(bin.path()) + ':' + oldPath);
        report = bin.filePath(QStringLiteral("opened.txt"));
        qputenv("STAFF_OPENED", QFile::encodeName(report));
    }
    void TearDown() override {
        qputenv("PATH", oldPath);
        qunsetenv("STAFF_OPENED");
    }
    // The opener's report: its working folder and its argument, one a line.
    QStringList opened() const {
        QDeadlineTimer deadline(10000);
        while (!QFile::exists(report) && !deadline.hasExpired())
            QThread::msleep(20);
        QFile f(report);
        if (!f.open(QIODevice::ReadOnly))
            return {QStringLiteral("(nothing was opened)")};
        return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    QTemporaryDir bin;
    QByteArray oldPath;
    QString report;
};

TEST_F(Opener, ADocumentIsOpenedInTheWorkingFolderGiven) {
    QTemporaryDir docs;
    const QString document = docs.filePath(QStringLiteral("報告 書.doc"));
    touch(document);
    ASSERT_TRUE(ui::SystemDesktop::instance().open(document, docs.path()));
    EXPECT_EQ(opened(), (QStringList{QDir(docs.path()).canonicalPath(), document}));
}

TEST_F(Opener, ALinkWithoutAFolderIsOpenedAsItStands) {
    ASSERT_TRUE(ui::SystemDesktop::instance().open(QStringLiteral("mailto:taro@example.jp"), QString()));
    const QStringList seen = opened();
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen.at(1), QStringLiteral("mailto:taro@example.jp"));
}

} // namespace
