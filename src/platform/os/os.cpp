#include "platform/os/os.h"

#include "platform/os/files.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
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

bool System::makeFolder(const QString& path, int* errorNumber, QString* errorText) {
    return os::makeFolder(path, errorNumber, errorText);
}

void System::endProcess(int code) {
    std::fflush(nullptr);
    std::_Exit(code);
}

namespace {

// Sixteen digits name an instance's file; the number file counts the starts.
constexpr int numberDigits = 16;
const char* const numberFile = "number";

QString fileOf(const QString& folder, quint64 number) {
    return folder + QLatin1Char('/') + QStringLiteral("%1").arg(number, numberDigits, 10, QLatin1Char('0'));
}

int openFile(const QString& path, int flags) {
    return ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0666);
}

// Holds the lock of the number file while it lives: one start or one look at a time.
class Gate {
public:
    explicit Gate(const QString& folder) : fd_(openFile(folder + QLatin1Char('/') + QLatin1String(numberFile), O_RDWR | O_CREAT)) {
        if (fd_ >= 0 && ::flock(fd_, LOCK_EX) != 0) {
            ::close(fd_);
            fd_ = -1;
        }
    }
    ~Gate() {
        if (fd_ >= 0)
            ::close(fd_); // drops the lock
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    bool ok() const { return fd_ >= 0; }

    // The next number of a start, kept in the file for the starts after it.
    quint64 draw() {
        char text[32] = {};
        const ssize_t n = ::pread(fd_, text, sizeof text - 1, 0);
        const quint64 last = n > 0 ? QByteArray(text, int(n)).trimmed().toULongLong() : 0;
        const QByteArray next = QByteArray::number(last + 1) + '\n';
        if (::ftruncate(fd_, 0) != 0 || ::pwrite(fd_, next.constData(), size_t(next.size()), 0) != next.size())
            return 0;
        return last + 1;
    }

private:
    int fd_;
};

} // namespace

SingleInstance::SingleInstance() = default;

SingleInstance::~SingleInstance() {
    if (fd_ < 0)
        return;
    ::unlink(QFile::encodeName(fileOf(folder_, number_)).constData());
    ::close(fd_);
}

bool SingleInstance::announce(const QString& folder) {
    if (announceIn(folder))
        return true;
    // A register beside a program that may not be written: one per program
    // folder among the temporary files.
    const QByteArray key = QCryptographicHash::hash(QFile::encodeName(folder), QCryptographicHash::Sha1).toHex().left(16);
    return announceIn(QDir::tempPath() + QStringLiteral("/") + QFileInfo(folder).fileName() + QLatin1Char('-') +
                      QString::fromLatin1(key));
}

bool SingleInstance::announceIn(const QString& folder) {
    // Open to everybody: the users of one installation share its register.
    if (!QDir().mkpath(folder))
        return false;
    ::chmod(QFile::encodeName(folder).constData(), 0777);
    Gate gate(folder);
    if (!gate.ok())
        return false;
    const quint64 number = gate.draw();
    if (number == 0)
        return false;
    const int fd = openFile(fileOf(folder, number), O_RDWR | O_CREAT);
    if (fd < 0)
        return false;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return false;
    }
    folder_ = folder;
    number_ = number;
    fd_ = fd;
    return true;
}

bool SingleInstance::earlierRunning() {
    if (fd_ < 0)
        return false;
    Gate gate(folder_);
    if (!gate.ok())
        return false;
    const QStringList names = QDir(folder_).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    bool running = false;
    for (const QString& name : names) {
        bool numbered = false;
        const quint64 number = name.toULongLong(&numbered);
        if (!numbered || name.size() != numberDigits || number >= number_)
            continue;
        const int fd = openFile(folder_ + QLatin1Char('/') + name, O_RDONLY);
        if (fd < 0)
            continue;
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0)
            ::unlink(QFile::encodeName(folder_ + QLatin1Char('/') + name).constData()); // its instance has ended
        else if (errno == EWOULDBLOCK)
            running = true;
        ::close(fd);
    }
    return running;
}

} // namespace os
