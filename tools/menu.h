#pragma once

#include "tools/setup.h"

#include <QString>

namespace setup {

// The menu entry of an installation for the current user: a desktop entry
// file in the user's applications folder ($XDG_DATA_HOME/applications, by
// default ~/.local/share/applications) that starts ROOT/prgbin/担当者登録,
// with the program's icon copied into the user's icon folder. Each installation
// root has its own entry, so that writing it again replaces it.
struct MenuEntry {
    QString file; // the desktop entry file
    QString icon; // the icon file it names
};

MenuEntry menuEntryFor(const QString& root);

// The text of the entry for the installation root with that icon file.
QString desktopEntryText(const QString& root, const QString& iconFile);

// Writes the icon and the entry. The program must be in ROOT/prgbin.
Result writeMenuEntry(const QString& root);

// True when the folder holds an installation: its configuration database.
bool isInstallation(const QString& root);

} // namespace setup
