#include "platform/db/connection.h"

#include "platform/db/engine_error.h"

#include <QAtomicInteger>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace db {

namespace {

QAtomicInteger<quint64> connectionCounter;

} // namespace

Error engineError(const QSqlError& e) {
    bool numeric = false;
    const long native = e.nativeErrorCode().toLong(&numeric);
    Error error;
    error.number = numeric && native != 0 ? native : kEngineError;
    QString text = e.databaseText().trimmed();
    if (text.isEmpty())
        text = e.text().trimmed();
    if (!numeric && !e.nativeErrorCode().isEmpty())
        text = e.nativeErrorCode() + QLatin1Char(' ') + text;
    error.description = text.isEmpty() ? QStringLiteral("データベースエラー") : text;
    return error;
}

Connection::Connection()
    : name_(QStringLiteral("staff-connection-%1").arg(connectionCounter.fetchAndAddRelaxed(1))) {}

Connection::~Connection() {
    close();
}

Target Connection::target() const {
    switch (engine_) {
    case Engine::Postgres:
        return Target::Postgres;
    case Engine::Odbc:
        return dialect_ == QLatin1String("O") ? Target::OdbcOracle : Target::OdbcNative;
    default:
        return Target::Sqlite;
    }
}

QSqlDatabase Connection::database() const {
    return QSqlDatabase::database(name_, false);
}

bool Connection::fail(long number, const QString& description) {
    error_.number = number;
    error_.description = description;
    return false;
}

bool Connection::open(const QString& connectionText) {
    close();
    error_.clear();
    const ConnectionText parts = ConnectionText::parse(connectionText);
    engine_ = parts.engine();

    QSqlDatabase base;
    switch (engine_) {
    case Engine::None:
        return fail(kBadConnectionText, QStringLiteral("プロバイダが見つかりません: ") + parts.provider);
    case Engine::Sqlite: {
        // The desktop database is a SQLite file; a missing file is not created.
        const QFileInfo file(parts.dataSource);
        if (parts.dataSource.isEmpty() || !file.isFile())
            return fail(kOpenFailed, QStringLiteral("データベースファイルが見つかりません: ") + parts.dataSource);
        base = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        base.setDatabaseName(file.absoluteFilePath());
        base.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(qMax(0, commandTimeout) * 1000LL));
        break;
    }
    case Engine::Postgres: {
        base = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name_);
        // Data Source is "host[:port]", or "host[:port]/database" when the text
        // names no catalogue (a server addressed by its source name).
        QString host = parts.dataSource;
        QString catalog = parts.initialCatalog;
        if (const qsizetype slash = host.indexOf(QLatin1Char('/')); slash >= 0) {
            if (catalog.isEmpty())
                catalog = host.mid(slash + 1);
            host = host.left(slash);
        }
        const qsizetype colon = host.lastIndexOf(QLatin1Char(':'));
        if (colon > 0) {
            base.setPort(host.mid(colon + 1).toInt());
            host = host.left(colon);
        }
        base.setHostName(host);
        base.setDatabaseName(catalog);
        base.setUserName(parts.userId);
        base.setPassword(parts.password);
        base.setConnectOptions(
            QStringLiteral("connect_timeout=%1;options='-c statement_timeout=%2 -c standard_conforming_strings=on'")
                .arg(qMax(1, connectionTimeout))
                .arg(qMax(0, commandTimeout) * 1000LL));
        break;
    }
    case Engine::Odbc:
        base = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), name_);
        base.setDatabaseName(parts.dataSource);
        base.setUserName(parts.userId);
        base.setPassword(parts.password);
        base.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=%1").arg(qMax(0, connectionTimeout)));
        break;
    }

    if (!base.isValid()) {
        QSqlDatabase::removeDatabase(name_);
        return fail(kOpenFailed, QStringLiteral("データベースドライバがありません"));
    }
    if (!base.open()) {
        error_ = engineError(base.lastError());
        base = QSqlDatabase();
        QSqlDatabase::removeDatabase(name_);
        return false;
    }
    if (engine_ == Engine::Sqlite) {
        // SQLite opens any file lazily; ask it now whether this one is a database.
        QSqlQuery probe(base);
        if (!probe.exec(QStringLiteral("SELECT count(*) FROM sqlite_master"))) {
            const Error e = engineError(probe.lastError());
            probe = QSqlQuery();
            base.close();
            base = QSqlDatabase();
            QSqlDatabase::removeDatabase(name_);
            return fail(kOpenFailed, QStringLiteral("デスクトップデータベース(SQLite)のファイルではありません: ") +
                                         parts.dataSource + QStringLiteral(" (") + e.description + QLatin1Char(')'));
        }
    }
    open_ = true;
    return true;
}

void Connection::close() {
    if (!open_ && !QSqlDatabase::contains(name_))
        return;
    {
        QSqlDatabase base = QSqlDatabase::database(name_, false);
        if (base.isOpen())
            base.close();
    }
    QSqlDatabase::removeDatabase(name_);
    open_ = false;
}

bool Connection::isOpen() const {
    return open_;
}

bool Connection::execute(const QString& sql) {
    error_.clear();
    if (!open_)
        return fail(kNotOpen, QStringLiteral("接続が開かれていません"));
    const Translation t = translate(sql, target());
    if (!t.ok)
        return fail(t.error.number, t.error.description);
    QSqlQuery query(database());
    if (!query.exec(t.sql)) {
        error_ = engineError(query.lastError());
        return false;
    }
    return true;
}

} // namespace db
