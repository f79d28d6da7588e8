// Triangles of a simple polygon in 3D (convex or not) by ear clipping, in the
// plane of its two dominant axes.
#pragma once

#include <array>
#include <vector>

#include "geo/GisTypes.h"

// Index triples into P, each counter-clockwise seen from the positive side of
// the axis the polygon faces most (a roof: from above). n-2 triangles for a
// simple polygon of n corners; a degenerate rest that no ear can be cut from
// is closed as a fan.
std::vector<std::array<int, 3>> EarClipPolygon(const TGIS_Point3D* P, int NP);
