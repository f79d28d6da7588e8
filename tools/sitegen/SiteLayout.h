#pragma once
// Placement of everything on the demo site, in file coordinates:
// x east, y north, z up, metres.

namespace sitegen {

constexpr unsigned kSiteSeed = 20240611u;

struct Rect {
    double x0, y0, x1, y1;
    double width() const { return x1 - x0; }
    double depth() const { return y1 - y0; }
    double centreX() const { return 0.5 * (x0 + x1); }
    double centreY() const { return 0.5 * (y0 + y1); }
};

// Terrain: a square grid centred on the origin.
constexpr double kSiteHalfExtent = 60.0;
constexpr double kTerrainCell = 2.0;

// Buildings stand on levelled pads; the floor is kFloorAbovePad above the
// pad and the walls start kWallBaseBelowFloor below the floor (in the soil).
constexpr double kFloorAbovePad = 0.2;
constexpr double kWallBaseBelowFloor = 0.6;

// House with a pitched roof whose ridge runs east-west.
constexpr Rect kHouse{-25.0, 6.0, -15.0, 14.0};
constexpr double kHouseEavesAboveFloor = 3.0;
constexpr double kHouseRoofPitchDegrees = 30.0;
constexpr double kHouseRoofOverhang = 0.35;
constexpr double kHouseRoofThickness = 0.15;

// Two-storey building with a flat gravel roof inside a parapet.
constexpr Rect kFlatBuilding{8.0, -10.0, 22.0, 0.0};
constexpr double kFlatRoofAboveFloor = 7.0;
constexpr double kParapetHeight = 1.0;
constexpr double kParapetThickness = 0.25;

// Taller block south-east of the flat-roof building.
constexpr Rect kTallBlock{30.0, -26.0, 44.0, -14.0};
constexpr double kTallBlockRoofAboveFloor = 22.0;

struct TreeSpec {
    const char* group;
    double x, y;
    double trunkRadius;
    double canopyCentreAboveGround;
    double canopyRadius;     // horizontal
    double canopyHalfHeight; // vertical
};
constexpr TreeSpec kTrees[] = {
    {"tree_1", -28.5, 1.5, 0.16, 5.2, 2.6, 2.9},
    {"tree_2", -11.0, 0.5, 0.20, 6.0, 3.0, 3.2},
};

// Ground features painted on the terrain texture.
constexpr Rect kRoad{-60.0, -42.0, 60.0, -35.0};
constexpr Rect kFootPath{-21.0, -35.0, -19.0, 6.0};
constexpr Rect kPlaza{4.0, -30.0, 48.0, 4.0};

} // namespace sitegen
