#include "staff/mod担当者参照.h"

#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "shell/暗証番号.h"
#include "staff/mod写真図面.h"
#include "staff/mod担当者登録.h"

namespace {

bool 一行get(Context& ctx, const QString& table, const QString& code) {
    ctx.参照行.close();
    return 業務SQLopen(ctx, ctx.参照行,
                       QStringLiteral("SELECT TOP 1 * FROM ") + table + QStringLiteral(" WHERE コード = '") + code +
                           QStringLiteral("'"));
}

// Takes コード and 名称 of the open row over where they are not null, then closes it.
void 一行set(Context& ctx, QString& code, QString& name) {
    項目copy(ctx.参照行.field(QStringLiteral("コード")), code);
    項目copy(ctx.参照行.field(QStringLiteral("名称")), name);
    ctx.参照行.close();
}

} // namespace

bool 事業所get(Context& ctx, const QString& コード) {
    return 一行get(ctx, QStringLiteral("M事業所"), コード);
}

void 事業所set(Context& ctx) {
    一行set(ctx, ctx.担当者情報.事業所コード, ctx.担当者情報.事業所名);
}

bool 部門get(Context& ctx, const QString& コード) {
    return 一行get(ctx, QStringLiteral("M部門"), コード);
}

void 部門set(Context& ctx) {
    一行set(ctx, ctx.担当者情報.部門コード, ctx.担当者情報.部門名);
}

bool セクションget(Context& ctx, const QString& コード) {
    return 一行get(ctx, QStringLiteral("Mセクション"), コード);
}

void セクションset(Context& ctx) {
    一行set(ctx, ctx.担当者情報.セクションコード, ctx.担当者情報.セクション名);
}

bool 役職get(Context& ctx, const QString& コード) {
    return 一行get(ctx, QStringLiteral("M役職"), コード);
}

void 役職set(Context& ctx) {
    一行set(ctx, ctx.担当者情報.役職コード, ctx.担当者情報.役職名);
}

bool 郵便番号get(Context& ctx, const QString& 郵便番号) {
    ctx.参照行.close();
    return 業務SQLopen(ctx, ctx.参照行,
                       QStringLiteral("SELECT TOP 1 * FROM M郵便番号 WHERE 郵便番号 = '") + 郵便番号 +
                           QStringLiteral("'"));
}

void 郵便番号set(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    db::Recordset& rs = ctx.参照行;
    項目copy(rs.field(QStringLiteral("郵便番号")), r.郵便番号);
    const QString a = rs.field(QStringLiteral("住所A")).text();
    const QString b = rs.field(QStringLiteral("住所B")).text();
    rs.close();
    // An address once entered is not overwritten.
    if (!空白(r.住所A))
        return;
    if (a.trimmed().size() + b.trimmed().size() > 15) {
        r.住所A = a;
        if (空白(r.住所B))
            r.住所B = b;
    } else {
        r.住所A = a + b;
    }
}

bool 社員get(Context& ctx, const QString& コード) {
    ctx.参照行.close();
    return 業務SQLopen(
        ctx, ctx.参照行,
        QStringLiteral("SELECT M社員.*, M事業所.名称 AS 事業所名, M部門.名称 AS 部門名, Mセクション.名称 AS "
                       "セクション名, M役職.名称 AS 役職名") +
            QStringLiteral(" FROM M役職 RIGHT JOIN (Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M社員 "
                           "ON M事業所.コード = M社員.事業所コード) ON M部門.コード = M社員.部門コード) ON "
                           "Mセクション.コード = M社員.セクションコード) ON M役職.コード = M社員.役職コード") +
            QStringLiteral(" WHERE M社員.コード = '") + コード + QStringLiteral("'"));
}

void 社員set(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    db::Recordset& rs = ctx.参照行;
    const auto copy = [&rs](const char* column, auto& into) { 項目copy(rs.field(QString::fromUtf8(column)), into); };
    const auto date = [&](const char* column, QString& into, 日付種別 which) {
        const db::Field f = rs.field(QString::fromUtf8(column));
        if (f.isNull())
            return;
        into = f.text();
        日付分解(ctx, which);
    };
    // The record's code, its flags, its login, its seal and its rights stay:
    // an employee may be copied over any record, and is saved with it.
    copy("コード", r.社員コード);
    copy("姓", r.姓);
    copy("名", r.名);
    copy("氏名", r.氏名);
    copy("カナ姓", r.カナ姓);
    copy("カナ名", r.カナ名);
    copy("カナ", r.カナ);
    copy("性別区分", r.性別区分);
    copy("在籍区分", r.在籍区分);
    copy("社員区分", r.社員区分);
    date("生年月日", r.生年月日, 日付種別::生年月日);
    date("入社日付", r.入社日付, 日付種別::入社日付);
    date("退社日付", r.退社日付, 日付種別::退社日付);
    copy("郵便番号", r.郵便番号);
    copy("住所A", r.住所A);
    copy("住所B", r.住所B);
    copy("住所C", r.住所C);
    copy("電話", r.電話);
    copy("携帯電話", r.携帯電話);
    copy("EMAIL", r.EMAIL);
    copy("社員メモ", r.担当者メモ);
    copy("事業所コード", r.事業所コード);
    copy("事業所名", r.事業所名);
    copy("部門コード", r.部門コード);
    copy("部門名", r.部門名);
    copy("セクションコード", r.セクションコード);
    copy("セクション名", r.セクション名);
    copy("役職コード", r.役職コード);
    copy("役職名", r.役職名);
    copy("職責", r.職責);
    if (const db::Field pin = rs.field(QStringLiteral("暗証番号")); !pin.isNull())
        r.暗証番号 = 空白(pin.text()) ? QString() : 暗証番号decode(ctx, pin.text());
    rs.close();
    社員写真取込(ctx, r.社員コード);
}
