// A window with the staff card's name fields that writes down, as JSON, every
// event reaching those fields that matters for typing through an input method:
// input method events (preedit, commit, replacement, attributes), key presses
// and releases, shortcut overrides, focus changes and mouse clicks, each with
// the field's text and cursor before and after the field handled it.
//
//   ime_recorder --log FILE [--case NAME] [--keys TEXT] [--input-method TEXT]
//                [--prefill FIELD=TEXT]... [--ready FILE]
//
// Each event is logged by an event filter installed on its field, so the log
// sees it before the field itself does (and before any filter installed
// earlier on the same field, since the last installed filter runs first). The
// text and cursor "after" are read when the delivery of that event returns.
//
// Commands on standard input, one per line: "mark TEXT" (a step marker in the
// log), "flush" (write the log now), "quit" (write the log and end). SIGUSR1
// writes the log; SIGINT, SIGTERM and SIGHUP write it and end; so does closing
// the window.

#include <QApplication>
#include <QColor>
#include <QElapsedTimer>
#include <QFile>
#include <QFocusEvent>
#include <QFormLayout>
#include <QHash>
#include <QInputMethodEvent>
#include <QJsonArray>
#include <QJsonObject>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QPushButton>
#include <QSaveFile>
#include <QSocketNotifier>
#include <QTextCharFormat>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

// ---------------------------------------------------------------------------
// JSON text with the keys in a fixed, readable order (QJsonDocument sorts them).

const QStringList& keyOrder() {
    static const QStringList order = {
        "case", "keys", "recorder", "notes", "fields", "final", "events",
        // an event
        "field", "type", "time", "within", "note", "preedit", "commit", "replacementStart", "replacementLength",
        "attributes", "key", "keyName", "text", "modifiers", "nativeScanCode", "nativeVirtualKey", "autoRepeat",
        "count", "reason", "reasonName", "button", "x", "y", "spontaneous", "accepted", "textBefore", "cursorBefore",
        "textAfter", "cursorAfter", "selectionAfter", "queries", "imEnabled",
        // an attribute
        "start", "length", "underline", "underlineStyle", "fontUnderline", "underlineColor", "background", "foreground",
        "value"};
    return order;
}

QStringList orderedKeys(const QJsonObject& object) {
    QStringList keys = object.keys();
    std::stable_sort(keys.begin(), keys.end(), [](const QString& a, const QString& b) {
        const qsizetype ia = keyOrder().indexOf(a);
        const qsizetype ib = keyOrder().indexOf(b);
        if (ia < 0 && ib < 0)
            return a < b;
        if (ia < 0 || ib < 0)
            return ib < 0;
        return ia < ib;
    });
    return keys;
}

QString quoted(const QString& text) {
    QString out = "\"";
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (c.unicode() < 0x20 || c.unicode() == 0x7f)
                out += QString::asprintf("\\u%04x", c.unicode());
            else
                out += c;
        }
    }
    return out + "\"";
}

bool isScalar(const QJsonValue& value) { return !value.isArray() && !value.isObject(); }

bool allScalar(const QJsonValue& value) {
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        return std::all_of(object.begin(), object.end(), [](const auto& v) { return isScalar(v); });
    }
    const QJsonArray array = value.toArray();
    return std::all_of(array.begin(), array.end(), [](const auto& v) { return isScalar(v); });
}

QString jsonText(const QJsonValue& value, int depth) {
    const QString indent(depth * 2, ' ');
    const QString inner((depth + 1) * 2, ' ');
    // Small records inside an event (an attribute, a selection) stay on one line.
    const bool compact = depth >= 3 && allScalar(value);
    const QString open = compact ? "" : "\n" + inner;
    const QString separator = compact ? ", " : ",\n" + inner;
    const QString close = compact ? "" : "\n" + indent;
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return "null";
    case QJsonValue::Bool:
        return value.toBool() ? "true" : "false";
    case QJsonValue::Double: {
        const double number = value.toDouble();
        if (number == static_cast<double>(static_cast<qint64>(number)))
            return QString::number(static_cast<qint64>(number));
        return QString::number(number, 'g', 15);
    }
    case QJsonValue::String:
        return quoted(value.toString());
    case QJsonValue::Array: {
        const QJsonArray array = value.toArray();
        if (array.isEmpty())
            return "[]";
        QStringList items;
        for (const QJsonValue& item : array)
            items << jsonText(item, depth + 1);
        return "[" + open + items.join(separator) + close + "]";
    }
    case QJsonValue::Object: {
        const QJsonObject object = value.toObject();
        if (object.isEmpty())
            return "{}";
        QStringList items;
        for (const QString& key : orderedKeys(object))
            items << quoted(key) + ": " + jsonText(object.value(key), depth + 1);
        return "{" + open + items.join(separator) + close + "}";
    }
    }
    return "null";
}

