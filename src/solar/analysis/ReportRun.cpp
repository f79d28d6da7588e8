#include "ReportRun.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <filesystem>

#include "ClimateDownload.h"
#include "ClimateInUse.h"
#include "ClimateIrradianceLookup.h"
#include "MasterCsv.h"
#include "ReportHtml.h"
#include "ReportPictureView.h"
#include "ReportRunPanel.h"
#include "ReportRunState.h"
#include "ReportScores.h"
#include "SunTable.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SunGlobalLog.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"
#include "solar/design/ConstructionChain.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelStoreOps.h"
#include "solar/design/RoofVisibility.h"

namespace {

// The path with the extension of its file name replaced by extension. No
// run log (a model opened without the solar planner) names no files at all.
std::string replaceExtension(const std::string& path, const std::string& extension) {
    if (path.empty()) return "";
    std::filesystem::path p(path);
    p.replace_extension(extension);
    return p.string();
}

QString now() { return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

// False on cancel; otherwise the answer, as an integer, is the new general loss.
bool askEnergyLoss() {
    ReportRunState& run = reportRun();
    UpdateRealFactor();
    QString value = QString::number(run.ENERGYLOSSPERCENT);
    if (!MyInputQuery(QStringLiteral("Energy loss"), QStringLiteral("Please define the general energy loss (%)"),
                      value))
        return false;
    run.ENERGYLOSSPERCENT = value.trimmed().toInt();
    OrvoIni& ini = ORVOINI();
    ini.writeString("Viewer3D", "EnergyLoss", std::to_string(run.ENERGYLOSSPERCENT));
    if (!ini.path().empty() && !ini.save()) PrintRunLog("Could not write EnergyLoss to %s\n", ini.path().c_str());
    UpdateRealFactor();
    return true;
}

// The hourly list given with the site, else the model folder's or a download.
std::string climateFileFor(const ReportSite& site) {
    if (!site.climateFile.empty())
        return QFileInfo::exists(QString::fromStdString(site.climateFile)) ? site.climateFile : "";
    return DownloadPVGISTdata(FolderOf(site.modelFileName));
}

void startRun(int panelCount) {
    ReportRunState& run = reportRun();
    ReportStatusLine(QStringLiteral("Starting multiple panel comprehensive analysis..."));
    run.g_combinedResults.clear();
    run.g_combinedResults.reserve(static_cast<std::size_t>(panelCount));
    run.g_totalEnergyBifacial = run.g_totalEnergyMonofacial = run.g_totalShadingLoss = 0;
    run.g_averageShading = run.g_systemScore = 0;
    run.g_systemGrade.clear();
    run.g_analysisLevel = run.GlobalAnalyzingLevel;
    if (run.GlobalAnalyzingLevel >= 1) {
        PrintSunLog("=== MULTIPLE PANEL COMPREHENSIVE ANALYSIS LOG ===\n");
        PrintSunLog("Generated: %s\n", now().toUtf8().constData());
        PrintSunLog("Total panels: %d\n", panelCount);
        PrintSunLog("Analysis level: %d\n", run.GlobalAnalyzingLevel);
    }
}

void finishTotals(int panelCount) {
    ReportRunState& run = reportRun();
    // Skipped panels still count in the divisor: the averages are over all panels.
    run.g_averageShading /= panelCount;
    double scores = 0;
    for (const CombinedPanelResults& r : run.g_combinedResults) scores += r.overallScore;
    run.g_systemScore = scores / panelCount;
    run.g_systemGrade = PanelGrade(run.g_systemScore);
}

}  // namespace

std::string MasterCsvName() { return replaceExtension(sunGlobalLog().SunGlobalLogfileName, ".csv"); }

std::string ScenePictureName(const std::string& csvName) { return replaceExtension(csvName, ".JPG"); }

void LogTimestamp() { PrintSunLog("Timestamp: %s\n", now().toUtf8().constData()); }

std::string GenerateMultipleComprehensiveReportCSV(const ReportSite& site) {
    PanelStore& store = panelStore();
    const int panelCount = store.NumPanelsCreated;
    if (panelCount == 0) {
        MyShowMessage(QStringLiteral("No panels created. Cannot generate multiple panel report."));
        return "";
    }
    ReportRunState& run = reportRun();
    startRun(panelCount);
    sunTable().SolarYear = DEFAULT_SOLAR_YEAR;
    SortPanels();
    run.ReportStart = ReportClock();
    const int pointsPerPanel = run.OnlyCenter ? 1 : 5;
    run.Kamahandled = 0;
    run.Kamatohandle = panelCount * pointsPerPanel;
    for (int i = 0; i < panelCount; ++i) {
        // Every panel done keeps its files; the report of a part would mislead.
        if (ReportCancelled()) {
            PrintSunLog("Run cancelled after %d of %d panels\n", i, panelCount);
            return "";
        }
        AnalyzeReportPanel(i, site);
    }
    finishTotals(panelCount);

    const std::string csv = MasterCsvName();
    if (!WriteMasterCSV(csv, run.g_combinedResults, run.REALFACTOR))
        PrintSunLog("Could not write the master CSV %s\n", csv.c_str());
    PrintSunLog("\n=== ANALYSIS COMPLETE ===\n");
    PrintSunLog("Total system energy: %.0f kWh/year\n", run.g_totalEnergyBifacial);
    PrintSunLog("Average shading: %.1f%%\n", run.g_averageShading);
    PrintSunLog("System score: %.0f/100 (%s)\n", run.g_systemScore, run.g_systemGrade.c_str());

    if (csv.empty()) return "";
    const std::string picture = ScenePictureName(csv);
    const ReportCameraView operatorView = LookAtPanelsForPicture();
    At3d_Save_Thumbnail_Image(picture.c_str(), static_cast<int>(site.viewWidth * 1.0),
                              static_cast<int>(site.viewHeight * 1.0));
    RestoreCameraView(operatorView);
    const std::string html = CreateQuickHTML(csv, site);
    QFile::remove(QString::fromStdString(picture));
    return html;
}

std::string DoReport(const ReportSite& site, bool onlyCenter, int optimizerType) {
    // The message loop runs between panels: a menu pressed then must not start a second run.
    static bool running = false;
    if (running) return "";
    running = true;
    struct Done {
        ~Done() { running = false; }
    } done;

    ReportRunState& run = reportRun();
    run.OnlyCenter = onlyCenter;
    run.OptimizerType = optimizerType;
    ShowHideroofplanes(0);
    if (!askEnergyLoss()) return "";
    const std::string climate = climateFileFor(site);
    if (climate.empty()) {
        MyShowMessage(QStringLiteral("Could not download PVGIST data"));
        return "";
    }
    SetClimateInUse(LoadHourlyClimateList(climate));
    ReportStatusLine(QStringLiteral("Start comprehensive panels analysys"));
    AddNamesToPanels(1);
    run.GlobalAnalyzingLevel = 2;
    const std::string html = GenerateMultipleComprehensiveReportCSV(site);
    ClearClimateInUse();
    if (html.empty()) {
        MyShowMessage(ReportCancelled() ? QStringLiteral("Report cancelled") : QStringLiteral("Could not create\n"));
        return "";
    }
    dialogService().openDocument(QString::fromStdString(html));
    return html;
}
