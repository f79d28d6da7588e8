#include "CameraMath.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace engine {

namespace {

constexpr double kDegToRad = 3.14159265358979323846 / 180.0;

void cross(const double a[3], const double b[3], double out[3]) {
    const double x = a[1] * b[2] - a[2] * b[1];
    const double y = a[2] * b[0] - a[0] * b[2];
    const double z = a[0] * b[1] - a[1] * b[0];
    out[0] = x;
    out[1] = y;
    out[2] = z;
}

double dot(const double a[3], const double b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

bool normalize(double v[3]) {
    const double length = std::sqrt(dot(v, v));
    if (!(length > 1e-12)) return false;
    for (int i = 0; i < 3; ++i) v[i] /= length;
    return true;
}

// Turns up towards right by roll degrees about the forward axis.
void applyRoll(ViewFrame& frame, double rollDegrees) {
    if (rollDegrees == 0) return;
    const double c = std::cos(rollDegrees * kDegToRad);
    const double s = std::sin(rollDegrees * kDegToRad);
    double up[3], right[3];
    for (int i = 0; i < 3; ++i) {
        up[i] = c * frame.up[i] + s * frame.right[i];
        right[i] = c * frame.right[i] - s * frame.up[i];
    }
    for (int i = 0; i < 3; ++i) {
        frame.up[i] = up[i];
        frame.right[i] = right[i];
    }
}

// Half extents of the image plane at unit depth.
bool halfExtents(const EngineState& state, const ViewFrame& frame, double& halfWidth, double& halfHeight) {
    if (state.width <= 0 || state.height <= 0) return false;
    halfHeight = std::tan(frame.fieldOfView * 0.5 * kDegToRad);
    halfWidth = halfHeight * double(state.width) / double(state.height);
    return halfHeight > 0;
}

}  // namespace

ViewFrame orbitViewFrame(const OrbitCamera& camera) {
    ViewFrame frame{};
    const double a = camera.angles[2] * kDegToRad;
    const double p = camera.angles[0] * kDegToRad;
    frame.forward[0] = std::sin(a) * std::cos(p);
    frame.forward[1] = std::cos(a) * std::cos(p);
    frame.forward[2] = -std::sin(p);
    frame.up[0] = std::sin(a) * std::sin(p);
    frame.up[1] = std::cos(a) * std::sin(p);
    frame.up[2] = std::cos(p);
    cross(frame.forward, frame.up, frame.right);
    for (int i = 0; i < 3; ++i) frame.eye[i] = camera.viewPoint[i] - camera.distance * frame.forward[i];
    frame.fieldOfView = camera.fieldOfView;
    applyRoll(frame, camera.angles[1]);
    return frame;
}

ViewFrame roamingViewFrame(const RoamingCamera& camera) {
    ViewFrame frame{};
    for (int i = 0; i < 3; ++i) {
        frame.eye[i] = camera.eye[i];
        frame.forward[i] = camera.center[i] - camera.eye[i];
    }
    if (!normalize(frame.forward)) {
        frame.forward[0] = 0;
        frame.forward[1] = 1;
        frame.forward[2] = 0;
    }
    const double zAxis[3] = {0, 0, 1};
    cross(frame.forward, zAxis, frame.right);
    if (!normalize(frame.right)) {
        // Looking straight up or down: keep east to the right, as the top view does.
        frame.right[0] = 1;
        frame.right[1] = 0;
        frame.right[2] = 0;
    }
    cross(frame.right, frame.forward, frame.up);
    normalize(frame.up);
    frame.fieldOfView = camera.fieldOfView;
    applyRoll(frame, camera.upRotation);
    return frame;
}

ViewFrame currentViewFrame(const EngineState& state) {
    const int active = state.activeCamera;
    if (active > 0 && active < int(state.roamingCameras.size()))
        return roamingViewFrame(state.roamingCameras[std::size_t(active)]);
    return orbitViewFrame(state.camera);
}

bool screenRay(const EngineState& state, double x, double y, double origin[3], double direction[3]) {
    const ViewFrame frame = currentViewFrame(state);
    double halfWidth = 0, halfHeight = 0;
    if (!halfExtents(state, frame, halfWidth, halfHeight)) return false;
    const double ndcX = x / double(state.width) * 2.0 - 1.0;
    const double ndcY = 1.0 - y / double(state.height) * 2.0;
    for (int i = 0; i < 3; ++i) {
        origin[i] = frame.eye[i];
        direction[i] = frame.forward[i] + ndcX * halfWidth * frame.right[i] + ndcY * halfHeight * frame.up[i];
    }
    return normalize(direction);
}

bool pixelRay(const EngineState& state, int x, int y, double origin[3], double direction[3]) {
    return screenRay(state, x + 0.5, y + 0.5, origin, direction);
}

bool projectToScreen(const EngineState& state, const double point[3], double& x, double& y) {
    const ViewFrame frame = currentViewFrame(state);
    double halfWidth = 0, halfHeight = 0;
    if (!halfExtents(state, frame, halfWidth, halfHeight)) return false;
    const double v[3] = {point[0] - frame.eye[0], point[1] - frame.eye[1], point[2] - frame.eye[2]};
    const double depth = dot(v, frame.forward);
    if (!(depth > 1e-9)) return false;
    const double ndcX = dot(v, frame.right) / depth / halfWidth;
    const double ndcY = dot(v, frame.up) / depth / halfHeight;
    x = (ndcX + 1.0) * 0.5 * double(state.width);
    y = (1.0 - ndcY) * 0.5 * double(state.height);
    return std::isfinite(x) && std::isfinite(y);
}

bool projectToPixel(const EngineState& state, const double point[3], int& x, int& y) {
    double sx = 0, sy = 0;
    if (!projectToScreen(state, point, sx, sy)) return false;
    constexpr double lo = double(std::numeric_limits<int>::min());
    constexpr double hi = double(std::numeric_limits<int>::max());
    x = int(std::clamp(std::floor(sx), lo, hi));
    y = int(std::clamp(std::floor(sy), lo, hi));
    return true;
}

bool sceneBounds(const EngineState& state, double minMax[6]) {
    double lo[3], hi[3];
    for (int i = 0; i < 3; ++i) {
        lo[i] = std::numeric_limits<double>::infinity();
        hi[i] = -std::numeric_limits<double>::infinity();
    }
    bool any = false;
    auto take = [&](const std::vector<double>& xyz) {
        const std::size_t n = xyz.size() / 3;
        for (std::size_t v = 0; v < n; ++v)
            for (int i = 0; i < 3; ++i) {
                const double c = xyz[v * 3 + std::size_t(i)];
                lo[i] = std::min(lo[i], c);
                hi[i] = std::max(hi[i], c);
            }
        any = any || n > 0;
    };
    for (const Layer& layer : state.layers) {
        take(layer.positions);
        take(layer.lineVertices);
    }
    if (!any) return false;
    for (int i = 0; i < 3; ++i) {
        minMax[2 * i] = lo[i];
        minMax[2 * i + 1] = hi[i];
    }
    return true;
}

void fitCameraToScene(EngineState& state) {
    double box[6];
    if (!sceneBounds(state, box)) return;
    OrbitCamera& camera = state.camera;
    double radiusSquared = 0;
    for (int i = 0; i < 3; ++i) {
        camera.homeViewPoint[i] = 0.5 * (box[2 * i] + box[2 * i + 1]);
        const double half = 0.5 * (box[2 * i + 1] - box[2 * i]);
        radiusSquared += half * half;
    }
    const double halfFov = std::clamp(camera.fieldOfView, 1.0, 170.0) * 0.5 * kDegToRad;
    const double distance = std::max(1.0, std::sqrt(radiusSquared) / std::sin(halfFov) * 1.1);
    camera.initialDistance = distance;
    camera.distance = distance;
    for (int i = 0; i < 3; ++i) camera.viewPoint[i] = camera.homeViewPoint[i];
    camera.panX = 0;
    camera.panZ = 0;
}

}  // namespace engine
