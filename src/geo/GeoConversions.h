// Map frame to and from WGS 84 degrees through the model's GlobalCS.
#pragma once

#include <QString>
#include <string>

// Lat and Lon in degrees of a map point; both 0 when the model has no system.
void GPSEastNorth2LatLon(double East, double North, double& Lat, double& Lon);
// The map point of a geographic one. Callers test GlobalCS first: without it,
// or when the point cannot be projected, East and North are 0 and the result false.
bool GPSLatLon2EastNorth(double Lat, double Lon, double& East, double& North);
// "LAT LON" of a map point in the text format of LatLonText.h.
QString EastNorth2String(double East, double North);

// Makes GlobalCS and EPSG from a ".prj" file; a file that names no usable
// system leaves the model without one (GlobalCS null, EPSG -1) and gives false.
bool LoadGlobalCS(const std::string& prjPath);
// OCENTERLat, OCENTERLon and CenterPwgs from OCENTER, which holds no Offset.
void SetGeographicCentre();
