// The per-panel sun table file: written from the sun's course over a year,
// read back into the sun table for the shading pass.
#pragma once

#include <string>

// ORVO_T + "Panel_" + panel name + "_Sun.csv", each "/" of the name as "_".
std::string SunTableFileName(const std::string& panelName);

// Writes the rows of every hour of the year with the sun above the horizon
// and not behind the panel's plane. Returns the rows written, or -1 when
// the file could not be written (logged; no file then).
int GenerateSunPositionData(double latitude, double longitude, int year, double panelTilt, double panelAzimuth,
                            const std::string& fileName);

// Loads at most SUN_TABLE_ROW_LIMIT rows into the sun table; false (and an
// empty table) when the file cannot be read or holds no valid row.
bool InitializeShadowing(const std::string& sunCsvPath);
void CleanupShadowing();
