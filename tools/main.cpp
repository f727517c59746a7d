#include "tools/menu.h"
#include "tools/postcode_update.h"
#include "tools/setup.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTextStream>

namespace {

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

// The usage lines, also shown after a wrong option.
constexpr char kUsage[] = R"(使い方 / Usage:
  staff-setup --root DIR [--demo] [--program FILE] [--report-program FILE]
              [--pg-host H --pg-port P --pg-database D --pg-user U --pg-password W] [--dialect S|O]
              [--postcodes npm|fixture|FILE] [--menu|--no-menu]
  staff-setup --root DIR --update-postcodes npm|fixture|FILE
  staff-setup --root DIR --menu
  staff-setup --help | --version
)";

constexpr char kHelp[] = R"(
インストール先フォルダ (prgbin, conf, data, ...) を作り、環境データベースと業務データベースを用意します。
Creates an installation tree (prgbin, conf, data, ...) with its configuration and main databases.

オプション / Options:
  --root DIR             作るフォルダ (ないか空であること)。--update-postcodes と --menu では既存のインストール先
                         the folder to create (missing or empty); an existing installation with
                         --update-postcodes and --menu
  --demo                 デモ用の会社データを登録する
                         add a demo company, so that the program has something to show
  --program FILE         prgbin にコピーする 担当者登録 (既定: staff-setup と同じフォルダにあるもの)
                         the 担当者登録 to copy into prgbin (default: the one beside staff-setup)
  --report-program FILE  prgbin に 担当者カード としてコピーする帳票プログラム (既定: 担当者登録 の隣の 担当者カード)
                         the report program to copy into prgbin as 担当者カード
                         (default: the 担当者カード beside 担当者登録)
  --pg-host H, --pg-port P, --pg-database D, --pg-user U, --pg-password W
                         業務データベースを PostgreSQL サーバーに置く (ポートの既定 5432)
                         keep the main database on a PostgreSQL server (port 5432 by default)
  --dialect S|O          サーバーの SQL の方言 (既定 S) / the SQL dialect for a server (default S)
  --postcodes SOURCE     郵便番号データ: npm (既定)、fixture (同梱の見本)、またはファイル: 郵便局の全国一括の
                         CSV (CP932) かその zip、npm パッケージの .tgz
                         the postcodes: npm (default), fixture (the built-in sample) or a file: the postal
                         service's all-Japan CSV (code page 932) or its zip, or the npm package's .tgz
  --update-postcodes SOURCE
                         既存のインストール先の郵便番号データを入れ替える (一つのトランザクションで。
                         失敗したときは元のまま)
                         replace the postcodes of an existing installation (in one transaction; on
                         failure the old ones stay)
  --menu                 このユーザーのメニューに 担当者登録 を登録する (既存のインストール先にも使える)
                         add 担当者登録 to this user's menu (also for an existing installation)
  --no-menu              メニューに登録しない (既定) / no menu entry (the default)
  --help                 この説明 / this text
  --version              版数 / the version

終了コード / Exit codes:
  0  できました / done
  1  できませんでした (作りかけのものは残しません) / failed (nothing half-made is left)
  2  オプションの誤り / wrong options
)";

int usage(const QString& problem) {
    QTextStream err(stderr);
    err << problem << Qt::endl
        << QString::fromUtf8(kUsage) << QStringLiteral("詳しくは / see: staff-setup --help") << Qt::endl;
    return kBadArguments;
}

setup::Postcodes postcodeSource(const QString& value, QString& file) {
    if (value == QLatin1String("npm"))
        return setup::Postcodes::Npm;
    if (value == QLatin1String("fixture"))
        return setup::Postcodes::Fixture;
    file = value;
    return setup::Postcodes::File;
}

} // namespace

