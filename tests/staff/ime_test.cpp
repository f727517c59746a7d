// Japanese typed into the staff card as a real input method delivers it: the
// event sequences recorded from the input method (tests/fixtures/ime) replayed
// onto the card's name fields, with the kanji and kana fields checked after
// each step of the recording and the row saved. And the input mode of every
// field: direct half-width input for codes, numbers, dates, telephones,
// postcodes, PINs, mail and login; the input method for names; kana fields
// keeping the half-width katakana that is stored.

#include "staff_fixture.h"

#include "support/ime_replay.h"

#include <QClipboard>

using testdb::Engine;

namespace {

class JapaneseInput : public StaffFixture {
protected:
    // The card on a new record under code 00009, with the codes it needs to be saved.
    void startNew() {
        start();
        QTest::keyClicks(form->コード, QStringLiteral("9"));
        tab();
        ASSERT_EQ(form->お知らせ->text(), QStringLiteral("新規情報です。"));
        typeCodes();
    }
    QMap<QString, QWidget*> fields() const {
        return {{QStringLiteral("姓"), form->姓},
                {QStringLiteral("名"), form->名},
                {QStringLiteral("氏名"), form->氏名},
                {QStringLiteral("コード直接"), form->コード}};
    }
    // Replays a recording; at each step the kanji and kana fields must show what
    // the table gives for it ("kanji|kana"), steps not in the table are not checked.
    void replay(const QString& recording, QLineEdit* kanji, QLineEdit* kana, const QMap<QString, QString>& expected) {
        QStringList checked;
        const QString error = ime::replay(recording, fields(), [&](const QString& step) {
            if (!expected.contains(step))
                return;
            checked.append(step);
            EXPECT_EQ(kanji->text() + QLatin1Char('|') + kana->text(), expected.value(step))
                << recording.toStdString() << ", step " << step.toStdString();
        });
        ASSERT_TRUE(error.isEmpty()) << error.toStdString();
        EXPECT_EQ(checked.size(), expected.size()) << "steps not found in " << recording.toStdString();
    }
    // Saves the card with Yes and gives the saved row's names (stored with
    // their trailing blanks cut).
    QStringList saved(const QString& code, const QString& question = QStringLiteral("登録しますか")) {
        form->コード->setFocus(Qt::MouseFocusReason);
        tree->messages.answers = {ui::Answer::Yes};
        QTest::mouseClick(form->btn_登録, Qt::LeftButton);
        EXPECT_EQ(tree->messages.texts(), QStringList{question});
        return rows(QStringLiteral("SELECT * FROM M担当者 WHERE コード = '") + code + QStringLiteral("'"),
                    {QStringLiteral("姓"), QStringLiteral("名"), QStringLiteral("氏名"), QStringLiteral("カナ姓"),
                     QStringLiteral("カナ名"), QStringLiteral("カナ")});
    }
};

TEST_P(JapaneseInput, AWordConvertedAndCommittedBringsItsReading) {
    startNew();
    replay(QStringLiteral("plain"), form->姓, form->カナ姓,
           {{QStringLiteral("type yamada"), QStringLiteral("|")},
            {QStringLiteral("Space"), QStringLiteral("|")},
            {QStringLiteral("Enter"), QStringLiteral("|")},
            {QStringLiteral("end"), QStringLiteral("山田|ﾔﾏﾀﾞ")}});
    EXPECT_EQ(saved(QStringLiteral("00009")), QStringList{QStringLiteral("山田||山田|ﾔﾏﾀﾞ||ﾔﾏﾀﾞ")});
}

TEST_P(JapaneseInput, EmptyingTheFieldEmptiesTheReadingAndTheNextWordStartsAfresh) {
    startNew();
    replay(QStringLiteral("empty-then-retype"), form->姓, form->カナ姓,
           {{QStringLiteral("Ctrl+A"), QStringLiteral("山田|ﾔﾏﾀﾞ")},
            {QStringLiteral("BackSpace"), QStringLiteral("山田|ﾔﾏﾀﾞ")},
            {QStringLiteral("type tanaka"), QStringLiteral("|")},
            {QStringLiteral("end"), QStringLiteral("田中|ﾀﾅｶ")}});
    EXPECT_EQ(saved(QStringLiteral("00009")), QStringList{QStringLiteral("田中||田中|ﾀﾅｶ||ﾀﾅｶ")});
}

TEST_P(JapaneseInput, ASelectedNameReplacedTakesItsReadingAwayAndGivesTheNewOne) {
    start();
    readExisting(); // 山田 太郎, ﾔﾏﾀﾞ ﾀﾛｳ
    replay(QStringLiteral("select-and-replace"), form->姓, form->カナ姓,
           {{QStringLiteral("type suzuki"), QStringLiteral("山田|ﾔﾏﾀﾞ")},
            {QStringLiteral("Space"), QStringLiteral("|")},
            {QStringLiteral("end"), QStringLiteral("鈴木|ｽｽﾞｷ")}});
    EXPECT_EQ(saved(QStringLiteral("00001"), QStringLiteral("修正しますか")),
              QStringList{QStringLiteral("鈴木|太郎|鈴木 太郎|ｽｽﾞｷ|ﾀﾛｳ|ｽｽﾞｷ ﾀﾛｳ")});
}

TEST_P(JapaneseInput, ACharacterDeletedFromAWordTakesTheWordsReadingAway) {
    // The input method gives the reading of whole compositions only: what is
    // left of a word after a deletion has no reading of its own.
    startNew();
    replay(QStringLiteral("delete-last-and-continue"), form->姓, form->カナ姓,
           {{QStringLiteral("BackSpace"), QStringLiteral("山田|ﾔﾏﾀﾞ")},
            {QStringLiteral("type moto"), QStringLiteral("山|")},
            {QStringLiteral("end"), QStringLiteral("山本|ﾓﾄ")}});
}

TEST_P(JapaneseInput, AFinalNStillInRomajiCountsAsN) {
    startNew();
    replay(QStringLiteral("final-n-ken"), form->姓, form->カナ姓, {{QStringLiteral("end"), QStringLiteral("県|ｹﾝ")}});
    replay(QStringLiteral("final-n-jun"), form->名, form->カナ名, {{QStringLiteral("end"), QStringLiteral("順|ｼﾞｭﾝ")}});
    EXPECT_EQ(saved(QStringLiteral("00009")), QStringList{QStringLiteral("県|順|県 順|ｹﾝ|ｼﾞｭﾝ|ｹﾝ ｼﾞｭﾝ")});
}

TEST_P(JapaneseInput, ACancelledReadingAddsNothingAndItsLaterEchoIsNotTaken) {
    startNew();
    replay(QStringLiteral("cancelled"), form->姓, form->カナ姓,
           {{QStringLiteral("Escape"), QStringLiteral("|")},
            {QStringLiteral("type Smith"), QStringLiteral("|")},
            {QStringLiteral("Enter"), QStringLiteral("Smith|")},
            {QStringLiteral("end"), QStringLiteral("Smith|")}});
    EXPECT_EQ(saved(QStringLiteral("00009")), QStringList{QStringLiteral("Smith||Smith|||")});
}

TEST_P(JapaneseInput, ACancelledConversionAddsNothing) {
    startNew();
    replay(QStringLiteral("cancelled-after-conversion"), form->姓, form->カナ姓,
           {{QStringLiteral("end"), QStringLiteral("Smith|")}});
}

TEST_P(JapaneseInput, ACancelledReadingIsNotCommittedWhenTheUserClicksAway) {
    startNew();
    replay(QStringLiteral("cancelled-then-click-away"), form->姓, form->カナ姓,
           {{QStringLiteral("end"), QStringLiteral("|")}});
    EXPECT_EQ(form->名->text(), QString());
    EXPECT_EQ(form->カナ名->text(), QString());
}

TEST_P(JapaneseInput, AConversionEndedByAClickLandsInTheFieldLeftOnly) {
    startNew();
    replay(QStringLiteral("click-away"), form->姓, form->カナ姓,
           {{QStringLiteral("Space"), QStringLiteral("|")}, {QStringLiteral("end"), QStringLiteral("山田|ﾔﾏﾀﾞ")}});
    EXPECT_EQ(form->名->text(), QString());
    EXPECT_EQ(form->カナ名->text(), QString());
    EXPECT_EQ(focused(), QStringLiteral("名"));
    EXPECT_EQ(saved(QStringLiteral("00009")), QStringList{QStringLiteral("山田||山田|ﾔﾏﾀﾞ||ﾔﾏﾀﾞ")});
}

TEST_P(JapaneseInput, ACompositionCommittedInPartsGivesItsReadingOnceAtTheEnd) {
    startNew();
    replay(QStringLiteral("partial-commit"), form->氏名, form->カナ,
           {{QStringLiteral("Space"), QStringLiteral("|")},
            {QStringLiteral("Enter"), QStringLiteral("渡辺|")},
            {QStringLiteral("end"), QStringLiteral("渡辺太郎|ﾜﾀﾅﾍﾞﾀﾛｳ")}});
    EXPECT_EQ(saved(QStringLiteral("00009")), QStringList{QStringLiteral("||渡辺太郎|||ﾜﾀﾅﾍﾞﾀﾛｳ")});
}

TEST_P(JapaneseInput, KanaCommittedWithoutConversionAreTheirOwnReading) {
    startNew();
    replay(QStringLiteral("kana-direct"), form->名, form->カナ名, {{QStringLiteral("end"), QStringLiteral("はなこ|ﾊﾅｺ")}});
}

// ---- input modes

TEST_P(JapaneseInput, DirectFieldsKeepTheInputMethodOutAndNameFieldsTakeIt) {
    start();
    readExisting(); // the pages enabled
    for (QWidget* direct : std::initializer_list<QWidget*>{
             form->コード, form->社員コード, form->暗証番号, form->性別区分, form->生年月日年号区分, form->生年月日年,
             form->生年月日月, form->生年月日日, form->事業所コード, form->部門コード, form->セクションコード,
             form->役職コード, form->ログインID, form->在籍区分, form->社員区分, form->入社日付年, form->退社日付日,
             form->郵便番号, form->電話, form->携帯電話, form->EMAIL})
        EXPECT_FALSE(direct->inputMethodQuery(Qt::ImEnabled).toBool()) << direct->objectName().toStdString();
    for (QWidget* japanese : std::initializer_list<QWidget*>{form->姓, form->名, form->氏名, form->カナ姓, form->カナ名,
                                                             form->カナ, form->職責, form->住所A, form->住所B,
                                                             form->住所C})
        EXPECT_TRUE(japanese->inputMethodQuery(Qt::ImEnabled).toBool()) << japanese->objectName().toStdString();
}

TEST_P(JapaneseInput, DigitsTypedIntoTheCodeLandAsDigitsAndTheRuleReadsTheRow) {
    start();
    form->コード->clear();
    replay(QStringLiteral("direct-digits-im-refused"), form->コード, form->カナ姓,
           {{QStringLiteral("Tab"), QStringLiteral("001|")}});
    EXPECT_EQ(form->コード->text(), QStringLiteral("00001"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田"));
    EXPECT_EQ(focused(), QStringLiteral("姓"));
}

TEST_P(JapaneseInput, WhatIsTypedOrPastedIntoAKanaFieldIsStoredInHalfWidthKatakana) {
    startNew();
    form->カナ名->setFocus(Qt::MouseFocusReason);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("はなこ"));
    QCoreApplication::sendEvent(form->カナ名, &commit);
    EXPECT_EQ(form->カナ名->text(), QStringLiteral("ﾊﾅｺ"));
    QApplication::clipboard()->setText(QStringLiteral("・ヤマダ　ＡＢ１"));
    form->カナ姓->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(form->カナ姓, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form->カナ姓->text(), QStringLiteral("･ﾔﾏﾀﾞ AB1"));
    tab();
    EXPECT_EQ(ctx().担当者情報.カナ, QStringLiteral("･ﾔﾏﾀﾞ AB1 ﾊﾅｺ"));
}

TEST_P(JapaneseInput, TextTypedWithoutTheInputMethodLeavesTheReadingAsItStands) {
    start();
    readExisting();
    form->姓->setFocus(Qt::MouseFocusReason);
    form->姓->end(false);
    QTest::keyClicks(form->姓, QStringLiteral("X"));
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田X"));
    EXPECT_EQ(form->カナ姓->text(), QStringLiteral("ﾔﾏﾀﾞ"));
    // A reading corrected by hand is the reading of the name from then on.
    form->カナ姓->setFocus(Qt::MouseFocusReason);
    form->カナ姓->end(false);
    QTest::keyClicks(form->カナ姓, QStringLiteral("X"));
    form->姓->setFocus(Qt::MouseFocusReason);
    form->姓->end(false);
    QInputMethodEvent preedit(QStringLiteral("き"), {});
    QCoreApplication::sendEvent(form->姓, &preedit);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("木"));
    QCoreApplication::sendEvent(form->姓, &commit);
    EXPECT_EQ(form->姓->text(), QStringLiteral("山田X木"));
    EXPECT_EQ(form->カナ姓->text(), QStringLiteral("ﾔﾏﾀﾞXｷ"));
}

INSTANTIATE_TEST_SUITE_P(Engines, JapaneseInput, ::testing::Values(Engine::Sqlite, Engine::Postgres),
                         testdb::engineParamName);

} // namespace
