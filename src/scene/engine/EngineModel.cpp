// Reading, writing and editing the scene's layers and vertices.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "AssimpAdapter.h"
#include "CameraMath.h"
#include "EngineState.h"
#include "ObjReader.h"
#include "ObjWriter.h"
#include "TextureImage.h"

using engine::engineState;

namespace {

// Reads any supported type into `layers`; false (with a log line) otherwise.
bool readModelFile(int type, const char* path, std::vector<engine::Layer>& layers) {
    if (!path || !*path) {
        engine::engineLog("read failed: no file name");
        return false;
    }
    switch (type) {
    case AT3D_READ_OBJ:
        return engine::ReadObjFile(path, layers);
    case AT3D_READ_DAE:
    case AT3D_READ_3DS:
    case AT3D_READ_STL:
    case AT3D_READ_DXF:
    case AT3D_READ_COB:
        return engine::ReadModelWithAssimp(path, layers);
    case AT3D_READ_ATM:
        engine::engineLog("read failed: ATM models are not supported (%s)", path);
        return false;
    default:
        engine::engineLog("read failed: unknown model type %d (%s)", type, path);
        return false;
    }
}

template <typename Fn>
void forEachCoordinate(std::vector<engine::Layer>& layers, Fn fn) {
    for (engine::Layer& layer : layers) {
        for (std::size_t i = 0; i < layer.positions.size(); ++i) fn(layer.positions[i], static_cast<int>(i % 3));
        for (std::size_t i = 0; i < layer.lineVertices.size(); ++i)
            fn(layer.lineVertices[i], static_cast<int>(i % 3));
        layer.gpuUpdate = true;
    }
}

void applyScale(std::vector<engine::Layer>& layers, double scale) {
    if (scale == 1.0 || !(scale > 0)) return;
    forEachCoordinate(layers, [scale](double& value, int) { value *= scale; });
}

void sceneChanged() {
    engine::invalidateHitIndex();
    engine::fitCameraToScene(engineState());
}

engine::Layer* layerNamed(const char* name) {
    const int index = engine::findLayer(name);
    return index < 0 ? nullptr : &engineState().layers[static_cast<std::size_t>(index)];
}

// One vertex of a flat coordinate array, or null when the index is out of range.
double* vertexAt(std::vector<double>& coordinates, int index) {
    if (index < 0 || static_cast<std::size_t>(index) * 3 + 2 >= coordinates.size()) return nullptr;
    return &coordinates[static_cast<std::size_t>(index) * 3];
}

}  // namespace

int At3d_Read(int type, const char* path, double scale) {
    std::vector<engine::Layer> layers;
    if (!readModelFile(type, path, layers)) return 0;
    applyScale(layers, scale);
    engine::EngineState& state = engineState();
    state.layers = std::move(layers);
    state.turnedForDrawing = false;
    sceneChanged();
    return 1;
}

int At3d_Mesh_Static_Read_And_Add(int type, const char* path, double scale, int xRotationFlag,
                                  const double* position, const char* namePrefix) {
    std::vector<engine::Layer> layers;
    if (!readModelFile(type, path, layers)) return 0;
    applyScale(layers, scale);
    // The added file keeps the interface's axes like the model itself, so the
    // quarter turn asked for OBJ files needs no change of the vertices.
    (void)xRotationFlag;
    if (position) forEachCoordinate(layers, [position](double& value, int axis) { value += position[axis]; });
    engine::EngineState& state = engineState();
    const std::string prefix = namePrefix ? namePrefix : "";
    for (engine::Layer& layer : layers) {
        layer.name = prefix + layer.name;
        if (layer.name.size() > AT3D_NAME_SIZE - 1) layer.name.resize(AT3D_NAME_SIZE - 1);
        state.layers.push_back(std::move(layer));
    }
    engine::invalidateHitIndex();
    return 1;
}

int At3d_Write(int type, const char* path, double scale) {
    if (!path || !*path) return 0;
    engine::EngineState& state = engineState();
    std::vector<engine::Layer> scaled;
    const std::vector<engine::Layer>* layers = &state.layers;
    if (scale != 1.0 && scale > 0) {
        scaled = state.layers;
        applyScale(scaled, scale);
        layers = &scaled;
    }
    switch (type) {
    case AT3D_WRITE_OBJ:
        return engine::WriteObjFile(path, *layers, state.producedBy) ? 1 : 0;
    case AT3D_WRITE_DAE:
    case AT3D_WRITE_3DS:
    case AT3D_WRITE_STL:
    case AT3D_WRITE_DXF:
        return engine::WriteModelWithAssimp(path, type, *layers, state.producedBy) ? 1 : 0;
    default:
        engine::engineLog("write failed: model type %d cannot be written (%s)", type, path);
        return 0;
    }
}

