// The staff card: load, paint, the buttons' states, the gates and rules of the
// fields, the traps at the ends of the pages, clear and finish.

#include "staff/mod担当者登録.h"

#include "access/mod操作許可.h"
#include "access/mod暗証番号.h"
#include "numbers/mod番号設定.h"
#include "shell/暗証番号.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "staff/frm担当者登録.h"
#include "staff/mod付属書類.h"
#include "staff/mod写真図面.h"
#include "staff/mod担当者保存.h"
#include "toolkit/mod基本項目.h"
#include "toolkit/mod項目編集.h"
#include "toolkit/項目移動.h"

#include <QPointer>
#include <QTimer>

namespace {

frm担当者登録& formOf(Context& ctx) {
    return *dynamic_cast<frm担当者登録*>(ctx.主画面);
}

// ---- lists

void fillList(Context& ctx, QComboBox* list, controls::NumField* field, const QString& table, bool fromOne) {
    list->clear();
    db::Recordset rs;
    for (bool row = 業務SQLopen(ctx, rs, QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" ORDER BY 区分"));
         row && !rs.eof(); rs.moveNext())
        list->addItem(rs.field(QStringLiteral("名称")).text());
    rs.close();
    const int count = list->count();
    if (fromOne)
        field->setRange(1, qMax(1, count));
    else
        field->setRange(0, qMax(0, count - 1));
}

void setList(QComboBox* list, int index) {
    list->setCurrentIndex(index >= 0 && index < list->count() ? index : -1);
}

} // namespace

// ---- the record and the screen

void 担当者clear(Context& ctx) {
    ctx.screen.新規フラグ = true;
    ctx.screen.入力フラグ = false;
    担当者情報型 fresh;
    for (QString& flag : fresh.処理分類操作許可)
        flag = QStringLiteral("1");
    ctx.担当者情報 = fresh;
}

void 担当者paint(Context& ctx, frm担当者登録& f) {
    const 担当者情報型& r = ctx.担当者情報;
    ctx.screen.画面表示中フラグ = true;
    f.コード->setText(r.コード);
    f.姓->setText(r.姓);
    f.名->setText(r.名);
    f.社員コード->setText(r.社員コード);
    f.氏名->setText(r.氏名);
    f.カナ姓->setText(r.カナ姓);
    f.カナ名->setText(r.カナ名);
    f.カナ->setText(r.カナ);
    f.暗証番号->setText(r.暗証番号);
    f.性別区分->setValue(r.性別区分);
    setList(f.性別区分名称, r.性別区分 - 1);
    f.生年月日年号区分->setValue(r.生年月日年号区分);
    setList(f.生年月日年号区分名称, r.生年月日年号区分);
    f.生年月日年->setText(r.生年月日年);
    f.生年月日月->setText(r.生年月日月);
    f.生年月日日->setText(r.生年月日日);
    f.事業所コード->setText(r.事業所コード);
    f.事業所名->setText(r.事業所名);
    f.部門コード->setText(r.部門コード);
    f.部門名->setText(r.部門名);
    f.セクションコード->setText(r.セクションコード);
    f.セクション名->setText(r.セクション名);
    f.役職コード->setText(r.役職コード);
    f.役職名->setText(r.役職名);
    f.職責->setText(r.職責);
    f.ログインID->setText(r.ログインID);
    f.在籍区分->setValue(r.在籍区分);
    setList(f.在籍区分名称, r.在籍区分);
    f.社員区分->setValue(r.社員区分);
    setList(f.社員区分名称, r.社員区分);
    f.入社日付年号区分->setValue(r.入社日付年号区分);
    setList(f.入社日付年号区分名称, r.入社日付年号区分);
    f.入社日付年->setText(r.入社日付年);
    f.入社日付月->setText(r.入社日付月);
    f.入社日付日->setText(r.入社日付日);
    f.退社日付年号区分->setValue(r.退社日付年号区分);
    setList(f.退社日付年号区分名称, r.退社日付年号区分);
    f.退社日付年->setText(r.退社日付年);
    f.退社日付月->setText(r.退社日付月);
    f.退社日付日->setText(r.退社日付日);
    f.郵便番号->setPostcode(r.郵便番号);
    f.住所A->setText(r.住所A);
    f.住所B->setText(r.住所B);
    f.住所C->setText(r.住所C);
    f.電話->setText(r.電話);
    f.携帯電話->setText(r.携帯電話);
    f.EMAIL->setText(r.EMAIL);
    if (f.担当者メモ->toPlainText() != r.担当者メモ)
        f.担当者メモ->setPlainText(r.担当者メモ);
    f.btn_社員コード->setVisible(ctx.人事連携フラグ);
    f.社員コード->setVisible(ctx.人事連携フラグ);
    const bool headOffice = ctx.env.運用事業所コード == QLatin1String("000");
    f.暗証番号->setVisible(headOffice);
    f.itm_ttl_暗証番号->setVisible(headOffice);
    ctx.screen.画面表示中フラグ = false;
}

