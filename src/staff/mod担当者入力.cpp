// The fields of the staff card: what each does on getting the focus, while its
// text changes and on leaving; the traps, the titles and the tab control.

#include "access/msg担当者暗証番号設定.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "staff/frm担当者登録.h"
#include "staff/mod写真図面.h"
#include "staff/mod担当者削除.h"
#include "staff/mod担当者登録.h"
#include "staff/mod担当者移動.h"
#include "staff/mod担当者参照.h"
#include "toolkit/mod基本項目.h"
#include "toolkit/mod項目編集.h"

#include <QTabBar>

namespace {

bool painting(const Context& ctx) {
    return ctx.screen.画面表示中フラグ;
}

void refresh(Context& ctx, frm担当者登録& f) {
    担当者paint(ctx, f);
    画面状態set(ctx, f);
}

// Stores a value into the record; False when it was there already.
template <typename T, typename V>
bool store(Context& ctx, T& field, const V& value) {
    if (field == value)
        return false;
    ctx.screen.入力フラグ = true;
    field = static_cast<T>(value);
    return true;
}

業務SQLopen型 opener(Context& ctx) {
    return [&ctx](db::Recordset& rs, const QString& sql) { return 業務SQLopen(ctx, rs, sql); };
}

// ---- dates

// The stored form and the screen form of one date of the record.
struct DateParts {
    QString* 日付;
    short* 年号区分;
    QString* 年;
    QString* 月;
    QString* 日;
    QString* 表示;
};

DateParts partsOf(担当者情報型& r, 日付種別 which) {
    switch (which) {
    case 日付種別::入社日付:
        return {&r.入社日付, &r.入社日付年号区分, &r.入社日付年, &r.入社日付月, &r.入社日付日, &r.入社日付表示};
    case 日付種別::退社日付:
        return {&r.退社日付, &r.退社日付年号区分, &r.退社日付年, &r.退社日付月, &r.退社日付日, &r.退社日付表示};
    case 日付種別::生年月日:
        break;
    }
    return {&r.生年月日, &r.生年月日年号区分, &r.生年月日年, &r.生年月日月, &r.生年月日日, &r.生年月日表示};
}

// A date expressed in the era it falls in; western years when no era applies.
void expressIn(Context& ctx, const DateParts& d, bool allowEra) {
    short era = 0;
    QString year;
    if (allowEra && 年号日付conv(opener(ctx), *d.日付, era, year)) {
        *d.年号区分 = era;
        *d.年 = year;
    } else {
        *d.年号区分 = 0;
        *d.年 = d.日付->left(4);
    }
    *d.月 = d.日付->mid(4, 2);
    *d.日 = d.日付->mid(6, 2);
    *d.表示 = *d.年 + *d.月 + *d.日;
}

// A whole date typed in is stored; an incomplete one leaves the stored date alone.
void 日付rule(Context& ctx, const DateParts& d) {
    const auto filled = [](const QString& t) { return !t.isEmpty() && 数値(t) != 0; };
    if (!filled(*d.年) || !filled(*d.月) || !filled(*d.日))
        return;
    *d.表示 = *d.年 + *d.月 + *d.日;
    // The answer is not looked at: a Western date, eight characters or more or
    // under era 0, passes through unchanged; what cannot be converted leaves the
    // stored date as it was.
    QString western = *d.日付;
    西暦日付conv(opener(ctx), *d.年号区分, *d.表示, western);
    *d.日付 = western;
}

QString 二桁(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty())
        return QString();
    return QStringLiteral("%1").arg(static_cast<int>(数値(t)), 2, 10, QLatin1Char('0'));
}

// ---- lookups of the masters

using 参照get = bool (*)(Context&, const QString&);
using 参照set = void (*)(Context&);

