// The report run on a large site: 500 panels on the flat roofs of a 2M-triangle
// city, a synthetic climate year, five test points a panel, every file the run
// writes (sun tables, shading CSVs, ray files, panel files, the master CSV, the
// HTML pages). The whole chain is timed with a clean SHADING folder for each
// inverter type, and again with the shading CSVs of the last run as its cache;
// the stages after it time where the chain spends its time, each on its own.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "app/services/SunGlobalLog.h"
#include "CityScene.h"
#include "gen/CityGenerator.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "solar/analysis/ClimateInUse.h"
#include "solar/analysis/EnergyModel.h"
#include "solar/analysis/MasterCsv.h"
#include "solar/analysis/ReportHtml.h"
#include "solar/analysis/ReportRun.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/ShadingRayCast.h"
#include "solar/analysis/ShadingResultsCache.h"
#include "solar/analysis/ShadowAnalysis.h"
#include "solar/analysis/SunTable.h"
#include "solar/analysis/SunTableFile.h"
#include "solar/analysis/SyntheticClimate.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelStore.h"

namespace fs = std::filesystem;

namespace {

constexpr int PANELS = MAX_PANELS;
constexpr const char* MODULE = "ZV-M54 410 Black";
constexpr double TILT = 20;  // degrees, facing south, as on a flat roof
constexpr int EPSG = 2039;

using Clock = std::chrono::steady_clock;
double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// A panel of the catalogue's module centred on a roof point, tilted towards
// the south: corners lower left, upper left, upper right, lower right.
PANEL panelOnRoof(int index, const std::array<double, 3>& centre, const PANEL& module, const std::string& folder) {
    PANEL p = module;
    const int group = 1 + index / 20;
    std::snprintf(p.Name, sizeof p.Name, "%d/%d", index + 1, group);
    std::snprintf(p.Filename, sizeof p.Filename, "%sPanel-%d_%d.dae", folder.c_str(), index + 1, group);
    p.Row = 1;
    p.DTilt = TILT;
    p.DAzimuth = 180;
    p.RoofType = 1;
    p.Active = true;
    p.EPSG = EPSG;
    const double halfAcross = p.Width / 2000.0;
    const double halfUp = p.Length / 2000.0;
    const double dy = halfUp * std::cos(TILT * M_PI / 180), dz = halfUp * std::sin(TILT * M_PI / 180);
    p.CenterPoint = {centre[0], centre[1], centre[2]};
    p.Corners[0] = {centre[0] - halfAcross, centre[1] - dy, centre[2] - dz};
    p.Corners[1] = {centre[0] - halfAcross, centre[1] + dy, centre[2] + dz};
    p.Corners[2] = {centre[0] + halfAcross, centre[1] + dy, centre[2] + dz};
    p.Corners[3] = {centre[0] + halfAcross, centre[1] - dy, centre[2] - dz};
    return p;
}

// The city in the engine as a model open leaves it (map = file, no offset),
// the folders and log of the model, the catalogue and the panels.
class ReportBenchSite {
public:
    ReportBenchSite() {
        root_ = (fs::temp_directory_path() / ("zv-report-bench-" + std::to_string(getpid()))).string() + "/";
        fs::create_directories(root_ + "Reports");
        fs::create_directories(root_ + "TMP");
        sessionPaths().ORVO_T = root_ + "TMP/";
        // The report's address line would ask the public geocoder; a benchmark never waits on the network.
        ORVOINI().writeString("Services", "Geocoding", "");

        benchgen::CityOptions options;
        options.targetTriangles = 2'100'000;
        options.withTexCoords = false;
        benchgen::CityMesh mesh = benchgen::makeCityMesh(options);
        const std::array<double, 3> centre = LoadCityScene(mesh);
        triangles_ = At3d_FaceCount("city");
        FrameState& frames = frameState();
        for (int k = 0; k < 3; ++k) {
            frames.OriginalobjectCenter[k] = centre[k];
            frames.Offset[k] = 0;
        }
        geoState().GlobalCS = GlobalCSFactory::ByEPSG(EPSG);
        geoState().EPSG = EPSG;
        double hit[3];
        const double a[3] = {0, 0, 1000}, b[3] = {0, 0, -1000};
        At3d_Get_Line_Mesh_Intersection_Point(a, b, 0, hit, 0);  // the index, as after an open

        site_.modelFileName = root_ + "city.obj";
        site_.epsg = EPSG;
        site_.modelOpen = true;
        SunGlobalLog& log = sunGlobalLog();
        log.SunGlobalLogfileName = root_ + "Reports/" + std::to_string(getpid()) + "_city_ComprehensiveLog.LOG";
        log.SunGlobalLogfile = std::fopen(log.SunGlobalLogfileName.c_str(), "w");
        if (log.SunGlobalLogfile) std::setvbuf(log.SunGlobalLogfile, nullptr, _IONBF, 0);
        SetPanelFoldersForModel(QString::fromStdString(root_));

        LoadPanelSpecifications(QStringLiteral(ZV_SOURCE_DIR "/data/Panels.csv"));
        PANEL module{};
        AddPanelSpecsFromCSV(module, QString::fromLatin1(MODULE));
        const std::string panelsFolder = panelStore().PANELSFOLDER.toStdString();
        for (int i = 0; i < PANELS && i < static_cast<int>(mesh.roofPoints.size()); ++i)
            panels_.push_back(panelOnRoof(i, mesh.roofPoints[static_cast<std::size_t>(i)], module, panelsFolder));
        for (const PANEL& p : panels_) SaveThePanel(p);

        climateFile_ = root_ + "PVGIST_H.csv";
        double lat = 0, lon = 0;
        GPSEastNorth2LatLon(panels_[0].CenterPoint.X, panels_[0].CenterPoint.Y, lat, lon);
        latitude_ = lat;
        longitude_ = lon;
        WriteSyntheticClimateFile(lat, lon, 1, climateFile_);
        reportRun().GlobalAnalyzingLevel = 2;
        reportRun().OnlyCenter = false;
    }
    // ZV_BENCH_KEEP set keeps the site's folder, to look at what the run wrote.
    ~ReportBenchSite() {
        resetSunGlobalLog();
        if (std::getenv("ZV_BENCH_KEEP")) {
            std::fprintf(stderr, "kept %s\n", root_.c_str());
            return;
        }
        std::error_code ec;
        fs::remove_all(root_, ec);
    }

