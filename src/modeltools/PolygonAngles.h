// Point in polygon by the sum of the angles the sides make at the point:
// the crop keeps what a digitised outline encloses.
#pragma once

// Polar angle of (x, y) in degrees, 0..360; -1 for the origin.
double polaranglej(double x, double y);
// The angle at a from org to dest, in degrees, -180..180; 180 when a lies on
// org or dest, or on the straight line between them.
double signedanglej(double ax, double ay, double orgx, double orgy, double destx, double desty);
// 0 inside, 1 outside, -1 on a side or a corner. The polygon has np points,
// the first repeated as the last.
int inpolygon(const double* xp, const double* yp, int np, double x0, double y0);
