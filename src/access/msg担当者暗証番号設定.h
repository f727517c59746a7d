#pragma once

#include "shell/context.h"

#include "platform/controls/fields.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QString>

// A staff member sets their own PIN from their own card: the old PIN, the new
// one and its confirmation. The PIN goes straight to M担当者, outside the save
// of the card, and the card's record keeps the new value.
class msg担当者暗証番号設定 : public QDialog {
public:
    explicit msg担当者暗証番号設定(Context& ctx, QWidget* parent = nullptr);

    QLabel* itm_ttl_旧担当者暗証番号;
    controls::PinField* 旧担当者暗証番号;
    QLabel* itm_ttl_新システム担当者暗証番号;
    controls::PinField* 新担当者暗証番号;
    QLabel* itm_ttl_新確認担当者暗証番号;
    controls::PinField* 新確認担当者暗証番号;
    QPushButton* btn_設定;
    QPushButton* btn_戻る;

    // The plain PIN of the record on the card.
    QString 現暗証番号;

private:
    void Form_Load();
    void 旧担当者暗証番号_LostFocus();
    void 新担当者暗証番号_LostFocus();
    void 新確認担当者暗証番号_LostFocus();
    void 設定可set();
    void btn_設定_Click();

    Context& ctx_;
};

// The plain PIN of the record on the card.
QString 暗証番号get(Context& ctx);
// Keeps the upper-case PIN in the record and writes it, enciphered, to the
// record's row; no maintenance log row.
void 暗証番号update(Context& ctx, const QString& 新暗証番号);
