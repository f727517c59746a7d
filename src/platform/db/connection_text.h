#pragma once

#include <QString>

namespace db {

enum class Engine { None, Sqlite, Postgres, Odbc };

// The parts of a connection text "Provider=...;User ID=...;Password=...;Data Source=...;".
// Keys compare without regard to case; unknown keys are ignored.
struct ConnectionText {
    QString provider;
    QString userId;
    QString password;
    QString dataSource;
    QString initialCatalog;

    static ConnectionText parse(const QString& text);
    // The engine that serves the provider, Engine::None when the provider is unknown.
    Engine engine() const;
};

} // namespace db
