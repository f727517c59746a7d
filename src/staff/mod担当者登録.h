#pragma once

#include "shell/context.h"

#include <QString>

class frm担当者登録;
class QWidget;

// The rules of the staff card. They work on the record 担当者情報 and the
// screen state of the context; the form only hands its events to them.

// Load, events and unload of the form.
void 担当者登録wire(Context& ctx, frm担当者登録& form);
void 担当者登録load(Context& ctx, frm担当者登録& form);
// The close box and btn_終了: False when the user keeps the program running.
bool 担当者登録unload(Context& ctx, frm担当者登録& form);

inline bool 空白(const QString& text) {
    return text.trimmed().isEmpty();
}

// The three dates of the record.
enum class 日付種別 { 生年月日, 入社日付, 退社日付 };
// Gives a stored date its screen form: its era and the year in it, month and day.
void 日付分解(Context& ctx, 日付種別 which);

// The record and the screen.
void 担当者clear(Context& ctx);
void 担当者paint(Context& ctx, frm担当者登録& form);
void 担当者show(Context& ctx, frm担当者登録& form);
void 画面初期set(Context& ctx, frm担当者登録& form);
void 画面状態set(Context& ctx, frm担当者登録& form);
bool 登録可chk(const Context& ctx);
// Puts the focus on the first empty field of the chain of codes; True when it did.
bool 項目順chk(Context& ctx, frm担当者登録& form);
// The focus to the control or, when it cannot take it, to the next one that can.
void 項目focus(Context& ctx, QWidget* control);

// Reading a staff row.
bool 担当者get(Context& ctx, const QString& コード);
void 担当者set(Context& ctx);
void 担当者新規set(Context& ctx);
bool 担当者コードchk(Context& ctx, const QString& コード);

// The use check of a staff code over the business tables.
bool 担当者使用chk(Context& ctx, frm担当者登録& form);
bool 項目使用chk(Context& ctx, const QString& 表, const QString& 列, const QString& コード);

// Buttons.
void btn_画面クリア_Click(Context& ctx, frm担当者登録& form);
void btn_終了_Click(Context& ctx, frm担当者登録& form);
void btn_登録_Click(Context& ctx, frm担当者登録& form);
