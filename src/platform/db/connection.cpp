#include "platform/db/connection.h"

#include "platform/db/desktop_statement.h"
#include "platform/db/engine_error.h"

#include <QAtomicInteger>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

#include <sqlite3.h>

#include <algorithm>

namespace db {

namespace {

QAtomicInteger<quint64> connectionCounter;

// Whether an error says that the server connection has gone: the connection
// failure class 08 of the server's codes, a shut-down or crash of the server
// (57P01-57P03), or the client library's own words for a broken connection.
bool connectionGone(const QSqlError& e) {
    const QString code = e.nativeErrorCode();
    if (code.startsWith(QLatin1String("08")) || code == QLatin1String("57P01") || code == QLatin1String("57P02") ||
        code == QLatin1String("57P03"))
        return true;
    static const char* const words[] = {
        "server closed the connection",
        "terminating connection due to administrator command",
        "no connection to the server",
        "connection to server was lost",
        "could not receive data from server",
        "could not send data to server",
        "ssl connection has been closed unexpectedly",
        "communication link failure",
    };
    const QString text = (e.databaseText() + QLatin1Char(' ') + e.driverText()).toLower();
    for (const char* w : words)
        if (text.contains(QLatin1String(w)))
            return true;
    return false;
}

} // namespace

Error engineError(const QSqlError& e) {
    bool numeric = false;
    const long native = e.nativeErrorCode().toLong(&numeric);
    QString text = e.databaseText().trimmed();
    if (text.isEmpty())
        text = e.text().trimmed();
    if (!numeric && !e.nativeErrorCode().isEmpty())
        text = e.nativeErrorCode() + QLatin1Char(' ') + text;
    return engineError(numeric ? native : 0, text);
}

Error engineError(long number, const QString& text) {
    return Error{number != 0 ? number : kEngineError, text.isEmpty() ? QStringLiteral("データベースエラー") : text};
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
    recovery_ = Recovery();
    lossText_.clear();
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
    if (engine_ == Engine::Sqlite)
        desktop_ = sharedDesktopHandle();
    return true;
}

// The driver's handle, when the driver runs on the engine library this layer
// is built with, so that a handle of the one is a handle of the other. A
// driver that brings an engine of its own keeps every statement to itself.
sqlite3* Connection::sharedDesktopHandle() const {
    QSqlDatabase base = database();
    const QVariant handle = base.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    // The driver is loaded once in a process: the first connection asks for all.
    static const bool sameLibrary = [&base] {
        QSqlQuery source(base);
        return source.exec(QStringLiteral("SELECT sqlite_source_id()")) && source.next() &&
               source.value(0).toString() == QString::fromUtf8(sqlite3_sourceid());
    }();
    if (!sameLibrary)
        return nullptr;
    return *static_cast<sqlite3* const*>(handle.constData());
}

void Connection::attach(DesktopStatement* statement) { statements_.push_back(statement); }

void Connection::detach(DesktopStatement* statement) {
    statements_.erase(std::remove(statements_.begin(), statements_.end(), statement), statements_.end());
}

void Connection::close() {
    // The engine closes a file only once no statement is left on it.
    for (DesktopStatement* statement : statements_)
        statement->connectionClosed();
    statements_.clear();
    desktop_ = nullptr;
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
    recovery_ = Recovery();
    if (!open_)
        return fail(kNotOpen, QStringLiteral("接続が開かれていません"));
    const Translation t = translate(sql, target());
    if (!t.ok)
        return fail(t.error.number, t.error.description);
    std::unique_ptr<QSqlQuery> query;
    return run(query, t.sql, true);
}

bool Connection::run(std::unique_ptr<QSqlQuery>& query, const QString& text, bool forwardOnly) {
    error_.clear();
    recovery_ = Recovery();
    const auto attempt = [&] {
        query = std::make_unique<QSqlQuery>(database());
        query->setForwardOnly(forwardOnly);
        return query->exec(text);
    };
    // The server's driver closes its side when a statement found the
    // connection broken; the next statement then gets no word from it at all.
    if (serverEngine() && !database().isOpen()) {
        recovery_.loss = Error{kConnectionLost,
                               lossText_.isEmpty()
                                   ? QStringLiteral("サーバーとの接続が切れています")
                                   : QStringLiteral("サーバーとの接続が切れています (") + lossText_ + QLatin1Char(')')};
    } else {
        if (attempt())
            return true;
        const QSqlError e = query->lastError();
        if (!serverEngine() || !(connectionGone(e) || !database().isOpen())) {
            error_ = engineError(e);
            return false;
        }
        lossText_ = engineError(e).description.simplified();
        recovery_.loss = Error{kConnectionLost, QStringLiteral("サーバーとの接続が切れました: ") + lossText_};
    }
    recovery_.lost = true;
    error_ = recovery_.loss;
    query.reset();
    if (inTransaction_ || !reopen(&recovery_.reopenError))
        return false;
    recovery_.reopened = true;
    lossText_.clear();
    if (attempt()) {
        error_.clear();
        return true;
    }
    const QSqlError e = query->lastError();
    error_ = engineError(e);
    if (connectionGone(e) || !database().isOpen()) {
        lossText_ = error_.description.simplified();
        error_ = Error{kConnectionLost, QStringLiteral("サーバーとの接続が切れました: ") + lossText_};
    }
    return false;
}

bool Connection::beginTransaction() {
    error_.clear();
    if (!open_)
        return fail(kNotOpen, QStringLiteral("接続が開かれていません"));
    QSqlDatabase base = database();
    if (!base.transaction()) {
        error_ = engineError(base.lastError());
        return false;
    }
    inTransaction_ = true;
    return true;
}

bool Connection::commitTransaction() {
    error_.clear();
    QSqlDatabase base = database();
    const bool done = base.commit();
    if (!done) {
        error_ = engineError(base.lastError());
        base.rollback();
    }
    inTransaction_ = false;
    return done;
}

void Connection::rollbackTransaction() {
    database().rollback();
    inTransaction_ = false;
}

// Opens the connection again as the last open made it: the same server,
// database, user and settings, all taken from the same connection text.
bool Connection::reopen(Error* why) {
    QSqlDatabase base = database();
    base.close();
    if (!base.open()) {
        *why = engineError(base.lastError());
        why->description = why->description.simplified();
        if (why->number == kEngineError || why->number == kNoError)
            why->number = kOpenFailed;
        return false;
    }
    return true;
}

} // namespace db
