// Feeds arbitrary text to the connection-text parser. Besides the sanitizers,
// a broken rule stops the run:
//  - every part comes back trimmed and without a ';' (the parts' separator);
//  - a text made again from the parts reads back as the same parts;
//  - the engine is the one that the provider names, whatever its case, and
//    no engine for any other provider.
#include "platform/db/connection_text.h"
#include "support/fuzz_input.h"

#include <cstddef>
#include <cstdint>

namespace {

bool clean(const QString& part) {
    return part == part.trimmed() && !part.contains(QLatin1Char(';'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = fuzz::decode(data, size);
    const db::ConnectionText parts = db::ConnectionText::parse(input);
    for (const QString* part : {&parts.provider, &parts.userId, &parts.password, &parts.dataSource, &parts.initialCatalog})
        fuzz::require(clean(*part));

    const QString again = QStringLiteral("Provider=") + parts.provider + QStringLiteral(";User ID=") + parts.userId +
                          QStringLiteral(";Password=") + parts.password + QStringLiteral(";Data Source=") +
                          parts.dataSource + QStringLiteral(";Initial Catalog=") + parts.initialCatalog +
                          QStringLiteral(";");
    const db::ConnectionText back = db::ConnectionText::parse(again);
    fuzz::require(back.provider == parts.provider);
    fuzz::require(back.userId == parts.userId);
    fuzz::require(back.password == parts.password);
    fuzz::require(back.dataSource == parts.dataSource);
    fuzz::require(back.initialCatalog == parts.initialCatalog);

    const db::Engine engine = parts.engine();
    const QString p = parts.provider.toLower();
    if (engine == db::Engine::Sqlite)
        fuzz::require(p == QLatin1String("microsoft.ace.oledb.12.0") || p == QLatin1String("microsoft.jet.oledb.4.0"));
    if (engine == db::Engine::Postgres)
        fuzz::require(p == QLatin1String("postgresql"));
    if (engine == db::Engine::Odbc)
        fuzz::require(p == QLatin1String("msdasql"));
    if (engine == db::Engine::None)
        fuzz::require(p != QLatin1String("microsoft.ace.oledb.12.0") && p != QLatin1String("microsoft.jet.oledb.4.0") &&
                      p != QLatin1String("postgresql") && p != QLatin1String("msdasql"));
    return 0;
}
