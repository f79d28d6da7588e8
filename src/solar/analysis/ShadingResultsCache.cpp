#include "ShadingResultsCache.h"

#include <charconv>
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

// The rows read back as text views: a panel's year is thousands of rows, and
// Qt's split and number conversion cost most of a cached report otherwise.
void loadResults(const std::vector<std::string>& lines, CombinedPanelResults& r) {
    r.monthlyEnergyMonofacial.fill(0);
    r.monthlyEnergyBifacial.fill(0);
    r.MonthlyRaw.fill(0);
    r.MonthlyShadedHours.fill(0);
    r.annualEnergyMonofacial = 0;
    r.annualEnergyBifacial = 0;
    PrintSunLog("LoadResultsFromCSV: Processing %d lines\n", static_cast<int>(lines.size()));
    double totalEnergy = 0;
    int shadedHours = 0;
    int directSunHours = 0;
    std::vector<std::string_view> fields;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        fields = SplitCommas(lines[i]);
        if (fields.size() < kMinFields) {
            PrintSunLog("  WARNING: Line %d has only %d fields (need 15+)\n", static_cast<int>(i),
                        static_cast<int>(fields.size()));
            continue;
        }
        const double energy = TolerantNumber(fields[kEnergyColumn], 0);
        totalEnergy = TolerantNumber(fields[kTotalEnergyColumn], 0);  // a running total: the last line's wins
        const bool shaded = fields[kResultColumn] == "OBSTRUCTED";
        const std::string_view directText = TrimText(fields[kDirectSunColumn]);
        int direct = 0;
        const auto parsed = std::from_chars(directText.data(), directText.data() + directText.size(), direct);
        directSunHours = parsed.ec == std::errc() && parsed.ptr == directText.data() + directText.size() ? direct : 0;
        const std::string date(fields[0]);
        int year = 0, month = 0, day = 0;
        if (std::sscanf(date.c_str(), "%d-%d-%d", &year, &month, &day) != 3) {
            PrintSunLog("  WARNING: Failed to parse date '%s' on line %d\n", date.c_str(), static_cast<int>(i));
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
    std::vector<std::string> lines;
    if (!ReadTextLines(csvFile, lines) || lines.size() < 2) return false;
    const std::vector<std::string_view> fields = SplitCommas(lines[1]);
    if (fields.size() < kMinFields) return false;
    const double dx = TolerantNumber(fields[kPanelXColumn], 0) - OC(0) - xx;
    const double dy = TolerantNumber(fields[kPanelXColumn + 1], 0) - OC(1) - yy;
    const double dz = TolerantNumber(fields[kPanelXColumn + 2], 0) - OC(2) - zz;
    const double distance = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (distance > tolerance || std::fabs(dz) > kMaxHeightChange) {
        PrintSunLog("Position changed by %.2fm (tolerance: %.2fm)\n", distance, tolerance);
        return false;
    }
    loadResults(lines, r);
    return true;
}

void LoadResultsFromCSV(const QStringList& csvData, CombinedPanelResults& r) {
    std::vector<std::string> lines;
    lines.reserve(static_cast<std::size_t>(csvData.size()));
    for (const QString& line : csvData) lines.push_back(line.toStdString());
    loadResults(lines, r);
}

void SaveResultsToCache(const std::string& csvFile, double xx, double yy, double zz, const CombinedPanelResults&) {
    PrintSunLog("Results cached to: %s\n", csvFile.c_str());
    PrintSunLog("Position: (%.3f, %.3f, %.3f)\n", xx, yy, zz);
}
