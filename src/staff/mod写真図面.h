#pragma once

#include "shell/context.h"

#include <QString>

class frm担当者登録;
class QWidget;

// Photos of a staff member lie in 写真フォルダ/<kind>/ under the code's name,
// the seal in 写真フォルダ/<kind>印/.

// The extension of a file name with its point: from the first point at or
// behind the nth-last character, "" when there is none.
QString extensionOf(const QString& name, int fromEnd);

// The listings below are in the order of the names.
// The first file of the code in the kind's folder, "" when there is none.
QString 写真最初get(Context& ctx, const QString& 種別, const QString& コード);
// The file listed after the current one, "" past the last or when the current one is gone.
QString 写真次get(Context& ctx, const QString& 種別, const QString& コード, const QString& 現在file);
// Copies a picture into the kind's folder under the next name of the code and
// answers that name; "" when the source is not there or gives no name.
QString 写真取込copy(Context& ctx, const QString& 種別, const QString& コード, const QString& 取込path);
// Removes one file of the kind's folder; True when it was there and went.
bool 写真delete(Context& ctx, const QString& 種別, const QString& ファイル名);
// Removes every file of the code in the kind's folder; True when at least one matched.
bool 写真全delete(Context& ctx, const QString& 種別, const QString& コード);
// Takes an employee's photos and seal over into the staff record: every
// photo of the employee listed in the personnel system's photo folder is
// copied under the record's code, the first becoming the current photo; the
// first seal is picked, to be copied when the record is saved.
void 社員写真取込(Context& ctx, const QString& 社員コード);
// Loads img_写真 and img_担当者印 from the record's photo and seal state.
void 写真display(Context& ctx, frm担当者登録& form);
// The enabled state of the five photo buttons and of the two seal buttons.
void 写真button設定(Context& ctx, frm担当者登録& form);
void 担当者印button設定(Context& ctx, frm担当者登録& form);
// Shows a picture at full size in wnd写真, within the screen, captioned with the title.
void 写真拡大show(Context& ctx, const QString& パス, const QString& 表題, QWidget* parent);

// The buttons of the photo page and the click on the photo. Each does nothing
// while the record is being painted.
void btn_最初の写真_Click(Context& ctx, frm担当者登録& form);
void btn_次の写真_Click(Context& ctx, frm担当者登録& form);
void btn_新写真取込_Click(Context& ctx, frm担当者登録& form);
void btn_写真削除_Click(Context& ctx, frm担当者登録& form);
void btn_全写真削除_Click(Context& ctx, frm担当者登録& form);
void btn_担当者印読込_Click(Context& ctx, frm担当者登録& form);
void btn_担当者印クリア_Click(Context& ctx, frm担当者登録& form);
void img_写真_Click(Context& ctx, frm担当者登録& form);
