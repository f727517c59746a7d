#pragma once

#include "toolkit/mod項目編集.h"

#include <QStringList>

// The label お知らせ of a form in a test: keeps every caption written to it.
struct RecordingNotice : お知らせ先 {
    QStringList captions;
    void お知らせset(const QString& text) override { captions << text; }
    QString last() const { return captions.isEmpty() ? QStringLiteral("<never written>") : captions.last(); }
};
