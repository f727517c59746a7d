// The staff card on an installation tree, driven as its user drives it:
// typed keys, tabs and clicks, with the message boxes answered through the seam.

#include "staff_fixture.h"

using testdb::Engine;

namespace {

using StaffScreen = StaffFixture;

TEST_P(StaffScreen, EveryControlOfTheCardIsThereWithItsCaption) {
    start();
    const QList<std::pair<const char*, const char*>> captions{
        {"prg_ttl", "担当者登録(全社)「佐藤 一郎」"}, {"manualpanel", "Manual"}, {"btn_担当者コード", "コード"},
        {"btn_最新コード", "最新コード"}, {"btn_前進", "次の担当者"},     {"btn_後退", "前の担当者"},
        {"btn_画面クリア", "画面クリア"}, {"btn_登録", "登録"},           {"btn_削除", "削除"},
        {"btn_終了", "終了"},             {"btn_印刷", "印刷"},           {"btn_プレビュ", "プレビュ"},
        {"itm_ttl_漢字", "漢字"},         {"itm_ttl_氏名", "氏名"},       {"btn_社員コード", "社員コード"},
        {"itm_ttl_暗証番号", "暗証番号"}, {"itm_ttl_入社日付", "入社日付"}, {"itm_ttl_退社日付", "退職日付"},
        {"btn_EMAIL", "e-mail"},          {"Lab_生年月日年", "年"},       {"Lab_生年月日月", "月"},
        {"lab_生年月日日", "日"}};
    for (const auto& [name, caption] : captions) {
        QWidget* w = form->findChild<QWidget*>(QString::fromUtf8(name));
        ASSERT_NE(w, nullptr) << name;
        const QString text = qobject_cast<QLabel*>(w)         ? qobject_cast<QLabel*>(w)->text()
                             : qobject_cast<QPushButton*>(w) ? qobject_cast<QPushButton*>(w)->text()
                                                             : QString();
        EXPECT_EQ(text, QString::fromUtf8(caption)) << name;
    }
    for (const char* name :
         {"コード", "姓", "名", "氏名", "カナ姓", "カナ名", "カナ", "社員コード", "暗証番号", "性別区分", "性別区分名称",
          "生年月日年号区分", "生年月日年号区分名称", "生年月日年", "生年月日月", "生年月日日", "tab_詳細", "bak_その他",
          "事業所コード", "btn_事業所コード", "事業所名", "部門コード", "btn_部門コード", "部門名", "セクションコード",
          "btn_セクションコード", "セクション名", "役職コード", "btn_役職コード", "役職名", "職責", "ログインID", "在籍区分",
          "在籍区分名称", "社員区分", "社員区分名称", "入社日付年号区分", "入社日付年号区分名称", "入社日付年", "入社日付月",
          "入社日付日", "退社日付年号区分", "退社日付年号区分名称", "退社日付年", "退社日付月", "退社日付日", "頁1終了",
          "bak_住所", "郵便番号", "住所A", "住所B", "住所C", "電話", "携帯電話", "EMAIL", "頁2終了", "bak_写真", "img_写真",
          "img_担当者印", "btn_最初の写真", "btn_次の写真", "btn_新写真取込", "btn_写真削除", "btn_全写真削除",
          "btn_担当者印読込", "btn_担当者印クリア", "頁3終了", "担当者メモ", "List付属書類", "btn_付属書類追加",
          "btn_付属書類削除", "btn_フォルダ", "お知らせ"})
        EXPECT_NE(form->findChild<QWidget*>(QString::fromUtf8(name)), nullptr) << name;
    EXPECT_EQ(form->tab_詳細->count(), 5);
    EXPECT_EQ(form->tab_詳細->tabText(0), QStringLiteral("所属"));
    EXPECT_EQ(form->tab_詳細->tabText(1), QStringLiteral("住所"));
    EXPECT_EQ(form->tab_詳細->tabText(2), QStringLiteral("写真・印鑑"));
    EXPECT_EQ(form->tab_詳細->tabText(3), QStringLiteral("メモ"));
    EXPECT_EQ(form->tab_詳細->tabText(4), QStringLiteral("付属書類"));
}

TEST_P(StaffScreen, LoadFillsTheListsWithTheirBoundsAndTheCaption) {
    start();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("担当者登録（") + ctx().company.名称 + QStringLiteral("）"));
    EXPECT_FALSE(ctx().company.名称.isEmpty());
    EXPECT_EQ(form->性別区分名称->count(), 2);
    EXPECT_EQ(form->性別区分->minimum(), 1);
    EXPECT_EQ(form->性別区分->maximum(), 2);
    EXPECT_EQ(form->在籍区分名称->itemText(0), QStringLiteral("在籍"));
    EXPECT_EQ(form->在籍区分->maximum(), form->在籍区分名称->count() - 1);
    EXPECT_EQ(form->社員区分->maximum(), form->社員区分名称->count() - 1);
    EXPECT_EQ(form->生年月日年号区分名称->count(), 6);
    EXPECT_EQ(form->生年月日年号区分名称->itemText(4), QStringLiteral("平成"));
    EXPECT_EQ(form->退社日付年号区分->maximum(), 5);
    // An empty card: the defaults of a clear, the details disabled, the focus on the code.
    EXPECT_EQ(form->性別区分->text(), QStringLiteral("1"));
    EXPECT_EQ(form->性別区分名称->currentIndex(), 0);
    EXPECT_EQ(form->社員区分->text(), QStringLiteral("1"));
    EXPECT_FALSE(form->tab_詳細->isEnabled());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_FALSE(ctx().screen.入力フラグ);
}

