// The entry of the staff registration program.
//
//   担当者登録 [office code and staff code]      the program on its screen
//   担当者登録 --check                           opens the installation's databases and reports
//   担当者登録 --screenshot FILE [...]           starts, saves the card as a PNG and ends

#include "access/mod暗証番号.h"
#include "access/mod操作許可.h"
#include "client/modクライアント処理.h"
#include "platform/ui/screenshot.h"
#include "search/msgお待ち.h"
#include "shell/modデータ処理.h"
#include "staff/frm担当者登録.h"
#include "startup/mod担当者登録起動.h"

#include <QApplication>
#include <QStringList>
#include <QTextStream>

namespace {

// Opens the installation's two databases as a start does, reports what it
// found on the standard output and ends as a run ends.
int checkInstallation(Context& ctx) {
    QTextStream out(stdout);
    ctx.run.稼動連番 = 0;
    ctx.run.起動コマンド = ctx.sys.commandLine().trimmed();
    if (!環境DBopen(ctx)) {
        out << "データベースが使用できません。 (configuration database of " << ctx.sys.programFolder() << ")"
            << Qt::endl;
        return 1;
    }
    開始履歴add(ctx);
    if (!業務DBopen(ctx)) {
        out << "データベースが使用できません。 (main database, dialect \"" << ctx.conn.db << "\")" << Qt::endl;
        データ処理term(ctx);
        return 1;
    }
    db::Recordset rs;
    QString staff = QStringLiteral("?");
    if (業務SQLopen(ctx, rs, QStringLiteral("SELECT COUNT(*) AS 件数 FROM M担当者")))
        staff = rs.field(QStringLiteral("件数")).text();
    rs.close();
    out << "root:        " << ctx.folders.基準フォルダ << Qt::endl
        << "conf:        " << ctx.folders.confフォルダ << Qt::endl
        << "dialect:     " << ctx.conn.db << " (" << ctx.conn.プロバイダ名 << ")" << Qt::endl
        << "office:      " << ctx.env.運用事業所コード << Qt::endl
        << "staff rows:  " << staff << Qt::endl
        << "databases:   ok" << Qt::endl;
    データ処理term(ctx);
    return 0;
}

// The right to run the program: operation 0 of its menu.
bool 起動許可(Context& ctx) {
    return 操作許可chk(ctx, QStringLiteral("営業支援データ管理"), ctx.プログラムID, 操作番号::起動) == 許可回答::許可;
}

} // namespace

int main(int argc, char** argv) {
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
            return 2;
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
        ctx.sys.endProcess(error.isEmpty() ? 0 : 1);
    }
    return QApplication::exec();
}
