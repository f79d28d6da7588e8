// Calendar, solar position and the direction helpers, against almanac
// values (PyEphem 4.1, VSOP87, no refraction) and Meeus' worked examples.
#include <gtest/gtest.h>

#include <cmath>

#include "solar/analysis/SunDirection.h"
#include "solar/analysis/SunPosition.h"

namespace {

struct SunAt {
    double altitude = 0;
    double azimuth = 0;
};

SunAt sunAt(int month, int day, double hour, double lat, double lon) {
    SunAt s;
    DoSunPosition(2025, month, day, hour, lat, lon, s.altitude, s.azimuth);
    return s;
}

// The hour (UT) in [from, to] at which `rises` turns true, by bisection.
template <typename Test>
double crossing(double from, double to, Test rises) {
    for (int i = 0; i < 60; ++i) {
        const double mid = (from + to) / 2;
        (rises(mid) ? to : from) = mid;
    }
    return from;
}

double hms(int h, int m, double s) { return h + m / 60.0 + s / 3600.0; }

}  // namespace

TEST(Calendar, LeapYearsAndJulianDates) {
    EXPECT_TRUE(IsLeapYear(2024));
    EXPECT_TRUE(IsLeapYear(2000));
    EXPECT_FALSE(IsLeapYear(2025));
    EXPECT_FALSE(IsLeapYear(1900));
    // Meeus, Astronomical Algorithms, chapter 7.
    EXPECT_DOUBLE_EQ(CalculateJulianDate(2000, 1, 1, 12.0), 2451545.0);
    EXPECT_DOUBLE_EQ(CalculateJulianDate(1999, 1, 1, 0.0), 2451179.5);
    EXPECT_DOUBLE_EQ(CalculateJulianDate(1987, 6, 19, 12.0), 2446966.0);
    EXPECT_DOUBLE_EQ(CalculateJulianDate(1600, 1, 1, 0.0), 2305447.5);
    EXPECT_DOUBLE_EQ(CalculateJulianDate(2024, 3, 1, 0.0) - CalculateJulianDate(2024, 2, 28, 0.0), 2.0);
}

// At the transit the sun stands due south, at 90 - latitude + declination.
// Almanac, 52 N 0 E: 2025-06-21 transit 12:01:51.5 UT, declination +23.4367;
// 2025-12-21 transit 11:58:11.0 UT, declination -23.4406. New York
// (40.7128 N 74.006 W), 2025-03-20: transit 17:03:19.3 UT at 49.4177.
TEST(SunPosition, StandsDueSouthAtSolarNoon) {
    struct Case {
        int month, day;
        double lat, lon, transit, altitude;
    };
    const Case cases[] = {
        {6, 21, 52, 0, hms(12, 1, 51.5), 90 - 52 + 23.4367},
        {12, 21, 52, 0, hms(11, 58, 11.0), 90 - 52 - 23.4406},
        {3, 20, 40.7128, -74.006, hms(17, 3, 19.3), 49.4177},
    };
    for (const Case& c : cases) {
        const double noon = crossing(c.transit - 0.5, c.transit + 0.5,
                                     [&](double h) { return sunAt(c.month, c.day, h, c.lat, c.lon).azimuth >= 180; });
        EXPECT_NEAR(noon, c.transit, 10.0 / 3600) << c.month;  // within 10 s
        const SunAt s = sunAt(c.month, c.day, noon, c.lat, c.lon);
        EXPECT_NEAR(s.azimuth, 180.0, 1e-6);
        EXPECT_NEAR(s.altitude, c.altitude, 0.01) << c.month;
    }
}

TEST(SunPosition, MatchesTheAlmanacThroughTheDay) {
    struct Case {
        int month, day, hour;
        double lat, lon, altitude, azimuth;
    };
    // The added refraction term is below 0.005 degrees at these heights; the
    // azimuth near the zenith (80 degrees) magnifies small errors, hence 0.05.
    const Case cases[] = {
        {1, 1, 8, 32.08, 34.78, 29.5481, 152.2280},     {6, 21, 10, 32.08, 34.78, 80.5526, 204.9031},
        {9, 22, 15, 32.08, 34.78, 7.1098, 265.5786},    {7, 4, 21, 40.7128, -74.006, 37.1287, 269.3960},
        {6, 21, 0, 75.0, 20.0, 9.2308, 18.1345},
    };
    for (const Case& c : cases) {
        const SunAt s = sunAt(c.month, c.day, c.hour, c.lat, c.lon);
        EXPECT_NEAR(s.altitude, c.altitude, 0.015) << c.month << "-" << c.day;
        EXPECT_NEAR(s.azimuth, c.azimuth, 0.05) << c.month << "-" << c.day;
    }
}

TEST(SunPosition, RefractionIsAddedInRadiansUnconverted) {
    // Refraction starts above a geometric altitude of -0.575 degrees with
    // 0.0002967 / tan(-0.0100356 + 0.00312536 / 0.0791504) = 0.01007, added to
    // degrees as it is; so the sunrise jumps over the altitudes -0.575..-0.5649.
    const auto altitude = [](double h) { return sunAt(3, 20, h, 32, 35).altitude; };
    const double before = crossing(2.0, 6.0, [&](double h) { return altitude(h) >= -0.57; });
    const double after = before + 1e-9;
    EXPECT_NEAR(altitude(before), -0.575, 1e-6);
    EXPECT_NEAR(altitude(after) - altitude(before), 0.01007, 2e-4);
}

TEST(SunDirection, PointsEastNorthUp) {
    Vec3 v = SunDirection(30, 180);
    EXPECT_NEAR(v.x, 0, 1e-12);
    EXPECT_NEAR(v.y, -std::sqrt(3.0) / 2, 1e-12);
    EXPECT_NEAR(v.z, 0.5, 1e-12);
    EXPECT_NEAR(SunDirection(0, -270).x, 1, 1e-12);  // azimuth brought into 0..360
    EXPECT_NEAR(SunDirection(120, 0).z, 1, 1e-12);   // altitude clamped to 90
    v = Normalize({0, 0, 0});
    EXPECT_EQ(v.z, 1);
    EXPECT_DOUBLE_EQ(Normalize({3, 4, 0}).y, 0.8);
}

TEST(DecodeHMS, SplitsSecondsIntoClockParts) {
    int h, m, s, ss;
    DecodeHMS(7384.25f, h, m, s, ss);  // 2 h 3 min 4.25 s
    EXPECT_EQ(h, 2);
    EXPECT_EQ(m, 3);
    EXPECT_EQ(s, 4);
    EXPECT_EQ(ss, 250);
}
