// Where a finished outline goes: the roof capture's roof or panel path, or
// a shape file of the outline beside its measurement file.
#pragma once

#include <QString>

#include "geo/GisTypes.h"

// The field "MaxAllowedZ" of an outline's shape: no height limit. A shape
// file's field names hold 10 characters, so it is stored as "MaxAllowed".
constexpr double NO_HEIGHT_LIMIT = 99999;
inline constexpr const char* MAX_ALLOWED_Z_FIELD = "MaxAllowed";

// P holds NP vertices in the map frame, TC the outline's toolkit colour.
// The points are written to SHP as a polygon (ISPOLYGON) or a line with the
// fields "Color" and "MaxAllowedZ" and the model's coordinate system. During
// a roof capture four points or more then make a roof polygon, fewer a panel
// placement. False when nothing was made.
bool CreateSHPfileFromPoints(const TGIS_Point3D* P, int NP, int TC, const QString& SHP, bool ISPOLYGON);

// The roof capture is on: "Roofs" set the block depth to 0.1 m.
bool RoofCaptureActive();
