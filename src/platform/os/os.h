#pragma once

#include <QDateTime>
#include <QString>

namespace os {

// What the program asks of the operating system about itself and the machine.
// The program uses one instance for its run; tests hand in their own answers.
class System {
public:
    explicit System(QString commandLine = {});
    virtual ~System() = default;

    // The logged-in user and the machine, as the history rows carry them.
    virtual QString userName() const;
    virtual QString computerName() const;
    // The folder of the running program.
    virtual QString programFolder() const;
    // The command line as one text (the arguments of the call joined by blanks).
    virtual QString commandLine() const;
    virtual QDateTime now() const;
    // Ends the process at once with the code.
    [[noreturn]] virtual void endProcess(int code);

private:
    QString commandLine_;
};

} // namespace os
