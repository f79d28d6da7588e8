// Where the screen overlays go on a surface of a given size: the view
// decals and the status strip. Sizes in pixels, y from the top.
#pragma once

#include <QColor>
#include <QRect>
#include <QRectF>
#include <QSize>

#include "scene/engine/EngineState.h"

namespace render {

// A decal is size percent of the surface's width wide, with its picture's
// aspect. "Top_Left" and "Top_Right" keep a margin of 1% of the width from
// the top and that side; "Anywhere" centres it on (screenX, screenY) percent
// of the width and height. An empty rectangle for an unknown type or picture.
QRectF decalRect(const engine::ViewDecal& decal, QSizeF surface, QSizeF picture);

// The status strip: the bottom `height` rows over the full width (all of the
// surface when it is lower than that); empty while the strip is not shown.
QRect statusStripRect(const engine::StatusBar& bar, QSize surface);

// Colours of the host come as 0x00BBGGRR, the toolkit's order.
QColor colourFromBgr(int bgr);

}  // namespace render