void 担当者show(Context& ctx, frm担当者登録& f) {
    担当者paint(ctx, f);
    ctx.screen.画面表示中フラグ = true;
    写真display(ctx, f);
    f.repaint();
    ctx.screen.画面表示中フラグ = false;
    付属書類listint(ctx, f);
}

void 画面初期set(Context& /*ctx*/, frm担当者登録& f) {
    f.tab_詳細->setCurrentIndex(0);
    f.tab_詳細->setEnabled(false);
    f.お知らせ->setText(QString());
}

void 画面状態set(Context& ctx, frm担当者登録& f) {
    if (!ctx.screen.新規フラグ) {
        f.btn_削除->setEnabled(担当者使用chk(ctx, f));
        f.btn_印刷->setEnabled(true);
        f.btn_プレビュ->setEnabled(true);
    } else {
        f.btn_削除->setEnabled(false);
        f.btn_印刷->setEnabled(false);
        f.btn_プレビュ->setEnabled(false);
    }
    f.tab_詳細->setEnabled(!空白(ctx.担当者情報.コード));
    f.btn_登録->setEnabled(登録可chk(ctx) && ctx.screen.入力フラグ);
    写真button設定(ctx, f);
    担当者印button設定(ctx, f);
}

bool 登録可chk(const Context& ctx) {
    const 担当者情報型& r = ctx.担当者情報;
    // The office of the run stands where the record's office would: so it is to stay.
    return !空白(r.コード) && !空白(ctx.run.操作事業所コード) && !空白(r.部門コード) && !空白(r.セクションコード) &&
           !空白(r.役職コード);
}

bool 項目順chk(Context& ctx, frm担当者登録& f) {
    for (controls::TextField* field : {f.コード, f.事業所コード, f.部門コード, f.セクションコード, f.役職コード}) {
        if (空白(field->text())) {
            項目focus(ctx, field);
            return true;
        }
    }
    return false;
}

void 項目focus(Context& ctx, QWidget* control) {
    frm担当者登録& f = formOf(ctx);
    ctx.screen.検索次項目 = control;
    QWidget* target = control;
    次項目find(*f.tabTable, target);
    if (!target || !target->isEnabled() || !controls::TabTable::isTabStop(target))
        return;
    // A field on another page of the details brings its page to the front first,
    // quietly (the page's own rule of focus is for the user's change of page),
    // once the move of the focus under way has ended.
    for (int page = 0; page < f.tab_詳細->count(); ++page) {
        if (page == f.tab_詳細->currentIndex() || !f.tab_詳細->widget(page)->isAncestorOf(target))
            continue;
        QPointer<QWidget> later(target);
        QTimer::singleShot(0, &f, [&ctx, &f, later, page] {
            if (!later || !later->isEnabled())
                return;
            const bool painting = ctx.screen.画面表示中フラグ;
            ctx.screen.画面表示中フラグ = true;
            f.tab_詳細->setCurrentIndex(page);
            ctx.screen.画面表示中フラグ = painting;
            later->setFocus(Qt::OtherFocusReason);
        });
        return;
    }
    target->setFocus(Qt::OtherFocusReason);
}

// ---- reading a row

