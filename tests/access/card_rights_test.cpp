// The rights of the save button on the staff card: an operator whose personal
// row forbids changes may add staff members but not change them.

#include "access_fixture.h"

#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"

#include <QInputMethodEvent>
#include <QLineEdit>

#include <memory>

namespace access_test {
namespace {

const QString kNoRight = QStringLiteral("操作権限がありません。");

class CardRights : public AccessTest {
protected:
    void SetUp() override {
        AccessTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        // The record on the card, and the operator the installation remembers.
        addStaff(QStringLiteral("00001"), QStringLiteral("山田 太郎"),
                 {{QStringLiteral("姓"), QStringLiteral("山田")},
                  {QStringLiteral("名"), QStringLiteral("太郎")},
                  {QStringLiteral("部門コード"), QStringLiteral("003")},
                  {QStringLiteral("セクションコード"), QStringLiteral("003")},
                  {QStringLiteral("役職コード"), QStringLiteral("05")}});
        addStaff(QStringLiteral("00002"), QStringLiteral("鈴木 花子"),
                 {{QStringLiteral("暗証番号"), stored(QStringLiteral("WXYZ"))}});
        remember(QStringLiteral("00002"));
    }
    void TearDown() override {
        form.reset();
        AccessTest::TearDown();
    }

    // The personal row of the operator for this program.
    void forbid(const Columns& rights) {
        Columns row{{QStringLiteral("操作許可"), QStringLiteral("0")}};
        row.append(rights);
        addPersonalRow(QStringLiteral("00002"), kMenu, kProgram, row);
    }

    // Shows the card as the start-up does, on a company that asks for PINs.
    void start() {
        ASSERT_TRUE(ユーザ情報read(ctx()));
        ctx().pin.暗証番号有無 = 1;
        form = std::make_unique<frm担当者登録>(ctx());
        form->表示();
        QApplication::setActiveWindow(form.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        form->先頭項目focus();
    }
    // Types into a field: ASCII as keys, Japanese through the input method.
    void type(QLineEdit* field, const QString& text) {
        field->setFocus(Qt::MouseFocusReason);
        field->selectAll();
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
    void tab() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }

    // The operator answers the PIN dialog with the code and the PIN.
    static void confirm(msg暗証番号確認& dialog) {
        // Over the card the window manager would activate the dialog.
        QApplication::setActiveWindow(&dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClicks(dialog.担当者コード, QStringLiteral("2"));
        QTest::keyClick(dialog.担当者コード, Qt::Key_Tab);
        QTest::keyClicks(dialog.暗証番号, QStringLiteral("WXYZ"));
        QTest::keyClick(dialog.暗証番号, Qt::Key_Tab);
    }

    // A new record 00050 with its codes, ready to be saved.
    void typeNewRecord() {
        type(form->コード, QStringLiteral("50"));
        tab();
        ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
        type(form->事業所コード, QStringLiteral("0"));
        type(form->部門コード, QStringLiteral("3"));
        type(form->セクションコード, QStringLiteral("3"));
        type(form->役職コード, QStringLiteral("5"));
        type(form->姓, QStringLiteral("後藤"));
        tab();
        ASSERT_TRUE(form->btn_登録->isEnabled());
    }

    int count(const QString& from) const {
        const QStringList n =
            tree->mainRows(QStringLiteral("SELECT COUNT(*) AS n FROM ") + from, {QStringLiteral("n")});
        return n.size() == 1 ? n.first().toInt() : -1;
    }
    bool historyHas(const QString& piece) const {
        for (const QString& row : tree->history())
            if (row.contains(piece))
                return true;
        return false;
    }

    std::unique_ptr<frm担当者登録> form;
};

TEST_P(CardRights, AChangeRightOfOneRefusesTheSaveOfAnExistingRecordAndWritesNothing) {
    forbid({{QStringLiteral("修正許可"), QStringLiteral("1")}});
    start();
    type(form->コード, QStringLiteral("1"));
    tab();
    ASSERT_EQ(form->コード->text(), QStringLiteral("00001"));
    type(form->姓, QStringLiteral("山下"));
    tab();
    ASSERT_TRUE(form->btn_登録->isEnabled());
    // The remembered operator lacks the right: the PIN is asked, and the
    // confirmed operator still lacks it.
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& dialog) { confirm(dialog); });
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_EQ(tree->messages.texts(), QStringList{kNoRight});
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 姓 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("姓")}),
              QStringList{QStringLiteral("山田")});
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
    EXPECT_FALSE(historyHas(QStringLiteral("|出力終了 UPDATE M担当者")));
    // The card keeps the record, with the focus back in the field left for the
    // button: the Tab out of the surname had gone on to the given name.
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山下"));
    ASSERT_NE(form->focusWidget(), nullptr);
    EXPECT_EQ(form->focusWidget()->objectName(), QStringLiteral("名"));
}

TEST_P(CardRights, AChangeRightOfOneLetsANewRecordThroughWithoutAPin) {
    forbid({{QStringLiteral("修正許可"), QStringLiteral("1")}});
    start();
    typeNewRecord();
    DialogDriver driver;
    driver.arm([](msg暗証番号確認&) {});
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(driver.shown);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("登録しますか")});
    EXPECT_EQ(tree->mainRows(QStringLiteral("SELECT 姓 FROM M担当者 WHERE コード = '00050'"), {QStringLiteral("姓")}),
              QStringList{QStringLiteral("後藤")});
    EXPECT_EQ(count(QStringLiteral("L担当者")), 1);
    EXPECT_EQ(form->コード->text(), QString());
}

TEST_P(CardRights, AnInputRightOfOneRefusesTheNewRecordToo) {
    forbid({{QStringLiteral("修正許可"), QStringLiteral("1")}, {QStringLiteral("入力許可"), QStringLiteral("1")}});
    start();
    typeNewRecord();
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& dialog) { confirm(dialog); });
    tree->messages.answers = {ui::Answer::Yes};
    QTest::mouseClick(form->btn_登録, Qt::LeftButton);
    EXPECT_TRUE(driver.shown);
    EXPECT_EQ(tree->messages.texts(), QStringList{kNoRight});
    EXPECT_EQ(count(QStringLiteral("M担当者 WHERE コード = '00050'")), 0);
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
    EXPECT_EQ(form->コード->text(), QStringLiteral("00050"));
}

INSTANTIATE_TEST_SUITE_P(Engines, CardRights, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
} // namespace access_test
