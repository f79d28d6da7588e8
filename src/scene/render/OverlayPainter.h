// Paints the screen overlays over a drawn frame: the view decals (while
// LIBFLAG_DECALS is on) and the status strip. The same code serves the
// window and the thumbnails, so both show the same picture.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSize>
#include <map>
#include <string>

#include "scene/engine/EngineState.h"

namespace render {

// Decal pictures read once per path (found whatever the case of the name).
class DecalPictures {
public:
    const QImage& picture(const std::string& path);

private:
    std::map<std::string, QImage> pictures_;
};

// A decal turns about its centre by rotateAngle degrees, anticlockwise, so
// a north arrow given the view's azimuth points north.
void paintOverlays(QPainter& painter, QSize surface, const engine::EngineState& state, DecalPictures& pictures);

}  // namespace render
