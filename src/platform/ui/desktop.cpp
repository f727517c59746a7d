#include "platform/ui/desktop.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace ui {

bool SystemDesktop::open(const QString& pathOrLink, const QString& workingFolder) {
    // The desktop's opener runs in the working folder given, so that what it
    // starts for a document finds the files beside it.
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!opener.isEmpty()) {
        QProcess process;
        process.setProgram(opener);
        process.setArguments({pathOrLink});
        if (QFileInfo(workingFolder).isDir())
            process.setWorkingDirectory(workingFolder);
        return process.startDetached();
    }
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
