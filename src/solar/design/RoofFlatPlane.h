// Fitting clicked roof points to one plane and lifting them off the roof.
#pragma once

#include "RoofPlane.h"

// The points of p laid on their least-squares plane z = ax + by + c (or, for
// an uneven roof, on a level plane; for a tiled roof, on the slope the user
// gives) and moved LiftIn metres along the normal. Npoints 0 when the points
// are collinear or the user cancels. With ROOF 1 it may ask the operator.
PLANE FlatPlane(PLANE* p, float LiftIn);
