#pragma once

#include "platform/db/error.h"

class QSqlError;

namespace db {

// Number and description of an error the engine reported.
Error engineError(const QSqlError& e);
// The same from the engine's own number (0 when it gave none) and words.
Error engineError(long number, const QString& text);

} // namespace db
