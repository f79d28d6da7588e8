// The synthetic climate year: a file the report run reads like a folded
// download, with a sky that follows the sun.
#include <gtest/gtest.h>

#include <cmath>

#include "solar/analysis/ClimateIrradianceLookup.h"
#include "solar/analysis/SunPosition.h"
#include "solar/analysis/SunTable.h"
#include "solar/analysis/SyntheticClimate.h"
#include "support/TestSupport.h"

namespace {

constexpr double kLat = 32.064;
constexpr double kLon = 34.771;

const std::vector<SyntheticHour>& demoYear() {
    static const std::vector<SyntheticHour> year = MakeSyntheticClimateYear(kLat, kLon, 1);
    return year;
}

TEST(SyntheticClimate, EveryHourOfA365DayYearInOrder) {
    const auto& year = demoYear();
    ASSERT_EQ(year.size(), 8760u);
    EXPECT_EQ(year[0].month, 1);
    EXPECT_EQ(year[0].day, 1);
    EXPECT_EQ(year[0].hour, 0);
    EXPECT_EQ(year[59 * 24].month, 3);  // no February 29
    EXPECT_EQ(year[59 * 24].day, 1);
    EXPECT_EQ(year.back().month, 12);
    EXPECT_EQ(year.back().day, 31);
    EXPECT_EQ(year.back().hour, 23);
}

TEST(SyntheticClimate, IrradianceOnlyWhileTheSunIsUp) {
    for (const SyntheticHour& h : demoYear()) {
        double altitude = 0, azimuth = 0;
        DoSunPosition(DEFAULT_SOLAR_YEAR, h.month, h.day, h.hour, kLat, kLon, altitude, azimuth);
        EXPECT_EQ(h.reflected, 0);
        EXPECT_GE(h.beam, 0);
        if (altitude <= 0) {
            EXPECT_EQ(h.beam + h.diffuse, 0) << h.month << "-" << h.day << " " << h.hour;
        } else if (altitude > 5) {
            EXPECT_GT(h.diffuse, 0) << h.month << "-" << h.day << " " << h.hour;
        }
    }
}

// Solar noon at 34.8 E falls near 09:40 UTC; the monthly mean of the 10:00
// beam follows the sun's height, clouds or not.
TEST(SyntheticClimate, NoonBeamInJuneExceedsDecemberAtLatitude32) {
    double june = 0, december = 0;
    for (const SyntheticHour& h : demoYear()) {
        if (h.hour != 10) continue;
        if (h.month == 6) june += h.beam / 30;
        if (h.month == 12) december += h.beam / 31;
    }
    EXPECT_GT(june, 1.5 * december);
    EXPECT_GT(june, 600);
}

// The nearby row of the built-in radiation grid (32 N 35 E) totals 1962
// kWh/m2 a year; a synthetic year far from it would mislead a demo report.
TEST(SyntheticClimate, YearlyGlobalNearTheGridValueForTheSite) {
    double global = 0;
    for (const SyntheticHour& h : demoYear()) global += (h.beam + h.diffuse) / 1000;
    EXPECT_NEAR(global, 1962, 200);
}

TEST(SyntheticClimate, SouthernHemisphereIsWarmInDecember) {
    double june = 0, december = 0;
    for (const SyntheticHour& h : MakeSyntheticClimateYear(-33.9, 18.4, 1)) {
        if (h.month == 6) june += h.temperature;
        if (h.month == 12) december += h.temperature;
    }
    EXPECT_GT(december / 744, june / 720 + 5);
}

TEST(SyntheticClimate, TextIsTheFoldedFileLayout) {
    SyntheticHour a;
    a.month = 3;
    a.day = 7;
    a.hour = 9;
    a.beam = 1234.567;
    a.diffuse = 0.004;
    a.temperature = -0.04;
    a.wind = 12.26;
    SyntheticHour b;
    b.month = 12;
    b.day = 31;
    b.hour = 23;
    b.temperature = 31.96;
    b.wind = 0.2;
    EXPECT_EQ(SyntheticClimateText({a, b}),
              "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,"
              "AvgTemperature,AvgWindSpeed\n"
              "03-07,09:00,1234.57,0.00,0.00,0.0,12.3\n"
              "12-31,23:00,0.00,0.00,0.00,32.0,0.2\n");
}

TEST(SyntheticClimate, FileAnswersEveryHourThroughTheClimateIndex) {
    testsupport::ScratchDir dir;
    const std::string path = dir.path("PVGIST_H.csv");
    ASSERT_TRUE(WriteSyntheticClimateFile(kLat, kLon, 1, path));
    const QStringList lines = LoadHourlyClimateList(path);
    ASSERT_EQ(lines.size(), 8761);
    const HourIrradianceIndex index(lines);
    for (const SyntheticHour& h : demoYear()) {
        const IrradianceComponents* c = index.find(h.month, h.day, h.hour);
        ASSERT_NE(c, nullptr) << h.month << "-" << h.day << " " << h.hour;
        EXPECT_NEAR(c->beam, h.beam, 0.005);
        EXPECT_NEAR(c->diffuse, h.diffuse, 0.005);
    }
    const IrradianceComponents night = GetRealIrradianceForTime("2025-01-01", "00:00", index);
    EXPECT_EQ(night.beam + night.diffuse + night.reflected, 0);
}

TEST(SyntheticClimate, SameSeedSameFileOtherSeedOtherWeather) {
    const std::string one = SyntheticClimateText(MakeSyntheticClimateYear(kLat, kLon, 7));
    EXPECT_EQ(one, SyntheticClimateText(MakeSyntheticClimateYear(kLat, kLon, 7)));
    EXPECT_NE(one, SyntheticClimateText(MakeSyntheticClimateYear(kLat, kLon, 8)));
}

TEST(SyntheticClimate, UnwritableFolderFails) {
    testsupport::ScratchDir dir;
    EXPECT_FALSE(WriteSyntheticClimateFile(kLat, kLon, 1, dir.path("missing/PVGIST_H.csv")));
}

}  // namespace
