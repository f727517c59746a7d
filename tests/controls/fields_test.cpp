#include "platform/controls/fields.h"

#include <QApplication>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace controls;

namespace {

// What the input method sends while composing: the text under conversion.
void preedit(QWidget* field, const QString& text) {
    QInputMethodEvent event(text, {});
    QCoreApplication::sendEvent(field, &event);
}

// What the input method sends when the user accepts the composition.
void commit(QWidget* field, const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(field, &event);
}

// Types a word through the input method: its reading grows key by key, is
// converted, and the conversion is committed.
void typeWord(QWidget* field, const QStringList& readings, const QString& converted) {
    for (const QString& reading : readings)
        preedit(field, reading);
    preedit(field, converted);
    commit(field, converted);
}

QStringList columnTexts(const QTreeWidget& list, int column) {
    QStringList texts;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        texts << list.topLevelItem(i)->text(column);
    return texts;
}

void clickHeader(QTreeWidget& list, int column) {
    QHeaderView* header = list.header();
    const QPoint at(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
}

} // namespace

TEST(TextField, TakesAnyTextByDefault) {
    TextField field;
    QTest::keyClicks(&field, "Abc 12");
    EXPECT_EQ(field.text(), "Abc 12");
}

TEST(TextField, DigitsOnlyRefusesLetters) {
    TextField field;
    field.setDigitsOnly(true);
    field.setMaxLength(5);
    QTest::keyClicks(&field, "1a2-b3 4567");
    EXPECT_EQ(field.text(), "12345");
}

TEST(TextField, DigitsOnlyCanBeTurnedOff) {
    TextField field;
    field.setDigitsOnly(true);
    field.setDigitsOnly(false);
    QTest::keyClicks(&field, "a1");
    EXPECT_EQ(field.text(), "a1");
}

TEST(TextField, JapaneseFromTheInputMethodLands) {
    TextField field;
    EXPECT_TRUE(field.testAttribute(Qt::WA_InputMethodEnabled));
    preedit(&field, "やまだ");
    commit(&field, "山田");
    EXPECT_EQ(field.text(), "山田");
}

TEST(TextField, ByteLimitIsNotEnforced) {
    TextField field;
    field.setByteLimit(4);
    QTest::keyClicks(&field, "abcdefgh");
    EXPECT_EQ(field.byteLimit(), 4);
    EXPECT_EQ(field.text(), "abcdefgh");
}

TEST(NumField, TakesDigitsWithinItsRange) {
    NumField field;
    field.setRange(1, 3);
    QTest::keyClicks(&field, "x2");
    EXPECT_EQ(field.text(), "2");
    EXPECT_EQ(field.value(), 2);
}

TEST(NumField, ValueIsClampedAndMinimumWhenEmpty) {
    NumField field;
    field.setRange(1, 3);
    EXPECT_EQ(field.value(), 1);
    QTest::keyClicks(&field, "25");
    EXPECT_EQ(field.value(), 3);
    field.setText("0");
    EXPECT_EQ(field.value(), 1);
    field.setText("99999999999999999999999");
    EXPECT_EQ(field.value(), 3);
}

TEST(NumField, SetValueShowsTheClampedValue) {
    NumField field;
    field.setRange(0, 4);
    field.setValue(2);
    EXPECT_EQ(field.text(), "2");
    field.setValue(9);
    EXPECT_EQ(field.text(), "4");
}

TEST(NumField, EmptyRangeAnswersTheMinimum) {
    NumField field;
    field.setRange(1, 0);
    field.setText("5");
    EXPECT_EQ(field.value(), 1);
}

TEST(NumField, ValueChangedOnlyForAnotherNumber) {
    NumField field;
    field.setRange(0, 9);
    QSignalSpy spy(&field, &NumField::valueChanged);
    QTest::keyClicks(&field, "3");
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toInt(), 3);
    field.setText("03"); // the same number
    EXPECT_EQ(spy.count(), 1);
    field.setValue(5);
    ASSERT_EQ(spy.count(), 2);
    EXPECT_EQ(spy.at(1).at(0).toInt(), 5);
    field.clear(); // empty reads as the minimum
    ASSERT_EQ(spy.count(), 3);
    EXPECT_EQ(spy.at(2).at(0).toInt(), 0);
}

