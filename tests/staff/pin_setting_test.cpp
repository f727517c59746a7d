// A staff member's own PIN, set from their own card through the PIN setting form.

#include "actions_fixture.h"

#include "shell/暗証番号.h"

#include <algorithm>

using testdb::Engine;

namespace {

class PinSetting : public StaffActions {
protected:
    // Staff 00001 with the PIN "ABCD", at the card as the operator.
    void SetUp() override {
        StaffActions::SetUp();
        if (HasFatalFailure() || IsSkipped())
            return;
        start();
        ASSERT_TRUE(tree->mainExecute(QStringLiteral("UPDATE M担当者 SET 暗証番号 = '") +
                                      暗証番号encode(ctx(), QStringLiteral("ABCD")) + QStringLiteral("'")));
        ctx().op.操作担当者コード = QStringLiteral("00001");
        readExisting();
        ASSERT_EQ(ctx().担当者情報.暗証番号, QStringLiteral("ABCD"));
    }

    // Double-clicks the background of the first page, where no control lies.
    void openForm(std::function<void(msg担当者暗証番号設定&)> body) {
        driver.arm(std::move(body));
        QTest::mouseDClick(form->bak_その他, Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
    }

    // Types into a field of the form and leaves it with Tab.
    void enter(QLineEdit* field, const QString& text) {
        field->setFocus(Qt::MouseFocusReason);
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Tab);
    }

    QString storedPin() const {
        const QStringList pin =
            rows(QStringLiteral("SELECT 暗証番号 FROM M担当者 WHERE コード = '00001'"), {QStringLiteral("暗証番号")});
        return pin.size() == 1 ? pin.first() : QString();
    }

