// The PIN confirmation form: its controls, its tab order and its events.

#include "access/msg暗証番号確認.h"

#include "access/dialog_parts.h"
#include "access/mod暗証番号.h"
#include "platform/controls/tabtable.h"
#include "toolkit/mod項目編集.h"

#include <QGridLayout>
#include <QHBoxLayout>

using dialog_parts::button;
using dialog_parts::title;

msg暗証番号確認::msg暗証番号確認(Context& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName(QStringLiteral("msg暗証番号確認"));
    setModal(true);

    担当者コード = new controls::TextField(this);
    担当者コード->setObjectName(QStringLiteral("担当者コード"));
    担当者コード->setMaxLength(5);
    担当者コード->setDigitsOnly(true);
    itm_ttl_担当者コード = title(QStringLiteral("itm_ttl_担当者コード"), QStringLiteral("コード"), this);
    担当者名 = new controls::TextField(this);
    担当者名->setObjectName(QStringLiteral("担当者名"));
    itm_ttl_担当者名 = title(QStringLiteral("itm_ttl_担当者名"), QStringLiteral("担当者氏名"), this);
    暗証番号 = new controls::PinField(this);
    暗証番号->setObjectName(QStringLiteral("暗証番号"));
    itm_ttl_暗証番号 = title(QStringLiteral("itm_ttl_暗証番号"), QStringLiteral("暗証番号"), this);
    btn_OK = button(QStringLiteral("btn_OK"), QStringLiteral("OK"), this);
    btn_キャンセル = button(QStringLiteral("btn_キャンセル"), QStringLiteral("キャンセル"), this);

    auto* grid = new QGridLayout(this);
    grid->addWidget(itm_ttl_担当者コード, 0, 0);
    grid->addWidget(担当者コード, 0, 1);
    grid->addWidget(itm_ttl_担当者名, 1, 0);
    grid->addWidget(担当者名, 1, 1);
    grid->addWidget(itm_ttl_暗証番号, 2, 0);
    grid->addWidget(暗証番号, 2, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btn_OK);
    buttons->addWidget(btn_キャンセル);
    grid->addLayout(buttons, 3, 0, 1, 2);

    auto* tabs = new controls::TabTable(this);
    tabs->add(担当者コード, 0);
    tabs->add(担当者名, 1);
    tabs->add(暗証番号, 2);
    tabs->add(btn_OK, 3);
    tabs->add(btn_キャンセル, 4);

    auto* focus = new controls::FocusEvents(this);
    focus->onLostFocus(担当者コード, [this] { 担当者コード_LostFocus(); });
    focus->onGotFocus(担当者名, [this] { 担当者名_GotFocus(); });
    focus->onGotFocus(暗証番号, [this] { 暗証番号_GotFocus(); });
    focus->onGotFocus(btn_OK, [this] { btn_OK_GotFocus(); });

    for (QLineEdit* field : std::initializer_list<QLineEdit*>{担当者コード, 担当者名, 暗証番号})
        dialog_parts::enterMovesOn(field);
    connect(btn_キャンセル, &QPushButton::clicked, this, [this] { reject(); });
    dialog_parts::titleFocuses(itm_ttl_担当者コード, 担当者コード);
    dialog_parts::titleFocuses(itm_ttl_担当者名, 暗証番号);
    dialog_parts::titleFocuses(itm_ttl_暗証番号, 暗証番号);

    Form_Load();
}

void msg暗証番号確認::Form_Load() {
    担当者コード->clear();
    担当者名->clear();
    暗証番号->clear();
    ctx_.op.操作担当者コード.clear();
    const bool known = ログイン担当者read(ctx_, *this, ctx_.terminal.ユーザ名);
    // A staff member known by the login needs only the PIN.
    担当者コード->setTabStop(!known);
    (known ? static_cast<QWidget*>(暗証番号) : static_cast<QWidget*>(担当者コード))->setFocus();
}

void msg暗証番号確認::担当者コード_LostFocus() {
    確認担当者read(ctx_, *this, コードfmt(担当者コード->text(), QStringLiteral("00000")));
}

void msg暗証番号確認::担当者名_GotFocus() { 暗証番号->setFocus(Qt::OtherFocusReason); }

void msg暗証番号確認::暗証番号_GotFocus() {
    if (担当者コード->text().isEmpty())
        担当者コード->setFocus(Qt::OtherFocusReason);
}

// The check runs whenever the button gets the focus: a click, or moving on
// from the PIN with Tab or Enter.
void msg暗証番号確認::btn_OK_GotFocus() {
    const QString p = 暗証番号->text().toUpper();
    if (p.size() <= 3) {
        ctx_.msg.show(QStringLiteral("暗証番号を入力してください。"));
        ctx_.op.操作担当者コード.clear();
        ctx_.pin.暗証確認済 = false;
        暗証番号->setFocus(Qt::OtherFocusReason);
        return;
    }
    // Short PINs never get here, so an empty or short privilege PIN cannot match.
    if (p == ctx_.pin.特権暗証番号 || p == 確認暗証番号) {
        ctx_.op.操作担当者コード = 担当者コード->text();
        起動担当者save(ctx_);
        ctx_.pin.暗証確認済 = true;
        accept();
        return;
    }
    ctx_.op.操作担当者コード.clear();
    ctx_.pin.暗証確認済 = false;
    ctx_.msg.show(QStringLiteral("暗証番号が違います。"));
    暗証番号->setFocus(Qt::OtherFocusReason);
}

void msg暗証番号確認::reject() {
    ctx_.pin.暗証確認済 = false;
    QDialog::reject();
}
