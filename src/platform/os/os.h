#pragma once

#include <QDateTime>
#include <QString>

#include <memory>

class QLockFile;

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

// The user's own folder, where the file dialogs start: USERPROFILE when it is
// set, else the home folder.
QString homeFolder();

// One running instance of a program, by a lock file that the object holds for
// its life. A lock left behind by a process that has ended is taken over.
class SingleInstance {
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // Takes the lock file without waiting. False only when it is held by a
    // running process (or by another holder in this one); a file that cannot be made at all (a folder without
    // the right to write) does not count as another instance.
    bool tryLock(const QString& lockFile);

private:
    std::unique_ptr<QLockFile> lock_;
};

} // namespace os
