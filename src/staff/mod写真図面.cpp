#include "staff/mod写真図面.h"

#include "platform/os/files.h"
#include "platform/os/os.h"
#include "search/wnd写真.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

namespace {

QString folderOf(const Context& ctx, const QString& kind) {
    return ctx.company.写真フォルダ + QLatin1Char('/') + kind;
}

// A picture that cannot be loaded leaves the box as it was; False then.
bool load(QLabel* box, const QString& path) {
    QPixmap picture;
    if (!picture.load(path))
        return false;
    box->setPixmap(picture.scaled(box->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    return true;
}

// The staff photos' own folder under 写真フォルダ.
QString staffKind() {
    return QStringLiteral("担当者");
}

// The file dialog of the photo and seal buttons, in its save form so that any
// name may be typed; "" when it was cancelled.
QString pictureFile(Context& ctx, frm担当者登録& f, int filterIndex) {
    return ctx.dialogs->saveFile(
        &f,
        QStringLiteral("全てのファイル(*.*)|*.*|JPEGファイル (*.jpg)|*.jpg|GIFファイル (*.gif)|*.gif|"
                       "メタファイル (*.wmf)|*.wmf|拡張メタファイル (*.emf)|*.emf|"
                       "Bitmap ファイル (*.bmp)|*.bmp"),
        filterIndex, os::homeFolder());
}

// The number at the start of a text, 0 when it begins with none.
int leadingNumber(const QString& text) {
    int n = 0;
    for (const QChar ch : text.trimmed()) {
        if (!ch.isDigit() || ch.unicode() > 0x7f)
            break;
        n = n * 10 + ch.digitValue();
    }
    return n;
}

// Sizes in twips, 15 to the pixel.
int pixels(int twips) {
    return qRound(twips / 15.0);
}

// The picture of the viewer at H by W twips, and the window around it.
void sizeViewer(wnd写真& w, int height, int width) {
    w.img_写真->setGeometry(0, 0, pixels(width), pixels(height));
    w.resize(pixels(width + 240), pixels(height + 640));
}

// After a step that changes files or the record: the pictures and the screen's
// buttons, the photo and seal buttons among them.
void stepDone(Context& ctx, frm担当者登録& f) {
    写真display(ctx, f);
    画面状態set(ctx, f);
}

void firstPhoto(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    r.写真file = 写真最初get(ctx, staffKind(), r.コード);
    r.取込写真path.clear();
    r.表示写真file = r.写真file;
}

void nextPhoto(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    r.写真file = 写真次get(ctx, staffKind(), r.コード, r.写真file);
    r.取込写真path.clear();
    r.表示写真file = r.写真file;
}

} // namespace

QString extensionOf(const QString& name, int fromEnd) {
    const qsizetype dot = name.indexOf(QLatin1Char('.'), qMax<qsizetype>(0, name.size() - fromEnd));
    return dot < 0 ? QString() : name.mid(dot);
}

QString 写真最初get(Context& ctx, const QString& 種別, const QString& コード) {
    const QStringList names = os::listFolder(folderOf(ctx, 種別), コード.trimmed() + QStringLiteral("*"));
    return names.isEmpty() ? QString() : names.first();
}

QString 写真次get(Context& ctx, const QString& 種別, const QString& コード, const QString& 現在file) {
    const QStringList names = os::listFolder(folderOf(ctx, 種別), コード.trimmed() + QStringLiteral("*"));
    const qsizetype at = names.indexOf(現在file);
    return at < 0 || at + 1 >= names.size() ? QString() : names.at(at + 1);
}

QString 写真取込copy(Context& ctx, const QString& 種別, const QString& コード, const QString& 取込path) {
    if (取込path.isEmpty() || !ファイル存在chk(取込path))
        return QString();
    const QString code = コード.trimmed();
    const QString source = 取込path.mid(取込path.lastIndexOf(QLatin1Char('/')) + 1);
    const QString extension = extensionOf(source, 5);
    const QString folder = folderOf(ctx, 種別);
    const QStringList names = os::listFolder(folder, code + QStringLiteral("*"));
    QString name;
    if (names.isEmpty()) {
        // The first photo of the code needs an extension to be told from the code.
        if (source.contains(QLatin1Char('.')))
            name = code + extension;
    } else {
        // Numbered on from the last file listed; gaps left by deletes stay.
        const QString last = names.last();
        const QString stem = last.left(last.size() - extensionOf(last, 5).size());
        if (stem == code)
            name = code + QStringLiteral("_001") + extension;
        else
            name = code + QLatin1Char('_') +
                   QStringLiteral("%1").arg(leadingNumber(last.mid(code.size() + 1, 3)) + 1, 3, 10, QLatin1Char('0')) +
                   extension;
    }
    if (name.isEmpty())
        return QString();
    // A copy that fails still answers the name: the frame then stays as it was.
    フォルダ作成make(ctx, folder + QLatin1Char('/') + name);
    ファイル複写copy(取込path, folder + QLatin1Char('/') + name);
    return name;
}

bool 写真delete(Context& ctx, const QString& 種別, const QString& ファイル名) {
    const QString path = folderOf(ctx, 種別) + QLatin1Char('/') + ファイル名;
    if (ファイル名.isEmpty() || !ファイル存在chk(path))
        return false;
    return os::removeFile(path);
}

bool 写真全delete(Context& ctx, const QString& 種別, const QString& コード) {
    // Without a code the pattern would take in the photos of everybody.
    if (空白(コード))
        return false;
    const QString folder = folderOf(ctx, 種別);
    const QStringList names = os::listFolder(folder, コード.trimmed() + QStringLiteral("*"));
    // A file that cannot be removed is passed over, as all errors here are.
    for (const QString& name : names)
        os::removeFile(folder + QLatin1Char('/') + name);
    return !names.isEmpty();
}

void 社員写真取込(Context& ctx, const QString& 社員コード) {
    // The folder of the link in use; without one there is nothing to list.
    const int n = ctx.others.連携番号;
    if (n < 0 || n >= static_cast<int>(std::size(ctx.others.slot))) {
        エラー履歴add(ctx, QStringLiteral("社員写真取込 ERROR 連携番号 ") + QString::number(n));
        return;
    }
    const QString F = ctx.others.slot[n].写真フォルダ;
    担当者情報型& r = ctx.担当者情報;
    // The files are listed in the link's folder and copied from the company's
    // own photo folder under the same name: so the two are kept.
    const QStringList photos = os::listFolder(F + QStringLiteral("/社員"), 社員コード + QStringLiteral("*"));
    for (qsizetype i = 0; i < photos.size(); ++i) {
        const QString name = 写真取込copy(ctx, staffKind(), r.コード,
                                         ctx.company.写真フォルダ + QStringLiteral("/社員/") + photos.at(i));
        if (i == 0) {
            r.写真file = name;
            r.表示写真file = name;
            r.取込写真path.clear();
        }
    }
    const QStringList seals = os::listFolder(F + QStringLiteral("/社員印"), 社員コード + QStringLiteral("*"));
    if (!seals.isEmpty()) {
        r.担当者印file = r.コード.trimmed() + extensionOf(seals.first(), 5);
        r.取込担当者印path = ctx.company.写真フォルダ + QStringLiteral("/社員印/") + seals.first();
    }
}

// A picture that exists but cannot be loaded ends the display there: what
// follows it keeps what it showed.
void 写真display(Context& ctx, frm担当者登録& f) {
    const 担当者情報型& r = ctx.担当者情報;
    if (r.表示写真file.isEmpty()) {
        f.img_写真->clear();
    } else {
        const QString path = folderOf(ctx, QStringLiteral("担当者")) + QLatin1Char('/') + r.表示写真file;
        if (ファイル存在chk(path) && !load(f.img_写真, path))
            return;
    }
    if (!r.取込担当者印path.isEmpty()) {
        if (ファイル存在chk(r.取込担当者印path))
            load(f.img_担当者印, r.取込担当者印path);
        return;
    }
    if (r.担当者印file.isEmpty()) {
        f.img_担当者印->clear();
        return;
    }
    const QString seal = folderOf(ctx, QStringLiteral("担当者印")) + QLatin1Char('/') + r.担当者印file;
    if (ファイル存在chk(seal))
        load(f.img_担当者印, seal);
}

void 写真button設定(Context& ctx, frm担当者登録& f) {
    const bool none = 空白(ctx.担当者情報.コード) || ctx.screen.新規フラグ;
    const bool current = !ctx.担当者情報.写真file.isEmpty();
    f.btn_最初の写真->setEnabled(!none);
    f.btn_次の写真->setEnabled(!none);
    f.btn_新写真取込->setEnabled(!none && !current);
    f.btn_写真削除->setEnabled(!none && current);
    f.btn_全写真削除->setEnabled(!none && current);
}

void 担当者印button設定(Context& ctx, frm担当者登録& f) {
    const 担当者情報型& r = ctx.担当者情報;
    if (空白(r.コード)) {
        f.btn_担当者印クリア->setEnabled(false);
        f.btn_担当者印読込->setEnabled(false);
    } else if (!r.取込担当者印path.isEmpty()) {
        f.btn_担当者印クリア->setEnabled(true);
        f.btn_担当者印読込->setEnabled(false);
    } else if (!ctx.screen.新規フラグ && !r.担当者印file.isEmpty()) {
        f.btn_担当者印クリア->setEnabled(true);
        f.btn_担当者印読込->setEnabled(true);
    } else {
        f.btn_担当者印クリア->setEnabled(false);
        f.btn_担当者印読込->setEnabled(true);
    }
}

void 写真拡大show(Context& ctx, const QString& パス, const QString& 表題, QWidget* parent) {
    if (パス.isEmpty() || !ファイル存在chk(パス))
        return;
    QPixmap picture;
    if (!picture.load(パス))
        return;
    wnd写真 w(ctx, parent);
    if (!表題.isEmpty())
        w.setWindowTitle(表題);
    w.img_写真->setScaledContents(false);
    w.img_写真->setPixmap(picture);
    // Natural size and screen in twips.
    const int naturalHeight = picture.height() * 15;
    const int naturalWidth = picture.width() * 15;
    // Without a screen nothing limits the size.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int screenHeight = screen ? screen->size().height() * 15 : naturalHeight + 1440;
    const int screenWidth = screen ? screen->size().width() * 15 : naturalWidth + 240;
    int height = naturalHeight;
    int width = naturalWidth;
    // Too tall for the screen: the height of the screen, the width in proportion.
    if (screenHeight - 1440 < height) {
        height = screenHeight - 1440;
        width = static_cast<int>(static_cast<double>(height) / naturalHeight * naturalWidth);
    }
    sizeViewer(w, height, width);
    // Still too wide: the width of the screen, the height in proportion to the natural size.
    if (screenWidth - 240 < width) {
        width = screenWidth - 240;
        height = static_cast<int>(static_cast<double>(width) / naturalWidth * naturalHeight);
        sizeViewer(w, height, width);
    }
    w.img_写真->setScaledContents(true);
    w.exec();
}

void btn_最初の写真_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    firstPhoto(ctx);
    写真display(ctx, f);
    写真button設定(ctx, f);
}

void btn_次の写真_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    nextPhoto(ctx);
    写真display(ctx, f);
    写真button設定(ctx, f);
}

