// The default orbit camera, the roaming cameras and the surface size.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "CameraMath.h"
#include "EngineState.h"

using engine::EngineState;
using engine::engineState;

namespace {

constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
constexpr double kRadToDeg = 180.0 / 3.14159265358979323846;
constexpr double kMinDistance = 0.1;

bool finite3(double a, double b, double c) { return std::isfinite(a) && std::isfinite(b) && std::isfinite(c); }

double wrap360(double degrees) {
    double w = std::fmod(degrees, 360.0);
    if (w < 0) w += 360.0;
    return w >= 360.0 ? 0.0 : w;
}

// A name as the engine keeps it: cut like every 80-byte name buffer.
std::string cutName(const char* name) {
    char buffer[AT3D_NAME_SIZE];
    engine::copyName(buffer, name ? std::string(name) : std::string());
    return std::string(buffer);
}

void ensureDefaultSlot(EngineState& state) {
    if (state.roamingCameras.empty() || state.roamingCameras[0].name != engine::DEFAULT_CAMERA_NAME) {
        engine::RoamingCamera slot;
        slot.name = engine::DEFAULT_CAMERA_NAME;
        state.roamingCameras.insert(state.roamingCameras.begin(), slot);
        if (state.activeCamera > 0) ++state.activeCamera;
    }
}

int findRoamingCamera(EngineState& state, const char* name) {
    if (!name || !*name) return -1;
    ensureDefaultSlot(state);
    const std::string wanted = cutName(name);
    for (std::size_t i = 0; i < state.roamingCameras.size(); ++i)
        if (state.roamingCameras[i].name == wanted) return int(i);
    return -1;
}

// The active roaming camera, or null while the default camera is active.
engine::RoamingCamera* activeRoamingCamera(EngineState& state) {
    const int active = state.activeCamera;
    if (active <= 0 || active >= int(state.roamingCameras.size())) return nullptr;
    return &state.roamingCameras[std::size_t(active)];
}

void setPreset(double tilt, double azimuth) {
    auto& camera = engineState().camera;
    camera.angles[0] = tilt;
    camera.angles[1] = 0;
    camera.angles[2] = azimuth;
}

void zoomBy(double delta) {
    auto& camera = engineState().camera;
    camera.distance = std::max(kMinDistance, camera.distance + delta);
}

}  // namespace

int At3d_Size(int width, int height) {
    if (width < 0 || height < 0) return 0;
    auto& state = engineState();
    state.width = width;
    state.height = height;
    return 1;
}

// ---- Default camera ----

int At3d_GetCameraAngles(double* x, double* y, double* z) {
    if (!x || !y || !z) return 0;
    const auto& camera = engineState().camera;
    *x = camera.angles[0];
    *y = camera.angles[1];
    *z = camera.angles[2];
    return 1;
}

int At3d_RotateCamera(int mode, double x, double y, double z) {
    if ((mode != 0 && mode != 1) || !finite3(x, y, z)) return 0;
    auto& camera = engineState().camera;
    if (mode == 0) {
        camera.angles[0] = x;
        camera.angles[1] = y;
        camera.angles[2] = z;
    } else {
        camera.angles[0] += x;
        camera.angles[1] += y;
        camera.angles[2] += z;
    }
    camera.angles[2] = wrap360(camera.angles[2]);
    return 1;
}

int At3d_GetCameraViewPoint(double* x, double* y, double* z) {
    if (!x || !y || !z) return 0;
    const auto& camera = engineState().camera;
    *x = camera.viewPoint[0];
    *y = camera.viewPoint[1];
    *z = camera.viewPoint[2];
    return 1;
}

int At3d_SetCameraViewPoint(double x, double y, double z) {
    if (!finite3(x, y, z)) return 0;
    auto& camera = engineState().camera;
    camera.viewPoint[0] = x;
    camera.viewPoint[1] = y;
    camera.viewPoint[2] = z;
    return 1;
}

int At3d_GetCameraFieldOfView(double* fov) {
    if (!fov) return 0;
    *fov = engineState().camera.fieldOfView;
    return 1;
}

int At3d_SetCameraFieldOfView(int mode, double fov) {
    if ((mode != 0 && mode != 1) || !std::isfinite(fov)) return 0;
    auto& camera = engineState().camera;
    const double value = mode == 0 ? fov : camera.fieldOfView + fov;
    camera.fieldOfView = std::clamp(value, 1.0, 170.0);
    return 1;
}

int At3d_PanCamera(int mode, int x, int z) {
    if (mode != 0 && mode != 1) return 0;
    auto& state = engineState();
    auto& camera = state.camera;
    double dx = x, dz = z;
    if (mode == 0) {
        dx = double(x) - camera.panX;
        dz = double(z) - camera.panZ;
        camera.panX = x;
        camera.panZ = z;
    }
    const double height = state.height > 0 ? double(state.height) : 1.0;
    const double metresPerPixel = 2.0 * camera.distance * std::tan(camera.fieldOfView * 0.5 * kDegToRad) / height;
    const engine::ViewFrame frame = engine::orbitViewFrame(camera);
    for (int i = 0; i < 3; ++i)
        camera.viewPoint[i] += (dx * frame.right[i] + dz * frame.up[i]) * metresPerPixel;
    return 1;
}

