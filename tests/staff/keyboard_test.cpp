// The staff card driven by the keyboard alone, as an office clerk enters a
// record: typed keys, the input method's commits, Tab and Enter. Nothing here
// sets the focus or calls a rule: where the focus is after each key is what
// the card did with it.

#include "staff_fixture.h"

#include "search/wnd担当者一覧.h"

#include <QTabBar>
#include <QTimer>

using testdb::Engine;

namespace {

class Keyboard : public StaffFixture {
protected:
    QWidget* focus() const { return QApplication::focusWidget(); }
    // Lets the card finish what a key started (a page turned by a trap).
    static void settle() {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    // Types ASCII keys into whatever has the focus.
    void keys(const QString& text) {
        ASSERT_NE(focus(), nullptr);
        QTest::keyClicks(focus(), text);
    }
    // Japanese as the input method sends it: the reading as a preedit, then
    // the converted text as the commit.
    void compose(const QString& reading, const QString& converted) {
        ASSERT_NE(focus(), nullptr);
        QInputMethodEvent preedit(reading, {});
        QCoreApplication::sendEvent(focus(), &preedit);
        QInputMethodEvent commit;
        commit.setCommitString(converted);
        QCoreApplication::sendEvent(focus(), &commit);
    }
    void press(Qt::Key key) {
        ASSERT_NE(focus(), nullptr);
        QTest::keyClick(focus(), key);
        settle();
    }
    // Tab (or Enter), then the control expected to have the focus.
    void next(const char* expected, Qt::Key key = Qt::Key_Tab) {
        press(key);
        EXPECT_EQ(focused(), QString::fromUtf8(expected)) << "after " << (key == Qt::Key_Tab ? "Tab" : "Enter");
    }
    QString selected() const {
        const auto* line = qobject_cast<QLineEdit*>(focus());
        return line ? line->selectedText() : QString();
    }
};

TEST_P(Keyboard, ANewRecordEnteredFromTheCodeToTheEndOfTheMailAddress) {
    start();
    ASSERT_EQ(focused(), QStringLiteral("コード"));
    keys(QStringLiteral("7"));
    next("姓");
    EXPECT_EQ(form->コード->text(), QStringLiteral("00007"));
    EXPECT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
    compose(QStringLiteral("すずき"), QStringLiteral("鈴木"));
    next("名");
    compose(QStringLiteral("はなこ"), QStringLiteral("花子"));
    next("氏名");
    EXPECT_EQ(form->氏名->text(), QStringLiteral("鈴木 花子"));
    next("カナ姓");
    EXPECT_EQ(form->カナ姓->text(), QStringLiteral("ｽｽﾞｷ"));
    next("カナ名");
    EXPECT_EQ(form->カナ名->text(), QStringLiteral("ﾊﾅｺ"));
    next("カナ");
    EXPECT_EQ(form->カナ->text(), QStringLiteral("ｽｽﾞｷ ﾊﾅｺ"));
    // No personnel link: the employee code is not on the card.
    next("暗証番号");
    next("性別区分");
    keys(QStringLiteral("\b2"));
    next("性別区分名称");
    EXPECT_EQ(form->性別区分名称->currentIndex(), 1);
    next("生年月日年号区分");
    next("生年月日年号区分名称");
    next("生年月日年");
    keys(QStringLiteral("1990"));
    next("生年月日月");
    keys(QStringLiteral("4"));
    next("生年月日日");
    keys(QStringLiteral("1"));
    // The tab control takes the focus on to the first field of its page.
    next("事業所コード");
    EXPECT_EQ(form->tab_詳細->currentIndex(), 0);
    EXPECT_EQ(form->生年月日月->text(), QStringLiteral("04"));
    keys(QStringLiteral("0"));
    // The name beside each code is walked over.
    next("部門コード");
    EXPECT_EQ(form->事業所名->text(), QStringLiteral("本社"));
    keys(QStringLiteral("3"));
    next("セクションコード");
    keys(QStringLiteral("3"));
    next("役職コード");
    keys(QStringLiteral("5"));
    next("職責");
    EXPECT_FALSE(form->役職名->hasSelectedText());
    keys(QStringLiteral("Sales"));
    next("ログインID", Qt::Key_Return);
    keys(QStringLiteral("suzuki"));
    next("在籍区分");
    next("在籍区分名称");
    next("社員区分");
    next("社員区分名称");
    next("入社日付年号区分");
    next("入社日付年号区分名称");
    next("入社日付年");
    keys(QStringLiteral("2015"));
    next("入社日付月");
    keys(QStringLiteral("4"));
    next("入社日付日");
    keys(QStringLiteral("1"));
    next("退社日付年号区分");
    next("退社日付年号区分名称");
    next("退社日付年");
    next("退社日付月");
    next("退社日付日");
    // Through the trap at the end of the page into the address page, where the
    // postcode takes the digits typed next.
    next("郵便番号");
    EXPECT_EQ(form->tab_詳細->currentIndex(), 1);
    keys(QStringLiteral("1000001"));
    next("住所A");
    EXPECT_EQ(form->郵便番号->postcode(), QStringLiteral("100-0001"));
    const QString address = form->住所A->text();
    EXPECT_FALSE(address.isEmpty());
    next("住所B", Qt::Key_Return);
    compose(QStringLiteral("いちのに"), QStringLiteral("1-2"));
    next("住所C");
    next("電話");
    keys(QStringLiteral("03-1234-5678"));
    next("携帯電話");
    keys(QStringLiteral("090-1111-2222"));
    next("EMAIL");
    keys(QStringLiteral("hanako@example.jp"));

    // Out of the last field of the card: the save question, answered Yes.
    tree->messages.answers = {ui::Answer::Yes};
    next("コード");
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(form->コード->text(), QString());
    EXPECT_EQ(form->tab_詳細->currentIndex(), 0);

    const QStringList columns{QStringLiteral("姓"),       QStringLiteral("名"),       QStringLiteral("氏名"),
                              QStringLiteral("カナ"),     QStringLiteral("性別区分"), QStringLiteral("生年月日"),
                              QStringLiteral("事業所コード"), QStringLiteral("部門コード"), QStringLiteral("セクションコード"),
                              QStringLiteral("役職コード"), QStringLiteral("職責"),     QStringLiteral("ログインID"),
                              QStringLiteral("入社日付"), QStringLiteral("郵便番号"), QStringLiteral("住所A"),
                              QStringLiteral("住所B"),    QStringLiteral("電話"),     QStringLiteral("電話番号"),
                              QStringLiteral("携帯電話"), QStringLiteral("EMAIL")};
    const QStringList expected{QStringLiteral("鈴木"),     QStringLiteral("花子"),
                               QStringLiteral("鈴木 花子"), QStringLiteral("ｽｽﾞｷ ﾊﾅｺ"),
                               QStringLiteral("2"),        QStringLiteral("19900401"),
                               QStringLiteral("000"),      QStringLiteral("003"),
                               QStringLiteral("003"),      QStringLiteral("05"),
                               QStringLiteral("Sales"),    QStringLiteral("suzuki"),
                               QStringLiteral("20150401"), QStringLiteral("100-0001"),
                               address,                    QStringLiteral("1-2"),
                               QStringLiteral("03-1234-5678"), QStringLiteral("0312345678"),
                               QStringLiteral("090-1111-2222"), QStringLiteral("hanako@example.jp")};
    EXPECT_EQ(rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '00007'"), columns),
              QStringList{expected.join(QLatin1Char('|'))});
    // The address is the postcode master's.
    const QStringList master = rows(QStringLiteral("SELECT 住所A, 住所B FROM M郵便番号 WHERE 郵便番号 = '100-0001'"),
                                    {QStringLiteral("住所A"), QStringLiteral("住所B")});
    ASSERT_EQ(master.size(), 1);
    EXPECT_EQ(address, QString(master.first()).remove(QLatin1Char('|')));
    // One black log row.
    EXPECT_EQ(rows(QStringLiteral("SELECT 赤黒区分, 氏名 FROM L担当者 WHERE コード = '00007'"),
                   {QStringLiteral("赤黒区分"), QStringLiteral("氏名")}),
              QStringList{QStringLiteral("1|鈴木 花子")});
}

TEST_P(Keyboard, ShiftTabOutOfThePostcodeGoesBackToTheLastDateField) {
    start();
    keys(QStringLiteral("1"));
    next("姓");
    // Down the card to the end of page 0 and over.
    for (int i = 0; i < 60 && focused() != QStringLiteral("郵便番号"); ++i)
        press(Qt::Key_Tab);
    ASSERT_EQ(focused(), QStringLiteral("郵便番号"));
    QTest::keyClick(focus(), Qt::Key_Backtab, Qt::ShiftModifier);
    settle();
    EXPECT_EQ(focused(), QStringLiteral("退社日付日"));
    EXPECT_EQ(form->tab_詳細->currentIndex(), 0);
}

TEST_P(Keyboard, AFieldReachedByTheProgramTakesTypingAsOneReachedByTab) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 職責 = '営業' WHERE コード = '00001'")));
    start();
    readExisting();
    ASSERT_EQ(focused(), QStringLiteral("姓"));
    for (int i = 0; i < 40 && focused() != QStringLiteral("役職コード"); ++i)
        press(Qt::Key_Tab);
    ASSERT_EQ(focused(), QStringLiteral("役職コード"));
    // From the position's name the program moves on to the duties: its text is
    // selected, so what is typed replaces it, and the name keeps no highlight.
    next("職責");
    EXPECT_EQ(selected(), QStringLiteral("営業"));
    EXPECT_FALSE(form->役職名->hasSelectedText());
    keys(QStringLiteral("Manager"));
    EXPECT_EQ(form->職責->text(), QStringLiteral("Manager"));
}

TEST_P(Keyboard, TheSurnameAfterAChoiceInTheStaffListIsSelected) {
    ASSERT_TRUE(tree->mainExecute(QStringLiteral(
        "INSERT INTO M担当者 (コード,姓,名,氏名,事業所コード,部門コード,セクションコード,役職コード,在籍区分,社員区分) "
        "VALUES ('00002','佐藤','次郎','佐藤 次郎','000','003','003','05','0','1')")));
    start();
    keys(QStringLiteral("2"));
    bool chosen = false;
    QTimer::singleShot(0, form.get(), [&chosen] {
        auto* w = dynamic_cast<wnd担当者一覧*>(QApplication::activeModalWidget());
        if (!w)
            return;
        QApplication::setActiveWindow(w);
        // The list opens at the code typed; a click on it chooses.
        for (int i = 0; i < w->List担当者->topLevelItemCount(); ++i) {
            QTreeWidgetItem* item = w->List担当者->topLevelItem(i);
            if (item->text(0) != QStringLiteral("00002"))
                continue;
            QTest::mouseClick(w->List担当者->viewport(), Qt::LeftButton, Qt::NoModifier,
                              w->List担当者->visualItemRect(item).center());
            chosen = true;
            break;
        }
        if (w->isVisible())
            w->done(QDialog::Rejected);
    });
    QTest::keyClick(focus(), Qt::Key_Control);
    settle();
    ASSERT_TRUE(chosen);
    ASSERT_EQ(form->コード->text(), QStringLiteral("00002"));
    ASSERT_EQ(focused(), QStringLiteral("姓"));
    EXPECT_EQ(selected(), QStringLiteral("佐藤"));
    compose(QStringLiteral("かとう"), QStringLiteral("加藤"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("加藤"));
}

TEST_P(Keyboard, AWalkFromAFieldOnTheDisabledPagesStopsThereAndRunsNoTrap) {
    start();
    readExisting();
    form->tab_詳細->setCurrentIndex(1);
    settle();
    QTest::mouseClick(form->住所A, Qt::LeftButton);
    ASSERT_EQ(focused(), QStringLiteral("住所A"));
    // A new code: the card's pages are disabled until the next field exit.
    QTest::mouseClick(form->btn_最新コード, Qt::LeftButton);
    settle();
    ASSERT_FALSE(form->tab_詳細->isEnabled());
    ASSERT_EQ(focused(), QStringLiteral("コード"));
    const QString code = form->コード->text();
    // Closing is declined: the focus goes back where the user left, and as
    // that field cannot take it now it stays where it is.
    tree->messages.answers = {ui::Answer::No};
    form->close();
    settle();
    EXPECT_EQ(tree->messages.texts().size(), 1);
    EXPECT_EQ(focused(), QStringLiteral("コード"));
    // No trap ran: none turned the pages.
    EXPECT_EQ(form->tab_詳細->currentIndex(), 0);
    EXPECT_EQ(form->コード->text(), code);
    EXPECT_TRUE(form->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Engines, Keyboard, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
