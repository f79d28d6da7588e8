#pragma once
// Where each surface material lives in the single texture atlas, and the
// mapping from a surface's local metres to atlas texture coordinates.

#include "Mesh.h"

namespace sitegen {

constexpr int kAtlasSize = 2048;

enum class Surface { Terrain, Facade, Plaster, RoofTiles, Gravel, Concrete, Bark, Spare, Canopy, Bitumen };

// A rectangle of atlas pixels (top-left origin, y down) that shows a patch
// of `metresWide` x `metresHigh` of its material.
struct AtlasRegion {
    int x, y, width, height;
    double metresWide, metresHigh;
};

const AtlasRegion& atlasRegion(Surface surface);

// Texture coordinate of the point (s, t) metres inside the region of
// `surface`, s to the right and t upwards; clamped two pixels inside the
// region so filtering does not pick up the neighbours.
Vec2 atlasUv(Surface surface, double s, double t);

} // namespace sitegen
