#pragma once

#include <QString>

namespace ui {

// A PDF font's text map names, for each glyph, the first code point that the
// font draws with that glyph. A CJK font draws a radical form and its
// ideograph with one glyph, and the radical forms come first in the code
// table: a search or a copy of "日付" in the file would find "⽇付", "長" would
// come out as "⻑". This sets the text maps of a written PDF file back to the
// ideographs, in place: the codes have the same length, nothing else moves.
// False when the file cannot be opened for writing.
bool pdfTextMapsToIdeographs(const QString& file);

} // namespace ui
