// Several real processes of the program on one server database, saving staff
// records through the card's save button at the same moments: new records
// under one code that all of them ask for, and changes of one existing record.
//
// The save is a chain of statements without a transaction, and the numbers of
// the maintenance log are read, raised and written without a lock, so the
// clients race as the program's definition says they do. What must hold:
//  - no client crashes;
//  - each save landed with its log rows, or ended with the error the save
//    gives for its failure: "登録できませんでした。" when the INSERT lost the
//    race for the code, "登録済です。登録できませんでした。" when a log row
//    lost the race for its number;
//  - no row is written half by one save and half by another.
// The figures of the races are printed.

#include "support/installation.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

using testdb::Engine;

namespace {

constexpr int kClients = 4;
constexpr int kRounds = 12;
constexpr int kIntervalMs = 300;

struct Save {
    int client = 0;
    int round = 0;
    QString kind;
    QString asked;
    int result = -1;
    QString notice;
    QString tag;
    int lateMs = 0;
    QString messages;
};

class Concurrency : public ::testing::Test {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(Engine::Postgres);
        tree = std::make_unique<TestInstallation>(Engine::Postgres);
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(tree->mainExecute(QStringLiteral(
            "INSERT INTO M担当者 (コード,姓,名,氏名,住所A,担当者メモ,EMAIL,事業所コード,在籍区分,社員区分) "
            "VALUES ('00001','C0','R0','first','first','first','first','000','0','1')")));
        ASSERT_TRUE(work.isValid());
    }
    void TearDown() override {
        for (auto& p : clients) {
            if (p->state() != QProcess::NotRunning) {
                p->kill();
                p->waitForFinished(10000);
            }
        }
    }

    QStringList main(const QString& sql, const QStringList& columns) const { return tree->mainRows(sql, columns); }

    std::unique_ptr<TestInstallation> tree;
    QTemporaryDir work;
    std::vector<std::unique_ptr<QProcess>> clients;
};

