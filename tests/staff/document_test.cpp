// Files and folders attached to a staff record: the rows of M付属書類, the
// copies in the document folder and the list on the card's last page.

#include "staff_fixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using testdb::Engine;

namespace {

const QString kFilter = QStringLiteral(
    "全てのファイル(*.*)|*.*|JPEGファイル (*.jpg)|*.jpg|GIFファイル (*.gif)|*.gif|メタファイル (*.wmf)|*.wmf|"
    "拡張メタファイル (*.emf)|*.emf|Bitmap ファイル (*.bmp)|*.bmp");

class Documents : public StaffFixture {
protected:
    void SetUp() override {
        StaffFixture::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        home = tree->path(QStringLiteral("home"));
        ASSERT_TRUE(QDir().mkpath(home));
        hadProfile = qEnvironmentVariableIsSet("USERPROFILE");
        oldProfile = qgetenv("USERPROFILE");
        qputenv("USERPROFILE", home.toUtf8());
        ASSERT_TRUE(QDir().mkpath(documents()));
    }
    void TearDown() override {
        if (hadProfile)
            qputenv("USERPROFILE", oldProfile);
        else
            qunsetenv("USERPROFILE");
        StaffFixture::TearDown();
    }

    QString documents() const { return tree->path(QStringLiteral("document")); }

    // A file of the given size under the user's folder.
    QString source(const QString& relative, qint64 bytes = 100) {
        const QString path = home + QLatin1Char('/') + relative;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(QByteArray(bytes, 'x'));
        return path;
    }

    // Opens the attachments page and reads staff 00001.
    void startOnRecord() {
        start();
        readExisting();
        form->tab_詳細->setCurrentWidget(form->List付属書類->parentWidget());
    }

    void addFile(const QString& path) {
        tree->dialogs.files = {path};
        ASSERT_TRUE(form->btn_付属書類追加->isEnabled());
        QTest::mouseClick(form->btn_付属書類追加, Qt::LeftButton);
    }
    void addFolder(const QString& path) {
        tree->dialogs.folders = {path};
        ASSERT_TRUE(form->btn_フォルダ->isEnabled());
        QTest::mouseClick(form->btn_フォルダ, Qt::LeftButton);
    }

    // The list as shown: title, size, date, the mark ("on"/"off").
    QStringList listed() const {
        QStringList out;
        for (int i = 0; i < form->List付属書類->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* item = form->List付属書類->topLevelItem(i);
            out.append(QStringList{item->text(0), item->text(1), item->text(2),
                                   item->checkState(0) == Qt::Checked ? QStringLiteral("on") : QStringLiteral("off")}
                           .join(QLatin1Char('|')));
        }
        return out;
    }

    QTreeWidgetItem* select(int row) {
        form->List付属書類->scrollToItem(form->List付属書類->topLevelItem(row));
        QTreeWidgetItem* item = form->List付属書類->topLevelItem(row);
        QTest::mouseClick(form->List付属書類->viewport(), Qt::LeftButton, Qt::NoModifier,
                          form->List付属書類->visualItemRect(item).center());
        EXPECT_TRUE(item->isSelected());
        return item;
    }

    QStringList numbers() const {
        return rows(QStringLiteral("SELECT SEQNo FROM M付属書類 WHERE 情報名 = '担当者登録' AND 情報識別ID = '00001' "
                                   "ORDER BY SEQNo"),
                    {QStringLiteral("SEQNo")});
    }

