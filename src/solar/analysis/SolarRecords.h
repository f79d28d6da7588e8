// The records that carry one hour's sun and climate into the energy model
// and the whole outcome of one panel out of it. Numbers start at zero.
#pragma once

#include <array>
#include <string>

#include "solar/design/PanelStruct.h"

struct HourlySunData {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    double altitude = 0;  // sun, degrees
    double azimuth = 0;   // sun, degrees from north, clockwise
    double temperature = 0;
    double windSpeed = 0;
    double reflectedHorizontalIrradiance = 0;  // W/m2, the climate file's reflected column
    double beamHorizontalIrradiance = 0;       // W/m2
    double diffuseHorizontalIrradiance = 0;    // W/m2
    double incidentAngle = 0;
    double iamFactor = 0;
    bool isShaded = false;
    double energyLoss = 0;
};

struct ShadingAnalysis {
    int Shaded_Hours = 0;
    int DirectSun_Hours = 0;  // hours that passed all sun filters
    double Shading_Percent = 0;
    double energyLossKwh = 0;  // raw minus delivered energy
    std::array<double, 12> monthlyShading{};
};

struct OptimizationResult {
    int optimalTilt = 0;
    int optimalAzimuth = 0;
    double maxEnergy = 0;
    double improvement = 0;
    double energyGain = 0;
};

// Energies in kWh.
struct CombinedPanelResults {
    double RawEnergy = 0;       // horizontal irradiance × area × efficiency
    double AdjustedEnergy = 0;  // delivered
    std::array<double, 12> MonthlyRaw{};  // horizontal irradiance × area, no efficiency
    std::array<double, 12> MonthlyAdjusted{};
    std::array<int, 12> MonthlyShadedHours{};
    int Shaded_Hours = 0;
    int DirectSun_Hours = 0;
    double NormalizedYield = 0;  // delivered energy per kW of rating × 1000
    double ShadingLoss_Percent = 0;
    std::string technologyRecommendation;  // "Bifacial" or "Monofacial"
    bool bifacialJustified = false;
    double realisticBifacialGain = 0;
    PANEL panel{};
    double annualEnergyBifacial = 0;
    double annualEnergyMonofacial = 0;
    std::array<double, 12> monthlyEnergyBifacial{};
    std::array<double, 12> monthlyEnergyMonofacial{};
    std::array<double, 12> monthlyRadiation{};
    double annualRadiation = 0;
    ShadingAnalysis shading;
    OptimizationResult optimization;
    double roofAlbedo = 0;
    double overallScore = 0;
    std::string grade;
    double energyPerKwp = 0;
    double Shadingloss_kWh = 0;  // equals shading.energyLossKwh
};
