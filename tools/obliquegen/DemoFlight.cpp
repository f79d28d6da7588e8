#include "DemoFlight.h"

#include <cmath>
#include <cstdio>

namespace {

// The middle of the buildings, file frame: the obliques aim here.
constexpr double kAim[3] = {5, -5, 46};
// Slant distance from the obliques' camera to the aim.
constexpr double kSlant = 115;
constexpr double kDown = -45;

struct ObliqueLook {
    const char* name;
    double azimuth;
    int principalX, principalY;
    bool lens;
};

// Each camera of the mount has its own calibration; the west one keeps its radial terms.
constexpr ObliqueLook kLooks[] = {
    {"DJI_0001_N.JPG", 0, 3, -2, false},
    {"DJI_0002_E.JPG", 90, -2, 1, false},
    {"DJI_0003_S.JPG", 180, 0, 0, false},
    {"DJI_0004_W.JPG", 270, 2, 3, true},
};

// Barrel distortion of a few pixels in the corners of a 4/3" sensor.
constexpr double kK1 = -1.2e-4, kK2 = 2.5e-7, kK3 = 0;

struct FacadeStation {
    double x, y, z, azimuth, pitch;
};

// Ten metres off the south wall (y -26) and the east wall (x 44) of the tall block.
constexpr FacadeStation kFacades[] = {
    {32, -36, 50, 0, -10}, {37, -36, 50, 0, -10}, {42, -36, 50, 0, -10},
    {37, -36, 58, 0, -10}, {54, -20, 55, 270, -5},
};

}  // namespace

std::vector<PhotoCamera> demoObliqueCameras(const double offset[3]) {
    std::vector<PhotoCamera> cameras;
    const double p = kDown * 3.14159265358979323846 / 180;
    for (const ObliqueLook& look : kLooks) {
        const double a = look.azimuth * 3.14159265358979323846 / 180;
        const double forward[3] = {std::sin(a) * std::cos(p), std::cos(a) * std::cos(p), std::sin(p)};
        double eye[3];
        for (int i = 0; i < 3; ++i) eye[i] = kAim[i] - kSlant * forward[i] + offset[i];
        PhotoCamera c = cameraLooking(look.name, eye, forward);
        c.principalX = look.principalX;
        c.principalY = look.principalY;
        if (look.lens) {
            c.k[0] = kK1;
            c.k[1] = kK2;
            c.k[2] = kK3;
        }
        c.mount = int(cameras.size()) + 1;
        cameras.push_back(c);
    }
    const double down[3] = {0, 0, -1};
    const double eye[3] = {kAim[0] + offset[0], kAim[1] + offset[1], kAim[2] + kSlant + offset[2]};
    PhotoCamera nadir = cameraLooking("DJI_0005_D.JPG", eye, down);
    nadir.principalX = -1;
    nadir.principalY = -1;
    nadir.mount = 5;
    cameras.push_back(nadir);
    return cameras;
}

std::vector<PhotoCamera> demoFacadeCameras(const double offset[3]) {
    std::vector<PhotoCamera> cameras;
    int number = 101;
    for (const FacadeStation& s : kFacades) {
        const double eye[3] = {s.x + offset[0], s.y + offset[1], s.z + offset[2]};
        char name[32];
        std::snprintf(name, sizeof name, "DJI_%04d.JPG", number++);
        cameras.push_back(cameraAimed(name, eye, s.azimuth, s.pitch));
    }
    return cameras;
}
