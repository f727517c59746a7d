#include "platform/os/os.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QSysInfo>

#include <cstdio>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace os {

QString homeFolder() {
    const QString profile = qEnvironmentVariable("USERPROFILE");
    return profile.isEmpty() ? QDir::homePath() : profile;
}

System::System(QString commandLine) : commandLine_(std::move(commandLine)) {}

QString System::userName() const {
    if (const passwd* pw = getpwuid(geteuid()); pw && pw->pw_name)
        return QString::fromLocal8Bit(pw->pw_name);
    return qEnvironmentVariable("USER");
}

QString System::computerName() const {
    return QSysInfo::machineHostName();
}

QString System::programFolder() const {
    return QCoreApplication::applicationDirPath();
}

QString System::commandLine() const {
    return commandLine_;
}

QDateTime System::now() const {
    return QDateTime::currentDateTime();
}

void System::endProcess(int code) {
    std::fflush(nullptr);
    std::_Exit(code);
}

SingleInstance::SingleInstance() = default;

SingleInstance::~SingleInstance() = default;

bool SingleInstance::tryLock(const QString& lockFile) {
    lock_ = std::make_unique<QLockFile>(lockFile);
    // A holder that runs for hours is not stale: only an ended process is.
    lock_->setStaleLockTime(0);
    if (lock_->tryLock(0))
        return true;
    const bool held = lock_->error() == QLockFile::LockFailedError;
    lock_.reset();
    return !held;
}

} // namespace os
