// The hourly climate list of the report run in work (TSPVGIST), with its
// look-up indexes built once for all panels of the run.
#pragma once

#include <QStringList>
#include <memory>

#include "ClimateIrradianceLookup.h"
#include "EnergyClimateIndex.h"

struct ClimateInUse {
    QStringList TSPVGIST;  // line 0 is the header
    bool hasTempData = false;  // the header holds "AvgTemperature"
    bool hasWindData = false;  // the header holds "AvgWindSpeed"
    std::unique_ptr<HourIrradianceIndex> irradiance;
    std::unique_ptr<HourClimateIndex> hourClimate;
    // A list with lines is in use: the energy is computed from it.
    bool useRealIrradiance() const { return !TSPVGIST.isEmpty(); }
};

ClimateInUse& climateInUse();
// Takes the list and builds its indexes; an empty list means no climate.
void SetClimateInUse(const QStringList& lines);
void ClearClimateInUse();
