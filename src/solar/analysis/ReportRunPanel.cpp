#include "ReportRunPanel.h"

#include <QString>

#include "EnergyModel.h"
#include "ReportRunState.h"
#include "ReportScores.h"
#include "ShadowAnalysis.h"
#include "SunTable.h"
#include "SunTableFile.h"
#include "app/services/SunGlobalLog.h"
#include "geo/GeoConversions.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"

namespace {

void announcePanel(int index, const PANEL& panel) {
    ReportRunState& run = reportRun();
    run.GlobalProcessingPanelString =
        QStringLiteral("Processing panel ") + QString::number(index + 1) + " of " +
        QString::number(panelStore().NumPanelsCreated);
    // The panels done so far, for the progress bar the status line moves.
    run.GlobatPanelHandled = index;
    ReportStatusLine(run.GlobalProcessingPanelString);
    ReportProcessMessages();
    PrintSunLog("\n--- Processing Panel %d: %s ---\n", index + 1, panel.Name);
}

// The ray analysis and its figures into the panel; zeros without a model.
void shadePanel(CombinedPanelResults& result, const std::string& sunFile, bool modelOpen) {
    const ReportRunState& run = reportRun();
    PANEL& panel = result.panel;
    if (run.GlobalAnalyzingLevel >= 1 && modelOpen) {
        InitializeShadowing(sunFile);
        AnalyzeShadowForPointEx(result.panel, result, sunFile, run.OnlyCenter, run.OptimizerType);
        panel.Shaded_Hours = result.shading.Shaded_Hours;
        panel.DirectSun_Hours = result.shading.DirectSun_Hours;
        panel.Shading_Percent = result.shading.Shading_Percent;
        panel.Annual_kWh = result.annualEnergyMonofacial;
        panel.RawEnergy = result.RawEnergy;
        panel.AdjustedEnergy = result.AdjustedEnergy;
        panel.Shadingloss_kWh = result.Shadingloss_kWh;
        PrintSunLog("SHADING ANALYSIS: Panel %s\n", panel.Name);
        PrintSunLog("  Shaded hours: %d\n", panel.Shaded_Hours);
        PrintSunLog("  Direct sun hours: %d\n", panel.DirectSun_Hours);
        PrintSunLog("  Shading percent: %.1f%%\n", panel.Shading_Percent);
    } else {
        panel.Shaded_Hours = 0;
        panel.DirectSun_Hours = 0;
        panel.Shading_Percent = 0;
    }
    result.shading.Shaded_Hours = panel.Shaded_Hours;
    result.shading.DirectSun_Hours = panel.DirectSun_Hours;
    result.shading.Shading_Percent = panel.Shading_Percent;
}

void logBeforeSave(const CombinedPanelResults& r) {
    const PANEL& p = r.panel;
    PrintSunLog("\n=== DEBUGGING VALUES BEFORE SAVEPANEL ===\n");
    PrintSunLog("Panel: %s  File: %s  EPSG: %d\n", p.Name, p.Filename, p.EPSG);
    PrintSunLog("Annual_kWh: %.2f  RawEnergy: %.2f  AdjustedEnergy: %.2f\n", p.Annual_kWh, p.RawEnergy,
                p.AdjustedEnergy);
    PrintSunLog("Shaded_Hours: %d  DirectSun_Hours: %d  Shading_Percent: %.2f  Shadingloss_kWh: %.2f\n",
                p.Shaded_Hours, p.DirectSun_Hours, p.Shading_Percent, p.Shadingloss_kWh);
    PrintSunLog("Score: %.0f  Grade: %s\n", r.overallScore, r.grade.c_str());
}

}  // namespace

void AnalyzeReportPanel(int index, const ReportSite& site) {
    ReportRunState& run = reportRun();
    PanelStore& store = panelStore();
    const PANEL& live = store.panels[static_cast<std::size_t>(index)];
    announcePanel(index, live);
    store.GlobalPanel = live;
    // A fresh record per panel: no figure of the previous panel may remain.
    CombinedPanelResults result;
    result.panel = live;
    if (PanelText(live.ModuleType).compare(QLatin1String("UnknownType"), Qt::CaseInsensitive) == 0) return;
    result.roofAlbedo = GetRoofAlbedo(result.panel.RoofType);

    // Every panel takes the site of the first: close enough for one roof.
    double latitude = 0, longitude = 0;
    GPSEastNorth2LatLon(store.panels[0].CenterPoint.X, store.panels[0].CenterPoint.Y, latitude, longitude);
    const std::string sunFile = SunTableFileName(live.Name);
    run.CsvFilesToDelete << QString::fromStdString(sunFile);
    GenerateSunPositionData(latitude, longitude, sunTable().SolarYear, live.DTilt, live.DAzimuth, sunFile);
    shadePanel(result, sunFile, site.modelOpen);

    const double rating = result.panel.PanelPowerratingKW;
    result.energyPerKwp = rating > 0 ? result.annualEnergyBifacial / rating : 0;
    result.overallScore = PanelScoreFromShading(result.shading.Shading_Percent);
    result.grade = PanelGrade(result.overallScore);

    run.g_totalEnergyBifacial += result.annualEnergyBifacial;
    run.g_totalEnergyMonofacial += result.annualEnergyMonofacial;
    run.g_totalShadingLoss += result.Shadingloss_kWh;
    run.g_averageShading += result.shading.Shading_Percent;
    run.g_combinedResults.push_back(result);

    result.panel.EPSG = site.epsg;
    logBeforeSave(result);
    SaveThePanel(result.panel);
}
