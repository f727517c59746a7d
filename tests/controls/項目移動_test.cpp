#include "toolkit/項目移動.h"

#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace controls;

namespace {

void activate(QWidget* window) {
    window->show();
    QApplication::setActiveWindow(window);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
}

// The head of the staff card: a code, the save button, then controls the walk
// passes over (a drop-down, a list) before the next field.
struct Header {
    QWidget window;
    TextField* コード = new TextField(&window);
    QPushButton* btn_登録 = new QPushButton("登録", &window);
    QComboBox* 性別区分名称 = new QComboBox(&window);
    ReportList* List付属書類 = new ReportList(&window);
    TextField* 姓 = new TextField(&window);
    QPushButton* btn_終了 = new QPushButton("終了", &window);
    TabTable table{&window};

    Header() {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* w : std::initializer_list<QWidget*>{コード, btn_登録, 性別区分名称, List付属書類, 姓, btn_終了})
            layout->addWidget(w);
        table.add(コード, 0);
        table.add(btn_登録, 1);
        table.add(性別区分名称, 2);
        table.add(List付属書類, 3);
        table.add(btn_終了, 5);
        table.add(姓, 4);
    }
};

} // namespace

TEST(次項目find, AFocusableTargetStays) {
    Header form;
    QWidget* 移動先項目 = form.btn_登録;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.btn_登録);
}

TEST(次項目find, PassesOverListsAndDropDowns) {
    Header form;
    QWidget* 移動先項目 = form.性別区分名称;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.姓);
}

TEST(次項目find, OfEqualIndexesTheLaterInTheTableWins) {
    QWidget window;
    auto* first = new QPushButton("1", &window);
    auto* second = new QPushButton("2", &window);
    auto* start = new TextField(&window);
    TabTable table(&window);
    table.add(start, 0);
    table.add(first, 3);
    table.add(second, 3);
    start->setEnabled(false);
    QWidget* 移動先項目 = start;
    次項目find(table, 移動先項目);
    EXPECT_EQ(移動先項目, second);
}

TEST(次項目find, FieldsThatAreNoTabStopsAreNoStops) {
    Header form;
    form.姓->setTabStop(false);
    QWidget* 移動先項目 = form.List付属書類;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.btn_終了);
}

TEST(次項目find, ATargetOutsideTheTableFindsTheFirstStop) {
    Header form;
    QWidget outside;
    QWidget* 移動先項目 = &outside;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.コード);
    QWidget* none = nullptr;
    次項目find(form.table, none);
    EXPECT_EQ(none, nullptr);
}

// A disabled save button: the focus lands on the next control of a listed
// kind by tab index, over the drop-down and the list between.
TEST(項目focus, ADisabledButtonSendsTheFocusToTheNextStop) {
    Header form;
    activate(&form.window);
    form.コード->setFocus();
    form.btn_登録->setEnabled(false);
    QWidget* 移動先項目 = form.btn_登録;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.姓);
    項目focus(form.table, form.btn_登録);
    EXPECT_EQ(QApplication::focusWidget(), form.姓);
}

TEST(項目focus, AFocusableTargetTakesTheFocus) {
    Header form;
    activate(&form.window);
    form.コード->setFocus();
    項目focus(form.table, form.btn_終了);
    EXPECT_EQ(QApplication::focusWidget(), form.btn_終了);
}

// Behind all others and disabled: the walk keeps the target, which cannot take
// the focus, so the focus stays where it was.
TEST(項目focus, ADisabledTargetBehindAllOthersLeavesTheFocus) {
    Header form;
    activate(&form.window);
    form.コード->setFocus();
    form.btn_終了->setEnabled(false);
    QWidget* 移動先項目 = form.btn_終了;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.btn_終了);
    項目focus(form.table, form.btn_終了);
    EXPECT_EQ(QApplication::focusWidget(), form.コード);
}

// Behind all others, shown and enabled but no tab stop: the walk keeps the
// target, and the target can take the focus.
TEST(項目focus, ATargetBehindAllOthersThatCanTakeTheFocusGetsIt) {
    Header form;
    activate(&form.window);
    form.コード->setFocus();
    form.btn_終了->setFocusPolicy(Qt::ClickFocus);
    QWidget* 移動先項目 = form.btn_終了;
    次項目find(form.table, 移動先項目);
    EXPECT_EQ(移動先項目, form.btn_終了);
    項目focus(form.table, form.btn_終了);
    EXPECT_EQ(QApplication::focusWidget(), form.btn_終了);
}

