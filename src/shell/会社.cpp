// The company row (Mユーザ), the row of the office this installation works for
// (M事業所) and the outside systems of the suite (M他業務連携), copied once at
// the start into the shared state.

#include "shell/modデータ処理.h"

#include "shell/値変換.h"
#include "shell/暗証番号.h"

#include <cmath>

namespace {

// Copies a column of the current row when it is not null; a null leaves the
// value as it was.
class 行読取 {
public:
    行読取(Context& ctx, const db::Recordset& rs) : ctx_(ctx), rs_(rs) {}

    void text(const char* column, QString& into) const { 項目copy(rs_.field(QString::fromUtf8(column)), into); }
    void number(const char* column, short& into) const { 項目copy(rs_.field(QString::fromUtf8(column)), into); }
    // Money with four decimals.
    void money(const char* column, double& into) const {
        const db::Field f = rs_.field(QString::fromUtf8(column));
        if (!f.isNull())
            into = std::round(数値(f.text()) * 10000.0) / 10000.0;
    }
    // A PIN kept enciphered in the row.
    void pin(const char* column, QString& into) const {
        const db::Field f = rs_.field(QString::fromUtf8(column));
        if (!f.isNull())
            into = 暗証番号decode(ctx_, f.text());
    }

private:
    Context& ctx_;
    const db::Recordset& rs_;
};

QString 事業所SQL(const QString& コード) {
    return QStringLiteral("SELECT * FROM M事業所 WHERE コード = '") + コード + QStringLiteral("'");
}

void 会社項目copy(const 行読取& r, 会社情報& u) {
    r.text("ID", u.ID);
    r.text("名称", u.名称);
    r.text("郵便番号", u.郵便番号);
    r.text("住所A", u.住所A);
    r.text("住所B", u.住所B);
    r.text("住所C", u.住所C);
    r.text("代表者名", u.代表者名);
    r.text("電話", u.電話);
    r.text("FAX", u.FAX);
    r.text("HOMEPAGE", u.HOMEPAGE);
    r.text("EMAIL", u.EMAIL);
    r.text("会社ロゴfile", u.会社ロゴfile);
    r.text("社印file", u.社印file);
    r.text("銀行口座A", u.銀行口座A);
    r.text("銀行口座B", u.銀行口座B);
    r.text("銀行口座C", u.銀行口座C);
    r.text("銀行口座D", u.銀行口座D);
    r.number("決算月", u.決算月);
    r.number("決算日", u.決算日);
    r.number("締日区分", u.締日区分);
    r.number("締日", u.締日);
    r.number("決済方法", u.決済方法);
    r.number("決済月", u.決済月);
    r.number("決済日", u.決済日);
    r.money("現金決済金額", u.現金決済金額);
    r.number("手形サイト", u.手形サイト);
    r.number("売上金額丸め方法", u.売上金額丸め方法);
    r.number("仕入金額丸め方法", u.仕入金額丸め方法);
    r.number("在庫評価方法", u.在庫評価方法);
    r.number("売上単価少数以下桁数", u.売上単価少数以下桁数);
    r.number("売上数量少数以下桁数", u.売上数量少数以下桁数);
    r.number("仕入単価少数以下桁数", u.仕入単価少数以下桁数);
    r.number("仕入数量少数以下桁数", u.仕入数量少数以下桁数);
    r.number("在庫単価少数以下桁数", u.在庫単価少数以下桁数);
    r.number("在庫数量少数以下桁数", u.在庫数量少数以下桁数);
    r.number("重量少数以下桁数", u.重量少数以下桁数);
    r.number("得意先単価自動更新区分", u.得意先単価自動更新区分);
    r.number("納品先単価自動更新区分", u.納品先単価自動更新区分);
    r.number("仕入先単価自動更新区分", u.仕入先単価自動更新区分);
    r.text("写真フォルダ", u.写真フォルダ);
    r.text("ドキュメントフォルダ", u.ドキュメントフォルダ);
    r.text("総合振込ファイル", u.総合振込ファイル);
    r.text("基本読込フォルダ", u.基本読込フォルダ);
    r.text("帳票イメージフォルダ", u.帳票イメージフォルダ);
    r.text("その他読込ファイル", u.その他読込ファイル);
    r.text("本支店連携フォルダ", u.本支店連携フォルダ);
    r.text("テキスト出力フォルダ", u.テキスト出力フォルダ);
    r.text("BACKUPフォルダ", u.BACKUPフォルダ);
    r.number("明細保存月数", u.明細保存月数);
    r.number("統計保存年数", u.統計保存年数);
    r.number("整理実施可能日自", u.整理実施可能日自);
    r.number("整理実施可能日至", u.整理実施可能日至);
    r.number("整理実施可能時刻", u.整理実施可能時刻);
    r.text("明細整理実行日", u.明細整理実行日);
    r.text("統計整理実行日", u.統計整理実行日);
    r.number("伝票番号管理区分", u.伝票番号管理区分);
    r.number("暗証番号有無", u.暗証番号有無);
    r.pin("特権暗証番号", u.特権暗証番号);
    r.number("更新実行区分", u.更新実行区分);
    r.pin("システム特権暗証番号", u.システム特権暗証番号);
    r.text("登録日付", u.登録日付);
    r.text("更新日付", u.更新日付);
}

void 事業所項目copy(const 行読取& r, 事業所情報& o) {
    r.text("コード", o.コード);
    r.text("名称", o.名称);
    r.text("郵便番号", o.郵便番号);
    r.text("住所A", o.住所A);
    r.text("住所B", o.住所B);
    r.text("住所C", o.住所C);
    r.text("代表者名", o.代表者名);
    r.text("電話", o.電話);
    r.text("FAX", o.FAX);
    r.text("登録番号", o.登録番号);
    r.text("HOMEPAGE", o.HOMEPAGE);
    r.text("EMAIL", o.EMAIL);
    r.text("銀行口座A", o.銀行口座A);
    r.text("銀行口座B", o.銀行口座B);
    r.text("銀行口座C", o.銀行口座C);
    r.text("銀行口座D", o.銀行口座D);
    r.text("総合振込ファイル", o.総合振込ファイル);
    r.text("基本読込フォルダ", o.基本読込フォルダ);
    r.text("帳票イメージフォルダ", o.帳票イメージフォルダ);
    r.text("その他読込ファイル", o.その他読込ファイル);
    r.text("本支店連携フォルダ", o.本支店連携フォルダ);
    r.text("テキスト出力フォルダ", o.テキスト出力フォルダ);
    r.text("BACKUPフォルダ", o.BACKUPフォルダ);
    r.text("地区コード", o.地区コード);
    r.number("暗証番号有無", o.暗証番号有無);
    r.pin("特権暗証番号", o.特権暗証番号);
    r.number("更新実行区分", o.更新実行区分);
}

// The decimal places of each kind of document, from the company's columns.
void 桁数set(会社情報& u) {
    for (short& d : u.売上単価桁数)
        d = u.売上単価少数以下桁数;
    for (short& d : u.売上数量桁数)
        d = u.売上数量少数以下桁数;
    for (short& d : u.仕入単価桁数)
        d = u.仕入単価少数以下桁数;
    for (short& d : u.仕入数量桁数)
        d = u.仕入数量少数以下桁数;
    u.在庫単価桁数 = u.在庫単価少数以下桁数;
    u.在庫数量桁数 = u.在庫数量少数以下桁数;
    u.重量桁数 = u.重量少数以下桁数;
}

// A branch's own value replaces the company's when it holds one.
void 空でなければ(const QString& office, QString& company) {
    if (!office.isEmpty())
        company = office;
}

void 事業所件数read(Context& ctx) {
    ctx.事業所件数 = 0;
    db::Recordset rs;
    if (業務SQLopen(ctx, rs, QStringLiteral("SELECT COUNT(*) AS 事業所件数 FROM M事業所 WHERE コード <> '000'"))) {
        const db::Field f = rs.field(QStringLiteral("事業所件数"));
        if (!f.isNull())
            ctx.事業所件数 = static_cast<int>(数値(f.text()));
    }
    rs.close();
}

} // namespace

