// Feeds arbitrary text to the connection-text parser. Besides the sanitizers,
// a broken rule stops the run:
//  - every part comes back trimmed and without a ';' (the parts' separator);
//  - a text made again from the parts reads back as the same parts;
//  - the engine is the one that the provider names, whatever its case, and
//    no engine for any other provider.
#include "platform/db/connection_text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

QString decode(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return QString();
    if (data[0] & 1) {
        QString text;
        for (std::size_t i = 1; i + 1 < size; i += 2)
            text += QChar(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
        return text;
    }
    return QString::fromUtf8(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
}

bool clean(const QString& part) {
    return part == part.trimmed() && !part.contains(QLatin1Char(';'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString input = decode(data, size);
    const db::ConnectionText parts = db::ConnectionText::parse(input);
    for (const QString* part : {&parts.provider, &parts.userId, &parts.password, &parts.dataSource, &parts.initialCatalog})
        require(clean(*part));

    const QString again = QStringLiteral("Provider=") + parts.provider + QStringLiteral(";User ID=") + parts.userId +
                          QStringLiteral(";Password=") + parts.password + QStringLiteral(";Data Source=") +
                          parts.dataSource + QStringLiteral(";Initial Catalog=") + parts.initialCatalog +
                          QStringLiteral(";");
    const db::ConnectionText back = db::ConnectionText::parse(again);
    require(back.provider == parts.provider);
    require(back.userId == parts.userId);
    require(back.password == parts.password);
    require(back.dataSource == parts.dataSource);
    require(back.initialCatalog == parts.initialCatalog);

    const db::Engine engine = parts.engine();
    const QString p = parts.provider.toLower();
    if (engine == db::Engine::Sqlite)
        require(p == QLatin1String("microsoft.ace.oledb.12.0") || p == QLatin1String("microsoft.jet.oledb.4.0"));
    if (engine == db::Engine::Postgres)
        require(p == QLatin1String("postgresql"));
    if (engine == db::Engine::Odbc)
        require(p == QLatin1String("msdasql"));
    if (engine == db::Engine::None)
        require(p != QLatin1String("microsoft.ace.oledb.12.0") && p != QLatin1String("microsoft.jet.oledb.4.0") &&
                p != QLatin1String("postgresql") && p != QLatin1String("msdasql"));
    return 0;
}