// The rule of a code field with its name beside it: a code found takes its
// row's code and name over; one not found leaves the record, so that the paint
// puts the old code back.
void コードrule(Context& ctx, frm担当者登録& f, controls::TextField* field, const QString& mask, 参照get get,
                参照set set, QString& code) {
    const QString value = コードfmt(field->text(), mask);
    if (value == code)
        return;
    ctx.screen.入力フラグ = true;
    if (value.isEmpty()) {
        code.clear();
        ctx.screen.お知らせ文.clear();
    } else if (get(ctx, value)) {
        set(ctx);
        ctx.screen.お知らせ文.clear();
    } else {
        ctx.参照行.close();
        ctx.screen.お知らせ文 = QStringLiteral("該当情報がありません。");
    }
    refresh(ctx, f);
    f.お知らせ->setText(ctx.screen.お知らせ文);
}

void 郵便番号rule(Context& ctx, frm担当者登録& f) {
    担当者情報型& r = ctx.担当者情報;
    const QString typed = f.郵便番号->postcode();
    if (数字抽出conv(typed) != 数字抽出conv(r.郵便番号)) {
        ctx.screen.入力フラグ = true;
        if (数字抽出conv(typed).isEmpty()) {
            r.郵便番号.clear();
            ctx.screen.お知らせ文.clear();
        } else if (郵便番号get(ctx, typed)) {
            郵便番号set(ctx);
            ctx.screen.お知らせ文.clear();
        } else {
            ctx.参照行.close();
            ctx.screen.お知らせ文 = QStringLiteral("該当情報がありません。");
        }
        refresh(ctx, f);
        f.お知らせ->setText(ctx.screen.お知らせ文);
        return;
    }
    担当者paint(ctx, f);
}

// An employee code takes the employee over into the record; one not found is
// emptied, and what an earlier copy brought stays.
void 社員コードrule(Context& ctx, frm担当者登録& f) {
    担当者情報型& r = ctx.担当者情報;
    const QString value = コードfmt(f.社員コード->text(), QStringLiteral("00000"));
    if (value == r.社員コード)
        return;
    ctx.screen.入力フラグ = true;
    if (value.isEmpty()) {
        r.社員コード.clear();
        ctx.screen.お知らせ文.clear();
    } else if (社員get(ctx, value)) {
        社員set(ctx);
        ctx.screen.お知らせ文.clear();
        // The photos taken over show at once.
        ctx.screen.画面表示中フラグ = true;
        写真display(ctx, f);
        ctx.screen.画面表示中フラグ = false;
    } else {
        r.社員コード.clear();
        ctx.参照行.close();
        ctx.screen.お知らせ文 = QStringLiteral("該当情報がありません。");
    }
    refresh(ctx, f);
    f.お知らせ->setText(ctx.screen.お知らせ文);
}

void 電話rule(Context& ctx, frm担当者登録& f, controls::TelField* field, QString& number) {
    if (数字抽出conv(field->text()) == 数字抽出conv(number))
        return;
    ctx.screen.入力フラグ = true;
    number = 数字抽出conv(field->text()).isEmpty() ? QString() : field->text();
    refresh(ctx, f);
}

// ---- names joined from their parts

// The kana of a name part; True when it changed. The joined kana follows.
bool カナ姓store(Context& ctx, frm担当者登録& f) {
    担当者情報型& r = ctx.担当者情報;
    if (!store(ctx, r.カナ姓, f.カナ姓->text()))
        return false;
    r.カナ = r.カナ姓 + QLatin1Char(' ') + r.カナ名;
    return true;
}

bool カナ名store(Context& ctx, frm担当者登録& f) {
    担当者情報型& r = ctx.担当者情報;
    if (!store(ctx, r.カナ名, f.カナ名->text()))
        return false;
    r.カナ = r.カナ姓 + QLatin1Char(' ') + r.カナ名;
    return true;
}

void カナ姓rule(Context& ctx, frm担当者登録& f) {
    if (カナ姓store(ctx, f))
        refresh(ctx, f);
}

void カナ名rule(Context& ctx, frm担当者登録& f) {
    if (カナ名store(ctx, f))
        refresh(ctx, f);
}

void カナrule(Context& ctx, frm担当者登録& f) {
    if (store(ctx, ctx.担当者情報.カナ, f.カナ->text()))
        refresh(ctx, f);
}