// ---------------------------------------------------------------------------
// Names for the numbers Qt gives.

QString focusReasonName(Qt::FocusReason reason) {
    switch (reason) {
    case Qt::MouseFocusReason:
        return "MouseFocusReason";
    case Qt::TabFocusReason:
        return "TabFocusReason";
    case Qt::BacktabFocusReason:
        return "BacktabFocusReason";
    case Qt::ActiveWindowFocusReason:
        return "ActiveWindowFocusReason";
    case Qt::PopupFocusReason:
        return "PopupFocusReason";
    case Qt::ShortcutFocusReason:
        return "ShortcutFocusReason";
    case Qt::MenuBarFocusReason:
        return "MenuBarFocusReason";
    case Qt::OtherFocusReason:
        return "OtherFocusReason";
    case Qt::NoFocusReason:
        return "NoFocusReason";
    }
    return QString::number(reason);
}

QString attributeTypeName(QInputMethodEvent::AttributeType type) {
    switch (type) {
    case QInputMethodEvent::TextFormat:
        return "TextFormat";
    case QInputMethodEvent::Cursor:
        return "Cursor";
    case QInputMethodEvent::Language:
        return "Language";
    case QInputMethodEvent::Ruby:
        return "Ruby";
    case QInputMethodEvent::Selection:
        return "Selection";
    default:
        return QString::number(type);
    }
}

QString underlineStyleName(QTextCharFormat::UnderlineStyle style) {
    switch (style) {
    case QTextCharFormat::NoUnderline:
        return "NoUnderline";
    case QTextCharFormat::SingleUnderline:
        return "SingleUnderline";
    case QTextCharFormat::DashUnderline:
        return "DashUnderline";
    case QTextCharFormat::DotLine:
        return "DotLine";
    case QTextCharFormat::DashDotLine:
        return "DashDotLine";
    case QTextCharFormat::DashDotDotLine:
        return "DashDotDotLine";
    case QTextCharFormat::WaveUnderline:
        return "WaveUnderline";
    case QTextCharFormat::SpellCheckUnderline:
        return "SpellCheckUnderline";
    }
    return QString::number(style);
}

QString colorText(const QColor& color) {
    return color.alpha() == 255 ? color.name(QColor::HexRgb) : color.name(QColor::HexArgb);
}

QJsonObject attributeRecord(const QInputMethodEvent::Attribute& attribute) {
    QJsonObject record{
        {"type", attributeTypeName(attribute.type)}, {"start", attribute.start}, {"length", attribute.length}};
    switch (attribute.type) {
    case QInputMethodEvent::TextFormat: {
        const QTextCharFormat format = attribute.value.value<QTextFormat>().toCharFormat();
        record["underlineStyle"] = format.underlineStyle();
        record["underline"] = underlineStyleName(format.underlineStyle());
        record["fontUnderline"] = format.fontUnderline();
        if (format.hasProperty(QTextFormat::TextUnderlineColor))
            record["underlineColor"] = colorText(format.underlineColor());
        if (format.hasProperty(QTextFormat::BackgroundBrush))
            record["background"] = colorText(format.background().color());
        if (format.hasProperty(QTextFormat::ForegroundBrush))
            record["foreground"] = colorText(format.foreground().color());
        if (format.hasProperty(QTextFormat::FontWeight))
            record["fontWeight"] = format.fontWeight();
        break;
    }
    case QInputMethodEvent::Cursor:
        // length is 0 for a hidden cursor, otherwise visible; the value may be a colour.
        if (attribute.value.canConvert<QColor>() && attribute.value.value<QColor>().isValid())
            record["value"] = colorText(attribute.value.value<QColor>());
        break;
    case QInputMethodEvent::Language:
        record["value"] = attribute.value.value<QLocale>().name();
        break;
    default:
        if (attribute.value.isValid())
            record["value"] = attribute.value.toString();
        break;
    }
    return record;
}

// ---------------------------------------------------------------------------
// The log.

struct Options {
    QString logFile;
    QString caseName;
    QString keys;
    QString inputMethod;
    QString readyFile;
    QList<QPair<QString, QString>> prefill;
};

class Recorder : public QObject {
public:
    Recorder(Options options, QList<QLineEdit*> fields) : options_(std::move(options)), fields_(std::move(fields)) {
        clock_.start();
        for (QLineEdit* field : fields_)
            field->installEventFilter(this);
    }