TEST(TelField, TakesDigitsHyphensBracketsAndBlanks) {
    TelField field;
    QTest::keyClicks(&field, "(03)1234-5678 ext");
    EXPECT_EQ(field.text(), "(03)1234-5678 ");
}

TEST(TelField, TakesFullWidthDigitsFromTheInputMethod) {
    TelField field;
    commit(&field, "０３");
    EXPECT_EQ(field.text(), "０３");
    commit(&field, "山");
    EXPECT_EQ(field.text(), "０３");
}

TEST(ZipField, DigitsTypedShowWithTheHyphen) {
    ZipField field;
    QTest::keyClicks(&field, "1000001");
    EXPECT_EQ(field.displayText(), "100-0001");
    EXPECT_EQ(field.postcode(), "100-0001");
}

TEST(ZipField, PartOfAPostcodeIsWhatWasTyped) {
    ZipField field;
    QTest::keyClicks(&field, "100");
    EXPECT_EQ(field.postcode(), "100");
    field.clear();
    QTest::keyClicks(&field, "10000");
    EXPECT_EQ(field.postcode(), "100-00");
}

TEST(ZipField, NoDigitIsEmpty) {
    ZipField field;
    EXPECT_EQ(field.postcode(), "");
    QTest::keyClicks(&field, "abc");
    EXPECT_EQ(field.postcode(), "");
}

TEST(ZipField, SetPostcodeWithOrWithoutHyphen) {
    ZipField field;
    field.setPostcode("1000001");
    EXPECT_EQ(field.postcode(), "100-0001");
    EXPECT_EQ(field.displayText(), "100-0001");
    field.setPostcode("060-0042");
    EXPECT_EQ(field.postcode(), "060-0042");
    field.setPostcode("");
    EXPECT_EQ(field.postcode(), "");
}

TEST(PinField, ShowsThePinMasked) {
    PinField field;
    QTest::keyClicks(&field, "s3cret");
    EXPECT_EQ(field.echoMode(), QLineEdit::Password);
    EXPECT_EQ(field.text(), "s3cret");
    EXPECT_FALSE(field.displayText().contains("s3cret"));
    EXPECT_EQ(field.displayText().size(), 6);
}

TEST(KanaField, FollowsTheReadingOfAConvertedWord) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    typeWord(&kanji, {"や", "やま", "やまだ"}, "山田");
    EXPECT_EQ(kanji.text(), "山田");
    EXPECT_EQ(kana.text(), "ﾔﾏﾀﾞ");
}

TEST(KanaField, ASecondWordIsAppended) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    typeWord(&kanji, {"や", "やま", "やまだ"}, "山田");
    typeWord(&kanji, {"た", "たろ", "たろう"}, "太郎");
    EXPECT_EQ(kanji.text(), "山田太郎");
    EXPECT_EQ(kana.text(), "ﾔﾏﾀﾞﾀﾛｳ");
}

TEST(KanaField, KanaCommittedWithoutConversionAreAppended) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    commit(&kanji, "すずき");
    EXPECT_EQ(kana.text(), "ｽｽﾞｷ");
    preedit(&kanji, "ぱ");
    preedit(&kanji, "ぱん");
    commit(&kanji, "パン");
    EXPECT_EQ(kana.text(), "ｽｽﾞｷﾊﾟﾝ");
}

TEST(KanaField, AReadingIsUsedOnce) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    typeWord(&kanji, {"き", "きむ"}, "金");
    commit(&kanji, "・"); // committed directly, no reading of its own
    EXPECT_EQ(kanji.text(), "金・");
    EXPECT_EQ(kana.text(), "ｷﾑ");
}

TEST(KanaField, AReadingLeftOpenWhenTheFieldIsLeftIsDropped) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    preedit(&kanji, "やま");
    QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&kanji, &leave);
    commit(&kanji, "X");
    EXPECT_EQ(kana.text(), "");
}

TEST(KanaField, AsciiTypedIntoTheKanjiFieldAddsNothing) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    QTest::keyClicks(&kanji, "Smith");
    commit(&kanji, "Jr");
    EXPECT_EQ(kanji.text(), "SmithJr");
    EXPECT_EQ(kana.text(), "");
}

