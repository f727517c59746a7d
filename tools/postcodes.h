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

// Gathers the postcode rows from the source the mode names, without repeated
// rows. A file is the npm package (.tgz), the postal service's all-Japan CSV
// file or a zip that holds it. The npm source falls back to the compiled-in
// sample when the package cannot be fetched, unless sampleWhenOffline is false.
// progress, when given, gets a line at each step.
PostcodeRows readPostcodes(Postcodes mode, const QString& file, const std::function<void(const QString&)>& progress,
                           bool sampleWhenOffline = true);

} // namespace setup