    // Called by the application once the delivery of an event has returned.
    void delivered(QObject* receiver, QEvent* event) {
        auto it = std::find_if(pending_.rbegin(), pending_.rend(),
                               [&](const Pending& p) { return p.receiver == receiver && p.event == event; });
        if (it == pending_.rend())
            return;
        const Pending done = *it;
        pending_.erase(std::prev(it.base()), pending_.end());
        auto* field = static_cast<QLineEdit*>(receiver);
        QJsonObject record = events_.at(done.index).toObject();
        if (event->type() == QEvent::InputMethodQuery) {
            const auto* query = static_cast<QInputMethodQueryEvent*>(event);
            const QVariant enabled = query->value(Qt::ImEnabled);
            record["imEnabled"] = enabled.isValid() ? QJsonValue(enabled.toBool()) : QJsonValue();
        }
        record["accepted"] = event->isAccepted();
        record["textAfter"] = field->text();
        record["cursorAfter"] = field->cursorPosition();
        if (field->hasSelectedText())
            record["selectionAfter"] =
                QJsonObject{{"start", field->selectionStart()}, {"length", field->selectedText().size()}};
        events_.replace(done.index, record);
    }

    void mark(const QString& note) {
        events_.append(QJsonObject{{"type", "Mark"}, {"time", clock_.elapsed()}, {"note", note}});
    }

    void flush() {
        QJsonArray fields;
        QJsonArray final;
        for (QLineEdit* field : fields_) {
            QString initial;
            for (const auto& [name, text] : options_.prefill)
                if (name == field->objectName())
                    initial = text;
            fields.append(QJsonObject{{"field", field->objectName()},
                                      {"inputMethodEnabled", field->testAttribute(Qt::WA_InputMethodEnabled)},
                                      {"textBefore", initial}});
            final.append(QJsonObject{{"field", field->objectName()},
                                     {"textAfter", field->text()},
                                     {"cursorAfter", field->cursorPosition()}});
        }
        const QJsonObject recorder{{"qt", QString::fromLatin1(qVersion())},
                                   {"platform", QGuiApplication::platformName()},
                                   {"imModule", QString::fromLocal8Bit(qgetenv("QT_IM_MODULE"))},
                                   {"inputMethod", options_.inputMethod}};
        const QJsonObject document{
            {"case", options_.caseName},
            {"keys", options_.keys},
            {"recorder", recorder},
            {"notes", "Events in the order they reached the fields. Each is logged by an event filter on its field, "
                      "before the field handles it; textBefore/cursorBefore are read then, textAfter/cursorAfter "
                      "when the field has handled it. An event sent while the field was still handling an earlier "
                      "one (for instance a commit sent while a key press is handled) comes after it, with "
                      "\"within\" the index of that earlier event in this array. Mark entries are step "
                      "markers written by the recording script, not events."},
            {"fields", fields},
            {"final", final},
            {"events", events_}};
        QSaveFile file(options_.logFile);
        if (!file.open(QIODevice::WriteOnly)) {
            std::fprintf(stderr, "ime_recorder: cannot write %s\n", qPrintable(options_.logFile));
            return;
        }
        file.write(jsonText(document, 0).toUtf8() + "\n");
        if (!file.commit())
            std::fprintf(stderr, "ime_recorder: cannot write %s\n", qPrintable(options_.logFile));
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* field = qobject_cast<QLineEdit*>(watched);
        if (field == nullptr || !fields_.contains(field))
            return false;
        QJsonObject record{{"field", field->objectName()}, {"time", clock_.elapsed()}};
        switch (event->type()) {
        case QEvent::InputMethod: {
            const auto* input = static_cast<QInputMethodEvent*>(event);
            QJsonArray attributes;
            for (const QInputMethodEvent::Attribute& attribute : input->attributes())
                attributes.append(attributeRecord(attribute));
            record["type"] = "InputMethod";
            record["preedit"] = input->preeditString();
            record["commit"] = input->commitString();
            record["replacementStart"] = input->replacementStart();
            record["replacementLength"] = input->replacementLength();
            record["attributes"] = attributes;
            break;
        }
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride: {
            const auto* key = static_cast<QKeyEvent*>(event);
            record["type"] = event->type() == QEvent::KeyPress     ? "KeyPress"
                             : event->type() == QEvent::KeyRelease ? "KeyRelease"
                                                                   : "ShortcutOverride";
            record["key"] = key->key();
            record["keyName"] = QKeySequence(key->key()).toString(QKeySequence::PortableText);
            record["text"] = key->text();
            record["modifiers"] = static_cast<int>(key->modifiers().toInt());
            record["nativeScanCode"] = static_cast<qint64>(key->nativeScanCode());
            record["nativeVirtualKey"] = static_cast<qint64>(key->nativeVirtualKey());
            record["autoRepeat"] = key->isAutoRepeat();
            break;
        }
        case QEvent::FocusIn:
        case QEvent::FocusOut: {
            const auto* focus = static_cast<QFocusEvent*>(event);
            record["type"] = event->type() == QEvent::FocusIn ? "FocusIn" : "FocusOut";
            record["reason"] = static_cast<int>(focus->reason());
            record["reasonName"] = focusReasonName(focus->reason());
            break;
        }
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            record["type"] = event->type() == QEvent::MouseButtonPress     ? "MouseButtonPress"
                             : event->type() == QEvent::MouseButtonRelease ? "MouseButtonRelease"
                                                                           : "MouseButtonDblClick";
            record["button"] = static_cast<int>(mouse->button());
            record["x"] = mouse->position().x();
            record["y"] = mouse->position().y();
            break;
        }
        case QEvent::InputMethodQuery: {
            // Only the question whether the field takes input method text: the
            // others (cursor rectangle, surrounding text...) come with every update.
            const auto* query = static_cast<QInputMethodQueryEvent*>(event);
            if (!(query->queries() & Qt::ImEnabled))
                return false;
            record["type"] = "InputMethodQuery";
            record["queries"] = static_cast<qint64>(query->queries().toInt());
            break;
        }
        default:
            return false;
        }
        // Sent while the field was still handling an earlier logged event: which one.
        if (!pending_.empty())
            record["within"] = pending_.back().index;
        record["spontaneous"] = event->spontaneous();
        record["textBefore"] = field->text();
        record["cursorBefore"] = field->cursorPosition();
        pending_.push_back({watched, event, events_.size()});
        events_.append(record);
        return false;
    }

