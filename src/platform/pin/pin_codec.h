#pragma once

#include <QString>

namespace pin {

// The PIN codec: authenticated encryption under the installation's key file.
// The stored form is base64 text (safe between single quotes in a statement);
// the empty text stands for no PIN both ways.
class Codec {
public:
    explicit Codec(QString keyFile);

    bool encode(const QString& plain, QString* stored, QString* error) const;
    // False, with a reason, for a stored form made under another key, a damaged
    // text or a missing key file; never a PIN that matches by accident.
    bool decode(const QString& stored, QString* plain, QString* error) const;

    // Makes a new random key file; refuses to overwrite one.
    static bool createKeyFile(const QString& path, QString* error);

private:
    bool loadKey(QByteArray* key, QString* error) const;
    QString keyFile_;
};

} // namespace pin
