// The entry of the staff registration program.

#include "shell/modデータ処理.h"

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
    os::System system(args.join(QLatin1Char(' ')));
    ui::ConsoleMessages consoleMessages;
    ui::ScreenWaitBox waitBox;
    Context ctx(system, consoleMessages, waitBox);
    if (check)
        return checkInstallation(ctx);
    QTextStream(stderr) << "担当者登録: the staff screen is not built yet; run with --check to test an installation."
                        << Qt::endl;
    return 3;
}
