// Small scenes for engine tests, pushed straight into the engine's state.
#pragma once

#include <string>

#include "scene/engine/Layer.h"

namespace testsupport {

// A horizontal rectangle over [x0, x1] x [y0, y1] at height z, two triangles facing up,
// UV (0, 0) at its south-west corner.
engine::Layer makeRectangle(const std::string& name, double x0, double y0, double x1, double y1, double z);
// A horizontal square of side `size` centred on (cx, cy) at height z: makeRectangle around it.
engine::Layer makeSquare(const std::string& name, double cx, double cy, double z, double size);
// A vertical wall across the x axis: x fixed, y from y0 to y1, z from z0 to z1.
engine::Layer makeWallX(const std::string& name, double x, double y0, double y1, double z0, double z1);
// Replaces the engine's layers by `layer` (appended when keep is true) and marks the index stale.
void addLayer(const engine::Layer& layer);

}  // namespace testsupport
