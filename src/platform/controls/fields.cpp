#include "platform/controls/fields.h"

#include <QDateTime>
#include <QEvent>
#include <QFocusEvent>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
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

// A Latin letter of either width: romaji still being typed.
bool isRomaji(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'\uFF41' && c <= u'\uFF5A') ||
           (c >= u'\uFF21' && c <= u'\uFF3A');
}

QValidator* digitsValidator(QObject* parent) {
    return new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), parent);
}

// What the input method may deliver twice: a composition cancelled in a field,
// and one committed into a field that the focus then left. Kept for a few
// seconds; a new composition anywhere forgets them.
struct Echo {
    QStringList texts;
    QPointer<QWidget> field;
    qint64 at = 0;
};
Echo& cancelledEcho() {
    static Echo echo;
    return echo;
}
Echo& leftEcho() {
    static Echo echo;
    return echo;
}

bool matches(Echo& echo, const QString& text, const QWidget* field, bool otherField) {
    if (echo.texts.isEmpty() || QDateTime::currentMSecsSinceEpoch() - echo.at > 10000 || !echo.texts.contains(text))
        return false;
    if (otherField == (echo.field == field))
        return false;
    echo.texts.clear();
    return true;
}

} // namespace

Field::Field(QWidget* parent) : QLineEdit(parent) {
    setAttribute(Qt::WA_InputMethodEnabled, true);
}

void Field::setDirectInput(bool on) {
    direct_ = on;
    setAttribute(Qt::WA_InputMethodEnabled, !on);
}

QVariant Field::inputMethodQuery(Qt::InputMethodQuery query) const {
    // The line edit answers by its enabled and read-only states alone: a direct
    // field says no itself, so that keys reach it as they are.
    if (direct_ && query == Qt::ImEnabled)
        return false;
    if (direct_ && query == Qt::ImHints)
        return QVariant(int(Qt::ImhLatinOnly | Qt::ImhPreferLatin | Qt::ImhNoPredictiveText));
    return QLineEdit::inputMethodQuery(query);
}

// A field the program moves the focus to takes typing as one reached by Tab:
// its text selected, or the caret on the first blank of its mask. A field that
// passed the focus on while it was arriving (a rule of its own moved it) keeps
// nothing selected.
void Field::focusInEvent(QFocusEvent* event) {
    composing_ = false;
    composed_ = false;
    committedLast_.clear();
    if (event->reason() == Qt::OtherFocusReason) {
        QFocusEvent asTab(QEvent::FocusIn, Qt::TabFocusReason);
        QLineEdit::focusInEvent(&asTab);
    } else {
        QLineEdit::focusInEvent(event);
    }
    if (!hasFocus())
        deselect();
}

void Field::focusOutEvent(QFocusEvent* event) {
    // A composition committed as the focus left: the field that gets the focus
    // may be handed it again.
    if (!committedLast_.isEmpty()) {
        leftEcho() = Echo{{committedLast_}, this, QDateTime::currentMSecsSinceEpoch()};
        committedLast_.clear();
    }
    composing_ = false;
    QLineEdit::focusOutEvent(event);
}

void Field::keyPressEvent(QKeyEvent* event) {
    committedLast_.clear();
    QLineEdit::keyPressEvent(event);
}

void Field::inputMethodEvent(QInputMethodEvent* event) {
    const QString preedit = event->preeditString();
    const QString commit = event->commitString();
    if (!commit.isEmpty() && preedit.isEmpty() && !composed_ &&
        (matches(cancelledEcho(), commit, this, false) || matches(leftEcho(), commit, this, true))) {
        event->accept();
        return;
    }
    if (!preedit.isEmpty()) {
        if (!composing_) {
            // A new composition: nothing before it is delivered again.
            cancelledEcho().texts.clear();
            leftEcho().texts.clear();
        }
        composing_ = true;
        composed_ = true;
        if (isReading(KanaField::preeditReading(preedit)))
            lastReading_ = preedit;
        else
            lastConverted_ = preedit;
        committedLast_.clear();
    } else if (!commit.isEmpty()) {
        committedLast_ = composing_ ? commit : QString();
        composing_ = false;
    } else {
        if (composing_) {
            cancelledEcho() = Echo{{KanaField::preeditReading(lastReading_), lastConverted_}, this,
                                   QDateTime::currentMSecsSinceEpoch()};
            cancelledEcho().texts.removeAll(QString());
            composed_ = false;
        }
        composing_ = false;
        committedLast_.clear();
    }
    if (preedit.isEmpty()) {
        lastReading_.clear();
        lastConverted_.clear();
    }
    QLineEdit::inputMethodEvent(event);
}

