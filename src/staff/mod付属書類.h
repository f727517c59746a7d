#pragma once

#include "shell/context.h"

#include <QString>

class frm担当者登録;

// Files and folders attached to a record: one row of M付属書類 each, and a copy
// in ドキュメントフォルダ named <情報名>_<情報識別ID>_<SEQNo>_<the picked name>.

// The columns of a row other than the owner, the number and the picked path;
// each program fills those its records know. Missing texts are written empty.
struct 付属書類明細 {
    QString タイトル;
    QString 伝票番号ID, 伝票事業所コード, 伝票番号基準日付, 伝票No, 伝票日付;
    QString 対応先コード, 得意先コード, 納品先コード, 仕入先コード, 銀行コード, 科目コード;
    QString 社員コード, 担当者コード, 部門コード, セクションコード, 商品コード, メーカコード;
    double 対象金額 = 0;
};

// Fills List付属書類 with the attachments of the code in the field コード. An
// item whose copy is in the store is checked; one whose copy is gone is not,
// and shows no size.
void 付属書類listint(Context& ctx, frm担当者登録& form);
// Attachments go only to a saved record: the three buttons are off for a new one.
void 付属書類ボタン設定(Context& ctx, frm担当者登録& form);
bool 付属書類有無chk(Context& ctx, const QString& 情報名, const QString& 情報識別ID);
// Adds the row under the next number after the highest and, when the row is in,
// copies the picked file or folder into the store.
void 付属書類insert(Context& ctx, const QString& 情報名, const QString& 情報識別ID, const QString& 書類名,
                    const 付属書類明細& 明細 = {});
void 付属書類delete(Context& ctx, const QString& 情報名, const QString& 情報識別ID, const QString& SEQNo);
// The picked path of an attachment; False when the row is not there.
bool 付属書類名get(Context& ctx, const QString& 情報名, const QString& 情報識別ID, const QString& SEQNo,
                   QString& 書類名);

// The events of the attachments page.
void 付属書類wire(Context& ctx, frm担当者登録& form);
void btn_付属書類追加_Click(Context& ctx, frm担当者登録& form);
void btn_フォルダ_Click(Context& ctx, frm担当者登録& form);
void btn_付属書類削除_Click(Context& ctx, frm担当者登録& form);
void List付属書類_DblClick(Context& ctx, frm担当者登録& form);
