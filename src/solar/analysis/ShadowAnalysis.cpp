#include "ShadowAnalysis.h"

#include <QFileInfo>
#include <charconv>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "ClimateInUse.h"
#include "ClimateText.h"
#include "EnergyHour.h"
#include "EnergyModel.h"
#include "ReportRunState.h"
#include "ShadingRayCast.h"
#include "ShadingRayFile.h"
#include "ShadingResultsCache.h"
#include "SunPosition.h"
#include "SunTable.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoFopen.h"
#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"
#include "solar/design/PanelLayers.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PlacementDae.h"

namespace {

constexpr double kRayLength = 1000;     // metres towards the sun
constexpr double kSkipDistance = 0.5;   // the panel's own surface and its frame
constexpr double kCacheTolerance = 2;   // metres a panel may move and keep its CSV
constexpr double kStringInverterLoss = 70;
constexpr double kMinCountedOptimizerLoss = 10;

const char* const kCsvHeader =
    "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor,GetObstruction_Result,Obstruction_Distance,"
    "PVGIS_Irradiance,Energy,Total_energy,Panel_X,Panel_Y,Panel_Z,Direct_Sun_Hours,Shading_Points,"
    "Shading_Loss_Percent\n";

// One sun row as both passes see it; castIndex is its column among the rays,
// -1 for an hour that no ray is cast for.
struct SunRowAngles {
    double incident = 0;
    double iam = 0;
    int castIndex = -1;
};

std::string shadingFile(const PANEL& panel, const char* tail) {
    const QString base = QFileInfo(QString::fromUtf8(panel.Filename)).completeBaseName();
    return (panelStore().SHADINGFOLDER + base + QLatin1String(tail)).toStdString();
}

int fileLineCount(const std::string& path) {
    std::string text;
    return ReadTextFile(path, text) ? static_cast<int>(CountTextLines(text)) : 0;
}

// A CSV row holds a dozen numbers and a panel's year thousands of rows:
// to_chars writes "%.*f" and "%d" exactly as printf does in the "C" locale,
// without parsing a format for each value.
void appendFixed(std::string& text, double value, int decimals) {
    char buffer[400];
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals).ptr);
}

void appendInt(std::string& text, int value) {
    char buffer[16];
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

Vec3 engineVec(const TGIS_Point3D& p) { return {p.X - OC(0), p.Y - OC(1), p.Z - OC(2)}; }

// The status line while a point is in work: panel, point, counts, time.
void showPointProgress(int point, int total) {
    ReportRunState& run = reportRun();
    const float elapsed = (ReportClock() - run.ReportStart) / 1000.0f;
    const float remaining = elapsed / run.Kamahandled * (run.Kamatohandle - run.Kamahandled);
    const int percent =
        run.Kamatohandle > 0 ? static_cast<int>(static_cast<double>(run.Kamahandled) / run.Kamatohandle * 100) : 0;
    int h = 0, m = 0, s = 0, ms = 0;
    int rh = 0, rm = 0, rs = 0, rms = 0;
    DecodeHMS(elapsed, h, m, s, ms);
    DecodeHMS(remaining, rh, rm, rs, rms);
    ReportStatusLine(run.GlobalProcessingPanelString + QString::asprintf("     Point %d out of %d", point + 1, total) +
                     QString::asprintf(" %d   [%d] out of %d", run.Kamahandled - 1, run.Kamahandled, run.Kamatohandle) +
                     QString::asprintf("   %d%% %02d:%02d:%02d", percent, h, m, s) +
                     QString::asprintf(" Remaining  %02d:%02d:%02d", rh, rm, rs));
}

void logCalculationStart(const PANEL& panel, double powerKW, bool onlyCenter, int optimizerType) {
    PrintSunLog("\n=== STARTING NEW CALCULATION ===\n");
    PrintSunLog("Panel position: X=%.3f, Y=%.3f, Z=%.3f\n", panel.CenterPoint.X, panel.CenterPoint.Y,
                panel.CenterPoint.Z);
    PrintSunLog("Panel orientation: tilt %.2f, azimuth %.2f\n", panel.DTilt, panel.DAzimuth);
    PrintSunLog("Panel power: %.3f kW\n", powerKW);
    PrintSunLog("Panel dimensions: %.2f x %.2f mm\n", static_cast<double>(panel.Length),
                static_cast<double>(panel.Width));
    PrintSunLog("Panel efficiency: %.2f%%\n", panel.Efficiency);
    PrintSunLog("NOCT: %.1f°C, TempCoeff: %.3f%%/°C\n", panel.NOCT_C, panel.TempCoeff_Pmax_PercentPercent);
    PrintSunLog("Shading mode: %s, Optimizer: %s\n", onlyCenter ? "Center only" : "5-point (center+corners)",
                optimizerType == 0 ? "String inverter" : "Modern optimizer");
}

}  // namespace

