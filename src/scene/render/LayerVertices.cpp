#include "LayerVertices.h"

#include <algorithm>
#include <limits>

#include "DrawingFrame.h"

namespace render {

namespace {

void growBounds(const std::vector<double>& xyz, double lo[3], double hi[3]) {
    const std::size_t n = xyz.size() / 3;
    for (std::size_t v = 0; v < n; ++v)
        for (int i = 0; i < 3; ++i) {
            const double c = xyz[v * 3 + std::size_t(i)];
            lo[i] = std::min(lo[i], c);
            hi[i] = std::max(hi[i], c);
        }
}

// Positions minus origin in double, then turned into the drawing frame; the
// float only ever holds the short remainder.
void appendRelative(const double* xyz, const double origin[3], std::vector<float>& out) {
    const double shifted[3] = {xyz[0] - origin[0], xyz[1] - origin[1], xyz[2] - origin[2]};
    double drawn[3];
    toDrawing(shifted, drawn);
    out.push_back(float(drawn[0]));
    out.push_back(float(drawn[1]));
    out.push_back(float(drawn[2]));
}

}  // namespace

bool indicesInRange(const std::vector<std::uint32_t>& indices, std::size_t vertexCount) {
    return std::all_of(indices.begin(), indices.end(),
                       [vertexCount](std::uint32_t index) { return std::size_t(index) < vertexCount; });
}

LayerVertices buildLayerVertices(const engine::Layer& layer) {
    LayerVertices out;
    double lo[3], hi[3];
    for (int i = 0; i < 3; ++i) {
        lo[i] = std::numeric_limits<double>::infinity();
        hi[i] = -std::numeric_limits<double>::infinity();
    }
    growBounds(layer.positions, lo, hi);
    growBounds(layer.lineVertices, lo, hi);
    out.hasBounds = layer.vertexCount() + layer.lineVertexCount() > 0;
    if (out.hasBounds)
        for (int i = 0; i < 3; ++i) {
            out.origin[i] = 0.5 * (lo[i] + hi[i]);
            out.minMax[2 * i] = lo[i];
            out.minMax[2 * i + 1] = hi[i];
        }

    const std::size_t count = layer.vertexCount();
    out.textured = count > 0 && layer.texCoords.size() == count * 2;
    out.floatsPerVertex = out.textured ? 5 : 3;
    out.vertices.reserve(count * std::size_t(out.floatsPerVertex));
    for (std::size_t v = 0; v < count; ++v) {
        appendRelative(&layer.positions[v * 3], out.origin, out.vertices);
        if (out.textured) {
            out.vertices.push_back(layer.texCoords[v * 2]);
            out.vertices.push_back(layer.texCoords[v * 2 + 1]);
        }
    }
    const std::size_t lineCount = layer.lineVertexCount();
    out.lineVertices.reserve(lineCount * 3);
    for (std::size_t v = 0; v < lineCount; ++v) appendRelative(&layer.lineVertices[v * 3], out.origin, out.lineVertices);

    out.trianglesValid = layer.triangles.size() % 3 == 0 && indicesInRange(layer.triangles, count);
    out.linesValid = layer.lineSegments.size() % 2 == 0 && indicesInRange(layer.lineSegments, lineCount);
    return out;
}

}  // namespace render
