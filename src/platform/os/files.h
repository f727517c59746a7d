#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// The file system as the program uses it. Paths use '/'.
namespace os {

bool fileExists(const QString& path);
// Whether anything, a file or a folder, stands at the path.
bool entryExists(const QString& path);
bool folderExists(const QString& path);
// Copies one file; an existing target is overwritten.
bool copyFile(const QString& source, const QString& target);
// Copies a folder with everything in it; existing files are overwritten.
bool copyFolder(const QString& source, const QString& target);
// Deletes a folder with its contents, read-only ones included.
bool removeFolder(const QString& path);
// Makes one folder (its parent must exist). On failure the system's error
// number and text are given back.
bool makeFolder(const QString& path, int* errorNumber = nullptr, QString* errorText = nullptr);
bool removeFile(const QString& path);
// Writes a whole file: the old one is replaced only once the new one is
// complete. On failure the system's text is given back.
bool writeFile(const QString& path, const QByteArray& bytes, QString* errorText = nullptr);
// Names (without folder) of the entries of a folder that match a wildcard
// pattern, in the order of their names.
QStringList listFolder(const QString& folder, const QString& pattern);
// The length in bytes of a file, -1 when there is none.
qint64 fileSize(const QString& path);
// When a file or folder was last changed; invalid when there is none.
QDateTime modifiedAt(const QString& path);

} // namespace os
