// The formulas of the energy model that stand by themselves: the sun's angle
// on a panel, the incidence modifier, the tilted irradiance, the roof kinds.
#pragma once

#include <string>

#include "SolarRecords.h"

inline constexpr double GlobalGroundAlbedo = 0.2;  // ground reflection in the tilted sum
inline constexpr int BIFACIALGAINPERCENT = 2;      // fixed gain of a bifacial module, percent
inline constexpr float BIFACIALGAINFACTOR = static_cast<float>(1 + BIFACIALGAINPERCENT / 100.0);
inline constexpr float ShadeLossFactor = 0.8f;  // only for results read back from the cache

// All angles in degrees; azimuths from north, clockwise; tilt from horizontal.
double IncidentAngle(double tilt, double azimuth, double solarAltitude, double solarAzimuth);
// Linear fall from 1 at 60 degrees to 0 at 90 degrees.
double IAMFactor(double incidentAngle);
// Beam, isotropic sky diffuse and ground reflection on the panel, W/m2, never negative.
double CalculateTotalTiltedIrradiance(const HourlySunData& hour, double panelTiltDeg, double panelAzimuthDeg,
                                      double groundAlbedo);

// Roof type 1 is a white flat roof, anything else a tile roof.
double GetRoofAlbedo(int roofType);
std::string GetRoofDescription(int roofType);
// "GroundMount", "TiledRoof" or "WhiteRoof" from the panel's centre height and tilt.
std::string DeterminePanelType(double centerPointZ, double tilt);

// A rating above 100 is taken as watts and turned into kW; logged either way.
double PanelPowerKW(double panelPowerratingKW);

// Call counters of the debug prints of IncidentAngle and IAMFactor.
struct EnergyDebugState {
    int incidentAngleCalls = 0;
    int iamFactorCalls = 0;
};
EnergyDebugState& energyDebugState();
void resetEnergyDebugState();
