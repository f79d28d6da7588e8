// The shadow ray analysis of one panel on a tiny scene: a flat roof with a
// wall of 10 m ten metres east of the panel, a hand-made sun table and
// climate list, and the shading CSV and ray file worked out by hand.
#include <gtest/gtest.h>

#include <QStringList>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "app/services/DialogService.h"
#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"
#include "solar/analysis/ClimateInUse.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/ShadingRayFile.h"
#include "solar/analysis/ShadowAnalysis.h"
#include "solar/analysis/SunTable.h"
#include "solar/analysis/SunTableFile.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PlacementDae.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

using testsupport::addLayer;
using testsupport::makeRectangle;
using testsupport::makeWallX;
using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// Local = map - (1000, 2000, 100). The panel (flat, 2 x 1 m) lies at local
// (0, 0, 1); the wall stands at x = 10 from y = -0.25 to 50, 10 m high. From
// the east the sun is blocked where 1 + horizontal distance x tan(altitude)
// stays below 10: at 30 degrees for the centre (6.77) and the two northern
// corners (7.35 and 6.20); at 44 degrees for the north-east corner only
// (9.69; the centre reaches 10.66). The southern corners pass south of the wall.
const char* const kSunTable =
    "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor\n"
    "2025-06-21,04:00,3.00,60.00,0,0\n"      // altitude 5 or less: no row
    "2025-06-21,05:00,8.00,70.00,0,0\n"      // incident 82, above 80: no row
    "2025-06-21,07:00,30.00,90.00,0,0\n"     // centre, NW and NE corners blocked
    "2025-06-21,08:00,44.00,90.00,0,0\n"     // NE corner blocked
    "2025-06-21,12:00,89.50,180.00,0,0\n"    // incident 0.5, on the normal: no row
    "2025-06-21,15:00,50.00,270.00,0,0\n"    // from the west: clear
    "2025-07-02,16:00,40.00,270.00,0,0\n";  // no climate line: -3.00

const QStringList kClimate = {
    "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
    "AvgWindSpeed",
    "06-21,07:00,400.00,100.00,50.00,25.0,2.0",
    "06-21,08:00,600.00,120.00,40.00,30.0,2.0",
    "06-21,15:00,500.00,100.00,20.00,20.0,2.0",
};

const char* const kCsvHeader =
    "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor,GetObstruction_Result,Obstruction_Distance,"
    "PVGIS_Irradiance,Energy,Total_energy,Panel_X,Panel_Y,Panel_Z,Direct_Sun_Hours,Shading_Points,"
    "Shading_Loss_Percent";

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, ',');) fields.push_back(field);
    return fields;
}

// 2000 x 1000 mm, 20 %, 400 W, NOCT 45, -0.4 %/C, flat and facing south;
// centre at map (x, y, z), corners 1 m east/west and 0.5 m north/south.
PANEL panelAt(double x, double y, double z) {
    PANEL p;
    std::snprintf(p.Name, sizeof p.Name, "1/1");
    std::snprintf(p.Filename, sizeof p.Filename, "/model/PANELS/Panel-1_1.dae");
    p.CenterPoint = {x, y, z, 0};
    p.Corners[0] = {x - 1, y - 0.5, z, 0};
    p.Corners[1] = {x - 1, y + 0.5, z, 0};
    p.Corners[2] = {x + 1, y + 0.5, z, 0};
    p.Corners[3] = {x + 1, y - 0.5, z, 0};
    p.Length = 2000;
    p.Width = 1000;
    p.Efficiency = 20;
    p.PanelPowerratingKW = 400;
    p.NOCT_C = 45;
    p.TempCoeff_Pmax_PercentPercent = -0.4;
    p.DTilt = 0;
    p.DAzimuth = 180;
    return p;
}

class ShadowAnalysisTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    ScratchDir dir;
    std::string sunFile;
    std::vector<QString> status;

    void SetUp() override {
        resetFrameState();
        frameState().Offset[0] = 1000;
        frameState().Offset[1] = 2000;
        frameState().Offset[2] = 100;
        resetPanelStore();
        panelStore().SHADINGFOLDER = QString::fromStdString(dir.root());
        resetReportRun();
        reportRun().GlobalAnalyzingLevel = 2;
        reportRun().Kamatohandle = 5;
        reportHooks().statusLine = [this](const QString& text) { status.push_back(text); };
        resetShadingRayFile();
        resetSunGlobalLog();
        sunGlobalLog().SunGlobalLogfile = std::fopen(dir.path("solar.log").c_str(), "w");
        addLayer(makeRectangle("roof", -5, -5, 5, 5, 0));
        addLayer(makeWallX("wall", 10, -0.25, 50, 0, 10));
        SetClimateInUse(kClimate);
        useSunTable(kSunTable);
    }
    void TearDown() override {
        ClearClimateInUse();
        resetReportHooks();
        resetReportRun();
        resetShadingRayFile();
        resetSunGlobalLog();
        resetSunTable();
        resetPanelStore();
        resetFrameState();
    }
    void useSunTable(const std::string& text) {
        sunFile = dir.path("Panel_1_1_Sun.csv");
        writeTextFile(sunFile, text);
        ASSERT_TRUE(InitializeShadowing(sunFile));
    }
    CombinedPanelResults analyse(const PANEL& panel, bool onlyCenter, int optimizerType, std::string* csv = nullptr) {
        CombinedPanelResults r;
        r.panel = panel;
        const std::string path = AnalyzeShadowForPointEx(panel, r, sunFile, onlyCenter, optimizerType);
        if (csv) *csv = path;
        return r;
    }
    std::string log() {
        std::fflush(sunGlobalLog().SunGlobalLogfile);
        return readTextFile(dir.path("solar.log"));
    }
    std::string csvPath() const { return dir.path("Panel-1_1_Shading.CSV"); }
    std::string daePath() const { return dir.path("Panel-1_1_Shading.dae"); }
};

}  // namespace

TEST_F(ShadowAnalysisTest, OptimizerCsvHoldsOneRowPerCountedHourWithItsShadeAndEnergy) {
    std::string path;
    const CombinedPanelResults r = analyse(panelAt(1000, 2000, 101), false, 1, &path);
    EXPECT_EQ(path, csvPath());
    // Tilt 0: tilted = beam + diffuse. 07:00: 500 W/m2, cell 25 + 25 * 500 / 800
    // = 40.625 C, x (1 - 0.004 * 15.625) = 468.75, 3 of 5 points -> 42 % ->
    // 271.875, x 2 m2 x 0.2 / 1000 = 0.108750. 08:00: 720, cell 52.5 C -> x 0.89
    // = 640.8, 1 of 5 -> 14 % -> 551.088 -> 0.220435. 15:00: 600, cell 38.75 C
    // -> x 0.945 = 567 -> 0.226800. 16:00 on 07-02 has no climate line: 0.
    const std::vector<std::string> expected = {
        kCsvHeader,
        "2025-06-21,07:00,30.00,90.00,60.00,1.0000,OBSTRUCTED,0.00,550.00,0.108750,0.108750,1000.000,2000.000,"
        "101.000,1,3/5,42.0",
        "2025-06-21,08:00,44.00,90.00,46.00,1.0000,OBSTRUCTED,0.00,760.00,0.220435,0.329185,1000.000,2000.000,"
        "101.000,2,1/5,14.0",
        "2025-06-21,15:00,50.00,270.00,40.00,1.0000,CLEAR,N/A,620.00,0.226800,0.555985,1000.000,2000.000,101.000,3,"
        "0/5,0.0",
        "2025-07-02,16:00,40.00,270.00,50.00,1.0000,CLEAR,N/A,-3.00,0.000000,0.555985,1000.000,2000.000,101.000,4,"
        "0/5,0.0",
    };
    EXPECT_EQ(linesOf(readTextFile(csvPath())), expected);

    EXPECT_EQ(r.shading.DirectSun_Hours, 4);
    EXPECT_EQ(r.shading.Shaded_Hours, 2);
    EXPECT_DOUBLE_EQ(r.shading.Shading_Percent, 50);
    EXPECT_NEAR(r.annualEnergyMonofacial, 0.555985, 1e-6);
    EXPECT_NEAR(r.panel.Annual_kWh, 0.555985, 1e-6);
    // Raw: (550 + 760 + 620 - 3) W/m2 x 2 m2 x 0.2 / 1000.
    EXPECT_NEAR(r.RawEnergy, 0.7708, 1e-9);
    EXPECT_NEAR(r.shading.energyLossKwh, 0.7708 - 0.555985, 1e-6);
    EXPECT_EQ(r.MonthlyShadedHours[5], 2);
    EXPECT_NEAR(r.shading.monthlyShading[5], 200.0 / 3, 1e-9);
    EXPECT_NEAR(r.NormalizedYield, 0.555985 / 0.4 * 1000, 1e-3);
    // The sun table keeps each hour's verdict and effective irradiance.
    const SunTable& table = sunTable();
    EXPECT_TRUE(table.sunData[2].SHADED);
    EXPECT_TRUE(table.sunData[3].SHADED);
    EXPECT_FALSE(table.sunData[5].SHADED);
    EXPECT_NEAR(table.sunData[2].Irradiance, 271.875, 1e-9);

    const std::string text = log();
    EXPECT_NE(text.find("Power rating converted: 400.0W -> 0.400kW\n"), std::string::npos);
    EXPECT_NE(text.find("Shading mode: 5-point (center+corners), Optimizer: Modern optimizer\n"), std::string::npos);
    EXPECT_NE(text.find("Point 4: 2 shaded hours\n"), std::string::npos);  // the NE corner
    EXPECT_NE(text.find("Total ray casts: 20\n"), std::string::npos);
    EXPECT_NE(text.find("DAE closed successfully, 4 rays written\n"), std::string::npos);
}

