// What a layer sends to the graphics card: float vertices in the drawing
// frame relative to an origin of its own, chosen and subtracted in double.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "scene/engine/Layer.h"

namespace render {

struct LayerVertices {
    double origin[3] = {0, 0, 0};      // engine frame: centre of the layer's bounds
    double minMax[6] = {0, 0, 0, 0, 0, 0};  // engine frame, over triangles and lines
    bool hasBounds = false;
    bool textured = false;             // u v follow each position
    int floatsPerVertex = 3;           // 3, or 5 when textured
    std::vector<float> vertices;       // x y z (drawing frame, from origin) [u v]
    std::vector<float> lineVertices;   // x y z, drawing frame, from origin
    bool trianglesValid = true;        // every index names an existing vertex
    bool linesValid = true;
};

LayerVertices buildLayerVertices(const engine::Layer& layer);

// True when every index is below vertexCount.
bool indicesInRange(const std::vector<std::uint32_t>& indices, std::size_t vertexCount);

}  // namespace render
