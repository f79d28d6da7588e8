#include "support/SceneBuilders.h"

#include "scene/engine/EngineState.h"

namespace testsupport {

engine::Layer makeRectangle(const std::string& name, double x0, double y0, double x1, double y1, double z) {
    engine::Layer layer;
    layer.name = name;
    layer.positions = {x0, y0, z, x1, y0, z, x1, y1, z, x0, y1, z};
    layer.texCoords = {0, 0, 1, 0, 1, 1, 0, 1};
    layer.triangles = {0, 1, 2, 0, 2, 3};
    return layer;
}

engine::Layer makeSquare(const std::string& name, double cx, double cy, double z, double size) {
    const double h = size / 2;
    return makeRectangle(name, cx - h, cy - h, cx + h, cy + h, z);
}

engine::Layer makeWallX(const std::string& name, double x, double y0, double y1, double z0, double z1) {
    engine::Layer layer;
    layer.name = name;
    layer.positions = {x, y0, z0, x, y1, z0, x, y1, z1, x, y0, z1};
    layer.triangles = {0, 1, 2, 0, 2, 3};
    return layer;
}

void addLayer(const engine::Layer& layer) {
    engine::engineState().layers.push_back(layer);
    engine::invalidateHitIndex();
}

}  // namespace testsupport
