// One layer of the scene: a named mesh (and/or line geometry) with its look.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace engine {

struct Layer {
    std::string name;
    // Vertex positions, x y z per vertex, in the interface's axes (east,
    // north, up for a geo-referenced model). Kept in double so that map
    // coordinates of seven digits survive until the centre is subtracted.
    std::vector<double> positions;
    std::vector<float> texCoords;          // u v per vertex; empty when untextured
    std::vector<float> normals;            // x y z per vertex; empty until computed
    std::vector<std::uint32_t> triangles;  // three vertex indices per face
    // Line geometry ("2D vertices"): x y z per vertex, and index pairs.
    std::vector<double> lineVertices;
    std::vector<std::uint32_t> lineSegments;
    std::string texturePath;               // resolved path of the image, "" for none
    float diffuse[3] = {0.8f, 0.8f, 0.8f};
    bool outputFlag = true;                // drawn, written and hit-tested
    bool gpuUpdate = true;                 // the renderer must upload it again

    std::size_t vertexCount() const { return positions.size() / 3; }
    std::size_t faceCount() const { return triangles.size() / 3; }
    std::size_t lineVertexCount() const { return lineVertices.size() / 3; }
};

}  // namespace engine