    QStringList stored() const {
        QStringList names = QDir(documents()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
        return names;
    }

    void deleteRow(int row) {
        select(row);
        tree->messages.answers = {ui::Answer::Yes};
        QTest::mouseClick(form->btn_付属書類削除, Qt::LeftButton);
    }

    QString home;
    bool hadProfile = false;
    QByteArray oldProfile;
};

TEST_P(Documents, ANewRecordHasTheThreeButtonsOff) {
    start();
    type(form->コード, QStringLiteral("60"));
    tab();
    ASSERT_TRUE(ctx().screen.新規フラグ);
    EXPECT_FALSE(form->btn_付属書類追加->isEnabled());
    EXPECT_FALSE(form->btn_フォルダ->isEnabled());
    EXPECT_FALSE(form->btn_付属書類削除->isEnabled());
    EXPECT_EQ(form->List付属書類->topLevelItemCount(), 0);
    const QStringList headers{form->List付属書類->headerItem()->text(0), form->List付属書類->headerItem()->text(1),
                              form->List付属書類->headerItem()->text(2)};
    EXPECT_EQ(headers, (QStringList{QStringLiteral("書類名"), QStringLiteral("サイズ"), QStringLiteral("更新日付")}));
}

TEST_P(Documents, ASavedRecordWithoutAttachmentsCanAddButNotDelete) {
    startOnRecord();
    EXPECT_TRUE(form->btn_付属書類追加->isEnabled());
    EXPECT_TRUE(form->btn_フォルダ->isEnabled());
    EXPECT_FALSE(form->btn_付属書類削除->isEnabled());
    addFile(source(QStringLiteral("報告.doc")));
    EXPECT_TRUE(form->btn_付属書類削除->isEnabled());
    // The card was closed to input during the copy and has its focus back.
    EXPECT_TRUE(form->isEnabled());
    EXPECT_EQ(focused(), QStringLiteral("btn_付属書類追加"));
}

TEST_P(Documents, TheFirstAttachmentGets001AndTheNext002WithTheirCopies) {
    startOnRecord();
    const QString first = source(QStringLiteral("資料/報告.doc"), 3000);
    addFile(first);
    EXPECT_EQ(tree->dialogs.asked, QStringList{QStringLiteral("open|") + kFilter + QStringLiteral("|0|") + home});
    addFile(source(QStringLiteral("見積.v2.xls")));
    EXPECT_EQ(numbers(), (QStringList{QStringLiteral("001"), QStringLiteral("002")}));
    EXPECT_EQ(stored(), (QStringList{QStringLiteral("担当者登録_00001_001_報告.doc"),
                                     QStringLiteral("担当者登録_00001_002_見積.v2.xls")}));
    EXPECT_EQ(QFileInfo(documents() + QStringLiteral("/担当者登録_00001_001_報告.doc")).size(), 3000);
    // Everything the row says of the first attachment; the amount is a number.
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M付属書類 WHERE SEQNo = '001'"),
                   {QStringLiteral("情報名"), QStringLiteral("情報識別ID"), QStringLiteral("書類名"),
                    QStringLiteral("タイトル"), QStringLiteral("伝票番号ID"), QStringLiteral("伝票事業所コード"),
                    QStringLiteral("社員コード"), QStringLiteral("担当者コード"), QStringLiteral("部門コード"),
                    QStringLiteral("セクションコード"), QStringLiteral("対象金額"), QStringLiteral("ユーザID"),
                    QStringLiteral("登録日付")}),
              QStringList{QStringLiteral("担当者登録|00001|") + first + QStringLiteral("|報告||") +
                          ctx().run.操作事業所コード + QStringLiteral("||00001|003|003|0|tanaka") +
                          ctx().op.操作担当者コード + QStringLiteral("PC-01|20261121 093000")});
    // The title drops only what follows the last dot.
    const QString date = QFileInfo(documents() + QStringLiteral("/担当者登録_00001_001_報告.doc"))
                             .lastModified()
                             .toString(QStringLiteral("yyyy/MM/dd"));
    EXPECT_EQ(listed(), (QStringList{QStringLiteral("報告|3KB|") + date + QStringLiteral("|on"),
                                     QStringLiteral("見積.v2|0KB|") + date + QStringLiteral("|on")}));
}

TEST_P(Documents, SizesAreWholeKilobytesWithThousandsSeparators) {
    startOnRecord();
    addFile(source(QStringLiteral("大きい.bin"), 1100000));
    addFile(source(QStringLiteral("半分.bin"), 1536));
    ASSERT_EQ(form->List付属書類->topLevelItemCount(), 2);
    EXPECT_EQ(form->List付属書類->topLevelItem(0)->text(1), QStringLiteral("1,074KB"));
    EXPECT_EQ(form->List付属書類->topLevelItem(1)->text(1), QStringLiteral("2KB"));
}

