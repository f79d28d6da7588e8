// The report run: the master CSV row by row, the run's early ends, and a
// whole run on a tiny scene against figures worked out here independently.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "app/services/SunGlobalLog.h"
#include "geo/CoordinateSystem.h"
#include "geo/Frames.h"
#include "geo/GeoState.h"
#include "scene/engine/EngineState.h"
#include "solar/analysis/EnergyModel.h"
#include "solar/analysis/MasterCsv.h"
#include "solar/analysis/ReportRun.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/ShadowAnalysis.h"
#include "solar/analysis/SunTable.h"
#include "solar/analysis/SunTableFile.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

PANEL panelNamed(const char* name, double x, double y, double z) {
    PANEL p{};
    SetPanelText(p.Name, name);
    SetPanelText(p.ModuleType, "Test 400");
    p.CenterPoint = {x, y, z};
    // A flat 2 m × 1 m module facing up, its long side east-west.
    p.Corners[0] = {x - 1, y - 0.5, z};
    p.Corners[1] = {x - 1, y + 0.5, z};
    p.Corners[2] = {x + 1, y + 0.5, z};
    p.Corners[3] = {x + 1, y - 0.5, z};
    p.DAzimuth = 180;
    p.Length = 2000;
    p.Width = 1000;
    p.Efficiency = 20;
    p.PanelPowerratingKW = 0.4;
    p.NOCT_C = 45;
    p.TempCoeff_Pmax_PercentPercent = -0.4;
    p.Opacity = 100;
    p.Active = true;
    return p;
}

void addPanel(PANEL p) {
    PanelStore& store = panelStore();
    SetPanelText(p.Filename, store.PANELSFOLDER + "Panel-" + PanelText(p.Name).replace('/', '_') + ".dae");
    store.panels[static_cast<std::size_t>(store.NumPanelsCreated++)] = p;
}

QStringList csvLines(const std::string& path) {
    return QString::fromStdString(readTextFile(path)).split('\n', Qt::SkipEmptyParts);
}

class ReportRun : public ::testing::Test {
protected:
    void SetUp() override {
        resetReportRun();
        resetPanelStore();
        resetOrvoIni();
        ORVOINI().writeString("Services", "Geocoding", "");
        resetSunTable();
        resetSessionPaths();
        resetFrameState();
        resetGeoState();
        sessionPaths().ORVO_T = dir.path("T/");
        QDir().mkpath(QString::fromStdString(sessionPaths().ORVO_T));
        QDir().mkpath(QString::fromStdString(dir.path("Reports")));
        SetPanelFoldersForModel(QString::fromStdString(dir.root()));
        SunGlobalLog& log = sunGlobalLog();
        log.SunGlobalLogfileName = dir.path("Reports/7_site_ComprehensiveLog.LOG");
        log.SunGlobalLogfile = std::fopen(log.SunGlobalLogfileName.c_str(), "w");
        installDialogService(&dialogs);
        site.modelFileName = dir.path("site.obj");
        site.climateFile = dir.path("climate.csv");
        writeTextFile(site.climateFile,
                      "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance\n"
                      "06-21,12:00,800.00,100.00,50.00\n");
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetReportHooks();
        resetSunGlobalLog();
        resetGeoState();
    }
    QStringList messages() const {
        QStringList texts;
        for (const auto& q : dialogs.questions())
            if (q.kind == ScriptedDialogService::Question::Message) texts << q.text;
        return texts;
    }
    std::string csvPath() const { return dir.path("Reports/7_site_ComprehensiveLog.csv"); }

    ScratchDir dir;
    ScriptedDialogService dialogs;
    ReportSite site;
};

}  // namespace

