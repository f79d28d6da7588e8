#pragma once
// The small side files of a site folder: frame offset, projection, customer.

#include <string>

namespace sitegen {

// Each throws std::runtime_error on failure.
void writeOffsetFile(const std::string& path, double east, double north, double up);
// WKT (GDAL's default export, the WKT1 form of .prj files) of an EPSG code.
void writeProjectionFile(const std::string& path, int epsgCode);
void writeCustomerFile(const std::string& path);

} // namespace sitegen
