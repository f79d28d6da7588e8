#include "AtlasLayout.h"

#include <algorithm>
#include <stdexcept>

namespace sitegen {

const AtlasRegion& atlasRegion(Surface surface)
{
    // Every region keeps square texels except the bark strip.
    static const AtlasRegion terrain{0, 0, 1024, 1024, 120.0, 120.0};
    static const AtlasRegion facade{0, 1024, 1024, 1024, 24.0, 24.0};
    static const AtlasRegion plaster{1024, 0, 1024, 576, 16.0, 9.0};
    static const AtlasRegion roofTiles{1024, 576, 1024, 512, 12.0, 6.0};
    static const AtlasRegion gravel{1024, 1088, 512, 512, 16.0, 16.0};
    static const AtlasRegion concrete{1536, 1088, 512, 256, 16.0, 8.0};
    static const AtlasRegion bark{1536, 1344, 256, 256, 2.0, 4.0};
    static const AtlasRegion spare{1792, 1344, 256, 256, 4.0, 4.0};
    static const AtlasRegion canopy{1024, 1600, 512, 448, 8.0, 7.0};
    static const AtlasRegion bitumen{1536, 1600, 512, 448, 16.0, 14.0};
    switch (surface) {
    case Surface::Terrain: return terrain;
    case Surface::Facade: return facade;
    case Surface::Plaster: return plaster;
    case Surface::RoofTiles: return roofTiles;
    case Surface::Gravel: return gravel;
    case Surface::Concrete: return concrete;
    case Surface::Bark: return bark;
    case Surface::Spare: return spare;
    case Surface::Canopy: return canopy;
    case Surface::Bitumen: return bitumen;
    }
    throw std::invalid_argument("unknown surface");
}

Vec2 atlasUv(Surface surface, double s, double t)
{
    const AtlasRegion& r = atlasRegion(surface);
    constexpr double inset = 2.0;
    const double px = std::clamp(r.x + s / r.metresWide * r.width, r.x + inset, r.x + r.width - inset);
    const double py = std::clamp(r.y + (1.0 - t / r.metresHigh) * r.height, r.y + inset,
                                 r.y + r.height - inset);
    // OBJ texture v runs upwards from the bottom row of the image.
    return {px / kAtlasSize, 1.0 - py / kAtlasSize};
}

} // namespace sitegen
