// The entry of the staff registration program.

#include "startup/mod担当者登録起動.h"

#include "link/mod連携データ処理.h"
#include "shell/modデータ処理.h"
#include "shell/mod起動.h"

namespace {

// A refused gate: its message, the shut-down, the end of the process with
// the gate's exit code.
void 起動中止(Context& ctx, const QString& text, int code) {
    ctx.msg.show(text, ui::Buttons::Ok, 1);
    データ処理term(ctx);
    ctx.sys.endProcess(code);
}

} // namespace

QString 起動登録フォルダ(const Context& ctx) {
    return ctx.sys.programFolder() + パス区切り() + QLatin1Char('.') + ctx.プログラムID + QStringLiteral(".instances");
}

void 担当者登録main(Context& ctx, 主画面& form, const std::function<bool(Context&)>& 起動許可,
                    os::SingleInstance& 前回起動) {
    // Running from the first moment: a start that has not reached the
    // previous-instance rule yet is an instance all the same.
    前回起動.announce(起動登録フォルダ(ctx));

    if (!データ処理init(ctx))
        return 起動中止(ctx, QStringLiteral("データベースが使用できません。"), 終了コード::データベース);

    const bool company = ユーザ情報read(ctx);
    ctx.screen.新規フラグ = true;
    if (!company)
        return 起動中止(ctx, QStringLiteral("ユーザ情報が使用できません。"), 終了コード::ユーザ情報);

    // A personnel link that cannot be opened ends the run without its end row.
    ctx.人事連携フラグ = 連携有無chk(ctx, QStringLiteral("人事就業管理"));
    if (ctx.人事連携フラグ && !連携DBopen(ctx)) {
        ctx.msg.show(QStringLiteral("人事就業管理連携データベースが使用できません。"), ui::Buttons::Ok, 1);
        連携DBclose(ctx);
        return ctx.sys.endProcess(終了コード::人事連携);
    }

    担当者条件項目set(ctx);

    if (!起動許可(ctx))
        return 起動中止(ctx, QStringLiteral("操作権限がありません。"), 終了コード::操作権限);

    起動コマンドparse(ctx);

    // A start for one staff record is never stopped; any other start gives way,
    // without a word, to an instance of this program that started before it
    // and still runs, whatever that one was started for.
    if (!ctx.screen.単独起動フラグ && 前回起動.earlierRunning()) {
        データ処理term(ctx);
        return ctx.sys.endProcess(終了コード::正常);
    }

    form.表示();
    form.先頭項目focus();
}
