#include "Terrain.h"

#include "AtlasLayout.h"

#include <algorithm>
#include <cmath>

namespace sitegen {
namespace {

constexpr Rect kPads[] = {kHouse, kFlatBuilding, kTallBlock};
constexpr double kPadMargin = 1.5; // levelled ground around a footprint
constexpr double kPadBlend = 6.0;  // distance over which it joins the slope

double distanceToRect(const Rect& r, double x, double y)
{
    const double dx = std::max({r.x0 - x, 0.0, x - r.x1});
    const double dy = std::max({r.y0 - y, 0.0, y - r.y1});
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace

TerrainModel::TerrainModel() : noise_(kSiteSeed + 1) {}

double TerrainModel::natural(double x, double y) const
{
    const double slope = 0.025 * y - 0.012 * x; // rises towards the north-west
    const double relief = 2.4 * (noise_.fbm(x / 28.0 + 40.0, y / 28.0 + 40.0, 4) - 0.5);
    return 44.0 + slope + relief;
}

double TerrainModel::padHeight(const Rect& footprint) const
{
    return std::round(natural(footprint.centreX(), footprint.centreY()) * 100.0) / 100.0;
}

double TerrainModel::height(double x, double y) const
{
    double z = natural(x, y);
    for (const Rect& pad : kPads) {
        const double d = std::max(0.0, distanceToRect(pad, x, y) - kPadMargin);
        const double w = smoothstep(0.0, kPadBlend, d);
        z = padHeight(pad) + (z - padHeight(pad)) * w;
    }
    return z;
}

void buildTerrain(Mesh& mesh, const TerrainModel& terrain)
{
    mesh.beginGroup("terrain");
    const int cells = int(std::lround(2.0 * kSiteHalfExtent / kTerrainCell));
    std::vector<std::uint32_t> index;
    index.reserve(std::size_t(cells + 1) * (cells + 1));
    for (int j = 0; j <= cells; ++j) {
        for (int i = 0; i <= cells; ++i) {
            const double x = -kSiteHalfExtent + i * kTerrainCell;
            const double y = -kSiteHalfExtent + j * kTerrainCell;
            index.push_back(mesh.addVertex({x, y, terrain.height(x, y)},
                                           atlasUv(Surface::Terrain, x + kSiteHalfExtent, y + kSiteHalfExtent)));
        }
    }
    const auto at = [&](int i, int j) { return index[std::size_t(j) * (cells + 1) + i]; };
    const Vec3 up{0, 0, 1};
    for (int j = 0; j < cells; ++j) {
        for (int i = 0; i < cells; ++i) {
            // Alternate the diagonal so the slope does not show a grain.
            if ((i + j) % 2 == 0) {
                mesh.addTriangle(at(i, j), at(i + 1, j), at(i + 1, j + 1), up);
                mesh.addTriangle(at(i, j), at(i + 1, j + 1), at(i, j + 1), up);
            } else {
                mesh.addTriangle(at(i, j), at(i + 1, j), at(i, j + 1), up);
                mesh.addTriangle(at(i + 1, j), at(i + 1, j + 1), at(i, j + 1), up);
            }
        }
    }
}

} // namespace sitegen
