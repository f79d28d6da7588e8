// The energy of one panel hour by hour: the panel's constants, one hour's
// deratings and energy, and the sums of the panel's year.
#pragma once

#include <array>

#include "EnergyClimateIndex.h"
#include "SolarRecords.h"

struct PanelEnergyConstants {
    double area = 0;       // m2
    double baseEff = 0;    // fraction
    double NOCT = 0;       // degrees C
    double tempCoeff = 0;  // per degree C, negative for real modules
};

// From the panel's Length and Width (mm), Efficiency (a fraction, or a
// percentage when above 1), NOCT_C and TempCoeff_Pmax_PercentPercent (%/°C).
PanelEnergyConstants PanelEnergyConstantsOf(int lengthMm, int widthMm, double efficiency, double noctC,
                                            double tempCoeffPercent);

struct HourEnergyInput {
    double realVal = 0;  // tilted irradiance × IAM, W/m2
    double beam = 0;     // horizontal components of the climate list, W/m2
    double diffuse = 0;
    double reflected = 0;
    double shadingLossPercent = 0;  // the hour's loss from the shade decision
    bool shaded = false;
    int monthIndex = 0;  // 0..11; any other leaves the monthly sums alone
};

struct HourEnergy {
    double irradiance = 0;  // the hour's effective irradiance after all deratings, W/m2
    double energy = 0;      // kWh
};

struct PanelEnergyTotals {
    double Total_Energy = 0;    // delivered, kWh
    double TotalRawEnergy = 0;  // horizontal irradiance × area × efficiency, kWh
    std::array<double, 12> monthlyEnergy{};
    std::array<int, 12> monthlyShadedHours{};
    std::array<int, 12> monthlyTotalHours{};
    std::array<double, 12> monthlyRawEnergy{};  // without efficiency
};

// One hour: the cell temperature derating only with temperatures in the
// climate list (hasTempData), then the shade, then the energy, added to totals.
HourEnergy AddHourEnergy(PanelEnergyTotals& totals, const PanelEnergyConstants& panel, const HourEnergyInput& hour,
                         const HourClimate& climate, bool hasTempData);

// The panel's results at the end of its year. panelPowerKW as PanelPowerKW
// gives it; the module's bifacial factor decides only the recommendation.
void FillCombinedPanelResults(CombinedPanelResults& r, const PanelEnergyTotals& totals, int shadedCount,
                              int directSunHours, double panelPowerKW, double bifacialFactorPercent);
