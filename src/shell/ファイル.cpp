// Folder helpers.

#include "shell/modデータ処理.h"

#include "platform/os/files.h"
#include "toolkit/mod項目編集.h"

#include <QLabel>
#include <QPointer>
#include <QWidget>

bool ファイル存在chk(const QString& パス) {
    return os::fileExists(パス);
}

bool フォルダ存在chk(const QString& パス) {
    return os::folderExists(パス);
}

bool ファイル複写copy(const QString& 元パス, const QString& 先パス) {
    return os::copyFile(元パス, 先パス);
}

bool フォルダ複写copy(const QString& 元パス, const QString& 先パス) {
    return os::copyFolder(元パス, 先パス);
}

bool フォルダ削除del(const QString& パス) {
    return os::removeFolder(パス);
}

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
        // The listing finds a file as well as a folder: either way nothing is made here.
        if (os::entryExists(folder))
            continue;
        int number = 0;
        QString text;
        if (!ctx.sys.makeFolder(folder, &number, &text)) {
            // The last line is what the listing found: nothing.
            ctx.msg.show(QStringLiteral("DIREXISTCHK ERROR") + QString::number(number) + QLatin1Char(' ') + text +
                         QChar(13) + QStringLiteral("direxeistchk") + QChar(13) + path + QChar(13) + folder +
                         QChar(13));
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

namespace {

QString storedPath(const Context& ctx, const QString& key, const QString& name) {
    return ctx.company.ドキュメントフォルダ + パス区切り() + key + QLatin1Char('_') + name;
}

// The card takes no input while files are moved. Disabling it drops the focus
// of its control, which comes back with the card.
class MainScreenPause {
public:
    explicit MainScreenPause(Context& ctx) : screen_(ctx.主画面) {
        if (!screen_)
            return;
        focus_ = screen_->focusWidget();
        screen_->setEnabled(false);
    }
    ~MainScreenPause() {
        if (!screen_)
            return;
        screen_->setEnabled(true);
        if (focus_)
            focus_->setFocus(Qt::OtherFocusReason);
    }
    MainScreenPause(const MainScreenPause&) = delete;
    MainScreenPause& operator=(const MainScreenPause&) = delete;

    QLabel* notice() const { return screen_ ? screen_->findChild<QLabel*>(QStringLiteral("お知らせ")) : nullptr; }

private:
    QPointer<QWidget> screen_;
    QPointer<QWidget> focus_;
};

void showNotice(QLabel* label, const QString& text) {
    if (!label)
        return;
    label->setText(text);
    label->repaint();
}

} // namespace

QString ファイル名get(const QString& パス) {
    const QString path = パス.trimmed();
    if (path.isEmpty())
        return QString();
    if (フォルダ存在chk(path))
        return パス末尾(path);
    if (!ファイル存在chk(path))
        return QString();
    const QString name = パス末尾(path);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

void 付属書類copy(Context& ctx, const QString& 元パス, const QString& キー, const QString& フォルダ名) {
    const MainScreenPause pause(ctx);
    if (!フォルダ存在chk(元パス)) {
        // A copy that fails leaves the store as it was; the list shows the
        // attachment as missing.
        if (ファイル存在chk(元パス))
            ファイル複写copy(元パス, storedPath(ctx, キー, パス末尾(元パス)));
        return;
    }
    ctx.wait.show();
    フォルダ複写copy(元パス, storedPath(ctx, キー, フォルダ名));
    ctx.wait.close();
}

void 付属書類del(Context& ctx, const QString& 名前, const QString& キー) {
    const MainScreenPause pause(ctx);
    QLabel* notice = pause.notice();
    showNotice(notice, QStringLiteral("＊＊削除中です。しばらくお待ちください＊＊"));
    const QString stored = storedPath(ctx, キー, 名前);
    if (フォルダ存在chk(stored)) {
        ctx.wait.show();
        フォルダ削除del(stored);
        ctx.wait.close();
    } else {
        // Every file whose name begins with the stored one goes, so an attachment
        // whose name continues this one's goes with it. The names are compared as
        // texts: brackets in a name are no pattern.
        const QString folder = ctx.company.ドキュメントフォルダ;
        const QString prefix = パス末尾(stored);
        for (const QString& name : os::listFolder(folder, QStringLiteral("*"))) {
            const QString path = folder + パス区切り() + name;
            if (name.startsWith(prefix) && ファイル存在chk(path))
                os::removeFile(path);
        }
    }
    showNotice(notice, QString());
}

void 付属書類open(Context& ctx, const QString& 元パス, const QString& キー) {
    ファイル実行open(ctx, storedPath(ctx, キー, パス末尾(元パス)));
}
