#include "platform/db/server_result.h"

#include <QSqlQuery>
#include <QSqlResult>

#include <libpq-fe.h>

namespace db {

namespace {

// The kinds of text columns, by the server's type number.
constexpr Oid kNameType = 19;
constexpr Oid kTextType = 25;
constexpr Oid kPaddedTextType = 1042;
constexpr Oid kVaryingTextType = 1043;

} // namespace

ServerResult::ServerResult(const QSqlQuery& query) {
    // The server's driver names its result by the client library's type: by
    // the name the type is declared with, or by its typedef, as Qt's version
    // has it. The library is loaded once in a process, so the driver's result
    // is one this layer can read.
    const QSqlResult* result = query.result();
    if (!result)
        return;
    const QVariant handle = result->handle();
    if (!handle.isValid() ||
        (qstrcmp(handle.typeName(), "pg_result*") != 0 && qstrcmp(handle.typeName(), "PGresult*") != 0))
        return;
    result_ = *static_cast<const pg_result* const*>(handle.constData());
    if (!result_)
        return;
    for (int c = 0; c < PQnfields(result_); ++c) {
        const Oid type = PQftype(result_, c);
        text_.push_back(type == kTextType || type == kVaryingTextType || type == kPaddedTextType || type == kNameType);
    }
}

int ServerResult::columnCount() const { return static_cast<int>(text_.size()); }

QString ServerResult::columnName(int column) const { return QString::fromUtf8(PQfname(result_, column)); }

QVariant ServerResult::value(int row, int column) const {
    if (PQgetisnull(result_, row, column))
        return QVariant(QMetaType::fromType<QString>());
    return QString::fromUtf8(PQgetvalue(result_, row, column), PQgetlength(result_, row, column));
}

} // namespace db
