#pragma once

#include <QString>

class QWidget;
class QPixmap;

namespace ui {

// The common dialogs: files, folders and the printer. Each answers what the
// user chose, or an empty text (false) when the dialog was cancelled.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    // A file to open; filter in the form "name (*.a)|*.a|name (*.b)|*.b", index from 0.
    virtual QString openFile(QWidget* parent, const QString& filter, int filterIndex, const QString& folder) = 0;
    // A file named in the save form of the dialog: a name that does not exist may be typed.
    virtual QString saveFile(QWidget* parent, const QString& filter, int filterIndex, const QString& folder) = 0;
    virtual QString chooseFolder(QWidget* parent, const QString& title, const QString& folder) = 0;
    // A file to write an export to, proposed as path (a folder and a name);
    // the dialog asks before an existing file is replaced.
    virtual QString exportFile(QWidget* parent, const QString& filter, const QString& path) = 0;
    // Prints a picture at its natural size on the printer the user chose.
    virtual bool printPicture(QWidget* parent, const QPixmap& picture) = 0;
};

// The dialogs on the screen.
class ScreenDialogs : public Dialogs {
public:
    QString openFile(QWidget* parent, const QString& filter, int filterIndex, const QString& folder) override;
    QString saveFile(QWidget* parent, const QString& filter, int filterIndex, const QString& folder) override;
    QString chooseFolder(QWidget* parent, const QString& title, const QString& folder) override;
    QString exportFile(QWidget* parent, const QString& filter, const QString& path) override;
    bool printPicture(QWidget* parent, const QPixmap& picture) override;
    static ScreenDialogs& instance();
};

} // namespace ui
