#pragma once
// Large synthetic city sites for benchmarks: a terrain grid with thousands of
// box buildings, written as OBJ (streamed) or built in memory by the same code.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace benchgen {

struct CityOptions {
    std::size_t targetTriangles = 1'000'000;
    unsigned seed = 7;
    double originX = 178000.0, originY = 663000.0; // south-west corner, map metres
    bool withTexCoords = true;
};

struct CityInfo {
    std::size_t vertices = 0, texCoords = 0, triangles = 0;
    // Points 0.3 m above the centres of flat roofs, in file coordinates, in a
    // shuffled order spread over the whole city: take the first N.
    std::vector<std::array<double, 3>> roofPoints;
    // minX, minY, minZ, maxX, maxY, maxZ of all vertices.
    double minMax[6] = {0, 0, 0, 0, 0, 0};
};

// Writes an OBJ (v, vt, f v/vt; or f v without texture coordinates) of a
// terrain grid with box buildings (10 triangles each: 4 walls and a flat roof),
// within 2% of options.targetTriangles triangles. Coordinates are map
// coordinates printed "%.3f", texture coordinates "%.6f". With a texture path
// it also writes the .mtl next to the OBJ (same name) and references it.
// The text is streamed through a buffered writer, never held whole.
// Throws std::runtime_error when the file cannot be written.
CityInfo writeCityObj(const std::string& objPath, const CityOptions& options,
                      const std::string& texturePathOrEmpty = "");

// Writes a size x size JPEG with a procedural city-block pattern.
bool writeTextureJpeg(const std::string& path, int size, unsigned seed);

// The same city in memory: positions (x y z per vertex, equal to the values
// the OBJ prints) and triangles (3 vertex indices each, counter-clockwise
// seen from outside).
struct CityMesh {
    std::vector<double> positions;
    std::vector<std::uint32_t> triangles;
    std::vector<std::array<double, 3>> roofPoints;
};
CityMesh makeCityMesh(const CityOptions& options);

} // namespace benchgen
