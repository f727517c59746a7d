#pragma once

#include "shell/context.h"

#include <QString>

// The PIN codec of the run, under the installation's key file in the shared
// configuration folder. A stored form that cannot be decoded (another key, a
// damaged text, no key file) decodes to the empty text and leaves an error row
// in the run history; so does a PIN that cannot be encoded, which is stored empty.
QString 暗証番号encode(Context& ctx, const QString& 暗証番号);
QString 暗証番号decode(Context& ctx, const QString& 格納値);

// Where the key file of an installation lies.
QString 暗証番号鍵ファイル(const QString& 共通confフォルダ);
