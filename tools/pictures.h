#pragma once

#include <QString>

// Pictures of the demo's employees, drawn rather than shipped: a portrait
// photograph and a seal impression.
namespace setup {

// A head-and-shoulders portrait as a JPEG file; the number varies the colours.
bool writePortrait(const QString& path, int number, bool woman);

// A round red seal with the family name written downwards, as a PNG file.
// Without a graphical application (no fonts), the ring alone is drawn.
bool writeSeal(const QString& path, const QString& familyName);

} // namespace setup
