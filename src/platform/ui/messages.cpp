#include "platform/ui/messages.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTextStream>

namespace ui {

Answer DialogMessages::show(const QString& text, Buttons buttons, int defaultButton) {
    QMessageBox box;
    box.setWindowTitle(title_);
    box.setIcon(QMessageBox::NoIcon);
    // A line break in the program's texts is character 13.
    box.setText(QString(text).replace(QChar(13), QChar(10)));
    if (buttons == Buttons::Ok) {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return Answer::Ok;
    }
    QPushButton* yes = box.addButton(QStringLiteral("はい(&Y)"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(QStringLiteral("いいえ(&N)"), QMessageBox::NoRole);
    box.setDefaultButton(defaultButton == 2 ? no : yes);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes ? Answer::Yes : Answer::No;
}

} // namespace ui

namespace ui {

Answer ConsoleMessages::show(const QString& text, Buttons buttons, int defaultButton) {
    QTextStream err(stderr);
    err << QString(text).replace(QChar(13), QChar(10)) << Qt::endl;
    if (buttons == Buttons::Ok)
        return Answer::Ok;
    return defaultButton == 2 ? Answer::No : Answer::Yes;
}

} // namespace ui
