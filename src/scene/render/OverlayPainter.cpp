#include "OverlayPainter.h"

#include <QFont>
#include <QString>

#include "OverlayLayout.h"
#include "scene/FileNameCase.h"

namespace render {

namespace {

constexpr int kStripTextIndent = 6;
// The strip lets the scene show through a little and keeps any text colour readable.
const QColor kStripBackground(255, 255, 255, 170);

void paintDecal(QPainter& painter, QSize surface, const engine::ViewDecal& decal, const QImage& image) {
    const QRectF rect = decalRect(decal, QSizeF(surface), QSizeF(image.size()));
    if (rect.isEmpty()) return;
    painter.save();
    painter.translate(rect.center());
    painter.rotate(-double(decal.rotateAngle));
    const QRectF local(-rect.width() / 2, -rect.height() / 2, rect.width(), rect.height());
    painter.drawImage(local, image);
    if (decal.useFrame) {
        painter.setPen(QPen(Qt::black, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(local);
    }
    painter.restore();
}

void paintStatusStrip(QPainter& painter, QSize surface, const engine::StatusBar& bar) {
    const QRect strip = statusStripRect(bar, surface);
    if (strip.isEmpty()) return;
    painter.fillRect(strip, kStripBackground);
    QFont font = painter.font();
    font.setPointSize(bar.fontSize);
    painter.setFont(font);
    painter.setPen(colourFromBgr(bar.fontColor));
    painter.drawText(strip.adjusted(kStripTextIndent, 0, -kStripTextIndent, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     QString::fromLocal8Bit(bar.text.c_str()));
}

}  // namespace

const QImage& DecalPictures::picture(const std::string& path) {
    auto it = pictures_.find(path);
    if (it == pictures_.end()) {
        const std::string found = FindFileNoCase(path);
        QImage image;
        if (!found.empty()) image.load(QString::fromStdString(found));
        it = pictures_.emplace(path, image).first;
    }
    return it->second;
}

void paintOverlays(QPainter& painter, QSize surface, const engine::EngineState& state, DecalPictures& pictures) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    if (state.flags[LIBFLAG_DECALS] != 0)
        for (const engine::ViewDecal& decal : state.decals)
            if (decal.visible && !decal.path.empty()) paintDecal(painter, surface, decal, pictures.picture(decal.path));
    paintStatusStrip(painter, surface, state.statusBar);
}

}  // namespace render