bool 担当者get(Context& ctx, const QString& コード) {
    閲覧insert(ctx, ctx.プログラムID, QString(), QString(), QString(), コード);
    db::Recordset& rs = ctx.担当者行;
    rs.close();
    return 業務SQLopen(
        ctx, rs,
        QStringLiteral("SELECT TOP 1 M担当者.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS "
                       "セクション名, M役職.名称 AS 役職名") +
            QStringLiteral(" FROM M役職 RIGHT JOIN (Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M担当者 "
                           "ON M事業所.コード = M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) ON "
                           "Mセクション.コード = M担当者.セクションコード) ON M役職.コード = M担当者.役職コード") +
            QStringLiteral(" WHERE M担当者.コード = '") + コード + QStringLiteral("'"));
}

void 担当者set(Context& ctx) {
    db::Recordset& rs = ctx.担当者行;
    担当者情報型& r = ctx.担当者情報;
    // A null column keeps what the record held before the read.
    const auto takeDate = [&](const char* column, QString& into, 日付種別 which) {
        const db::Field f = rs.field(QString::fromUtf8(column));
        if (f.isNull())
            return;
        into = f.text();
        日付分解(ctx, which);
    };
    項目copy(rs.field(QStringLiteral("コード")), r.コード);
    項目copy(rs.field(QStringLiteral("姓")), r.姓);
    項目copy(rs.field(QStringLiteral("名")), r.名);
    項目copy(rs.field(QStringLiteral("氏名")), r.氏名);
    項目copy(rs.field(QStringLiteral("カナ姓")), r.カナ姓);
    項目copy(rs.field(QStringLiteral("カナ名")), r.カナ名);
    項目copy(rs.field(QStringLiteral("カナ")), r.カナ);
    項目copy(rs.field(QStringLiteral("性別区分")), r.性別区分);
    takeDate("生年月日", r.生年月日, 日付種別::生年月日);
    項目copy(rs.field(QStringLiteral("郵便番号")), r.郵便番号);
    項目copy(rs.field(QStringLiteral("住所A")), r.住所A);
    項目copy(rs.field(QStringLiteral("住所B")), r.住所B);
    項目copy(rs.field(QStringLiteral("住所C")), r.住所C);
    項目copy(rs.field(QStringLiteral("電話")), r.電話);
    項目copy(rs.field(QStringLiteral("携帯電話")), r.携帯電話);
    項目copy(rs.field(QStringLiteral("EMAIL")), r.EMAIL);
    項目copy(rs.field(QStringLiteral("担当者メモ")), r.担当者メモ);
    項目copy(rs.field(QStringLiteral("事業所コード")), r.事業所コード);
    項目copy(rs.field(QStringLiteral("事業所名")), r.事業所名);
    項目copy(rs.field(QStringLiteral("部門コード")), r.部門コード);
    項目copy(rs.field(QStringLiteral("部門名")), r.部門名);
    項目copy(rs.field(QStringLiteral("セクションコード")), r.セクションコード);
    項目copy(rs.field(QStringLiteral("セクション名")), r.セクション名);
    項目copy(rs.field(QStringLiteral("役職コード")), r.役職コード);
    項目copy(rs.field(QStringLiteral("役職名")), r.役職名);
    項目copy(rs.field(QStringLiteral("職責")), r.職責);
    項目copy(rs.field(QStringLiteral("ログインID")), r.ログインID);
    項目copy(rs.field(QStringLiteral("在籍区分")), r.在籍区分);
    項目copy(rs.field(QStringLiteral("社員区分")), r.社員区分);
    takeDate("入社日付", r.入社日付, 日付種別::入社日付);
    takeDate("退社日付", r.退社日付, 日付種別::退社日付);
    if (const db::Field seal = rs.field(QStringLiteral("担当者印file")); !seal.isNull()) {
        r.担当者印file = seal.text();
        r.取込担当者印path.clear();
    }
    項目copy(rs.field(QStringLiteral("社員コード")), r.社員コード);
    if (const db::Field pin = rs.field(QStringLiteral("暗証番号")); !pin.isNull())
        r.暗証番号 = 空白(pin.text()) ? QString() : 暗証番号decode(ctx, pin.text());
    for (int i = 0; i < 10; ++i)
        項目copy(rs.field(QStringLiteral("処理分類%1操作許可").arg(i)), r.処理分類操作許可[i]);
    項目copy(rs.field(QStringLiteral("操作許可")), r.操作許可);
    項目copy(rs.field(QStringLiteral("入力許可")), r.入力許可);
    項目copy(rs.field(QStringLiteral("修正許可")), r.修正許可);
    項目copy(rs.field(QStringLiteral("削除許可")), r.削除許可);
    項目copy(rs.field(QStringLiteral("印刷許可")), r.印刷許可);
    項目copy(rs.field(QStringLiteral("プレビュ許可")), r.プレビュ許可);
    項目copy(rs.field(QStringLiteral("テキスト出力許可")), r.テキスト出力許可);
    項目copy(rs.field(QStringLiteral("イメージ出力許可")), r.イメージ出力許可);
    項目copy(rs.field(QStringLiteral("登録日付")), r.登録日付);
    項目copy(rs.field(QStringLiteral("更新日付")), r.更新日付);
    rs.close();
    r.写真file = 写真最初get(ctx, QStringLiteral("担当者"), r.コード);
    r.表示写真file = r.写真file;
    r.取込写真path.clear();
    ctx.screen.新規フラグ = false;
    ctx.screen.入力フラグ = false;
}