TEST(KanaField, KeepsWhatWasTypedIntoItself) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    QTest::keyClicks(&kana, "ABC");
    typeWord(&kanji, {"か"}, "加");
    EXPECT_EQ(kana.text(), "ABCｶ");
}

TEST(KanaField, FollowsOnlyItsCurrentKanjiField) {
    TextField first;
    TextField second;
    KanaField kana;
    kana.follow(&first);
    kana.follow(&second);
    typeWord(&first, {"や"}, "矢");
    typeWord(&second, {"た"}, "田");
    EXPECT_EQ(kana.text(), "ﾀ");
}

TEST(KanaField, ThePreeditsReadingLeavesUnfinishedRomajiOutButAFinalN) {
    EXPECT_EQ(KanaField::preeditReading("やまｄ"), "やま");
    EXPECT_EQ(KanaField::preeditReading("けｎ"), "けん");
    EXPECT_EQ(KanaField::preeditReading("じゅn"), "じゅん");
    EXPECT_EQ(KanaField::preeditReading("ｙ"), "");
    EXPECT_EQ(KanaField::preeditReading("山田"), "");
    EXPECT_EQ(KanaField::preeditReading("Smith"), "");
    EXPECT_EQ(KanaField::preeditReading("はなこ"), "はなこ");
}

TEST(KanaField, ADeletedWordTakesItsReadingAndTheOthersKeepTheirs) {
    TextField kanji;
    KanaField kana;
    kana.follow(&kanji);
    typeWord(&kanji, {"やまだ"}, "山田");
    typeWord(&kanji, {"たろう"}, "太郎");
    // The first word selected and deleted.
    kanji.setSelection(0, 2);
    QTest::keyClick(&kanji, Qt::Key_Delete);
    EXPECT_EQ(kanji.text(), "太郎");
    EXPECT_EQ(kana.text(), "ﾀﾛｳ");
    // A word put in front of it comes first in the reading too.
    kanji.setCursorPosition(0);
    typeWord(&kanji, {"すずき"}, "鈴木");
    EXPECT_EQ(kanji.text(), "鈴木太郎");
    EXPECT_EQ(kana.text(), "ｽｽﾞｷﾀﾛｳ");
}

TEST(Field, ACommitRepeatedInTheNextFieldWithoutAnyCompositionThereIsNotTaken) {
    QWidget window;
    auto* first = new TextField(&window);
    auto* second = new TextField(&window);
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(first);
    layout->addWidget(second);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    first->setFocus();
    preedit(first, "やまだ");
    preedit(first, "山田");
    commit(first, "山田");
    second->setFocus(); // the focus leaves right after the commit
    commit(second, "山田");
    EXPECT_EQ(first->text(), "山田");
    EXPECT_EQ(second->text(), "");
    // A word composed in the field itself is taken, the same word included.
    preedit(second, "やまだ");
    commit(second, "山田");
    EXPECT_EQ(second->text(), "山田");
}

TEST(KanaField, ReadingConvertsToHalfWidthKatakana) {
    EXPECT_EQ(KanaField::reading("やまだ"), "ﾔﾏﾀﾞ");
    EXPECT_EQ(KanaField::reading("ヤマダ"), "ﾔﾏﾀﾞ");
    EXPECT_EQ(KanaField::reading("が"), "ｶﾞ");
    EXPECT_EQ(KanaField::reading("ぱぴぷぺぽ"), "ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ");
    EXPECT_EQ(KanaField::reading("ばびぶべぼ"), "ﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞ");
    EXPECT_EQ(KanaField::reading("ヴ"), "ｳﾞ");
    EXPECT_EQ(KanaField::reading("ぁぃぅぇぉっゃゅょ"), "ｧｨｩｪｫｯｬｭｮ");
    EXPECT_EQ(KanaField::reading("ラーメン"), "ﾗｰﾒﾝ");
    EXPECT_EQ(KanaField::reading("をん"), "ｦﾝ");
    EXPECT_EQ(KanaField::reading("ゎヶ"), "ﾜｹ");
    EXPECT_EQ(KanaField::reading("ｶﾞｯｺｳ"), "ｶﾞｯｺｳ");
    EXPECT_EQ(KanaField::reading(""), "");
}

