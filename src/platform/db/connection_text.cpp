#include "platform/db/connection_text.h"

#include <QStringList>

namespace db {

ConnectionText ConnectionText::parse(const QString& text) {
    ConnectionText result;
    const auto parts = text.split(QLatin1Char(';'));
    for (const QString& part : parts) {
        const qsizetype eq = part.indexOf(QLatin1Char('='));
        if (eq < 0)
            continue;
        const QString key = part.left(eq).trimmed().toLower();
        const QString value = part.mid(eq + 1).trimmed();
        if (key == QLatin1String("provider"))
            result.provider = value;
        else if (key == QLatin1String("user id") || key == QLatin1String("uid"))
            result.userId = value;
        else if (key == QLatin1String("password") || key == QLatin1String("pwd"))
            result.password = value;
        else if (key == QLatin1String("data source"))
            result.dataSource = value;
        else if (key == QLatin1String("initial catalog"))
            result.initialCatalog = value;
    }
    return result;
}

Engine ConnectionText::engine() const {
    const QString p = provider.toLower();
    if (p == QLatin1String("microsoft.ace.oledb.12.0") || p == QLatin1String("microsoft.jet.oledb.4.0"))
        return Engine::Sqlite;
    if (p == QLatin1String("postgresql"))
        return Engine::Postgres;
    if (p == QLatin1String("msdasql"))
        return Engine::Odbc;
    return Engine::None;
}

} // namespace db
