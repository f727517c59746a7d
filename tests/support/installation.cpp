#include "support/installation.h"

#include "client/modクライアント処理.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "tools/setup.h"

#include <QPixmap>
#include <QUuid>

namespace {

QStringList queryRows(const QString& connectionText, const QString& sql, const QStringList& columns) {
    db::Connection cn;
    QStringList out;
    if (!cn.open(connectionText))
        return {QStringLiteral("cannot open: ") + cn.lastError().description};
    db::Recordset rs;
    if (!rs.open(sql, cn))
        return {QStringLiteral("cannot read: ") + rs.lastError().description};
    for (; !rs.eof(); rs.moveNext()) {
        QStringList row;
        for (const QString& c : columns) {
            const db::Field f = rs.field(c);
            row.append(f.isNull() ? QStringLiteral("~") : f.text());
        }
        out.append(row.join(QLatin1Char('|')));
    }
    return out;
}

bool execute(const QString& connectionText, const QString& sql) {
    db::Connection cn;
    return cn.open(connectionText) && cn.execute(sql);
}

QString desktopText(const QString& file) {
    return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=") + file +
           QStringLiteral(";");
}

} // namespace

TestInstallation::TestInstallation(testdb::Engine engine, const QString& rootName, const QString& dialect) {
    root_ = base_.path() + QLatin1Char('/') + rootName;
    setup::Options options;
    options.root = root_;
    options.postcodes = setup::Postcodes::Fixture;
    if (engine == testdb::Engine::Postgres) {
        const auto server = testdb::pgServer();
        if (!server) {
            error_ = QStringLiteral("no PostgreSQL server");
            return;
        }
        pgDatabase_ = QStringLiteral("staff_tree_") + QUuid::createUuid().toString(QUuid::Id128).left(16);
        setup::Server s;
        s.host = server->host;
        s.port = server->port;
        s.database = pgDatabase_;
        s.user = server->user;
        s.password = server->password;
        s.dialect = dialect;
        options.server = s;
        mainConnectionText_ = QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;Initial Catalog=%4;")
                                  .arg(server->user, server->password, server->dataSource(), pgDatabase_);
    } else {
        mainConnectionText_ = desktopText(path(QStringLiteral("data/main.accdb")));
    }
    const setup::Result result = setup::createInstallation(options);
    if (!result.ok)
        error_ = result.message;
    sys.folder = path(QStringLiteral("prgbin"));
    newContext();
}

TestInstallation::~TestInstallation() {
    ctx_.reset();
    if (!pgDatabase_.isEmpty())
        testdb::adminExecute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(pgDatabase_));
}

Context& TestInstallation::newContext() {
    return newContext(QStringLiteral("担当者登録"));
}

Context& TestInstallation::newContext(const QString& プログラムID) {
    ctx_ = std::make_unique<Context>(sys, messages, waitBox, プログラムID);
    ctx_->desktop = &desktop;
    ctx_->dialogs = &dialogs;
    ctx_->registry = &registry;
    ctx_->tableLinks = &tableLinks;
    ctx_->DBツール登録 = ::DBツール登録;
    return *ctx_;
}

bool TestInstallation::configExecute(const QString& sql) {
    return execute(desktopText(configFile()), sql);
}

bool TestInstallation::mainExecute(const QString& sql) {
    return execute(mainConnectionText_, sql);
}

QStringList TestInstallation::configRows(const QString& sql, const QStringList& columns) const {
    return queryRows(desktopText(configFile()), sql, columns);
}

QStringList TestInstallation::mainRows(const QString& sql, const QStringList& columns) const {
    return queryRows(mainConnectionText_, sql, columns);
}

QStringList TestInstallation::history() const {
    return configRows(QStringLiteral("SELECT proccounter, 摘要 FROM プログラム稼動履歴 ORDER BY rowid"),
                      {QStringLiteral("proccounter"), QStringLiteral("摘要")});
}

bool RecordingDialogs::printPicture(QWidget*, const QPixmap& picture) {
    asked.append(QStringLiteral("print|%1x%2").arg(picture.width()).arg(picture.height()));
    return printAnswer;
}