void btn_新写真取込_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    const QString path = pictureFile(ctx, f, 1);
    if (path.isEmpty())
        return;
    担当者情報型& r = ctx.担当者情報;
    if (path != r.取込写真path) {
        ctx.screen.入力フラグ = true;
        r.取込写真path = path;
        r.写真file = 写真取込copy(ctx, staffKind(), r.コード, path);
        if (!r.写真file.isEmpty()) {
            r.取込写真path.clear();
            r.表示写真file = r.写真file;
        }
    }
    stepDone(ctx, f);
}

void btn_写真削除_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    if (!ctx.担当者情報.写真file.isEmpty()) {
        ctx.screen.入力フラグ = true;
        写真delete(ctx, staffKind(), ctx.担当者情報.写真file);
        nextPhoto(ctx);
    }
    stepDone(ctx, f);
}

void btn_全写真削除_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    if (!ctx.担当者情報.写真file.isEmpty()) {
        ctx.screen.入力フラグ = true;
        写真全delete(ctx, staffKind(), ctx.担当者情報.コード);
    }
    firstPhoto(ctx);
    stepDone(ctx, f);
}

void btn_担当者印読込_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    const QString path = pictureFile(ctx, f, 0);
    if (path.isEmpty())
        return;
    担当者情報型& r = ctx.担当者情報;
    if (path != r.取込担当者印path) {
        ctx.screen.入力フラグ = true;
        r.取込担当者印path = path;
        // Named at once; the file itself is copied when the record is saved.
        r.担当者印file = r.コード.trimmed() + extensionOf(path, 6);
    }
    stepDone(ctx, f);
}

void btn_担当者印クリア_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ)
        return;
    ctx.担当者情報.取込担当者印path.clear();
    ctx.担当者情報.担当者印file.clear();
    stepDone(ctx, f);
}

void img_写真_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.画面表示中フラグ || ctx.担当者情報.表示写真file.isEmpty())
        return;
    写真拡大show(ctx, folderOf(ctx, staffKind()) + QLatin1Char('/') + ctx.担当者情報.表示写真file, ctx.担当者情報.氏名,
                 &f);
}
