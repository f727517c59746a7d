// The start of the program in its fixed order: each gate with its message and
// the run history it leaves, the command line, the previous-instance rule and
// the menu row of this program.

#include "startup/mod担当者登録起動.h"

#include "shell/modデータ処理.h"
#include "shell/mod起動.h"
#include "support/installation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using testdb::Engine;

namespace {

// The main form as the start sees it: it only records what it was asked.
class RecordingForm : public 主画面 {
public:
    QStringList calls;
    void 表示() override { calls.append(QStringLiteral("表示")); }
    void 先頭項目focus() override { calls.append(QStringLiteral("先頭項目focus")); }
};

class Startup : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
    }
    // One start with the given command line; true when it ended the process,
    // with its exit code in exitCode.
    bool run(const QString& line, os::SingleInstance& instance, bool allowed = true) {
        tree->newContext();
        tree->sys.line = line;
        exitCode = -1;
        try {
            担当者登録main(
                ctx(), form, [allowed](Context&) { return allowed; }, instance);
        } catch (const ProcessEnded& e) {
            exitCode = e.code;
            return true;
        }
        return false;
    }
    bool run(const QString& line, bool allowed = true) { return run(line, first, allowed); }
    void main(const QString& sql) { ASSERT_TRUE(tree->mainExecute(sql)) << sql.toStdString(); }
    void config(const QString& sql) { ASSERT_TRUE(tree->configExecute(sql)) << sql.toStdString(); }
    // The run history without its counters.
    QStringList history() {
        QStringList out;
        for (const QString& row : tree->history())
            out.append(row.section(QLatin1Char('|'), 1));
        return out;
    }
    QStringList menuRow() {
        QStringList columns;
        for (char16_t letter = u'A'; letter <= u'Z'; ++letter)
            columns.append(QStringLiteral("条件項目名") + QChar(letter));
        return tree->configRows(QStringLiteral("SELECT * FROM 営業支援データ管理 WHERE プログラムID = '担当者登録'"),
                                columns);
    }
    // The personnel link pointing at the tree's own main database.
    void personnelOnOwnDatabase() {
        Context& probe = tree->newContext();
        ASSERT_TRUE(環境DBopen(probe));
        const auto& c = probe.conn;
        main(QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = '%1', 連携データソース名 = '%2', "
                            "連携サーバー名 = '%3', 連携データベース名 = '%4', 連携ユーザーID = '%5', "
                            "連携パスワード = '%6' WHERE コード = '002'")
                 .arg(c.db, c.データソース名, c.サーバー名, c.データベース名, c.ユーザーID, c.パスワード));
        データ処理term(probe);
        ASSERT_TRUE(tree->configExecute(QStringLiteral("DELETE FROM プログラム稼動履歴")));
    }
    Context& ctx() { return tree->ctx(); }
    std::unique_ptr<TestInstallation> tree;
    RecordingForm form;
    os::SingleInstance first;
    int exitCode = -1;
};

const QStringList kShown{QStringLiteral("表示"), QStringLiteral("先頭項目focus")};

TEST_P(Startup, PlainStartShowsAnEmptyScreen) {
    EXPECT_FALSE(run(QStringLiteral("   ")));
    EXPECT_EQ(form.calls, kShown);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(history(), QStringList{QStringLiteral("開始 ")});
    EXPECT_FALSE(ctx().screen.単独起動フラグ);
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_FALSE(ctx().人事連携フラグ);
    EXPECT_EQ(ctx().担当者情報.コード, QString());
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("000"));
    EXPECT_EQ(ctx().company.名称, QStringLiteral("株式会社さくら商事"));
    EXPECT_TRUE(ctx().conn.環境DB接続中);
    EXPECT_TRUE(ctx().conn.業務DB接続中);
    EXPECT_GE(ctx().screen.画面幅, 0);
}