private:
    struct Pending {
        QObject* receiver;
        QEvent* event;
        qsizetype index;
    };

    Options options_;
    QList<QLineEdit*> fields_;
    QElapsedTimer clock_;
    QJsonArray events_;
    std::vector<Pending> pending_; // events seen by the filter whose delivery has not returned yet
};

// The application tells the recorder when the delivery of each event returns.
class RecordingApplication : public QApplication {
public:
    using QApplication::QApplication;
    Recorder* recorder = nullptr;

    bool notify(QObject* receiver, QEvent* event) override {
        const bool result = QApplication::notify(receiver, event);
        if (recorder != nullptr)
            recorder->delivered(receiver, event);
        return result;
    }
};

// ---------------------------------------------------------------------------
// Signals arrive through a socket pair so that they are handled in the event loop.

int signalPipe[2] = {-1, -1};

void onSignal(int number) {
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[0], &byte, 1);
}

// A line edit that tells the input method it takes no input method text. The
// attribute Qt::WA_InputMethodEnabled alone does not: a QLineEdit answers the
// input method's ImEnabled question from isEnabled() and isReadOnly() only.
class NoInputMethodLineEdit : public QLineEdit {
public:
    using QLineEdit::inputMethodQuery;
    using QLineEdit::QLineEdit;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override {
        if (query == Qt::ImEnabled)
            return false;
        return QLineEdit::inputMethodQuery(query);
    }
};

void usage() {
    std::fprintf(stderr, "usage: ime_recorder --log FILE [--case NAME] [--keys TEXT] [--input-method TEXT]\n"
                         "                    [--prefill FIELD=TEXT]... [--ready FILE]\n");
}

} // namespace

