// Web map services of the viewer: a map page, terrain elevation from the
// web and an orthophoto. Hosts are
// read from "Orvo.ini", section "Services", so a site can use a mirror.
#pragma once

#include <string>

// Key "Elevation", the public Open-Meteo service by default.
std::string ElevationServiceAddress();

// The terrain height the elevation service gives for the position: the
// answer's first 1023 bytes read as one number as they stand. -9999 when no
// good answer came; the failure is shown.
double GetTerrainElevationFromWeb(double lat, double lon);

// Key "Orthophoto", ArcGIS Online's services by default (its World_Imagery WMS).
std::string OrthophotoServiceAddress();

// A WMS GetMap of distanceMeters around the position, 4096 pixels square,
// as a GeoTIFF into file. The log goes to ORVO_T + "a.log"; a failure is
// logged only and leaves the file partial or absent. True when bytes came.
bool DownloadOrthophoto(double lat, double lon, double distanceMeters, const std::string& file);
// The model's orthophoto of 1000 m into ORVO_T + "a.tif", opened through the shell.
void DownloadOrthophoto1Click();

// The map page of the model's centre, opened through the shell, then the
// terrain elevation there.
void ViewGoogleMap();