TEST(ReportList, ColumnsWithWidthsInTwips) {
    ReportList list;
    list.setColumns({{"コード", 1200}, {"氏名", 3000}});
    ASSERT_EQ(list.columnCount(), 2);
    EXPECT_EQ(list.headerItem()->text(0), "コード");
    EXPECT_EQ(list.headerItem()->text(1), "氏名");
    EXPECT_EQ(list.columnWidth(0), 80);
    EXPECT_EQ(list.columnWidth(1), 200);
    EXPECT_FALSE(list.rootIsDecorated());
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(list.selectionBehavior(), QAbstractItemView::SelectRows);
}

TEST(ReportList, ItemsCarryTheirKeys) {
    ReportList list;
    list.setColumns({{"コード", 1200}, {"氏名", 3000}});
    QTreeWidgetItem* first = list.addItem("00001", "C00001", {"山田"});
    list.addItem("00002", "C00002", {"佐藤"});
    EXPECT_EQ(first->text(1), "山田");
    EXPECT_EQ(ReportList::key(first), "C00001");
    EXPECT_EQ(ReportList::key(nullptr), "");
    ASSERT_NE(list.findKey("C00002"), nullptr);
    EXPECT_EQ(list.findKey("C00002")->text(1), "佐藤");
    EXPECT_EQ(list.findKey("C00009"), nullptr);
}

TEST(ReportList, RowsFilledWhileSortedComeOutInTheSortOrder) {
    ReportList list;
    list.setColumns({{"コード", 1200}, {"名称", 3000}});
    list.columnClick(1);
    list.columnClick(1); // 名称, descending
    ASSERT_TRUE(list.isSortingEnabled());
    list.beginFill();
    for (const char* name : {"b", "d", "a", "c"})
        list.addItem(QString::fromLatin1(name), QString::fromLatin1(name), {QString::fromLatin1(name)});
    list.endFill();
    EXPECT_TRUE(list.isSortingEnabled());
    EXPECT_TRUE(list.updatesEnabled());
    QStringList order;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        order << list.topLevelItem(i)->text(1);
    EXPECT_EQ(order, (QStringList{"d", "c", "b", "a"}));
}

TEST(ReportList, ClickOnAColumnHeadSortsAndASecondClickTurnsTheOrder) {
    ReportList list;
    list.setColumns({{"コード", 1200}, {"名称", 3000}});
    list.addItem("00001", "C00001", {"b"});
    list.addItem("00002", "C00002", {"c"});
    list.addItem("00003", "C00003", {"a"});
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));

    clickHeader(list, 1);
    EXPECT_EQ(list.sortKey(), 1);
    EXPECT_EQ(list.sortOrder(), Qt::AscendingOrder);
    EXPECT_EQ(columnTexts(list, 1), (QStringList{"a", "b", "c"}));

    clickHeader(list, 1);
    EXPECT_EQ(list.sortOrder(), Qt::DescendingOrder);
    EXPECT_EQ(columnTexts(list, 1), (QStringList{"c", "b", "a"}));

    // Another column becomes the sort key in the order in force.
    clickHeader(list, 0);
    EXPECT_EQ(list.sortKey(), 0);
    EXPECT_EQ(list.sortOrder(), Qt::DescendingOrder);
    EXPECT_EQ(columnTexts(list, 0), (QStringList{"00003", "00002", "00001"}));
}

TEST(ReportList, SortIsTextWise) {
    ReportList list;
    list.setColumns({{"件数", 900}});
    list.addItem("9", "C9");
    list.addItem("10", "C10");
    // The first column is the sort key from the start: a click on it turns the order.
    list.columnClick(0);
    EXPECT_EQ(list.sortOrder(), Qt::DescendingOrder);
    EXPECT_EQ(columnTexts(list, 0), (QStringList{"9", "10"}));
    list.columnClick(0);
    EXPECT_EQ(columnTexts(list, 0), (QStringList{"10", "9"}));
    // Once sorted, rows added later take their place in the order.
    list.addItem("2", "C2");
    QCoreApplication::processEvents();
    EXPECT_EQ(columnTexts(list, 0), (QStringList{"10", "2", "9"}));
}

TEST(Trap, IsATinyFocusableStop) {
    Trap trap;
    EXPECT_EQ(trap.size(), QSize(1, 1));
    EXPECT_TRUE(trap.focusPolicy() & Qt::TabFocus);
    EXPECT_TRUE(trap.focusPolicy() & Qt::ClickFocus);
}