void 担当者新規set(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    // The seal's file name belongs to the record that was on the screen: kept,
    // the new record would be saved with it and its delete would remove that file.
    r.担当者印file.clear();
    r.写真file.clear();
    r.表示写真file.clear();
    r.取込写真path.clear();
    r.取込担当者印path.clear();
    ctx.担当者行.close();
    ctx.screen.新規フラグ = true;
}

bool 担当者コードchk(Context& ctx, const QString& コード) {
    if (コード == ctx.担当者情報.コード)
        return false;
    ctx.screen.入力フラグ = true;
    if (コード.isEmpty()) {
        ctx.担当者情報.コード.clear();
        ctx.screen.お知らせ文.clear();
        return true;
    }
    if (!担当者get(ctx, コード)) {
        担当者新規set(ctx);
        ctx.担当者情報.コード = コード;
        ctx.screen.お知らせ文 = QStringLiteral("新規情報です。");
        return true;
    }
    担当者set(ctx);
    ctx.screen.お知らせ文.clear();
    return true;
}

// ---- the use check

bool 項目使用chk(Context& ctx, const QString& 表, const QString& 列, const QString& コード) {
    db::Recordset rs;
    const bool used = 業務SQLopen(ctx, rs,
                                 QStringLiteral("SELECT TOP 1 ") + 列 + QStringLiteral(" FROM ") + 表 +
                                     QStringLiteral(" WHERE ") + 列 + QStringLiteral(" = '") + コード +
                                     QStringLiteral("'"));
    rs.close();
    return used;
}

bool 担当者使用chk(Context& ctx, frm担当者登録& f) {
    static const char* const tables[] = {"T営業請求", "T営業納品", "T営業発注", "T顧客注文", "T営業受注", "T営業引合",
                                         "T営業見積", "T出金",     "T営業活動明細", "T配送手配", "T承認", "T案件",
                                         "T閲覧",     "T個人休日", "T個人行事", "T個人日暦", "M付属書類", "M得意先",
                                         "M納品先",   "M仕入先",   "Mメーカ",   "M対応先"};
    for (const char* table : tables) {
        const QString name = QString::fromUtf8(table);
        if (項目使用chk(ctx, name, QStringLiteral("担当者コード"), ctx.担当者情報.コード)) {
            f.お知らせ->setText(name.mid(1) + QStringLiteral("に登録されています。"));
            return false;
        }
    }
    return true;
}

// ---- load, clear and finish

