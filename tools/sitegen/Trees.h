#pragma once
// Low-poly trees: a hexagonal trunk and a lumpy ellipsoid canopy.

#include "Mesh.h"
#include "SiteLayout.h"
#include "Terrain.h"

namespace sitegen {

// Adds one group named after the tree; returns the canopy top z.
double buildTree(Mesh& mesh, const TerrainModel& terrain, const TreeSpec& tree, unsigned seed);

} // namespace sitegen
