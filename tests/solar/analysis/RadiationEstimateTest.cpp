// Monthly radiation estimates: the grid rows and the analytical model
// against values worked out by hand and by its closed form at the equator.
#include <gtest/gtest.h>

#include <cmath>

#include "solar/analysis/RadiationEstimate.h"

namespace {
constexpr const char* ANALYTICAL = "Analytical Model (Duffie-Beckman)";
constexpr const char* LOOKUP = "Lookup Table (NASA SSE)";
constexpr double DEG = M_PI / 180;
constexpr int DAYS[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
// Every transmittance clamps to 0.85, so kt = 0.85 × 0.85.
constexpr double KT = 0.7225;
}  // namespace

TEST(RadiationEstimate, LookupTakesTheNearestRowNearerThanFiveDegrees) {
    const SolarRadiationResult tlv = CalculateRadiationLookup(32.1, 34.8);
    EXPECT_TRUE(tlv.success);
    EXPECT_EQ(tlv.dataSource, LOOKUP);
    EXPECT_EQ(tlv.monthlyGlobalHorizontal[0], 89);
    EXPECT_EQ(tlv.monthlyGlobalHorizontal[11], 81);
    EXPECT_EQ(tlv.annualTotal, 1962);
    EXPECT_EQ(tlv.monthlyClearness[6], 0.65);
    EXPECT_EQ(tlv.monthlyDiffuse[6], 0);

    // Equally far from (34, -118) and (33, -112): the first row wins.
    const SolarRadiationResult between = CalculateRadiationLookup(33.5, -115);
    EXPECT_EQ(between.monthlyGlobalHorizontal[0], 98);
    EXPECT_EQ(between.annualTotal, 2104);

    // Exactly 5 degrees from (52, 13) is not nearer than 5.
    const SolarRadiationResult far = CalculateRadiationLookup(57, 13);
    EXPECT_EQ(far.dataSource, std::string(ANALYTICAL) + " + Analytical Fallback");
    EXPECT_TRUE(far.success);
    EXPECT_DOUBLE_EQ(far.annualTotal, CalculateRadiationAnalytical(57, 13).annualTotal);
}

// At latitude 0 the sunset hour angle is pi/2 and the daily value is
// K × eccentricity × cos(declination) / 3.6 kWh; the month total is that
// times kt and the days. March (day 75) by hand: 10528.88 Wh × 0.7225 × 31.
TEST(RadiationEstimate, AnalyticalModelAtTheEquatorFollowsItsClosedForm) {
    const SolarRadiationResult r = CalculateRadiationAnalytical(0, 123);
    EXPECT_EQ(r.dataSource, ANALYTICAL);
    double annual = 0;
    for (int m = 0; m < 12; ++m) {
        const int n = MONTH_MIDDLE_DAY[m];
        const double declination = 23.45 * std::sin(DEG * 360 * (284 + n) / 365);
        const double eccentricity = 1 + 0.033 * std::cos(DEG * 360 * n / 365);
        const double daily = 37595198.685301624 * eccentricity * std::cos(declination * DEG) / 3600;
        const double total = daily * KT * DAYS[m];
        EXPECT_NEAR(r.monthlyGlobalHorizontal[m], total, total * 1e-9) << m;
        // Diffuse fraction at kt 0.7225: 0.9511 - 0.1604 kt + 4.388 kt² - 16.638 kt³ + 12.336 kt⁴ = 0.212204.
        EXPECT_NEAR(r.monthlyDiffuse[m], total * 0.212204, total * 1e-6) << m;
        EXPECT_DOUBLE_EQ(r.monthlyClearness[m], KT);
        annual += total;
    }
    EXPECT_NEAR(r.monthlyGlobalHorizontal[2], 235820.6, 0.5);
    EXPECT_NEAR(r.annualTotal, annual, annual * 1e-9);
}

// At 80 degrees: no sunrise in December (total 0), no sunset in June, where
// the day is pi × sin(lat) × sin(decl) of K: 266095.8 Wh for June by hand.
TEST(RadiationEstimate, PolarNightAndPolarDay) {
    const SolarRadiationResult north = CalculateRadiationAnalytical(80, 0);
    EXPECT_EQ(north.monthlyGlobalHorizontal[11], 0);
    EXPECT_NEAR(north.monthlyGlobalHorizontal[5], 266095.8, 0.5);
    EXPECT_EQ(CalculateRadiationAnalytical(-80, 0).monthlyGlobalHorizontal[5], 0);
}

TEST(RadiationEstimate, MethodChoosesTheEstimate) {
    EXPECT_EQ(GetSolarRadiation(32.1, 34.8, "analytical").dataSource, ANALYTICAL);
    EXPECT_EQ(GetSolarRadiation(32.1, 34.8, "lookup").dataSource, LOOKUP);
    EXPECT_EQ(GetSolarRadiation(32.1, 34.8, "best").dataSource, LOOKUP);
    EXPECT_EQ(GetSolarRadiation(0, 0, "best").dataSource, std::string(ANALYTICAL) + " + Analytical Fallback");
}
