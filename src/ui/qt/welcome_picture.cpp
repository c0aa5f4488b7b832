#include "ui/qt/welcome_picture.h"

#include <QBuffer>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {
constexpr int kWidth = 240;
constexpr int kHeight = 320;

// A card sliding into a chip and PIN terminal over a dusk-blue gradient.
QImage drawArtwork() {
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QPainter paint(&image);
    paint.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, kHeight);
    sky.setColorAt(0.0, QColor(18, 52, 96));
    sky.setColorAt(1.0, QColor(58, 138, 168));
    paint.fillRect(image.rect(), sky);

    // The terminal.
    paint.setPen(Qt::NoPen);
    paint.setBrush(QColor(40, 40, 48));
    paint.drawRoundedRect(QRectF(60, 120, 120, 170), 16, 16);
    paint.setBrush(QColor(150, 210, 170));
    paint.drawRoundedRect(QRectF(74, 134, 92, 44), 4, 4);
    paint.setBrush(QColor(210, 210, 215));
    for (int row = 0; row < 4; ++row) {
        for (int col = 0; col < 3; ++col) {
            paint.drawRoundedRect(QRectF(78 + col * 30, 190 + row * 22, 24, 16), 3, 3);
        }
    }

    // The card, tilted as it goes in.
    paint.save();
    paint.translate(120, 90);
    paint.rotate(-12);
    paint.setBrush(QColor(236, 176, 48));
    paint.drawRoundedRect(QRectF(-70, -42, 140, 84), 8, 8);
    paint.setBrush(QColor(250, 226, 140));
    paint.drawRoundedRect(QRectF(-50, -14, 26, 20), 3, 3);
    paint.setBrush(QColor(120, 80, 20));
    paint.drawRect(QRectF(-70, 18, 140, 8));
    paint.restore();

    // The wing of the moth the product is named after, as a watermark.
    QPainterPath wing;
    wing.moveTo(200, 40);
    wing.cubicTo(240, 0, 240, 70, 205, 70);
    wing.cubicTo(240, 80, 220, 110, 200, 80);
    wing.closeSubpath();
    paint.setBrush(QColor(255, 255, 255, 70));
    paint.drawPath(wing);
    paint.end();
    return image;
}
} // namespace

QByteArray welcomeJpeg() {
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    drawArtwork().save(&buffer, "JPEG", 90);
    return jpeg;
}

QPixmap welcomePicture() {
    QPixmap picture;
    picture.loadFromData(welcomeJpeg(), "JPEG");
    return picture;
}