TEST(MasterCsv, RowsCarryTheGeneralLossInSinglePrecisionAndTheRoofsChoice) {
    CombinedPanelResults tiled;
    PANEL& a = tiled.panel;
    SetPanelText(a.Name, "3/12");
    a.GroupingName = 'B';
    SetPanelText(a.ModuleType, "ZV-M54 410 Black");
    a.CenterPoint = {3612000.456, 712345.678, 55.125};
    a.DTilt = 25.25;
    a.DAzimuth = 180;
    a.PanelPowerratingKW = 0.41;
    a.Efficiency = 21.3;
    a.Shading_Percent = 12.5;
    a.Shaded_Hours = 150;
    a.DirectSun_Hours = 1200;
    a.RoofType = 0;
    tiled.monthlyEnergyMonofacial = {0.5, 1.25, 10, 33.3, 101.7, 250.05};
    tiled.monthlyEnergyBifacial.fill(999);
    tiled.annualEnergyMonofacial = 1234.56;
    tiled.annualEnergyBifacial = 5000;
    tiled.Shadingloss_kWh = 100;

    CombinedPanelResults white;
    PANEL& b = white.panel;
    SetPanelText(b.Name, "4/12");
    SetPanelText(b.ModuleType, "Bifacial X");
    b.CenterPoint = {10, 20, 3.456};
    b.DTilt = 10;
    b.DAzimuth = 200.04;
    b.PanelPowerratingKW = 410;
    b.Shading_Percent = std::numeric_limits<double>::quiet_NaN();
    b.RoofType = 1;
    white.monthlyEnergyMonofacial.fill(1);
    white.monthlyEnergyBifacial.fill(100);
    white.annualEnergyMonofacial = 1;
    white.annualEnergyBifacial = 1200;
    white.Shadingloss_kWh = -5;

    // 0.9f is 0.89999998: 0.5 × 0.9f = 0.44999999 prints 0.4 (in double it
    // would be 0.45 and print 0.5); 1234.56 × 0.9f = 1111.104; 55.125 rounds
    // to even; the shading columns take 0.7: 12.5 → 8.75 → 8.8, 100 → 70.0.
    EXPECT_EQ(MasterCsvRow(tiled, 0.9f),
              "3/12B,3612000.46,712345.68,55.12,25.2,180.0,0.410,ZV-M54 410 Black,21.3,"
              "0.4,1.1,9.0,30.0,91.5,225.0,0.0,0.0,0.0,0.0,0.0,0.0,1111.1,8.8,70.0,150,1200,Tiled Roof\n");
    // A white roof reports the bifacial months and year; no group letter
    // yet; the rating as stored; 100 × 0.9f = 89.999998 prints 90.0.
    EXPECT_EQ(MasterCsvRow(white, 0.9f),
              "4/12,10.00,20.00,3.46,10.0,200.0,410.000,Bifacial X,0.0,"
              "90.0,90.0,90.0,90.0,90.0,90.0,90.0,90.0,90.0,90.0,90.0,90.0,1080.0,nan,-3.5,0,0,White Roof\n");

    ScratchDir dir;
    ASSERT_TRUE(WriteMasterCSV(dir.path("m.csv"), {tiled, white}, 0.9f));
    EXPECT_EQ(readTextFile(dir.path("m.csv")),
              std::string(MASTER_CSV_HEADER) + MasterCsvRow(tiled, 0.9f) + MasterCsvRow(white, 0.9f));
    EXPECT_FALSE(WriteMasterCSV(dir.path("no/such/folder/m.csv"), {tiled}, 0.9f));
}

TEST(ReportNames, AllComeFromTheRunLogsName) {
    resetSunGlobalLog();
    sunGlobalLog().SunGlobalLogfileName = "/m/Reports/42_site_ComprehensiveLog.LOG";
    EXPECT_EQ(MasterCsvName(), "/m/Reports/42_site_ComprehensiveLog.csv");
    EXPECT_EQ(ScenePictureName(MasterCsvName()), "/m/Reports/42_site_ComprehensiveLog.JPG");
    resetSunGlobalLog();
    EXPECT_EQ(MasterCsvName(), "");
    EXPECT_EQ(ScenePictureName(""), "");
}

TEST_F(ReportRun, ACancelledEnergyLossEndsBeforeAnythingIsWritten) {
    dialogs.pushCancel();
    addPanel(panelNamed("1/5", 0, 0, 5));
    EXPECT_EQ(DoReport(site, true, 1), "");
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].value, "15");
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(csvPath())));
}

TEST_F(ReportRun, AMissingClimateFileEndsTheRun) {
    dialogs.pushText("-10");
    addPanel(panelNamed("1/5", 0, 0, 5));
    site.climateFile = dir.path("no_such_climate.csv");
    EXPECT_EQ(DoReport(site, false, 0), "");
    EXPECT_EQ(messages(), QStringList{"Could not download PVGIST data"});
    // The answer is kept and written to the settings all the same; a
    // negative loss raises the factor above 1.
    EXPECT_EQ(reportRun().ENERGYLOSSPERCENT, -10);
    EXPECT_FLOAT_EQ(reportRun().REALFACTOR, 1.1f);
    EXPECT_EQ(ORVOINI().readString("Viewer3D", "EnergyLoss", ""), "-10");
    EXPECT_TRUE(reportRun().OnlyCenter == false && reportRun().OptimizerType == 0);
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(csvPath())));
}