TEST_P(Documents, Deleting002AndAddingGives002Again) {
    startOnRecord();
    addFile(source(QStringLiteral("a.txt")));
    addFile(source(QStringLiteral("b.txt")));
    deleteRow(1);
    EXPECT_EQ(numbers(), QStringList{QStringLiteral("001")});
    addFile(source(QStringLiteral("c.txt")));
    EXPECT_EQ(numbers(), (QStringList{QStringLiteral("001"), QStringLiteral("002")}));
    EXPECT_EQ(stored(), (QStringList{QStringLiteral("担当者登録_00001_001_a.txt"),
                                     QStringLiteral("担当者登録_00001_002_c.txt")}));
}

TEST_P(Documents, Deleting001AndAddingGives003) {
    startOnRecord();
    addFile(source(QStringLiteral("a.txt")));
    addFile(source(QStringLiteral("b.txt")));
    deleteRow(0);
    EXPECT_EQ(numbers(), QStringList{QStringLiteral("002")});
    addFile(source(QStringLiteral("c.txt")));
    EXPECT_EQ(numbers(), (QStringList{QStringLiteral("002"), QStringLiteral("003")}));
    EXPECT_EQ(stored(), (QStringList{QStringLiteral("担当者登録_00001_002_b.txt"),
                                     QStringLiteral("担当者登録_00001_003_c.txt")}));
    EXPECT_EQ(listed().size(), 2);
}

