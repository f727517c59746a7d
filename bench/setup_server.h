#pragma once

#include "bench_support.h"
#include "tools/setup.h"

namespace bench {

// The installation tool's settings for a main database of the run's server,
// drawn (not made) by database: the tool makes it, and it is dropped at the end.
inline setup::Server installationServer(const ServerDatabase& database) {
    setup::Server s;
    s.host = pgServer()->host;
    s.port = pgServer()->port;
    s.database = database.name();
    s.user = QStringLiteral("postgres");
    return s;
}

} // namespace bench