TEST_F(ShadowAnalysisTest, StringInverterLosesSeventyPercentForAnyHitAndTheCentreAloneCountsOnePoint) {
    analyse(panelAt(1000, 2000, 101), false, 0);
    std::vector<std::string> lines = linesOf(readTextFile(csvPath()));
    ASSERT_EQ(lines.size(), 5u);
    // 468.75 x 0.3 x 0.4 / 1000 and 640.8 x 0.3 x 0.4 / 1000.
    EXPECT_EQ(lines[1].substr(lines[1].find("OBSTRUCTED")), "OBSTRUCTED,0.00,550.00,0.056250,0.056250,1000.000,"
                                                            "2000.000,101.000,1,3/5,70.0");
    EXPECT_EQ(lines[2].substr(lines[2].find("OBSTRUCTED")), "OBSTRUCTED,0.00,760.00,0.076896,0.133146,1000.000,"
                                                            "2000.000,101.000,2,1/5,70.0");

    std::filesystem::remove(csvPath());
    const CombinedPanelResults r = analyse(panelAt(1000, 2000, 101), true, 1);
    lines = linesOf(readTextFile(csvPath()));
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(fieldsOf(lines[1])[6], "OBSTRUCTED");
    EXPECT_EQ(fieldsOf(lines[1])[15], "1/1");
    EXPECT_EQ(fieldsOf(lines[1])[16], "70.0");
    EXPECT_EQ(fieldsOf(lines[2])[6], "CLEAR");  // the centre clears the wall at 44 degrees
    EXPECT_EQ(fieldsOf(lines[2])[15], "0/1");
    EXPECT_EQ(r.shading.Shaded_Hours, 1);
    EXPECT_NE(log().find("Total ray casts: 4\n"), std::string::npos);
}

TEST_F(ShadowAnalysisTest, RayFileHoldsEachBlockedRayInMapCoordinatesInPointOrder) {
    analyse(panelAt(1000, 2000, 101), false, 1);
    // Centre, NW and NE corner at 30 degrees, NE corner at 44 degrees: each
    // hit where the ray meets x = 1010 at 1 + d tan(altitude) above 100.
    const std::string expected =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">\n"
        "<asset><contributor><authoring_tool>ShadowRayTracer</authoring_tool></contributor>\n"
        "<created>2025-06-14</created><modified>2025-06-14</modified>\n"
        "<unit name=\"meter\" meter=\"1\"/><up_axis>Z_UP</up_axis></asset>\n"
        "<library_geometries>\n"
        "<geometry id=\"ShadingRays-geo\" name=\"1_1_Shading\">\n"
        "<mesh><source id=\"ShadingRays-positions\">\n"
        "<float_array id=\"ShadingRays-positions-array\" count=\"99999\">\n"
        "1000.00 2000.00 101.00 1010.00 2000.00 106.77 999.00 2000.50 101.00 1010.00 2000.50 107.35"
        " 1001.00 2000.50 101.00 1010.00 2000.50 106.20 1001.00 2000.50 101.00 1010.00 2000.50 109.69\n"
        "</float_array>\n"
        "<technique_common><accessor source=\"#ShadingRays-positions-array\" count=\"8\" stride=\"3\">\n"
        "<param name=\"X\" type=\"float\"/><param name=\"Y\" type=\"float\"/><param name=\"Z\" type=\"float\"/>\n"
        "</accessor></technique_common></source>\n"
        "<vertices id=\"ShadingRays-vertices\"><input semantic=\"POSITION\" source=\"#ShadingRays-positions\"/>"
        "</vertices>\n"
        "<lines count=\"4\"><input semantic=\"VERTEX\" source=\"#ShadingRays-vertices\" offset=\"0\"/><p>\n"
        " 0 1 2 3 4 5 6 7\n"
        "</p></lines>\n"
        "</mesh></geometry>\n"
        "</library_geometries>\n"
        "</COLLADA>\n";
    EXPECT_EQ(readTextFile(daePath()), expected);
}

