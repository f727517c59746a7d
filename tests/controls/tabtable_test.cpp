#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

using namespace controls;

namespace {

void activate(QWidget* window) {
    window->show();
    QApplication::setActiveWindow(window);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
}

void tab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }

void backtab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier); }

// Records the reason of the last focus a widget got.
class FocusReasons : public QObject {
public:
    Qt::FocusReason last = Qt::NoFocusReason;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn)
            last = static_cast<QFocusEvent*>(event)->reason();
        return false;
    }
};

// A form with a tab table over controls of every kind, added out of order.
struct Form {
    QWidget window;
    TextField* a = new TextField(&window);
    TextField* b = new TextField(&window);
    TextField* disabled = new TextField(&window);
    TextField* hidden = new TextField(&window);
    TextField* noStop = new TextField(&window);
    QPushButton* button = new QPushButton("登録", &window);
    ReportList* list = new ReportList(&window);
    QComboBox* combo = new QComboBox(&window);
    Trap* trap = new Trap(&window);
    TabTable table{&window};

    Form() {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* w : std::initializer_list<QWidget*>{a, b, disabled, hidden, noStop, button, list, combo, trap})
            layout->addWidget(w);
        combo->addItems({"男", "女"});
        disabled->setEnabled(false);
        hidden->hide();
        noStop->setTabStop(false);
        table.add(trap, 8);
        table.add(button, 5);
        table.add(a, 0);
        table.add(combo, 7);
        table.add(hidden, 3);
        table.add(b, 1);
        table.add(noStop, 4);
        table.add(list, 6);
        table.add(disabled, 2);
    }
};

} // namespace

TEST(TabTable, KnowsItsControlsAndIndexes) {
    Form form;
    EXPECT_EQ(form.table.tabIndex(form.button), 5);
    EXPECT_EQ(form.table.tabIndex(&form.window), -1);
    ASSERT_EQ(form.table.controls().size(), 9);
    EXPECT_EQ(form.table.controls().first(), form.trap);
    EXPECT_EQ(form.table.controls().last(), form.disabled);
}

TEST(TabTable, TabStops) {
    Form form;
    EXPECT_TRUE(TabTable::isTabStop(form.a));
    EXPECT_FALSE(TabTable::isTabStop(form.noStop));
    EXPECT_TRUE(TabTable::isTabStop(form.trap));
    EXPECT_TRUE(TabTable::isTabStop(form.button));
    form.button->setFocusPolicy(Qt::ClickFocus);
    EXPECT_FALSE(TabTable::isTabStop(form.button));
}

TEST(TabTable, TabFollowsTheIndexesSkipsWhatCannotStopAndWraps) {
    Form form;
    activate(&form.window);
    form.a->setFocus();
    ASSERT_TRUE(form.a->hasFocus());

    const QList<QWidget*> expected{form.b, form.button, form.list, form.combo, form.trap, form.a};
    for (QWidget* next : expected) {
        tab();
        EXPECT_EQ(QApplication::focusWidget(), next) << next->metaObject()->className();
    }
}

TEST(TabTable, ShiftTabGoesBackAndWraps) {
    Form form;
    activate(&form.window);
    form.a->setFocus();

    const QList<QWidget*> expected{form.trap, form.combo, form.list, form.button, form.b, form.a};
    for (QWidget* next : expected) {
        backtab();
        EXPECT_EQ(QApplication::focusWidget(), next) << next->metaObject()->className();
    }
    // Shift with Tab is the same key.
    form.b->setFocus();
    QTest::keyClick(form.b, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), form.a);
}

TEST(TabTable, ReasonsAreTabAndBacktab) {
    Form form;
    activate(&form.window);
    FocusReasons reasons;
    form.b->installEventFilter(&reasons);
    form.a->setFocus();
    tab();
    EXPECT_EQ(reasons.last, Qt::TabFocusReason);
    form.button->setFocus();
    backtab();
    EXPECT_EQ(QApplication::focusWidget(), form.b);
    EXPECT_EQ(reasons.last, Qt::BacktabFocusReason);
}

TEST(TabTable, ATrapTakesTheFocus) {
    Form form;
    activate(&form.window);
    form.combo->setFocus();
    tab();
    EXPECT_EQ(QApplication::focusWidget(), form.trap);
    EXPECT_TRUE(form.trap->hasFocus());
}

