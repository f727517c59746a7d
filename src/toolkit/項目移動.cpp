#include "toolkit/項目移動.h"

#include "platform/controls/fields.h"
#include "platform/controls/tabtable.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

// The kinds of control the walk may stop at: lists and drop-downs never are.
bool 停止種類chk(const QWidget* control) {
    return qobject_cast<const QAbstractButton*>(control) || qobject_cast<const controls::Field*>(control) ||
           qobject_cast<const controls::Trap*>(control);
}

// The control's own Enabled flag: a control inside a disabled container keeps
// its own flag set, and the walk counts it, as it counts its own Visible flag.
bool 自身有効chk(const QWidget* control) {
    return !control->testAttribute(Qt::WA_ForceDisabled);
}

} // namespace

void 次項目find(const controls::TabTable& form, QWidget*& 移動先項目) {
    if (!移動先項目)
        return;
    const int 開始順 = form.tabIndex(移動先項目);
    QWidget* 候補 = nullptr;
    int 候補順 = 0;
    for (QWidget* control : form.controls()) {
        if (!停止種類chk(control) || control->isHidden() || !自身有効chk(control) ||
            !controls::TabTable::isTabStop(control))
            continue;
        const int 順 = form.tabIndex(control);
        if (順 < 開始順)
            continue;
        // <= : of equal indexes the later one in the table wins.
        if (!候補 || 順 <= 候補順) {
            候補 = control;
            候補順 = 順;
        }
    }
    if (候補)
        移動先項目 = 候補;
}

void 項目focus(const controls::TabTable& form, QWidget* control) {
    QWidget* 移動先項目 = control;
    次項目find(form, 移動先項目);
    if (!移動先項目 || 移動先項目->isHidden() || !移動先項目->isEnabled())
        return;
    // A control on a page that is not shown is not on the screen: it cannot take
    // the focus, and the call does nothing.
    if (移動先項目->isVisible())
        移動先項目->setFocus(Qt::OtherFocusReason);
}

// The program sized its screen by the version of the desktop system it ran on.
// This platform has no such version; the answer is that of any other version,
// -1, which gives the screen the height margin of 380 twips.
short Windows版get() { return -1; }

short Windows版判定(bool 取得済, int major, int minor) {
    if (!取得済)
        return 0;
    if (major == 6) {
        if (minor == 0 || minor == 1)
            return 0;
        if (minor == 2)
            return 1;
    }
    return -1;
}

QSize 画面枠get(short 版, const QRect& お知らせ) {
    const int margin = 版 == 0 ? 420 : 版 == 1 ? 440 : 380;
    return QSize(お知らせ.width() + controls::twips(90), お知らせ.top() + お知らせ.height() + controls::twips(margin));
}

void 画面解像度get(short& 画面幅, short& 画面高) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen ? screen->size() : QSize(0, 0);
    画面幅 = short(size.width());
    画面高 = short(size.height());
}

void SetWindowTop(QWidget* window) {
    if (window)
        window->raise();
}
