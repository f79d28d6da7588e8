#include "Buildings.h"

#include "AtlasLayout.h"

#include <cmath>
#include <numbers>

namespace sitegen {
namespace {

constexpr double kWallCell = 0.5;
constexpr double kRoofCell = 0.25;

// Vertical wall from a to b (both at the wall base z), `height` tall,
// facing `outward`; texture s runs along the wall from sOffset, t is the
// height above the base plus tOffset.
void addWall(Mesh& mesh, const Vec3& a, const Vec3& b, double height, const Vec3& outward,
             Surface surface, double sOffset, double tOffset, double cell)
{
    const Vec3 along = b - a;
    const double length = std::hypot(along.x, along.y);
    const double baseZ = a.z;
    const UvMapping uv = [=](const Vec3& p) {
        return atlasUv(surface, sOffset + std::hypot(p.x - a.x, p.y - a.y), p.z - baseZ + tOffset);
    };
    addPatch(mesh, a, along, {0, 0, height}, cellsFor(length, cell), cellsFor(height, cell), outward, uv);
}

// Outward direction of the edge a->b of a footprint walked counter-clockwise.
Vec3 outwardOf(const Vec3& a, const Vec3& b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double n = std::hypot(dx, dy);
    return {dy / n, -dx / n, 0};
}

// Four walls of a rectangular footprint, counter-clockwise from the south-west
// corner: south, east, north, west. sOffsets are per wall.
void addBoxWalls(Mesh& mesh, const Rect& r, double baseZ, double height, Surface surface,
                 const double (&sOffsets)[4], double cell)
{
    const Vec3 corners[4] = {{r.x0, r.y0, baseZ}, {r.x1, r.y0, baseZ}, {r.x1, r.y1, baseZ}, {r.x0, r.y1, baseZ}};
    for (int k = 0; k < 4; ++k) {
        const Vec3& a = corners[k];
        const Vec3& b = corners[(k + 1) % 4];
        addWall(mesh, a, b, height, outwardOf(a, b), surface, sOffsets[k], 0.0, cell);
    }
}

BuildingLevels levelsFor(const TerrainModel& terrain, const Rect& footprint)
{
    BuildingLevels levels;
    levels.padZ = terrain.padHeight(footprint);
    levels.floorZ = levels.padZ + kFloorAbovePad;
    return levels;
}

} // namespace

BuildingLevels buildHouse(Mesh& mesh, const TerrainModel& terrain)
{
    const Rect& r = kHouse;
    BuildingLevels levels = levelsFor(terrain, r);
    const double baseZ = levels.floorZ - kWallBaseBelowFloor;
    const double pitch = kHouseRoofPitchDegrees * std::numbers::pi / 180.0;
    const double tanPitch = std::tan(pitch);
    const double halfDepth = 0.5 * r.depth();
    const double ridgeY = r.centreY();
    const double eavesZ = levels.floorZ + kHouseEavesAboveFloor;
    const double ridgeZ = eavesZ + halfDepth * tanPitch;
    levels.roofZ = eavesZ;
    levels.topZ = ridgeZ;

    // Walls: the plaster window pattern repeats every 3 m; the offsets centre
    // it on each wall. Gable triangles use plaster above the window rows.
    mesh.beginGroup("house_walls");
    const double wallHeight = eavesZ - baseZ;
    addBoxWalls(mesh, r, baseZ, wallHeight, Surface::Plaster, {2.5, 2.0, 2.5, 2.0}, kWallCell);
    for (const bool east : {false, true}) {
        const double x = east ? r.x1 : r.x0;
        const double y0 = east ? r.y0 : r.y1; // wall start, counter-clockwise
        const Vec3 outward{east ? 1.0 : -1.0, 0, 0};
        const UvMapping uv = [=](const Vec3& p) {
            return atlasUv(Surface::Plaster, 2.0 + std::abs(p.y - y0), p.z - baseZ + 3.0);
        };
        addTrianglePatch(mesh, {x, r.y0, eavesZ}, {x, r.y1, eavesZ}, {x, ridgeY, ridgeZ}, 8, outward, uv);
    }

    // Roof: a slab with tiles on the two top planes.
    mesh.beginGroup("house_roof");
    const double o = kHouseRoofOverhang;
    const double th = kHouseRoofThickness;
    const double xa = r.x0 - o, xb = r.x1 + o;
    const double run = halfDepth + o;
    const double eaveZ = eavesZ - o * tanPitch;
    const double slopeLength = run / std::cos(pitch);
    const double sinP = std::sin(pitch), cosP = std::cos(pitch);
    const Vec3 spanX{xb - xa, 0, 0};
    const int cellsX = cellsFor(xb - xa, kRoofCell);
    const int cellsSlope = cellsFor(slopeLength, kRoofCell);

    const double southEaveY = r.y0 - o, northEaveY = r.y1 + o;
    const UvMapping southTiles = [=](const Vec3& p) {
        return atlasUv(Surface::RoofTiles, p.x - xa, (p.y - southEaveY) / cosP);
    };
    const UvMapping northTiles = [=](const Vec3& p) {
        return atlasUv(Surface::RoofTiles, xb - p.x, (northEaveY - p.y) / cosP);
    };
    addPatch(mesh, {xa, southEaveY, eaveZ}, spanX, {0, run, run * tanPitch}, cellsX, cellsSlope,
             {0, -sinP, cosP}, southTiles);
    addPatch(mesh, {xa, northEaveY, eaveZ}, spanX, {0, -run, run * tanPitch}, cellsX, cellsSlope,
             {0, sinP, cosP}, northTiles);

    const UvMapping trim = [=](const Vec3& p) {
        return atlasUv(Surface::Concrete, p.x - xa + std::abs(p.y - southEaveY) * 0.3, p.z - eaveZ + 2.0);
    };
    // Undersides, eave fascias and gable edges close the slab.
    addPatch(mesh, {xa, southEaveY, eaveZ - th}, spanX, {0, run, run * tanPitch}, 2, 2, {0, sinP, -cosP}, trim);
    addPatch(mesh, {xa, northEaveY, eaveZ - th}, spanX, {0, -run, run * tanPitch}, 2, 2, {0, -sinP, -cosP}, trim);
    addPatch(mesh, {xa, southEaveY, eaveZ - th}, spanX, {0, 0, th}, cellsX, 1, {0, -1, 0}, trim);
    addPatch(mesh, {xa, northEaveY, eaveZ - th}, spanX, {0, 0, th}, cellsX, 1, {0, 1, 0}, trim);
    for (const double x : {xa, xb}) {
        const Vec3 outward{x == xa ? -1.0 : 1.0, 0, 0};
        addPatch(mesh, {x, southEaveY, eaveZ - th}, {0, run, run * tanPitch}, {0, 0, th}, cellsSlope, 1, outward, trim);
        addPatch(mesh, {x, northEaveY, eaveZ - th}, {0, -run, run * tanPitch}, {0, 0, th}, cellsSlope, 1, outward, trim);
    }
    return levels;
}

BuildingLevels buildFlatRoofBuilding(Mesh& mesh, const TerrainModel& terrain)
{
    const Rect& r = kFlatBuilding;
    BuildingLevels levels = levelsFor(terrain, r);
    const double baseZ = levels.floorZ - kWallBaseBelowFloor;
    const double roofZ = levels.floorZ + kFlatRoofAboveFloor;
    const double topZ = roofZ + kParapetHeight;
    levels.roofZ = roofZ;
    levels.topZ = topZ;

    mesh.beginGroup("flatroof_building");
    addBoxWalls(mesh, r, baseZ, topZ - baseZ, Surface::Plaster, {2.0, 2.5, 2.0, 2.5}, kWallCell);

    // Parapet: top strips, then the inner faces looking onto the roof.
    const double th = kParapetThickness;
    const Rect in{r.x0 + th, r.y0 + th, r.x1 - th, r.y1 - th};
    const Vec3 up{0, 0, 1};
    const auto strip = [&](const Vec3& origin, const Vec3& along, const Vec3& across) {
        const double length = std::hypot(along.x, along.y);
        const double width = std::hypot(across.x, across.y);
        const UvMapping uv = [=](const Vec3& p) {
            const Vec3 d = p - origin;
            return atlasUv(Surface::Concrete, dot(d, along) / length, dot(d, across) / width + 6.0);
        };
        addPatch(mesh, origin, along, across, cellsFor(length, kWallCell), 1, up, uv);
    };
    strip({r.x0, r.y0, topZ}, {r.width(), 0, 0}, {0, th, 0});
    strip({r.x0, in.y1, topZ}, {r.width(), 0, 0}, {0, th, 0});
    strip({r.x0, in.y0, topZ}, {0, in.depth(), 0}, {th, 0, 0});
    strip({in.x1, in.y0, topZ}, {0, in.depth(), 0}, {th, 0, 0});

    const Vec3 inner[4] = {{in.x0, in.y0, roofZ}, {in.x1, in.y0, roofZ}, {in.x1, in.y1, roofZ}, {in.x0, in.y1, roofZ}};
    for (int k = 0; k < 4; ++k) {
        const Vec3& a = inner[k];
        const Vec3& b = inner[(k + 1) % 4];
        addWall(mesh, a, b, kParapetHeight, outwardOf(a, b) * -1.0, Surface::Concrete, 0.5, 3.0, kWallCell);
    }

    const UvMapping gravel = [=](const Vec3& p) { return atlasUv(Surface::Gravel, p.x - in.x0, p.y - in.y0); };
    addPatch(mesh, inner[0], {in.width(), 0, 0}, {0, in.depth(), 0}, cellsFor(in.width(), kRoofCell),
             cellsFor(in.depth(), kRoofCell), up, gravel);
    return levels;
}

BuildingLevels buildTallBlock(Mesh& mesh, const TerrainModel& terrain)
{
    const Rect& r = kTallBlock;
    BuildingLevels levels = levelsFor(terrain, r);
    const double baseZ = levels.floorZ - kWallBaseBelowFloor;
    const double roofZ = levels.floorZ + kTallBlockRoofAboveFloor;
    levels.roofZ = roofZ;
    levels.topZ = roofZ;

    mesh.beginGroup("tall_block");
    // The facade windows repeat every 2.4 m; these offsets centre them.
    addBoxWalls(mesh, r, baseZ, roofZ - baseZ, Surface::Facade, {0.2, 0.0, 0.2, 0.0}, 1.0);
    const UvMapping bitumen = [=](const Vec3& p) { return atlasUv(Surface::Bitumen, p.x - r.x0, p.y - r.y0); };
    addPatch(mesh, {r.x0, r.y0, roofZ}, {r.width(), 0, 0}, {0, r.depth(), 0}, cellsFor(r.width(), 0.5),
             cellsFor(r.depth(), 0.5), {0, 0, 1}, bitumen);
    return levels;
}

} // namespace sitegen