    // The panel store as placed, before a run sorts it.
    void restorePanels() const {
        PanelStore& store = panelStore();
        for (std::size_t i = 0; i < panels_.size(); ++i) store.panels[i] = panels_[i];
        store.NumPanelsCreated = static_cast<int>(panels_.size());
    }
    // The stages after the chain read what an earlier stage wrote; each makes
    // its own input when run alone.
    void ensureSunTables() const {
        for (const PANEL& p : panels_)
            if (!fs::exists(SunTableFileName(p.Name)))
                GenerateSunPositionData(latitude_, longitude_, DEFAULT_SOLAR_YEAR, p.DTilt, p.DAzimuth,
                                        SunTableFileName(p.Name));
    }
    void ensureShadingCsvs() const {
        if (fs::exists(GetShadingCSV(panels_.back()))) return;
        restorePanels();
        runReport();
    }
    void clearShading() const {
        const fs::path shading = panelStore().SHADINGFOLDER.toStdString();
        std::error_code ec;
        fs::remove_all(shading, ec);
        fs::create_directories(shading);
    }
    // What DoReport does around the run: the climate list and its indexes.
    std::string runReport() const {
        SetClimateInUse(LoadHourlyClimateList(climateFile_));
        const std::string html = GenerateMultipleComprehensiveReportCSV(site_);
        ClearClimateInUse();
        return html;
    }

