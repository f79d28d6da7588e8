#include "OverlayLayout.h"

#include <algorithm>

namespace render {

namespace {

constexpr double kMarginPercent = 1.0;

}  // namespace

QRectF decalRect(const engine::ViewDecal& decal, QSizeF surface, QSizeF picture) {
    if (picture.width() <= 0 || picture.height() <= 0 || surface.width() <= 0 || surface.height() <= 0) return {};
    const double width = surface.width() * double(decal.size) / 100.0;
    const double height = width * picture.height() / picture.width();
    const double margin = surface.width() * kMarginPercent / 100.0;
    if (decal.typeName == "Top_Left") return QRectF(margin, margin, width, height);
    if (decal.typeName == "Top_Right") return QRectF(surface.width() - margin - width, margin, width, height);
    if (decal.typeName == "Anywhere") {
        const double cx = surface.width() * double(decal.screenX) / 100.0;
        const double cy = surface.height() * double(decal.screenY) / 100.0;
        return QRectF(cx - width / 2, cy - height / 2, width, height);
    }
    return {};
}

QRect statusStripRect(const engine::StatusBar& bar, QSize surface) {
    if (!bar.shown || bar.height <= 0 || surface.isEmpty()) return {};
    const int height = std::min(bar.height, surface.height());
    return QRect(0, surface.height() - height, surface.width(), height);
}

QColor colourFromBgr(int bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

}  // namespace render
