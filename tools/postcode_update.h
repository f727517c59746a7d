#pragma once

#include "tools/setup.h"

#include <QString>

#include <functional>

namespace setup {

// Replaces the postcode master M郵便番号 of an existing installation with the
// rows of the source: the main database that the installation's configuration
// names (a desktop file or a server), all rows in one transaction. The source
// is read and checked in full before the database is touched; when anything
// fails, the old rows stay as they were. The npm source does not fall back to
// the compiled-in sample here: an update replaces the master only with what
// was asked for.
Result updatePostcodes(const QString& root, Postcodes source, const QString& file,
                       const std::function<void(const QString&)>& progress = {});

// The connection text of the main database, built from the row 'GNR' of
// データベース定義 in the installation's configuration database as the program
// builds it, with the dialect letter; empty with the reason in `error`.
QString installedMainConnection(const QString& root, QString& dialect, QString& error);

} // namespace setup