TEST_F(ShadowAnalysisTest, APanelThatHitsNothingIsAllClearWithARayFileWithoutRays) {
    const CombinedPanelResults r = analyse(panelAt(1000, 1900, 101), false, 1);  // 100 m south of the wall
    for (const std::string& line : linesOf(readTextFile(csvPath())))
        EXPECT_EQ(line.find("OBSTRUCTED"), std::string::npos) << line;
    EXPECT_EQ(r.shading.Shaded_Hours, 0);
    EXPECT_DOUBLE_EQ(r.shading.Shading_Percent, 0);
    const std::vector<std::string> dae = linesOf(readTextFile(daePath()));
    ASSERT_EQ(dae.size(), 21u);
    EXPECT_EQ(dae[8], "<float_array id=\"ShadingRays-positions-array\" count=\"99999\">");
    EXPECT_EQ(dae[9], "");
    EXPECT_EQ(dae[11], "<technique_common><accessor source=\"#ShadingRays-positions-array\" count=\"0\" stride=\"3\">");
    EXPECT_EQ(dae[15], "<lines count=\"0\"><input semantic=\"VERTEX\" source=\"#ShadingRays-vertices\" offset=\"0\"/><p>");
    EXPECT_EQ(dae[16], "");
    EXPECT_EQ(dae[17], "</p></lines>");
}

TEST_F(ShadowAnalysisTest, TheThreadCountChangesNoByteOfTheCsvOrTheRayFile) {
    // Enough hours for several chunks per point, from every side of the sky.
    std::string table = "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor\n";
    char row[96];
    for (int i = 0; i < 1500; ++i) {
        std::snprintf(row, sizeof row, "2025-%02d-%02d,%02d:00,%.2f,%.2f,0,0\n", 1 + i / 150, 1 + (i / 24) % 28,
                      i % 24, 6.0 + (i * 37) % 80, (i * 53) % 360 + 0.25);
        table += row;
    }
    useSunTable(table);
    std::string csv[3], dae[3];
    for (int threads = 1; threads <= 3; ++threads) {
        reportRun().ShadingThreads = threads;
        std::filesystem::remove(csvPath());
        analyse(panelAt(1000, 2000, 101), false, 1);
        csv[threads - 1] = readTextFile(csvPath());
        dae[threads - 1] = readTextFile(daePath());
    }
    EXPECT_GT(linesOf(csv[0]).size(), 1000u);
    EXPECT_NE(dae[0].find("<lines count=\""), std::string::npos);
    EXPECT_EQ(dae[0].find("<lines count=\"0\""), std::string::npos);
    EXPECT_EQ(csv[1], csv[0]);
    EXPECT_EQ(csv[2], csv[0]);
    EXPECT_EQ(dae[1], dae[0]);
    EXPECT_EQ(dae[2], dae[0]);
}

