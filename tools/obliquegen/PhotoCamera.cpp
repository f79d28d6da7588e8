#include "PhotoCamera.h"

#include <cmath>

#include "scene/engine/CameraMath.h"

namespace {
constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
}

void PhotoCamera::matrix(double q[9]) const {
    const double* rows[3] = {right, up, forward};
    for (int r = 0; r < 3; ++r) {
        q[3 * r + 0] = rows[r][0];
        q[3 * r + 1] = rows[r][1];
        q[3 * r + 2] = -rows[r][2];
    }
}

double PhotoCamera::azimuth() const {
    double a = std::atan2(forward[0], forward[1]) / kDegToRad;
    if (std::hypot(forward[0], forward[1]) < 1e-9) a = 0;
    return a < 0 ? a + 360 : a;
}

double PhotoCamera::inclination() const {
    return std::atan2(-forward[2], std::hypot(forward[0], forward[1])) / kDegToRad;
}

PhotoCamera cameraLooking(const std::string& name, const double eye[3], const double forward[3]) {
    // The roaming camera's own frame, so that picture and matrix cannot drift apart.
    engine::RoamingCamera roaming;
    for (int i = 0; i < 3; ++i) {
        roaming.eye[i] = 0;
        roaming.center[i] = forward[i];
    }
    const engine::ViewFrame frame = engine::roamingViewFrame(roaming);
    PhotoCamera camera;
    camera.name = name;
    for (int i = 0; i < 3; ++i) {
        camera.eye[i] = eye[i];
        camera.forward[i] = frame.forward[i];
        camera.right[i] = frame.right[i];
        camera.up[i] = frame.up[i];
    }
    return camera;
}

PhotoCamera cameraAimed(const std::string& name, const double eye[3], double azimuth, double pitch) {
    const double a = azimuth * kDegToRad, p = pitch * kDegToRad;
    const double forward[3] = {std::sin(a) * std::cos(p), std::cos(a) * std::cos(p), std::sin(p)};
    return cameraLooking(name, eye, forward);
}

void pictureRayOnPlane(const PhotoCamera& camera, double px, double py, double z, double reach, double out[3]) {
    const double f = camera.focalPixels();
    const double x0 = camera.width / 2 + camera.principalX, y0 = -(camera.height / 2) + camera.principalY;
    const double u = (px - x0) / f, v = (py - y0) / f;
    double d[3];
    for (int i = 0; i < 3; ++i) d[i] = camera.forward[i] + u * camera.right[i] + v * camera.up[i];
    const double plan = std::hypot(d[0], d[1]);
    double t = d[2] < -1e-9 ? (z - camera.eye[2]) / d[2] : reach / plan;
    if (plan * t > reach) t = reach / plan;
    for (int i = 0; i < 3; ++i) out[i] = camera.eye[i] + t * d[i];
    out[2] = z;
}
