// A generated city as the one layer "city" of a fresh engine scene, centred:
// the scene the shading and report benchmarks cast their rays into.
#pragma once

#include <array>
#include <utility>

#include "gen/CityGenerator.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"

// Takes the mesh's positions and triangles; returns the centre that was taken off.
inline std::array<double, 3> LoadCityScene(benchgen::CityMesh& mesh) {
    engine::resetEngineState();
    At3d_Start();
    engine::Layer layer;
    layer.name = "city";
    layer.positions = std::move(mesh.positions);
    layer.triangles = std::move(mesh.triangles);
    engine::engineState().layers.push_back(std::move(layer));
    std::array<double, 3> centre{};
    At3d_GetObjectCenter(centre.data());
    At3d_SetObject_XYZCenter();
    return centre;
}
