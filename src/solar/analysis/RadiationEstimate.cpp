#include "RadiationEstimate.h"

#include "SunTable.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double DEG = M_PI / 180.0;
// 1367 W/m2 × 24 × 3600 s / pi: the daily extraterrestrial radiation factor.
constexpr double DAILY_EXTRATERRESTRIAL = 37595198.685301624;
constexpr double NEAREST_GRID_DEGREES = 5;

double seasonalTransmittance(double latitude, int m) {
    const double absLat = std::fabs(latitude);
    if (absLat < 23.5) return 0.65 - 0.15 * std::cos(DEG * 360.0 * m / 12.0);
    if (absLat < 35) return 0.75 - 0.1 * std::cos(DEG * 360.0 * m / 12.0);
    if (absLat < 50) return 0.68 - 0.15 * std::cos(DEG * 360.0 * (m + 3) / 12.0);
    return 0.55 - 0.2 * std::cos(DEG * 360.0 * (m + 3) / 12.0);
}

// The clamp as the model has it: any positive value becomes 0.85, so the
// seasonal formula decides only the sign.
double clampedTransmittance(double tau) {
    if (tau > 0) return 0.85;
    if (tau < 0) return 0.3;
    return tau;
}

double diffuseFraction(double kt) {
    if (kt <= 0.22) return 1 - 0.09 * kt;
    if (kt <= 0.8) return 0.9511 - 0.1604 * kt + 4.388 * kt * kt - 16.638 * kt * kt * kt + 12.336 * kt * kt * kt * kt;
    return 0.165;
}

}  // namespace

const std::array<GridPoint, 10> GLOBAL_RADIATION_GRID = {{
    {52, 13, {25, 45, 89, 134, 156, 165, 158, 134, 98, 56, 28, 19}},
    {40, -4, {68, 89, 134, 167, 201, 223, 238, 210, 156, 112, 75, 58}},
    {48, 2, {28, 56, 98, 145, 167, 178, 171, 145, 109, 68, 34, 22}},
    {32, 35, {89, 112, 155, 186, 217, 238, 243, 217, 181, 141, 102, 81}},
    {25, 55, {112, 134, 174, 196, 223, 234, 229, 215, 189, 161, 125, 105}},
    {34, -118, {98, 125, 174, 210, 243, 256, 251, 223, 181, 145, 109, 89}},
    {33, -112, {125, 154, 201, 243, 276, 289, 276, 251, 218, 174, 134, 112}},
    {41, -74, {56, 78, 125, 167, 198, 210, 203, 178, 134, 98, 62, 45}},
    {35, 139, {89, 109, 145, 167, 178, 145, 154, 167, 125, 109, 89, 78}},
    {28, 77, {109, 134, 178, 203, 218, 190, 154, 165, 174, 154, 125, 105}},
}};

const std::array<int, 12> MONTH_MIDDLE_DAY = {17, 47, 75, 105, 135, 162, 198, 228, 258, 288, 318, 344};

SolarRadiationResult GetSolarRadiation(double latitude, double longitude, const std::string& method) {
    if (method == "analytical") return CalculateRadiationAnalytical(latitude, longitude);
    if (method == "lookup") return CalculateRadiationLookup(latitude, longitude);
    SolarRadiationResult result = CalculateRadiationLookup(latitude, longitude);
    if (!result.success) result = CalculateRadiationAnalytical(latitude, longitude);
    return result;
}

SolarRadiationResult CalculateRadiationAnalytical(double latitude, double longitude) {
    SolarRadiationResult r;
    const double lat = latitude * DEG;
    for (int m = 0; m < 12; ++m) {
        const int n = MONTH_MIDDLE_DAY[m];
        const double declination = 23.45 * std::sin(DEG * 360.0 * (284 + n) / 365.0) * DEG;
        const double cosSunset = -std::tan(lat) * std::tan(declination);
        const double sunset = cosSunset > 1 ? 0 : cosSunset < -1 ? M_PI : std::acos(cosSunset);
        const double eccentricity = 1 + 0.033 * std::cos(DEG * 360.0 * n / 365.0);
        const double Ho = DAILY_EXTRATERRESTRIAL * eccentricity * 1e-6 *
                          (sunset * std::sin(lat) * std::sin(declination) +
                           std::cos(lat) * std::cos(declination) * std::sin(sunset));
        const double daily = std::max(1000 * Ho / 3.6, 0.0);
        const double tau = clampedTransmittance(seasonalTransmittance(latitude, m));
        const double clearSkyGlobal = daily * tau;
        const double clearnessIndex = 0.85 * tau;
        const double globalHorizontal = clearSkyGlobal * clearnessIndex / tau;
        r.monthlyGlobalHorizontal[m] = globalHorizontal * DAYS_IN_MONTH[m];
        r.monthlyClearness[m] = clearnessIndex;
        r.monthlyDiffuse[m] = r.monthlyGlobalHorizontal[m] * diffuseFraction(clearnessIndex);
        r.annualTotal += r.monthlyGlobalHorizontal[m];
    }
    r.success = true;
    r.dataSource = "Analytical Model (Duffie-Beckman)";
    return r;
}

SolarRadiationResult CalculateRadiationLookup(double latitude, double longitude) {
    const GridPoint* nearest = nullptr;
    double best = 999999;
    for (const GridPoint& p : GLOBAL_RADIATION_GRID) {
        const double distance = std::sqrt((latitude - p.lat) * (latitude - p.lat) + (longitude - p.lon) * (longitude - p.lon));
        if (distance < best) {
            best = distance;
            nearest = &p;
        }
    }
    if (!nearest || best >= NEAREST_GRID_DEGREES) {
        SolarRadiationResult r = CalculateRadiationAnalytical(latitude, longitude);
        r.dataSource += " + Analytical Fallback";
        return r;
    }
    SolarRadiationResult r;
    for (int m = 0; m < 12; ++m) {
        r.monthlyGlobalHorizontal[m] = nearest->monthlyGHI[m];
        r.monthlyClearness[m] = 0.65;
        r.annualTotal += nearest->monthlyGHI[m];
    }
    r.success = true;
    r.dataSource = "Lookup Table (NASA SSE)";
    return r;
}
