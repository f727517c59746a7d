#pragma once

#include "platform/os/os.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <stdexcept>

// Thrown where the program would end its process, so that a test sees it.
struct ProcessEnded : std::runtime_error {
    explicit ProcessEnded(int c) : std::runtime_error("process ended"), code(c) {}
    int code;
};

// The operating system as a test sets it up.
class FakeSystem : public os::System {
public:
    QString user = QStringLiteral("tanaka");
    QString computer = QStringLiteral("PC-01");
    QString folder;
    QString line;
    QDateTime clock = QDateTime(QDate(2026, 11, 21), QTime(9, 30, 0));
    bool advance = false; // when true each reading of the clock moves it on by one second
    QStringList madeFolders; // every folder the program asked to make, in order

    QString userName() const override { return user; }
    QString computerName() const override { return computer; }
    QString programFolder() const override { return folder; }
    QString commandLine() const override { return line; }
    QDateTime now() const override {
        const QDateTime t = clock;
        if (advance)
            const_cast<FakeSystem*>(this)->clock = clock.addSecs(1);
        return t;
    }
    bool makeFolder(const QString& path, int* errorNumber, QString* errorText) override {
        madeFolders.append(path);
        return os::System::makeFolder(path, errorNumber, errorText);
    }
    [[noreturn]] void endProcess(int code) override { throw ProcessEnded(code); }
};