TEST_P(Startup, MenuRowNamesTheTwoConditions) {
    config(QStringLiteral("UPDATE 営業支援データ管理 SET 条件項目名C = 'x', 条件項目名Z = 'y'"));
    EXPECT_FALSE(run(QString()));
    QStringList expected{QStringLiteral("事業所コード"), QStringLiteral("担当者コード")};
    for (int i = 2; i < 26; ++i)
        expected.append(QString());
    EXPECT_EQ(menuRow(), QStringList{expected.join(QLatin1Char('|'))});
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Startup, MenuTableThatCannotBeWrittenShowsItsMessageAndTheStartGoesOn) {
    config(QStringLiteral("DROP TABLE 営業支援データ管理"));
    EXPECT_FALSE(run(QString()));
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("システムデータベースに問題があり登録できません")});
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::Ok);
    EXPECT_EQ(form.calls, kShown);
    // The statement as it was built stands in the error row.
    const QStringList h = history();
    ASSERT_EQ(h.size(), 2);
    QString statement = QStringLiteral("UPDATE 営業支援データ管理 SET  条件項目名A = '事業所コード', 条件項目名B = "
                                       "'担当者コード',");
    for (char16_t letter = u'C'; letter <= u'Y'; ++letter)
        statement += QStringLiteral(" 条件項目名") + QChar(letter) + QStringLiteral(" = '',");
    statement += QStringLiteral(" 条件項目名Z = '' WHERE プログラムID = '担当者登録'");
    statement.replace(QStringLiteral("'"), QStringLiteral("''"));
    EXPECT_TRUE(h.at(1).startsWith(QStringLiteral("エラー ") + statement)) << h.at(1).toStdString();
}

TEST_P(Startup, DatabaseGateShowsItsMessageAndEndsWithTheEndRow) {
    config(QStringLiteral("UPDATE データベース定義 SET db = 'A', プロバイダ名 = 'Microsoft.ACE.OLEDB.12.0', "
                          "データソース名 = '/nowhere/main.accdb'"));
    EXPECT_TRUE(run(QString()));
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("データベースが使用できません。")});
    EXPECT_EQ(exitCode, 1);
    EXPECT_TRUE(form.calls.isEmpty());
    const QStringList h = history();
    ASSERT_EQ(h.size(), 5) << h.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(h.at(0), QStringLiteral("開始 "));
    EXPECT_TRUE(h.at(1).startsWith(QStringLiteral("エラー DB_OPEN ERROR")));
    EXPECT_EQ(h.at(2), QStringLiteral("終了"));
    // The usage row cannot be closed on a main database that never opened.
    EXPECT_TRUE(h.at(3).startsWith(QStringLiteral("エラー SELECT * FROM 使用状況")));
    EXPECT_TRUE(h.at(4).startsWith(QStringLiteral("エラー INSERT INTO 使用状況")));
    EXPECT_FALSE(ctx().conn.環境DB接続中);
}

TEST_P(Startup, MissingConfigurationShowsTheDatabaseMessage) {
    ASSERT_TRUE(QFile::remove(tree->configFile()));
    EXPECT_TRUE(run(QString()));
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("データベースが使用できません。")});
    EXPECT_EQ(exitCode, 1);
    EXPECT_TRUE(form.calls.isEmpty());
}

TEST_P(Startup, CompanyGateShowsItsMessageAndEndsWithTheEndRow) {
    main(QStringLiteral("DELETE FROM Mユーザ"));
    EXPECT_TRUE(run(QStringLiteral("00100012")));
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("ユーザ情報が使用できません。")});
    EXPECT_EQ(exitCode, 3);
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_TRUE(form.calls.isEmpty());
    EXPECT_EQ(history(), (QStringList{QStringLiteral("開始 00100012"), QStringLiteral("終了")}));
}

TEST_P(Startup, FailingPersonnelLinkEndsWithoutTheEndRow) {
    main(
        QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = 'A', 連携データソース名 = '/nowhere.accdb' "
                       "WHERE コード = '002'"));
    EXPECT_TRUE(run(QString()));
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("人事就業管理連携データベースが使用できません。")});
    EXPECT_EQ(exitCode, 4);
    EXPECT_TRUE(ctx().人事連携フラグ);
    EXPECT_TRUE(form.calls.isEmpty());
    const QStringList h = history();
    ASSERT_EQ(h.size(), 2);
    EXPECT_EQ(h.at(0), QStringLiteral("開始 "));
    EXPECT_TRUE(h.at(1).startsWith(QStringLiteral("エラー 連携db_OPEN ERROR")));
    // The run's own connections stay as they are until the process ends.
    EXPECT_TRUE(ctx().conn.環境DB接続中);
    EXPECT_TRUE(ctx().conn.業務DB接続中);
    // The usage row was opened and not closed.
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 終了日時 FROM 使用状況"), {QStringLiteral("終了日時")}),
              QStringList{QString()});
}

