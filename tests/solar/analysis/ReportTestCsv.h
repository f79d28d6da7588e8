// Master CSV rows written by hand for the report page tests, in the run's
// own format, and the state every report test starts from.
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/ReportSite.h"
#include "support/TestSupport.h"

namespace reporttest {

inline const char* const MASTER_HEADER =
    "PanelID,X,Y,Z,Tilt_Deg,Azimuth_Deg,PowerRating_W,ModuleType,Efficiency_Percent,Jan_kWh,Feb_kWh,Mar_kWh,"
    "Apr_kWh,May_kWh,Jun_kWh,Jul_kWh,Aug_kWh,Sep_kWh,Oct_kWh,Nov_kWh,Dec_kWh,Annual_kWh,ShadingPercent,"
    "ShadingLoss_kWh,ShadedHours,Direct_Sun_Hours,RoofType\n";

struct PanelRow {
    std::string id;
    double tilt = 25;
    double azimuth = 180;
    double power = 0.625;
    std::string module = "LONGI-HiMO6-LR5";
    std::array<double, 12> months{};
    double annual = 0;
    double shadingPercent = 0;
    int shadedHours = 0;
    int sunHours = 0;
    bool whiteRoof = false;
};

// month m (0-based) = scale * (m + 1)
inline std::array<double, 12> rampMonths(double scale) {
    std::array<double, 12> months{};
    for (int m = 0; m < 12; ++m) months[m] = scale * (m + 1);
    return months;
}

inline std::string csvRow(const PanelRow& p) {
    char text[1024];
    int n = std::snprintf(text, sizeof text, "%s,%.2f,%.2f,%.2f,%.1lf,%.1lf,%.3f,%s,%.1f,", p.id.c_str(), 200000.0,
                          600000.0, 50.0, p.tilt, p.azimuth, p.power, p.module.c_str(), 21.5);
    for (double month : p.months) n += std::snprintf(text + n, sizeof text - n, "%.1f,", month);
    std::snprintf(text + n, sizeof text - n, "%.1f,%.1f,%.1f,%d,%d,%s\n", p.annual, p.shadingPercent, 0.0,
                  p.shadedHours, p.sunHours, p.whiteRoof ? "White Roof" : "Tiled Roof");
    return text;
}

// Settings, site and log as a fresh program has them; no geocoder set.
inline void resetReportTestState() {
    resetOrvoIni();
    // Tests never reach the public geocoder: a test that wants addresses serves them.
    ORVOINI().writeString("Services", "Geocoding", "");
    resetReportRun();
    resetFrameState();
    resetSunGlobalLog();
    installDialogService(nullptr);
}

// A clean session for a page: loss factor 0.85, a site at 32.5 N 34.9 E, the
// model "Roof.obj" in a scratch folder, questions answered by a script.
class ReportPageTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetReportTestState();
        installDialogService(&dialogs);
        reportRun().REALFACTOR = 0.85f;
        frameState().MapCenterLat = 32.5;
        frameState().MapCenterLon = 34.9;
        site.modelFileName = dir.path("Roof.obj");
    }
    void TearDown() override { resetReportTestState(); }

    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
    ReportSite site;
};

}  // namespace reporttest
