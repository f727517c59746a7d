// The operator gate: the remembered operator, the PIN dialog's look-ups and
// the remembering of a confirmed operator.

#include "access/mod暗証番号.h"

#include "access/mod操作許可.h"
#include "access/msg暗証番号確認.h"
#include "shell/modデータ処理.h"
#include "shell/値変換.h"
#include "shell/暗証番号.h"

namespace {

// The staff members the dialog accepts: present, or on leave with a leaving
// date still to come, of the office of the run or of the head office.
QString 在籍条件(Context& ctx) {
    const QString today = ctx.sys.now().toString(QStringLiteral("yyyyMMdd"));
    return QStringLiteral(" AND (M担当者.在籍区分 = '0'") +
           QStringLiteral(" OR (M担当者.在籍区分 = '1' AND M担当者.退社日付 <>'' AND M担当者.退社日付 > '") + today +
           QStringLiteral("'))") + QStringLiteral(" AND (M担当者.事業所コード = '") + ctx.run.操作事業所コード +
           QStringLiteral("' OR M担当者.事業所コード = '") + QStringLiteral("000") + QStringLiteral("')");
}

QString 本文(const db::Recordset& rs, const QString& column) { return rs.field(column).text(); }

} // namespace

bool 起動担当者chk(Context& ctx, const QString& メニュ名, const QString& プログラム名, int 操作) {
    ctx.pin.暗証確認済 = false;
    if (!起動担当者read(ctx))
        return false;
    if (!操作担当者read(ctx, ctx.op.操作担当者コード))
        return false;
    if (操作許可判定(ctx, メニュ名, プログラム名, 操作))
        ctx.pin.暗証確認済 = true;
    return ctx.pin.暗証確認済;
}

許可回答 操作許可chk(Context& ctx, const QString& メニュ名, const QString& プログラム名, int 操作) {
    起動担当者chk(ctx, メニュ名, プログラム名, 操作);
    // Without PINs the program runs with the remembered operator, or none, unchecked.
    if (ctx.pin.暗証番号有無 != 1)
        return 許可回答::許可;
    if (ctx.pin.暗証確認済)
        return 許可回答::許可;
    {
        msg暗証番号確認 form(ctx, ctx.主画面);
        form.setWindowTitle(メニュ名 + QStringLiteral("/暗証確認"));
        form.exec();
    }
    if (!ctx.pin.暗証確認済)
        return 許可回答::未確認;
    return 操作許可判定(ctx, メニュ名, プログラム名, 操作) ? 許可回答::許可 : 許可回答::権限なし;
}

void 起動担当者save(Context& ctx) {
    const QString code = ctx.op.操作担当者コード;
    if (code.trimmed().isEmpty())
        return;
    if (!環境SQL記録exec(ctx, QStringLiteral("UPDATE 動作環境定義 SET ") + QStringLiteral("起動担当者コード = '") +
                                  code + QStringLiteral("' ") + QStringLiteral(" WHERE 動作環境定義ID = '001'"))) {
        ctx.msg.show(QStringLiteral("データベースに問題が発生し修正できませんでした。"));
        return;
    }
    操作担当者read(ctx, code);
}

bool ログイン担当者read(Context& ctx, msg暗証番号確認& form, const QString& ログインID) {
    db::Recordset rs;
    const bool found = 業務SQLopen(ctx, rs,
                                   QStringLiteral("SELECT M担当者.*") + QStringLiteral(" FROM M担当者") +
                                       QStringLiteral(" WHERE M担当者.ログインID = '") + ログインID +
                                       QStringLiteral("'") + 在籍条件(ctx));
    if (found) {
        form.担当者コード->setText(本文(rs, QStringLiteral("コード")));
        form.担当者名->setText(本文(rs, QStringLiteral("氏名")));
    }
    rs.close();
    return found && 確認担当者read(ctx, form, form.担当者コード->text());
}

bool 確認担当者read(Context& ctx, msg暗証番号確認& form, const QString& コード) {
    db::Recordset rs;
    const bool found =
        業務SQLopen(ctx, rs,
                    QStringLiteral("SELECT M担当者.*") + QStringLiteral(" FROM M担当者") +
                        QStringLiteral(" WHERE M担当者.コード = '") + コード + QStringLiteral("'") + 在籍条件(ctx));
    if (found) {
        form.担当者コード->setText(本文(rs, QStringLiteral("コード")));
        form.担当者名->setText(本文(rs, QStringLiteral("氏名")));
        form.確認暗証番号 = 暗証番号decode(ctx, 本文(rs, QStringLiteral("暗証番号")));
        // Unlike the operator's read, a null here clears what the record held.
        auto& o = ctx.op;
        o.ログインID = 本文(rs, QStringLiteral("ログインID"));
        o.アクセス権限 = 整数(本文(rs, QStringLiteral("アクセス権限")));
        for (int i = 0; i < 10; ++i) {
            const db::Field flag = rs.field(QStringLiteral("処理分類%1操作許可").arg(i));
            o.処理分類操作許可[i] = flag.isNull() ? QStringLiteral("0") : flag.text();
        }
        操作権利read(o, rs);
    }
    rs.close();
    return found;
}