TEST_F(ReportRun, WithoutPanelsThereIsNoReport) {
    dialogs.pushText("10");
    EXPECT_EQ(DoReport(site, true, 1), "");
    EXPECT_EQ(messages(),
              (QStringList{"No panels created. Cannot generate multiple panel report.", "Could not create\n"}));
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(csvPath())));
}

TEST_F(ReportRun, AnUnknownModuleIsLeftOutButCountsInTheAverages) {
    dialogs.pushText("abc");  // a text is taken as 0
    addPanel(panelNamed("2/5", 0, 3, 5));
    PANEL unknown = panelNamed("1/5", 0, 0, 5);
    SetPanelText(unknown.ModuleType, "unknownTYPE");
    addPanel(unknown);
    DoReport(site, true, 1);
    EXPECT_EQ(reportRun().REALFACTOR, 1.0f);
    ASSERT_EQ(reportRun().g_combinedResults.size(), 1u);
    EXPECT_STREQ(reportRun().g_combinedResults[0].panel.Name, "2/5");
    // No model: no rays, no shade, so a score of 100, halved by the unknown panel.
    EXPECT_EQ(reportRun().g_systemScore, 50);
    EXPECT_EQ(reportRun().g_systemGrade, "D  NEEDS IMPROVEMENT");
    EXPECT_EQ(reportRun().g_combinedResults[0].grade, "A+ EXCELLENT");
    const QStringList csv = csvLines(csvPath());
    ASSERT_EQ(csv.size(), 2);
    EXPECT_EQ(csv[0] + "\n", MASTER_CSV_HEADER);
    const char group = panelStore().panels[1].GroupingName;
    ASSERT_NE(group, 0);
    EXPECT_EQ(csv[1], QString("2/5%1,0.00,3.00,5.00,0.0,180.0,0.400,Test 400,20.0,"
                              "0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0,0,Tiled Roof")
                          .arg(group));
    // Its sun table is made, its own file written; the picture is gone.
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(SunTableFileName("2/5"))));
    EXPECT_TRUE(QFileInfo::exists(panelStore().PANELSFOLDER + "Panel-2_5.dae"));
    EXPECT_FALSE(QFileInfo::exists(panelStore().PANELSFOLDER + "Panel-1_5.dae"));
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(ScenePictureName(csvPath()))));
    const std::string log = readTextFile(sunGlobalLog().SunGlobalLogfileName);
    EXPECT_NE(log.find("=== MULTIPLE PANEL COMPREHENSIVE ANALYSIS LOG ===\n"), std::string::npos);
    EXPECT_NE(log.find("Total panels: 2\nAnalysis level: 2\n"), std::string::npos);
    EXPECT_NE(log.find("System score: 50/100 (D  NEEDS IMPROVEMENT)\n"), std::string::npos);
}

// Cancel pressed while the first panel is worked on: the run stops before
// the second, keeps what the first wrote, and makes no report of a part.
TEST_F(ReportRun, ACancelStopsBetweenPanelsAndKeepsTheFilesAlreadyWritten) {
    dialogs.pushText("10");
    addPanel(panelNamed("1/5", 0, 0, 5));
    addPanel(panelNamed("2/5", 0, 3, 5));
    addPanel(panelNamed("3/5", 0, 6, 5));
    int asked = 0;
    reportHooks().cancelled = [&asked] { return ++asked > 1; };
    EXPECT_EQ(DoReport(site, true, 1), "");
    EXPECT_EQ(messages(), QStringList{"Report cancelled"});
    ASSERT_EQ(reportRun().g_combinedResults.size(), 1u);
    EXPECT_STREQ(reportRun().g_combinedResults[0].panel.Name, "1/5");
    EXPECT_TRUE(QFileInfo::exists(panelStore().PANELSFOLDER + "Panel-1_5.dae"));
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(SunTableFileName("1/5"))));
    EXPECT_FALSE(QFileInfo::exists(panelStore().PANELSFOLDER + "Panel-2_5.dae"));
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(csvPath())));
    EXPECT_NE(readTextFile(sunGlobalLog().SunGlobalLogfileName).find("Run cancelled after 1 of 3 panels\n"),
              std::string::npos);
    // The panels are all still there for the next run.
    EXPECT_EQ(panelStore().NumPanelsCreated, 3);
}