TEST_F(ShadowAnalysisTest, TheCsvIsReusedWhileThePanelStaysWithinItsLimits) {
    analyse(panelAt(1000, 2000, 101), false, 1);
    const std::string first = readTextFile(csvPath());
    std::filesystem::remove(daePath());

    // 1.9 m east and 0.2 m up: the cached answer, nothing cast.
    std::string path;
    CombinedPanelResults r = analyse(panelAt(1001.9, 2000, 101.2), true, 0, &path);
    EXPECT_EQ(path, csvPath());
    EXPECT_FALSE(std::filesystem::exists(daePath()));
    EXPECT_EQ(readTextFile(csvPath()), first);
    EXPECT_EQ(r.shading.Shaded_Hours, 2);
    EXPECT_EQ(r.shading.DirectSun_Hours, 4);
    EXPECT_NEAR(r.annualEnergyMonofacial, 0.555985, 1e-6);
    // From the cache the loss is estimated: 0.555985 x 50 % x 0.2 / 0.8.
    EXPECT_NEAR(r.shading.energyLossKwh, 0.555985 * 0.5 * 0.25, 1e-6);

    // 0.4 m up: cast anew, and the file now stands at the new height.
    analyse(panelAt(1000, 2000, 101.4), false, 1);
    EXPECT_TRUE(std::filesystem::exists(daePath()));
    EXPECT_EQ(fieldsOf(linesOf(readTextFile(csvPath()))[1])[13], "101.400");

    // A file of a header alone, or of rows too short, is no cache.
    for (const char* broken : {"Date\n", "Date\n2025-06-21,07:00,30,90,60,1,CLEAR,N/A,0,0,0,1000,2000,101\n"}) {
        writeTextFile(csvPath(), broken);
        std::filesystem::remove(daePath());
        analyse(panelAt(1000, 2000, 101), false, 1);
        EXPECT_TRUE(std::filesystem::exists(daePath()));
        EXPECT_EQ(readTextFile(csvPath()), first);
    }
}

TEST_F(ShadowAnalysisTest, WithoutASunTableNothingHappens) {
    CleanupShadowing();
    CombinedPanelResults r;
    r.panel = panelAt(1000, 2000, 101);
    r.RawEnergy = 7;
    EXPECT_EQ(AnalyzeShadowForPointEx(r.panel, r, sunFile, false, 1), "");
    EXPECT_DOUBLE_EQ(r.RawEnergy, 7);
    EXPECT_FALSE(std::filesystem::exists(csvPath()));
    EXPECT_TRUE(status.empty());
}

TEST_F(ShadowAnalysisTest, TheStatusLineTellsEachPointWithCountsAndTimes) {
    ReportRunState& run = reportRun();
    run.GlobalProcessingPanelString = "Processing panel 2 of 2";
    run.Kamahandled = 4;
    run.Kamatohandle = 10;
    // One hour, two minutes and three seconds ago; the remaining time is
    // elapsed / done x left: 3723 / 5 x 5 for the first point, 3723 / 6 x 4 for the second.
    run.ReportStart = ReportClock() - 3723000.0f;
    analyse(panelAt(1000, 2000, 101), false, 1);
    ASSERT_EQ(status.size(), 5u);
    EXPECT_EQ(status[0].toStdString(),
              "Processing panel 2 of 2     Point 1 out of 5 4   [5] out of 10   50% 01:02:03 Remaining  01:02:03");
    EXPECT_EQ(status[1].toStdString(),
              "Processing panel 2 of 2     Point 2 out of 5 5   [6] out of 10   60% 01:02:03 Remaining  00:41:22");
    EXPECT_EQ(run.Kamahandled, 9);
}

TEST_F(ShadowAnalysisTest, ThePanelButtonAddsTheRayFileOrSaysThereIsNone) {
    ScriptedDialogService dialogs;
    installDialogService(&dialogs);
    QStringList added;
    placementHooks().addModels = [&](const QStringList& files) { added = files; };
    panelStore().panels[0] = panelAt(1000, 2000, 101);
    panelStore().NumPanelsCreated = 1;

    ShowPanelShadingBtnClick("Panel-1_1_1_1_geometry");
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "No shadeing DAE file found");
    EXPECT_TRUE(added.isEmpty());

    writeTextFile(daePath(), "rays");
    ShowPanelShadingBtnClick("Panel-1_1_1_1_geometry");
    EXPECT_EQ(added, QStringList{QString::fromStdString(daePath())});
    EXPECT_STREQ(panelStore().GlobalPanel.Name, "1/1");
    ShowPanelShadingBtnClick("roof");  // no panel's layer: nothing
    EXPECT_EQ(dialogs.questions().size(), 1u);

    installDialogService(nullptr);
    resetPlacementHooks();
}
