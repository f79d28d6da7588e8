// The engine's state owner, its host bindings (log, notifications, renderer)
// and the life-cycle, flag and drawing calls.
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "EngineState.h"
#include "TextureImage.h"

namespace engine {

namespace {

std::unique_ptr<EngineState>& stateSlot() {
    static std::unique_ptr<EngineState> state;
    return state;
}

At3d_LogFunction& logFunction() {
    static At3d_LogFunction fn = nullptr;
    return fn;
}

At3d_NotifyFunction& notifyFunction() {
    static At3d_NotifyFunction fn = nullptr;
    return fn;
}

At3d_RendererHooks& rendererHooks() {
    static At3d_RendererHooks hooks{};
    return hooks;
}

void initialiseState(EngineState& state) {
    RoamingCamera defaultSlot;
    defaultSlot.name = DEFAULT_CAMERA_NAME;
    state.roamingCameras.push_back(defaultSlot);
}

}  // namespace

EngineState& engineState() {
    auto& slot = stateSlot();
    if (!slot) {
        slot = std::make_unique<EngineState>();
        initialiseState(*slot);
    }
    return *slot;
}

void resetEngineState() {
    stateSlot().reset();
    clearTextureCache();
    engineState();
}

void invalidateHitIndex() {
    EngineState& state = engineState();
    std::lock_guard<std::mutex> lock(state.hitIndexMutex);
    state.hitIndexReady.store(false, std::memory_order_release);
    state.hitIndex.reset();
}

const HitIndex* currentHitIndex() {
    EngineState& state = engineState();
    if (state.hitIndexReady.load(std::memory_order_acquire)) return state.hitIndex.get();
    std::lock_guard<std::mutex> lock(state.hitIndexMutex);
    if (!state.hitIndexReady.load(std::memory_order_relaxed)) {
        state.hitIndex = HitIndex::build(state.layers);
        state.hitIndexReady.store(true, std::memory_order_release);
    }
    return state.hitIndex.get();
}

int findLayer(const char* name) {
    if (!name) return -1;
    const auto& layers = engineState().layers;
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (layers[i].name == name) return static_cast<int>(i);
    return -1;
}

void engineLog(const char* format, ...) {
    At3d_LogFunction fn = logFunction();
    if (!fn) return;
    char line[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    fn(line);
}

void notifyHost(int wParam) {
    At3d_NotifyFunction fn = notifyFunction();
    const EngineState& state = engineState();
    if (fn) fn(state.notifyWindow, state.notifyMessage, wParam, 1);
}

void copyName(char* destination, const std::string& source) {
    if (!destination) return;
    const std::size_t n = std::min<std::size_t>(source.size(), AT3D_NAME_SIZE - 1);
    std::memcpy(destination, source.data(), n);
    destination[n] = '\0';
}

}  // namespace engine

using engine::engineState;

void At3d_Set_Notify_Function(At3d_NotifyFunction fn) { engine::notifyFunction() = fn; }
void At3d_Set_Log_Function(At3d_LogFunction fn) { engine::logFunction() = fn; }

void At3d_Set_Renderer(const At3d_RendererHooks* hooks) {
    engine::rendererHooks() = hooks ? *hooks : At3d_RendererHooks{};
}

int At3d_Start() {
    engineState().started = true;
    return 1;
}

int At3d_Stop() {
    engine::resetEngineState();
    return 1;
}

int At3d_SetParent(void* window) {
    engineState().parentWindow = window;
    return 1;
}

int At3d_Show() { return engineState().started ? 1 : 0; }

int At3d_Clear() {
    engine::EngineState& state = engineState();
    state.layers.clear();
    state.turnedForDrawing = false;
    engine::invalidateHitIndex();
    engine::clearTextureCache();
    return 1;
}

int At3d_RenderOpenGLScene() {
    engine::EngineState& state = engineState();
    if (state.flags[LIBFLAG_NO_DRAW] != 0) return 1;
    ++state.framesDrawn;
    const At3d_RendererHooks& hooks = engine::rendererHooks();
    if (hooks.render) hooks.render(hooks.context);
    return 1;
}

int At3d_WriteFlag(int flag, int value) {
    if (flag < 0 || flag >= AT3D_FLAG_COUNT) return 0;
    engine::EngineState& state = engineState();
    // Picking switched on from off starts a new line: an end left by an
    // unfinished one must not become the first point of the next.
    if (flag == LIBFLAG_MESH_LOCATION && value == MESH_LOCATION_MEASURE &&
        state.flags[flag] == MESH_LOCATION_OFF)
        for (int point = 1; point <= 4; ++point) state.rubberband[point] = engine::RubberbandPoint{};
    state.flags[flag] = value;
    return 1;
}

int At3d_ReadFlag(int flag) {
    if (flag < 0 || flag >= AT3D_FLAG_COUNT) return 0;
    return engineState().flags[flag];
}

int At3d_SetProducedByName(const char* name) {
    engineState().producedBy = name ? name : "";
    return 1;
}

// Without a drawing device the limit is the largest edge the engine decodes.
int At3d_Get_Max_Texture_Size() { return 1 << 15; }

int At3d_Set_Max_Texture_Size(int powerOf2) {
    if (powerOf2 < 11 || powerOf2 > 15) return 0;
    engineState().maxTextureExponent = powerOf2;
    return 1;
}

int At3d_SetColorMap(int entry, const float* rgb) {
    if (!rgb) return 0;
    engine::EngineState& state = engineState();
    float* target = entry == 271 ? state.colorMapLow : entry == 268 ? state.colorMapHigh : nullptr;
    if (!target) return 0;
    std::memcpy(target, rgb, 3 * sizeof(float));
    return 1;
}

// The system defines its lights but draws with the renderer's own lighting.
int At3d_Set_OGL_Directional_Light(int light, int, const float*, const float*, const float*, const float*) {
    return light == 0 || light == 1 ? 1 : 0;
}

int At3d_Save_Thumbnail_Image(const char* path, int width, int height) {
    const At3d_RendererHooks& hooks = engine::rendererHooks();
    if (!hooks.saveThumbnail || !path || width <= 0 || height <= 0) return 0;
    return hooks.saveThumbnail(hooks.context, path, width, height);
}
