// Levelling the baseline of a placement on a tiled roof: rows on tiles must
// run level, and two clicks rarely have the same height.
#pragma once

#include "geo/GisTypes.h"

// Corrects PA (NP points, working copies) against the untouched clicks PB.
// Above 1 cm of slope per metre the operator chooses Skew, Tilt or None;
// closing that box answers false (the placement is cancelled). Otherwise the
// baseline ends leave level and all three points rise by the tile clearance.
bool CorrectTiledBaseline(TGIS_Point3D* PA, const TGIS_Point3D* PB, int NP);
