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
    // Makes one folder (its parent must exist); on failure the system's error
    // number and text are given back.
    virtual bool makeFolder(const QString& path, int* errorNumber, QString* errorText);
    // Ends the process at once with the code.
    [[noreturn]] virtual void endProcess(int code);

private:
    QString commandLine_;
};

// The user's own folder, where the file dialogs start: USERPROFILE when it is
// set, else the home folder.
QString homeFolder();

// The running instances of one program, told apart by the order of their
// starts. Each announces itself as early as it can and stays announced until
// its process ends: the system drops its lock then, also when it is killed.
// The register is a folder of lock files, one per instance, named by the
// number of its start; that number is drawn under a lock of its own.
class SingleInstance {
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // Announces this instance in the register folder, which is made when it is
    // missing. When that folder cannot be written, a folder of the user's
    // temporary files named after it serves. False when neither can be used.
    bool announce(const QString& folder);
    // Whether an instance that started before this one still runs. Files of
    // instances that have ended are cleared on the way. False when this
    // instance could not announce itself: then nothing can be told.
    bool earlierRunning();

private:
    bool announceIn(const QString& folder);
    QString folder_;
    quint64 number_ = 0;
    int fd_ = -1;
};

} // namespace os