TEST(TabTable, ControlsEnabledOrShownAgainAreStopsAgain) {
    Form form;
    activate(&form.window);
    form.disabled->setEnabled(true);
    form.hidden->show();
    form.b->setFocus();
    tab();
    EXPECT_EQ(QApplication::focusWidget(), form.disabled);
    tab();
    EXPECT_EQ(QApplication::focusWidget(), form.hidden);
}

TEST(TabTable, OfEqualIndexesTheLaterAddedComesFirst) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* start = new TextField(&window);
    auto* earlier = new TextField(&window);
    auto* later = new TextField(&window);
    for (QWidget* w : {start, earlier, later})
        layout->addWidget(w);
    TabTable table(&window);
    table.add(start, 0);
    table.add(earlier, 1);
    table.add(later, 1);
    activate(&window);
    start->setFocus();
    tab();
    EXPECT_EQ(QApplication::focusWidget(), later);
    tab();
    EXPECT_EQ(QApplication::focusWidget(), earlier);
    tab();
    EXPECT_EQ(QApplication::focusWidget(), start);
}

TEST(TabTable, OtherKeysReachTheControl) {
    Form form;
    activate(&form.window);
    form.a->setFocus();
    QTest::keyClicks(form.a, "abc");
    EXPECT_EQ(form.a->text(), "abc");
    EXPECT_TRUE(form.a->hasFocus());
}

namespace {

// A form whose focus handlers write what they see into a log.
struct LoggedForm {
    QWidget window;
    TextField* a = new TextField(&window);
    TextField* b = new TextField(&window);
    QComboBox* combo = new QComboBox(&window);
    FocusEvents events{&window};
    QStringList log;

    LoggedForm() {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* w : std::initializer_list<QWidget*>{a, b, combo})
            layout->addWidget(w);
        combo->addItems({"男", "女"});
        const QList<QPair<QWidget*, QString>> named{{a, "a"}, {b, "b"}, {combo, "combo"}};
        for (const auto& [control, name] : named) {
            events.onGotFocus(control, [this, name = name] { log << name + "_GotFocus"; });
            events.onLostFocus(control, [this, name = name] { log << name + "_LostFocus"; });
        }
    }
};

} // namespace

TEST(FocusEvents, MovesBetweenControlsFireLostThenGot) {
    LoggedForm form;
    activate(&form.window);
    form.b->setFocus();
    form.log.clear();
    form.a->setFocus();
    EXPECT_EQ(form.log, (QStringList{"b_LostFocus", "a_GotFocus"}));
    form.log.clear();
    QTest::keyClick(form.a, Qt::Key_Tab);
    EXPECT_EQ(form.log, (QStringList{"a_LostFocus", "b_GotFocus"}));
    form.log.clear();
    form.combo->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(form.log, (QStringList{"b_LostFocus", "combo_GotFocus"}));
}

TEST(FocusEvents, AnotherWindowTakingTheActivationFiresNothing) {
    LoggedForm form;
    activate(&form.window);
    form.b->setFocus();
    form.log.clear();

    QWidget other;
    other.resize(100, 100);
    activate(&other);
    EXPECT_FALSE(form.window.isActiveWindow());
    activate(&form.window);
    EXPECT_TRUE(form.b->hasFocus());
    EXPECT_TRUE(form.log.isEmpty()) << form.log.join(", ").toStdString();
}

TEST(FocusEvents, ADropDownOpeningFiresNothing) {
    LoggedForm form;
    activate(&form.window);
    form.combo->setFocus();
    form.log.clear();

    form.combo->showPopup();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.combo->view()->window()));
    EXPECT_TRUE(form.combo->view()->isVisible());
    form.combo->hidePopup();
    EXPECT_TRUE(QTest::qWaitFor([&form] { return !form.combo->view()->isVisible(); }));
    EXPECT_TRUE(form.combo->hasFocus());
    EXPECT_TRUE(form.log.isEmpty()) << form.log.join(", ").toStdString();
}

TEST(FocusEvents, HandlersMayMoveTheFocus) {
    LoggedForm form;
    // A gate: entering b sends the focus back to a.
    form.events.onGotFocus(form.b, [&form] { form.a->setFocus(); });
    activate(&form.window);
    form.a->setFocus();
    form.log.clear();
    form.b->setFocus();
    EXPECT_TRUE(form.a->hasFocus());
    EXPECT_EQ(form.log, (QStringList{"a_LostFocus", "b_GotFocus", "b_LostFocus", "a_GotFocus"}));
}