int At3d_GetCameraDistance(double* distance) {
    if (!distance) return 0;
    *distance = engineState().camera.distance;
    return 1;
}

int At3d_SetCameraDistance(double distance) {
    if (!std::isfinite(distance) || distance <= 0) return 0;
    engineState().camera.distance = std::max(kMinDistance, distance);
    return 1;
}

int At3d_GetCameraInitialDistance(double* distance) {
    if (!distance) return 0;
    *distance = engineState().camera.initialDistance;
    return 1;
}

int At3d_SetCameraInitialDistance(double distance) {
    if (!std::isfinite(distance) || distance <= 0) return 0;
    engineState().camera.initialDistance = std::max(kMinDistance, distance);
    return 1;
}

int At3d_ZoomIn(float step) {
    if (!std::isfinite(step)) return 0;
    const bool reverse = engineState().flags[LIBFLAG_REVERSE_ZOOM] != 0;
    zoomBy(reverse ? double(step) : -double(step));
    return 1;
}

int At3d_ZoomOut(float step) {
    if (!std::isfinite(step)) return 0;
    const bool reverse = engineState().flags[LIBFLAG_REVERSE_ZOOM] != 0;
    zoomBy(reverse ? -double(step) : double(step));
    return 1;
}

int At3d_ZoomReset() {
    auto& camera = engineState().camera;
    camera.distance = camera.initialDistance;
    for (int i = 0; i < 3; ++i) camera.viewPoint[i] = camera.homeViewPoint[i];
    camera.panX = 0;
    camera.panZ = 0;
    return 1;
}

int At3d_GetCameraRotateSpeed(int* speed) {
    if (!speed) return 0;
    *speed = engineState().camera.rotateSpeed;
    return 1;
}

int At3d_SetCameraRotateSpeed(int speed) {
    engineState().camera.rotateSpeed = speed;
    return 1;
}

int At3d_Camera_Rotate_Set_Speed(double speed) {
    if (!std::isfinite(speed)) return 0;
    engineState().camera.dragRotateSpeed = speed;
    return 1;
}

int At3d_GetCameraZoomSpeed(int* speed) {
    if (!speed) return 0;
    *speed = engineState().camera.zoomSpeed;
    return 1;
}

int At3d_SetCameraZoomSpeed(int speed) {
    engineState().camera.zoomSpeed = speed;
    return 1;
}

int At3d_ViewTop() { return setPreset(90, 0), 1; }
int At3d_ViewBottom() { return setPreset(-90, 0), 1; }
int At3d_ViewFront() { return setPreset(0, 0), 1; }
int At3d_ViewBack() { return setPreset(0, 180), 1; }
int At3d_ViewLeft() { return setPreset(0, 90), 1; }
int At3d_ViewRight() { return setPreset(0, 270), 1; }

int At3d_CenterX() {
    auto& camera = engineState().camera;
    camera.viewPoint[0] = camera.homeViewPoint[0];
    return 1;
}

int At3d_CenterZ() {
    auto& camera = engineState().camera;
    camera.viewPoint[2] = camera.homeViewPoint[2];
    return 1;
}

// ---- Roaming cameras ----

int At3d_Roaming_Camera_Count() {
    auto& state = engineState();
    ensureDefaultSlot(state);
    return int(state.roamingCameras.size());
}

int At3d_Roaming_Camera_Get_Name(int index, char* name) {
    auto& state = engineState();
    ensureDefaultSlot(state);
    if (!name || index < 0 || index >= int(state.roamingCameras.size())) return 0;
    engine::copyName(name, state.roamingCameras[std::size_t(index)].name);
    return 1;
}

int At3d_Add_Roaming_Camera(const char* name) {
    if (!name || !*name) return 0;
    auto& state = engineState();
    if (findRoamingCamera(state, name) >= 0) return 0;
    // A new camera starts where the default camera stands now.
    engine::RoamingCamera camera;
    camera.name = cutName(name);
    const engine::ViewFrame frame = engine::orbitViewFrame(state.camera);
    for (int i = 0; i < 3; ++i) {
        camera.eye[i] = frame.eye[i];
        camera.center[i] = state.camera.viewPoint[i];
    }
    camera.upRotation = state.camera.angles[1];
    camera.fieldOfView = state.camera.fieldOfView;
    state.roamingCameras.push_back(camera);
    return 1;
}