TEST_P(Documents, AnApostropheInTheNameBreaksTheInsertAndNothingIsCopied) {
    startOnRecord();
    addFile(source(QStringLiteral("O'Hara.txt")));
    EXPECT_TRUE(numbers().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_EQ(form->List付属書類->topLevelItemCount(), 0);
    EXPECT_FALSE(form->btn_付属書類削除->isEnabled());
    const QStringList history = tree->history();
    const auto error = std::find_if(history.begin(), history.end(), [](const QString& row) {
        return row.contains(QStringLiteral("|エラー INSERT INTO M付属書類 (情報名,情報識別ID,SEQNo,書類名,タイトル,"));
    });
    ASSERT_NE(error, history.end());
    // The history shows every quote of the statement doubled: the name's own quote was a single one.
    EXPECT_TRUE(error->contains(QStringLiteral("/O''Hara.txt'',''O''Hara'',"))) << error->toStdString();
    // The program goes on: the next file is taken under 001.
    addFile(source(QStringLiteral("ok.txt")));
    EXPECT_EQ(numbers(), QStringList{QStringLiteral("001")});
}

TEST_P(Documents, AFolderIsCopiedAsATreeAndShowsフォルダ) {
    startOnRecord();
    source(QStringLiteral("案件/図面/平面.dxf"), 10);
    source(QStringLiteral("案件/説明.txt"), 10);
    const int waits = tree->waitBox.shownCount;
    addFolder(home + QStringLiteral("/案件"));
    EXPECT_EQ(tree->dialogs.asked, QStringList{QStringLiteral("folder|書類を選択して下さい|") + home});
    EXPECT_EQ(tree->waitBox.shownCount, waits + 1);
    EXPECT_FALSE(tree->waitBox.visible);
    const QString copy = documents() + QStringLiteral("/担当者登録_00001_001_案件");
    EXPECT_TRUE(QFileInfo(copy + QStringLiteral("/図面/平面.dxf")).isFile());
    EXPECT_TRUE(QFileInfo(copy + QStringLiteral("/説明.txt")).isFile());
    const QString date = QFileInfo(copy).lastModified().toString(QStringLiteral("yyyy/MM/dd"));
    EXPECT_EQ(listed(), QStringList{QStringLiteral("案件|フォルダ|") + date + QStringLiteral("|on")});
}

TEST_P(Documents, TheUsersOwnFolderOrACancelAddsNothing) {
    startOnRecord();
    addFolder(home);
    tree->dialogs.folders = {QString()};
    QTest::mouseClick(form->btn_フォルダ, Qt::LeftButton);
    tree->dialogs.files = {QString()};
    QTest::mouseClick(form->btn_付属書類追加, Qt::LeftButton);
    EXPECT_TRUE(numbers().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_TRUE(tree->messages.shown.isEmpty());
}

TEST_P(Documents, AFileThatIsNotThereAddsNothing) {
    startOnRecord();
    addFile(home + QStringLiteral("/無い.txt"));
    EXPECT_TRUE(numbers().isEmpty());
    EXPECT_EQ(form->List付属書類->topLevelItemCount(), 0);
}

TEST_P(Documents, ACopyRemovedByHandListsWithItsTitleTheMarkOffAndNoSize) {
    startOnRecord();
    addFile(source(QStringLiteral("報告.doc")));
    ASSERT_TRUE(QFile::remove(documents() + QStringLiteral("/担当者登録_00001_001_報告.doc")));
    addFile(source(QStringLiteral("次.doc")));
    const QStringList shown = listed();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown.first(), QStringLiteral("報告|||off"));
    EXPECT_TRUE(shown.last().endsWith(QStringLiteral("|on")));
}

TEST_P(Documents, ADoubleClickOpensTheStoredCopy) {
    startOnRecord();
    addFile(source(QStringLiteral("a.txt")));
    addFile(source(QStringLiteral("報告.doc")));
    QTreeWidgetItem* item = form->List付属書類->topLevelItem(1);
    select(1);
    QTest::mouseDClick(form->List付属書類->viewport(), Qt::LeftButton, Qt::NoModifier,
                       form->List付属書類->visualItemRect(item).center());
    EXPECT_EQ(tree->desktop.opened,
              QStringList{documents() + QStringLiteral("/担当者登録_00001_002_報告.doc|") + documents()});
}

TEST_P(Documents, DeletingAsksThenRemovesTheRowAndTheCopy) {
    startOnRecord();
    addFile(source(QStringLiteral("報告.doc")));
    // A file whose name continues the stored one goes with it.
    QFile extra(documents() + QStringLiteral("/担当者登録_00001_001_報告_控え.txt"));
    ASSERT_TRUE(extra.open(QIODevice::WriteOnly));
    extra.close();
    select(0);
    tree->messages.answers = {ui::Answer::No};
    QTest::mouseClick(form->btn_付属書類削除, Qt::LeftButton);
    EXPECT_EQ(numbers(), QStringList{QStringLiteral("001")});
    EXPECT_EQ(stored().size(), 2);

    deleteRow(0);
    EXPECT_EQ(tree->messages.texts(), (QStringList{QStringLiteral("付属書類から削除しますか？"),
                                                   QStringLiteral("付属書類から削除しますか？")}));
    EXPECT_EQ(tree->messages.shown.last().buttons, ui::Buttons::YesNo);
    EXPECT_TRUE(numbers().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_EQ(form->List付属書類->topLevelItemCount(), 0);
    EXPECT_FALSE(form->btn_付属書類削除->isEnabled());
    EXPECT_EQ(form->お知らせ->text(), QString());
    EXPECT_TRUE(form->isEnabled());
}

TEST_P(Documents, DeletingAFolderRemovesTheWholeCopy) {
    startOnRecord();
    source(QStringLiteral("案件/図面/平面.dxf"), 10);
    addFolder(home + QStringLiteral("/案件"));
    ASSERT_EQ(stored(), QStringList{QStringLiteral("担当者登録_00001_001_案件")});
    deleteRow(0);
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_TRUE(numbers().isEmpty());
}

TEST_P(Documents, DeletingWithNothingSelectedAsksNothing) {
    startOnRecord();
    addFile(source(QStringLiteral("報告.doc")));
    form->List付属書類->clearSelection();
    QTest::mouseClick(form->btn_付属書類削除, Qt::LeftButton);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(numbers(), QStringList{QStringLiteral("001")});
}

TEST_P(Documents, AnotherCodeShowsItsOwnAttachments) {
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("INSERT INTO M付属書類 (情報名,情報識別ID,SEQNo,書類名,タイトル,対象金額) VALUES "
                       "('担当者登録','00002','001','/x/他人.doc','他人',0)")));
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("INSERT INTO M付属書類 (情報名,情報識別ID,SEQNo,書類名,タイトル,対象金額) VALUES "
                       "('得意先登録','00001','001','/x/得意先.doc','得意先',0)")));
    startOnRecord();
    EXPECT_EQ(form->List付属書類->topLevelItemCount(), 0);
    EXPECT_FALSE(form->btn_付属書類削除->isEnabled());
    addFile(source(QStringLiteral("自分.doc")));
    EXPECT_EQ(listed().size(), 1);
    EXPECT_TRUE(listed().first().startsWith(QStringLiteral("自分|")));
}

INSTANTIATE_TEST_SUITE_P(Engines, Documents, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
