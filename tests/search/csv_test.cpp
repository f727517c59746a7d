// The staff list to a spreadsheet: the rows and columns the list shows, in its
// order, as a CSV file in code page 932, under the operator's right of text
// output, with the run history naming the file.

#include "search_fixture.h"

#include "access/msg暗証番号確認.h"
#include "search/wnd担当者一覧.h"
#include "toolkit/mod項目編集.h"

#include <QDir>
#include <QFile>
#include <QLabel>

using testdb::Engine;

namespace {

QByteArray bytesOf(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(no file)");
}

class StaffCsv : public SearchWindows {
protected:
    void SetUp() override {
        SearchWindows::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        // A name with a comma, quotes and a line break; one the code page cannot hold.
        ASSERT_TRUE(tree->mainExecute(QStringLiteral(
            "INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,社員区分) "
            "VALUES ('00004','Smith, \"Bob\"\nJr.','000','003','003','05','0','1'),"
            "('00005','\U00020BB7田 花子','000','003','003','05','0','1')")));
        exportFolder = tree->path(QStringLiteral("text"));
        ASSERT_TRUE(QDir().mkpath(exportFolder));
        ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE Mユーザ SET テキスト出力フォルダ = '") + exportFolder +
                                      QStringLiteral("'")));
    }
    // An operator whose text-output right is the one given, on a company with
    // PINs, the operator's confirmed at the start (rights are held to only then).
    void operatorWithTextOutput(const QString& right) {
        ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE Mユーザ SET 暗証番号有無 = '1'")));
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral("INSERT INTO M担当者 (コード,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,"
                           "社員区分,テキスト出力許可) VALUES ('00006','操作 者','000','003','003','05','2','1','") +
            right + QStringLiteral("')")));
        ASSERT_TRUE(tree->configExecute(
            QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '00006' WHERE 動作環境定義ID = '001'")));
    }
    QStringList historySince(qsizetype from) const {
        QStringList out;
        for (const QString& row : tree->history().mid(from))
            out.append(row.section(QLatin1Char('|'), 1));
        return out;
    }
    QString exportFolder;
};

TEST_P(StaffCsv, TheListAsShownGoesToACodePage932FileWithItsCaptionsQuotingAndCrlf) {
    operatorWithTextOutput(QString());
    start();
    ctx().pin.暗証確認済 = true;
    const QString file = exportFolder + QStringLiteral("/staff.csv");
    tree->dialogs.files = {file};
    qsizetype before = 0;
    whenShown<wnd担当者一覧>([&](wnd担当者一覧& w) {
        ASSERT_EQ(codes(w.List担当者),
                  (QStringList{QStringLiteral("00001"), QStringLiteral("00002"), QStringLiteral("00004"),
                               QStringLiteral("00005")}));
        // Sorted by name: the file follows the list's order.
        w.List担当者->columnClick(1);
        ASSERT_EQ(codes(w.List担当者).first(), QStringLiteral("00004"));
        before = tree->history().size();
        w.List担当者->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(w.List担当者, Qt::Key_E, Qt::ControlModifier);
        EXPECT_EQ(w.lab_お知らせ->text(),
                  QStringLiteral("CSV出力しました: ") + file + QStringLiteral("（出力できない文字 1 字を ? にしました）"));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    // The dialog proposed the text folder and the list's name with today's date.
    EXPECT_EQ(tree->dialogs.asked, QStringList{QStringLiteral("export|CSVファイル (*.csv)|*.csv|") + exportFolder +
                                               QStringLiteral("/担当者一覧_20261121.csv")});
    EXPECT_EQ(bytesOf(file), bytesOf(QStringLiteral(STAFF_FIXTURES_DIR "/csv/staff_list_by_name.csv")));
    EXPECT_EQ(historySince(before), QStringList{QStringLiteral("出力終了 CSV出力 ") + file});
}

TEST_P(StaffCsv, WithoutTheRightOfTextOutputNothingIsWrittenAndTheNoticeSaysSo) {
    operatorWithTextOutput(QStringLiteral("1"));
    start();
    ctx().pin.暗証確認済 = true;
    tree->dialogs.files = {exportFolder + QStringLiteral("/refused.csv")};
    whenShown<wnd担当者一覧>([&](wnd担当者一覧& w) {
        // The operator may not: the PIN is asked for, for someone who may; left unanswered.
        whenShown<msg暗証番号確認>([](msg暗証番号確認& pin) { pin.reject(); });
        QTest::keyClick(w.List担当者, Qt::Key_E, Qt::ControlModifier);
        EXPECT_EQ(w.lab_お知らせ->text(), QStringLiteral("操作権限がありません。"));
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    EXPECT_TRUE(tree->dialogs.asked.isEmpty());
    EXPECT_FALSE(QFile::exists(exportFolder + QStringLiteral("/refused.csv")));
}

TEST_P(StaffCsv, TheListsMenuOffersTheExportAndACancelledDialogWritesNothing) {
    start();
    whenShown<wnd担当者一覧>([&](wnd担当者一覧& w) {
        EXPECT_EQ(w.List担当者->contextMenuPolicy(), Qt::CustomContextMenu);
        const qsizetype before = tree->history().size();
        QTest::keyClick(w.List担当者, Qt::Key_E, Qt::ControlModifier); // the dialog answers "" (cancelled)
        EXPECT_EQ(tree->dialogs.asked.size(), 1);
        EXPECT_EQ(w.lab_お知らせ->text(), QString());
        EXPECT_EQ(historySince(before), QStringList());
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
    EXPECT_TRUE(QDir(exportFolder).isEmpty());
}

TEST_P(StaffCsv, AFileThatCannotBeWrittenIsSaidInTheNotice) {
    start();
    tree->dialogs.files = {exportFolder + QStringLiteral("/no-such-folder/list.csv")};
    whenShown<wnd担当者一覧>([&](wnd担当者一覧& w) {
        QTest::keyClick(w.List担当者, Qt::Key_E, Qt::ControlModifier);
        EXPECT_TRUE(w.lab_お知らせ->text().startsWith(QStringLiteral("CSV出力できませんでした: ")))
            << w.lab_お知らせ->text().toStdString();
        w.btn_戻る->click();
    });
    QTest::mouseClick(form->btn_担当者コード, Qt::LeftButton);
}

TEST(CodePage932, CharactersTheCodePageCannotHoldBecomeQuestionMarksAndAreCounted) {
    int replaced = -1;
    EXPECT_EQ(CP932conv(QStringLiteral("ｱ漢A①"), &replaced), QByteArray("\xB1\x8A\xBF" "A\x87\x40"));
    EXPECT_EQ(replaced, 0);
    EXPECT_EQ(CP932conv(QStringLiteral("\U00020BB7田😀"), &replaced), QByteArray("?\x93\x63?"));
    EXPECT_EQ(replaced, 2);
}

INSTANTIATE_TEST_SUITE_P(Engines, StaffCsv, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
