#include "tools/setup.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTextStream>

namespace {

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

int usage(QCommandLineParser& parser, const QString& problem) {
    QTextStream err(stderr);
    err << problem << Qt::endl << Qt::endl << parser.helpText();
    return kBadArguments;
}

} // namespace

int main(int argc, char** argv) {
    // The demo's seal impressions are drawn with fonts, which need a graphical
    // application; the tool needs no display for that.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("staff-setup"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("インストール先フォルダを作成し、環境データベースと業務データベースを用意します。"));
    parser.addHelpOption();
    const QCommandLineOption root(QStringLiteral("root"), QStringLiteral("作成するフォルダ (ないか空であること)"),
                                  QStringLiteral("DIR"));
    const QCommandLineOption demo(QStringLiteral("demo"), QStringLiteral("デモ用の会社データを登録する"));
    const QCommandLineOption program(QStringLiteral("program"), QStringLiteral("prgbin にコピーするプログラム"),
                                     QStringLiteral("FILE"));
    const QCommandLineOption reportProgram(
        QStringLiteral("report-program"),
        QStringLiteral("prgbin に 担当者カード としてコピーする帳票プログラム (既定: --program の隣の 担当者カード)"),
        QStringLiteral("FILE"));
    const QCommandLineOption pgHost(QStringLiteral("pg-host"), QStringLiteral("業務データベースの PostgreSQL サーバー"),
                                    QStringLiteral("H"));
    const QCommandLineOption pgPort(QStringLiteral("pg-port"), QStringLiteral("ポート (既定 5432)"),
                                    QStringLiteral("P"), QStringLiteral("5432"));
    const QCommandLineOption pgDatabase(QStringLiteral("pg-database"), QStringLiteral("作成するデータベース名"),
                                        QStringLiteral("D"));
    const QCommandLineOption pgUser(QStringLiteral("pg-user"), QStringLiteral("ユーザーID"), QStringLiteral("U"));
    const QCommandLineOption pgPassword(QStringLiteral("pg-password"), QStringLiteral("パスワード"),
                                        QStringLiteral("W"));
    const QCommandLineOption dialect(QStringLiteral("dialect"), QStringLiteral("SQL の方言 S または O (既定 S)"),
                                     QStringLiteral("S|O"), QStringLiteral("S"));
    const QCommandLineOption postcodes(QStringLiteral("postcodes"),
                                       QStringLiteral("郵便番号データ: npm (既定), fixture, またはパッケージの .tgz"),
                                       QStringLiteral("npm|fixture|FILE.tgz"), QStringLiteral("npm"));
    parser.addOptions(
        {root, demo, program, reportProgram, pgHost, pgPort, pgDatabase, pgUser, pgPassword, dialect, postcodes});

    if (!parser.parse(QCoreApplication::arguments()))
        return usage(parser, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << parser.helpText();
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return usage(parser,
                     QStringLiteral("余分な引数があります: ") + parser.positionalArguments().join(QLatin1Char(' ')));
    if (!parser.isSet(root) || parser.value(root).isEmpty())
        return usage(parser, QStringLiteral("--root を指定してください"));

    setup::Options options;
    options.root = parser.value(root);
    options.programFile = parser.value(program);
    options.reportProgramFile = parser.value(reportProgram);
    // The report program built beside the program goes with it.
    if (!parser.isSet(reportProgram) && !options.programFile.isEmpty()) {
        const QFileInfo beside(QFileInfo(options.programFile).dir(), QStringLiteral("担当者カード"));
        if (beside.isFile())
            options.reportProgramFile = beside.filePath();
    }
    options.demo = parser.isSet(demo);

    const bool anyServer = parser.isSet(pgHost) || parser.isSet(pgPort) || parser.isSet(pgDatabase) ||
                           parser.isSet(pgUser) || parser.isSet(pgPassword) || parser.isSet(dialect);
    if (anyServer) {
        if (!parser.isSet(pgHost) || !parser.isSet(pgDatabase) || !parser.isSet(pgUser))
            return usage(parser, QStringLiteral("PostgreSQL には --pg-host, --pg-database, --pg-user が必要です"));
        setup::Server server;
        bool number = false;
        server.host = parser.value(pgHost);
        server.port = parser.value(pgPort).toInt(&number);
        if (!number)
            return usage(parser, QStringLiteral("--pg-port は数字で指定してください: ") + parser.value(pgPort));
        server.database = parser.value(pgDatabase);
        server.user = parser.value(pgUser);
        server.password = parser.value(pgPassword);
        server.dialect = parser.value(dialect);
        if (server.dialect != QLatin1String("S") && server.dialect != QLatin1String("O"))
            return usage(parser, QStringLiteral("--dialect は S か O です: ") + server.dialect);
        options.server = server;
    }

    const QString source = parser.value(postcodes);
    if (source == QLatin1String("npm")) {
        options.postcodes = setup::Postcodes::Npm;
    } else if (source == QLatin1String("fixture")) {
        options.postcodes = setup::Postcodes::Fixture;
    } else if (!source.isEmpty()) {
        options.postcodes = setup::Postcodes::File;
        options.postcodeFile = source;
    } else {
        return usage(parser, QStringLiteral("--postcodes が空です"));
    }

    QTextStream out(stdout);
    const setup::Result result =
        setup::createInstallation(options, [&out](const QString& step) { out << step << Qt::endl; });
    if (!result.ok) {
        QTextStream(stderr) << result.message << Qt::endl;
        return kFailed;
    }
    out << result.message << Qt::endl;
    return 0;
}
