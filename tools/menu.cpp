#include "tools/menu.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace setup {

namespace {

const QString kProgram = QStringLiteral("担当者登録");
const QString kIconResource = QStringLiteral(":/setup/staffmaster.png");

QString absoluteRoot(const QString& root) { return QDir::cleanPath(QFileInfo(root).absoluteFilePath()); }

// A value of the string type: a backslash is written doubled.
QString escaped(QString value) { return value.replace(QLatin1Char('\\'), QStringLiteral("\\\\")); }

// One argument of the Exec key: in double quotes, with the characters that
// stay special inside them behind a backslash, and '%' doubled for the field
// codes; then escaped as any string value.
QString execArgument(const QString& argument) {
    QString quotedArgument;
    for (const QChar c : argument) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quotedArgument += QLatin1Char('\\');
        quotedArgument += c;
        if (c == QLatin1Char('%'))
            quotedArgument += QLatin1Char('%');
    }
    return escaped(QLatin1Char('"') + quotedArgument + QLatin1Char('"'));
}

bool hasControlCharacter(const QString& text) {
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control)
            return true;
    }
    return false;
}

} // namespace

MenuEntry menuEntryFor(const QString& root) {
    const QString path = absoluteRoot(root);
    const QByteArray id = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {QDir(data).filePath(QStringLiteral("applications/staffmaster-%1.desktop").arg(QString::fromLatin1(id))),
            QDir(data).filePath(QStringLiteral("icons/hicolor/256x256/apps/staffmaster.png"))};
}

QString desktopEntryText(const QString& root, const QString& iconFile) {
    const QString path = absoluteRoot(root);
    const QString program = path + QStringLiteral("/prgbin/") + kProgram;
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Version=1.4\n"
                          "Name=%1\n"
                          "Name[en]=Staff master\n"
                          "GenericName=担当者マスター\n"
                          "GenericName[en]=Staff master maintenance\n"
                          "Comment=担当者の登録・修正・削除・印刷 (%2)\n"
                          "Comment[en]=Register, correct, delete and print staff records (%2)\n"
                          "Exec=%3\n"
                          "Icon=%4\n"
                          "Terminal=false\n"
                          "Categories=Office;\n"
                          "Keywords=担当者;staff;\n")
        .arg(kProgram, escaped(path), execArgument(program), escaped(iconFile));
}

bool isInstallation(const QString& root) {
    const QDir dir(absoluteRoot(root));
    return QFileInfo(dir.filePath(QStringLiteral("conf/usrcnfg.accdb"))).isFile() ||
           QFileInfo(dir.filePath(QStringLiteral("conf/usrcnfg.mdb"))).isFile();
}

Result writeMenuEntry(const QString& root) {
    const QString path = absoluteRoot(root);
    const QString program = path + QStringLiteral("/prgbin/") + kProgram;
    if (!QFileInfo(program).isFile())
        return {false, QStringLiteral("メニューに登録するプログラムがありません: ") + program};
    // A line break would end the key; other control characters have no place in a menu entry either.
    if (hasControlCharacter(path))
        return {false, QStringLiteral("制御文字を含むフォルダはメニューに登録できません: ") + path};
    const MenuEntry entry = menuEntryFor(path);

    const QString iconFolder = QFileInfo(entry.icon).absolutePath();
    if (!QDir().mkpath(iconFolder))
        return {false, QStringLiteral("アイコンのフォルダを作成できません: ") + iconFolder};
    QFile icon(kIconResource);
    QSaveFile iconCopy(entry.icon);
    if (!icon.open(QIODevice::ReadOnly) || !iconCopy.open(QIODevice::WriteOnly) || iconCopy.write(icon.readAll()) < 0 ||
        !iconCopy.commit())
        return {false, QStringLiteral("アイコンを書き込めません: %1 (%2)").arg(entry.icon, iconCopy.errorString())};

    const QString folder = QFileInfo(entry.file).absolutePath();
    if (!QDir().mkpath(folder))
        return {false, QStringLiteral("メニューのフォルダを作成できません: ") + folder};
    QSaveFile file(entry.file);
    if (!file.open(QIODevice::WriteOnly) || file.write(desktopEntryText(path, entry.icon).toUtf8()) < 0 ||
        !file.commit())
        return {false, QStringLiteral("メニューの項目を書き込めません: %1 (%2)").arg(entry.file, file.errorString())};
    return {true, QStringLiteral("メニューに登録しました: ") + entry.file};
}

} // namespace setup