TEST_F(ReportRun, WithoutARunLogNoFileIsNamedAndNothingIsWritten) {
    resetSunGlobalLog();
    dialogs.pushText("10");
    addPanel(panelNamed("1/5", 0, 0, 5));
    EXPECT_EQ(DoReport(site, true, 1), "");
    EXPECT_EQ(messages(), QStringList{"Could not create\n"});
    EXPECT_EQ(reportRun().g_combinedResults.size(), 1u);
    EXPECT_EQ(QDir(QString::fromStdString(dir.path("Reports"))).entryList(QDir::Files),
              QStringList{"7_site_ComprehensiveLog.LOG"});
}

namespace {

// A flat panel 4 m north of a wall that rises 4 m above it, at 50° N: its
// year worked out here hour by hour from the sun table the run wrote.
constexpr double kWallY = -4;       // local frame
constexpr double kWallTop = 9;      // the panels stand at z 5
constexpr double kWallHalfWidth = 100;
constexpr double kBeam = 400, kDiffuse = 100, kReflected = 50, kAmbient = 15;

struct ExpectedPanel {
    double month[12] = {};
    double total = 0;
    double raw = 0;
    int shaded = 0;
    int direct = 0;
    double closestEdge = 1e9;  // m: how near any ray came to the wall's edges
};

// Everything from first principles except the incidence angle, the model's
// own tested formula, which decides the hour filters.
ExpectedPanel expectedYear(const std::string& sunFile, double y) {
    ExpectedPanel e;
    const QStringList rows = csvLines(sunFile);
    // The sun table holds at most 4360 rows: the rest of December is not seen.
    for (int i = 1; i < rows.size() && i <= 4360; ++i) {
        int year = 0, month = 0, day = 0, hour = 0, minute = 0;
        double alt = 0, az = 0;
        if (std::sscanf(rows[i].toUtf8().constData(), "%d-%d-%d,%d:%d,%lf,%lf", &year, &month, &day, &hour, &minute,
                        &alt, &az) != 7 || alt <= 5)
            continue;
        const double incident = IncidentAngle(0, 180, alt, az);
        if (incident <= 1.1 || incident > 80) continue;
        const double iam = incident <= 60 ? 1 : 1 - (incident - 60) / 30;
        ++e.direct;
        const double rad = M_PI / 180;
        const double dx = std::cos(alt * rad) * std::sin(az * rad), dy = std::cos(alt * rad) * std::cos(az * rad),
                     dz = std::sin(alt * rad);
        bool shaded = false;
        if (dy < 0) {
            const double t = (kWallY - y) / dy;
            const double hitX = t * dx, hitZ = 5 + t * dz;
            shaded = t <= 1000 && std::fabs(hitX) <= kWallHalfWidth && hitZ <= kWallTop;
            e.closestEdge = std::min(
                {e.closestEdge, std::fabs(hitZ - kWallTop), std::fabs(std::fabs(hitX) - kWallHalfWidth)});
        }
        // Flat: the beam on the panel is the horizontal beam, the whole sky is
        // seen and no ground; then the incidence loss.
        double value = (kBeam + kDiffuse) * iam;
        const double cell = kAmbient + (45 - 20) * value / 800;
        value *= 1 + (-0.4 / 100) * (cell - 25);
        if (shaded) {
            value *= 0.3;
            ++e.shaded;
        }
        const double energy = static_cast<float>(value * 2.0 * 0.2 / 1000);
        e.total += energy;
        e.month[month - 1] += energy;
        e.raw += (kBeam + kDiffuse + kReflected) * 2.0 * 0.2 / 1000;
    }
    return e;
}

void expectRow(const QString& row, const QString& id, double y, const ExpectedPanel& e, float factor, bool white,
               bool fromCache) {
    const QStringList f = row.split(',');
    ASSERT_EQ(f.size(), 27) << row.toStdString();
    EXPECT_EQ(f.mid(0, 9).join(','), QString("%1,500000.00,%2,5.00,0.0,180.0,0.400,Test 400,20.0")
                                         .arg(id, QString::asprintf("%.2f", 5540000 + y)));
    const double gain = white ? BIFACIALGAINFACTOR : 1.0;
    for (int m = 0; m < 12; ++m)
        EXPECT_NEAR(f[9 + m].toDouble(), static_cast<float>(e.month[m] * gain) * factor, 0.051) << m;
    EXPECT_NEAR(f[21].toDouble(), static_cast<float>(e.total * gain) * factor, 0.051);
    EXPECT_NEAR(f[22].toDouble(), 100.0 * e.shaded / e.direct * 0.7, 0.051);
    // The cache has no raw energy: the loss column of a cached run is 0.
    EXPECT_NEAR(f[23].toDouble(), fromCache ? 0 : (e.raw - e.total) * 0.7, 0.051);
    EXPECT_EQ(f[24].toInt(), e.shaded);
    EXPECT_EQ(f[25].toInt(), e.direct);
    EXPECT_EQ(f[26], white ? "White Roof" : "Tiled Roof");
}

}  // namespace

