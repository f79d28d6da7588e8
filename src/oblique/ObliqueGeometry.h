// The camera of an oriented photograph: world to picture and back, the
// angles of an OPK camera and the ground resolution of a picture.
#pragma once

#include <QString>

#include "ObliqueRecords.h"

// A compressed ".ecw" beside a picture is preferred to it: FN with that
// extension when such a file exists, otherwise FN unchanged.
QString EcwFromJpg(const QString& FN);

// The point one unit of height along the optical axis of a camera at
// (xorg, yorg, zorg) with angles omega, phi, kappa in degrees.
void XYZFromOPK(double xorg, double yorg, double zorg, double omega, double phi, double kappa, double fpc,
                double& X, double& Y, double& Z);
// Azimuth (degrees from north, clockwise, 0 to 360) and inclination
// (degrees above the horizon) of the line from the camera to (X, Y, Z).
void AzimuthFromXYZ(double xorg, double yorg, double zorg, double X, double Y, double Z, double& azimuth,
                    double& inclination);
// The smaller angle between two azimuths in degrees.
double GetAngleBetweenAzimuths(double a, double b);
// Centimetres of ground that one pixel covers at distanceM metres.
double calculateResolutionCmPerPixel(int imageWidthPixels, double sensorWidthMm, double focalLength,
                                     double distanceM);

// A world point (map units) to picture coordinates of camera O: origin at
// the top left, Y upwards from -Height to 0.
void Ob_World2Pic(double wx, double wy, double wz, const OBLIQUE& O, double& px, double& py);
// A picture point to the first point of the mesh on its ray (map units).
// The distance from the camera to it; 0 when the ray meets nothing, and
// then wx, wy, wz hold what the obstruction test left.
double Pic2World(double px, double py, const OBLIQUE& O, double& wx, double& wy, double& wz);