// The interface reports the file's axes whichever way the model is turned
// for drawing, so the turn is a state of the drawing, not of the vertices.
int At3d_RotateObjectX_90Minus() {
    engine::EngineState& state = engineState();
    if (state.flags[LIBFLAG_ROTATE_181] == 0) return 0;
    state.turnedForDrawing = true;
    for (engine::Layer& layer : state.layers) layer.gpuUpdate = true;
    return 1;
}

int At3d_RotateObjectX_90Plus() {
    engine::EngineState& state = engineState();
    if (state.flags[LIBFLAG_ROTATE_181] == 0) return 0;
    state.turnedForDrawing = false;
    for (engine::Layer& layer : state.layers) layer.gpuUpdate = true;
    return 1;
}

int At3d_GetObjectMinMax(double* minMax) {
    if (!minMax) return 0;
    if (!engine::sceneBounds(engineState(), minMax)) {
        std::memset(minMax, 0, 6 * sizeof(double));
        return 0;
    }
    return 1;
}

int At3d_GetObjectCenter(double* center) {
    if (!center) return 0;
    double minMax[6];
    if (!engine::sceneBounds(engineState(), minMax)) {
        center[0] = center[1] = center[2] = 0;
        return 0;
    }
    for (int k = 0; k < 3; ++k) center[k] = (minMax[2 * k] + minMax[2 * k + 1]) / 2;
    return 1;
}

int At3d_SetObject_XYZCenter() {
    double center[3];
    if (!At3d_GetObjectCenter(center)) return 0;
    return At3d_SetObjectCenter(center);
}

int At3d_SetObjectCenter(const double* center) {
    if (!center) return 0;
    forEachCoordinate(engineState().layers, [center](double& value, int axis) { value -= center[axis]; });
    sceneChanged();
    return 1;
}

int At3d_ScaleObject(const double* factors) {
    if (!factors) return 0;
    forEachCoordinate(engineState().layers, [factors](double& value, int axis) { value *= factors[axis]; });
    sceneChanged();
    return 1;
}

int At3d_VertNormAllCalculate() {
    for (engine::Layer& layer : engineState().layers) {
        std::vector<double> sums(layer.positions.size(), 0.0);
        for (std::size_t f = 0; f < layer.faceCount(); ++f) {
            const std::uint32_t* c = &layer.triangles[f * 3];
            const double* a = &layer.positions[c[0] * 3];
            const double* b = &layer.positions[c[1] * 3];
            const double* d = &layer.positions[c[2] * 3];
            const double e1[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
            const double e2[3] = {d[0] - a[0], d[1] - a[1], d[2] - a[2]};
            // The cross product's length is twice the area: larger faces weigh more.
            const double n[3] = {e1[1] * e2[2] - e1[2] * e2[1], e1[2] * e2[0] - e1[0] * e2[2],
                                 e1[0] * e2[1] - e1[1] * e2[0]};
            for (int corner = 0; corner < 3; ++corner)
                for (int k = 0; k < 3; ++k) sums[c[corner] * 3 + k] += n[k];
        }
        layer.normals.assign(sums.size(), 0.0f);
        for (std::size_t v = 0; v < layer.vertexCount(); ++v) {
            const double* s = &sums[v * 3];
            const double length = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
            if (length > 0)
                for (int k = 0; k < 3; ++k) layer.normals[v * 3 + k] = static_cast<float>(s[k] / length);
        }
        layer.gpuUpdate = true;
    }
    return 1;
}

int At3d_LayerCount() { return static_cast<int>(engineState().layers.size()); }

// A layer handle is its position plus one, so that null can end the walk.
void* At3d_GetNextLayer(void* layer, char* name) {
    const auto& layers = engineState().layers;
    const std::size_t next = layer ? reinterpret_cast<std::uintptr_t>(layer) : 0;
    if (next >= layers.size()) return nullptr;
    engine::copyName(name, layers[next].name);
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(next + 1));
}

int At3d_VertexCount(const char* layerName) {
    const engine::Layer* layer = layerNamed(layerName);
    return layer ? static_cast<int>(layer->vertexCount()) : 0;
}

