#include "platform/db/recordset.h"

#include "platform/db/connection.h"
#include "platform/db/desktop_statement.h"
#include "platform/db/engine_error.h"
#include "platform/db/server_result.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QRegularExpression>
#include <QSqlRecord>

namespace db {

namespace {

// A column's name as the program knows it.
QString programName(QString name, Engine engine) {
    // The desktop engine may name a column of a joined table "name:2".
    static const QRegularExpression suffix(QStringLiteral(":[0-9]+$"));
    if (engine == Engine::Sqlite && name.contains(QLatin1Char(':')))
        name.remove(suffix);
    // Some ODBC drivers give the length of a name in bytes: cut at its terminator.
    if (const qsizetype nul = name.indexOf(QChar(0)); nul >= 0)
        name.truncate(nul);
    return name;
}

} // namespace

Recordset::Recordset() = default;

Recordset::~Recordset() {
    close();
}

bool Recordset::open(const QString& sql, Connection& connection) {
    close();
    error_.clear();
    recovery_ = Recovery();
    if (!connection.isOpen()) {
        error_ = Error{kNotOpen, QStringLiteral("接続が開かれていません")};
        return false;
    }
    const Translation t = translate(sql, connection.target());
    if (!t.ok) {
        error_ = t.error;
        return false;
    }
    if (connection.desktopHandle()) {
        desktop_ = std::make_unique<DesktopStatement>(connection);
        if (!desktop_->exec(t.sql, &error_)) {
            desktop_.reset();
            return false;
        }
        open_ = true;
        for (int i = 0; i < desktop_->columnCount(); ++i)
            names_.append(programName(desktop_->columnName(i), Engine::Sqlite));
        bof_ = eof_ = !desktop_->atRow();
        return true;
    }
    // The server's driver reads a forward-only result one row at a time off
    // the connection, and a second statement on the connection would cut the
    // rows still to come. The whole result is taken at once instead, as the
    // client library does by itself, so a list may look things up while it
    // reads its rows.
    const bool ran = connection.run(query_, t.sql, connection.engine() != Engine::Postgres);
    recovery_ = connection.lastRecovery();
    if (!ran) {
        error_ = connection.lastError();
        query_.reset();
        return false;
    }
    open_ = true;
    if (connection.engine() == Engine::Postgres) {
        server_ = std::make_unique<ServerResult>(*query_);
        if (!server_->available())
            server_.reset();
    }
    if (server_) {
        for (int i = 0; i < server_->columnCount(); ++i)
            names_.append(server_->columnName(i));
    } else {
        const QSqlRecord record = query_->record();
        for (int i = 0; i < record.count(); ++i)
            names_.append(programName(record.fieldName(i), connection.engine()));
    }
    moveNext();
    bof_ = eof_;
    return !error_.failed();
}

void Recordset::close() {
    if (query_) {
        query_->finish();
        query_.reset();
    }
    server_.reset();
    desktop_.reset();
    open_ = false;
    names_.clear();
    caseBlindHits_.clear();
    bof_ = eof_ = true;
}

Field Recordset::field(const QString& name) const {
    if ((!query_ && !desktop_) || eof_ || (query_ && !query_->driver()))
        return {};
    const int index = indexOf(name);
    if (index < 0)
        return {};
    if (desktop_)
        return Field{desktop_->value(index), true};
    if (server_ && server_->isText(index))
        return Field{server_->value(query_->at(), index), true};
    return Field{query_->value(index), true};
}

// Names compare without regard to case; with two columns of one name the first counts.
int Recordset::indexOf(const QString& name) const {
    // The program mostly writes a name as the engine gives it back: try that first.
    for (qsizetype i = 0; i < names_.size(); ++i)
        if (names_.at(i) == name)
            return static_cast<int>(i);
    // The server gives back the names it folded to lower case ("住所a" for
    // 住所A), and a list asks for the same names on every row: a name found
    // without regard to case is remembered as the program wrote it.
    for (const auto& [asked, index] : caseBlindHits_)
        if (asked == name)
            return index;
    for (qsizetype i = 0; i < names_.size(); ++i)
        if (names_.at(i).compare(name, Qt::CaseInsensitive) == 0) {
            caseBlindHits_.append({name, static_cast<int>(i)});
            return static_cast<int>(i);
        }
    return -1;
}

void Recordset::moveNext() {
    if (desktop_) {
        eof_ = !desktop_->next(&error_);
        return;
    }
    // A server's rows end with their connection, as the desktop file's do.
    if (!query_ || !query_->isSelect() || !query_->driver()) {
        eof_ = true;
        return;
    }
    if (!query_->next()) {
        eof_ = true;
        if (query_->lastError().isValid())
            error_ = engineError(query_->lastError());
    } else {
        eof_ = false;
    }
}

} // namespace db
