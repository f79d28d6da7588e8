// Tilt and compass azimuth of a roof from three clicks, and of a panel from
// its corners. Tilt in degrees from horizontal; azimuth of the upward normal
// in degrees from north, clockwise, 0 to 360.
#pragma once

#include "PanelStruct.h"

// Roof orientation from PA[0], PA[1], PA[2]. Both 0 for collinear points. A
// roof under 3 degrees takes the baseline's azimuth plus 90 instead.
void CalculateOrientation(const TGIS_Point3D* PA, double& dtilt, double& dazimuth);
// The panel's from LR-LL and UL-LL, without the rule for nearly flat roofs.
void CalculateOrientation(const PANEL& panel, double& dtilt, double& dazimuth);
// The same from UL-LL and LR-LL, also written into the panel's DTilt and DAzimuth.
void CalculatePanelOrientation(PANEL& panel, double& azimuth, double& tilt);