int At3d_FaceCount(const char* layerName) {
    const engine::Layer* layer = layerNamed(layerName);
    return layer ? static_cast<int>(layer->faceCount()) : 0;
}

int At3d_2DVertexCount(const char* layerName) {
    const engine::Layer* layer = layerNamed(layerName);
    return layer ? static_cast<int>(layer->lineVertexCount()) : 0;
}

int At3d_GetVertex(int index, const char* layerName, double* xyz) {
    engine::Layer* layer = layerNamed(layerName);
    const double* v = layer ? vertexAt(layer->positions, index) : nullptr;
    if (!v || !xyz) return 0;
    std::memcpy(xyz, v, 3 * sizeof(double));
    return 1;
}

int At3d_SetVertex(int index, const char* layerName, const double* xyz) {
    engine::Layer* layer = layerNamed(layerName);
    double* v = layer ? vertexAt(layer->positions, index) : nullptr;
    if (!v || !xyz) return 0;
    std::memcpy(v, xyz, 3 * sizeof(double));
    layer->gpuUpdate = true;
    engine::invalidateHitIndex();
    return 1;
}

int At3d_2DGetVertex(int index, const char* layerName, double* xyz) {
    engine::Layer* layer = layerNamed(layerName);
    const double* v = layer ? vertexAt(layer->lineVertices, index) : nullptr;
    if (!v || !xyz) return 0;
    std::memcpy(xyz, v, 3 * sizeof(double));
    return 1;
}

int At3d_2DSetVertex(int index, const char* layerName, const double* xyz) {
    engine::Layer* layer = layerNamed(layerName);
    double* v = layer ? vertexAt(layer->lineVertices, index) : nullptr;
    if (!v || !xyz) return 0;
    std::memcpy(v, xyz, 3 * sizeof(double));
    layer->gpuUpdate = true;
    return 1;
}

int At3d_DeleteLayer(const char* layerName) {
    const int index = engine::findLayer(layerName);
    if (index < 0) return 0;
    auto& layers = engineState().layers;
    layers.erase(layers.begin() + index);
    engine::invalidateHitIndex();
    return 1;
}

int At3d_GetLayerOutputFlag(const char* layerName) {
    const engine::Layer* layer = layerNamed(layerName);
    return layer && layer->outputFlag ? 1 : 0;
}

int At3d_SetLayerOutputFlag(const char* layerName, int flag) {
    engine::Layer* layer = layerNamed(layerName);
    if (!layer) return 0;
    if (layer->outputFlag != (flag != 0)) {
        layer->outputFlag = flag != 0;
        engine::invalidateHitIndex();
    }
    return 1;
}

int At3d_GetTextureName(const char* layerName, char* path) {
    const engine::Layer* layer = layerNamed(layerName);
    if (!layer || !path) return 0;
    const std::size_t n = std::min<std::size_t>(layer->texturePath.size(), AT3D_PATH_SIZE - 1);
    std::memcpy(path, layer->texturePath.data(), n);
    path[n] = '\0';
    return layer->texturePath.empty() ? 0 : 1;
}

int At3d_SetTextureName(const char* layerName, const char* path) {
    engine::Layer* layer = layerNamed(layerName);
    if (!layer || !path) return 0;
    layer->texturePath = path;
    layer->gpuUpdate = true;
    return 1;
}

int At3d_SetMaterial_F3(const char* layerName, int flagType, const float* rgb) {
    engine::Layer* layer = layerNamed(layerName);
    if (!layer || !rgb) return 0;
    (void)flagType;  // only the diffuse colour (type 3) is used
    std::memcpy(layer->diffuse, rgb, 3 * sizeof(float));
    layer->gpuUpdate = true;
    return 1;
}

int At3d_Set_Layer_GPU_Update(const char* layerName, int flag) {
    engine::Layer* layer = layerNamed(layerName);
    if (!layer) return 0;
    layer->gpuUpdate = flag != 0;
    return 1;
}

int At3d_Mesh_Static_Translate(const char* layerName, int flag, const double* delta) {
    engine::Layer* layer = layerNamed(layerName);
    if (!layer || !delta) return 0;
    (void)flag;
    for (std::size_t i = 0; i < layer->positions.size(); ++i) layer->positions[i] += delta[i % 3];
    for (std::size_t i = 0; i < layer->lineVertices.size(); ++i) layer->lineVertices[i] += delta[i % 3];
    layer->gpuUpdate = true;
    engine::invalidateHitIndex();
    return 1;
}
