// The card's openings of the list windows. Each code field offers its button
// (where it has one), the Ctrl key and the double click; the window writes the
// chosen code into the field, whose own leaving rule then does the lookup.

#include "staff/mod担当者検索.h"

#include "search/mod検索窓.h"
#include "shell/context.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"
#include "toolkit/mod項目編集.h"

#include <QPushButton>

#include <functional>

namespace {

// A gate of the field entry rules for the double click: True when it stopped
// and moved the focus.
using Gate = std::function<bool()>;

} // namespace

void 担当者検索wire(Context& ctx, frm担当者登録& f) {
    auto* windows = new 検索窓群(ctx, &f);
    auto* watch = new 項目操作監視(&f);
    Context* c = &ctx;
    frm担当者登録* form = &f;

    const auto empty = [](const QLineEdit* w) { return 空白(w->text()); };
    const Gate none = [] { return false; };
    const Gate C = [c, form, empty] {
        if (!empty(form->コード))
            return false;
        項目focus(*c, form->コード);
        return true;
    };
    const Gate O = [c, form, C, empty] {
        if (C())
            return true;
        if (!empty(form->事業所コード))
            return false;
        項目focus(*c, form->事業所コード);
        return true;
    };
    const Gate D = [c, form, O, empty] {
        if (O())
            return true;
        if (!empty(form->部門コード))
            return false;
        項目focus(*c, form->部門コード);
        return true;
    };
    const Gate F = [c, form] { return 項目順chk(*c, *form); };

    // The staff list opens at the code shown.
    const auto staffCondition = [form] {
        if (空白(form->コード->text()))
            return QString();
        return QStringLiteral("M担当者.コード >= '") + コードfmt(form->コード->text(), QStringLiteral("00000")) +
               QStringLiteral("'");
    };
    const auto noCondition = [] { return QString(); };

    struct Opening {
        QWidget* field;
        QPushButton* button; // null: the field has none
        窓種別 kind;
        QWidget* next;
        Gate gate;
        bool 無効化; // whether the double click disables the card first
        std::function<QString()> condition;
    };
    const QList<Opening> openings{
        {f.コード, f.btn_担当者コード, 窓種別::担当者一覧, f.姓, none, true, staffCondition},
        {f.社員コード, f.btn_社員コード, 窓種別::社員一覧, f.カナ姓, C, true, noCondition},
        {f.事業所コード, f.btn_事業所コード, 窓種別::事業所一覧, f.部門コード, C, false, noCondition},
        {f.部門コード, f.btn_部門コード, 窓種別::部門一覧, f.セクションコード, O, false, noCondition},
        {f.セクションコード, f.btn_セクションコード, 窓種別::セクション一覧, f.役職コード, D, false, noCondition},
        {f.役職コード, f.btn_役職コード, 窓種別::役職一覧, f.職責, F, false, noCondition},
        {f.郵便番号, nullptr, 窓種別::郵便番号一覧, f.住所A, none, true, noCondition},
    };
    for (const Opening& o : openings) {
        const auto open = [windows, o](bool 無効化) { windows->open(o.kind, o.field, o.next, o.condition(), 無効化); };
        if (o.button)
            QObject::connect(o.button, &QPushButton::clicked, &f, [open] { open(true); });
        watch->onCtrlKey(o.field, [open] { open(true); });
        watch->onDoubleClick(o.field, [o, open] {
            if (!o.gate())
                open(o.無効化);
        });
    }
}
