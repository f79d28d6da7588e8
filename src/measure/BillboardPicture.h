// The picture of a billboard: its text, bold, with the icon under it when
// it has one, drawn on white; then every white pixel becomes transparent,
// which is what makes the text float without a background (and why white
// text can't be shown).
#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <vector>

#include "scene/engine_interface.h"

// The text's pixel height of a plain billboard.
constexpr int BILLBOARD_FONT_PIXELS = 48;
// Liberation Sans stands in for Arial: the metrics are the same.
inline constexpr const char* BILLBOARD_FONT_FAMILY = "Liberation Sans";

struct BillboardPicture {
    int width = 0;
    int height = 0;
    // RGBA rows from the top, 4 bytes a pixel.
    std::vector<UInt8> rgba;
    int transparentPixels = 0;
    int blackPixels = 0;
};

// A text needs a QGuiApplication for its fonts (false without one). icon may be null. The picture is as
// wide as the wider of text and icon and as high as both together; false
// when nothing is left to draw.
bool RenderBillboardPicture(const QString& text, const QColor& color, const QImage* icon, int fontPixels,
                            BillboardPicture& picture);
// The picture's pixels with the white-is-transparent rule applied.
void BillboardPixelsFromImage(const QImage& image, BillboardPicture& picture);