void 担当者登録load(Context& ctx, frm担当者登録& f) {
    ctx.主画面 = &f;
    // The height follows the status line at the bottom, with the margin of the system's frame.
    f.adjustSize();
    f.resize(画面枠get(Windows版get(), f.お知らせ->geometry()));
    f.setWindowTitle(QStringLiteral("担当者登録") + QStringLiteral("（") + ctx.company.名称 + QStringLiteral("）"));
    f.カナ姓->follow(f.姓);
    f.カナ名->follow(f.名);
    f.カナ->follow(f.氏名);
    f.コード->setMaxLength(5);
    f.事業所コード->setMaxLength(3);
    f.部門コード->setMaxLength(3);
    f.セクションコード->setMaxLength(3);
    f.役職コード->setMaxLength(2);
    ctx.screen.画面表示中フラグ = true;
    fillList(ctx, f.性別区分名称, f.性別区分, QStringLiteral("K性別区分"), true);
    fillList(ctx, f.在籍区分名称, f.在籍区分, QStringLiteral("K在籍区分"), false);
    fillList(ctx, f.社員区分名称, f.社員区分, QStringLiteral("K社員区分"), false);
    for (auto [list, field] : {std::pair{f.生年月日年号区分名称, f.生年月日年号区分},
                               std::pair{f.入社日付年号区分名称, f.入社日付年号区分},
                               std::pair{f.退社日付年号区分名称, f.退社日付年号区分}})
        fillList(ctx, list, field, QStringLiteral("K年号区分"), false);
    ctx.screen.画面表示中フラグ = false;
    ctx.screen.先頭項目 = f.コード;
    ctx.screen.現在項目 = ctx.screen.直前項目 = ctx.screen.先頭項目;
    プログラム見出しset(ctx);
    if (!ctx.screen.新規フラグ) {
        const QString code = ctx.担当者情報.コード;
        if (担当者get(ctx, code)) {
            担当者set(ctx);
        } else {
            担当者新規set(ctx);
            担当者clear(ctx);
        }
    } else {
        担当者clear(ctx);
    }
    担当者show(ctx, f);
    画面初期set(ctx, f);
}

bool 担当者登録unload(Context& ctx, frm担当者登録& /*f*/) {
    if (ctx.screen.入力フラグ) {
        const ui::Answer a = ctx.msg.show(QStringLiteral("入力がありました。") + QChar(13) + QStringLiteral("終了しますか？"),
                                          ui::Buttons::YesNo, 1);
        if (a != ui::Answer::Yes) {
            項目focus(ctx, ctx.screen.直前項目);
            return false;
        }
    }
    データ処理term(ctx);
    ctx.sys.endProcess(0);
    return true;
}

void btn_終了_Click(Context& ctx, frm担当者登録& f) {
    担当者登録unload(ctx, f);
}

void btn_画面クリア_Click(Context& ctx, frm担当者登録& f) {
    if (ctx.screen.入力フラグ) {
        const ui::Answer a = ctx.msg.show(QStringLiteral("入力がありました。") + QChar(13) + QStringLiteral("クリアしますか？"),
                                          ui::Buttons::YesNo, 1);
        if (a != ui::Answer::Yes) {
            項目focus(ctx, ctx.screen.直前項目);
            return;
        }
    }
    // The buttons keep their state until the next field exit.
    担当者clear(ctx);
    担当者show(ctx, f);
    画面初期set(ctx, f);
    項目focus(ctx, ctx.screen.先頭項目);
}

void btn_登録_Click(Context& ctx, frm担当者登録& f) {
    const 許可回答 answer = 操作許可chk(ctx, QStringLiteral("営業支援データ管理"), ctx.プログラムID,
                                        ctx.screen.新規フラグ ? 操作番号::入力 : 操作番号::修正);
    if (answer != 許可回答::許可) {
        if (answer == 許可回答::権限なし)
            ctx.msg.show(QStringLiteral("操作権限がありません。"));
        項目focus(ctx, ctx.screen.直前項目);
        return;
    }
    const QString question = ctx.screen.新規フラグ ? QStringLiteral("登録しますか") : QStringLiteral("修正しますか");
    if (ctx.msg.show(question, ui::Buttons::YesNo, 1) != ui::Answer::Yes) {
        項目focus(ctx, ctx.screen.直前項目);
        return;
    }
    担当者save(ctx);
    const short result = ctx.screen.処理結果区分;
    if (result == 1 || result == 2 || result == 5) {
        担当者clear(ctx);
        担当者show(ctx, f);
        画面初期set(ctx, f);
        if (ctx.screen.単独起動フラグ)
            btn_終了_Click(ctx, f);
        else
            項目focus(ctx, ctx.screen.先頭項目);
    } else {
        項目focus(ctx, ctx.screen.直前項目);
    }
    f.お知らせ->setText(ctx.screen.処理結果文);
}
