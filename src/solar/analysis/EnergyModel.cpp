#include "EnergyModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "app/services/SunGlobalLog.h"
#include "SunTable.h"

namespace {

constexpr double kRad = std::numbers::pi / 180.0;
constexpr int kDebugPrints = 5;

// The first calls that fall on the 15th of a month go to the log.
bool debugPrintDue(int& calls) {
    const bool due = sunGlobalLog().SunGlobalLogfile && sunTable().GlobalDay == 15 && calls < kDebugPrints;
    ++calls;
    return due;
}

}  // namespace

EnergyDebugState& energyDebugState() {
    static EnergyDebugState state;
    return state;
}

void resetEnergyDebugState() { energyDebugState() = EnergyDebugState{}; }

double IncidentAngle(double tilt, double azimuth, double solarAltitude, double solarAzimuth) {
    const double altitude = solarAltitude * kRad;
    const double fromZenith = std::numbers::pi / 2 - tilt * kRad;
    double cosIncident = std::sin(altitude) * std::sin(fromZenith) +
                         std::cos(altitude) * std::cos(fromZenith) * std::cos((solarAzimuth - azimuth) * kRad);
    cosIncident = std::clamp(cosIncident, -1.0, 1.0);
    const double incident = std::acos(cosIncident) / kRad;
    if (debugPrintDue(energyDebugState().incidentAngleCalls)) {
        const SunTable& table = sunTable();
        PrintSunLog("IncidentAngle %04d-%02d-%02d %02d:00\n", table.GlobalYear, table.GlobalMonth, table.GlobalDay,
                    table.GlobalHour);
        PrintSunLog("Panel Tilt (Deg): %d, Panel Azimuth (Deg): %d\n", static_cast<int>(tilt),
                    static_cast<int>(azimuth));
        PrintSunLog("Solar Altitude: %.4f, Solar Azimuth: %.4f, cos: %.6f, Incident Angle: %.4f\n", solarAltitude,
                    solarAzimuth, cosIncident, incident);
    }
    return incident;
}

double IAMFactor(double incidentAngle) {
    double factor = 0.0;
    if (incidentAngle <= 60.0)
        factor = 1.0;
    else if (incidentAngle <= 90.0)
        factor = 1.0 - (incidentAngle - 60.0) / 30.0;
    if (debugPrintDue(energyDebugState().iamFactorCalls))
        PrintSunLog("IAMFactor %02d-%02d %02d:00 Incident Angle: %.4f, IAM: %.4f\n", sunTable().GlobalMonth,
                    sunTable().GlobalDay, sunTable().GlobalHour, incidentAngle, factor);
    return factor;
}

double CalculateTotalTiltedIrradiance(const HourlySunData& hour, double panelTiltDeg, double panelAzimuthDeg,
                                      double groundAlbedo) {
    const double altitude = hour.altitude * kRad;
    const double tilt = panelTiltDeg * kRad;
    const double incident = IncidentAngle(panelTiltDeg, panelAzimuthDeg, hour.altitude, hour.azimuth);

    double beam = 0.0;
    if (hour.altitude > 0 && hour.beamHorizontalIrradiance > 0 && std::sin(altitude) > 0.001)
        beam = hour.beamHorizontalIrradiance * std::cos(incident * kRad) / std::sin(altitude);
    if (incident > 90.0) beam = 0.0;
    const double diffuse = hour.diffuseHorizontalIrradiance * (1 + std::cos(tilt)) / 2;
    // The climate file's reflected value is scaled by the albedo once more:
    // every report so far has been computed with this sum as it stands.
    const double reflected = hour.reflectedHorizontalIrradiance * groundAlbedo * (1 - std::cos(tilt)) / 2;
    const double total = beam + diffuse + reflected;
    return total < 0 ? 0.0 : total;
}

double GetRoofAlbedo(int roofType) { return roofType == 1 ? 0.85 : 0.25; }

std::string GetRoofDescription(int roofType) {
    return roofType == 1 ? "White flat roof with membrane" : "Red tile roof";
}

std::string DeterminePanelType(double centerPointZ, double tilt) {
    if (centerPointZ < 1) return "GroundMount";
    return tilt > 15 ? "TiledRoof" : "WhiteRoof";
}

double PanelPowerKW(double panelPowerratingKW) {
    if (panelPowerratingKW > 100) {
        const double kw = panelPowerratingKW / 1000.0;
        PrintSunLog("Power rating converted: %.1fW -> %.3fkW\n", panelPowerratingKW, kw);
        return kw;
    }
    PrintSunLog("Power rating already in kW: %.3f\n", panelPowerratingKW);
    return panelPowerratingKW;
}
