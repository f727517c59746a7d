// Deleting a staff row that no business data refers to.

#include "staff/mod担当者削除.h"

#include "access/mod操作許可.h"
#include "access/mod暗証番号.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "staff/mod写真図面.h"
#include "staff/mod担当者保存.h"
#include "staff/mod担当者登録.h"

void btn_削除_Click(Context& ctx, frm担当者登録& f) {
    // Any answer but a yes refuses, a cancelled PIN dialog too.
    if (操作許可chk(ctx, QStringLiteral("営業支援データ管理"), ctx.プログラムID, 操作番号::削除) != 許可回答::許可) {
        ctx.msg.show(QStringLiteral("操作権限がありません。"));
        項目focus(ctx, ctx.screen.直前項目);
        return;
    }
    // In use: the notice names the table, and the focus stays where it is.
    if (!担当者使用chk(ctx, f)) {
        ctx.msg.show(QStringLiteral("削除できません。") + QChar(13) + QStringLiteral("情報として使用されています。"));
        return;
    }
    if (ctx.msg.show(QStringLiteral("削除しますか?"), ui::Buttons::YesNo, 2) != ui::Answer::Yes) {
        項目focus(ctx, ctx.screen.直前項目);
        return;
    }
    担当者delete(ctx);
    if (ctx.screen.処理結果区分 == 6) {
        項目focus(ctx, ctx.screen.直前項目);
    } else {
        担当者clear(ctx);
        担当者show(ctx, f);
        画面初期set(ctx, f);
        if (ctx.screen.単独起動フラグ)
            btn_終了_Click(ctx, f);
        else
            項目focus(ctx, ctx.screen.先頭項目);
    }
    f.お知らせ->setText(ctx.screen.処理結果文);
}

void 担当者delete(Context& ctx) {
    担当者情報型& r = ctx.担当者情報;
    担当者log赤(ctx);
    if (業務SQLexec(ctx, QStringLiteral("DELETE FROM M担当者 WHERE コード = '") + r.コード + QStringLiteral("'"),
                    true)) {
        ctx.screen.処理結果区分 = 7;
        ctx.screen.処理結果文.clear();
        const QString kind = QStringLiteral("担当者");
        if (!r.写真file.isEmpty()) {
            ctx.screen.入力フラグ = true;
            写真全delete(ctx, kind, r.コード);
        }
        r.写真file = 写真最初get(ctx, kind, r.コード);
        r.取込写真path.clear();
        r.表示写真file = r.写真file;
    } else {
        ctx.screen.処理結果区分 = 6;
        ctx.screen.処理結果文 = QStringLiteral("既に削除されています。削除できませんでした。");
    }
    // Removed even when the row stays: the row then has no seal image.
    担当者印delete(ctx);
}