// A page of a tab control that is not shown: its controls still count for the
// walk, and the focus call then does nothing.
TEST(項目focus, AControlOnAHiddenTabPageCountsButTakesNoFocus) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* コード = new TextField(&window);
    auto* tab_詳細 = new QTabWidget(&window);
    auto* page0 = new QWidget;
    auto* page1 = new QWidget;
    tab_詳細->addTab(page0, "所属");
    tab_詳細->addTab(page1, "住所");
    auto* 退社日付日 = new TextField(page0);
    auto* 郵便番号 = new ZipField(page1);
    auto* btn_終了 = new QPushButton("終了", &window);
    layout->addWidget(コード);
    layout->addWidget(tab_詳細);
    layout->addWidget(btn_終了);
    TabTable table(&window);
    table.add(コード, 0);
    table.add(退社日付日, 1);
    table.add(郵便番号, 2);
    table.add(btn_終了, 3);
    activate(&window);
    tab_詳細->setCurrentIndex(0);
    ASSERT_FALSE(郵便番号->isVisible());
    ASSERT_FALSE(郵便番号->isHidden());
    コード->setFocus();

    退社日付日->setEnabled(false);
    QWidget* 移動先項目 = 退社日付日;
    次項目find(table, 移動先項目);
    EXPECT_EQ(移動先項目, 郵便番号);

    項目focus(table, 退社日付日);
    EXPECT_EQ(QApplication::focusWidget(), コード);
    EXPECT_FALSE(郵便番号->hasFocus());

    // Shown, the page's control takes it.
    tab_詳細->setCurrentIndex(1);
    項目focus(table, 郵便番号);
    EXPECT_EQ(QApplication::focusWidget(), 郵便番号);
}

TEST(次項目find, AControlInADisabledContainerCountsByItsOwnFlag) {
    // The pages of the card disabled as a whole: their fields keep their own
    // Enabled flag, so the walk stops at them and not at the trap behind them.
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* コード = new TextField(&window);
    auto* tab_詳細 = new QTabWidget(&window);
    auto* page = new QWidget;
    tab_詳細->addTab(page, "住所");
    auto* 住所A = new TextField(page);
    auto* 住所B = new TextField(page);
    auto* 頁2終了 = new Trap(&window);
    layout->addWidget(コード);
    layout->addWidget(tab_詳細);
    layout->addWidget(頁2終了);
    TabTable table(&window);
    table.add(コード, 0);
    table.add(住所A, 1);
    table.add(住所B, 2);
    table.add(頁2終了, 3);
    activate(&window);
    コード->setFocus();

    tab_詳細->setEnabled(false);
    ASSERT_FALSE(住所A->isEnabled());
    QWidget* 移動先項目 = 住所A;
    次項目find(table, 移動先項目);
    EXPECT_EQ(移動先項目, 住所A);
    // It cannot take the focus now: the focus stays where it is.
    項目focus(table, 住所A);
    EXPECT_EQ(QApplication::focusWidget(), コード);

    // Its own flag off, it is passed over.
    tab_詳細->setEnabled(true);
    住所A->setEnabled(false);
    tab_詳細->setEnabled(false);
    移動先項目 = 住所A;
    次項目find(table, 移動先項目);
    EXPECT_EQ(移動先項目, 住所B);
}

TEST(項目focus, AHiddenControlIsPassedOver) {
    Header form;
    activate(&form.window);
    form.コード->setFocus();
    form.btn_登録->hide();
    項目focus(form.table, form.btn_登録);
    EXPECT_EQ(QApplication::focusWidget(), form.姓);
}

TEST(Windows版get, AnswersAnyOtherVersion) { EXPECT_EQ(Windows版get(), -1); }

TEST(画面解像度get, ReadsThePrimaryScreen) {
    short 画面幅 = -1;
    short 画面高 = -1;
    画面解像度get(画面幅, 画面高);
    const QSize size = QGuiApplication::primaryScreen()->size();
    EXPECT_GT(画面幅, 0);
    EXPECT_GT(画面高, 0);
    EXPECT_EQ(画面幅, size.width());
    EXPECT_EQ(画面高, size.height());
}

TEST(SetWindowTop, KeepsPositionAndSize) {
    QWidget window;
    window.setGeometry(40, 50, 200, 120);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QRect before = window.geometry();
    SetWindowTop(&window);
    EXPECT_EQ(window.geometry(), before);
    EXPECT_TRUE(window.isVisible());
    SetWindowTop(nullptr);
}
