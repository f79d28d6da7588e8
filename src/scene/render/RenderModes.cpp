#include "RenderModes.h"

#include <chrono>
#include <cstring>

namespace render {

RenderMode renderModeFromFlag(int value) {
    switch (value) {
    case 3:
        return RenderMode::HeightColour;
    case 8:
        return RenderMode::Wireframe;
    default:
        return RenderMode::Textured;
    }
}

void sphereColourAt(const engine::SphereMarker& marker, long long milliseconds, float rgb[3]) {
    bool second = marker.color2Flag != 0;
    if (marker.strobeFlag != 0 && marker.interval > 0) second = (milliseconds / marker.interval) % 2 != 0;
    std::memcpy(rgb, second ? marker.rgb2 : marker.rgb1, 3 * sizeof(float));
}

long long renderClockMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

bool anyStrobingSphere(const engine::EngineState& state) {
    if (state.flags[LIBFLAG_SHOW_SPHERES] == 0) return false;
    for (const engine::SphereMarker& marker : state.spheres)
        if (marker.visibleFlag && marker.strobeFlag && marker.interval > 0) return true;
    return false;
}

}  // namespace render
