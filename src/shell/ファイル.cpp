// Folder helpers.

#include "shell/modデータ処理.h"

#include "platform/os/files.h"
#include "toolkit/mod項目編集.h"

void フォルダ作成make(Context& ctx, const QString& パス) {
    const QString path = パス.trimmed();
    if (path.isEmpty())
        return;
    const QString& sep = パス区切り();
    qsizetype start;
    if (path.startsWith(sep + sep)) {
        // A network path: its server and share are never made.
        const qsizetype server = path.indexOf(sep, 2);
        const qsizetype share = server < 0 ? -1 : path.indexOf(sep, server + 1);
        if (share < 0)
            return;
        start = share + 1;
    } else if (path.startsWith(sep)) {
        start = 1;
    } else {
        return; // a relative path names no place of its own
    }
    // The text behind the last separator is a file's name and is not made.
    for (qsizetype at = path.indexOf(sep, start); at >= 0; at = path.indexOf(sep, at + 1)) {
        const QString folder = path.left(at);
        if (os::folderExists(folder))
            continue;
        int number = 0;
        QString text;
        if (!os::makeFolder(folder, &number, &text)) {
            ctx.msg.show(QStringLiteral("DIREXISTCHK ERROR") + QString::number(number) + QLatin1Char(' ') + text +
                         QChar(13) + QStringLiteral("direxeistchk") + QChar(13) + path + QChar(13) + folder +
                         QChar(13) + (os::fileExists(folder) ? QStringLiteral("file") : QString()));
        }
    }
}

void ファイル実行open(Context& ctx, const QString& パス) {
    const qsizetype last = パス.lastIndexOf(パス区切り());
    ctx.desktop->open(パス, last < 0 ? QString() : パス.left(last));
}

void マニュアルopen(Context& ctx) {
    ファイル実行open(ctx, ctx.folders.manualフォルダ + パス区切り() + 全角conv(ctx.プログラムID) + QStringLiteral(".doc"));
}
