#pragma once

#include "shell/context.h"

#include "platform/controls/fields.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QString>

// Asks who is working: a staff code (filled at once when the platform's user
// name is a staff member's ログインID) and that member's PIN or the office's
// privilege PIN. The caller sets the caption and shows it modally; on leaving,
// 暗証確認済 tells whether an operator was accepted.
class msg暗証番号確認 : public QDialog {
public:
    explicit msg暗証番号確認(Context& ctx, QWidget* parent = nullptr);

    controls::TextField* 担当者コード;
    QLabel* itm_ttl_担当者コード;
    controls::TextField* 担当者名;
    QLabel* itm_ttl_担当者名;
    controls::PinField* 暗証番号;
    QLabel* itm_ttl_暗証番号;
    QPushButton* btn_OK;
    QPushButton* btn_キャンセル;

    // The decoded PIN of the staff member shown.
    QString 確認暗証番号;

    // btn_キャンセル, Esc and the close box: no operator accepted.
    void reject() override;

private:
    void Form_Load();
    void 担当者コード_LostFocus();
    void 担当者名_GotFocus();
    void 暗証番号_GotFocus();
    void btn_OK_GotFocus();

    Context& ctx_;
};
