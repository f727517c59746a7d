#include "platform/os/os.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <cstdio>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace os {

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

} // namespace os