int At3d_Get_Roaming_Data(const char* name, double* eye, double* center, double* upRotation,
                          double* fieldOfView, int asDisplayed_Flag) {
    auto& state = engineState();
    const int index = findRoamingCamera(state, name);
    if (index < 0) return 0;
    // A roaming camera is drawn exactly from its stored data, so asDisplayed_Flag
    // changes nothing; the default camera's data always come from the orbit camera.
    double e[3], c[3], up, fov;
    if (index == 0) {
        const engine::ViewFrame frame = engine::orbitViewFrame(state.camera);
        for (int i = 0; i < 3; ++i) {
            e[i] = frame.eye[i];
            c[i] = state.camera.viewPoint[i];
        }
        up = state.camera.angles[1];
        fov = state.camera.fieldOfView;
    } else {
        const auto& camera = state.roamingCameras[std::size_t(index)];
        for (int i = 0; i < 3; ++i) {
            e[i] = camera.eye[i];
            c[i] = camera.center[i];
        }
        up = camera.upRotation;
        fov = camera.fieldOfView;
    }
    if (eye) std::memcpy(eye, e, sizeof e);
    if (center) std::memcpy(center, c, sizeof c);
    if (upRotation) *upRotation = up;
    if (fieldOfView) *fieldOfView = fov;
    return 1;
}

int At3d_Set_Roaming_Data(const char* name, const double* eye, const double* center, const double* upRotation,
                          const double* fieldOfView) {
    auto& state = engineState();
    const int index = findRoamingCamera(state, name);
    if (index < 0) return 0;
    if ((eye && !finite3(eye[0], eye[1], eye[2])) || (center && !finite3(center[0], center[1], center[2])) ||
        (upRotation && !std::isfinite(*upRotation)) || (fieldOfView && !std::isfinite(*fieldOfView)))
        return 0;
    if (index == 0) {
        // The default slot drives the orbit camera: view point = center,
        // distance and angles from the line eye -> center.
        auto& camera = state.camera;
        const engine::ViewFrame frame = engine::orbitViewFrame(camera);
        double e[3], c[3];
        for (int i = 0; i < 3; ++i) {
            e[i] = eye ? eye[i] : frame.eye[i];
            c[i] = center ? center[i] : camera.viewPoint[i];
        }
        const double d[3] = {c[0] - e[0], c[1] - e[1], c[2] - e[2]};
        const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        if (length < 1e-9) return 0;
        const double horizontal = std::hypot(d[0], d[1]);
        if (horizontal > 1e-12) camera.angles[2] = wrap360(std::atan2(d[0], d[1]) * kRadToDeg);
        camera.angles[0] = std::asin(std::clamp(-d[2] / length, -1.0, 1.0)) * kRadToDeg;
        if (upRotation) camera.angles[1] = *upRotation;
        if (fieldOfView) camera.fieldOfView = std::clamp(*fieldOfView, 1.0, 170.0);
        for (int i = 0; i < 3; ++i) camera.viewPoint[i] = c[i];
        camera.distance = std::max(kMinDistance, length);
        return 1;
    }
    auto& camera = state.roamingCameras[std::size_t(index)];
    if (eye) std::memcpy(camera.eye, eye, sizeof camera.eye);
    if (center) std::memcpy(camera.center, center, sizeof camera.center);
    if (upRotation) camera.upRotation = *upRotation;
    if (fieldOfView) camera.fieldOfView = std::clamp(*fieldOfView, 1.0, 170.0);
    return 1;
}

int At3d_Switch_OGL_Camera(const char* name) {
    auto& state = engineState();
    const int index = findRoamingCamera(state, name);
    if (index < 0) return 0;
    state.activeCamera = index;
    return 1;
}

int At3d_Move_Roaming_RightLeft(double step) {
    if (!std::isfinite(step)) return 0;
    engine::RoamingCamera* camera = activeRoamingCamera(engineState());
    if (!camera) return 0;
    const double fx = camera->center[0] - camera->eye[0];
    const double fy = camera->center[1] - camera->eye[1];
    const double length = std::hypot(fx, fy);
    // Horizontal right of the view; east when looking straight up or down.
    double rx = 1, ry = 0;
    if (length > 1e-12) {
        rx = fy / length;
        ry = -fx / length;
    }
    camera->eye[0] += step * rx;
    camera->eye[1] += step * ry;
    camera->center[0] += step * rx;
    camera->center[1] += step * ry;
    return 1;
}

int At3d_Move_Roaming_Turn(double step) {
    if (!std::isfinite(step)) return 0;
    engine::RoamingCamera* camera = activeRoamingCamera(engineState());
    if (!camera) return 0;
    // Clockwise seen from above: the azimuth (from north towards east) grows.
    const double c = std::cos(step * kDegToRad);
    const double s = std::sin(step * kDegToRad);
    const double dx = camera->center[0] - camera->eye[0];
    const double dy = camera->center[1] - camera->eye[1];
    camera->center[0] = camera->eye[0] + dx * c + dy * s;
    camera->center[1] = camera->eye[1] - dx * s + dy * c;
    return 1;
}
