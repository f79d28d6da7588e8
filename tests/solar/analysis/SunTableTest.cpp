// The sun table file: its format, the hours it holds, and loading it back.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "app/services/SessionPaths.h"
#include "app/services/SunGlobalLog.h"
#include "solar/analysis/SunTable.h"
#include "solar/analysis/SunTableFile.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

const char* const kHeader = "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor\n";

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// Starts from an empty table with the solar log in a scratch file.
class SunTableFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetSunTable();
        resetSunGlobalLog();
        sunGlobalLog().SunGlobalLogfile = std::fopen(dir.path("solar.log").c_str(), "w");
    }
    void TearDown() override {
        resetSunGlobalLog();
        resetSunTable();
    }
    std::string log() {
        std::fflush(sunGlobalLog().SunGlobalLogfile);
        return readTextFile(dir.path("solar.log"));
    }
    std::string table(double lat, double lon, int year, double tilt, double azimuth, int* rows = nullptr) {
        const std::string path = dir.path("Panel_1_1_Sun.csv");
        const int written = GenerateSunPositionData(lat, lon, year, tilt, azimuth, path);
        if (rows) *rows = written;
        return readTextFile(path);
    }
    ScratchDir dir;
};

}  // namespace

// Rows written by hand from the almanac (PyEphem 4.1, geocentric, no
// refraction) for a panel of tilt 30 facing south at 52 N 0 E. On 2025-11-13
// at 10:00 UT the sun stands at 16.3299 / 154.1902 with an incident angle of
// 47.5100; on 2025-10-02 at 16:00 at 13.2306 / 245.6088, incident 66.4713,
// so IAM 1 - 6.4713 / 30 = 0.78429. Each lies 0.004 or more from a rounding
// boundary, beyond the model's difference from the almanac.
TEST_F(SunTableFileTest, WritesTheHeaderAndRowsInTheTableFormat) {
    int rows = 0;
    const std::string text = table(52, 0, 2025, 30, 180, &rows);
    const std::vector<std::string> lines = linesOf(text);
    ASSERT_GT(lines.size(), 1u);
    EXPECT_EQ(text.substr(0, std::string(kHeader).size()), kHeader);
    EXPECT_EQ(rows, static_cast<int>(lines.size()) - 1);
    EXPECT_NE(text.find("\n2025-11-13,10:00,16.33,154.19,47.51,1.0000\n"), std::string::npos);
    EXPECT_NE(text.find("\n2025-10-02,16:00,13.23,245.61,66.47,0.7843\n"), std::string::npos);
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(log(), "Sun position data generated: " + std::to_string(rows) + " entries\n");
}

TEST_F(SunTableFileTest, LeapYearExaminesEveryHourOf366Days) {
    // On the equator every day has daylight hours, so every examined day shows.
    std::set<std::string> days2024, days2025;
    for (const std::string& line : linesOf(table(0, 0, 2024, 0, 180))) days2024.insert(line.substr(0, 10));
    for (const std::string& line : linesOf(table(0, 0, 2025, 0, 180))) days2025.insert(line.substr(0, 10));
    days2024.erase("Date,Local");
    days2025.erase("Date,Local");
    EXPECT_EQ(days2024.size(), 366u);
    EXPECT_EQ(days2025.size(), 365u);
    EXPECT_TRUE(days2024.count("2024-02-29"));
    EXPECT_FALSE(days2025.count("2025-02-29"));
    EXPECT_TRUE(days2024.count("2024-12-31"));

    // In the midnight sun at 75 N all 24 hours of the day are examined.
    int hours = 0;
    for (const std::string& line : linesOf(table(75, 20, 2024, 0, 180)))
        if (line.rfind("2024-06-21,", 0) == 0) ++hours;
    EXPECT_EQ(hours, 24);
}

