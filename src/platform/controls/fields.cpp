#include "platform/controls/fields.h"

#include <QEvent>
#include <QFocusEvent>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

#include <algorithm>
#include <array>

namespace controls {

namespace {

// Half-width forms of the katakana U+30A1 (ァ) to U+30F6 (ヶ), in code order.
// Voiced and semi-voiced kana take two characters; kana without a half-width
// form take their nearest one (ヮ ﾜ, ヰ ｲ, ヱ ｴ, ヵ ｶ, ヶ ｹ).
constexpr char16_t firstKatakana = u'\u30A1';
constexpr std::array<const char16_t*, 86> halfWidthKatakana = {
    u"ｧ",  u"ｱ",  u"ｨ", u"ｲ",  u"ｩ",  u"ｳ",  u"ｪ",  u"ｴ",  u"ｫ",  u"ｵ",  // ァアィイゥウェエォオ
    u"ｶ",  u"ｶﾞ", u"ｷ", u"ｷﾞ", u"ｸ",  u"ｸﾞ", u"ｹ",  u"ｹﾞ", u"ｺ",  u"ｺﾞ", // カガキギクグケゲコゴ
    u"ｻ",  u"ｻﾞ", u"ｼ", u"ｼﾞ", u"ｽ",  u"ｽﾞ", u"ｾ",  u"ｾﾞ", u"ｿ",  u"ｿﾞ", // サザシジスズセゼソゾ
    u"ﾀ",  u"ﾀﾞ", u"ﾁ", u"ﾁﾞ", u"ｯ",  u"ﾂ",  u"ﾂﾞ", u"ﾃ",  u"ﾃﾞ", u"ﾄ",  // タダチヂッツヅテデト
    u"ﾄﾞ", u"ﾅ",  u"ﾆ", u"ﾇ",  u"ﾈ",  u"ﾉ",  u"ﾊ",  u"ﾊﾞ", u"ﾊﾟ", u"ﾋ",  // ドナニヌネノハバパヒ
    u"ﾋﾞ", u"ﾋﾟ", u"ﾌ", u"ﾌﾞ", u"ﾌﾟ", u"ﾍ",  u"ﾍﾞ", u"ﾍﾟ", u"ﾎ",  u"ﾎﾞ", // ビピフブプヘベペホボ
    u"ﾎﾟ", u"ﾏ",  u"ﾐ", u"ﾑ",  u"ﾒ",  u"ﾓ",  u"ｬ",  u"ﾔ",  u"ｭ",  u"ﾕ",  // ポマミムメモャヤュユ
    u"ｮ",  u"ﾖ",  u"ﾗ", u"ﾘ",  u"ﾙ",  u"ﾚ",  u"ﾛ",  u"ﾜ",  u"ﾜ",  u"ｲ",  // ョヨラリルレロヮワヰ
    u"ｴ",  u"ｦ",  u"ﾝ", u"ｳﾞ", u"ｶ",  u"ｹ",                              // ヱヲンヴヵヶ
};

bool isHiragana(char16_t c) { return c >= u'\u3041' && c <= u'\u3096'; }

bool isKatakana(char16_t c) { return c >= firstKatakana && c <= u'\u30F6'; }

// A character of a reading: kana of either width, the prolonged sound mark and
// the voiced sound marks.
bool isKanaChar(char16_t c) {
    return isHiragana(c) || isKatakana(c) || c == u'ー' || c == u'゛' || c == u'゜' ||
           (c >= u'\uFF66' && c <= u'\uFF9F');
}

bool isReading(const QString& text) {
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return isKanaChar(c.unicode()); });
}

QValidator* digitsValidator(QObject* parent) {
    return new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), parent);
}

} // namespace

Field::Field(QWidget* parent) : QLineEdit(parent) {
    // Japanese is typed through the input method; every field takes it but the
    // PIN, whose masked echo turns it off.
    setAttribute(Qt::WA_InputMethodEnabled, true);
}

// A field the program moves the focus to takes typing as one reached by Tab:
// its text selected, or the caret on the first blank of its mask. A field that
// passed the focus on while it was arriving (a rule of its own moved it) keeps
// nothing selected.
void Field::focusInEvent(QFocusEvent* event) {
    if (event->reason() == Qt::OtherFocusReason) {
        QFocusEvent asTab(QEvent::FocusIn, Qt::TabFocusReason);
        QLineEdit::focusInEvent(&asTab);
    } else {
        QLineEdit::focusInEvent(event);
    }
    if (!hasFocus())
        deselect();
}

TextField::TextField(QWidget* parent) : Field(parent) {}

void TextField::setDigitsOnly(bool on) {
    if (on == (validator() != nullptr))
        return;
    const QValidator* old = validator();
    setValidator(on ? digitsValidator(this) : nullptr);
    delete old;
}

NumField::NumField(QWidget* parent) : Field(parent) {
    setValidator(digitsValidator(this));
    connect(this, &QLineEdit::textChanged, this, [this] {
        const int now = value();
        if (now != lastValue_) {
            lastValue_ = now;
            Q_EMIT valueChanged(now);
        }
    });
}

void NumField::setRange(int minimum, int maximum) {
    minimum_ = minimum;
    maximum_ = maximum;
    lastValue_ = value();
}

int NumField::value() const {
    if (text().isEmpty())
        return minimum_;
    bool ok = false;
    const qlonglong number = text().toLongLong(&ok);
    // Only digits get in, so a text that does not read is too long a number.
    const qlonglong read = ok ? number : qlonglong(maximum_);
    // An empty range (maximum below minimum) answers the minimum.
    return int(std::max<qlonglong>(minimum_, std::min<qlonglong>(read, maximum_)));
}

