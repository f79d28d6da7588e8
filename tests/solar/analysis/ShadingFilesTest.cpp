// The files around the shading analysis: the ray file written ray by ray,
// the shading CSV read back as a cache, and the per-ray point cache.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"
#include "solar/analysis/EnergyModel.h"
#include "solar/analysis/ShadingPointCache.h"
#include "solar/analysis/ShadingRayFile.h"
#include "solar/analysis/ShadingResultsCache.h"
#include "solar/analysis/ShadowAnalysis.h"
#include "solar/design/PanelStore.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

class ShadingFilesTest : public ::testing::Test {
protected:
    ScratchDir dir;
    void SetUp() override {
        resetFrameState();
        frameState().Offset[0] = 100;
        frameState().Offset[1] = 200;
        frameState().Offset[2] = 10;
        resetShadingRayFile();
        resetShadingPointCache();
        resetSunGlobalLog();
        sunGlobalLog().SunGlobalLogfile = std::fopen(dir.path("solar.log").c_str(), "w");
    }
    void TearDown() override {
        resetShadingRayFile();
        resetShadingPointCache();
        resetSunGlobalLog();
        resetFrameState();
    }
    std::string log() {
        std::fflush(sunGlobalLog().SunGlobalLogfile);
        return readTextFile(dir.path("solar.log"));
    }
};

// A shading CSV row: date, energy, running total, verdict, map position, direct sun count.
std::string row(const char* date, double energy, double total, bool shaded, double x, double y, double z,
                int direct) {
    char text[256];
    std::snprintf(text, sizeof text, "%s,10:00,40.00,180.00,30.00,1.0000,%s,%s,700.00,%.6f,%.6f,%.3f,%.3f,%.3f,%d,0/5,0.0",
                  date, shaded ? "OBSTRUCTED" : "CLEAR", shaded ? "0.00" : "N/A", energy, total, x, y, z, direct);
    return text;
}

}  // namespace

TEST_F(ShadingFilesTest, RayFileWritesRaysInMapCoordinatesAndLeavesOutANotANumber) {
    const std::string path = dir.path("Panel-3_7_Shading.dae");
    BeginShadingDAE(path);
    const double nan = std::nan("");
    LogShadowRay({nan, 0, 0}, {1, 1, 1}, 30, 90);
    LogShadowRay({1, 2, 3}, {4.004, 5, 6.006}, 30, 359.7);
    LogShadowRay({0, 0, 0}, {0, nan, 0}, 30, 90);
    LogShadowRay({-1, -2, -3}, {0, 0, 0}, 40, 45.2);
    EXPECT_EQ(GetRayCount(), 2);
    EXPECT_TRUE(shadingRayFile().azimuthUsed[0]);  // 359.7 + 0.5 wraps to 0
    EXPECT_TRUE(shadingRayFile().azimuthUsed[45]);
    EndDAE();
    EXPECT_EQ(shadingRayFile().fdae, nullptr);
    const std::string text = readTextFile(path);
    EXPECT_NE(text.find("<geometry id=\"ShadingRays-geo\" name=\"3_7_Shading\">\n"), std::string::npos);
    EXPECT_NE(text.find("count=\"99999\">\n"
                        "101.00 202.00 13.00 104.00 205.00 16.01 99.00 198.00 7.00 100.00 200.00 10.00\n"
                        "</float_array>\n"),
              std::string::npos);
    EXPECT_NE(text.find("count=\"4\" stride=\"3\">"), std::string::npos);
    EXPECT_NE(text.find("<lines count=\"2\">"), std::string::npos);
    EXPECT_NE(text.find("<p>\n 0 1 2 3\n</p></lines>\n</mesh></geometry>\n</library_geometries>\n</COLLADA>\n"),
              std::string::npos);
    EXPECT_NE(log().find("DAE closed successfully, 2 rays written\n"), std::string::npos);

    // A new file closes one left open and starts counting again.
    BeginShadingDAE(path);
    LogShadowRay({0, 0, 0}, {1, 1, 1}, 30, 90);
    BeginShadingDAE(dir.path("second.dae"));
    EXPECT_EQ(GetRayCount(), 0);
    EXPECT_FALSE(shadingRayFile().azimuthUsed[90]);
    EndDAE();
}

