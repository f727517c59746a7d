// The PIN dialog as the gate shows it: typed, tabbed and clicked as a user would.

#include "access/mod暗証番号.h"
#include "access_fixture.h"

namespace access_test {
namespace {

class PinDialog : public AccessTest {
protected:
    void SetUp() override {
        AccessTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        ctx().pin.暗証番号有無 = 1;
        addStaff(QStringLiteral("00012"), QStringLiteral("山田 太郎"),
                 {{QStringLiteral("暗証番号"), stored(QStringLiteral("ABCD"))},
                  {QStringLiteral("ログインID"), QStringLiteral("yamada")}});
    }

    許可回答 gate() { return 操作許可chk(ctx(), kMenu, kProgram, 0); }

    // Types the code, moves on with Tab and answers the PIN.
    static void enterCode(msg暗証番号確認& form, const QString& code) {
        QTest::keyClicks(form.担当者コード, code);
        QTest::keyClick(form.担当者コード, Qt::Key_Tab);
    }
    static void enterPin(msg暗証番号確認& form, const QString& pin) {
        QTest::keyClicks(form.暗証番号, pin);
        QTest::keyClick(form.暗証番号, Qt::Key_Tab);
    }
};

TEST_P(PinDialog, FormShowsItsControlsAndTheCallersCaption) {
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        EXPECT_EQ(form.itm_ttl_担当者コード->text(), QStringLiteral("コード"));
        EXPECT_EQ(form.itm_ttl_担当者名->text(), QStringLiteral("担当者氏名"));
        EXPECT_EQ(form.itm_ttl_暗証番号->text(), QStringLiteral("暗証番号"));
        EXPECT_EQ(form.btn_OK->text(), QStringLiteral("OK"));
        EXPECT_EQ(form.btn_キャンセル->text(), QStringLiteral("キャンセル"));
        for (const char* name : {"担当者コード", "担当者名", "暗証番号", "btn_OK", "btn_キャンセル",
                                 "itm_ttl_担当者コード", "itm_ttl_担当者名", "itm_ttl_暗証番号"})
            EXPECT_NE(form.findChild<QWidget*>(QString::fromUtf8(name)), nullptr) << name;
        EXPECT_EQ(form.担当者コード->text(), QString());
        EXPECT_EQ(focused(), form.担当者コード); // no login match: the code comes first
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    gate();
    EXPECT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_EQ(driver.caption, QStringLiteral("営業支援データ管理/暗証確認"));
}

TEST_P(PinDialog, LoginIdMatchFillsCodeAndNameAndPutsTheFocusOnThePin) {
    tree->sys.user = QStringLiteral("yamada");
    ctx().terminal.ユーザ名 = QStringLiteral("yamada");
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        EXPECT_EQ(form.担当者コード->text(), QStringLiteral("00012"));
        EXPECT_EQ(form.担当者名->text(), QStringLiteral("山田 太郎"));
        EXPECT_EQ(focused(), form.暗証番号);
        // Enter moves on from the PIN and so checks it.
        QTest::keyClicks(form.暗証番号, QStringLiteral("ABCD"));
        QTest::keyClick(form.暗証番号, Qt::Key_Return);
    });
    EXPECT_EQ(gate(), 許可回答::許可);
    EXPECT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_TRUE(ctx().pin.暗証確認済);
    EXPECT_EQ(ctx().op.操作担当者コード, QStringLiteral("00012"));
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00012"));
}

TEST_P(PinDialog, TypedCode12BecomesFiveDigitsBeforeTheLookup) {
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        EXPECT_EQ(form.担当者コード->text(), QStringLiteral("00012"));
        EXPECT_EQ(form.担当者名->text(), QStringLiteral("山田 太郎"));
        EXPECT_EQ(focused(), form.暗証番号); // the name passes the focus on
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    gate();
    EXPECT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
}

TEST_P(PinDialog, OwnPinTypedInLowerCasePasses) {
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        enterPin(form, QStringLiteral("abcd"));
    });
    EXPECT_EQ(gate(), 許可回答::許可);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_TRUE(tree->messages.texts().isEmpty());
    EXPECT_TRUE(ctx().pin.暗証確認済);
    EXPECT_EQ(ctx().op.操作担当者コード, QStringLiteral("00012"));
    EXPECT_EQ(ctx().op.氏名, QStringLiteral("山田 太郎"));
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00012"));
}

TEST_P(PinDialog, ShortPinAsksForThePinAndKeepsTheDialog) {
    DialogDriver driver;
    driver.arm([this](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        enterPin(form, QStringLiteral("abc"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("暗証番号を入力してください。")});
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(focused(), form.暗証番号);
        EXPECT_EQ(ctx().op.操作担当者コード, QString());
        EXPECT_FALSE(ctx().pin.暗証確認済);
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    EXPECT_EQ(gate(), 許可回答::未確認);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_EQ(rememberedOperator(), QString());
}

TEST_P(PinDialog, WrongPinIsRefusedAndTheDialogStays) {
    DialogDriver driver;
    driver.arm([this](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        enterPin(form, QStringLiteral("WXYZ"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("暗証番号が違います。")});
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(focused(), form.暗証番号);
        EXPECT_EQ(ctx().op.操作担当者コード, QString());
        EXPECT_FALSE(ctx().pin.暗証確認済);
        // No limit on tries: the right PIN still passes.
        form.暗証番号->clear();
        QTest::keyClicks(form.暗証番号, QStringLiteral("ABCD"));
        QTest::mouseClick(form.btn_OK, Qt::LeftButton);
    });
    EXPECT_EQ(gate(), 許可回答::許可);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("暗証番号が違います。")});
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00012"));
}

