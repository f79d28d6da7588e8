#include "SunDirection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

Vec3 Normalize(const Vec3& v) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (length < 1e-10) return {0.0, 0.0, 1.0};
    return {v.x / length, v.y / length, v.z / length};
}

Vec3 SunDirection(double altitudeDeg, double azimuthDeg) {
    altitudeDeg = std::clamp(altitudeDeg, -90.0, 90.0);
    // A wild value read from a table would keep the loops below turning for ever.
    if (std::abs(azimuthDeg) > 3600.0) azimuthDeg = std::fmod(azimuthDeg, 360.0);
    while (azimuthDeg < 0.0) azimuthDeg += 360.0;
    while (azimuthDeg >= 360.0) azimuthDeg -= 360.0;
    constexpr double rad = std::numbers::pi / 180.0;
    const double alt = altitudeDeg * rad;
    const double az = azimuthDeg * rad;
    return Normalize({std::cos(alt) * std::sin(az), std::cos(alt) * std::cos(az), std::sin(alt)});
}
