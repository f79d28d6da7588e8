#pragma once
// Triangle mesh in named groups, with one texture coordinate per vertex,
// and helpers that add tessellated patches facing a chosen side.

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace sitegen {

struct Vec3 {
    double x = 0, y = 0, z = 0;
};
inline Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator*(Vec3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline double dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(Vec3 a, Vec3 b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

struct Vec2 {
    double u = 0, v = 0;
};

using UvMapping = std::function<Vec2(const Vec3&)>;

class Mesh {
public:
    struct Group {
        std::string name;
        std::vector<std::array<std::uint32_t, 3>> triangles;
    };

    void beginGroup(const std::string& name);
    std::uint32_t addVertex(const Vec3& position, const Vec2& uv);
    // Adds the triangle so that it is counter-clockwise seen from the side
    // `outward` points to (its normal then points along `outward`).
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c, const Vec3& outward);

    const std::vector<Vec3>& positions() const { return positions_; }
    const std::vector<Vec2>& texCoords() const { return texCoords_; }
    const std::vector<Group>& groups() const { return groups_; }
    std::size_t triangleCount() const;

private:
    std::vector<Vec3> positions_;
    std::vector<Vec2> texCoords_;
    std::vector<Group> groups_;
};

// Parallelogram origin + s*edgeU + t*edgeV (s, t in [0, 1]) split into
// cellsU x cellsV cells of two triangles each, facing `outward`.
void addPatch(Mesh& mesh, const Vec3& origin, const Vec3& edgeU, const Vec3& edgeV,
              int cellsU, int cellsV, const Vec3& outward, const UvMapping& uvOf);

// Triangle a-b-c split into divisions^2 triangles, facing `outward`.
void addTrianglePatch(Mesh& mesh, const Vec3& a, const Vec3& b, const Vec3& c, int divisions,
                      const Vec3& outward, const UvMapping& uvOf);

// Number of cells of at most `cellSize` covering `length` (at least one).
int cellsFor(double length, double cellSize);

} // namespace sitegen
