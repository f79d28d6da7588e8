#pragma once
// The three buildings of the demo site.

#include "Mesh.h"
#include "Terrain.h"

namespace sitegen {

struct BuildingLevels {
    double padZ = 0;   // levelled ground around the building
    double floorZ = 0; // ground floor level
    double roofZ = 0;  // eaves (house), roof surface (flat roof) or roof top (block)
    double topZ = 0;   // highest point: ridge, parapet top, or roof top
};

// Groups "house_walls" and "house_roof".
BuildingLevels buildHouse(Mesh& mesh, const TerrainModel& terrain);
// Group "flatroof_building" (walls, parapet, gravel roof).
BuildingLevels buildFlatRoofBuilding(Mesh& mesh, const TerrainModel& terrain);
// Group "tall_block".
BuildingLevels buildTallBlock(Mesh& mesh, const TerrainModel& terrain);

} // namespace sitegen
