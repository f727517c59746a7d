#pragma once

// A fresh installation with both databases open, the staff rows a test needs,
// and a way to drive the PIN dialog while the gate shows it.

#include "access/msg暗証番号確認.h"
#include "shell/modデータ処理.h"
#include "shell/暗証番号.h"
#include "support/installation.h"

#include <QApplication>
#include <QObject>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace access_test {

using testdb::Engine;

inline const QString kMenu = QStringLiteral("営業支援データ管理");
inline const QString kProgram = QStringLiteral("担当者登録");

// Columns of a staff row; a null QString is written as NULL.
using Columns = QList<QPair<QString, QString>>;

class AccessTest : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        STAFF_REQUIRE_ENGINE(GetParam());
        tree = std::make_unique<TestInstallation>(GetParam());
        ASSERT_TRUE(tree->ok()) << tree->error().toStdString();
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
    }

    Context& ctx() { return tree->ctx(); }

    static QString literal(const QString& value) {
        return value.isNull() ? QStringLiteral("NULL") : QStringLiteral("'") + value + QStringLiteral("'");
    }

    // A present head-office staff member with every class flag and right 0,
    // changed or completed by the extra columns.
    void addStaff(const QString& code, const QString& name, const Columns& extra = {}) {
        Columns row{{QStringLiteral("コード"), code},
                    {QStringLiteral("氏名"), name},
                    {QStringLiteral("事業所コード"), QStringLiteral("000")},
                    {QStringLiteral("在籍区分"), QStringLiteral("0")},
                    {QStringLiteral("退社日付"), QStringLiteral("")}};
        for (int i = 0; i < 10; ++i)
            row.append({QStringLiteral("処理分類%1操作許可").arg(i), QStringLiteral("0")});
        for (const auto& [column, value] : extra) {
            bool replaced = false;
            for (auto& [c, v] : row) {
                if (c == column) {
                    v = value;
                    replaced = true;
                }
            }
            if (!replaced)
                row.append({column, value});
        }
        QStringList columns;
        QStringList values;
        for (const auto& [c, v] : row) {
            columns.append(c);
            values.append(literal(v));
        }
        ASSERT_TRUE(tree->mainExecute(QStringLiteral("INSERT INTO M担当者 (%1) VALUES (%2)")
                                          .arg(columns.join(QStringLiteral(", ")), values.join(QStringLiteral(", ")))));
    }

    // The PIN column as the program stores it.
    QString stored(const QString& plain) { return 暗証番号encode(ctx(), plain); }

    void addPersonalRow(const QString& code, const QString& menu, const QString& program, const Columns& rights) {
        QStringList columns{QStringLiteral("担当者コード"), QStringLiteral("業務メニュ"),
                            QStringLiteral("プログラムID")};
        QStringList values{literal(code), literal(menu), literal(program)};
        for (const auto& [c, v] : rights) {
            columns.append(c);
            values.append(literal(v));
        }
        ASSERT_TRUE(tree->mainExecute(QStringLiteral("INSERT INTO 担当者別操作許可プログラム (%1) VALUES (%2)")
                                          .arg(columns.join(QStringLiteral(", ")), values.join(QStringLiteral(", ")))));
    }

    void remember(const QString& code) {
        ASSERT_TRUE(tree->configExecute(QStringLiteral("UPDATE 動作環境定義 SET 起動担当者コード = '") + code +
                                        QStringLiteral("' WHERE 動作環境定義ID = '001'")));
    }

    // An environment table that cannot remember an operator: the column is
    // gone, dropped before the program's connections open.
    void loseRememberedOperatorColumn() {
        tree->newContext();
        ASSERT_TRUE(tree->configExecute(QStringLiteral("ALTER TABLE 動作環境定義 DROP COLUMN 起動担当者コード")));
        ASSERT_TRUE(環境DBopen(ctx()));
        ASSERT_TRUE(業務DBopen(ctx()));
    }

    // The operator the environment row remembers ("~" for none).
    QString rememberedOperator() const {
        const QStringList rows = tree->configRows(QStringLiteral("SELECT 起動担当者コード FROM 動作環境定義"),
                                                  {QStringLiteral("起動担当者コード")});
        return rows.size() == 1 ? rows.first() : rows.join(QLatin1Char(','));
    }

    std::unique_ptr<TestInstallation> tree;
};

// Runs a body on the PIN dialog once the gate has shown it. Should the body
// leave the dialog open (a failed expectation), it is given up, so that a
// test never hangs in the dialog.
class DialogDriver {
public:
    void arm(std::function<void(msg暗証番号確認&)> body) {
        QTimer::singleShot(0, &guard_, [this, body = std::move(body)] {
            msg暗証番号確認* form = nullptr;
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (w->isVisible() && w->objectName() == QStringLiteral("msg暗証番号確認"))
                    form = dynamic_cast<msg暗証番号確認*>(w);
            }
            if (!form)
                return;
            shown = true;
            caption = form->windowTitle();
            EXPECT_TRUE(QTest::qWaitForWindowActive(form));
            body(*form);
            if (form->isVisible()) {
                leftOpen = true;
                form->reject();
            }
        });
    }
    bool shown = false;
    bool leftOpen = false;
    QString caption;

private:
    QObject guard_; // the pending body dies with the driver
};

inline QWidget* focused() { return QApplication::focusWidget(); }

} // namespace access_test