TEST_F(Concurrency, ClientsSavingAtTheSameMomentsLandOrFailAsDefinedAndWriteNoHalfRow) {
    // The clients start and bring their cards up; then all are given one start time.
    for (int c = 1; c <= kClients; ++c) {
        auto p = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p->setProcessEnvironment(env);
        p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p->start(QStringLiteral(STAFF_SAVE_CLIENT), {tree->root(), QString::number(c), QString::number(kRounds),
                                                     QString::number(kIntervalMs), work.path()});
        ASSERT_TRUE(p->waitForStarted(10000));
        clients.push_back(std::move(p));
    }
    QDeadlineTimer deadline(60000);
    const auto allReady = [&] {
        for (int c = 1; c <= kClients; ++c)
            if (!QFile::exists(work.filePath(QStringLiteral("ready-%1").arg(c))))
                return false;
        return true;
    };
    while (!allReady() && !deadline.hasExpired())
        QThread::msleep(20);
    ASSERT_TRUE(allReady()) << "the clients did not bring their cards up within a minute";
    QFile go(work.filePath(QStringLiteral("go")));
    ASSERT_TRUE(go.open(QIODevice::WriteOnly));
    go.write(QByteArray::number(QDateTime::currentMSecsSinceEpoch() + 300));
    go.close();

    // No crash: every client ends by itself with status 0.
    for (auto& p : clients) {
        ASSERT_TRUE(p->waitForFinished(60000)) << "a client did not end within a minute";
        EXPECT_EQ(p->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(p->exitCode(), 0);
    }

    std::vector<Save> saves;
    for (int c = 1; c <= kClients; ++c) {
        QFile f(work.filePath(QStringLiteral("client-%1.txt").arg(c)));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly | QIODevice::Text)) << "client " << c << " left no outcomes";
        const QStringList lines = QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        ASSERT_EQ(lines.size(), kRounds) << "client " << c;
        for (const QString& line : lines) {
            const QStringList v = line.split(QLatin1Char('|'));
            ASSERT_EQ(v.size(), 8) << line.toStdString();
            saves.push_back(Save{c, v.at(0).toInt(), v.at(1), v.at(2), v.at(3).toInt(), v.at(4), v.at(5),
                                 v.at(6).toInt(), v.at(7)});
        }
    }

    // What the database holds, by the tag each save wrote.
    const QStringList staffColumns{QStringLiteral("コード"), QStringLiteral("姓"),    QStringLiteral("名"),
                                   QStringLiteral("氏名"),   QStringLiteral("住所A"), QStringLiteral("担当者メモ"),
                                   QStringLiteral("EMAIL")};
    const QStringList staff = main(QStringLiteral("SELECT * FROM M担当者 ORDER BY コード"), staffColumns);
    QStringList logColumns{QStringLiteral("保守履歴No"), QStringLiteral("赤黒区分")};
    logColumns += staffColumns;
    const QStringList log = main(QStringLiteral("SELECT * FROM L担当者 ORDER BY 保守履歴No"), logColumns);

    // No half rows: every written text of a row comes from one save.
    const auto whole = [](const QStringList& v, int at) {
        const QString tag = v.at(at + 5);
        if (tag == QStringLiteral("first"))
            return v.at(at + 3) == tag && v.at(at + 4) == tag;
        const QString client = tag.section(QLatin1Char(' '), 0, 0);
        const QString round = tag.section(QLatin1Char(' '), 1, 1);
        return v.at(at + 1) == client && v.at(at + 2) == round && v.at(at + 3) == tag && v.at(at + 4) == tag &&
               v.at(at + 6) == QStringLiteral("%1%2@example.jp").arg(client.toLower(), round.toLower());
    };
    for (const QString& row : staff)
        EXPECT_TRUE(whole(row.split(QLatin1Char('|')), 0)) << "half-written staff row: " << row.toStdString();
    for (const QString& row : log)
        EXPECT_TRUE(whole(row.split(QLatin1Char('|')), 2)) << "half-written log row: " << row.toStdString();

    std::map<QString, QString> codeOfTag; // M担当者 rows of new records, by tag
    for (const QString& row : staff) {
        const QStringList v = row.split(QLatin1Char('|'));
        if (v.at(0) != QStringLiteral("00001"))
            codeOfTag[v.at(5)] = v.at(0);
    }
    std::map<QString, int> blackRows;
    int redRows = 0;
    for (const QString& row : log) {
        const QStringList v = row.split(QLatin1Char('|'));
        if (v.at(1) == QStringLiteral("1"))
            ++blackRows[v.at(7)];
        else
            ++redRows;
    }

    int landed = 0, moved = 0, insertCollisions = 0, logCollisions = 0, inserts = 0, updates = 0, late = 0;
    const QString insertFailed = QStringLiteral("登録できませんでした。");
    const QString logFailed = QStringLiteral("登録済です。登録できませんでした。");
    for (const Save& s : saves) {
        SCOPED_TRACE(QStringLiteral("client %1 round %2 %3 %4: result %5 \"%6\" boxes \"%7\"")
                         .arg(s.client)
                         .arg(s.round)
                         .arg(s.kind, s.asked)
                         .arg(s.result)
                         .arg(s.notice, s.messages)
                         .toStdString());
        late += s.lateMs > kIntervalMs / 2 ? 1 : 0;
        // The one question of the save, and no other box.
        EXPECT_EQ(s.messages,
                  s.kind == QStringLiteral("insert") ? QStringLiteral("登録しますか") : QStringLiteral("修正しますか"));
        const bool rowThere = codeOfTag.count(s.tag) > 0;
        const int black = blackRows.count(s.tag) ? blackRows.at(s.tag) : 0;
        if (s.kind == QStringLiteral("insert")) {
            ++inserts;
            if (s.result == 1) {
                // Landed, under the asked code or the next free one, with its black row.
                ++landed;
                ASSERT_TRUE(rowThere);
                const QString code = codeOfTag.at(s.tag);
                EXPECT_GE(code.toInt(), s.asked.toInt());
                EXPECT_LT(code.toInt(), s.asked.toInt() + kClients);
                moved += code != s.asked ? 1 : 0;
                EXPECT_EQ(black, 1);
                EXPECT_EQ(s.notice, QString());
            } else if (s.result == 0) {
                // The INSERT lost the race for the code: nothing written.
                ++insertCollisions;
                EXPECT_EQ(s.notice, insertFailed);
                EXPECT_FALSE(rowThere);
                EXPECT_EQ(black, 0);
            } else if (s.result == 3) {
                // The row landed; its black row lost the race for its number.
                ++landed;
                ++logCollisions;
                EXPECT_EQ(s.notice, logFailed);
                EXPECT_TRUE(rowThere);
                EXPECT_EQ(black, 0);
            } else {
                ADD_FAILURE() << "an outcome the save does not give";
            }
        } else {
            ++updates;
            ++landed;
            if (s.result == 1) {
                EXPECT_EQ(s.notice, QString());
                EXPECT_EQ(black, 1);
            } else if (s.result == 3) {
                ++logCollisions;
                EXPECT_EQ(s.notice, logFailed);
                EXPECT_EQ(black, 0);
            } else {
                ADD_FAILURE() << "an outcome the change does not give";
            }
        }
    }
    EXPECT_EQ(int(saves.size()), kClients * kRounds);
    // Every round of new records landed at least once, and only the clients
    // that landed have rows: as many rows as landed inserts.
    EXPECT_EQ(int(codeOfTag.size()), inserts - insertCollisions);
    // Staff 00001 holds the last change that landed, whole (checked above).
    const QStringList first =
        main(QStringLiteral("SELECT 担当者メモ FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("担当者メモ")});
    ASSERT_EQ(first.size(), 1);
    EXPECT_TRUE(first.first().endsWith(QStringLiteral(" R%1").arg(kRounds - 1))) << first.first().toStdString();
    // A change writes one red row; those lost to a repeated number go unreported.
    const int lostRed = updates - redRows;
    EXPECT_GE(lostRed, 0);

    // The run history names each statement that failed.
    const QStringList errors = tree->configRows(
        QStringLiteral("SELECT 摘要 FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー %'"), {QStringLiteral("摘要")});
    int logErrors = 0, insertErrors = 0;
    for (const QString& e : errors) {
        logErrors += e.startsWith(QStringLiteral("エラー INSERT INTO [L担当者]")) ? 1 : 0;
        insertErrors += e.startsWith(QStringLiteral("エラー INSERT INTO M担当者")) ? 1 : 0;
    }
    EXPECT_EQ(insertErrors, insertCollisions);
    EXPECT_EQ(logErrors, logCollisions + lostRed);

    std::printf("concurrency: %d clients, %d saves (%d new, %d changes), %d landed\n", kClients, int(saves.size()),
                inserts, updates, landed);
    std::printf("concurrency: new records: %d under the asked code, %d under the next free code, "
                "%d INSERTs lost the race for the code (登録できませんでした。)\n",
                inserts - insertCollisions - moved, moved, insertCollisions);
    std::printf(
        "concurrency: log numbers repeated across clients: %d black rows lost (登録済です。登録できませんでした。), "
        "%d red rows lost without a word; %d log rows written\n",
        logCollisions, lostRed, int(log.size()));
    std::printf("concurrency: %d error rows in the run history; %d saves started more than %d ms late\n",
                int(errors.size()), late, kIntervalMs / 2);
}

} // namespace
