#include "PanelCatalogSettings.h"

#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"

namespace {

const char* const kSection = "Solvane3D";

void writeSetting(const char* key, const QString& value) {
    OrvoIni& ini = ORVOINI();
    ini.writeString(kSection, key, value.toStdString());
    // A session without a settings file (tests, the CLI) keeps the value in memory only.
    if (!ini.path().empty() && !ini.save()) PrintRunLog("Could not write %s to %s\n", key, ini.path().c_str());
}

}  // namespace

QString ReadModuleTypeSetting() {
    return QString::fromStdString(ORVOINI().readString(kSection, "ModuleType", ""));
}

void WriteModuleTypeSetting(const QString& moduleType) { writeSetting("ModuleType", moduleType); }

bool ReadLandscapeSetting() {
    bool ok = false;
    const int value = QString::fromStdString(ORVOINI().readString(kSection, "LandscapePanel", "0")).trimmed().toInt(&ok);
    return ok && value != 0;
}

void WriteLandscapeSetting(bool landscape) {
    writeSetting("LandscapePanel", landscape ? QStringLiteral("1") : QStringLiteral("0"));
}
