#include "Geoid.h"

#include <gdal_priv.h>

#include <cmath>
#include <mutex>
#include <string>

#include "GeoState.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SessionPaths.h"
#include "scene/FileNameCase.h"

namespace {

GDALDatasetUniquePtr openRaster(const std::string& path) {
    static std::once_flag registered;
    std::call_once(registered, GDALAllRegister);
    return GDALDatasetUniquePtr(GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY));
}

bool readExtent(const std::string& path, TGIS_Extent& extent) {
    const GDALDatasetUniquePtr raster = openRaster(path);
    double gt[6];
    if (!raster || raster->GetGeoTransform(gt) != CE_None) return false;
    const double x[2] = {gt[0], gt[0] + gt[1] * raster->GetRasterXSize()};
    const double y[2] = {gt[3], gt[3] + gt[5] * raster->GetRasterYSize()};
    extent = TGIS_Extent{std::min(x[0], x[1]), std::min(y[0], y[1]), std::max(x[0], x[1]), std::max(y[0], y[1])};
    return true;
}

// The value of the cell holding the point; false outside the raster or on
// its no-data value.
bool readCellAt(const std::string& path, double lon, double lat, double& value) {
    const GDALDatasetUniquePtr raster = openRaster(path);
    double gt[6], inverse[6];
    if (!raster || raster->GetRasterCount() < 1 || raster->GetGeoTransform(gt) != CE_None ||
        !GDALInvGeoTransform(gt, inverse))
        return false;
    // A world grid starts half a cell west of -180: its last column's half
    // cell is found on the other side of the date line.
    const double width = std::fabs(gt[1]) * raster->GetRasterXSize();
    const double west = std::min(gt[0], gt[0] + gt[1] * raster->GetRasterXSize());
    if (width >= 360 - 1e-9) {
        while (lon < west) lon += 360;
        while (lon >= west + 360) lon -= 360;
    }
    const double px = std::floor(inverse[0] + inverse[1] * lon + inverse[2] * lat);
    const double py = std::floor(inverse[3] + inverse[4] * lon + inverse[5] * lat);
    if (px < 0 || py < 0 || px >= raster->GetRasterXSize() || py >= raster->GetRasterYSize()) return false;
    GDALRasterBand* band = raster->GetRasterBand(1);
    double cell = 0;
    if (band->RasterIO(GF_Read, static_cast<int>(px), static_cast<int>(py), 1, 1, &cell, 1, 1, GDT_Float64, 0, 0) !=
        CE_None)
        return false;
    int hasNoData = 0;
    const double noData = band->GetNoDataValue(&hasNoData);
    if (hasNoData && cell == noData) return false;
    value = cell;
    return true;
}

}  // namespace

double GetGMGeoidalSeparation(double LatIN, double LonIN) {
    GeoState& geo = geoState();
    double Lat = LatIN, Lon = LonIN;
    if (Lat == 0 && Lon == 0) {
        Lat = geo.CenterPwgs.Y;
        Lon = geo.CenterPwgs.X;
    }
    if (geo.GlobalGeoidalSeparationSet) return geo.GlobalGeoidalSeparation;

    const std::string folder = sessionPaths().CTQ_Path;
    const std::string regional = FindFileNoCase(folder + "GeoidSeparation-ilum2.tif");
    if (!geo.SecondGeoidalEXTRead) {
        geo.SecondGeoidalEXTRead = true;
        geo.SecondGeoidalExists = !regional.empty() && readExtent(regional, geo.SecondGeoidalEXT);
    }
    std::string raster;
    if (geo.SecondGeoidalExists && PointInExtent(TGIS_Point{Lon, Lat}, geo.SecondGeoidalEXT)) {
        raster = regional;
    } else {
        const std::string world = folder + "GeoidSeparation.tif";
        raster = FindFileNoCase(world);
        if (raster.empty()) {
            if (!geo.GeoidMissingReported)
                MyShowMessage(QString::fromStdString(world) + "\nIs Missing");
            geo.GeoidMissingReported = true;
            return geo.GlobalGeoidalSeparation;
        }
    }
    double value;
    if (readCellAt(raster, Lon, Lat, value)) {
        geo.GlobalGeoidalSeparation = value;
        geo.GlobalGeoidalSeparationSet = true;
    }
    return geo.GlobalGeoidalSeparation;
}
