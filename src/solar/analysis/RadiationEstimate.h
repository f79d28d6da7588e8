// Estimates of monthly radiation without a download: an analytical
// clear-sky model and a small built-in grid of measured values. A library
// function that no report calls: a failed download is answered by its
// message, never by an estimate.
#pragma once

#include <array>
#include <string>

struct SolarRadiationResult {
    // Month totals: Wh/m2 from the analytical model, kWh/m2 from the grid.
    // The two differ by a factor of 1000 and the difference stands.
    std::array<double, 12> monthlyGlobalHorizontal{};
    std::array<double, 12> monthlyDiffuse{};  // analytical model only
    std::array<double, 12> monthlyClearness{};
    double annualTotal = 0;  // sum of the months
    bool success = false;
    std::string dataSource;
};

struct GridPoint {
    int lat;
    int lon;
    double monthlyGHI[12];  // kWh/m2
};

extern const std::array<GridPoint, 10> GLOBAL_RADIATION_GRID;
// Day of the year of each month's representative day.
extern const std::array<int, 12> MONTH_MIDDLE_DAY;

// "analytical", "lookup", or anything else: the lookup, and the analytical
// model should that give nothing.
SolarRadiationResult GetSolarRadiation(double latitude, double longitude, const std::string& method);
// The longitude takes no part.
SolarRadiationResult CalculateRadiationAnalytical(double latitude, double longitude);
// The nearest grid row when nearer than 5 degrees, else the analytical model.
SolarRadiationResult CalculateRadiationLookup(double latitude, double longitude);
