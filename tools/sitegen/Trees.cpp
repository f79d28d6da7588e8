#include "Trees.h"

#include "AtlasLayout.h"
#include "Random.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

namespace sitegen {
namespace {

Vec3 normalized(const Vec3& v)
{
    return v * (1.0 / std::sqrt(dot(v, v)));
}

struct UnitSphere {
    std::vector<Vec3> points;
    std::vector<std::array<std::uint32_t, 3>> triangles;
};

// Icosahedron split `levels` times, points on the unit sphere.
UnitSphere icosphere(int levels)
{
    const double g = (1.0 + std::sqrt(5.0)) / 2.0;
    UnitSphere s;
    for (const Vec3& p : {Vec3{-1, g, 0}, Vec3{1, g, 0}, Vec3{-1, -g, 0}, Vec3{1, -g, 0},
                          Vec3{0, -1, g}, Vec3{0, 1, g}, Vec3{0, -1, -g}, Vec3{0, 1, -g},
                          Vec3{g, 0, -1}, Vec3{g, 0, 1}, Vec3{-g, 0, -1}, Vec3{-g, 0, 1}})
        s.points.push_back(normalized(p));
    s.triangles = {{0, 11, 5}, {0, 5, 1}, {0, 1, 7}, {0, 7, 10}, {0, 10, 11},
                   {1, 5, 9}, {5, 11, 4}, {11, 10, 2}, {10, 7, 6}, {7, 1, 8},
                   {3, 9, 4}, {3, 4, 2}, {3, 2, 6}, {3, 6, 8}, {3, 8, 9},
                   {4, 9, 5}, {2, 4, 11}, {6, 2, 10}, {8, 6, 7}, {9, 8, 1}};
    for (int level = 0; level < levels; ++level) {
        std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> midpoints;
        const auto midpoint = [&](std::uint32_t a, std::uint32_t b) {
            const auto key = std::minmax(a, b);
            const auto found = midpoints.find(key);
            if (found != midpoints.end())
                return found->second;
            s.points.push_back(normalized(s.points[a] + s.points[b]));
            const auto index = std::uint32_t(s.points.size() - 1);
            midpoints.emplace(key, index);
            return index;
        };
        std::vector<std::array<std::uint32_t, 3>> finer;
        for (const auto& t : s.triangles) {
            const std::uint32_t ab = midpoint(t[0], t[1]), bc = midpoint(t[1], t[2]), ca = midpoint(t[2], t[0]);
            finer.push_back({t[0], ab, ca});
            finer.push_back({t[1], bc, ab});
            finer.push_back({t[2], ca, bc});
            finer.push_back({ab, bc, ca});
        }
        s.triangles = std::move(finer);
    }
    return s;
}

} // namespace

double buildTree(Mesh& mesh, const TerrainModel& terrain, const TreeSpec& tree, unsigned seed)
{
    mesh.beginGroup(tree.group);
    const double groundZ = terrain.height(tree.x, tree.y);
    const double bottomZ = groundZ - 0.3;
    const double centreZ = groundZ + tree.canopyCentreAboveGround;

    // Trunk: six sides from below the ground into the canopy.
    constexpr int sides = 6;
    const double trunkHeight = centreZ - bottomZ;
    const double sideWidth = 2.0 * tree.trunkRadius * std::sin(std::numbers::pi / sides);
    for (int k = 0; k < sides; ++k) {
        const double a0 = 2.0 * std::numbers::pi * k / sides;
        const double a1 = 2.0 * std::numbers::pi * (k + 1) / sides;
        const double am = 0.5 * (a0 + a1);
        const Vec3 p0{tree.x + tree.trunkRadius * std::cos(a0), tree.y + tree.trunkRadius * std::sin(a0), bottomZ};
        const Vec3 p1{tree.x + tree.trunkRadius * std::cos(a1), tree.y + tree.trunkRadius * std::sin(a1), bottomZ};
        const double s0 = k * sideWidth;
        const UvMapping bark = [=](const Vec3& p) {
            return atlasUv(Surface::Bark, s0 + std::hypot(p.x - p0.x, p.y - p0.y), (p.z - bottomZ) / trunkHeight * 3.9);
        };
        addPatch(mesh, p0, p1 - p0, {0, 0, trunkHeight}, 1, 3, {std::cos(am), std::sin(am), 0}, bark);
    }

    // Canopy: an icosphere with its radius varied by smooth noise.
    const ValueNoise noise(seed);
    const UnitSphere sphere = icosphere(2);
    const AtlasRegion& region = atlasRegion(Surface::Canopy);
    const double reach = 1.25 * tree.canopyRadius;
    const Vec3 centre{tree.x, tree.y, centreZ};
    std::vector<std::uint32_t> index;
    double topZ = centreZ;
    for (const Vec3& d : sphere.points) {
        const double lump = 1.0 + 0.36 * (noise.fbm(2.2 * d.x + 3.1 * d.z + 8.0, 2.2 * d.y - 1.7 * d.z + 8.0, 3) - 0.5);
        const double flatBottom = d.z < -0.55 ? 0.85 : 1.0;
        const Vec3 p{centre.x + d.x * tree.canopyRadius * lump, centre.y + d.y * tree.canopyRadius * lump,
                     centre.z + d.z * tree.canopyHalfHeight * lump * flatBottom};
        topZ = std::max(topZ, p.z);
        // Seen from above, like an orthophoto of the crown.
        const Vec2 uv = atlasUv(Surface::Canopy, region.metresWide * (0.5 + (p.x - centre.x) / (2.0 * reach)),
                                region.metresHigh * (0.5 + (p.y - centre.y) / (2.0 * reach)));
        index.push_back(mesh.addVertex(p, uv));
    }
    for (const auto& t : sphere.triangles) {
        const Vec3 outward = sphere.points[t[0]] + sphere.points[t[1]] + sphere.points[t[2]];
        mesh.addTriangle(index[t[0]], index[t[1]], index[t[2]], outward);
    }
    return topZ;
}

} // namespace sitegen