TEST_F(ReportRun, AWholeRunMatchesTheYearWorkedOutByHandAndRepeatsFromTheCache) {
    testsupport::EngineFixtureGuard engine;
    // Two-sided, so that the wall shades whichever way its triangles face.
    engine::Layer wall;
    wall.name = "wall";
    wall.positions = {-kWallHalfWidth, kWallY, 0, kWallHalfWidth, kWallY, 0,
                      kWallHalfWidth,  kWallY, kWallTop, -kWallHalfWidth, kWallY, kWallTop};
    wall.triangles = {0, 1, 2, 0, 2, 3, 0, 2, 1, 0, 3, 2};
    testsupport::addLayer(wall);
    frameState().OriginalobjectCenter[0] = 500000;
    frameState().OriginalobjectCenter[1] = 5540000;
    geoState().GlobalCS = GlobalCSFactory::ByEPSG(32633);
    ASSERT_TRUE(geoState().GlobalCS);
    std::string climate = "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,"
                          "AvgTemperature,AvgWindSpeed\n";
    for (int m = 1; m <= 12; ++m)
        for (int d = 1; d <= DAYS_IN_MONTH[m - 1]; ++d)
            for (int h = 0; h < 24; ++h)
                climate += QString::asprintf("%02d-%02d,%02d:00,%.2f,%.2f,%.2f,%.1f,2.0\n", m, d, h, kBeam, kDiffuse,
                                             kReflected, kAmbient)
                               .toStdString();
    writeTextFile(site.climateFile, climate);
    site.modelOpen = true;
    site.epsg = 32633;
    PANEL tiled = panelNamed("1/9", 500000, 5540000, 5);
    PANEL white = panelNamed("2/9", 500000, 5540002, 5);
    white.RoofType = 1;
    addPanel(white);
    addPanel(tiled);

    dialogs.pushText("10");
    DoReport(site, true, 1);
    ASSERT_EQ(reportRun().g_combinedResults.size(), 2u);
    const ExpectedPanel near = expectedYear(SunTableFileName("1/9"), 0);
    const ExpectedPanel far = expectedYear(SunTableFileName("2/9"), 2);
    // No ray may graze an edge of the wall, or the expectation would hang on rounding.
    ASSERT_GT(std::min(near.closestEdge, far.closestEdge), 1e-4);
    ASSERT_GT(near.shaded, far.shaded);
    ASSERT_GT(far.shaded, 0);
    // Each run groups the panels anew: the letters are read after each.
    const auto id = [](int i) { return PanelText(panelStore().panels[i].Name) + panelStore().panels[i].GroupingName; };
    const QStringList first = csvLines(csvPath());
    ASSERT_EQ(first.size(), 3);
    expectRow(first[1], id(0), 0, near, 0.9f, false, false);
    expectRow(first[2], id(1), 2, far, 0.9f, true, false);
    for (const CombinedPanelResults& r : reportRun().g_combinedResults) {
        EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(GetShadingCSV(r.panel))));
        EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(GetShadingDae(r.panel))));
        EXPECT_TRUE(QFileInfo::exists(PanelText(r.panel.Filename)));
    }

    // The second run reads the shading CSVs back: the same energies.
    std::filesystem::remove(csvPath());
    dialogs.pushText("10");
    DoReport(site, true, 1);
    const QStringList second = csvLines(csvPath());
    ASSERT_EQ(second.size(), 3);
    expectRow(second[1], id(0), 0, near, 0.9f, false, true);
    expectRow(second[2], id(1), 2, far, 0.9f, true, true);

    // A loss of 100 % leaves no energy at all in the file.
    dialogs.pushText("100");
    DoReport(site, true, 1);
    const QStringList lost = csvLines(csvPath());
    ASSERT_EQ(lost.size(), 3);
    for (int row = 1; row <= 2; ++row)
        EXPECT_EQ(lost[row].split(',').mid(9, 13).join(','), QString("0.0,").repeated(12) + "0.0");
}