TEST_F(SunTableFileTest, PolarNightHasNoRowsAndABackFacingPanelNone) {
    for (const std::string& line : linesOf(table(80, 20, 2025, 0, 180)))
        EXPECT_NE(line.rfind("2025-12-", 0), 0u) << line;

    // Facing the ground, the panel turns its back on every sun above the horizon.
    int rows = -1;
    EXPECT_EQ(table(32, 35, 2025, 180, 180, &rows), kHeader);
    EXPECT_EQ(rows, 0);
    EXPECT_FALSE(InitializeShadowing(dir.path("Panel_1_1_Sun.csv")));
    EXPECT_EQ(sunTable().sunCount, 0);
    EXPECT_FALSE(sunTable().shadow_initialized);
    EXPECT_NE(log().find("Initializing shadowing...\nSun positions loaded: 0\nERROR: No valid sun positions parsed!\n"),
              std::string::npos);
}

TEST_F(SunTableFileTest, LoadKeepsOnlyTheFirst4360Rows) {
    // A horizontal panel at 75 N sees the sun in more than 4360 hours.
    int rows = 0;
    const std::vector<std::string> lines = linesOf(table(75, 20, 2025, 0, 180, &rows));
    ASSERT_GT(rows, 4360);
    ASSERT_TRUE(InitializeShadowing(dir.path("Panel_1_1_Sun.csv")));
    const SunTable& t = sunTable();
    EXPECT_EQ(t.sunCount, 4360);
    EXPECT_TRUE(t.shadow_initialized);
    const std::string last = lines[4360];  // line 0 is the header
    EXPECT_EQ(std::string(t.sunData[4359].date) + "," + t.sunData[4359].time, last.substr(0, 16));
    EXPECT_EQ(t.sunData[4360].date[0], '\0');
    EXPECT_NE(log().find("Initializing shadowing...\nSun positions loaded: 4360\n"
                         "Shadowing initialization completed successfully.\n"),
              std::string::npos);
}

TEST_F(SunTableFileTest, LoadSkipsMalformedRowsAndNeedsOnlyFourFields) {
    const std::string path = dir.path("hand.csv");
    writeTextFile(path, std::string(kHeader) +
                            "2025-01-01,07:00,5.50,120.25,80.00,0.3333\n"
                            "not a row\n"
                            "2025-01-01,08:00,abc,130.00,70.00,0.6667\n"
                            "2025-01-01,09:00,20.5,140\n"
                            "2025-01-01,10:00,25.25\n");
    ASSERT_TRUE(InitializeShadowing(path));
    const SunTable& t = sunTable();
    ASSERT_EQ(t.sunCount, 2);
    EXPECT_STREQ(t.sunData[0].date, "2025-01-01");
    EXPECT_STREQ(t.sunData[0].time, "07:00");
    EXPECT_DOUBLE_EQ(t.sunData[0].altitude, 5.5);
    EXPECT_DOUBLE_EQ(t.sunData[0].azimuth, 120.25);
    EXPECT_STREQ(t.sunData[1].time, "09:00");
    EXPECT_DOUBLE_EQ(t.sunData[1].azimuth, 140.0);
}

TEST_F(SunTableFileTest, FailuresAreLoggedAndLeaveAnEmptyTable) {
    writeTextFile(dir.path("one.csv"), std::string(kHeader) + "2025-06-01,12:00,70.00,180.00,10.00,1.0000\n");
    ASSERT_TRUE(InitializeShadowing(dir.path("one.csv")));
    EXPECT_FALSE(InitializeShadowing(dir.path("missing.csv")));
    EXPECT_EQ(sunTable().sunCount, 0);
    EXPECT_FALSE(sunTable().shadow_initialized);
    EXPECT_EQ(GenerateSunPositionData(32, 35, 2025, 30, 180, dir.path("no/folder/t.csv")), -1);
    EXPECT_NE(log().find("ERROR: Could not open sun CSV " + dir.path("missing.csv") +
                         "\nERROR: Cannot create sun position file\n"),
              std::string::npos);
}

TEST(SunTableFileName, LiesInTheTemporaryFolderWithSlashesReplaced) {
    resetSessionPaths();
    sessionPaths().ORVO_T = "/tmp/orvo/";
    EXPECT_EQ(SunTableFileName("12/3"), "/tmp/orvo/Panel_12_3_Sun.csv");
    resetSessionPaths();
}
