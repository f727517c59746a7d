#pragma once

// The staff card on an installation tree, driven as its user drives it:
// typed keys, tabs and clicks, with the message boxes answered through the seam.
// Staff 00001 is on file before each test, and staff 00006 is the operator
// whom the start-up remembers.

#include "access/mod暗証番号.h"
#include "access/mod操作許可.h"
#include "shell/modデータ処理.h"
#include "startup/mod担当者登録起動.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"
#include "support/installation.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

// Failures show texts as texts.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

class StaffFixture : public ::testing::TestWithParam<testdb::Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(tree->mainExecute(QStringLiteral(
            "INSERT INTO M担当者 (コード,姓,名,氏名,カナ姓,カナ名,カナ,性別区分,生年月日,事業所コード,部門コード,"
            "セクションコード,役職コード,在籍区分,社員区分,入社日付,EMAIL) VALUES ('00001','山田','太郎','山田 太郎',"
            "'ﾔﾏﾀﾞ','ﾀﾛｳ','ﾔﾏﾀﾞ ﾀﾛｳ','1','19800115','000','003','003','05','0','1','20030401','yamada@example.jp')")));
        // The operator the start-up remembers: staff 00006 of the head office,
        // a row as the card saves one, with the class flags "1" of a new record,
        // so that where PINs are asked for a gate still asks.
        QStringList flags;
        for (int i = 0; i < 10; ++i)
            flags << QStringLiteral("処理分類%1操作許可").arg(i);
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral(
                "INSERT INTO M担当者 (コード,姓,名,氏名,事業所コード,部門コード,セクションコード,役職コード,"
                "在籍区分,社員区分,%1) VALUES ('%2','佐藤','一郎','佐藤 一郎','000','003','003','05','0','1',%3)")
                .arg(flags.join(QLatin1Char(',')), operatorCode(),
                     QStringList(10, QStringLiteral("'1'")).join(QLatin1Char(',')))));
        ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '") +
                                        operatorCode() + QStringLiteral("' WHERE 動作環境定義ID = '001'")));
    }
    void TearDown() override {
        form.reset();
        tree.reset();
    }

    Context& ctx() { return tree->ctx(); }

    // The staff code of the remembered operator.
    static QString operatorCode() { return QStringLiteral("00006"); }

    // Starts the program as it starts: the databases, the company, the right
    // to run, the command line and the previous-instance rule, then the card.
    void start(const QString& line = QString()) {
        tree->sys.line = line;
        tree->newContext();
        form = std::make_unique<frm担当者登録>(ctx());
        // A new start is a new process: the one before has ended.
        instance_ = std::make_unique<os::SingleInstance>();
        try {
            担当者登録main(
                ctx(), *form,
                [](Context& c) {
                    return 操作許可chk(c, QStringLiteral("営業支援データ管理"), c.プログラムID, 操作番号::起動) ==
                           許可回答::許可;
                },
                *instance_);
        } catch (const ProcessEnded& e) {
            FAIL() << "the start ended the process with " << e.code << ": "
                   << tree->messages.texts().join(QLatin1Char('\n')).toStdString();
        }
        QApplication::setActiveWindow(form.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        // The window became active after the start's focus: it is put there again.
        form->先頭項目focus();
    }

    QString focused() const {
        QWidget* w = QApplication::focusWidget();
        return w ? w->objectName() : QStringLiteral("(none)");
    }

    // Types into a field: ASCII as keys, Japanese through the input method.
    void type(QWidget* field, const QString& text) {
        field->setFocus(Qt::MouseFocusReason);
        if (auto* line = qobject_cast<QLineEdit*>(field))
            line->selectAll();
        bool ascii = true;
        for (QChar ch : text)
            ascii = ascii && ch.unicode() < 0x80;
        if (ascii) {
            QTest::keyClicks(field, text);
            return;
        }
        QInputMethodEvent commit;
        commit.setCommitString(text);
        QCoreApplication::sendEvent(field, &commit);
    }

    // Empties a field as its user does: select all, delete.
    void erase(QWidget* field) {
        field->setFocus(Qt::MouseFocusReason);
        if (auto* line = qobject_cast<QLineEdit*>(field))
            line->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
    }

    void tab(bool backwards = false) {
        QTest::keyClick(QApplication::focusWidget(), backwards ? Qt::Key_Backtab : Qt::Key_Tab,
                        backwards ? Qt::ShiftModifier : Qt::NoModifier);
    }

    // Reads staff 00001 through the code field.
    void readExisting() {
        type(form->コード, QStringLiteral("1"));
        tab();
        ASSERT_EQ(form->コード->text(), QStringLiteral("00001"));
        ASSERT_FALSE(ctx().screen.新規フラグ);
    }

    // The four codes of the organisation, typed in the order the gates ask for,
    // as a new record needs them before it may be saved.
    void typeCodes() {
        type(form->事業所コード, QStringLiteral("0"));
        type(form->部門コード, QStringLiteral("3"));
        type(form->セクションコード, QStringLiteral("3"));
        type(form->役職コード, QStringLiteral("5"));
        tab();
        ASSERT_TRUE(form->btn_登録->isEnabled());
    }

    // Rows of the main database, columns joined by '|'.
    QStringList rows(const QString& sql, const QStringList& columns) const { return tree->mainRows(sql, columns); }
    int count(const QString& table) const {
        const QStringList n = rows(QStringLiteral("SELECT COUNT(*) AS n FROM ") + table, {QStringLiteral("n")});
        return n.size() == 1 ? n.first().toInt() : -1;
    }

    std::unique_ptr<TestInstallation> tree;
    std::unique_ptr<frm担当者登録> form;

private:
    std::unique_ptr<os::SingleInstance> instance_;
};
