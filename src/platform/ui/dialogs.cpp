#include "platform/ui/dialogs.h"

#include <QFileDialog>
#include <QPainter>
#include <QPixmap>
#include <QPrintDialog>
#include <QPrinter>
#include <QStringList>

namespace ui {

namespace {

// "name (*.a)|*.a|name (*.b)|*.b" to the dialog's filters: every other piece is a name.
QStringList filters(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        out.append(parts.at(i));
    return out;
}

QString run(QWidget* parent, const QString& filter, int filterIndex, const QString& folder, QFileDialog::AcceptMode mode) {
    QFileDialog dialog(parent, QString(), folder);
    dialog.setAcceptMode(mode);
    dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    // The save form picks a file as well: an existing one is no overwrite to confirm.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList names = filters(filter);
    dialog.setNameFilters(names);
    if (filterIndex >= 0 && filterIndex < names.size())
        dialog.selectNameFilter(names.at(filterIndex));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().first();
}

} // namespace

QString ScreenDialogs::openFile(QWidget* parent, const QString& filter, int filterIndex, const QString& folder) {
    return run(parent, filter, filterIndex, folder, QFileDialog::AcceptOpen);
}

QString ScreenDialogs::saveFile(QWidget* parent, const QString& filter, int filterIndex, const QString& folder) {
    return run(parent, filter, filterIndex, folder, QFileDialog::AcceptSave);
}

QString ScreenDialogs::exportFile(QWidget* parent, const QString& filter, const QString& path) {
    // The folder and the proposed name of the path; replacing a file is confirmed.
    QFileDialog dialog(parent, QString(), path);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(filters(filter));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().first();
}

QString ScreenDialogs::chooseFolder(QWidget* parent, const QString& title, const QString& folder) {
    return QFileDialog::getExistingDirectory(parent, title, folder);
}

bool ScreenDialogs::printPicture(QWidget* parent, const QPixmap& picture) {
    QPrinter printer;
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    QPainter painter(&printer);
    painter.drawPixmap(0, 0, picture);
    return painter.end();
}

ScreenDialogs& ScreenDialogs::instance() {
    static ScreenDialogs dialogs;
    return dialogs;
}

} // namespace ui
