#pragma once

#include <QString>

namespace setup {

class RowWriter;

// The rows every new main database starts with: company, offices,
// organisation, class tables, number definitions and outside systems.
// The photo and document folders are those of the finished tree.
bool seedMain(RowWriter& writer, const QString& photoFolder, const QString& documentFolder);

// A believable company on top of the seed: more offices, about a hundred
// staff, employees with their history. The same rows on every run.
bool seedDemo(RowWriter& writer);

} // namespace setup
