// Lengths in imperial units, azimuths and distances in the map frame.
#pragma once

#include <QString>

// A length as feet and inches (4' 11") or inches alone (3.9"), or an area in
// square feet (12.3ft²). A negative length reads -(4' 11") or -3.9".
QString Imperial(double d, bool area);

// Azimuth from point 1 to point 2 in degrees from north, clockwise, 0 to 360;
// the differences count to the centimetre, and two equal points give 0.
double azimD(double x1, double y1, double x2, double y2);

// Plane distance.
double distance(double x1, double y1, double x2, double y2);
// Slope distance.
double distance(double x1, double y1, double z1, double x2, double y2, double z2);

// The point dist metres from (x, y) along the azimuth azDeg (degrees from
// north, clockwise), with pi taken as 3.141592654.
void DAzim(double x, double y, double dist, double azDeg, double& outX, double& outY);
