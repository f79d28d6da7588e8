// The sun table of the panel in work: one row per hour that the shading pass
// examines, loaded from the panel's sun table file, one panel at a time.
#pragma once

#include <array>

// One row of the table. Only date, time, altitude and azimuth come from the
// file; the shading pass writes Irradiance and SHADED.
struct SunHours {
    char PanelName[20] = {};
    int Year = 0;
    int Month = 0;
    int Day = 0;
    int Hour = 0;
    double altitude = 0;  // degrees, refraction included
    double azimuth = 0;   // degrees from north, clockwise
    char date[16] = {};   // "YYYY-MM-DD" as in the file
    char time[16] = {};   // "HH:MM" as in the file
    double SunX = 0;
    double SunY = 0;
    double SunZ = 0;
    double Irradiance = 0;  // effective irradiance after all deratings, W/m2
    double AmbientTemp = 0;
    bool SHADED = false;
};

constexpr int SUN_TABLE_CAPACITY = 9000;
// A year of daylight hours can reach this; the hours behind it (the end of
// the year) are left out of a panel's analysis on purpose.
constexpr int SUN_TABLE_ROW_LIMIT = 4360;
constexpr int DEFAULT_SOLAR_YEAR = 2025;

inline constexpr int DAYS_IN_MONTH[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
inline constexpr const char* MONTH_NAMES[12] = {"January", "February", "March",     "April",   "May",      "June",
                                                "July",    "August",   "September", "October", "November", "December"};

struct SunTable {
    std::array<SunHours, SUN_TABLE_CAPACITY> sunData{};
    int sunCount = 0;
    bool shadow_initialized = false;
    // The hour being generated; read by the debug prints of the energy model.
    int GlobalYear = 0;
    int GlobalMonth = 0;
    int GlobalDay = 0;
    int GlobalHour = 0;
    int SolarYear = DEFAULT_SOLAR_YEAR;  // the simulated year
};

SunTable& sunTable();
void resetSunTable();