bool ユーザ情報read(Context& ctx) {
    bool found = false;
    {
        db::Recordset rs;
        if (業務SQLopen(ctx, rs, QStringLiteral("SELECT * FROM Mユーザ WHERE ID = '0001'"))) {
            会社項目copy(行読取(ctx, rs), ctx.company);
            ctx.pin.暗証番号有無 = ctx.company.暗証番号有無;
            found = true;
        }
        rs.close();
    }
    桁数set(ctx.company);

    // An office code that names no office: the installation works for the
    // head office from now on, also in later runs.
    {
        db::Recordset rs;
        if (!業務SQLopen(ctx, rs, 事業所SQL(ctx.env.運用事業所コード))) {
            rs.close();
            業務SQLopen(ctx, rs, 事業所SQL(QStringLiteral("000")));
            運用事業所set(ctx, QStringLiteral("000"));
        }
        rs.close();
    }

    他業務連携read(ctx);
    事業所情報read(ctx);
    事業所件数read(ctx);
    return found;
}

void 運用事業所set(Context& ctx, const QString& コード) {
    ctx.env.運用事業所コード = コード;
    環境SQL記録exec(ctx, QStringLiteral("UPDATE 動作環境定義 SET ") + QStringLiteral(" 運用事業所コード = '") + コード +
                             QStringLiteral("'") + QStringLiteral(" WHERE 動作環境定義ID = '001'"));
}