TEST_F(ShadingFilesTest, ShadingFileNamesComeFromThePanelFileInTheShadingFolder) {
    resetPanelStore();
    panelStore().SHADINGFOLDER = "/site/PANELS/SHADING/";
    PANEL panel;
    std::snprintf(panel.Filename, sizeof panel.Filename, "/site/PANELS/Panel-12_417.dae");
    EXPECT_EQ(GetShadingCSV(panel), "/site/PANELS/SHADING/Panel-12_417_Shading.CSV");
    EXPECT_EQ(GetShadingDae(panel), "/site/PANELS/SHADING/Panel-12_417_Shading.dae");
    resetPanelStore();
}

TEST_F(ShadingFilesTest, ResultsFromTheCsvSumMonthsAndTakeTheLastRunningCounts) {
    const QStringList csv = {
        "header",
        QString::fromStdString(row("2025-01-05", 0.5, 0.5, true, 0, 0, 0, 1)),
        QString::fromStdString(row("2025-01-06", 0.25, 0.75, false, 0, 0, 0, 2)),
        "2025-02-01,10:00,too,short",
        QString::fromStdString(row("2025-03-10", 1.0, 1.75, true, 0, 0, 0, 3)),
        QString::fromStdString(row("bad", 9.0, 2.0, true, 0, 0, 0, 4)),
    };
    CombinedPanelResults r;
    r.MonthlyShadedHours[6] = 9;
    LoadResultsFromCSV(csv, r);
    const double gain = BIFACIALGAINFACTOR;
    EXPECT_DOUBLE_EQ(r.monthlyEnergyMonofacial[0], 0.75);
    EXPECT_DOUBLE_EQ(r.monthlyEnergyBifacial[0], 0.75 * gain);
    EXPECT_DOUBLE_EQ(r.monthlyEnergyMonofacial[2], 1.0);
    EXPECT_EQ(r.MonthlyShadedHours[0], 1);
    EXPECT_EQ(r.MonthlyShadedHours[2], 1);
    EXPECT_EQ(r.MonthlyShadedHours[6], 0);
    // The unparsed date still sets the last total and direct count, but its
    // shade is not counted.
    EXPECT_DOUBLE_EQ(r.annualEnergyMonofacial, 2.0);
    EXPECT_DOUBLE_EQ(r.panel.Annual_kWh, 2.0);
    EXPECT_DOUBLE_EQ(r.annualEnergyBifacial, 2.0 * gain);
    EXPECT_EQ(r.shading.Shaded_Hours, 2);
    EXPECT_EQ(r.Shaded_Hours, 2);
    EXPECT_EQ(r.shading.DirectSun_Hours, 4);
    EXPECT_DOUBLE_EQ(r.shading.Shading_Percent, 50);
    const double keep = ShadeLossFactor;
    EXPECT_DOUBLE_EQ(r.shading.energyLossKwh, 2.0 * 0.5 * (1 - keep) / keep);
    const std::string text = log();
    EXPECT_NE(text.find("LoadResultsFromCSV: Processing 6 lines\n"), std::string::npos);
    EXPECT_NE(text.find("  WARNING: Line 3 has only 4 fields (need 15+)\n"), std::string::npos);
    EXPECT_NE(text.find("  WARNING: Failed to parse date 'bad' on line 5\n"), std::string::npos);
    EXPECT_NE(text.find("LoadResultsFromCSV complete: 2.0 kWh, 2 shaded hours\n"), std::string::npos);
}

