#pragma once

#include "tools/setup.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace setup {

// Rows for M郵便番号: postcode "nnn-nnnn", 住所A, 住所B.
struct PostcodeRows {
    bool ok = false;
    QString error; // why no rows could be had
    QString note;  // what the user should know although it worked
    QList<QStringList> rows;
};

// True when the npm client is on the PATH.
bool npmAvailable();

// Gathers the postcode rows from the source the mode names. The npm source
// falls back to the compiled-in sample when the package cannot be fetched.
PostcodeRows readPostcodes(Postcodes mode, const QString& packageFile,
                           const std::function<void(const QString&)>& progress);

} // namespace setup