void 他業務連携read(Context& ctx) {
    // Element i holds the row of the i-th code; "005" stands twice.
    static const char* const コード[] = {"003", "002", "004", "005", "005"};
    auto& others = ctx.others;
    for (int i = 0; i < others.他業務件数 && i < 5; ++i) {
        他業務情報型& s = others.slot[i];
        db::Recordset rs;
        if (業務SQLopen(ctx, rs,
                        QStringLiteral("SELECT TOP 1 * FROM M他業務連携 WHERE コード = '") +
                            QString::fromUtf8(コード[i]) + QStringLiteral("'"))) {
            const 行読取 r(ctx, rs);
            r.text("コード", s.コード);
            r.text("業務名", s.業務名);
            r.number("連携有無区分", s.連携有無区分);
            r.text("連携DB", s.連携DB);
            r.text("連携DBMW", s.連携DBMW);
            r.text("連携データソース名", s.連携データソース名);
            r.text("連携ドライバ名", s.連携ドライバ名);
            r.text("連携接続文字列", s.連携接続文字列);
            r.text("連携データベース名", s.連携データベース名);
            r.text("連携サーバー名", s.連携サーバー名);
            r.text("連携ユーザーID", s.連携ユーザーID);
            r.text("連携パスワード", s.連携パスワード);
            r.text("連携アプリフォルダ", s.連携アプリフォルダ);
            r.number("顧客更新有無区分", s.顧客更新有無区分);
            r.number("得意先更新有無区分", s.得意先更新有無区分);
            r.number("納品先更新有無区分", s.納品先更新有無区分);
            r.number("仕入先更新有無区分", s.仕入先更新有無区分);
            r.number("メーカ更新有無区分", s.メーカ更新有無区分);
            r.number("対応先更新有無区分", s.対応先更新有無区分);
            r.number("商品更新有無区分", s.商品更新有無区分);
            r.number("社員更新有無区分", s.社員更新有無区分);
        }
        rs.close();
    }
}

void 事業所情報read(Context& ctx) {
    db::Recordset rs;
    bool found = 業務SQLopen(ctx, rs, 事業所SQL(ctx.env.運用事業所コード));
    if (!found) {
        rs.close();
        found = 業務SQLopen(ctx, rs, 事業所SQL(QStringLiteral("000")));
    }
    if (found)
        事業所項目copy(行読取(ctx, rs), ctx.office);

    // On a branch the branch's own settings prevail over the company's.
    if (ctx.env.運用事業所コード != QLatin1String("000")) {
        auto& u = ctx.company;
        const auto& o = ctx.office;
        ctx.pin.暗証番号有無 = o.暗証番号有無;
        u.更新実行区分 = o.更新実行区分;
        空でなければ(o.総合振込ファイル, u.総合振込ファイル);
        空でなければ(o.基本読込フォルダ, u.基本読込フォルダ);
        空でなければ(o.帳票イメージフォルダ, u.帳票イメージフォルダ);
        空でなければ(o.その他読込ファイル, u.その他読込ファイル);
        空でなければ(o.本支店連携フォルダ, u.本支店連携フォルダ);
        空でなければ(o.テキスト出力フォルダ, u.テキスト出力フォルダ);
        空でなければ(o.BACKUPフォルダ, u.BACKUPフォルダ);
    }
    // The privilege PIN of the gate is always the office's.
    ctx.pin.特権暗証番号 = ctx.office.特権暗証番号;
    rs.close();
}
