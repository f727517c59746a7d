#pragma once

#include <QRect>
#include <QSize>

class QWidget;

namespace controls {
class TabTable;
}

// The focus walk over the controls of the current form, given by its tab table,
// and the frame of the screen.

// Replaces 移動先項目 by the control at or after it in tab order that can take
// the focus: a button, a field or a trap that is not hidden itself (a control
// on a page not shown still counts), enabled itself (a control inside a
// disabled container still counts) and a tab stop, with the smallest
// tab index not below that of 移動先項目; of equal indexes the later in the
// table. 移動先項目 stays when none qualifies. A target outside the table has
// no tab index: every control qualifies. A null target stays null.
void 次項目find(const controls::TabTable& form, QWidget*& 移動先項目);

// Focuses the control, or the next one that can take the focus. When nothing
// at or after it can, the control itself gets the focus if it is shown and
// enabled; a control that is not on the screen takes none.
void 項目focus(const controls::TabTable& form, QWidget* control);

// The version class of the running system for the screen's height margin:
// always -1 on this platform.
short Windows版get();

// The version class of a system version: -1 for major version 5, 0 for 6.0
// and 6.1, 1 for 6.2, -1 for any other version; 0 when the version could not
// be read (取得済 false).
short Windows版判定(bool 取得済, int major, int minor);

// The size in pixels of a form whose status line stands at the bottom with the
// given geometry: the line's width plus 90 twips, and its top and height plus
// the margin of the version class, 380 twips for -1, 420 for 0, 440 for 1.
QSize 画面枠get(short 版, const QRect& お知らせ);

// The size of the primary screen in pixels; 0 and 0 without a screen.
void 画面解像度get(short& 画面幅, short& 画面高);

// Brings the window to the top of the windows without moving or sizing it.
void SetWindowTop(QWidget* window);
