#pragma once

#include <QLabel>
#include <QPushButton>
#include <QString>

class QLineEdit;
class QWidget;

// The pieces the small dialogs of this folder are made of.
namespace dialog_parts {

// A field's title, named for the program's rules.
QLabel* title(const QString& name, const QString& caption, QWidget* parent);
// A button that Enter never presses of its own accord.
QPushButton* button(const QString& name, const QString& caption, QWidget* parent);
// A click on the title sends the focus to the field.
void titleFocuses(QLabel* title, QWidget* field);
// Enter in the field moves on as Tab does.
void enterMovesOn(QLineEdit* field);

} // namespace dialog_parts
