#include "SessionSettings.h"

#include <QString>

#include "MainFormState.h"
#include "SolarConfiguration.h"
#include "ViewerSettings.h"
#include "app/services/OrvoIni.h"
#include "geo/GeoState.h"
#include "solar/analysis/ReportRunState.h"

namespace {

// A bad number takes its default.
int readInt(const char* section, const char* key, int fallback) {
    bool ok = false;
    const int value = QString::fromStdString(ORVOINI().readString(section, key, "")).trimmed().toInt(&ok);
    return ok ? value : fallback;
}

std::string textureItemName(int size) { return "M" + std::to_string(size); }

void checkTextureItem(int size) {
    bool matched = false;
    for (int limit : TEXTURE_LIMITS) matched = matched || limit == size;
    for (int limit : TEXTURE_LIMITS)
        SetControlChecked(textureItemName(limit), matched ? limit == size : limit == TEXTURE_LIMITS[0]);
}

}  // namespace

void WriteSessionSetting(const std::string& section, const std::string& key, const std::string& value) {
    OrvoIni& ini = ORVOINI();
    ini.writeString(section, key, value);
    ini.save();
}

void ReadSessionSettings() {
    ViewerSettings& settings = viewerSettings();
    geoState().IMPERIAL = ORVOINI().readString("Solvane", "Units", "") == "NonMetric3D";
    SetControlChecked("Imperialunits1", geoState().IMPERIAL);
    SetControlChecked("Openallmodels1", ORVOINI().readString("Viewer3D", "Openallmodels", "") == "YES");
    SetControlChecked("CofigireforSolarPlanning1", ORVOINI().readString("Viewer3D", "ConfiguredForSolar", "") == "YES");
    CofigireforSolarPlanning1Click();
    settings.REDUCEJPGSIZE = readInt("Viewer3D", "Texture", 16384);
    checkTextureItem(settings.REDUCEJPGSIZE);
    reportRun().ENERGYLOSSPERCENT = readInt("Viewer3D", "EnergyLoss", 10);
}

void SetTextureLimit(int size) {
    viewerSettings().REDUCEJPGSIZE = size;
    checkTextureItem(size);
    WriteSessionSetting("Viewer3D", "Texture", std::to_string(size));
}

void Imperialunits1Click() {
    const bool imperial = !ControlChecked("Imperialunits1");
    geoState().IMPERIAL = imperial;
    SetControlChecked("Imperialunits1", imperial);
    WriteSessionSetting("Solvane", "Units", imperial ? "NonMetric3D" : "Metric");
}

void Openallmodels1Click() {
    const bool all = !ControlChecked("Openallmodels1");
    SetControlChecked("Openallmodels1", all);
    WriteSessionSetting("Viewer3D", "Openallmodels", all ? "YES" : "NO");
}
