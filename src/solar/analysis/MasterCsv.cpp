#include "MasterCsv.h"

#include <QSaveFile>
#include <QString>
#include <cstdio>

#include "solar/design/PanelText.h"

const char* const MASTER_CSV_HEADER =
    "PanelID,X,Y,Z,Tilt_Deg,Azimuth_Deg,PowerRating_W,ModuleType,Efficiency_Percent,Jan_kWh,Feb_kWh,Mar_kWh,Apr_kWh,"
    "May_kWh,Jun_kWh,Jul_kWh,Aug_kWh,Sep_kWh,Oct_kWh,Nov_kWh,Dec_kWh,Annual_kWh,ShadingPercent,ShadingLoss_kWh,"
    "ShadedHours,Direct_Sun_Hours,RoofType\n";

namespace {

// The 70 percent loss of a shaded hour, as the shading pass applies it.
constexpr double kShadeShare = 0.7;

void appendf(std::string& out, const char* format, auto... values) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, format, values...);
    out += buffer;
}

}  // namespace

std::string MasterCsvRow(const CombinedPanelResults& r, float realFactor) {
    const PANEL& p = r.panel;
    // A white flat roof reflects onto the back: there the bifacial figure counts.
    const bool whiteRoof = p.RoofType == 1;
    const auto& months = whiteRoof ? r.monthlyEnergyBifacial : r.monthlyEnergyMonofacial;
    const double annual = whiteRoof ? r.annualEnergyBifacial : r.annualEnergyMonofacial;
    std::string id = PanelText(p.Name).toStdString();
    if (p.GroupingName) id += p.GroupingName;
    std::string row;
    appendf(row, "%s,%.2f,%.2f,%.2f,%.1lf,%.1lf,%.3f,%s,%.1f,", id.c_str(), p.CenterPoint.X, p.CenterPoint.Y,
            p.CenterPoint.Z, p.DTilt, p.DAzimuth, p.PanelPowerratingKW, PanelText(p.ModuleType).toUtf8().constData(),
            p.Efficiency);
    for (double month : months) appendf(row, "%.1f,", static_cast<float>(month) * realFactor);
    appendf(row, "%.1f,%.1f,%.1f,%d,%d,%s\n", static_cast<float>(annual) * realFactor,
            p.Shading_Percent * kShadeShare, r.Shadingloss_kWh * kShadeShare, p.Shaded_Hours, p.DirectSun_Hours,
            whiteRoof ? "White Roof" : "Tiled Roof");
    return row;
}

bool WriteMasterCSV(const std::string& path, const std::vector<CombinedPanelResults>& results, float realFactor) {
    std::string text = MASTER_CSV_HEADER;
    for (const CombinedPanelResults& r : results) text += MasterCsvRow(r, realFactor);
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(text.data(), static_cast<qint64>(text.size()));
    return file.commit();
}
