#include "SiteFiles.h"

#include <ogr_spatialref.h>

#include <cpl_conv.h>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

namespace sitegen {
namespace {

void writeText(const std::string& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary);
    out << text;
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + path);
}

} // namespace

void writeOffsetFile(const std::string& path, double east, double north, double up)
{
    char line[128];
    std::snprintf(line, sizeof line, "%.3f %.3f %.3f\n", east, north, up);
    writeText(path, line);
}

void writeProjectionFile(const std::string& path, int epsgCode)
{
    OGRSpatialReference srs;
    if (srs.importFromEPSG(epsgCode) != OGRERR_NONE)
        throw std::runtime_error("GDAL does not know EPSG:" + std::to_string(epsgCode));
    char* wkt = nullptr;
    if (srs.exportToWkt(&wkt) != OGRERR_NONE || wkt == nullptr) {
        CPLFree(wkt);
        throw std::runtime_error("cannot export EPSG:" + std::to_string(epsgCode) + " as WKT");
    }
    const std::string text(wkt);
    CPLFree(wkt);
    writeText(path, text);
}

void writeCustomerFile(const std::string& path)
{
    writeText(path,
              "Demo customer: Noa Levi-Harel\n"
              "12 Hadarim Street, Kfar Dugma\n"
              "Synthetic demo site, not a real address\n");
}

} // namespace sitegen