TextField::TextField(QWidget* parent) : Field(parent) {}

void TextField::setDigitsOnly(bool on) {
    setDirectInput(on);
    if (on == (validator() != nullptr))
        return;
    const QValidator* old = validator();
    setValidator(on ? digitsValidator(this) : nullptr);
    delete old;
}

NumField::NumField(QWidget* parent) : Field(parent) {
    setDirectInput(true);
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

KanaField::KanaField(QWidget* parent) : Field(parent) {
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { ownEdited(text); });
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (!updating_)
            rebase_ = true;
    });
}

void KanaField::follow(QLineEdit* kanjiField) {
    if (kanji_) {
        kanji_->removeEventFilter(this);
        disconnect(kanji_, nullptr, this, nullptr);
    }
    kanji_ = kanjiField;
    pieces_.clear();
    rebase_ = true;
    composing_ = false;
    commit_.reset();
    if (!kanji_)
        return;
    kanjiText_ = kanji_->text();
    kanjiFromProgram_ = true;
    kanji_->installEventFilter(this);
    // A change the user made comes as textEdited before its textChanged; a
    // change the program made comes as textChanged alone.
    connect(kanji_, &QLineEdit::textEdited, this, [this](const QString& text) {
        const QString before = kanjiText_;
        const bool rebase = rebase_ || kanjiFromProgram_;
        kanjiText_ = text;
        kanjiFromProgram_ = false;
        kanjiEdited(before, text, rebase);
    });
    connect(kanji_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text == kanjiText_)
            return;
        kanjiText_ = text;
        kanjiFromProgram_ = true;
    });
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
        else if (c == u'・')
            half += u'･';
        else if (c == u'「')
            half += u'｢';
        else if (c == u'」')
            half += u'｣';
        else if (c == u'、')
            half += u'､';
        else if (c == u'。')
            half += u'｡';
        else if (c >= u'\uFF01' && c <= u'\uFF5E')
            half += QChar(char16_t(c - 0xFEE0));
        else if (c == u'\u3000')
            half += u' ';
        else
            half += ch;
    }
    return half;
}

QString KanaField::preeditReading(const QString& preedit) {
    QString text = preedit;
    // A final n still in romaji is ん; other romaji at the end are not yet kana.
    if (!text.isEmpty() && (text.back() == u'n' || text.back() == u'ｎ' || text.back() == u'N' ||
                            text.back() == u'Ｎ')) {
        text.chop(1);
        text += u'ん';
    }
    while (!text.isEmpty() && isRomaji(text.back().unicode()))
        text.chop(1);
    return isReading(text) ? text : QString();
}

bool KanaField::eventFilter(QObject* watched, QEvent* event) {
    if (watched != kanji_)
        return Field::eventFilter(watched, event);
    if (event->type() == QEvent::InputMethod) {
        kanjiInput(static_cast<const QInputMethodEvent*>(event));
    } else if (event->type() == QEvent::FocusOut) {
        composing_ = false;
        justCommitted_ = 0;
        commit_.reset();
    }
    return false;
}

