// Coordinate systems from ".prj" files.
#pragma once

#include <string>

// The EPSG code of the system described by a WKT text (ESRI-flavoured text
// included), or -1 when it cannot be identified.
int EpsgFromWkt(const std::string& wkt);
// The same for a file; -1 when the file cannot be read.
int EpsgFromPrjFile(const std::string& path);
