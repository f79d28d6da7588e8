#include "ShadingResultsCache.h"

#include <cmath>
#include <cstdio>
#include <vector>

#include "ClimateText.h"
#include "EnergyModel.h"
#include "SunTable.h"
#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"

namespace {

// Columns of the shading CSV read back.
constexpr int kMinFields = 15;
constexpr int kResultColumn = 6;
constexpr int kEnergyColumn = 9;
constexpr int kTotalEnergyColumn = 10;
constexpr int kPanelXColumn = 11;
constexpr int kDirectSunColumn = 14;
constexpr double kMaxHeightChange = 0.3;  // metres

double numberOr(const QString& text, double fallback) {
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok ? value : fallback;
}

}  // namespace

bool ReadCSVData(const std::string& path, QStringList& lines) {
    std::vector<std::string> text;
    if (!ReadTextLines(path, text)) return false;
    lines.clear();
    lines.reserve(static_cast<qsizetype>(text.size()));
    for (const std::string& line : text) lines.append(QString::fromStdString(line));
    return true;
}

QStringList ParseCSVLine(const QString& line) { return line.split(QLatin1Char(',')); }

bool LoadAndValidateCache(const std::string& csvFile, double xx, double yy, double zz, CombinedPanelResults& r,
                          double tolerance) {
    QStringList lines;
    if (!ReadCSVData(csvFile, lines) || lines.size() < 2) return false;
    const QStringList fields = ParseCSVLine(lines[1]);
    if (fields.size() < kMinFields) return false;
    const double dx = numberOr(fields[kPanelXColumn], 0) - OC(0) - xx;
    const double dy = numberOr(fields[kPanelXColumn + 1], 0) - OC(1) - yy;
    const double dz = numberOr(fields[kPanelXColumn + 2], 0) - OC(2) - zz;
    const double distance = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (distance > tolerance || std::fabs(dz) > kMaxHeightChange) {
        PrintSunLog("Position changed by %.2fm (tolerance: %.2fm)\n", distance, tolerance);
        return false;
    }
    LoadResultsFromCSV(lines, r);
    return true;
}

void LoadResultsFromCSV(const QStringList& csvData, CombinedPanelResults& r) {
    r.monthlyEnergyMonofacial.fill(0);
    r.monthlyEnergyBifacial.fill(0);
    r.MonthlyRaw.fill(0);
    r.MonthlyShadedHours.fill(0);
    r.annualEnergyMonofacial = 0;
    r.annualEnergyBifacial = 0;
    PrintSunLog("LoadResultsFromCSV: Processing %d lines\n", static_cast<int>(csvData.size()));
    double totalEnergy = 0;
    int shadedHours = 0;
    int directSunHours = 0;
    for (qsizetype i = 1; i < csvData.size(); ++i) {
        const QStringList fields = ParseCSVLine(csvData[i]);
        if (fields.size() < kMinFields) {
            PrintSunLog("  WARNING: Line %d has only %d fields (need 15+)\n", static_cast<int>(i),
                        static_cast<int>(fields.size()));
            continue;
        }
        const double energy = numberOr(fields[kEnergyColumn], 0);
        totalEnergy = numberOr(fields[kTotalEnergyColumn], 0);  // a running total: the last line's wins
        const bool shaded = fields[kResultColumn] == QLatin1String("OBSTRUCTED");
        bool ok = false;
        const int direct = fields[kDirectSunColumn].toInt(&ok);
        directSunHours = ok ? direct : 0;
        const QByteArray date = fields[0].toUtf8();
        int year = 0, month = 0, day = 0;
        if (std::sscanf(date.constData(), "%d-%d-%d", &year, &month, &day) != 3) {
            PrintSunLog("  WARNING: Failed to parse date '%s' on line %d\n", date.constData(), static_cast<int>(i));
            continue;
        }
        if (month < 1 || month > 12) continue;
        const int m = month - 1;
        r.monthlyEnergyMonofacial[m] += energy;
        r.monthlyEnergyBifacial[m] = r.monthlyEnergyMonofacial[m] * BIFACIALGAINFACTOR;
        if (shaded) {
            r.MonthlyShadedHours[m] += 1;
            ++shadedHours;
        }
    }
    PrintSunLog("Final bifacial calculation with BIFACIALGAINFACTOR: %.3f\n", static_cast<double>(BIFACIALGAINFACTOR));
    for (int m = 0; m < 12; ++m) r.monthlyEnergyBifacial[m] = r.monthlyEnergyMonofacial[m] * BIFACIALGAINFACTOR;
    r.panel.Annual_kWh = totalEnergy;
    r.annualEnergyMonofacial = totalEnergy;
    r.annualEnergyBifacial = totalEnergy * BIFACIALGAINFACTOR;
    r.Shaded_Hours = shadedHours;
    r.shading.Shaded_Hours = shadedHours;
    r.shading.DirectSun_Hours = directSunHours;
    r.shading.Shading_Percent = directSunHours > 0 ? static_cast<double>(shadedHours) / directSunHours * 100.0 : 0.0;
    // Without the raw irradiance the loss is estimated from the shaded share.
    const double keep = ShadeLossFactor;
    r.shading.energyLossKwh = totalEnergy * r.shading.Shading_Percent / 100.0 * (1 - keep) / keep;
    PrintSunLog("LoadResultsFromCSV complete: %.1f kWh, %d shaded hours\n", totalEnergy, shadedHours);
    PrintSunLog("Monthly energy breakdown:\n");
    for (int m = 0; m < 12; ++m)
        PrintSunLog("  %s: Mono=%.1f kWh, Bifacial=%.1f kWh\n", MONTH_NAMES[m], r.monthlyEnergyMonofacial[m],
                    r.monthlyEnergyBifacial[m]);
}

void SaveResultsToCache(const std::string& csvFile, double xx, double yy, double zz, const CombinedPanelResults&) {
    PrintSunLog("Results cached to: %s\n", csvFile.c_str());
    PrintSunLog("Position: (%.3f, %.3f, %.3f)\n", xx, yy, zz);
}
