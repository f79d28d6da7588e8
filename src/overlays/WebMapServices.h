// Web map services of the viewer: terrain elevation from the web. Hosts are
// read from "Orvo.ini", section "Services", so a site can use a mirror.
#pragma once

#include <string>

// Key "Elevation", the public Open-Meteo service by default.
std::string ElevationServiceAddress();

// The terrain height the elevation service gives for the position: the
// answer's first 1023 bytes read as one number as they stand. -9999 when no
// good answer came; the failure is shown.
double GetTerrainElevationFromWeb(double lat, double lon);