TEST_F(ShadingFilesTest, CacheIsValidWithinTwoMetresAndThirtyCentimetresOfHeight) {
    // The row stands at map (110, 220, 15): local (10, 20, 5).
    const std::string path = dir.path("cache.csv");
    writeTextFile(path, "header\n" + row("2025-06-01", 0.5, 0.5, false, 110, 220, 15, 1) + "\n");
    CombinedPanelResults r;
    EXPECT_TRUE(LoadAndValidateCache(path, 11.9, 20, 5.2, r, 2));
    EXPECT_DOUBLE_EQ(r.annualEnergyMonofacial, 0.5);

    CombinedPanelResults untouched;
    untouched.annualEnergyMonofacial = 7;
    EXPECT_FALSE(LoadAndValidateCache(path, 10, 20, 5.4, untouched, 2));   // 0.4 m higher
    EXPECT_FALSE(LoadAndValidateCache(path, 12.1, 20, 5, untouched, 2));   // 2.1 m away
    EXPECT_NE(log().find("Position changed by 2.10m (tolerance: 2.00m)\n"), std::string::npos);
    writeTextFile(path, "header\n");
    EXPECT_FALSE(LoadAndValidateCache(path, 10, 20, 5, untouched, 2));
    writeTextFile(path, "header\n1,2,3,4,5,6,7,8,9,10,11,110,220,15\n");
    EXPECT_FALSE(LoadAndValidateCache(path, 10, 20, 5, untouched, 2));
    EXPECT_FALSE(LoadAndValidateCache(dir.path("missing.csv"), 10, 20, 5, untouched, 2));
    EXPECT_DOUBLE_EQ(untouched.annualEnergyMonofacial, 7);

    QStringList lines;
    EXPECT_FALSE(ReadCSVData(dir.path("missing.csv"), lines));
    EXPECT_EQ(ParseCSVLine("a,,b,"), (QStringList{"a", "", "b", ""}));
}

TEST_F(ShadingFilesTest, PointCacheFindsExactKeysAndNearPointsOfTheSameHour) {
    EXPECT_EQ(MakeCacheKey(1.234, 4.567, -0.1, 7), "1.23_4.57_-0.10_7");
    EXPECT_TRUE(PointsAreClose(0, 0, 0, 0.1, 0, 0, 0.2));
    EXPECT_FALSE(PointsAreClose(0, 0, 0, 0.2, 0, 0, 0.2));  // strictly below

    bool shaded = false;
    EXPECT_FALSE(FindCachedResult(1, 2, 3, 5, shaded));
    StoreCacheResult(1, 2, 3, 5, true);
    EXPECT_TRUE(FindCachedResult(1.001, 2, 3, 5, shaded));  // the same key
    EXPECT_TRUE(shaded);
    shaded = false;
    EXPECT_TRUE(FindCachedResult(1.15, 2, 3, 5, shaded));  // 0.15 m away
    EXPECT_TRUE(shaded);
    EXPECT_FALSE(FindCachedResult(1.25, 2, 3, 5, shaded));  // too far
    EXPECT_FALSE(FindCachedResult(1.1, 2, 3, 6, shaded));   // another hour

    shadingPointCache().g_cacheEnabled = false;
    EXPECT_FALSE(FindCachedResult(1, 2, 3, 5, shaded));
    StoreCacheResult(9, 9, 9, 1, true);
    EXPECT_EQ(shadingPointCache().g_shadingCache.size(), 1u);
    shadingPointCache().g_cacheEnabled = true;
    ClearShadingCache();
    EXPECT_TRUE(shadingPointCache().g_shadingCache.empty());
}

TEST_F(ShadingFilesTest, PointCacheDropsTheFirstTenThousandKeysBeyondFiftyThousand) {
    for (int i = 0; i <= 50000; ++i) StoreCacheResult(0, 0, 0, i, i % 2 == 0);
    const auto& cache = shadingPointCache().g_shadingCache;
    EXPECT_EQ(cache.size(), 40001u);
    // Keys sort as text: "_0", then the 11111 keys whose hour starts with 1
    // ("_1", "_10", "_100", ...), so "_0" and "_1" are gone and "_2" stays.
    EXPECT_EQ(cache.count("0.00_0.00_0.00_0"), 0u);
    EXPECT_EQ(cache.count("0.00_0.00_0.00_1"), 0u);
    EXPECT_EQ(cache.count("0.00_0.00_0.00_2"), 1u);
    EXPECT_EQ(cache.count("0.00_0.00_0.00_9999"), 1u);
    // The near search walks back 100 entries from the last key ("_9999"):
    // hour 9999 is found near, hour 2 near the front of the map is not.
    bool shaded = false;
    EXPECT_TRUE(FindCachedResult(0.01, 0, 0, 9999, shaded));
    EXPECT_FALSE(FindCachedResult(0.01, 0, 0, 2, shaded));
    EXPECT_TRUE(FindCachedResult(0, 0, 0, 2, shaded));  // its exact key is found
}
