#include "tools/pictures.h"

#include <QCoreApplication>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace setup {

bool writePortrait(const QString& path, int number, bool woman) {
    QImage image(300, 400, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    // A studio backdrop of a soft blue or grey.
    QLinearGradient backdrop(0, 0, 0, 400);
    const int tint = (number * 37) % 40;
    backdrop.setColorAt(0, QColor(200 - tint, 215 - tint / 2, 230));
    backdrop.setColorAt(1, QColor(150 - tint, 165 - tint / 2, 185));
    p.fillRect(image.rect(), backdrop);
    // Shoulders in a dark suit, a white collar.
    static const QColor suits[] = {QColor(40, 48, 70), QColor(55, 55, 60), QColor(30, 40, 55), QColor(70, 60, 55)};
    p.setPen(Qt::NoPen);
    p.setBrush(suits[number % 4]);
    p.drawEllipse(QRectF(20, 290, 260, 240));
    p.setBrush(Qt::white);
    QPainterPath collar;
    collar.moveTo(120, 290);
    collar.lineTo(150, 345);
    collar.lineTo(180, 290);
    collar.closeSubpath();
    p.drawPath(collar);
    // Neck and face.
    const QColor skin(235 - (number * 13) % 30, 200 - (number * 7) % 25, 170 - (number * 11) % 25);
    p.setBrush(skin.darker(108));
    p.drawRect(QRectF(128, 240, 44, 60));
    p.setBrush(skin);
    p.drawEllipse(QRectF(95, 110, 110, 145));
    // Hair: longer for women.
    static const QColor hairs[] = {QColor(25, 20, 20), QColor(45, 30, 25), QColor(60, 45, 35), QColor(90, 90, 90)};
    p.setBrush(hairs[(number / 3) % 4]);
    if (woman) {
        p.drawChord(QRectF(85, 95, 130, 110), 0, 180 * 16);
        p.drawRoundedRect(QRectF(82, 140, 26, 130), 12, 12);
        p.drawRoundedRect(QRectF(192, 140, 26, 130), 12, 12);
    } else {
        p.drawChord(QRectF(92, 104, 116, 92), 0, 180 * 16);
    }
    // Eyes and mouth.
    p.setBrush(QColor(40, 30, 30));
    p.drawEllipse(QRectF(125, 175, 10, 7));
    p.drawEllipse(QRectF(165, 175, 10, 7));
    p.setPen(QPen(QColor(150, 70, 70), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(QRectF(135, 205, 30, 18), 200 * 16, 140 * 16);
    p.end();
    return image.save(path, "JPEG", 90);
}

bool writeSeal(const QString& path, const QString& familyName) {
    QImage image(200, 200, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor vermilion(200, 30, 30);
    p.setPen(QPen(vermilion, 9));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QRectF(10, 10, 180, 180));
    // Fonts exist only in a graphical application.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) && !familyName.isEmpty()) {
        QFont font(QStringLiteral("Noto Serif CJK JP"));
        font.setStyleHint(QFont::Serif);
        font.setBold(true);
        const int count = int(familyName.size());
        font.setPixelSize(count >= 3 ? 46 : count == 2 ? 64 : 96);
        p.setFont(font);
        p.setPen(vermilion);
        const qreal line = font.pixelSize() * 1.05;
        qreal y = 100 - line * count / 2;
        for (const QChar c : familyName) {
            p.drawText(QRectF(20, y, 160, line), Qt::AlignCenter, QString(c));
            y += line;
        }
    }
    p.end();
    return image.save(path, "PNG");
}

} // namespace setup