// A changed name part joins the full name anew and takes the reading its kana
// field collected while it was typed; the paint comes last, as it rewrites the
// kana fields from the record.
void 姓rule(Context& ctx, frm担当者登録& f) {
    担当者情報型& r = ctx.担当者情報;
    if (!store(ctx, r.姓, 文字数cut(f.姓->text(), static_cast<short>(f.姓->byteLimit()))))
        return;
    r.氏名 = r.姓 + QLatin1Char(' ') + r.名;
    カナ姓store(ctx, f);
    refresh(ctx, f);
}

void 名rule(Context& ctx, frm担当者登録& f) {
    担当者情報型& r = ctx.担当者情報;
    if (!store(ctx, r.名, 文字数cut(f.名->text(), static_cast<short>(f.名->byteLimit()))))
        return;
    r.氏名 = r.姓 + QLatin1Char(' ') + r.名;
    カナ名store(ctx, f);
    refresh(ctx, f);
}

void 氏名rule(Context& ctx, frm担当者登録& f) {
    if (!store(ctx, ctx.担当者情報.氏名, 文字数cut(f.氏名->text(), static_cast<short>(f.氏名->byteLimit()))))
        return;
    store(ctx, ctx.担当者情報.カナ, f.カナ->text());
    refresh(ctx, f);
}

void textRule(Context& ctx, frm担当者登録& f, controls::TextField* field, QString& into) {
    if (store(ctx, into, 文字数cut(field->text(), static_cast<short>(field->byteLimit()))))
        refresh(ctx, f);
}

} // namespace

void 日付分解(Context& ctx, 日付種別 which) {
    expressIn(ctx, partsOf(ctx.担当者情報, which), true);
}

namespace {

// The era of a date chosen anew re-expresses the date in the era it falls in.
void 年号区分rule(Context& ctx, frm担当者登録& f, 日付種別 which, int value) {
    const DateParts d = partsOf(ctx.担当者情報, which);
    if (*d.年号区分 == value)
        return;
    ctx.screen.入力フラグ = true;
    if (d.日付->isEmpty())
        *d.年号区分 = static_cast<short>(value);
    else
        expressIn(ctx, d, value != 0);
    refresh(ctx, f);
}

void 日付項目rule(Context& ctx, frm担当者登録& f, 日付種別 which, int part, const QString& text) {
    const DateParts d = partsOf(ctx.担当者情報, which);
    QString& into = part == 0 ? *d.年 : part == 1 ? *d.月 : *d.日;
    if (!store(ctx, into, 二桁(text)))
        return;
    日付rule(ctx, d);
    refresh(ctx, f);
}

void 区分rule(Context& ctx, frm担当者登録& f, short& into, int value) {
    if (store(ctx, into, value))
        refresh(ctx, f);
}

} // namespace

