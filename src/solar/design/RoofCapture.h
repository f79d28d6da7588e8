// The roof path of a digitised outline of four or more points: the points
// are laid on their plane, and the outline, grown by 3 m, is written as a
// roof polygon file in PANELSFOLDER for the scene to load.
#pragma once

#include <QString>
#include <vector>

#include "RoofPlane.h"

struct RoofPlaneCapture {
    PLANE plane;                          // as FlatPlane left it
    std::vector<TGIS_Point3D> outline;    // the flattened points, without a closing repeat
    std::vector<TGIS_Point3D> expanded;   // outline grown outward by 3 m
    QString fileName;                     // the roof polygon file
};

// Sets the roof look in GlobalPanel and ROOF to 1, fits the plane (lift
// 0.2 m), clears measures, billboards and spheres, and writes the file,
// named after the process id plus countOfReports. False when the fit gave
// no plane or the file couldn't be written; the caller then loads nothing.
bool CreateRoofPlaneFromPoints(const TGIS_Point3D* P, int NP, int countOfReports, RoofPlaneCapture& capture);

// The last capture that wrote its file, for what reports on the roof.
const RoofPlaneCapture& LastRoofCapture();
void resetLastRoofCapture();

// What a capture's plane is: its upward unit normal, its tilt from the
// horizontal and the compass direction it faces (degrees; 0 for a flat
// roof), its area on the slope and in plan (m2).
struct RoofPlaneFigures {
    double normal[3] = {0, 0, 1};
    double tilt = 0;
    double azimuth = 0;
    double area = 0;
    double planArea = 0;
};
RoofPlaneFigures RoofCaptureFigures(const RoofPlaneCapture& capture);
