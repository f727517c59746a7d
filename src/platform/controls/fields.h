#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QString>
#include <QTreeWidget>

// The input controls of the program's forms. Every field is a line edit that
// takes Japanese input through the platform's input method.
namespace controls {

// Marks the controls that the focus walk stops at (besides buttons).
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

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    int byteLimit_ = 0;
    bool tabStop_ = true;
};

// Free text, or a code with a character limit (QLineEdit::setMaxLength) and
// digits only when setDigitsOnly is on.
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

// A kana field: it follows the reading typed into its kanji field through the
// input method (the reading before conversion), in half-width katakana.
class KanaField : public Field {
    Q_OBJECT
public:
    explicit KanaField(QWidget* parent = nullptr);
    void follow(QLineEdit* kanjiField);

    // Half-width katakana for a reading in hiragana or katakana.
    static QString reading(const QString& kana);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QLineEdit> kanji_;
    QString pending_; // the last reading seen in the kanji field's preedit
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
