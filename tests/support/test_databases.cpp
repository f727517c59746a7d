#include "support/test_databases.h"

#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QAtomicInteger>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUuid>

namespace testdb {

std::string engineName(Engine engine) {
    return engine == Engine::Sqlite ? "Sqlite" : "Postgres";
}

std::optional<PgServer> pgServer() {
    const QString address = qEnvironmentVariable("STAFF_TEST_PG");
    if (address.isEmpty())
        return std::nullopt;
    PgServer server;
    const qsizetype colon = address.lastIndexOf(QLatin1Char(':'));
    server.host = colon > 0 ? address.left(colon) : address;
    if (colon > 0)
        server.port = address.mid(colon + 1).toInt();
    return server;
}

bool serverRequired() {
    return qEnvironmentVariable("CI") == QLatin1String("true");
}

bool adminExecute(const QString& sql, QString* error) {
    const auto server = pgServer();
    if (!server) {
        if (error)
            *error = QStringLiteral("no server");
        return false;
    }
    db::Connection admin;
    const QString text = QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;Initial Catalog=postgres;")
                             .arg(server->user, server->password, server->dataSource());
    if (!admin.open(text) || !admin.execute(sql)) {
        if (error)
            *error = admin.lastError().description;
        return false;
    }
    return true;
}

ScratchDatabase::ScratchDatabase(Engine engine, const QString& folder) : engine_(engine) {
    const QString unique = QUuid::createUuid().toString(QUuid::Id128).left(16);
    if (engine == Engine::Sqlite) {
        name_ = QDir(folder).filePath(QStringLiteral("scratch_%1.accdb").arg(unique));
        QFile file(name_);
        if (!file.open(QIODevice::WriteOnly))
            error_ = QStringLiteral("cannot create ") + name_;
        return; // an empty file is an empty SQLite database
    }
    name_ = QStringLiteral("staff_test_") + unique;
    adminExecute(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C'")
                     .arg(name_),
                 &error_);
}

ScratchDatabase::~ScratchDatabase() {
    if (engine_ == Engine::Sqlite)
        QFile::remove(name_);
    else if (error_.isEmpty())
        adminExecute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name_));
}

QString ScratchDatabase::connectionText() const {
    if (engine_ == Engine::Sqlite)
        return QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;User ID=;Password=;Data Source=%1;").arg(name_);
    const auto server = pgServer();
    return QStringLiteral("Provider=PostgreSQL;User ID=%1;Password=%2;Data Source=%3;Initial Catalog=%4;")
        .arg(server->user, server->password, server->dataSource(), name_);
}

QStringList query(const QString& connectionText, const QString& sql, const QStringList& columns) {
    db::Connection connection;
    if (!connection.open(connectionText)) {
        ADD_FAILURE() << "cannot open " << connectionText.toStdString() << ": "
                      << connection.lastError().description.toStdString();
        return {};
    }
    db::Recordset rs;
    if (!rs.open(sql, connection)) {
        ADD_FAILURE() << sql.toStdString() << ": " << rs.lastError().description.toStdString();
        return {};
    }
    QStringList rows;
    for (; !rs.eof(); rs.moveNext()) {
        QStringList values;
        for (const QString& column : columns)
            values.append(rs.field(column).text());
        rows.append(values.join(QLatin1Char('|')));
    }
    return rows;
}

} // namespace testdb
