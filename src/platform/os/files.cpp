#include "platform/os/files.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace os {

bool fileExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(path).isFile();
}

bool entryExists(const QString& path) {
    return !path.isEmpty() && QFileInfo::exists(path);
}

bool folderExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(path).isDir();
}

bool copyFile(const QString& source, const QString& target) {
    if (!fileExists(source))
        return false;
    if (QFileInfo::exists(target)) {
        QFile::setPermissions(target, QFile::permissions(target) | QFileDevice::WriteOwner);
        if (!QFile::remove(target))
            return false;
    }
    return QFile::copy(source, target);
}

bool copyFolder(const QString& source, const QString& target) {
    if (!folderExists(source) || !QDir().mkpath(target))
        return false;
    bool ok = true;
    QDirIterator it(source, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    while (it.hasNext()) {
        it.next();
        const QString to = QDir(target).filePath(it.fileName());
        ok = (it.fileInfo().isDir() ? copyFolder(it.filePath(), to) : copyFile(it.filePath(), to)) && ok;
    }
    return ok;
}

bool removeFolder(const QString& path) {
    if (!folderExists(path))
        return false;
    QDirIterator it(path, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        QFile::setPermissions(it.filePath(), QFile::permissions(it.filePath()) | QFileDevice::WriteOwner);
    }
    return QDir(path).removeRecursively();
}

bool makeFolder(const QString& path, int* errorNumber, QString* errorText) {
    if (::mkdir(QFile::encodeName(path).constData(), 0777) == 0 || folderExists(path))
        return true;
    const int e = errno;
    if (errorNumber)
        *errorNumber = e;
    if (errorText)
        *errorText = QString::fromLocal8Bit(std::strerror(e));
    return false;
}

bool removeFile(const QString& path) {
    return QFile::remove(path);
}

bool writeFile(const QString& path, const QByteArray& bytes, QString* errorText) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    if (errorText)
        *errorText = file.errorString();
    return false;
}

QStringList listFolder(const QString& folder, const QString& pattern) {
    // By name, character codes compared, whatever order the file system keeps:
    // photo numbers are taken from the last name listed.
    return QDir(folder).entryList({pattern}, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                                  QDir::Name);
}

qint64 fileSize(const QString& path) {
    return fileExists(path) ? QFileInfo(path).size() : -1;
}

QDateTime modifiedAt(const QString& path) {
    const QFileInfo info(path);
    return !path.isEmpty() && info.exists() ? info.lastModified() : QDateTime();
}

} // namespace os