std::string GetShadingCSV(const PANEL& panel) { return shadingFile(panel, "_Shading.CSV"); }
std::string GetShadingDae(const PANEL& panel) { return shadingFile(panel, "_Shading.dae"); }

std::string AnalyzeShadowForPointEx(const PANEL&, CombinedPanelResults& r, const std::string& panelSunFile,
                                    bool OnlyCenter, int OptimizerType) {
    const PANEL panel = r.panel;
    const Vec3 centre = engineVec(panel.CenterPoint);
    const std::string shadingCsv = GetShadingCSV(panel);
    const std::string shadingDae = GetShadingDae(panel);
    SunTable& table = sunTable();
    if (!table.shadow_initialized || table.sunCount <= 0) return {};
    const double powerKW = PanelPowerKW(panel.PanelPowerratingKW);
    if (QFileInfo::exists(QString::fromStdString(shadingCsv)) &&
        LoadAndValidateCache(shadingCsv, centre.x, centre.y, centre.z, r, kCacheTolerance))
        return shadingCsv;

    logCalculationStart(panel, powerKW, OnlyCenter, OptimizerType);
    ReportRunState& run = reportRun();
    const bool rayFileActive = run.GlobalAnalyzingLevel >= 2;
    if (rayFileActive) BeginShadingDAE(shadingDae);
    std::string csv = kCsvHeader;
    csv.reserve(static_cast<std::size_t>(table.sunCount) * 160);

    const int rowCount = std::min(table.sunCount, fileLineCount(panelSunFile));
    const ClimateInUse& climate = climateInUse();
    const bool useRealIrradiance = climate.useRealIrradiance() && climate.irradiance && climate.hourClimate;
    const PanelEnergyConstants constants = PanelEnergyConstantsOf(
        panel.Length, panel.Width, panel.Efficiency, panel.NOCT_C, panel.TempCoeff_Pmax_PercentPercent);

    std::vector<Vec3> points{centre};
    if (!OnlyCenter)
        for (const TGIS_Point3D& corner : panel.Corners) points.push_back(engineVec(corner));
    const int totalPoints = static_cast<int>(points.size());

    // The angles of an hour do not depend on the point: worked out once, and
    // the hours that pass the sun filters get one ray per point.
    std::vector<SunRowAngles> angles(static_cast<std::size_t>(rowCount));
    std::vector<Vec3> directions;
    std::vector<int> castRows;
    for (int i = 0; i < rowCount; ++i) {
        const SunHours& row = table.sunData[static_cast<std::size_t>(i)];
        if (row.altitude <= 5) continue;
        SunRowAngles& a = angles[static_cast<std::size_t>(i)];
        a.incident = IncidentAngle(panel.DTilt, panel.DAzimuth, row.altitude, row.azimuth);
        a.iam = IAMFactor(a.incident);
        // The sun almost on the panel's normal is dropped here and in the energy pass alike.
        if (a.incident <= 1.1 || a.incident > 80 || a.iam <= 0.01 || a.incident > 90) continue;
        a.castIndex = static_cast<int>(directions.size());
        directions.push_back(SunDirection(row.altitude, row.azimuth));
        castRows.push_back(i);
    }
    const ShadingRays rays = CastShadingRays(points, directions, kRayLength, kSkipDistance, run.ShadingThreads);
    const std::size_t castCount = directions.size();

    // Pass one, point by point in order: counts, progress and the ray file.
    int processedPoints = 0;
    int shadingchecks = 0;
    int directSunHours = 0;
    int stringOptimizerSkips = 0;
    bool earlyExit = false;
    for (int pt = 0; pt < totalPoints; ++pt) {
        ++processedPoints;
        ++run.Kamahandled;
        showPointProgress(pt, totalPoints);
        PrintSunLog("Processing test point %d/%d...\n", pt + 1, totalPoints);
        int pointShadedHours = 0;
        const Vec3& origin = points[static_cast<std::size_t>(pt)];
        for (std::size_t c = 0; c < castCount; ++c) {
            ++shadingchecks;
            const std::size_t ray = static_cast<std::size_t>(pt) * castCount + c;
            if (!rays.shaded[ray]) continue;
            ++pointShadedHours;
            if (rayFileActive) {
                const SunHours& row = table.sunData[static_cast<std::size_t>(castRows[c])];
                const Vec3 hit{rays.hits[3 * ray], rays.hits[3 * ray + 1], rays.hits[3 * ray + 2]};
                LogShadowRay(origin, hit, row.altitude, row.azimuth);
            }
        }
        if (OptimizerType == 0) {
            // directSunHours is counted in the energy pass only, so here it is
            // still 0 and every point is cast: the passes keep this order.
            const double shadingPercentage =
                directSunHours > 0 ? static_cast<double>(pointShadedHours) / directSunHours * 100 : 0;
            if (shadingPercentage > 20) {
                PrintSunLog("String inverter early exit: Point %d has %.1f%% shading\n", pt + 1, shadingPercentage);
                PrintSunLog("Skipping remaining %d points\n", totalPoints - pt - 1);
                stringOptimizerSkips = (totalPoints - pt - 1) * directSunHours;
                earlyExit = true;
            }
        }
        PrintSunLog("Point %d: %d shaded hours\n", pt + 1, pointShadedHours);
        if (earlyExit) break;
    }

    // Pass two, hour by hour: the shade decision, the energy and the CSV rows.
    PanelEnergyTotals totals;
    int totalLines = 0, altitudeskept = 0, nightTimeHours = 0, Incidendskept = 0, IAMskept = 0, lowIamHours = 0;
    int backFacingHours = 0, shadedCount = 0, loggedLines = 0, hourRays = 0;
    for (int i = 0; i < rowCount; ++i) {
        ++totalLines;
        SunHours& row = table.sunData[static_cast<std::size_t>(i)];
        if (row.altitude <= 5) {
            ++altitudeskept;
            ++nightTimeHours;
            continue;
        }
        IrradianceComponents horizontal{0, 0, 0};
        double realVal = 0;
        if (useRealIrradiance) {
            horizontal = GetRealIrradianceForTime(row.date, row.time, *climate.irradiance);
            HourlySunData hour;
            hour.altitude = row.altitude;
            hour.azimuth = row.azimuth;
            hour.beamHorizontalIrradiance = horizontal.beam;
            hour.diffuseHorizontalIrradiance = horizontal.diffuse;
            hour.reflectedHorizontalIrradiance = horizontal.reflected;
            realVal = CalculateTotalTiltedIrradiance(hour, panel.DTilt, panel.DAzimuth, GlobalGroundAlbedo);
        }
        const SunRowAngles& a = angles[static_cast<std::size_t>(i)];
        if (a.incident <= 1.1) {
            ++Incidendskept;
            continue;
        }
        if (a.incident > 80) continue;
        if (a.iam <= 0.01) {
            ++IAMskept;
            ++lowIamHours;
            continue;
        }
        if (!(a.incident <= 90)) {
            ++backFacingHours;
            continue;
        }
        ++directSunHours;
        realVal *= a.iam;

        int shadedPointsThisHour = 0;
        if (a.castIndex >= 0)
            for (int pt = 0; pt < processedPoints; ++pt)
                shadedPointsThisHour += rays.shaded[static_cast<std::size_t>(pt) * castCount +
                                                    static_cast<std::size_t>(a.castIndex)];
        double shadingLossPercent = 0;
        bool shaded = false;
        if (shadedPointsThisHour > 0) {
            if (OptimizerType == 0) {
                shadingLossPercent = kStringInverterLoss;
                shaded = true;
            } else {
                const double ratio = static_cast<double>(shadedPointsThisHour) / processedPoints;
                shadingLossPercent = kStringInverterLoss * ratio;
                shaded = shadingLossPercent > kMinCountedOptimizerLoss;
            }
        }
        row.SHADED = shaded;
        if (shaded) ++shadedCount;

        int year = 0, month = 0, hourOfDay = 0, minute = 0, day = 0;
        ScanDateParts(row.date, year, month, day);
        ScanTimeParts(row.time, hourOfDay, minute);
        const HourClimate hourClimate =
            useRealIrradiance ? climate.hourClimate->lookup(month, day, hourOfDay) : HourClimate{};
        HourEnergyInput input;
        input.realVal = realVal;
        input.beam = horizontal.beam;
        input.diffuse = horizontal.diffuse;
        input.reflected = horizontal.reflected;
        input.shadingLossPercent = shadingLossPercent;
        input.shaded = shaded;
        input.monthIndex = month - 1;
        const HourEnergy energy = AddHourEnergy(totals, constants, input, hourClimate, climate.hasTempData);
        row.Irradiance = energy.irradiance;

        ++hourRays;
        csv += row.date;
        csv += ',';
        csv += row.time;
        csv += ',';
        appendFixed(csv, row.altitude, 2);
        csv += ',';
        appendFixed(csv, row.azimuth, 2);
        csv += ',';
        appendFixed(csv, a.incident, 2);
        csv += ',';
        appendFixed(csv, a.iam, 4);
        csv += shaded ? ",OBSTRUCTED,0.00," : ",CLEAR,N/A,";
        appendFixed(csv, horizontal.beam + horizontal.diffuse + horizontal.reflected, 2);
        csv += ',';
        appendFixed(csv, energy.energy, 6);
        csv += ',';
        appendFixed(csv, totals.Total_Energy, 6);
        csv += ',';
        appendFixed(csv, panel.CenterPoint.X, 3);
        csv += ',';
        appendFixed(csv, panel.CenterPoint.Y, 3);
        csv += ',';
        appendFixed(csv, panel.CenterPoint.Z, 3);
        csv += ',';
        appendInt(csv, directSunHours);
        csv += ',';
        appendInt(csv, shadedPointsThisHour);
        csv += '/';
        appendInt(csv, processedPoints);
        csv += ',';
        appendFixed(csv, shadingLossPercent, 1);
        csv += '\n';
        ++loggedLines;
    }

    // One write of the whole file: a report of hundreds of panels spends no
    // time in small writes.
    if (std::FILE* f = ORVOfopen(QString::fromStdString(shadingCsv), "w")) {
        std::fwrite(csv.data(), 1, csv.size(), f);
        std::fclose(f);
    } else {
        PrintSunLog("ERROR: Cannot create shading CSV %s\n", shadingCsv.c_str());
    }
    if (rayFileActive) EndDAE();

    FillCombinedPanelResults(r, totals, shadedCount, directSunHours, powerKW, panel.BifacialFactor_Percent);
    PrintSunLog("\n=== FINAL POINT-FIRST ANALYSIS RESULTS ===\n");
    PrintSunLog("Total ray casts: %d\n", shadingchecks);
    PrintSunLog("Method: %s\n", OnlyCenter ? "Single point (center)" : "Multi-point (5 points)");
    PrintSunLog("Test points processed: %d\n", processedPoints);
    PrintSunLog("Sun table hours examined: %d\n", totalLines);
    PrintSunLog("Hours with the sun at 5 degrees or lower: %d (night %d)\n", altitudeskept, nightTimeHours);
    PrintSunLog("Hours near normal incidence skipped: %d\n", Incidendskept);
    PrintSunLog("Hours with low IAM skipped: %d (%d)\n", IAMskept, lowIamHours);
    PrintSunLog("Back facing hours: %d\n", backFacingHours);
    PrintSunLog("Direct sun hours: %d\n", directSunHours);
    PrintSunLog("Shaded hours: %d\n", shadedCount);
    PrintSunLog("Shading percent: %.2f%%\n", r.shading.Shading_Percent);
    PrintSunLog("String inverter skips: %d\n", stringOptimizerSkips);
    PrintSunLog("Total energy: %.3f kWh\n", totals.Total_Energy);
    PrintSunLog("Raw energy: %.3f kWh\n", totals.TotalRawEnergy);
    PrintSunLog("Energy loss: %.3f kWh (%.2f%%)\n", r.shading.energyLossKwh, r.ShadingLoss_Percent);
    PrintSunLog("CSV rows written: %d (hours %d)\n", loggedLines, hourRays);
    return shadingCsv;
}

void ShowPanelShadingBtnClick(const QString& GlobalLayerName) {
    const int index = GetPanelIndexFromLayer(GlobalLayerName);
    PanelStore& store = panelStore();
    if (index < 0 || index >= store.NumPanelsCreated) return;
    store.GlobalPanel = store.panels[static_cast<std::size_t>(index)];
    const std::string shadingDae = GetShadingDae(store.GlobalPanel);
    if (!QFileInfo::exists(QString::fromStdString(shadingDae))) {
        MyShowMessage(QStringLiteral("No shadeing DAE file found"));
        return;
    }
    if (placementHooks().addModels) placementHooks().addModels(QStringList{QString::fromStdString(shadingDae)});
}
