// The operating environment of this installation and the operator it remembers.

#include "shell/modデータ処理.h"

#include "shell/値変換.h"

namespace {

const QString& 動作環境SQL() {
    static const QString sql =
        QStringLiteral("SELECT *") + QStringLiteral(" FROM 動作環境定義") + QStringLiteral(" WHERE 動作環境定義ID = '001'");
    return sql;
}

QString 先頭8(const db::Field& f) {
    return f.isNull() ? QString() : f.text().left(8);
}

short 数(const db::Field& f) {
    return f.isNull() ? short(0) : 整数(f.text());
}

QString 文(const db::Field& f) {
    return f.isNull() ? QString() : f.text();
}

} // namespace

void 動作環境read(Context& ctx, bool 全項目) {
    auto& e = ctx.env;
    db::Recordset rs;
    if (環境SQLopen(ctx, rs, 動作環境SQL())) {
        const db::Field office = rs.field(QStringLiteral("運用事業所コード"));
        e.運用事業所コード = office.isNull() ? QStringLiteral("000") : office.text();
        e.インストール区分 = 数(rs.field(QStringLiteral("インストール区分")));
        e.CL更新実行区分 = 数(rs.field(QStringLiteral("CL更新実行区分")));
        if (全項目) {
            e.バックアップ日付 = 先頭8(rs.field(QStringLiteral("バックアップ日付")));
            e.運用条件切替日付 = 先頭8(rs.field(QStringLiteral("運用条件切替日付")));
            e.バックアップ方法 = 数(rs.field(QStringLiteral("バックアップ方法")));
            e.バックアップ日指定 = 数(rs.field(QStringLiteral("バックアップ日指定")));
            e.月曜バックアップ = 数(rs.field(QStringLiteral("月曜バックアップ")));
            e.火曜バックアップ = 数(rs.field(QStringLiteral("火曜バックアップ")));
            e.水曜バックアップ = 数(rs.field(QStringLiteral("水曜バックアップ")));
            e.木曜バックアップ = 数(rs.field(QStringLiteral("木曜バックアップ")));
            e.金曜バックアップ = 数(rs.field(QStringLiteral("金曜バックアップ")));
            e.土曜バックアップ = 数(rs.field(QStringLiteral("土曜バックアップ")));
            e.日曜バックアップ = 数(rs.field(QStringLiteral("日曜バックアップ")));
            e.バックアップ開始時刻 = 文(rs.field(QStringLiteral("バックアップ開始時刻")));
            e.バックアップフォルダ = 文(rs.field(QStringLiteral("バックアップフォルダ")));
            e.起動担当者コード = 文(rs.field(QStringLiteral("起動担当者コード")));
        }
    }
    rs.close();
}

bool 環境定義chk(Context& ctx) {
    db::Recordset rs;
    const bool found = 環境SQLopen(ctx, rs, 動作環境SQL());
    rs.close();
    if (!found) {
        ctx.msg.show(QStringLiteral("動作環境に問題があります。"));
        データ処理term(ctx);
        ctx.sys.endProcess(0);
    }
    使用状況整理(ctx);
    if (起動担当者read(ctx))
        操作担当者read(ctx, ctx.op.操作担当者コード);
    return true;
}

bool 起動担当者read(Context& ctx) {
    ctx.op.操作担当者コード.clear();
    db::Recordset rs;
    if (環境SQLopen(ctx, rs, 動作環境SQL())) {
        const db::Field code = rs.field(QStringLiteral("起動担当者コード"));
        if (!code.isNull())
            ctx.op.操作担当者コード = code.text();
    }
    rs.close();
    return !ctx.op.操作担当者コード.trimmed().isEmpty();
}

bool 操作担当者read(Context& ctx, const QString& コード) {
    auto& o = ctx.op;
    db::Recordset rs;
    const bool found = 業務SQLopen(ctx, rs,
                                  QStringLiteral("SELECT M担当者.*") + QStringLiteral(" FROM M担当者") +
                                      QStringLiteral(" WHERE M担当者.コード = '") + コード + QStringLiteral("'"));
    if (found) {
        // A null column leaves the value the operator's record held.
        項目copy(rs.field(QStringLiteral("コード")), o.操作担当者コード);
        項目copy(rs.field(QStringLiteral("氏名")), o.氏名);
        項目copy(rs.field(QStringLiteral("事業所コード")), o.事業所コード);
        項目copy(rs.field(QStringLiteral("部門コード")), o.部門コード);
        項目copy(rs.field(QStringLiteral("セクションコード")), o.セクションコード);
        項目copy(rs.field(QStringLiteral("役職コード")), o.役職コード);
        項目copy(rs.field(QStringLiteral("社員区分")), o.社員区分);
        項目copy(rs.field(QStringLiteral("アクセス権限")), o.アクセス権限);
        for (int i = 0; i < 10; ++i)
            項目copy(rs.field(QStringLiteral("処理分類%1操作許可").arg(i)), o.処理分類操作許可[i]);
        項目copy(rs.field(QStringLiteral("操作許可")), o.操作許可);
        項目copy(rs.field(QStringLiteral("入力許可")), o.入力許可);
        項目copy(rs.field(QStringLiteral("修正許可")), o.修正許可);
        項目copy(rs.field(QStringLiteral("削除許可")), o.削除許可);
        項目copy(rs.field(QStringLiteral("印刷許可")), o.印刷許可);
        項目copy(rs.field(QStringLiteral("プレビュ許可")), o.プレビュ許可);
        項目copy(rs.field(QStringLiteral("テキスト出力許可")), o.テキスト出力許可);
        項目copy(rs.field(QStringLiteral("イメージ出力許可")), o.イメージ出力許可);
    }
    rs.close();
    return found;
}
