#pragma once

// The staff card on an installation tree with its list windows, driven as
// the user drives them. A modal window blocks in its own loop: the test code
// for it is queued before the opening.

#include "platform/controls/fields.h"
#include "search/mod検索窓.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "support/installation.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

class SearchWindows : public ::testing::TestWithParam<testdb::Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(tree->mainExecute(QStringLiteral(
            "INSERT INTO M担当者 (コード,姓,名,氏名,カナ姓,カナ名,カナ,性別区分,事業所コード,部門コード,"
            "セクションコード,役職コード,在籍区分,社員区分) VALUES ('00001','山田','太郎','山田 太郎','ﾔﾏﾀﾞ','ﾀﾛｳ',"
            "'ﾔﾏﾀﾞ ﾀﾛｳ','1','000','003','003','05','0','1'),('00002','佐藤','花子','佐藤 花子','ｻﾄｳ','ﾊﾅｺ',"
            "'ｻﾄｳ ﾊﾅｺ','2','001','001','001','08','0','3'),('00003','鈴木','一郎','鈴木 一郎','ｽｽﾞｷ','ｲﾁﾛｳ',"
            "'ｽｽﾞｷ ｲﾁﾛｳ','1','002','004','005','03','2','1')")));
    }
    void TearDown() override {
        // Test code queued for a window that never opened must not run in the next test.
        for (const auto& timer : timers_) {
            if (timer->isActive())
                ADD_FAILURE() << "a window the test waited for never opened";
        }
        timers_.clear();
        form.reset();
        tree.reset();
    }

    Context& ctx() { return tree->ctx(); }

    void start() {
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
        ASSERT_TRUE(ユーザ情報read(ctx()));
        form = std::make_unique<frm担当者登録>(ctx());
        form->表示();
        QApplication::setActiveWindow(form.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        form->先頭項目focus();
    }

    QString focused() const {
        QWidget* w = QApplication::focusWidget();
        return w ? w->objectName() : QStringLiteral("(none)");
    }

    void type(QLineEdit* field, const QString& text) {
        field->setFocus(Qt::MouseFocusReason);
        field->selectAll();
        QTest::keyClicks(field, text);
    }

    void tab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }

    // Reads staff 00001 through the code field: every code of the card filled.
    void readExisting() {
        type(form->コード, QStringLiteral("1"));
        tab();
        ASSERT_EQ(form->コード->text(), QStringLiteral("00001"));
    }

    // Queues the test code for the modal window of type W that the next call
    // opens. The window is closed by the test code; one left open is a failure
    // and is closed so that the test goes on.
    template <typename W>
    void whenShown(std::function<void(W&)> body) {
        auto& timer = timers_.emplace_back(std::make_unique<QTimer>());
        timer->setSingleShot(true);
        QObject::connect(timer.get(), &QTimer::timeout, [body] {
            QWidget* modal = QApplication::activeModalWidget();
            auto* w = dynamic_cast<W*>(modal);
            if (!w) {
                ADD_FAILURE() << "the expected window is not shown";
                if (auto* d = qobject_cast<QDialog*>(modal))
                    d->done(QDialog::Rejected);
                return;
            }
            // The window manager would activate the new window; focus needs it.
            QApplication::setActiveWindow(w);
            body(*w);
            if (w->isVisible()) {
                ADD_FAILURE() << "the window was left open";
                w->done(QDialog::Rejected);
            }
        });
        timer->start(0);
    }

    // A click on an item of a list, as the user clicks it.
    static void clickItem(QTreeWidget* list, QTreeWidgetItem* item) {
        const QPoint at = list->visualItemRect(item).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }
    static QStringList codes(const QTreeWidget* list) {
        QStringList all;
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            all << list->topLevelItem(i)->text(0);
        return all;
    }
    static QTreeWidgetItem* item(const QTreeWidget* list, const QString& code) {
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            if (list->topLevelItem(i)->text(0) == code)
                return list->topLevelItem(i);
        }
        return nullptr;
    }

    // Adds staff rows with codes from..to, enrolment class 0.
    void addStaff(int from, int to) {
        for (int start = from; start <= to; start += 400) {
            QString sql = QStringLiteral("INSERT INTO M担当者 (コード,氏名,事業所コード,在籍区分,社員区分) VALUES ");
            for (int i = start; i <= std::min(to, start + 399); ++i) {
                if (i != start)
                    sql += QLatin1Char(',');
                sql += QStringLiteral("('%1','担当%1','000','0','1')").arg(i, 5, 10, QLatin1Char('0'));
            }
            ASSERT_TRUE(tree->mainExecute(sql));
        }
    }

    std::unique_ptr<TestInstallation> tree;
    std::unique_ptr<frm担当者登録> form;

private:
    std::vector<std::unique_ptr<QTimer>> timers_;
};
