#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace controls {

// A form's tab order as an explicit table of its controls with their tab
// indexes. Tab and Shift+Tab follow it (wrapping round), stopping at controls
// that are enabled, shown on the screen and tab stops; the focus walk of the
// program reads the same table.
class TabTable : public QObject {
    Q_OBJECT
public:
    explicit TabTable(QWidget* form);

    void add(QWidget* control, int tabIndex);
    int tabIndex(const QWidget* control) const; // -1 when not in the table
    // All controls in the order they were added (the form's collection order).
    QList<QWidget*> controls() const;

    // Whether a control is a tab stop: a Field's own flag, else its focus policy.
    static bool isTabStop(const QWidget* control);

    // Enter in a field moves on to the next control, as on a data-entry card.
    void setEnterMovesOn(bool on) { enterMovesOn_ = on; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        QPointer<QWidget> control;
        int tabIndex;
    };
    QWidget* neighbour(QWidget* from, bool backwards) const;

    QWidget* form_;
    QList<Entry> entries_;
    bool enterMovesOn_ = false;
};

// Maps focus moving between the controls of one form to GotFocus/LostFocus
// handlers; window activation and popups (a message box, a list) are ignored.
class FocusEvents : public QObject {
    Q_OBJECT
public:
    explicit FocusEvents(QWidget* form);
    void onGotFocus(QWidget* control, std::function<void()> handler);
    void onLostFocus(QWidget* control, std::function<void()> handler);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<QPair<QPointer<QWidget>, std::function<void()>>> got_;
    QList<QPair<QPointer<QWidget>, std::function<void()>>> lost_;
};

} // namespace controls
