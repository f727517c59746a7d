#include "platform/controls/tabtable.h"

#include "platform/controls/fields.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>

#include <algorithm>

namespace controls {

TabTable::TabTable(QWidget* form) : QObject(form), form_(form) { form_->installEventFilter(this); }

void TabTable::add(QWidget* control, int tabIndex) {
    entries_.append({control, tabIndex});
    // On the control itself: a list or a drop-down would otherwise take the Tab key first.
    control->installEventFilter(this);
}

int TabTable::tabIndex(const QWidget* control) const {
    for (const Entry& entry : entries_) {
        if (entry.control == control)
            return entry.tabIndex;
    }
    return -1;
}

QList<QWidget*> TabTable::controls() const {
    QList<QWidget*> all;
    for (const Entry& entry : entries_) {
        if (entry.control)
            all.append(entry.control);
    }
    return all;
}

bool TabTable::isTabStop(const QWidget* control) {
    if (const auto* field = qobject_cast<const Field*>(control))
        return field->tabStop();
    if (qobject_cast<const Trap*>(control))
        return true;
    return (control->focusPolicy() & Qt::TabFocus) != 0;
}

// The controls in tab order: by tab index, and of two with the same index the
// one added later first, as the focus walk prefers it.
QWidget* TabTable::neighbour(QWidget* from, bool backwards) const {
    QList<Entry> order;
    for (const Entry& entry : entries_) {
        if (entry.control)
            order.prepend(entry);
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const Entry& a, const Entry& b) { return a.tabIndex < b.tabIndex; });
    const qsizetype count = order.size();
    if (count == 0)
        return nullptr;

    // A focus outside the table starts the round before the first control (after the last going back).
    // The control itself, else the nearest container in the table that holds it
    // (a list's viewport, a tab control's page).
    qsizetype at = -1;
    for (qsizetype i = 0; i < count && from; ++i) {
        if (order[i].control == from) {
            at = i;
            break;
        }
    }
    for (qsizetype i = 0; i < count && from && at < 0; ++i) {
        if (order[i].control->isAncestorOf(from) &&
            std::none_of(order.cbegin(), order.cend(), [&](const Entry& e) {
                return e.control != order[i].control && order[i].control->isAncestorOf(e.control) &&
                       e.control->isAncestorOf(from);
            }))
            at = i;
    }
    if (at < 0)
        at = backwards ? 0 : count - 1;

    for (qsizetype step = 1; step <= count; ++step) {
        const qsizetype i = ((backwards ? at - step : at + step) % count + count) % count;
        QWidget* control = order[i].control;
        if (control->isEnabled() && control->isVisible() && isTabStop(control))
            return control;
    }
    return nullptr;
}

bool TabTable::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return false;
    const bool backtab =
        key->key() == Qt::Key_Backtab || (key->key() == Qt::Key_Tab && (key->modifiers() & Qt::ShiftModifier));
    // Where the form wants it, Enter in a field moves on as Tab does; buttons
    // and lists keep their own Enter.
    const bool enter = enterMovesOn_ && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
                       qobject_cast<Field*>(watched);
    if (!backtab && key->key() != Qt::Key_Tab && !enter)
        return false;
    QWidget* next = neighbour(QApplication::focusWidget(), backtab);
    if (!next)
        return false;
    next->setFocus(backtab ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    return true;
}

FocusEvents::FocusEvents(QWidget* form) : QObject(form) {}

void FocusEvents::onGotFocus(QWidget* control, std::function<void()> handler) {
    got_.append({control, std::move(handler)});
    control->installEventFilter(this);
}

void FocusEvents::onLostFocus(QWidget* control, std::function<void()> handler) {
    lost_.append({control, std::move(handler)});
    control->installEventFilter(this);
}

bool FocusEvents::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut)
        return QObject::eventFilter(watched, event);
    // The window losing or regaining the activation (a message box, another
    // program) and a drop-down opening are no moves between controls. An open
    // drop-down also hands the focus on to its own list with an ordinary reason.
    const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || QApplication::activePopupWidget())
        return false;
    // Handlers move the focus and may register others: run a copy.
    const auto handlers = event->type() == QEvent::FocusIn ? got_ : lost_;
    for (const auto& [control, handler] : handlers) {
        if (control == watched)
            handler();
    }
    return false;
}

} // namespace controls
