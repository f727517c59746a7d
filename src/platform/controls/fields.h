#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QString>
#include <QTreeWidget>

#include <optional>

// The input controls of the program's forms: line edits, Japanese or direct.
namespace controls {

// Marks the controls that the focus walk stops at (besides buttons).
//
// A field takes Japanese through the platform's input method, or, as a direct
// field (codes, numbers, dates, telephones, postcodes, PINs, mail addresses,
// login names), half-width keys whatever state the input method is in: such a
// field tells the input method that it takes none.
//
// The input method's plumbing sometimes delivers a composition twice: a
// conversion ended by a click in another field is committed into the field
// left and again into the field clicked, and a cancelled reading can be
// committed later. A commit that arrives in a field that has shown no
// composition since it got the focus, and that repeats such a composition, is
// not taken.
class Field : public QLineEdit {
    Q_OBJECT
public:
    explicit Field(QWidget* parent = nullptr);

    // The limit of a free-text field in bytes of the legacy code page. It is
    // not enforced while typing: the field rules count it and cut to it.
    int byteLimit() const { return byteLimit_; }
    void setByteLimit(int bytes) { byteLimit_ = bytes; }

    // Whether the tab order stops here (a tab stop may still be focused by the program).
    bool tabStop() const { return tabStop_; }
    void setTabStop(bool on) { tabStop_ = on; }

    // Half-width keys only, the input method kept out.
    bool directInput() const { return direct_; }
    void setDirectInput(bool on);

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int byteLimit_ = 0;
    bool tabStop_ = true;
    bool direct_ = false;
    bool composing_ = false;   // a composition shows in the field
    bool composed_ = false;    // one has shown since the field got the focus or since the last cancel
    QString lastReading_;      // the composition's last preedit in kana
    QString lastConverted_;    // its last converted preedit
    QString committedLast_;    // a commit that nothing but the focus leaving has followed yet
};

// Free text, or a code with a character limit (QLineEdit::setMaxLength) and
// digits only when setDigitsOnly is on; a code field takes direct input.
class TextField : public Field {
    Q_OBJECT
public:
    explicit TextField(QWidget* parent = nullptr);
    void setDigitsOnly(bool on);
};

// A whole number between a minimum and a maximum, typed as digits. A drop-down
// list beside it is kept in step by the form's rules.
class NumField : public Field {
    Q_OBJECT
public:
    explicit NumField(QWidget* parent = nullptr);
    int minimum() const { return minimum_; }
    int maximum() const { return maximum_; }
    void setRange(int minimum, int maximum);
    // The value shown; the minimum when the text is empty or not a number.
    int value() const;
    void setValue(int value);

Q_SIGNALS:
    void valueChanged(int value);

private:
    int minimum_ = 0;
    int maximum_ = 0;
    int lastValue_ = 0; // the value last announced by valueChanged
};

// A kana field: what is typed or pasted into it becomes half-width katakana,
// the stored form. Following a kanji field, it holds the reading of what was
// typed there through the input method, piece by committed piece: a piece
// deleted or replaced in the kanji field takes its reading with it, emptying
// the kanji field empties the reading, a cancelled composition adds nothing,
// and a composition committed in parts gives its reading once, when its last
// part is committed. Text that comes into the kanji field without a reading
// (pasted, typed without the input method) leaves the reading as it stands,
// for the user to correct by hand; a reading corrected by hand, or set by the
// program, is kept as the reading of the whole kanji text from then on.
class KanaField : public Field {
    Q_OBJECT
public:
    explicit KanaField(QWidget* parent = nullptr);
    void follow(QLineEdit* kanjiField);

    // Half-width katakana for kana of either kind and half-width forms of
    // full-width letters, digits and signs; other characters stay.
    static QString reading(const QString& kana);
    // The reading of an input method's preedit, in hiragana: the preedit
    // itself when it is kana, with romaji still being typed at its end left
    // out but for an n, which is ん; "" for a converted preedit.
    static QString preeditReading(const QString& preedit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A stretch of the kanji text with the reading that came with it.
    struct Piece {
        qsizetype start = 0;
        qsizetype length = 0;
        QString reading;
        int composition = 0; // the composition it came from, 0 for none
        bool known = true;   // false while the rest of its composition is still open
    };
    // The commit the kanji field is about to take.
    struct Commit {
        QString text;
        QString reading;
        int composition = 0;
        bool known = true;
    };
    void kanjiInput(const QInputMethodEvent* event);
    void kanjiEdited(const QString& before, const QString& after, bool rebase);
    void ownEdited(const QString& text);
    void showReading();

    QPointer<QLineEdit> kanji_;
    QList<Piece> pieces_;
    QString kanjiText_;
    bool kanjiFromProgram_ = true; // the kanji text was last set by the program
    bool rebase_ = true;           // the pieces no longer describe the two fields
    bool updating_ = false;        // the following itself sets the kana text
    // The composition under way in the kanji field.
    bool composing_ = false;
    int composition_ = 0;
    int compositions_ = 0;
    int justCommitted_ = 0; // a composition whose commit may yet be continued
    QString reading_;
    std::optional<Commit> commit_;
};

// A telephone number: digits, hyphens, brackets and blanks.
class TelField : public Field {
    Q_OBJECT
public:
    explicit TelField(QWidget* parent = nullptr);
};

// A postcode typed as "000-0000"; postcode() gives what was typed with its
// hyphen ("100-0001", "100" for a first part alone), or "" when no digit was typed.
class ZipField : public Field {
    Q_OBJECT
public:
    explicit ZipField(QWidget* parent = nullptr);
    QString postcode() const;
    void setPostcode(const QString& postcode);
};

// A PIN: shown masked.
class PinField : public Field {
    Q_OBJECT
public:
    explicit PinField(QWidget* parent = nullptr);
};

// A zero-size stop in the tab order at the end of a tab page. It lies on the
// form itself so that it can always take the focus; its form acts when it gets it.
class Trap : public QWidget {
    Q_OBJECT
public:
    explicit Trap(QWidget* parent = nullptr);
};

// A report-style list: columns with widths in twips, items with a key, sorted
// by a click on a column head (a second click on the same column turns the order).
class ReportList : public QTreeWidget {
    Q_OBJECT
public:
    explicit ReportList(QWidget* parent = nullptr);
    // Headers and widths in twips (15 twips a pixel).
    void setColumns(const QList<QPair<QString, int>>& columns);
    // Around the adding of many items: sorting and painting wait for the end,
    // and the items join the list together there.
    void beginFill();
    void endFill();
    // Adds an item: its text, its key, the texts of its further columns.
    // Between beginFill and endFill it is in the list only after endFill.
    QTreeWidgetItem* addItem(const QString& text, const QString& key, const QStringList& subItems = {});
    static QString key(const QTreeWidgetItem* item);
    QTreeWidgetItem* findKey(const QString& key) const;
    int sortKey() const { return sortKey_; }
    Qt::SortOrder sortOrder() const { return sortOrder_; }
    // What a click on a column head does.
    void columnClick(int column);

private:
    int sortKey_ = 0;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    bool sortingWhileFilling_ = false;
    bool filling_ = false;
    QList<QTreeWidgetItem*> pending_;
};

// Twips to pixels: 15 twips a pixel.
constexpr int twips(int value) {
    return value / 15;
}

} // namespace controls
