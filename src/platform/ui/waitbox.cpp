#include "platform/ui/waitbox.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

namespace ui {

ScreenWaitBox::ScreenWaitBox() = default;
ScreenWaitBox::~ScreenWaitBox() = default;

void ScreenWaitBox::show() {
    if (!window_) {
        window_ = std::make_unique<QWidget>(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
        auto* layout = new QVBoxLayout(window_.get());
        auto* label = new QLabel(QStringLiteral("しばらくお待ちください。"), window_.get());
        label->setObjectName(QStringLiteral("lab_msg"));
        layout->addWidget(label);
        layout->setContentsMargins(24, 16, 24, 16);
    }
    window_->show();
    window_->raise();
    QApplication::processEvents();
}

void ScreenWaitBox::close() {
    if (window_)
        window_->hide();
}

} // namespace ui
