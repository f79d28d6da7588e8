// How far apart rows of panels must stand for a share of the year's
// clear-sky energy to survive the shade of the row in front.
#pragma once

#include <QString>

#include "PanelStruct.h"

struct RowSpacingResult {
    float spacing95 = 0;  // m, keeping 95 % of the energy
    float spacing90 = 0;
    float spacing85 = 0;
    float spacing80 = 0;
    float spacing75 = 0;
    float sunAngle95 = 0;  // degrees of sun altitude below which 5 % of the energy arrives
    float sunAngle90 = 0;
    float sunAngle85 = 0;
    float sunAngle80 = 0;
    float sunAngle75 = 0;
    int totalProductiveHours = 0;
    float AnnualEnergy = 0;  // kWh, clear sky
};

// The sun and incidence formulas of the energy model. The design library
// doesn't reach into the analysis library itself: the program and the CLI
// install them at start. Without them the sun never rises, and the spacings
// come from the default angles.
struct RowSpacingSunModel {
    void (*sunPosition)(int year, int month, int day, double hour, double latitude, double longitude,
                        double& altitude, double& azimuth) = nullptr;
    double (*incidentAngle)(double tilt, double azimuth, double solarAltitude, double solarAzimuth) = nullptr;
    double (*iamFactor)(double incidentAngle) = nullptr;
};
RowSpacingSunModel& rowSpacingSunModel();
void resetRowSpacingSunModel();

// Every hour of 2025 at the panel's centre, for the panel's tilt and azimuth.
RowSpacingResult RowSpacing4Panel(const PANEL& panel);

// The comparison table for the form's tilt, put on the clipboard and shown
// in a box; answers the spacings it showed.
RowSpacingResult ShowRowSpacingComparison(const PANEL& panel);
QString RowSpacingComparisonText(const PANEL& panel, const RowSpacingResult& result);

// Makes the form's gap help show the table and take spacing95.
void InstallRowSpacingHelp();
