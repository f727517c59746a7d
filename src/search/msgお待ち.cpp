#include "search/msgお待ち.h"

#include "toolkit/項目移動.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QVBoxLayout>

msgお待ち::msgお待ち() = default;

msgお待ち::~msgお待ち() = default;

void msgお待ち::load() {
    form_ = std::make_unique<QDialog>(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
    form_->setObjectName(QStringLiteral("msgお待ち"));
    form_->setModal(false);
    auto* layout = new QVBoxLayout(form_.get());
    layout->setContentsMargins(24, 16, 24, 16);
    lab_msg = new QLabel(QStringLiteral("しばらくお待ちください。"), form_.get());
    lab_msg->setObjectName(QStringLiteral("lab_msg"));
    layout->addWidget(lab_msg);
    SetWindowTop(form_.get());
}

void msgお待ち::show() {
    if (!form_)
        load();
    form_->show();
    SetWindowTop(form_.get());
    QApplication::processEvents();
}

void msgお待ち::close() {
    lab_msg = nullptr;
    form_.reset();
}