TEST_P(StaffScreen, TypedCodeReadsTheRowIntoTheCard) {
    start();
    readExisting();
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 太郎"));
    EXPECT_EQ(form->部門名->text(), QStringLiteral("営業部"));
    EXPECT_EQ(form->役職名->text(), QStringLiteral("課長"));
    // The birth date comes up in its era: 昭和55年.
    EXPECT_EQ(form->生年月日年号区分->text(), QStringLiteral("3"));
    EXPECT_EQ(form->生年月日年->text(), QStringLiteral("55"));
    EXPECT_EQ(form->生年月日月->text(), QStringLiteral("01"));
    EXPECT_TRUE(form->tab_詳細->isEnabled());
    EXPECT_FALSE(form->btn_登録->isEnabled());
    EXPECT_TRUE(form->btn_印刷->isEnabled());
    EXPECT_EQ(form->お知らせ->text(), QString());
}

TEST_P(StaffScreen, TabbingOutOfTheLastFieldOfPageOneLandsOnPageTwoAndBack) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(0);
    項目focus(ctx(), form->退社日付日);
    ASSERT_EQ(focused(), QStringLiteral("退社日付日"));
    tab();
    EXPECT_EQ(form->tab_詳細->currentIndex(), 1);
    EXPECT_EQ(focused(), QStringLiteral("郵便番号"));
    tab(true);
    EXPECT_EQ(form->tab_詳細->currentIndex(), 0);
    EXPECT_EQ(focused(), QStringLiteral("退社日付日"));
}

TEST_P(StaffScreen, TabbingOutOfEmailWithChangesReachesTheSaveQuestion) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    type(form->EMAIL, QStringLiteral("taro@example.jp"));
    tree->messages.answers = {ui::Answer::No};
    tab();
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("修正しますか")});
    EXPECT_EQ(tree->messages.shown.first().buttons, ui::Buttons::YesNo);
    EXPECT_EQ(tree->messages.shown.first().defaultButton, 1);
    EXPECT_EQ(focused(), QStringLiteral("EMAIL"));
}

TEST_P(StaffScreen, TabbingOutOfEmailWithoutChangesStaysThere) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    項目focus(ctx(), form->EMAIL);
    ASSERT_EQ(focused(), QStringLiteral("EMAIL"));
    tab();
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(focused(), QStringLiteral("EMAIL"));
    EXPECT_EQ(form->tab_詳細->currentIndex(), 1);
}

TEST_P(StaffScreen, FirstChangeEnablesTheSaveButtonOnceTheFieldIsLeft) {
    start();
    readExisting();
    EXPECT_FALSE(form->btn_登録->isEnabled());
    type(form->姓, QStringLiteral("山下"));
    EXPECT_FALSE(form->btn_登録->isEnabled());
    tab();
    EXPECT_TRUE(form->btn_登録->isEnabled());
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山下 太郎"));
    EXPECT_TRUE(ctx().screen.入力フラグ);
}