void 担当者登録wire(Context& ctx, frm担当者登録& f) {
    auto& fe = *f.focusEvents;
    const auto got = [&](QWidget* w, auto gate) {
        fe.onGotFocus(w, [&ctx, &f, w, gate] {
            if (painting(ctx))
                return;
            ctx.screen.現在項目 = w;
            gate();
        });
    };
    const auto lost = [&](QWidget* w, auto rule) {
        fe.onLostFocus(w, [&ctx, w, rule] {
            if (painting(ctx))
                return;
            ctx.screen.直前項目 = w;
            rule();
        });
    };
    Context* c = &ctx;
    frm担当者登録* form = &f;
    const auto none = [] {};
    const auto C = [c, form] {
        if (空白(form->コード->text()))
            項目focus(*c, form->コード);
    };
    const auto O = [c, form] {
        if (空白(form->コード->text()))
            項目focus(*c, form->コード);
        else if (空白(form->事業所コード->text()))
            項目focus(*c, form->事業所コード);
    };
    const auto D = [c, form, O] {
        if (空白(form->コード->text()) || 空白(form->事業所コード->text()))
            O();
        else if (空白(form->部門コード->text()))
            項目focus(*c, form->部門コード);
    };
    const auto S = [c, form, D] {
        if (空白(form->コード->text()) || 空白(form->事業所コード->text()) || 空白(form->部門コード->text()))
            D();
        else if (空白(form->セクションコード->text()))
            項目focus(*c, form->セクションコード);
    };
    const auto F = [c, form] { 項目順chk(*c, *form); };
    auto& r = ctx.担当者情報;

    // The code of the record.
    got(f.コード, none);
    lost(f.コード, [c, form] {
        if (担当者コードchk(*c, コードfmt(form->コード->text(), QStringLiteral("00000")))) {
            担当者show(*c, *form);
            画面状態set(*c, *form);
            form->お知らせ->setText(c->screen.お知らせ文);
        }
    });

    // Names.
    got(f.姓, C);
    lost(f.姓, [c, form] { 姓rule(*c, *form); });
    got(f.名, C);
    lost(f.名, [c, form] { 名rule(*c, *form); });
    got(f.氏名, C);
    lost(f.氏名, [c, form] { 氏名rule(*c, *form); });
    got(f.カナ姓, C);
    lost(f.カナ姓, [c, form] { カナ姓rule(*c, *form); });
    got(f.カナ名, C);
    lost(f.カナ名, [c, form] { カナ名rule(*c, *form); });
    got(f.カナ, C);
    lost(f.カナ, [c, form] { カナrule(*c, *form); });
    got(f.社員コード, C);
    lost(f.社員コード, [c, form] { 社員コードrule(*c, *form); });
    got(f.暗証番号, C);
    lost(f.暗証番号, [c, form, &r] {
        if (store(*c, r.暗証番号, form->暗証番号->text()))
            refresh(*c, *form);
    });

    // Free-text fields watch their byte limit while they change.
    for (controls::TextField* field : {f.姓, f.名, f.氏名, f.住所A, f.住所B, f.住所C, f.職責, f.ログインID, f.EMAIL}) {
        QObject::connect(field, &QLineEdit::textChanged, &f, [c, form, field](const QString& t) {
            if (!painting(*c))
                文字数chk(*form, t, static_cast<short>(field->byteLimit()));
        });
    }

    // Classes and dates: the numeric field and its list stay in step.
    const auto classPair = [&](controls::NumField* field, QComboBox* list, int offset, auto onValue, auto gate) {
        got(field, gate);
        got(list, gate);
        lost(field, none);
        lost(list, none);
        QObject::connect(field, &controls::NumField::valueChanged, &f, [c, list, offset, onValue](int v) {
            if (painting(*c))
                return;
            list->setCurrentIndex(v - offset);
            onValue(v);
        });
        QObject::connect(list, &QComboBox::activated, &f, [c, field, offset](int index) {
            if (!painting(*c))
                field->setValue(index + offset);
        });
    };
    classPair(f.性別区分, f.性別区分名称, 1, [c, form, &r](int v) { 区分rule(*c, *form, r.性別区分, v); }, C);
    classPair(f.在籍区分, f.在籍区分名称, 0, [c, form, &r](int v) { 区分rule(*c, *form, r.在籍区分, v); }, F);
    classPair(f.社員区分, f.社員区分名称, 0, [c, form, &r](int v) { 区分rule(*c, *form, r.社員区分, v); }, F);
    classPair(f.生年月日年号区分, f.生年月日年号区分名称, 0, [c, form](int v) { 年号区分rule(*c, *form, 日付種別::生年月日, v); }, C);
    classPair(f.入社日付年号区分, f.入社日付年号区分名称, 0, [c, form](int v) { 年号区分rule(*c, *form, 日付種別::入社日付, v); }, F);
    classPair(f.退社日付年号区分, f.退社日付年号区分名称, 0, [c, form](int v) { 年号区分rule(*c, *form, 日付種別::退社日付, v); }, F);
    const QList<std::pair<日付種別, QList<controls::NumField*>>> dates{
        {日付種別::生年月日, {f.生年月日年, f.生年月日月, f.生年月日日}},
        {日付種別::入社日付, {f.入社日付年, f.入社日付月, f.入社日付日}},
        {日付種別::退社日付, {f.退社日付年, f.退社日付月, f.退社日付日}}};
    for (const auto& [date, parts] : dates) {
        for (int part = 0; part < 3; ++part) {
            controls::NumField* field = parts.at(part);
            if (date == 日付種別::生年月日)
                got(field, field == f.生年月日日 ? std::function<void()>([c, form, C] {
                    画面状態set(*c, *form);
                    C();
                })
                                               : std::function<void()>(C));
            else
                got(field, F);
            lost(field, [c, form, date, part, field] { 日付項目rule(*c, *form, date, part, field->text()); });
        }
    }

    // Codes of the organisation.
    got(f.事業所コード, C);
    lost(f.事業所コード, [c, form, &r] {
        コードrule(*c, *form, form->事業所コード, QStringLiteral("000"), 事業所get, 事業所set, r.事業所コード);
    });
    got(f.部門コード, O);
    lost(f.部門コード, [c, form, &r] {
        コードrule(*c, *form, form->部門コード, QStringLiteral("000"), 部門get, 部門set, r.部門コード);
    });
    got(f.セクションコード, D);
    lost(f.セクションコード, [c, form, &r] {
        コードrule(*c, *form, form->セクションコード, QStringLiteral("000"), セクションget, セクションset,
                   r.セクションコード);
    });
    got(f.役職コード, S);
    lost(f.役職コード, [c, form, &r] {
        コードrule(*c, *form, form->役職コード, QStringLiteral("00"), 役職get, 役職set, r.役職コード);
    });
    // The names beside the codes are walked over.
    got(f.事業所名, [c, form, C] {
        if (空白(form->コード->text()))
            return C();
        項目focus(*c, 空白(form->事業所コード->text()) ? form->事業所コード : form->部門コード);
    });
    got(f.部門名, [c, form, O] {
        if (空白(form->コード->text()) || 空白(form->事業所コード->text()))
            return O();
        項目focus(*c, 空白(form->部門コード->text()) ? form->部門コード : form->セクションコード);
    });
    got(f.セクション名, [c, form] {
        if (!項目順chk(*c, *form))
            項目focus(*c, form->役職コード);
    });
    got(f.役職名, [c, form] {
        if (!項目順chk(*c, *form))
            項目focus(*c, form->職責);
    });
    for (QWidget* w : std::initializer_list<QWidget*>{f.事業所名, f.部門名, f.セクション名, f.役職名})
        lost(w, none);

    got(f.職責, F);
    lost(f.職責, [c, form, &r] { textRule(*c, *form, form->職責, r.職責); });
    got(f.ログインID, F);
    lost(f.ログインID, [c, form, &r] { textRule(*c, *form, form->ログインID, r.ログインID); });

    // Address.
    got(f.郵便番号, F);
    lost(f.郵便番号, [c, form] { 郵便番号rule(*c, *form); });
    for (auto [field, into] : {std::pair{f.住所A, &r.住所A}, std::pair{f.住所B, &r.住所B}, std::pair{f.住所C, &r.住所C}}) {
        got(field, F);
        lost(field, [c, form, field, into] { textRule(*c, *form, field, *into); });
    }
    got(f.電話, F);
    lost(f.電話, [c, form, &r] { 電話rule(*c, *form, form->電話, r.電話); });
    got(f.携帯電話, F);
    lost(f.携帯電話, [c, form, &r] { 電話rule(*c, *form, form->携帯電話, r.携帯電話); });
    got(f.EMAIL, F);
    lost(f.EMAIL, [c, form, &r] { textRule(*c, *form, form->EMAIL, r.EMAIL); });

    // The memo is stored on every change.
    got(f.担当者メモ, F);
    QObject::connect(f.担当者メモ, &QPlainTextEdit::textChanged, &f, [c, form, &r] {
        if (painting(*c))
            return;
        if (store(*c, r.担当者メモ, form->担当者メモ->toPlainText()))
            画面状態set(*c, *form);
    });
    lost(f.担当者メモ, [c, form, &r] {
        if (store(*c, r.担当者メモ, form->担当者メモ->toPlainText()))
            refresh(*c, *form);
    });

    // The traps at the ends of the pages.
    got(f.頁1終了, [c, form] {
        if (c->screen.直前項目 && c->screen.直前項目->objectName() == QStringLiteral("退社日付日")) {
            form->tab_詳細->setCurrentIndex(1);
            項目focus(*c, form->郵便番号);
        } else {
            form->tab_詳細->setCurrentIndex(0);
            項目focus(*c, form->退社日付日);
        }
    });
    got(f.頁2終了, [c, form] {
        if (c->screen.入力フラグ && c->screen.直前項目 && c->screen.直前項目->objectName() == QLatin1String("EMAIL")) {
            // The user ran through the card: save, whether or not the button is enabled.
            btn_登録_Click(*c, *form);
        } else {
            form->tab_詳細->setCurrentIndex(1);
            項目focus(*c, form->EMAIL);
        }
    });
    got(f.頁3終了, none);

    // The tab control.
    const auto pageFocus = [c, form] {
        if (!form->tab_詳細->isEnabled())
            return;
        if (form->tab_詳細->currentIndex() == 0)
            項目focus(*c, form->事業所コード);
        else if (form->tab_詳細->currentIndex() == 1)
            項目focus(*c, form->郵便番号);
    };
    // The tab control hands its focus to its bar of tabs: that is where it arrives.
    fe.onGotFocus(f.tab_詳細->tabBar(), [c, form, pageFocus] {
        if (painting(*c))
            return;
        c->screen.現在項目 = form->tab_詳細;
        pageFocus();
    });
    // A change of page that another move of the focus has already overtaken is passed over.
    QObject::connect(f.tab_詳細, &QTabWidget::currentChanged, &f, [c, form, pageFocus](int index) {
        if (!painting(*c) && form->tab_詳細->currentIndex() == index)
            pageFocus();
    });

    // Titles and backgrounds.
    auto& ce = *f.clickEvents;
    const QList<std::pair<QLabel*, QWidget*>> titles{
        {f.itm_ttl_氏名, f.氏名},           {f.itm_ttl_カナ, f.カナ},           {f.itm_ttl_生年月日, f.生年月日年},
        {f.itm_ttl_住所, f.郵便番号},       {f.itm_ttl_電話, f.電話},           {f.itm_ttl_携帯電話, f.携帯電話},
        {f.itm_ttl_ログインID, f.ログインID}, {f.itm_ttl_在籍区分, f.在籍区分}, {f.itm_ttl_入社日付, f.入社日付年号区分},
        {f.itm_ttl_退社日付, f.退社日付年号区分}};
    for (const auto& [t, target] : titles)
        ce.onClick(t, [c, target] { 項目focus(*c, target); });
    ce.onClick(f.prg_ttl, [c] { 項目focus(*c, c->screen.直前項目); });
    ce.onClick(f.bak_住所, [c] {
        if (空白(c->担当者情報.コード))
            項目focus(*c, c->screen.先頭項目);
    });
    ce.onClick(f.bak_写真, [c, form] {
        if (空白(c->担当者情報.コード))
            項目focus(*c, c->screen.先頭項目);
        else if (!c->screen.新規フラグ)
            項目focus(*c, form->btn_新写真取込);
    });

    // Buttons.
    QObject::connect(f.btn_画面クリア, &QPushButton::clicked, &f, [c, form] { btn_画面クリア_Click(*c, *form); });
    QObject::connect(f.btn_終了, &QPushButton::clicked, &f, [c, form] { btn_終了_Click(*c, *form); });
    QObject::connect(f.btn_登録, &QPushButton::clicked, &f, [c, form] { btn_登録_Click(*c, *form); });
    QObject::connect(f.btn_削除, &QPushButton::clicked, &f, [c, form] { btn_削除_Click(*c, *form); });
    QObject::connect(f.btn_前進, &QPushButton::clicked, &f, [c, form] { btn_前進_Click(*c, *form); });
    QObject::connect(f.btn_後退, &QPushButton::clicked, &f, [c, form] { btn_後退_Click(*c, *form); });
    QObject::connect(f.btn_最新コード, &QPushButton::clicked, &f, [c, form] { btn_最新コード_Click(*c, *form); });

    // A staff member sets their own PIN from their own card; the card then shows it.
    ce.onDoubleClick(f.bak_その他, [c, form] {
        const QString code = form->コード->text();
        if (code.isEmpty() || code != c->op.操作担当者コード)
            return;
        msg担当者暗証番号設定 dialog(*c, form);
        dialog.exec();
        担当者paint(*c, *form);
    });
}
