#include "access/dialog_parts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

class TitleClick : public QObject {
public:
    TitleClick(QLabel* title, QWidget* field) : QObject(title), field_(field) { title->installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress) {
            field_->setFocus(Qt::MouseFocusReason);
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget* field_;
};

} // namespace

namespace dialog_parts {

QLabel* title(const QString& name, const QString& caption, QWidget* parent) {
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

QPushButton* button(const QString& name, const QString& caption, QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

void titleFocuses(QLabel* title, QWidget* field) { new TitleClick(title, field); }

void enterMovesOn(QLineEdit* field) {
    QObject::connect(field, &QLineEdit::returnPressed, field, [field] {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(field, &tab);
    });
}

} // namespace dialog_parts
