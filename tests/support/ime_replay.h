#pragma once

// Replays the input method's events recorded from a real input method
// (tests/fixtures/ime/*.json, made by scripts/ime-record.sh) onto the fields
// of a form: compositions and commits as QInputMethodEvents with their
// attributes, keys as key events, a click into a field as a click. The
// recorder's fields are named as the card's; a map gives the widget for each.

#include <QColor>
#include <QCoreApplication>
#include <QFile>
#include <QInputMethodEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QMap>
#include <QTest>
#include <QTextCharFormat>
#include <QWidget>

#include <functional>
#include <memory>

namespace ime {

// The events of one recorded case, nested ones (sent while their field still
// handled an earlier event, such as a commit during a key press) moved ahead
// of the event they came within, as the field saw them first.
inline QJsonArray recordedEvents(const QString& caseName, QString* error = nullptr) {
    QFile file(QStringLiteral(STAFF_FIXTURES_DIR "/ime/") + caseName + QStringLiteral(".json"));
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("no recording ") + file.fileName();
        return {};
    }
    const QJsonArray all = QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("events")).toArray();
    QList<QJsonObject> ordered;
    QList<int> indexes; // the recording's index of each ordered event
    for (int i = 0; i < all.size(); ++i) {
        const QJsonObject e = all.at(i).toObject();
        if (e.contains(QStringLiteral("within"))) {
            const int parent = e.value(QStringLiteral("within")).toInt();
            const qsizetype at = indexes.indexOf(parent);
            if (at >= 0) {
                ordered.insert(at, e);
                indexes.insert(at, i);
                continue;
            }
        }
        ordered.append(e);
        indexes.append(i);
    }
    QJsonArray out;
    for (const QJsonObject& e : ordered)
        out.append(e);
    return out;
}

inline std::unique_ptr<QInputMethodEvent> inputMethodEvent(const QJsonObject& e) {
    QList<QInputMethodEvent::Attribute> attributes;
    for (const QJsonValue& v : e.value(QStringLiteral("attributes")).toArray()) {
        const QJsonObject a = v.toObject();
        const int start = a.value(QStringLiteral("start")).toInt();
        const int length = a.value(QStringLiteral("length")).toInt();
        if (a.value(QStringLiteral("type")).toString() == QLatin1String("TextFormat")) {
            QTextCharFormat format;
            format.setUnderlineStyle(
                QTextCharFormat::UnderlineStyle(a.value(QStringLiteral("underlineStyle")).toInt()));
            if (a.contains(QStringLiteral("background")))
                format.setBackground(QColor(a.value(QStringLiteral("background")).toString()));
            if (a.contains(QStringLiteral("foreground")))
                format.setForeground(QColor(a.value(QStringLiteral("foreground")).toString()));
            attributes.append({QInputMethodEvent::TextFormat, start, length, format});
        } else if (a.value(QStringLiteral("type")).toString() == QLatin1String("Cursor")) {
            attributes.append({QInputMethodEvent::Cursor, start, length, QVariant()});
        }
    }
    auto event = std::make_unique<QInputMethodEvent>(e.value(QStringLiteral("preedit")).toString(), attributes);
    event->setCommitString(e.value(QStringLiteral("commit")).toString(),
                           e.value(QStringLiteral("replacementStart")).toInt(),
                           e.value(QStringLiteral("replacementLength")).toInt());
    return event;
}

// Replays a case. step runs at each of the recording's step marks with the
// mark's note ("type yamada", "Space", ..., "end"), after the events before it.
inline QString replay(const QString& caseName, const QMap<QString, QWidget*>& fields,
                      const std::function<void(const QString& step)>& step) {
    QString error;
    const QJsonArray events = recordedEvents(caseName, &error);
    if (!error.isEmpty())
        return error;
    for (const QJsonValue& v : events) {
        const QJsonObject e = v.toObject();
        const QString type = e.value(QStringLiteral("type")).toString();
        if (type == QLatin1String("Mark")) {
            step(e.value(QStringLiteral("note")).toString());
            continue;
        }
        QWidget* field = fields.value(e.value(QStringLiteral("field")).toString());
        if (!field)
            continue; // a field of the recorder that the form has not
        if (type == QLatin1String("InputMethod")) {
            const auto event = inputMethodEvent(e);
            QCoreApplication::sendEvent(field, event.get());
        } else if (type == QLatin1String("KeyPress")) {
            const auto key = Qt::Key(e.value(QStringLiteral("key")).toInt());
            const auto modifiers = Qt::KeyboardModifiers(e.value(QStringLiteral("modifiers")).toInt());
            const QString text = e.value(QStringLiteral("text")).toString();
            QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
            QCoreApplication::sendEvent(field, &press);
            QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
            QCoreApplication::sendEvent(field, &release);
        } else if (type == QLatin1String("FocusIn") &&
                   e.value(QStringLiteral("reasonName")).toString() == QLatin1String("MouseFocusReason")) {
            // The click that brought the focus; its press and release are in it.
            QTest::mouseClick(field, Qt::LeftButton);
        }
        QCoreApplication::processEvents();
    }
    return QString();
}

} // namespace ime
