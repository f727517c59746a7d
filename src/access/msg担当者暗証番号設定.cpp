// The staff PIN setting form: its controls, the tests on leaving each field
// and the writing of the new PIN.

#include "access/msg担当者暗証番号設定.h"

#include "access/dialog_parts.h"
#include "platform/controls/tabtable.h"
#include "shell/modデータ処理.h"
#include "shell/暗証番号.h"

#include <QGridLayout>
#include <QHBoxLayout>

using dialog_parts::button;
using dialog_parts::title;

msg担当者暗証番号設定::msg担当者暗証番号設定(Context& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName(QStringLiteral("msg担当者暗証番号設定"));
    setModal(true);

    const auto pin = [this](const QString& name) {
        auto* field = new controls::PinField(this);
        field->setObjectName(name);
        return field;
    };
    itm_ttl_旧担当者暗証番号 =
        title(QStringLiteral("itm_ttl_旧担当者暗証番号"), QStringLiteral("旧担当者暗証番号"), this);
    旧担当者暗証番号 = pin(QStringLiteral("旧担当者暗証番号"));
    itm_ttl_新システム担当者暗証番号 =
        title(QStringLiteral("itm_ttl_新システム担当者暗証番号"), QStringLiteral("新担当者暗証番号"), this);
    新担当者暗証番号 = pin(QStringLiteral("新担当者暗証番号"));
    itm_ttl_新確認担当者暗証番号 =
        title(QStringLiteral("itm_ttl_新確認担当者暗証番号"), QStringLiteral("確認担当者暗証番号"), this);
    新確認担当者暗証番号 = pin(QStringLiteral("新確認担当者暗証番号"));
    btn_設定 = button(QStringLiteral("btn_設定"), QStringLiteral("設定"), this);
    btn_戻る = button(QStringLiteral("btn_戻る"), QStringLiteral("戻る"), this);

    auto* grid = new QGridLayout(this);
    grid->addWidget(itm_ttl_旧担当者暗証番号, 0, 0);
    grid->addWidget(旧担当者暗証番号, 0, 1);
    grid->addWidget(itm_ttl_新システム担当者暗証番号, 1, 0);
    grid->addWidget(新担当者暗証番号, 1, 1);
    grid->addWidget(itm_ttl_新確認担当者暗証番号, 2, 0);
    grid->addWidget(新確認担当者暗証番号, 2, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btn_設定);
    buttons->addWidget(btn_戻る);
    grid->addLayout(buttons, 3, 0, 1, 2);

    auto* tabs = new controls::TabTable(this);
    tabs->add(旧担当者暗証番号, 0);
    tabs->add(新担当者暗証番号, 1);
    tabs->add(新確認担当者暗証番号, 2);
    tabs->add(btn_設定, 3);
    tabs->add(btn_戻る, 4);

    auto* focus = new controls::FocusEvents(this);
    focus->onLostFocus(旧担当者暗証番号, [this] { 旧担当者暗証番号_LostFocus(); });
    focus->onLostFocus(新担当者暗証番号, [this] { 新担当者暗証番号_LostFocus(); });
    focus->onLostFocus(新確認担当者暗証番号, [this] { 新確認担当者暗証番号_LostFocus(); });

    for (QLineEdit* field : std::initializer_list<QLineEdit*>{旧担当者暗証番号, 新担当者暗証番号, 新確認担当者暗証番号})
        dialog_parts::enterMovesOn(field);
    dialog_parts::titleFocuses(itm_ttl_旧担当者暗証番号, 旧担当者暗証番号);
    dialog_parts::titleFocuses(itm_ttl_新確認担当者暗証番号, 新確認担当者暗証番号);
    connect(btn_設定, &QPushButton::clicked, this, [this] { btn_設定_Click(); });
    // Back: the form goes, nothing is written.
    connect(btn_戻る, &QPushButton::clicked, this, [this] { reject(); });

    Form_Load();
}

void msg担当者暗証番号設定::Form_Load() {
    旧担当者暗証番号->clear();
    新担当者暗証番号->clear();
    新確認担当者暗証番号->clear();
    現暗証番号 = 暗証番号get(ctx_);
    設定可set();
    旧担当者暗証番号->setFocus();
}

void msg担当者暗証番号設定::旧担当者暗証番号_LostFocus() {
    const QString typed = 旧担当者暗証番号->text();
    if (!typed.isEmpty() && typed.toUpper() != 現暗証番号) {
        ctx_.msg.show(QStringLiteral("担当者暗証番号が違います。"));
        旧担当者暗証番号->clear();
        旧担当者暗証番号->setFocus(Qt::OtherFocusReason);
    }
    設定可set();
}

// A refused new PIN keeps its text and the focus moves on: confirmed, it can still be set.
void msg担当者暗証番号設定::新担当者暗証番号_LostFocus() {
    const QString typed = 新担当者暗証番号->text();
    if (!typed.isEmpty() && (typed.toUpper() == 現暗証番号 || typed.size() < 4))
        ctx_.msg.show(QStringLiteral("担当者暗証番号が違います。"));
    設定可set();
}

// The confirmation must repeat the new PIN exactly, case included.
void msg担当者暗証番号設定::新確認担当者暗証番号_LostFocus() {
    const QString typed = 新確認担当者暗証番号->text();
    if (!typed.isEmpty() && typed != 新担当者暗証番号->text())
        ctx_.msg.show(QStringLiteral("確認担当者暗証番号が違います。"));
    設定可set();
}

void msg担当者暗証番号設定::設定可set() {
    btn_設定->setEnabled(新担当者暗証番号->text() == 新確認担当者暗証番号->text() &&
                         !旧担当者暗証番号->text().isEmpty() && !新担当者暗証番号->text().isEmpty() &&
                         !新確認担当者暗証番号->text().isEmpty());
}

void msg担当者暗証番号設定::btn_設定_Click() {
    if (ctx_.msg.show(QStringLiteral("担当者暗証番号を設定します。"), ui::Buttons::YesNo, 1) != ui::Answer::Yes)
        return;
    暗証番号update(ctx_, 新担当者暗証番号->text());
    accept();
}

QString 暗証番号get(Context& ctx) { return ctx.担当者情報.暗証番号; }

void 暗証番号update(Context& ctx, const QString& 新暗証番号) {
    担当者情報型& r = ctx.担当者情報;
    r.暗証番号 = 新暗証番号.toUpper();
    // A failing statement is in the run history; the record keeps the new PIN all the same.
    業務SQLexec(ctx,
                QStringLiteral("UPDATE M担当者 SET ") + QStringLiteral(" 暗証番号 = '") +
                    暗証番号encode(ctx, r.暗証番号) + QStringLiteral("'") + QStringLiteral(" WHERE コード = '") +
                    r.コード + QStringLiteral("'"),
                true);
}