TEST_P(Startup, LinkedPersonnelSystemIsOpenedAndTheScreenShown) {
    personnelOnOwnDatabase();
    EXPECT_FALSE(run(QString()));
    EXPECT_TRUE(ctx().人事連携フラグ);
    EXPECT_TRUE(ctx().others.slot[1].業務DB接続中);
    EXPECT_EQ(form.calls, kShown);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Startup, OperatorWithoutTheRightIsRefused) {
    EXPECT_TRUE(run(QStringLiteral("00100012"), false));
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("操作権限がありません。")});
    EXPECT_EQ(exitCode, 5);
    EXPECT_TRUE(form.calls.isEmpty());
    EXPECT_EQ(history(), (QStringList{QStringLiteral("開始 00100012"), QStringLiteral("終了")}));
    // The menu row was written before the right was asked.
    EXPECT_TRUE(menuRow().first().startsWith(QStringLiteral("事業所コード|担当者コード|")));
}

TEST_P(Startup, CommandLineOfThreeCharactersSetsTheOfficeAlone) {
    EXPECT_FALSE(run(QStringLiteral("001")));
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("001"));
    EXPECT_EQ(ctx().担当者情報.コード, QString());
    EXPECT_FALSE(ctx().screen.単独起動フラグ);
    EXPECT_TRUE(ctx().screen.新規フラグ);
    // So the previous-instance rule applies to it.
    os::SingleInstance second;
    EXPECT_TRUE(run(QStringLiteral("001"), second));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Startup, CommandLineWithAStaffCodeStartsForThatRecord) {
    EXPECT_FALSE(run(QStringLiteral("  00100012  ")));
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("001"));
    EXPECT_EQ(ctx().担当者情報.コード, QStringLiteral("00012"));
    EXPECT_TRUE(ctx().screen.単独起動フラグ);
    EXPECT_FALSE(ctx().screen.新規フラグ);
    EXPECT_EQ(history(), QStringList{QStringLiteral("開始 00100012")});

    os::SingleInstance second;
    EXPECT_FALSE(run(QStringLiteral("001000"), second));
    EXPECT_EQ(ctx().担当者情報.コード, QStringLiteral("000"));
    EXPECT_TRUE(ctx().screen.単独起動フラグ);
}

TEST_P(Startup, OfficeIsTakenWithoutACheck) {
    EXPECT_FALSE(run(QStringLiteral("999")));
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("999"));
    EXPECT_EQ(ctx().env.運用事業所コード, QStringLiteral("000"));
    EXPECT_EQ(form.calls, kShown);
}

TEST_P(Startup, TenCharactersAreParsedToEightYetTheWholeLineTakesTheRequest) {
    config(
        QStringLiteral("INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,受信プログラムID,受信期限,連携区分,"
                       "起動連携情報) VALUES ('20261121 092930','受注入力','担当者登録','','00','0010001299')"));
    config(
        QStringLiteral("INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,受信プログラムID,受信期限,連携区分,"
                       "起動連携情報) VALUES ('20261121 092940','受注入力','担当者登録','','00','00100012')"));
    EXPECT_FALSE(run(QStringLiteral("0010001299")));
    EXPECT_EQ(ctx().run.操作事業所コード, QStringLiteral("001"));
    EXPECT_EQ(ctx().担当者情報.コード, QStringLiteral("00012"));
    EXPECT_EQ(ctx().link.起動連携情報, QStringLiteral("0010001299"));
    EXPECT_EQ(ctx().link.発信プログラムID, QStringLiteral("受注入力"));
    // Only the request of the whole line was taken.
    EXPECT_EQ(tree->configRows(QStringLiteral("SELECT 起動連携情報 FROM プログラム連携情報"),
                               {QStringLiteral("起動連携情報")}),
              QStringList{QStringLiteral("00100012")});
}

