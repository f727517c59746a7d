#include "platform/db/desktop_statement.h"

#include "platform/db/connection.h"
#include "platform/db/engine_error.h"
#include "platform/db/translate.h"

#include <QByteArray>

#include <sqlite3.h>

namespace db {

DesktopStatement::DesktopStatement(Connection& connection) : connection_(&connection) { connection.attach(this); }

DesktopStatement::~DesktopStatement() {
    release();
    if (connection_)
        connection_->detach(this);
}

void DesktopStatement::release() {
    if (statement_)
        sqlite3_finalize(statement_);
    statement_ = nullptr;
    columns_ = 0;
    row_ = false;
}

void DesktopStatement::connectionClosed() {
    release();
    connection_ = nullptr;
}

// The engine's number and its own words, as the engine's driver reports them.
Error DesktopStatement::failure(int code) const {
    const char* message = connection_ ? sqlite3_errmsg(connection_->desktopHandle()) : nullptr;
    return engineError(code, message ? QString::fromUtf8(message).trimmed() : QString());
}

bool DesktopStatement::exec(const QString& text, Error* error) {
    sqlite3* handle = connection_ ? connection_->desktopHandle() : nullptr;
    if (!handle) {
        *error = Error{kNotOpen, QStringLiteral("接続が開かれていません")};
        return false;
    }
    const QByteArray utf8 = text.toUtf8();
    const char* tail = nullptr;
    const int prepared =
        sqlite3_prepare_v2(handle, utf8.constData(), static_cast<int>(utf8.size()), &statement_, &tail);
    if (prepared != SQLITE_OK) {
        *error = failure(prepared);
        release();
        return false;
    }
    if (!statement_) {
        *error = Error{kEngineError, QStringLiteral("実行する文がありません")};
        return false;
    }
    if (tail && !QByteArray(tail).trimmed().isEmpty()) {
        *error = multipleStatements();
        release();
        return false;
    }
    columns_ = sqlite3_column_count(statement_);
    return next(error) || !error->failed();
}

bool DesktopStatement::next(Error* error) {
    row_ = false;
    if (!statement_ || done_)
        return false;
    const int stepped = sqlite3_step(statement_);
    if (stepped == SQLITE_ROW) {
        row_ = true;
        return true;
    }
    done_ = true;
    if (stepped != SQLITE_DONE)
        *error = failure(stepped);
    // Behind the last row the statement holds no lock on the file any more.
    sqlite3_reset(statement_);
    return false;
}

int DesktopStatement::columnCount() const { return columns_; }

QString DesktopStatement::columnName(int column) const {
    return statement_ ? QString::fromUtf8(sqlite3_column_name(statement_, column)) : QString();
}

QVariant DesktopStatement::value(int column) const {
    if (!row_ || column < 0 || column >= columnCount())
        return {};
    switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_INTEGER:
        return QVariant(static_cast<qlonglong>(sqlite3_column_int64(statement_, column)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(statement_, column));
    case SQLITE_NULL:
        return {};
    case SQLITE_BLOB: {
        const void* bytes = sqlite3_column_blob(statement_, column);
        return QVariant(QByteArray(static_cast<const char*>(bytes), sqlite3_column_bytes(statement_, column)));
    }
    default: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        return QVariant(QString::fromUtf8(text, sqlite3_column_bytes(statement_, column)));
    }
    }
}

} // namespace db
