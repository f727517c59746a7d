#include "platform/ui/screenshot.h"

#include <QApplication>
#include <QPixmap>
#include <QWidget>

namespace ui {

QString saveScreenshot(QWidget& window, const QString& file) {
    window.show();
    window.raise();
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    const QPixmap picture = window.grab();
    if (picture.isNull())
        return QStringLiteral("the window could not be drawn");
    if (!picture.save(file, "PNG"))
        return QStringLiteral("cannot write ") + file;
    return QString();
}

} // namespace ui
