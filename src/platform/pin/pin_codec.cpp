#include "platform/pin/pin_codec.h"

#include <QByteArray>
#include <QFile>
#include <QFileDevice>

#include <sodium.h>

namespace pin {

namespace {

bool ready() {
    static const bool ok = sodium_init() >= 0;
    return ok;
}

bool fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return false;
}

} // namespace

Codec::Codec(QString keyFile) : keyFile_(std::move(keyFile)) {}

bool Codec::loadKey(QByteArray* key, QString* error) const {
    if (!ready())
        return fail(error, QStringLiteral("暗号ライブラリを初期化できません"));
    QFile file(keyFile_);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("暗証番号の鍵ファイルがありません: ") + keyFile_);
    *key = QByteArray::fromBase64(file.readAll().trimmed());
    if (key->size() != crypto_secretbox_KEYBYTES)
        return fail(error, QStringLiteral("暗証番号の鍵ファイルが壊れています: ") + keyFile_);
    return true;
}

bool Codec::encode(const QString& plain, QString* stored, QString* error) const {
    stored->clear();
    if (plain.isEmpty())
        return true;
    QByteArray key;
    if (!loadKey(&key, error))
        return false;
    const QByteArray message = plain.toUtf8();
    QByteArray box(crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES + message.size(), '\0');
    auto* nonce = reinterpret_cast<unsigned char*>(box.data());
    randombytes_buf(nonce, crypto_secretbox_NONCEBYTES);
    crypto_secretbox_easy(nonce + crypto_secretbox_NONCEBYTES, reinterpret_cast<const unsigned char*>(message.constData()),
                          static_cast<unsigned long long>(message.size()), nonce,
                          reinterpret_cast<const unsigned char*>(key.constData()));
    sodium_memzero(key.data(), static_cast<size_t>(key.size()));
    *stored = QString::fromLatin1(box.toBase64());
    return true;
}

bool Codec::decode(const QString& stored, QString* plain, QString* error) const {
    plain->clear();
    const QString text = stored.trimmed();
    if (text.isEmpty())
        return true;
    const auto decoded = QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    const QByteArray& box = decoded.decoded;
    if (!decoded || box.size() < static_cast<qsizetype>(crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES))
        return fail(error, QStringLiteral("暗証番号を復号できません (形式が壊れています)"));
    QByteArray key;
    if (!loadKey(&key, error))
        return false;
    const auto* nonce = reinterpret_cast<const unsigned char*>(box.constData());
    const qsizetype cipherLength = box.size() - static_cast<qsizetype>(crypto_secretbox_NONCEBYTES);
    QByteArray message(cipherLength - static_cast<qsizetype>(crypto_secretbox_MACBYTES), '\0');
    const int opened = crypto_secretbox_open_easy(
        reinterpret_cast<unsigned char*>(message.data()), nonce + crypto_secretbox_NONCEBYTES,
        static_cast<unsigned long long>(cipherLength), nonce, reinterpret_cast<const unsigned char*>(key.constData()));
    sodium_memzero(key.data(), static_cast<size_t>(key.size()));
    if (opened != 0)
        return fail(error, QStringLiteral("暗証番号を復号できません (別の鍵か壊れた値です)"));
    *plain = QString::fromUtf8(message);
    return true;
}

bool Codec::createKeyFile(const QString& path, QString* error) {
    if (!ready())
        return fail(error, QStringLiteral("暗号ライブラリを初期化できません"));
    if (QFile::exists(path))
        return fail(error, QStringLiteral("暗証番号の鍵ファイルは既にあります: ") + path);
    QByteArray key(crypto_secretbox_KEYBYTES, '\0');
    crypto_secretbox_keygen(reinterpret_cast<unsigned char*>(key.data()));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return fail(error, QStringLiteral("暗証番号の鍵ファイルを作れません: ") + path);
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const bool written = file.write(key.toBase64() + '\n') > 0;
    sodium_memzero(key.data(), static_cast<size_t>(key.size()));
    if (!written)
        return fail(error, QStringLiteral("暗証番号の鍵ファイルに書けません: ") + path);
    return true;
}

} // namespace pin
