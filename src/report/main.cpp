// The staff card report program of the suite.
//
//   担当者カード TEXT              mode 0: the print dialog, then the printer; mode 1: the preview window
//   担当者カード TEXT --pdf FILE   the cards into a PDF file, without a window
//   担当者カード --help | --version
//
// TEXT is the one argument text of fixed-width fields that the staff card
// starts it with.

#include "client/modクライアント処理.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/messages.h"
#include "platform/ui/report_output.h"
#include "report/mod担当者カード出力.h"
#include "search/msgお待ち.h"
#include "shell/担当者カード引数.h"

#include <QApplication>
#include <QStringList>
#include <QTextStream>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

QString usage() {
    return QString::fromUtf8(R"(使い方 / Usage: 担当者カード 引数 [--pdf ファイル]
  引数 / TEXT     操作事業所コード, モード (0 印刷, 1 プレビュ), 事業所・部門・セクション・役職・担当者コードの範囲,
                  在籍区分, 社員区分を固定長で並べた一つの文字列
                  one text of fixed-width fields: the office of the run, the mode (0 print, 1 preview),
                  the ranges of office, department, section, position and staff code, 在籍区分, 社員区分
  --pdf ファイル  画面を出さずに PDF ファイルに書き出す
  --pdf FILE      write the cards into a PDF file, without a window
  --help          この説明 / this text
  --version       版数 / the version)");
}

bool windowless(const QString& platform) {
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

} // namespace

int main(int argc, char** argv) {
#ifdef __GLIBC__
    // Each card decodes and encodes its pictures anew. Kept in the heap rather
    // than mapped and unmapped per picture, their memory is reused from card
    // to card: a run of a thousand cards spends its time on them, not on the
    // kernel's page faults.
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 128 * 1024 * 1024);
#endif
    bool toFile = false;
    for (int i = 1; i < argc; ++i)
        toFile = toFile || QByteArray(argv[i]) == "--pdf" || QByteArray(argv[i]) == "--help" ||
                 QByteArray(argv[i]) == "--version";
    // A PDF file needs no window; without a display the messages go to the error stream.
    const bool noDisplay = qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if ((toFile || noDisplay) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(担当者カードプログラムID());

    QString pdf;
    bool pdfGiven = false;
    QStringList texts;
    QString optionError;
    const QStringList args = QCoreApplication::arguments().mid(1);
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("--help")) {
            QTextStream(stdout) << usage() << Qt::endl;
            return 担当者カード終了::正常;
        }
        if (a == QLatin1String("--version")) {
            QTextStream(stdout) << 担当者カードプログラムID() << QStringLiteral(" " STAFF_VERSION) << Qt::endl;
            return 担当者カード終了::正常;
        }
        if (a == QLatin1String("--pdf")) {
            if (i + 1 >= args.size() || args.at(i + 1).isEmpty()) {
                optionError = QStringLiteral("--pdf には書き出す PDF ファイルの名前を続けてください。");
                break;
            }
            pdf = args.at(++i);
            pdfGiven = true;
        } else if (a.startsWith(QLatin1String("--"))) {
            optionError = QStringLiteral("知らないオプションです: ") + a;
            break;
        } else {
            texts.append(a);
        }
    }

    const bool noWindow = windowless(QGuiApplication::platformName());
    ui::ConsoleMessages consoleMessages;
    ui::DialogMessages dialogMessages(担当者カード表題());
    ui::Messages& messages =
        pdfGiven || noWindow ? static_cast<ui::Messages&>(consoleMessages) : static_cast<ui::Messages&>(dialogMessages);
    const auto refuse = [&messages](const QString& text, int code) {
        messages.show(text, ui::Buttons::Ok, 1);
        return code;
    };

    if (!optionError.isEmpty())
        return refuse(optionError + QChar(13) + usage(), 担当者カード終了::引数);
    if (texts.isEmpty())
        return refuse(QStringLiteral("担当者カードの引数がありません。") + QChar(13) + usage(), 担当者カード終了::引数);
    if (texts.size() > 1)
        return refuse(
            QStringLiteral("担当者カードの引数は固定長の一つの文字列です (%1 個に分かれています)。").arg(texts.size()) +
                QChar(13) + usage(),
            担当者カード終了::引数);
    担当者カード条件 条件;
    QString error;
    if (!担当者カード引数parse(texts.first(), 条件, error))
        return refuse(error, 担当者カード終了::引数);
    if (!pdfGiven && noWindow)
        return refuse(QStringLiteral("画面がないため、印刷もプレビュもできません。") + QChar(13) +
                          QStringLiteral("PDF ファイルには --pdf ファイル で書き出せます。"),
                      担当者カード終了::出力失敗);

    os::System system(texts.first());
    msgお待ち waitBox;
    Context ctx(system, messages, waitBox, 担当者カードプログラムID());
    ctx.DBツール登録 = DBツール登録;
    ui::ScreenReportOutput output(messages, ui::ScreenDialogs::instance());
    return 担当者カードrun(ctx, output, 条件, pdf);
}
