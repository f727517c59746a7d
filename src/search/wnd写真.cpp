#include "search/wnd写真.h"

#include "access/mod操作許可.h"
#include "access/mod暗証番号.h"
#include "shell/context.h"

#include <QEvent>
#include <QLabel>
#include <QMouseEvent>

wnd写真::wnd写真(Context& context, QWidget* parent) : QDialog(parent), ctx(context) {
    setObjectName(QStringLiteral("wnd写真"));
    img_写真 = new QLabel(this);
    img_写真->setObjectName(QStringLiteral("img_写真"));
    img_写真->installEventFilter(this);
}

bool wnd写真::eventFilter(QObject* watched, QEvent* event) {
    if (watched == img_写真 && event->type() == QEvent::MouseButtonDblClick &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        img_写真_DblClick();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void wnd写真::img_写真_DblClick() {
    if (操作許可chk(ctx, QStringLiteral("営業支援データ管理"), ctx.プログラムID, 操作番号::印刷) != 許可回答::許可)
        return;
    // The picture at its natural size, not as stretched on the screen; a cancelled
    // printer dialog prints nothing and says nothing.
    ctx.dialogs->printPicture(this, img_写真->pixmap());
}
