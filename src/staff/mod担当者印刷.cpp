#include "staff/mod担当者印刷.h"

#include "shell/modデータ処理.h"
#include "shell/担当者カード引数.h"
#include "staff/frm担当者登録.h"
#include "staff/mod担当者登録.h"

namespace {

// Starts the report program for the record on the card; nothing without a code,
// and nothing is said when the program cannot be started.
void start(Context& ctx, const QString& mode) {
    if (空白(ctx.担当者情報.コード))
        return;
    ctx.desktop->start(ctx.folders.prgbinフォルダ + パス区切り() + 担当者カードプログラム名(),
                       {担当者カード引数(ctx, mode)});
}

void ask(Context& ctx, const QString& question, void (*routine)(Context&)) {
    if (ctx.screen.画面表示中フラグ)
        return;
    if (ctx.msg.show(question, ui::Buttons::YesNo, 1) == ui::Answer::Yes)
        routine(ctx);
    項目focus(ctx, ctx.screen.直前項目);
}

} // namespace

QString 担当者カード引数(const Context& ctx, const QString& モード) {
    const 担当者情報型& r = ctx.担当者情報;
    担当者カード条件 条件;
    条件.操作事業所コード = ctx.run.操作事業所コード;
    条件.モード = モード;
    条件.事業所コード自 = r.事業所コード;
    条件.事業所コード至 = r.事業所コード;
    条件.担当者コード自 = r.コード;
    条件.担当者コード至 = r.コード;
    条件.在籍区分 = QString::number(r.在籍区分);
    条件.社員区分 = QString::number(r.社員区分);
    return 担当者カード引数make(条件);
}

void 担当者カード印刷(Context& ctx) {
    start(ctx, QStringLiteral("0"));
}

void 担当者カードプレビュ(Context& ctx) {
    start(ctx, QStringLiteral("1"));
}

void btn_印刷_Click(Context& ctx, frm担当者登録& /*form*/) {
    ask(ctx, QStringLiteral("印刷しますか?"), 担当者カード印刷);
}

void btn_プレビュ_Click(Context& ctx, frm担当者登録& /*form*/) {
    ask(ctx, QStringLiteral("プレビュしますか?"), 担当者カードプレビュ);
}

void btn_EMAIL_Click(Context& ctx, frm担当者登録& f) {
    if (空白(f.EMAIL->text())) {
        項目focus(ctx, f.EMAIL);
        return;
    }
    ファイル実行open(ctx, QStringLiteral("mailto:") + f.EMAIL->text());
}
