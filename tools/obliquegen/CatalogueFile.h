// The "oblixoblix.shp" of a set of photographs: one polygon per picture,
// its ground footprint, with the camera in the attributes the viewer reads
// (camera coordinates stored SHABESH higher, as the photogrammetry tools write them).
#pragma once

#include <string>
#include <vector>

#include "PhotoCamera.h"

struct FlightDate {
    int year = 2024, month = 6, day = 11;
};

// Writes path (and its .shx, .dbf, .prj, .cpg) with the footprints on the
// level plane at groundZ. prjWkt may be empty. False, with the reason on
// stderr, when GDAL can't write it.
bool writeObliqueCatalogue(const std::string& path, const std::vector<PhotoCamera>& cameras, double groundZ,
                           const FlightDate& date, const std::string& prjWkt);