    const std::vector<PANEL>& panels() const { return panels_; }
    const ReportSite& site() const { return site_; }
    const std::string& climateFile() const { return climateFile_; }
    double latitude() const { return latitude_; }
    double longitude() const { return longitude_; }
    double triangles() const { return static_cast<double>(triangles_); }

private:
    std::string root_;
    std::string climateFile_;
    ReportSite site_;
    std::vector<PANEL> panels_;
    double latitude_ = 0, longitude_ = 0;
    long triangles_ = 0;
};

ReportBenchSite& benchSite() {
    static ReportBenchSite site;
    return site;
}

void countPanels(benchmark::State& state, const ReportBenchSite& s) {
    state.counters["panels"] = static_cast<double>(s.panels().size());
    state.counters["triangles"] = s.triangles();
}

// The whole chain from a clean SHADING folder; the argument is OptimizerType.
void ReportChainFresh(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    for (auto _ : state) {
        state.PauseTiming();
        s.clearShading();
        s.restorePanels();
        reportRun().OptimizerType = static_cast<int>(state.range(0));
        state.ResumeTiming();
        if (s.runReport().empty()) state.SkipWithError("the report run gave no HTML");
    }
    countPanels(state, s);
}

// The chain again over the shading CSVs of a finished run.
void ReportChainCached(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    s.ensureShadingCsvs();
    for (auto _ : state) {
        state.PauseTiming();
        s.restorePanels();
        state.ResumeTiming();
        if (s.runReport().empty()) state.SkipWithError("the report run gave no HTML");
    }
    countPanels(state, s);
}

// Stage: the 500 sun tables written, as each panel's first step.
void StageSunTables(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    for (auto _ : state)
        for (const PANEL& p : s.panels())
            GenerateSunPositionData(s.latitude(), s.longitude(), DEFAULT_SOLAR_YEAR, p.DTilt, p.DAzimuth,
                                    SunTableFileName(p.Name));
    countPanels(state, s);
}

// Stage: the 500 sun tables read back into the sun table.
void StageLoadSunTables(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    s.ensureSunTables();
    for (auto _ : state)
        for (const PANEL& p : s.panels()) InitializeShadowing(SunTableFileName(p.Name));
    countPanels(state, s);
}

// Stage: the ray pass alone, five points a panel towards the hours that pass
// the sun filters, as the shading analysis chooses them.
void StageRayPass(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    s.ensureSunTables();
    double rays = 0;
    for (auto _ : state) {
        double seconds = 0;
        rays = 0;
        for (const PANEL& p : s.panels()) {
            InitializeShadowing(SunTableFileName(p.Name));
            const SunTable& table = sunTable();
            std::vector<Vec3> directions;
            for (int i = 0; i < table.sunCount; ++i) {
                const SunHours& row = table.sunData[static_cast<std::size_t>(i)];
                if (row.altitude <= 5) continue;
                const double incident = IncidentAngle(p.DTilt, p.DAzimuth, row.altitude, row.azimuth);
                if (incident <= 1.1 || incident > 80 || IAMFactor(incident) <= 0.01) continue;
                directions.push_back(SunDirection(row.altitude, row.azimuth));
            }
            std::vector<Vec3> points{{p.CenterPoint.X - OC(0), p.CenterPoint.Y - OC(1), p.CenterPoint.Z - OC(2)}};
            for (const TGIS_Point3D& c : p.Corners) points.push_back({c.X - OC(0), c.Y - OC(1), c.Z - OC(2)});
            const Clock::time_point start = Clock::now();
            const ShadingRays cast = CastShadingRays(points, directions, 1000, 0.5, reportRun().ShadingThreads);
            seconds += secondsSince(start);
            rays += static_cast<double>(cast.shaded.size());
        }
        state.SetIterationTime(seconds);
    }
    state.counters["rays"] = rays;
    countPanels(state, s);
}

// Stage: the shading analysis of every panel (rays, energy pass, shading CSV,
// and at level 2 the ray file) from a clean SHADING folder; the argument is
// the analysis level, so level 2 minus level 1 is the cost of the ray files.
void StagePanelAnalysis(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    s.ensureSunTables();
    const int level = reportRun().GlobalAnalyzingLevel;
    reportRun().GlobalAnalyzingLevel = static_cast<int>(state.range(0));
    SetClimateInUse(LoadHourlyClimateList(s.climateFile()));
    for (auto _ : state) {
        s.clearShading();
        double seconds = 0;
        for (const PANEL& p : s.panels()) {
            InitializeShadowing(SunTableFileName(p.Name));
            CombinedPanelResults result;
            result.panel = p;
            const Clock::time_point start = Clock::now();
            AnalyzeShadowForPointEx(p, result, SunTableFileName(p.Name), false, 1);
            seconds += secondsSince(start);
        }
        state.SetIterationTime(seconds);
    }
    ClearClimateInUse();
    reportRun().GlobalAnalyzingLevel = level;
    countPanels(state, s);
}

// Stage: reading every shading CSV back as the cache.
void StageCacheRead(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    s.ensureShadingCsvs();
    for (auto _ : state)
        for (const PANEL& p : s.panels()) {
            CombinedPanelResults result;
            result.panel = p;
            LoadAndValidateCache(GetShadingCSV(p), p.CenterPoint.X - OC(0), p.CenterPoint.Y - OC(1),
                                 p.CenterPoint.Z - OC(2), result, 2);
        }
    countPanels(state, s);
}

// Stage: the 500 panel files written with their results.
void StageSavePanels(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    for (auto _ : state)
        for (const PANEL& p : s.panels()) SaveThePanel(p);
    countPanels(state, s);
}

// Stage: the master CSV and the HTML pages from the last run's results.
void StageMasterCsvAndHtml(benchmark::State& state) {
    ReportBenchSite& s = benchSite();
    if (reportRun().g_combinedResults.empty()) s.runReport();
    const std::string csv = MasterCsvName();
    for (auto _ : state) {
        WriteMasterCSV(csv, reportRun().g_combinedResults, reportRun().REALFACTOR);
        if (CreateQuickHTML(csv, s.site()).empty()) state.SkipWithError("no HTML");
    }
    countPanels(state, s);
}

}  // namespace

BENCHMARK(ReportChainFresh)->Name("Report/ChainFresh/OptimizerType")->Arg(0)->Arg(1)->Iterations(1)->UseRealTime()
    ->Unit(benchmark::kSecond);
BENCHMARK(ReportChainCached)->Name("Report/ChainCached")->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);
BENCHMARK(StageSunTables)->Name("Report/Stage/SunTablesWritten")->Iterations(1)->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StageLoadSunTables)->Name("Report/Stage/SunTablesLoaded")->Iterations(1)->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StageRayPass)->Name("Report/Stage/RayPass")->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(StagePanelAnalysis)->Name("Report/Stage/ShadingAnalysis/Level")->Arg(1)->Arg(2)->Iterations(1)
    ->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(StageCacheRead)->Name("Report/Stage/CacheRead")->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(StageSavePanels)->Name("Report/Stage/PanelFilesSaved")->Iterations(1)->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StageMasterCsvAndHtml)->Name("Report/Stage/MasterCsvAndHtml")->Iterations(1)->UseRealTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
