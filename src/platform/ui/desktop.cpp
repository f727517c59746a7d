#include "platform/ui/desktop.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace ui {

bool SystemDesktop::open(const QString& pathOrLink, const QString& /*workingFolder*/) {
    const bool link = pathOrLink.contains(QLatin1Char(':')) && !pathOrLink.startsWith(QLatin1Char('/'));
    return QDesktopServices::openUrl(link ? QUrl(pathOrLink) : QUrl::fromLocalFile(pathOrLink));
}

bool SystemDesktop::start(const QString& program, const QStringList& arguments) {
    return QProcess::startDetached(program, arguments);
}

SystemDesktop& SystemDesktop::instance() {
    static SystemDesktop desktop;
    return desktop;
}

} // namespace ui
