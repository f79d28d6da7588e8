// Folding a downloaded answer into the hourly climate file, on small
// answers whose averages are worked out by hand.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/services/DialogService.h"
#include "geo/Frames.h"
#include "solar/analysis/ClimateHourlyIrradiance.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

const char* const HEADER_ALL =
    "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
    "AvgWindSpeed\n";
const char* const HEADER_IRRADIANCE =
    "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance\n";

class IrradianceFolding : public ::testing::Test {
protected:
    void SetUp() override {
        resetFrameState();
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetFrameState();
    }
    std::string fold(const std::string& answer) {
        writeTextFile(dir.path("raw.csv"), answer);
        EXPECT_TRUE(CreateHourlyIrradianceFromDownloadedCSV(dir.path("raw.csv"), dir.path("hourly.csv")));
        return readTextFile(dir.path("hourly.csv"));
    }
    ScratchDir dir;
    ScriptedDialogService dialogs;
};

}  // namespace

// Beam: "5000.01", then 10000.02 held as "10000.00" (six digits), then
// 15000.01 held as "15000.00": 5000.00, where the exact mean is 5000.01.
// Diffuse: 0.004 is held as "0.00" at every step.
TEST_F(IrradianceFolding, SumsAreHeldAsTextOfSixDigitsAndTwoDecimals) {
    EXPECT_EQ(fold("Latitude (decimal degrees):\t32.100\n\n"
                   "time,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n"
                   "20180101:1010,5000.01,0.004,1.5,12.0,20.1,1.5,0.0\n"
                   "20190101:1010,5000.01,0.004,1.5,12.0,20.2,2.5,0.0\n"
                   "20200101:1011,5000.01,0.004,1.5,12.0,20.6,3.5,0.0\n"),
              std::string(HEADER_ALL) + "01-01,10:00,5000.00,0.00,1.50,20.3,2.5\n");
}

// G(i) alone is all beam. Rows of five fields or fewer are skipped even in
// daylight; unreadable numbers take 0. The second header starts the columns
// over: without T2m the temperature neither sums nor appears.
TEST_F(IrradianceFolding, HeaderDecidesTheColumnsAndALaterHeaderStartsOver) {
    EXPECT_EQ(fold("time,G(i),H_sun,T2m,WS10m,Int\n"
                   "20200101:1010,123.4,15.0,18.0,2.0,0.0\n"
                   "20200101:1110,-,15.0,18.0,2.0,0.0\n"
                   "20200101:1210,1,2,3,4\n"
                   "\n"
                   "time,Gb(i),Gd(i),Gr(i),H_sun,Int\n"
                   "20210101:1010,10.0,20.0,30.0,15.0,0.0\n"),
              std::string(HEADER_IRRADIANCE) + "01-01,10:00,66.70,10.00,15.00\n01-01,11:00,0.00,0.00,0.00\n");
}

// Unreadable or missing temperature and wind read as 20 and 1. At 200 m the
// temperature drops by 1.3 degrees and the wind grows by 4 %; at or below
// 0 m nothing changes.
TEST_F(IrradianceFolding, DefaultsAndTheHeightCorrection) {
    const std::string answer =
        "time,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n"
        "20200615:0810,100.0,50.0,5.0,40.0,n/a,,0.0\n"
        "20200615:0910,100.0,50.0,5.0,40.0,30.0,4.0,0.0\n"
        "20200615:1010,100.0,50.0,5.0,-1.0,30.0,4.0,0.0\n"
        "20200615:1110,100.0,50.0,5.0,40.0,30.0,4.0\n"
        "20200615:1210,100.0,50.0,5.0,40.0,30.0\n";
    frameState().OCENTER[2] = 200;
    EXPECT_EQ(fold(answer), std::string(HEADER_ALL) +
                                "06-15,08:00,100.00,50.00,5.00,18.7,1.0\n"
                                "06-15,09:00,100.00,50.00,5.00,28.7,4.2\n"
                                "06-15,11:00,100.00,50.00,5.00,28.7,4.2\n"
                                "06-15,12:00,100.00,50.00,5.00,28.7,1.0\n");
    for (double altitude : {0.0, -50.0}) {
        frameState().OCENTER[2] = altitude;
        EXPECT_EQ(fold(answer), std::string(HEADER_ALL) +
                                    "06-15,08:00,100.00,50.00,5.00,20.0,1.0\n"
                                    "06-15,09:00,100.00,50.00,5.00,30.0,4.0\n"
                                    "06-15,11:00,100.00,50.00,5.00,30.0,4.0\n"
                                    "06-15,12:00,100.00,50.00,5.00,30.0,1.0\n");
    }
}

TEST_F(IrradianceFolding, MissingAnswerIsShownAndNothingIsWritten) {
    EXPECT_FALSE(CreateHourlyIrradianceFromDownloadedCSV(dir.path("none.csv"), dir.path("hourly.csv")));
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text.toStdString(), "PVGIS CSV file not found: " + dir.path("none.csv"));
    EXPECT_FALSE(std::filesystem::exists(dir.path("hourly.csv")));
}