    PinFormDriver driver;
};

TEST_P(PinSetting, TheFormShowsItsControlsWithTheirTitles) {
    openForm([](msg担当者暗証番号設定& f) {
        EXPECT_EQ(f.itm_ttl_旧担当者暗証番号->text(), QStringLiteral("旧担当者暗証番号"));
        EXPECT_EQ(f.itm_ttl_新システム担当者暗証番号->text(), QStringLiteral("新担当者暗証番号"));
        EXPECT_EQ(f.itm_ttl_新確認担当者暗証番号->text(), QStringLiteral("確認担当者暗証番号"));
        EXPECT_EQ(f.btn_設定->text(), QStringLiteral("設定"));
        EXPECT_EQ(f.btn_戻る->text(), QStringLiteral("戻る"));
        EXPECT_EQ(f.新担当者暗証番号->echoMode(), QLineEdit::Password);
        EXPECT_EQ(f.現暗証番号, QStringLiteral("ABCD"));
        EXPECT_TRUE(f.旧担当者暗証番号->text().isEmpty());
        EXPECT_FALSE(f.btn_設定->isEnabled());
        EXPECT_TRUE(f.isModal());
        QTest::mouseClick(f.btn_戻る, Qt::LeftButton);
    });
    EXPECT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
}

TEST_P(PinSetting, OnlyTheOperatorsOwnCardOpensTheForm) {
    ctx().op.操作担当者コード = QStringLiteral("00002");
    openForm([](msg担当者暗証番号設定&) {});
    EXPECT_FALSE(driver.shown);
    QApplication::processEvents();
    EXPECT_FALSE(driver.shown);
}

TEST_P(PinSetting, AConfirmedPinOfThreeCharactersIsStoredAfterItsMessage) {
    openForm([this](msg担当者暗証番号設定& f) {
        enter(f.旧担当者暗証番号, QStringLiteral("abcd"));
        EXPECT_TRUE(tree->messages.shown.isEmpty());
        enter(f.新担当者暗証番号, QStringLiteral("xyz"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("担当者暗証番号が違います。")});
        EXPECT_EQ(f.新担当者暗証番号->text(), QStringLiteral("xyz"));
        EXPECT_EQ(QApplication::focusWidget(), f.新確認担当者暗証番号);
        enter(f.新確認担当者暗証番号, QStringLiteral("xyz"));
        EXPECT_TRUE(f.btn_設定->isEnabled());
        tree->messages.answers = {ui::Answer::Yes};
        QTest::mouseClick(f.btn_設定, Qt::LeftButton);
    });
    ASSERT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
    ASSERT_EQ(tree->messages.shown.size(), 2);
    EXPECT_EQ(tree->messages.shown.at(1).text, QStringLiteral("担当者暗証番号を設定します。"));
    EXPECT_EQ(tree->messages.shown.at(1).buttons, ui::Buttons::YesNo);
    EXPECT_EQ(tree->messages.shown.at(1).defaultButton, 1);
    // Stored enciphered; it reads back as the upper-case PIN.
    const QString stored = storedPin();
    EXPECT_NE(stored, QStringLiteral("XYZ"));
    EXPECT_EQ(暗証番号decode(ctx(), stored), QStringLiteral("XYZ"));
    EXPECT_TRUE(inHistory(QStringLiteral("UPDATE M担当者 SET  暗証番号 = '") + stored +
                          QStringLiteral("' WHERE コード = '00001'")));
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
    EXPECT_EQ(ctx().担当者情報.暗証番号, QStringLiteral("XYZ"));
    EXPECT_EQ(form->暗証番号->text(), QStringLiteral("XYZ"));
}

TEST_P(PinSetting, ANewPinEqualToTheOldOneIsToldButCanStillBeSet) {
    openForm([this](msg担当者暗証番号設定& f) {
        enter(f.旧担当者暗証番号, QStringLiteral("ABCD"));
        enter(f.新担当者暗証番号, QStringLiteral("abcd"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("担当者暗証番号が違います。")});
        enter(f.新確認担当者暗証番号, QStringLiteral("abcd"));
        EXPECT_TRUE(f.btn_設定->isEnabled());
        tree->messages.answers = {ui::Answer::Yes};
        QTest::mouseClick(f.btn_設定, Qt::LeftButton);
    });
    EXPECT_FALSE(driver.leftOpen);
    const QString stored = storedPin();
    EXPECT_EQ(暗証番号decode(ctx(), stored), QStringLiteral("ABCD"));
    // The same PIN is written all the same: its UPDATE stands in the run history, once.
    const QString update =
        QStringLiteral("UPDATE M担当者 SET  暗証番号 = '") + stored + QStringLiteral("' WHERE コード = '00001'");
    EXPECT_TRUE(inHistory(update)) << update.toStdString();
    const QStringList history = tree->history();
    EXPECT_EQ(
        std::count_if(history.begin(), history.end(),
                      [](const QString& row) { return row.contains(QStringLiteral("|出力終了 UPDATE M担当者 SET ")); }),
        1);
    EXPECT_EQ(count(QStringLiteral("L担当者")), 0);
}

TEST_P(PinSetting, ALowerCaseConfirmationOfAnUpperCasePinIsRefused) {
    openForm([this](msg担当者暗証番号設定& f) {
        enter(f.旧担当者暗証番号, QStringLiteral("ABCD"));
        enter(f.新担当者暗証番号, QStringLiteral("WXYZ"));
        EXPECT_TRUE(tree->messages.shown.isEmpty());
        enter(f.新確認担当者暗証番号, QStringLiteral("wxyz"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("確認担当者暗証番号が違います。")});
        EXPECT_FALSE(f.btn_設定->isEnabled());
    });
    EXPECT_TRUE(driver.leftOpen);
    EXPECT_EQ(暗証番号decode(ctx(), storedPin()), QStringLiteral("ABCD"));
}

TEST_P(PinSetting, WithTheOldPinEmptyTheButtonStaysDisabled) {
    openForm([this](msg担当者暗証番号設定& f) {
        enter(f.新担当者暗証番号, QStringLiteral("WXYZ"));
        enter(f.新確認担当者暗証番号, QStringLiteral("WXYZ"));
        EXPECT_TRUE(tree->messages.shown.isEmpty());
        EXPECT_FALSE(f.btn_設定->isEnabled());
    });
    EXPECT_TRUE(driver.leftOpen);
}

TEST_P(PinSetting, AWrongOldPinIsEmptiedAndKeepsTheFocus) {
    openForm([this](msg担当者暗証番号設定& f) {
        enter(f.旧担当者暗証番号, QStringLiteral("ABCE"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("担当者暗証番号が違います。")});
        EXPECT_TRUE(f.旧担当者暗証番号->text().isEmpty());
        EXPECT_EQ(QApplication::focusWidget(), f.旧担当者暗証番号);
    });
    EXPECT_TRUE(driver.leftOpen);
}

TEST_P(PinSetting, NoToTheQuestionStaysAndBackWritesNothing) {
    openForm([this](msg担当者暗証番号設定& f) {
        enter(f.旧担当者暗証番号, QStringLiteral("ABCD"));
        enter(f.新担当者暗証番号, QStringLiteral("WXYZ"));
        enter(f.新確認担当者暗証番号, QStringLiteral("WXYZ"));
        tree->messages.answers = {ui::Answer::No};
        QTest::mouseClick(f.btn_設定, Qt::LeftButton);
        EXPECT_TRUE(f.isVisible());
        QTest::mouseClick(f.btn_戻る, Qt::LeftButton);
    });
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_EQ(暗証番号decode(ctx(), storedPin()), QStringLiteral("ABCD"));
    EXPECT_EQ(ctx().担当者情報.暗証番号, QStringLiteral("ABCD"));
}

INSTANTIATE_TEST_SUITE_P(Engines, PinSetting, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
