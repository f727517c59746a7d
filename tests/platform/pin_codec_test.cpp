#include "platform/pin/pin_codec.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class PinCodec : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        QString error;
        ASSERT_TRUE(pin::Codec::createKeyFile(key, &error)) << error.toStdString();
    }
    QTemporaryDir dir;
    QString key = dir.filePath(QStringLiteral("pin.key"));
};

TEST_F(PinCodec, RoundTripAndAStoredFormSafeBetweenQuotes) {
    const pin::Codec codec(key);
    QString stored, plain, error;
    ASSERT_TRUE(codec.encode(QStringLiteral("AB12'x"), &stored, &error)) << error.toStdString();
    EXPECT_FALSE(stored.contains(QLatin1Char('\'')));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[A-Za-z0-9+/=]+$")).match(stored).hasMatch());
    EXPECT_FALSE(stored.contains(QStringLiteral("AB12")));
    ASSERT_TRUE(codec.decode(stored, &plain, &error)) << error.toStdString();
    EXPECT_EQ(plain, QStringLiteral("AB12'x"));
}

TEST_F(PinCodec, SamePinTwiceGivesTwoStoredForms) {
    const pin::Codec codec(key);
    QString a, b, error;
    ASSERT_TRUE(codec.encode(QStringLiteral("1234"), &a, &error));
    ASSERT_TRUE(codec.encode(QStringLiteral("1234"), &b, &error));
    EXPECT_NE(a, b);
}

TEST_F(PinCodec, EmptyTextIsNoPinBothWays) {
    const pin::Codec codec(key);
    QString stored = QStringLiteral("x"), plain = QStringLiteral("x"), error;
    EXPECT_TRUE(codec.encode(QString(), &stored, &error));
    EXPECT_EQ(stored, QString());
    EXPECT_TRUE(codec.decode(QStringLiteral("  "), &plain, &error));
    EXPECT_EQ(plain, QString());
}

TEST_F(PinCodec, AnotherKeyDamagedTextOrNoKeyFileDecodeToNothing) {
    QString stored, plain = QStringLiteral("x"), error;
    ASSERT_TRUE(pin::Codec(key).encode(QStringLiteral("1234"), &stored, &error));

    const QString otherKey = dir.filePath(QStringLiteral("other.key"));
    ASSERT_TRUE(pin::Codec::createKeyFile(otherKey, &error));
    EXPECT_FALSE(pin::Codec(otherKey).decode(stored, &plain, &error));
    EXPECT_EQ(plain, QString());
    EXPECT_FALSE(error.isEmpty());

    QString damaged = stored;
    damaged[damaged.size() / 2] = damaged.at(damaged.size() / 2) == QLatin1Char('A') ? QLatin1Char('B') : QLatin1Char('A');
    EXPECT_FALSE(pin::Codec(key).decode(damaged, &plain, &error));
    EXPECT_EQ(plain, QString());
    EXPECT_FALSE(pin::Codec(key).decode(QStringLiteral("1234"), &plain, &error)); // a plain PIN of old
    EXPECT_FALSE(pin::Codec(key).decode(QStringLiteral("not base64 at all!"), &plain, &error));

    EXPECT_FALSE(pin::Codec(dir.filePath(QStringLiteral("missing.key"))).decode(stored, &plain, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("missing.key")));
    EXPECT_FALSE(pin::Codec(dir.filePath(QStringLiteral("missing.key"))).encode(QStringLiteral("1"), &stored, &error));
    EXPECT_EQ(stored, QString());
}

TEST_F(PinCodec, KeyFileIsNeverOverwrittenAndIsTheOwnersOnly) {
    QString error;
    EXPECT_FALSE(pin::Codec::createKeyFile(key, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(QFile::permissions(key) & (QFileDevice::ReadOther | QFileDevice::ReadGroup), QFileDevice::Permissions());
}

} // namespace
