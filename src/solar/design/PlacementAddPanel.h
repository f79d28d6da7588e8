// Storing one laid-out panel: the record built from its corners, the
// placement's template GlobalPanel, and the lift off the roof.
#pragma once

#include "PanelStruct.h"

// Builds the panel from panelPoints (LL, UL, UR, LR) and GlobalPanel, moves
// its corners Lift metres along the panel's upward normal and appends it to
// the live store while there is room. Returns the record.
PANEL AddPanelToGlobalArray(const TGIS_Point3D* panelPoints, int NP, const char* Name, float thickness,
                            TColor color1, TColor color2, int opacity, double tilt, double azimuth,
                            const TGIS_Point3D* originalRoofPoints);
