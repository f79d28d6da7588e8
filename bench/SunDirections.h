// Daylight sun directions of a year for the benchmarks: a textbook solar
// position (declination and hour angle), good enough to aim rays like the
// solar shading does.
#pragma once

#include <array>
#include <cmath>
#include <vector>

namespace benchgen {

// Unit vectors (east, north, up) towards the sun for each hour of a year
// with the sun above the horizon, at most `cap` of them.
inline std::vector<std::array<double, 3>> daylightSunDirections(double latitudeDeg, std::size_t cap) {
    const double rad = M_PI / 180.0;
    const double lat = latitudeDeg * rad;
    std::vector<std::array<double, 3>> directions;
    for (int day = 0; day < 365 && directions.size() < cap; ++day) {
        const double declination = 23.44 * rad * std::sin(2 * M_PI * (284 + day + 1) / 365.0);
        for (int hour = 0; hour < 24 && directions.size() < cap; ++hour) {
            const double hourAngle = (hour + 0.5 - 12.0) * 15.0 * rad;
            const double sinElevation = std::sin(lat) * std::sin(declination) +
                                        std::cos(lat) * std::cos(declination) * std::cos(hourAngle);
            if (sinElevation <= 0.01) continue;
            const double elevation = std::asin(sinElevation);
            const double cosAzimuth = (std::sin(declination) - std::sin(elevation) * std::sin(lat)) /
                                      (std::cos(elevation) * std::cos(lat));
            double azimuth = std::acos(std::fmax(-1.0, std::fmin(1.0, cosAzimuth)));
            if (hourAngle > 0) azimuth = 2 * M_PI - azimuth;
            directions.push_back({std::sin(azimuth) * std::cos(elevation), std::cos(azimuth) * std::cos(elevation),
                                  sinElevation});
        }
    }
    return directions;
}

}  // namespace benchgen