// Before the kanji field takes an input method event: the composition's
// reading, and what a commit brings.
void KanaField::kanjiInput(const QInputMethodEvent* event) {
    const QString preedit = event->preeditString();
    const QString commit = event->commitString();
    commit_.reset();
    if (!commit.isEmpty()) {
        if (composing_)
            commit_ = Commit{commit, reading_, composition_, preedit.isEmpty()};
        else
            // Kana committed as typed, with no composition shown, are their own reading.
            commit_ = Commit{commit, isReading(commit) ? commit : QString(), 0, isReading(commit)};
    }
    if (!preedit.isEmpty()) {
        const QString reading = preeditReading(preedit);
        if (!reading.isEmpty()) {
            if (!composing_) {
                composition_ = ++compositions_;
                justCommitted_ = 0;
            }
            reading_ = reading;
            composing_ = true;
        } else if (!composing_ && justCommitted_ != 0) {
            // A converted preedit right after a commit: the rest of that
            // composition, committed in parts. Its reading waits for the last part.
            composition_ = justCommitted_;
            composing_ = true;
            for (Piece& piece : pieces_) {
                if (piece.composition == composition_)
                    piece.known = false;
            }
            showReading();
        } else {
            if (!composing_) {
                // A composition with no kana to it (letters, say): no reading.
                composition_ = ++compositions_;
                justCommitted_ = 0;
                reading_.clear();
            }
            composing_ = true;
        }
    } else if (!commit.isEmpty()) {
        justCommitted_ = composing_ ? composition_ : 0;
        composing_ = false;
    } else {
        // Both empty: after a commit the composition is over; without one it was cancelled.
        if (composing_)
            reading_.clear();
        justCommitted_ = 0;
        composing_ = false;
    }
}

void KanaField::kanjiEdited(const QString& before, const QString& after, bool rebase) {
    if (rebase) {
        // The kana as it stands is the reading of the whole text as it stood
        // (of nothing yet, when it was typed ahead of the kanji).
        pieces_.clear();
        if (!text().isEmpty())
            pieces_.append(Piece{0, before.size(), text(), 0, true});
        rebase_ = false;
    }
    qsizetype prefix = 0;
    const qsizetype shorter = std::min(before.size(), after.size());
    while (prefix < shorter && before.at(prefix) == after.at(prefix))
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix && before.at(before.size() - 1 - suffix) == after.at(after.size() - 1 - suffix))
        ++suffix;
    const qsizetype removedEnd = before.size() - suffix;
    const qsizetype delta = after.size() - before.size();
    const QString inserted = after.mid(prefix, after.size() - suffix - prefix);

    // A piece touched by the change goes with its reading; those behind it move.
    QList<Piece> kept;
    for (Piece piece : pieces_) {
        if (piece.start + piece.length <= prefix) {
            kept.append(piece);
        } else if (piece.start >= removedEnd) {
            piece.start += delta;
            kept.append(piece);
        }
    }
    pieces_ = kept;

    if (commit_ && !inserted.isEmpty() && inserted == commit_->text) {
        Piece piece{prefix, inserted.size(), commit_->reading, commit_->composition, commit_->known};
        if (piece.known && piece.composition != 0) {
            // The last part of a composition committed in parts takes the
            // whole reading over the parts before it.
            for (qsizetype i = pieces_.size() - 1; i >= 0; --i) {
                const Piece& part = pieces_.at(i);
                if (part.composition == piece.composition && !part.known &&
                    part.start + part.length == piece.start) {
                    piece.length += part.length;
                    piece.start = part.start;
                    pieces_.removeAt(i);
                }
            }
        }
        pieces_.append(piece);
        std::sort(pieces_.begin(), pieces_.end(), [](const Piece& a, const Piece& b) { return a.start < b.start; });
    }
    commit_.reset();
    // An emptied kanji field has no reading left.
    if (after.isEmpty())
        pieces_.clear();
    showReading();
}

void KanaField::ownEdited(const QString& typed) {
    // What is typed or pasted here is kept in the stored form.
    const QString half = reading(typed);
    if (half != typed) {
        const int cursor = cursorPosition();
        updating_ = true;
        setText(half);
        setCursorPosition(std::min(int(half.size()), cursor + int(half.size() - typed.size())));
        updating_ = false;
    }
    rebase_ = true;
}

void KanaField::showReading() {
    QString kana;
    for (const Piece& piece : pieces_) {
        if (piece.known)
            kana += reading(piece.reading);
    }
    if (kana == text())
        return;
    updating_ = true;
    setText(kana);
    updating_ = false;
}

TelField::TelField(QWidget* parent) : Field(parent) {
    setDirectInput(true);
    setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9０-９()\\- 　]*")), this));
}

ZipField::ZipField(QWidget* parent) : Field(parent) {
    setDirectInput(true);
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
    // No composition may show the PIN in clear; a PIN is typed in ASCII.
    setDirectInput(true);
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
