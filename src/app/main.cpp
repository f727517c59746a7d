// The entry of the staff registration program.
//
//   担当者登録 [office code and staff code]      the program on its screen
//   担当者登録 --check                           opens the installation's databases and reports
//   担当者登録 --screenshot FILE [...]           starts, saves the card as a PNG and ends
//   担当者登録 --help | --version                the usage or the version, without a display

#include "access/mod暗証番号.h"
#include "access/mod操作許可.h"
#include "client/modクライアント処理.h"
#include "platform/ui/screenshot.h"
#include "search/msgお待ち.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "startup/mod担当者登録起動.h"
#include "startup/導入点検.h"

#include <QApplication>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

namespace {

// Checks the installation's databases and folders as a start needs them and
// reports each check on the standard output; 0 when all passed, 1 otherwise.
int checkInstallation(Context& ctx) {
    QTextStream out(stdout);
    return 導入点検(ctx, out);
}

// The usage and the version, printed before the application object exists,
// so that they need no display.
constexpr char kUsageLine[] = "使い方 / Usage: 担当者登録 [事業所コードと担当者コード] [--check] "
                              "[--screenshot FILE] [--help] [--version]";

constexpr char kHelp[] = R"(使い方 / Usage:
  担当者登録 [事業所コードと担当者コード]
  担当者登録 --check
  担当者登録 --screenshot FILE [事業所コードと担当者コード]
  担当者登録 --help | --version

事業所コードと担当者コード / office and staff code:
  1〜3 文字目が事業所コード、4〜8 文字目が担当者コード (例 00000001: 事業所 000 の担当者 00001)。
  担当者コードがあるときは、その担当者のカードを開きます。
  characters 1-3 are the office code, 4-8 the staff code (e.g. 00000001: staff 00001 of office 000);
  with a staff code the program opens that staff member's card.

オプション / Options:
  --check            インストール先を点検して結果を表示し、画面を出さずに終わります
                     check the installation, report and end without a window
  --screenshot FILE  カードの画面を PNG ファイルに保存して終わります
                     save the card's window as a PNG file and end
  --help             この説明 / this text
  --version          版数 / the version

インストール先は、このプログラムのフォルダ (prgbin) の一つ上のフォルダです。
The installation is the folder above the program's own folder (prgbin).
)";

// Answers --help and --version, and refuses a word that starts with "--" and
// is no option of the program; -1 when the program is to start. The office
// and staff code are never taken for options: they do not start with "--".
int earlyOptions(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray a(argv[i]);
        if (a == "--screenshot") {
            ++i; // its file name, whatever it looks like
        } else if (a == "--help") {
            fputs(kHelp, stdout);
            return 0;
        } else if (a == "--version") {
            fputs("担当者登録 " STAFF_VERSION "\n", stdout);
            return 0;
        } else if (a.startsWith("--") && a != "--check") {
            fprintf(stderr, "知らないオプションです / unknown option: %s\n%s\n", a.constData(), kUsageLine);
            return 2;
        }
    }
    return -1;
}

// The right to run the program: operation 0 of its menu.
bool 起動許可(Context& ctx) {
    return 操作許可chk(ctx, QStringLiteral("営業支援データ管理"), ctx.プログラムID, 操作番号::起動) == 許可回答::許可;
}

} // namespace

int main(int argc, char** argv) {
    if (const int answered = earlyOptions(argc, argv); answered >= 0)
        return answered;
    bool check = false;
    for (int i = 1; i < argc; ++i)
        check = check || QByteArray(argv[i]) == "--check";
    // The check needs no screen: without a display it runs on the offscreen platform.
    if (check && qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    args.removeAll(QStringLiteral("--check"));
    QString screenshot;
    if (const qsizetype at = args.indexOf(QStringLiteral("--screenshot")); at >= 0) {
        if (at + 1 >= args.size()) {
            QTextStream(stderr) << "--screenshot needs the name of the PNG file to write" << Qt::endl;
            return 終了コード::引数;
        }
        screenshot = args.at(at + 1);
        args.remove(at, 2);
    }

    os::System system(args.join(QLatin1Char(' ')));
    ui::ConsoleMessages consoleMessages;
    ui::DialogMessages dialogMessages(QStringLiteral("担当者登録"));
    // A run that only takes a picture answers its message boxes on the error stream.
    ui::Messages& messages = check || !screenshot.isEmpty() ? static_cast<ui::Messages&>(consoleMessages)
                                                            : static_cast<ui::Messages&>(dialogMessages);
    msgお待ち waitBox;
    Context ctx(system, messages, waitBox);
    ctx.DBツール登録 = DBツール登録;
    if (check)
        return checkInstallation(ctx);

    frm担当者登録 form(ctx);
    os::SingleInstance instance;
    担当者登録main(ctx, form, 起動許可, instance);
    if (!screenshot.isEmpty()) {
        const QString error = ui::saveScreenshot(form, screenshot);
        if (!error.isEmpty())
            QTextStream(stderr) << error << Qt::endl;
        データ処理term(ctx);
        ctx.sys.endProcess(error.isEmpty() ? 終了コード::正常 : 終了コード::画面保存);
    }
    return QApplication::exec();
}
