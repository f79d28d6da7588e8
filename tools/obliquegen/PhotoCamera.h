// One photograph of the generated set: where the camera stands (map frame),
// how it is turned, and its sensor as the oblique catalogue describes it.
// The axes are those of the viewer's roaming camera, so that the catalogue's
// rotation matrix and the rendered picture agree by construction.
#pragma once

#include <string>

struct PhotoCamera {
    std::string name;                // picture file name
    double eye[3] = {0, 0, 0};       // perspective centre, map frame
    double forward[3] = {0, 1, 0};   // unit axes, east-north-up
    double right[3] = {1, 0, 0};
    double up[3] = {0, 0, 1};
    int width = 800, height = 600;
    double fpc = 12.29;              // focal length, mm
    double sensorWidth = 17.3;       // mm
    int principalX = 0, principalY = 0;  // principal point from the centre, whole pixels, Y upwards
    double k[3] = {0, 0, 0};         // radial terms, per mm^2, mm^4, mm^6
    int mount = 1;

    // Pixels per millimetre, in float as the catalogue's reader works it out.
    float scale() const { return static_cast<float>(width) / static_cast<float>(sensorWidth); }
    double focalPixels() const { return static_cast<float>(fpc) * scale(); }
    // The catalogue's principal point offsets, mm.
    double principalXmm() const { return principalX / double(scale()); }
    double principalYmm() const { return principalY / double(scale()); }
    // World to camera, row by row: right, up and forward with Z negated,
    // because the catalogue's projection takes camera Z minus point Z.
    void matrix(double q[9]) const;
    // Compass direction of the optical axis (0 north, clockwise) and its angle below the horizon, degrees.
    double azimuth() const;
    double inclination() const;
};

// A camera at eye looking along forward, axes set as the viewer's roaming
// camera sets them (right = forward x up-of-world; east to the right when
// looking straight down).
PhotoCamera cameraLooking(const std::string& name, const double eye[3], const double forward[3]);
// The same for a compass azimuth and a pitch (degrees, negative downwards).
PhotoCamera cameraAimed(const std::string& name, const double eye[3], double azimuth, double pitch);

// Where the ray through picture point (px, py) meets the level plane at z,
// in the map frame; a ray that does not go down is cut at `reach` metres in plan.
void pictureRayOnPlane(const PhotoCamera& camera, double px, double py, double z, double reach, double out[3]);