int main(int argc, char** argv) {
    // The demo's seal impressions are drawn with fonts, which need a graphical
    // application; the tool needs no display for that.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("staff-setup"));
    QCoreApplication::setApplicationVersion(QStringLiteral(STAFF_VERSION));

    QCommandLineParser parser;
    const QCommandLineOption help(QStringLiteral("help"));
    const QCommandLineOption version(QStringLiteral("version"));
    const QCommandLineOption root(QStringLiteral("root"), {}, QStringLiteral("DIR"));
    const QCommandLineOption demo(QStringLiteral("demo"));
    const QCommandLineOption program(QStringLiteral("program"), {}, QStringLiteral("FILE"));
    const QCommandLineOption reportProgram(QStringLiteral("report-program"), {}, QStringLiteral("FILE"));
    const QCommandLineOption pgHost(QStringLiteral("pg-host"), {}, QStringLiteral("H"));
    const QCommandLineOption pgPort(QStringLiteral("pg-port"), {}, QStringLiteral("P"), QStringLiteral("5432"));
    const QCommandLineOption pgDatabase(QStringLiteral("pg-database"), {}, QStringLiteral("D"));
    const QCommandLineOption pgUser(QStringLiteral("pg-user"), {}, QStringLiteral("U"));
    const QCommandLineOption pgPassword(QStringLiteral("pg-password"), {}, QStringLiteral("W"));
    const QCommandLineOption dialect(QStringLiteral("dialect"), {}, QStringLiteral("S|O"), QStringLiteral("S"));
    const QCommandLineOption postcodes(QStringLiteral("postcodes"), {}, QStringLiteral("SOURCE"),
                                       QStringLiteral("npm"));
    const QCommandLineOption updatePostcodes(QStringLiteral("update-postcodes"), {}, QStringLiteral("SOURCE"));
    const QCommandLineOption menu(QStringLiteral("menu"));
    const QCommandLineOption noMenu(QStringLiteral("no-menu"));
    parser.addOptions({help, version, root, demo, program, reportProgram, pgHost, pgPort, pgDatabase, pgUser,
                       pgPassword, dialect, postcodes, updatePostcodes, menu, noMenu});

    if (!parser.parse(QCoreApplication::arguments())) {
        QStringList unknown = parser.unknownOptionNames();
        if (unknown.isEmpty())
            return usage(QStringLiteral("オプションの誤り / wrong option: ") + parser.errorText());
        for (QString& name : unknown)
            name.prepend(name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--"));
        return usage(QStringLiteral("知らないオプションです / unknown option: ") + unknown.join(QStringLiteral(", ")));
    }
    if (parser.isSet(help)) {
        QTextStream(stdout) << QString::fromUtf8(kUsage) << QString::fromUtf8(kHelp);
        return 0;
    }
    if (parser.isSet(version)) {
        QTextStream(stdout) << "staff-setup " << QCoreApplication::applicationVersion() << Qt::endl;
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return usage(QStringLiteral("余分な引数があります / extra arguments: ") +
                     parser.positionalArguments().join(QLatin1Char(' ')));
    if (!parser.isSet(root) || parser.value(root).isEmpty())
        return usage(QStringLiteral("--root を指定してください / --root is needed"));
    if (parser.isSet(menu) && parser.isSet(noMenu))
        return usage(
            QStringLiteral("--menu と --no-menu は一緒に使えません / --menu and --no-menu exclude each other"));
    const bool withMenu = parser.isSet(menu);

    QTextStream out(stdout);
    const auto progress = [&out](const QString& step) { out << step << Qt::endl; };
    const auto finish = [&](const setup::Result& result) {
        if (!result.ok) {
            QTextStream(stderr) << result.message << Qt::endl;
            return kFailed;
        }
        out << result.message << Qt::endl;
        return 0;
    };
    const auto finishWithMenu = [&](const setup::Result& done) {
        if (!done.ok || !withMenu)
            return finish(done);
        out << done.message << Qt::endl;
        return finish(setup::writeMenuEntry(parser.value(root)));
    };

    // The options that make a new tree; an existing installation takes none of them.
    const bool creating = parser.isSet(demo) || parser.isSet(program) || parser.isSet(reportProgram) ||
                          parser.isSet(pgHost) || parser.isSet(pgPort) || parser.isSet(pgDatabase) ||
                          parser.isSet(pgUser) || parser.isSet(pgPassword) || parser.isSet(dialect) ||
                          parser.isSet(postcodes);

    if (parser.isSet(updatePostcodes)) {
        if (creating)
            return usage(QStringLiteral("--update-postcodes には --root (と --menu) のほかのオプションは使えません / "
                                        "--update-postcodes takes no other option than --root (and --menu)"));
        QString file;
        const setup::Postcodes source = postcodeSource(parser.value(updatePostcodes), file);
        if (source == setup::Postcodes::File && file.isEmpty())
            return usage(QStringLiteral("--update-postcodes が空です / --update-postcodes is empty"));
        return finishWithMenu(setup::updatePostcodes(parser.value(root), source, file, progress));
    }

    // An existing installation only gets its menu entry.
    if (withMenu && !creating && setup::isInstallation(parser.value(root)))
        return finish(setup::writeMenuEntry(parser.value(root)));

    setup::Options options;
    options.root = parser.value(root);
    options.programFile = parser.value(program);
    // Installed, the programs lie beside this tool; in the build tree they do not.
    if (!parser.isSet(program)) {
        const QFileInfo beside(QDir(QCoreApplication::applicationDirPath()), QStringLiteral("担当者登録"));
        if (beside.isFile())
            options.programFile = beside.filePath();
    }
    options.reportProgramFile = parser.value(reportProgram);
    // The report program built beside the program goes with it.
    if (!parser.isSet(reportProgram) && !options.programFile.isEmpty()) {
        const QFileInfo beside(QFileInfo(options.programFile).dir(), QStringLiteral("担当者カード"));
        if (beside.isFile())
            options.reportProgramFile = beside.filePath();
    }
    if (withMenu && options.programFile.isEmpty())
        return usage(QStringLiteral("--menu には prgbin に置くプログラムが要ります: --program FILE / "
                                    "--menu needs a program in prgbin: --program FILE"));
    options.demo = parser.isSet(demo);

    const bool anyServer = parser.isSet(pgHost) || parser.isSet(pgPort) || parser.isSet(pgDatabase) ||
                           parser.isSet(pgUser) || parser.isSet(pgPassword) || parser.isSet(dialect);
    if (anyServer) {
        if (!parser.isSet(pgHost) || !parser.isSet(pgDatabase) || !parser.isSet(pgUser))
            return usage(QStringLiteral("PostgreSQL には --pg-host, --pg-database, --pg-user が必要です / "
                                        "a PostgreSQL server needs --pg-host, --pg-database and --pg-user"));
        setup::Server server;
        bool number = false;
        server.host = parser.value(pgHost);
        server.port = parser.value(pgPort).toInt(&number);
        if (!number)
            return usage(QStringLiteral("--pg-port は数字で指定してください / --pg-port is a number: ") +
                         parser.value(pgPort));
        server.database = parser.value(pgDatabase);
        server.user = parser.value(pgUser);
        server.password = parser.value(pgPassword);
        server.dialect = parser.value(dialect);
        if (server.dialect != QLatin1String("S") && server.dialect != QLatin1String("O"))
            return usage(QStringLiteral("--dialect は S か O です / --dialect is S or O: ") + server.dialect);
        options.server = server;
    }

    if (parser.value(postcodes).isEmpty())
        return usage(QStringLiteral("--postcodes が空です / --postcodes is empty"));
    options.postcodes = postcodeSource(parser.value(postcodes), options.postcodeFile);

    return finishWithMenu(setup::createInstallation(options, progress));
}