void NumField::setValue(int value) { setText(QString::number(std::max(minimum_, std::min(value, maximum_)))); }

KanaField::KanaField(QWidget* parent) : Field(parent) {}

void KanaField::follow(QLineEdit* kanjiField) {
    if (kanji_)
        kanji_->removeEventFilter(this);
    kanji_ = kanjiField;
    pending_.clear();
    if (kanji_)
        kanji_->installEventFilter(this);
}

QString KanaField::reading(const QString& kana) {
    QString half;
    half.reserve(kana.size() * 2);
    for (const QChar ch : kana) {
        char16_t c = ch.unicode();
        if (isHiragana(c))
            c = char16_t(c + (firstKatakana - u'\u3041'));
        if (isKatakana(c))
            half += QString::fromUtf16(halfWidthKatakana[c - firstKatakana]);
        else if (c == u'ー')
            half += u'ｰ';
        else if (c == u'゛')
            half += u'ﾞ';
        else if (c == u'゜')
            half += u'ﾟ';
        else
            half += ch;
    }
    return half;
}

bool KanaField::eventFilter(QObject* watched, QEvent* event) {
    if (watched != kanji_)
        return Field::eventFilter(watched, event);
    if (event->type() == QEvent::InputMethod) {
        const auto* input = static_cast<const QInputMethodEvent*>(event);
        if (!input->commitString().isEmpty()) {
            // The reading before conversion; kana committed as they were typed are their own reading.
            const QString typed = !pending_.isEmpty()                ? pending_
                                  : isReading(input->commitString()) ? input->commitString()
                                                                     : QString();
            if (!typed.isEmpty())
                setText(text() + reading(typed));
            pending_.clear();
        }
        // Once converted the preedit shows kanji; the last kana preedit stays the
        // reading. An empty preedit does not drop it either: input methods clear
        // the preedit before they send the commit.
        if (isReading(input->preeditString()))
            pending_ = input->preeditString();
    } else if (event->type() == QEvent::FocusOut) {
        // The input method commits an open composition before the field loses
        // the focus; a reading still held after that belongs to nothing.
        pending_.clear();
    }
    return false;
}

TelField::TelField(QWidget* parent) : Field(parent) {
    setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9０-９()\\- 　]*")), this));
}

ZipField::ZipField(QWidget* parent) : Field(parent) {
    // Every digit optional, so that a part of a postcode may be left as typed.
    setInputMask(QStringLiteral("999-9999;_"));
}

QString ZipField::postcode() const {
    QString digits = text();
    digits.remove(QRegularExpression(QStringLiteral("[^0-9]")));
    if (digits.isEmpty())
        return {};
    if (digits.size() <= 3)
        return digits;
    return digits.left(3) + u'-' + digits.mid(3);
}

void ZipField::setPostcode(const QString& postcode) {
    QString digits = postcode;
    digits.remove(QRegularExpression(QStringLiteral("[^0-9]")));
    setText(digits);
}

PinField::PinField(QWidget* parent) : Field(parent) {
    // A password line edit keeps the input method off, so that no composition
    // shows the PIN in clear; a PIN is typed in ASCII.
    setEchoMode(QLineEdit::Password);
}

Trap::Trap(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(1, 1);
    setAttribute(Qt::WA_NoSystemBackground);
}

ReportList::ReportList(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setAllColumnsShowFocus(true);
    header()->setSectionsClickable(true);
    connect(header(), &QHeaderView::sectionClicked, this, &ReportList::columnClick);
}

void ReportList::setColumns(const QList<QPair<QString, int>>& columns) {
    setColumnCount(int(columns.size()));
    QStringList labels;
    for (const auto& column : columns)
        labels << column.first;
    setHeaderLabels(labels);
    for (int i = 0; i < columns.size(); ++i)
        setColumnWidth(i, twips(columns[i].second));
}

void ReportList::beginFill() {
    sortingWhileFilling_ = isSortingEnabled();
    setSortingEnabled(false);
    setUpdatesEnabled(false);
    filling_ = true;
}

void ReportList::endFill() {
    filling_ = false;
    addTopLevelItems(pending_);
    pending_.clear();
    setUpdatesEnabled(true);
    if (sortingWhileFilling_)
        setSortingEnabled(true); // sorts the rows in hand by the sort key and order
}

QTreeWidgetItem* ReportList::addItem(const QString& text, const QString& key, const QStringList& subItems) {
    auto* item = new QTreeWidgetItem(QStringList{text} + subItems);
    item->setData(0, Qt::UserRole, key);
    if (filling_)
        pending_.append(item);
    else
        addTopLevelItem(item);
    return item;
}

QString ReportList::key(const QTreeWidgetItem* item) {
    return item ? item->data(0, Qt::UserRole).toString() : QString();
}

QTreeWidgetItem* ReportList::findKey(const QString& key) const {
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (ReportList::key(topLevelItem(i)) == key)
            return topLevelItem(i);
    }
    return nullptr;
}

void ReportList::columnClick(int column) {
    if (column == sortKey_)
        sortOrder_ = sortOrder_ == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    else
        sortKey_ = column;
    // The header has already moved its indicator by its own rule; ours decides.
    header()->setSortIndicator(sortKey_, sortOrder_);
    setSortingEnabled(true); // sorts by the indicator, and keeps items added later in order
}

} // namespace controls
