// Turning a sun position into a direction: x east, y north, z up.
#pragma once

struct Vec3 {
    double x = 0;
    double y = 0;
    double z = 0;
};

// A vector shorter than 1e-10 has no direction and becomes straight up.
Vec3 Normalize(const Vec3& v);

// Unit vector towards the sun; altitude is clamped to -90..90 and the
// azimuth (degrees from north, clockwise) brought into 0..360.
Vec3 SunDirection(double altitudeDeg, double azimuthDeg);
