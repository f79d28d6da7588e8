// Where a billboard's picture stands. The picture is `height` metres high
// and as wide as its pixels' aspect makes it. Its pivot point sits on the
// billboard's pivot: pivotTypeFlag 0 the picture's centre, 1 its bottom-left
// corner, any other value (the system uses 2) the middle of its bottom edge.
// A billboard that is not static faces the viewer (its axes are the
// screen's); a static one stands upright, turned to face a viewer looking
// along the azimuth rotationStatic[1] (degrees from north, clockwise), as the
// camera looked when it was made. The stem runs from position to pivot.
#pragma once

#include "scene/engine/CameraMath.h"

namespace render {

struct BillboardQuad {
    // Engine frame: bottom-left, bottom-right, top-right, top-left as seen
    // from the front; texture rows run from the top edge down.
    double corners[4][3];
};

// False for a billboard without picture or height.
bool billboardQuad(const BILLBOARD_DATA& data, const engine::ViewFrame& view, BillboardQuad& quad);

}  // namespace render
