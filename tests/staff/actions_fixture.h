#pragma once

// The card's own actions: walking, new codes, deleting, and a staff member's
// own PIN. Rows are made outside the program, as other programs of the suite
// would leave them.

#include "access/msg担当者暗証番号設定.h"
#include "staff_fixture.h"

#include <QDir>
#include <QFile>
#include <QTimer>

#include <functional>

class StaffActions : public StaffFixture {
protected:
    // A staff row of an office, on top of staff 00001 of the head office.
    void addStaff(const QString& code, const QString& office, const QString& 姓) {
        ASSERT_TRUE(tree->mainExecute(
            QStringLiteral(
                "INSERT INTO M担当者 (コード,姓,名,氏名,事業所コード,部門コード,セクションコード,役職コード) "
                "VALUES ('%1','%2','花子','%2 花子','%3','003','003','05')")
                .arg(code, 姓, office)));
    }

    // A row of a business table that refers to the staff code.
    void useIn(const QString& table, const QString& code) {
        const QString sql =
            table.startsWith(QLatin1Char('M'))
                ? QStringLiteral("INSERT INTO %1 (コード,名称,担当者コード) VALUES ('001','取引先','%2')")
                      .arg(table, code)
                : QStringLiteral("INSERT INTO %1 (事業所コード,番号基準日付,伝票No,伝票日付,担当者コード) "
                                 "VALUES ('000','20260101','00000001','20260105','%2')")
                      .arg(table, code);
        ASSERT_TRUE(tree->mainExecute(sql)) << sql.toStdString();
    }

    // The codes of M担当者 in order.
    QStringList codes() const {
        return rows(QStringLiteral("SELECT コード FROM M担当者 ORDER BY コード"), {QStringLiteral("コード")});
    }

    QString question(const QString& second) const { return QStringLiteral("入力がありました。") + QChar(13) + second; }

    // The run history's record of a statement: its quotes are doubled there.
    bool inHistory(const QString& sql) const {
        QString doubled = sql;
        doubled.replace(QLatin1Char('\''), QStringLiteral("''"));
        for (const QString& row : tree->history())
            if (row.endsWith(QStringLiteral("|出力終了 ") + doubled))
                return true;
        return false;
    }

    // A file under the company's photo folder.
    QString photoPath(const QString& relative) { return ctx().company.写真フォルダ + QLatin1Char('/') + relative; }
    void makeFile(const QString& path) {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("not a picture");
    }

    // Changes 姓 and leaves the field, as the user does.
    void change姓(const QString& text) {
        type(form->姓, text);
        tab();
    }
};

// Runs a body on the PIN setting form once the card has opened it; a form left
// open by the body is given up, so that a test never hangs in it.
class PinFormDriver {
public:
    void arm(std::function<void(msg担当者暗証番号設定&)> body) {
        QTimer::singleShot(0, &guard_, [this, body = std::move(body)] {
            msg担当者暗証番号設定* form = nullptr;
            for (QWidget* w : QApplication::topLevelWidgets())
                if (w->isVisible() && w->objectName() == QStringLiteral("msg担当者暗証番号設定"))
                    form = dynamic_cast<msg担当者暗証番号設定*>(w);
            if (!form)
                return;
            shown = true;
            QApplication::setActiveWindow(form);
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

private:
    QObject guard_;
};