int main(int argc, char** argv) {
    RecordingApplication app(argc, argv);

    Options options;
    const QStringList arguments = QCoreApplication::arguments();
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        const bool hasValue = i + 1 < arguments.size();
        if (argument == "--log" && hasValue)
            options.logFile = arguments.at(++i);
        else if (argument == "--case" && hasValue)
            options.caseName = arguments.at(++i);
        else if (argument == "--keys" && hasValue)
            options.keys = arguments.at(++i);
        else if (argument == "--input-method" && hasValue)
            options.inputMethod = arguments.at(++i);
        else if (argument == "--ready" && hasValue)
            options.readyFile = arguments.at(++i);
        else if (argument == "--prefill" && hasValue && arguments.at(i + 1).contains('=')) {
            const QString value = arguments.at(++i);
            const qsizetype equals = value.indexOf('=');
            options.prefill.append({value.left(equals), value.mid(equals + 1)});
        } else {
            usage();
            return 2;
        }
    }
    if (options.logFile.isEmpty()) {
        usage();
        return 2;
    }

    QWidget window;
    window.setWindowTitle("ime_recorder");
    auto* form = new QFormLayout;
    auto addField = [&](const QString& name, bool inputMethod, QLineEdit* field = nullptr) {
        if (field == nullptr)
            field = new QLineEdit(&window);
        field->setObjectName(name);
        field->setAttribute(Qt::WA_InputMethodEnabled, inputMethod);
        field->setMinimumWidth(240);
        form->addRow(new QLabel(name, &window), field);
        return field;
    };
    // コード has Qt::WA_InputMethodEnabled off, like the card's code field;
    // コード直接 also answers the input method that it takes no text from it.
    // The name fields take the input method.
    QLineEdit* code = addField("コード", false);
    QLineEdit* codeDirect = addField("コード直接", false, new NoInputMethodLineEdit(&window));
    QLineEdit* sei = addField("姓", true);
    QLineEdit* mei = addField("名", true);
    QLineEdit* fullName = addField("氏名", true);
    const QList<QLineEdit*> fields = {code, codeDirect, sei, mei, fullName};
    for (const auto& [name, text] : options.prefill) {
        auto it = std::find_if(fields.begin(), fields.end(), [&](QLineEdit* f) { return f->objectName() == name; });
        if (it == fields.end()) {
            std::fprintf(stderr, "ime_recorder: no field %s\n", qPrintable(name));
            return 2;
        }
        (*it)->setText(text);
    }
    // The window opens with the focus on the button, so that the first click into
    // a field gives that field a FocusIn of its own.
    auto* close = new QPushButton("閉じる", &window);
    QObject::connect(close, &QPushButton::clicked, &window, &QWidget::close);
    auto* layout = new QVBoxLayout(&window);
    layout->addLayout(form);
    layout->addWidget(close);

    Recorder recorder(options, fields);
    app.recorder = &recorder;
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &recorder, [&recorder] { recorder.flush(); });

    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) == 0) {
        auto* notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, &app);
        QObject::connect(notifier, &QSocketNotifier::activated, &app, [&recorder] {
            char number = 0;
            if (::read(signalPipe[1], &number, 1) != 1)
                return;
            recorder.flush();
            if (number != SIGUSR1)
                QCoreApplication::quit();
        });
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1}) {
            struct sigaction action = {};
            action.sa_handler = onSignal;
            sigemptyset(&action.sa_mask);
            action.sa_flags = SA_RESTART;
            ::sigaction(number, &action, nullptr);
        }
    }

    auto* commands = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &app);
    auto* pendingInput = new QByteArray;
    QObject::connect(commands, &QSocketNotifier::activated, &app, [&recorder, commands, pendingInput] {
        char buffer[4096];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            commands->setEnabled(false); // end of input: commands are over, the window stays
            return;
        }
        pendingInput->append(buffer, count);
        qsizetype newline;
        while ((newline = pendingInput->indexOf('\n')) >= 0) {
            const QString line = QString::fromUtf8(pendingInput->left(newline)).trimmed();
            pendingInput->remove(0, newline + 1);
            if (line.startsWith("mark ")) {
                recorder.mark(line.mid(5));
                recorder.flush();
            } else if (line == "flush") {
                recorder.flush();
            } else if (line == "quit") {
                QCoreApplication::quit();
            } else if (!line.isEmpty()) {
                std::fprintf(stderr, "ime_recorder: unknown command %s\n", qPrintable(line));
            }
        }
    });

    window.move(0, 0);
    window.show();
    close->setFocus(Qt::OtherFocusReason);

    // Once the window is on the screen, tell where each field lies (the centre, in
    // screen coordinates) so that a script can click into it.
    auto* ready = new QTimer(&app);
    QObject::connect(ready, &QTimer::timeout, &app, [&, ready] {
        if (window.windowHandle() == nullptr || !window.windowHandle()->isExposed())
            return;
        ready->stop();
        QString text = QString("window %1\n").arg(window.winId());
        for (QLineEdit* field : fields) {
            const QPoint centre = field->mapToGlobal(field->rect().center());
            text += QString("%1 %2 %3\n").arg(field->objectName()).arg(centre.x()).arg(centre.y());
        }
        recorder.flush();
        if (options.readyFile.isEmpty()) {
            std::fputs(text.toUtf8().constData(), stdout);
            std::fflush(stdout);
            return;
        }
        QSaveFile file(options.readyFile);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(text.toUtf8());
            file.commit();
        }
    });
    ready->start(200);

    const int status = app.exec();
    delete pendingInput;
    return status;
}
