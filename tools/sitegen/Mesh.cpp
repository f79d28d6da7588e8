#include "Mesh.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace sitegen {

void Mesh::beginGroup(const std::string& name)
{
    groups_.push_back(Group{name, {}});
}

std::uint32_t Mesh::addVertex(const Vec3& position, const Vec2& uv)
{
    positions_.push_back(position);
    texCoords_.push_back(uv);
    return std::uint32_t(positions_.size() - 1);
}

void Mesh::addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c, const Vec3& outward)
{
    if (groups_.empty())
        throw std::logic_error("triangle added before any group");
    const Vec3 normal = cross(positions_[b] - positions_[a], positions_[c] - positions_[a]);
    if (dot(normal, outward) < 0.0)
        std::swap(b, c);
    groups_.back().triangles.push_back({a, b, c});
}

std::size_t Mesh::triangleCount() const
{
    std::size_t count = 0;
    for (const Group& group : groups_)
        count += group.triangles.size();
    return count;
}

void addPatch(Mesh& mesh, const Vec3& origin, const Vec3& edgeU, const Vec3& edgeV,
              int cellsU, int cellsV, const Vec3& outward, const UvMapping& uvOf)
{
    std::vector<std::uint32_t> index(std::size_t(cellsU + 1) * std::size_t(cellsV + 1));
    for (int j = 0; j <= cellsV; ++j) {
        for (int i = 0; i <= cellsU; ++i) {
            const Vec3 p = origin + edgeU * (double(i) / cellsU) + edgeV * (double(j) / cellsV);
            index[std::size_t(j) * (cellsU + 1) + i] = mesh.addVertex(p, uvOf(p));
        }
    }
    const auto at = [&](int i, int j) { return index[std::size_t(j) * (cellsU + 1) + i]; };
    for (int j = 0; j < cellsV; ++j) {
        for (int i = 0; i < cellsU; ++i) {
            mesh.addTriangle(at(i, j), at(i + 1, j), at(i + 1, j + 1), outward);
            mesh.addTriangle(at(i, j), at(i + 1, j + 1), at(i, j + 1), outward);
        }
    }
}

void addTrianglePatch(Mesh& mesh, const Vec3& a, const Vec3& b, const Vec3& c, int divisions,
                      const Vec3& outward, const UvMapping& uvOf)
{
    // Row r (0 at edge a-b) holds divisions - r + 1 points.
    std::vector<std::vector<std::uint32_t>> rows(std::size_t(divisions) + 1);
    for (int r = 0; r <= divisions; ++r) {
        const double wc = double(r) / divisions;
        for (int k = 0; k <= divisions - r; ++k) {
            const double wb = double(k) / divisions;
            const Vec3 p = a + (b - a) * wb + (c - a) * wc;
            rows[r].push_back(mesh.addVertex(p, uvOf(p)));
        }
    }
    for (int r = 0; r < divisions; ++r) {
        for (int k = 0; k < divisions - r; ++k) {
            mesh.addTriangle(rows[r][k], rows[r][k + 1], rows[r + 1][k], outward);
            if (k + 1 < divisions - r)
                mesh.addTriangle(rows[r][k + 1], rows[r + 1][k + 1], rows[r + 1][k], outward);
        }
    }
}

int cellsFor(double length, double cellSize)
{
    return std::max(1, int(std::ceil(length / cellSize - 1e-9)));
}

} // namespace sitegen
