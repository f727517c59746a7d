#include "staff/mod写真図面.h"

#include "platform/os/files.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"

#include <QPixmap>

namespace {

QString folderOf(const Context& ctx, const QString& kind) {
    return ctx.company.写真フォルダ + QLatin1Char('/') + kind;
}

// A picture that cannot be loaded leaves the box as it was.
void load(QLabel* box, const QString& path) {
    QPixmap picture;
    if (!picture.load(path))
        return;
    box->setPixmap(picture.scaled(box->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

} // namespace

QString 写真最初get(Context& ctx, const QString& 種別, const QString& コード) {
    const QStringList names = os::listFolder(folderOf(ctx, 種別), コード.trimmed() + QStringLiteral("*"));
    return names.isEmpty() ? QString() : names.first();
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

void 写真display(Context& ctx, frm担当者登録& f) {
    const 担当者情報型& r = ctx.担当者情報;
    if (r.表示写真file.isEmpty()) {
        f.img_写真->clear();
    } else {
        const QString path = folderOf(ctx, QStringLiteral("担当者")) + QLatin1Char('/') + r.表示写真file;
        if (os::fileExists(path))
            load(f.img_写真, path);
    }
    if (!r.取込担当者印path.isEmpty()) {
        if (os::fileExists(r.取込担当者印path))
            load(f.img_担当者印, r.取込担当者印path);
        return;
    }
    if (r.担当者印file.isEmpty()) {
        f.img_担当者印->clear();
        return;
    }
    const QString seal = folderOf(ctx, QStringLiteral("担当者印")) + QLatin1Char('/') + r.担当者印file;
    if (os::fileExists(seal))
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