TEST_P(Startup, SecondPlainStartEndsSilentlyWhileTheFirstRuns) {
    EXPECT_FALSE(run(QString()));
    form.calls.clear();
    os::SingleInstance second;
    EXPECT_TRUE(run(QString(), second));
    // Giving way is no failure.
    EXPECT_EQ(exitCode, 0);
    EXPECT_TRUE(form.calls.isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(history(), (QStringList{QStringLiteral("開始 "), QStringLiteral("開始 "), QStringLiteral("終了")}));

    // A start for one staff record goes on all the same.
    os::SingleInstance third;
    EXPECT_FALSE(run(QStringLiteral("00100012"), third));
    EXPECT_EQ(form.calls, kShown);
}

TEST_P(Startup, PlainStartGivesWayToARunningStaffRecordStart) {
    EXPECT_FALSE(run(QStringLiteral("00100012")));
    os::SingleInstance second;
    EXPECT_TRUE(run(QString(), second));
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Startup, PlainStartGivesWayToARecordStartThatOutlivedTheFirstPlainOne) {
    auto plain = std::make_unique<os::SingleInstance>();
    EXPECT_FALSE(run(QString(), *plain));
    os::SingleInstance record;
    EXPECT_FALSE(run(QStringLiteral("00100012"), record));
    plain.reset(); // the first plain instance ends
    os::SingleInstance next;
    form.calls.clear();
    EXPECT_TRUE(run(QString(), next));
    EXPECT_TRUE(form.calls.isEmpty());
}

TEST_P(Startup, AnInstanceStillStartingIsSeen) {
    // An instance that has announced itself and not yet reached the rule, as
    // one waiting for its PIN.
    os::SingleInstance starting;
    ASSERT_TRUE(starting.announce(起動登録フォルダ(tree->newContext())));
    os::SingleInstance later;
    EXPECT_TRUE(run(QString(), later));
    EXPECT_TRUE(form.calls.isEmpty());
}

TEST_P(Startup, ALaterStartDoesNotStopAnEarlierOne) {
    // Two plain starts at once: the one that announced itself first goes on.
    os::SingleInstance first;
    ASSERT_TRUE(first.announce(起動登録フォルダ(tree->newContext())));
    os::SingleInstance second;
    ASSERT_TRUE(second.announce(起動登録フォルダ(tree->newContext())));
    EXPECT_FALSE(first.earlierRunning());
    EXPECT_TRUE(second.earlierRunning());
}

TEST_P(Startup, TheFileOfAnEndedInstanceDoesNotStopAStartAndIsCleared) {
    const QString folder = tree->path(QStringLiteral("prgbin/.担当者登録.instances"));
    EXPECT_EQ(起動登録フォルダ(tree->newContext()), folder);
    // Left by an instance killed before it could clear it: nobody holds its lock.
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile left(folder + QStringLiteral("/0000000000000001"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.close();
    QFile number(folder + QStringLiteral("/number"));
    ASSERT_TRUE(number.open(QIODevice::WriteOnly));
    number.write("1\n");
    number.close();

    EXPECT_FALSE(run(QString()));
    EXPECT_EQ(form.calls, kShown);
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/0000000000000001")));
    EXPECT_TRUE(QFile::exists(folder + QStringLiteral("/0000000000000002")));
}

TEST_P(Startup, AnInstanceThatEndedFreesTheWay) {
    {
        os::SingleInstance gone;
        EXPECT_FALSE(run(QString(), gone));
    }
    os::SingleInstance next;
    form.calls.clear();
    EXPECT_FALSE(run(QString(), next));
    EXPECT_EQ(form.calls, kShown);
}

TEST_P(Startup, ARegisterThatCannotBeMadeBesideTheProgramKeepsTheRule) {
    // A plain file where the register's folder would be: the temporary files serve.
    const QString blocked = tree->path(QStringLiteral("prgbin/.担当者登録.instances"));
    QFile file(blocked);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_FALSE(run(QString()));
    os::SingleInstance second;
    EXPECT_TRUE(run(QString(), second));
    EXPECT_TRUE(QFileInfo(blocked).isFile());
}

INSTANTIATE_TEST_SUITE_P(Engines, Startup, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
