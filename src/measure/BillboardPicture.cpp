#include "BillboardPicture.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>

namespace {

// Colour bytes of a pixel drawn as white and as black by the canvas.
constexpr int WHITE_ABOVE = 240;
constexpr int BLACK_AT_MOST = 32;

}  // namespace

void BillboardPixelsFromImage(const QImage& source, BillboardPicture& picture) {
    const QImage image = source.convertToFormat(QImage::Format_RGB32);
    picture.width = image.width();
    picture.height = image.height();
    picture.rgba.assign(std::size_t(picture.width) * std::size_t(picture.height) * 4, 0);
    picture.transparentPixels = picture.blackPixels = 0;
    UInt8* out = picture.rgba.data();
    for (int y = 0; y < picture.height; ++y) {
        const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < picture.width; ++x, out += 4) {
            const int r = qRed(row[x]), g = qGreen(row[x]), b = qBlue(row[x]);
            const bool white = r > WHITE_ABOVE && g > WHITE_ABOVE && b > WHITE_ABOVE;
            if (white) ++picture.transparentPixels;
            if (r <= BLACK_AT_MOST && g <= BLACK_AT_MOST && b <= BLACK_AT_MOST) ++picture.blackPixels;
            out[0] = UInt8(r);
            out[1] = UInt8(g);
            out[2] = UInt8(b);
            out[3] = white ? 0 : 255;
        }
    }
}

bool RenderBillboardPicture(const QString& text, const QColor& color, const QImage* icon, int fontPixels,
                            BillboardPicture& picture) {
    const bool withIcon = icon && !icon->isNull();
    if (text.isEmpty() && !withIcon) return false;
    // Fonts live in a GUI application; a command run without one draws no text.
    if (!text.isEmpty() && !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return false;
    QFont font(BILLBOARD_FONT_FAMILY);
    font.setPixelSize(std::max(1, fontPixels));
    font.setBold(true);
    // Smoothed edges would blend into the white that is cut away and leave a pale halo.
    font.setStyleStrategy(QFont::NoAntialias);
    const QFontMetrics metrics(font);
    const int textWidth = text.isEmpty() ? 0 : metrics.horizontalAdvance(text);
    const int textHeight = text.isEmpty() ? 0 : metrics.height();
    const int width = std::max(textWidth, withIcon ? icon->width() : 0);
    const int height = textHeight + (withIcon ? icon->height() : 0);
    if (width <= 0 || height <= 0) return false;

    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(color);
    if (!text.isEmpty()) painter.drawText(QRect(0, 0, textWidth, textHeight), Qt::AlignLeft | Qt::AlignTop, text);
    if (withIcon) painter.drawImage(0, textHeight, *icon);
    painter.end();
    BillboardPixelsFromImage(image, picture);
    return true;
}
