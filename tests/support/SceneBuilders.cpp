#include "support/SceneBuilders.h"

#include "scene/engine/EngineState.h"

namespace testsupport {

engine::Layer makeSquare(const std::string& name, double cx, double cy, double z, double size) {
    engine::Layer layer;
    layer.name = name;
    const double h = size / 2;
    layer.positions = {cx - h, cy - h, z, cx + h, cy - h, z, cx + h, cy + h, z, cx - h, cy + h, z};
    layer.texCoords = {0, 0, 1, 0, 1, 1, 0, 1};
    layer.triangles = {0, 1, 2, 0, 2, 3};
    return layer;
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
