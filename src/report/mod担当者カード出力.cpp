#include "report/mod担当者カード出力.h"

#include "report/mod担当者カード描画.h"
#include "report/mod担当者カード読込.h"
#include "shell/modデータ処理.h"
#include "shell/mod起動.h"

namespace {

// A refused run: its message, the end rows and the connections, the exit code.
int 中止(Context& ctx, const QString& text, int code) {
    ctx.msg.show(text, ui::Buttons::Ok, 1);
    データ処理term(ctx);
    return code;
}

// The cards went out: the statement that read them is the row's text.
int 出力終了(Context& ctx, const QString& sql) {
    出力終了履歴add(ctx, sql);
    データ処理term(ctx);
    return 担当者カード終了::正常;
}

// An output that failed: its message, an error row, the end.
int 出力失敗(Context& ctx, const QString& text) {
    ctx.msg.show(text, ui::Buttons::Ok, 1);
    エラー履歴add(ctx, text);
    データ処理term(ctx);
    return 担当者カード終了::出力失敗;
}

} // namespace

QString 担当者カードプログラムID() { return QStringLiteral("担当者カード"); }

QString 担当者カード表題() { return QStringLiteral("担当者カード"); }

int 担当者カードrun(Context& ctx, ui::ReportOutput& output, const 担当者カード条件& 条件, const QString& pdf) {
    if (!データ処理init(ctx))
        return 中止(ctx, QStringLiteral("データベースが使用できません。"), 担当者カード終了::データベース);
    if (!ユーザ情報read(ctx))
        return 中止(ctx, QStringLiteral("ユーザ情報が使用できません。"), 担当者カード終了::データベース);
    ctx.run.操作事業所コード = 条件.操作事業所コード;

    QList<担当者カード行> rows;
    QString sql;
    if (!担当者カード読込(ctx, 条件, rows, sql))
        return 中止(ctx, QStringLiteral("担当者を読み込めません。"), 担当者カード終了::データベース);
    if (rows.isEmpty())
        return 中止(ctx, QStringLiteral("該当する担当者がありません。"), 担当者カード終了::該当なし);

    担当者カード見出し head;
    head.会社名 = ctx.company.名称.trimmed();
    head.印刷日付 = ctx.sys.now().toString(QStringLiteral("yyyyMMdd"));
    head.印刷日 = 和暦表示(ctx).日付(head.印刷日付);
    担当者カード頁 pages(head, rows);
    const QString title = 担当者カード表題();

    if (!pdf.isEmpty()) {
        const QString error = output.writePdf(pages, title, pdf);
        return error.isEmpty() ? 出力終了(ctx, sql) : 出力失敗(ctx, error);
    }
    if (条件.モード == QLatin1String("1")) {
        output.preview(pages, title);
        return 出力終了(ctx, sql);
    }
    if (!output.printerInstalled()) {
        const ui::Answer answer = ctx.msg.show(QStringLiteral("プリンタがインストールされていません。") + QChar(13) +
                                                   QStringLiteral("プレビュしますか?"),
                                               ui::Buttons::YesNo, 1);
        if (answer != ui::Answer::Yes) {
            データ処理term(ctx);
            return 担当者カード終了::正常;
        }
        output.preview(pages, title);
        return 出力終了(ctx, sql);
    }
    switch (output.print(pages, title)) {
    case ui::PrintOutcome::Printed:
        return 出力終了(ctx, sql);
    case ui::PrintOutcome::Cancelled:
        データ処理term(ctx);
        return 担当者カード終了::正常;
    case ui::PrintOutcome::Failed:
        break;
    }
    return 出力失敗(ctx, QStringLiteral("印刷できませんでした。"));
}