TEST_P(PinDialog, PrivilegePinPassesForAStaffMemberWithoutPin) {
    addStaff(QStringLiteral("00013"), QStringLiteral("無 暗証"));
    ctx().pin.特権暗証番号 = QStringLiteral("MASTER");
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("13"));
        EXPECT_EQ(form.確認暗証番号, QString());
        enterPin(form, QStringLiteral("master"));
    });
    EXPECT_EQ(gate(), 許可回答::許可);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_TRUE(tree->messages.texts().isEmpty());
    EXPECT_EQ(ctx().op.操作担当者コード, QStringLiteral("00013"));
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00013"));
}

TEST_P(PinDialog, AStaffMemberWithoutPinCannotPassByPin) {
    addStaff(QStringLiteral("00013"), QStringLiteral("無 暗証"));
    DialogDriver driver;
    driver.arm([this](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("13"));
        enterPin(form, QStringLiteral("ABCD"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("暗証番号が違います。")});
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    EXPECT_EQ(gate(), 許可回答::未確認);
    EXPECT_FALSE(driver.leftOpen);
}

TEST_P(PinDialog, AShortPrivilegePinNeverMatches) {
    ctx().pin.特権暗証番号 = QStringLiteral("ABC");
    DialogDriver driver;
    driver.arm([this](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        enterPin(form, QStringLiteral("abc"));
        EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("暗証番号を入力してください。")});
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    EXPECT_EQ(gate(), 許可回答::未確認);
    EXPECT_FALSE(driver.leftOpen);
}

TEST_P(PinDialog, CancelLeavesNoOperatorAndAFalseAnswer) {
    addStaff(QStringLiteral("00001"), QStringLiteral("佐藤 一郎"),
             {{QStringLiteral("処理分類0操作許可"), QStringLiteral("1")}});
    remember(QStringLiteral("00001")); // remembered, but without the right: the dialog comes
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) { QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton); });
    EXPECT_EQ(gate(), 許可回答::未確認);
    EXPECT_TRUE(driver.shown);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_TRUE(tree->messages.texts().isEmpty());
    EXPECT_FALSE(ctx().pin.暗証確認済);
    EXPECT_EQ(ctx().op.操作担当者コード, QString());
    EXPECT_EQ(ctx().op.氏名, QStringLiteral("佐藤 一郎")); // the previous operator's record stays
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00001"));
}

TEST_P(PinDialog, EscapeGivesUpLikeCancel) {
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) { QTest::keyClick(form.担当者コード, Qt::Key_Escape); });
    EXPECT_EQ(gate(), 許可回答::未確認);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_FALSE(ctx().pin.暗証確認済);
}

TEST_P(PinDialog, AnAcceptedOperatorWithoutTheRightIsRefusedWithOne) {
    addStaff(QStringLiteral("00014"), QStringLiteral("権限 無"),
             {{QStringLiteral("暗証番号"), stored(QStringLiteral("PQRS"))},
              {QStringLiteral("処理分類0操作許可"), QStringLiteral("1")}});
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("14"));
        enterPin(form, QStringLiteral("pqrs"));
    });
    EXPECT_EQ(gate(), 許可回答::権限なし);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_TRUE(ctx().pin.暗証確認済);
    EXPECT_EQ(rememberedOperator(), QStringLiteral("00014"));
}

TEST_P(PinDialog, AFailingSaveIsShownAndTheDialogStillSucceeds) {
    loseRememberedOperatorColumn();
    ctx().pin.暗証番号有無 = 1;
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        enterPin(form, QStringLiteral("ABCD"));
    });
    EXPECT_EQ(gate(), 許可回答::許可);
    EXPECT_FALSE(driver.leftOpen);
    EXPECT_EQ(tree->messages.texts(), QStringList{QStringLiteral("データベースに問題が発生し修正できませんでした。")});
    EXPECT_TRUE(ctx().pin.暗証確認済);
    EXPECT_EQ(ctx().op.操作担当者コード, QStringLiteral("00012"));
}

TEST_P(PinDialog, FocusOnThePinWithoutCodeGoesToTheCode) {
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        QTest::mouseClick(form.暗証番号, Qt::LeftButton);
        EXPECT_EQ(focused(), form.担当者コード);
        QTest::mouseClick(form.itm_ttl_暗証番号, Qt::LeftButton);
        EXPECT_EQ(focused(), form.担当者コード);
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    gate();
    EXPECT_FALSE(driver.leftOpen);
}

TEST_P(PinDialog, TitleClicksSendTheFocusToTheirFields) {
    DialogDriver driver;
    driver.arm([](msg暗証番号確認& form) {
        enterCode(form, QStringLiteral("12"));
        QTest::mouseClick(form.itm_ttl_担当者コード, Qt::LeftButton);
        EXPECT_EQ(focused(), form.担当者コード);
        QTest::mouseClick(form.itm_ttl_担当者名, Qt::LeftButton);
        EXPECT_EQ(focused(), form.暗証番号);
        form.担当者コード->setFocus(Qt::MouseFocusReason);
        QTest::mouseClick(form.担当者名, Qt::LeftButton); // the name passes the focus on
        EXPECT_EQ(focused(), form.暗証番号);
        QTest::mouseClick(form.btn_キャンセル, Qt::LeftButton);
    });
    gate();
    EXPECT_FALSE(driver.leftOpen);
}

INSTANTIATE_TEST_SUITE_P(Engines, PinDialog, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
} // namespace access_test