TEST_P(StaffScreen, ButtonsKeepTheirStateAfterClearAndSaveEndsAtTheEmptyCode) {
    start();
    readExisting();
    type(form->姓, QStringLiteral("山下"));
    tab();
    ASSERT_TRUE(form->btn_登録->isEnabled());
    tree->messages.answers = {ui::Answer::Yes}; // clear
    QTest::mouseClick(form->btn_画面クリア, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts(),
              QStringList{QStringLiteral("入力がありました。") + QChar(13) + QStringLiteral("クリアしますか？")});
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_TRUE(form->btn_登録->isEnabled());
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_EQ(tree->messages.texts().last(), QStringLiteral("登録しますか"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("最大件数を超えました。登録できません。"));
}

TEST_P(StaffScreen, ClearOnAnUnchangedScreenAsksNothing) {
    start();
    readExisting();
    QTest::mouseClick(form->btn_画面クリア, Qt::LeftButton);
    EXPECT_TRUE(tree->messages.shown.isEmpty());
    EXPECT_EQ(form->氏名->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("コード"));
}

TEST_P(StaffScreen, PinFieldOnlyOnTheHeadOffice) {
    start();
    EXPECT_FALSE(form->暗証番号->isHidden());
    form.reset();
    ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET 運用事業所コード = '001'")));
    tree->newContext();
    start();
    EXPECT_TRUE(form->暗証番号->isHidden());
    EXPECT_TRUE(form->itm_ttl_暗証番号->isHidden());
}

TEST_P(StaffScreen, TheEmployeeCodeAndItsButtonShowOnlyWithThePersonnelLink) {
    start();
    ASSERT_FALSE(ctx().人事連携フラグ);
    EXPECT_TRUE(form->社員コード->isHidden());
    EXPECT_TRUE(form->btn_社員コード->isHidden());
    // Still hidden with a record on the card.
    readExisting();
    EXPECT_TRUE(form->社員コード->isHidden());
    EXPECT_TRUE(form->btn_社員コード->isHidden());
    // A run with the link shows them: the personnel row linked, here to the
    // tree's own main database.
    form.reset();
    Context& probe = tree->newContext();
    ASSERT_TRUE(環境DBopen(probe));
    const auto& c = probe.conn;
    ASSERT_TRUE(tree->mainExecute(
        QStringLiteral("UPDATE M他業務連携 SET 連携有無区分 = '1', 連携DB = '%1', 連携データソース名 = '%2', "
                       "連携サーバー名 = '%3', 連携データベース名 = '%4', 連携ユーザーID = '%5', 連携パスワード = '%6' "
                       "WHERE 業務名 = '人事就業管理'")
            .arg(c.db, c.データソース名, c.サーバー名, c.データベース名, c.ユーザーID, c.パスワード)));
    データ処理term(probe);
    start();
    ASSERT_TRUE(ctx().人事連携フラグ);
    EXPECT_FALSE(form->社員コード->isHidden());
    EXPECT_FALSE(form->btn_社員コード->isHidden());
}

TEST_P(StaffScreen, StartedWithACodeThatDoesNotExistComesUpEmpty) {
    start(QStringLiteral("00009999"));
    EXPECT_TRUE(ctx().screen.新規フラグ);
    EXPECT_TRUE(ctx().screen.単独起動フラグ);
    EXPECT_EQ(form->コード->text(), QString());
}

TEST_P(StaffScreen, StartedWithAnExistingCodeShowsItsRow) {
    start(QStringLiteral("00000001"));
    EXPECT_FALSE(ctx().screen.新規フラグ);
    EXPECT_EQ(form->氏名->text(), QStringLiteral("山田 太郎"));
}

TEST_P(StaffScreen, PhotoBackgroundOnANewRecordWithACodeDoesNothing) {
    start();
    type(form->コード, QStringLiteral("50"));
    tab();
    ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    form->tab_詳細->setCurrentIndex(2);
    項目focus(ctx(), form->姓);
    const QString before = focused();
    QTest::mouseClick(form->bak_写真, Qt::LeftButton);
    EXPECT_EQ(focused(), before);
}

TEST_P(StaffScreen, ClosingWithChangesAndNoKeepsTheProgramRunning) {
    start();
    readExisting();
    type(form->姓, QStringLiteral("山下"));
    tab();
    tree->messages.answers = {ui::Answer::No};
    form->close();
    EXPECT_EQ(tree->messages.texts(),
              QStringList{QStringLiteral("入力がありました。") + QChar(13) + QStringLiteral("終了しますか？")});
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(tree->history().join(QLatin1Char('\n')).contains(QStringLiteral("|終了")));
}

TEST_P(StaffScreen, FinishWithoutChangesEndsTheRunInOrder) {
    start();
    EXPECT_THROW(QTest::mouseClick(form->btn_終了, Qt::LeftButton), ProcessEnded);
    EXPECT_TRUE(tree->history().last().endsWith(QStringLiteral("|終了")));
    EXPECT_FALSE(ctx().conn.環境DB接続中);
}

TEST_P(StaffScreen, DisabledButtonPassedToTheFocusGoesToTheNextStop) {
    start();
    readExisting();
    ASSERT_FALSE(form->btn_登録->isEnabled());
    項目focus(ctx(), form->btn_登録);
    EXPECT_EQ(focused(), QStringLiteral("btn_削除"));
}

TEST_P(StaffScreen, TitlesSendTheFocusToTheirFields) {
    start();
    readExisting();
    QTest::mouseClick(form->itm_ttl_氏名, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("氏名"));
    QTest::mouseClick(form->itm_ttl_カナ, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("カナ"));
    // The title line sends the focus back to the field last left.
    ASSERT_EQ(ctx().screen.直前項目, form->氏名);
    QTest::mouseClick(form->prg_ttl, Qt::LeftButton);
    EXPECT_EQ(focused(), QStringLiteral("氏名"));
}

TEST_P(StaffScreen, ManualPanelOpensTheProgramsManual) {
    start();
    QTest::mouseClick(form->manualpanel, Qt::LeftButton);
    EXPECT_EQ(tree->desktop.opened, QStringList{tree->path(QStringLiteral("manual/担当者登録.doc")) + QLatin1Char('|') +
                                                tree->path(QStringLiteral("manual"))});
}

INSTANTIATE_TEST_SUITE_P(Engines, StaffScreen, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
