#pragma once
// Ground surface: a gentle slope with noise, levelled under the buildings.

#include "Mesh.h"
#include "Random.h"
#include "SiteLayout.h"

namespace sitegen {

class TerrainModel {
public:
    TerrainModel();

    // Ground height (file z) at a point, pads included.
    double height(double x, double y) const;
    // Level of the pad a building footprint stands on.
    double padHeight(const Rect& footprint) const;

private:
    double natural(double x, double y) const;

    ValueNoise noise_;
};

// Adds group "terrain": a grid of kTerrainCell cells over the site.
void buildTerrain(Mesh& mesh, const TerrainModel& terrain);

} // namespace sitegen
