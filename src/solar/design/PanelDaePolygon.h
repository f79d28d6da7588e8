// The roof polygon file: a roof surface as a thin coloured model with the
// fixed ids "roof_polygon_...", so that its layer is known as a roof by the
// tail "_roof_polygon_geometry".
#pragma once

#include <QString>
#include <cstdio>

#include "PanelStruct.h"

// Turns a polygon about its baseline (P[0] to P[1]) to Tilt degrees: the
// baseline is raised to the higher of its two ends plus 0.05 m, and every
// other point keeps its place along the baseline while its distance d across
// it becomes d cos(Tilt) across and d sin(Tilt) up. panelIndex and logFile
// only name the polygon in the log, which may be null.
void ApplyTiltToPanel(TGIS_Point3D* panelPoints, int NP, double Tilt, int panelIndex, std::FILE* logFile);

// Writes the polygon P (a closing repeat of the first point is dropped),
// tilted as by ApplyTiltToPanel and cut into triangles, to DAE. False when
// there are under 3 points or the file can't be written.
bool CreatePolygonDAE(const QString& DAE, const TGIS_Point3D* P, int NP, int Opacity, TColor colour, double Tilt,
                      float Area);
