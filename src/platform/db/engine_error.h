#pragma once

#include "platform/db/error.h"

class QSqlError;

namespace db {

// Number and description of an error the engine reported.
Error engineError(const QSqlError& e);

} // namespace db
