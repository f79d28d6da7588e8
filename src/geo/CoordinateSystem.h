// Coordinate systems of models, made by GlobalCSFactory over GDAL/OGR and PROJ.
// Both sides of every conversion use the traditional GIS axis order: X is
// easting or longitude, Y northing or latitude, whatever the authority says.
#pragma once

#include <memory>
#include <string>

#include "GisTypes.h"

class OGRSpatialReference;

class CoordinateSystem {
public:
    ~CoordinateSystem();
    CoordinateSystem(const CoordinateSystem&) = delete;
    CoordinateSystem& operator=(const CoordinateSystem&) = delete;

    // The system's EPSG code; -1 when it cannot be identified.
    int EPSG() const { return epsg_; }
    // WGS 84 degrees (X longitude, Y latitude) to the system's X, Y; false
    // when the point cannot be converted.
    bool project(const TGIS_Point& lonLat, TGIS_Point& xy) const;
    // The system's X, Y to WGS 84 degrees (X longitude, Y latitude).
    bool unproject(const TGIS_Point& xy, TGIS_Point& lonLat) const;

private:
    friend class GlobalCSFactory;
    struct Impl;
    CoordinateSystem(std::unique_ptr<Impl> impl, int epsg);
    std::unique_ptr<Impl> impl_;
    int epsg_ = -1;
};

// Every maker returns null when the text names no usable system.
class GlobalCSFactory {
public:
    static std::shared_ptr<const CoordinateSystem> ByEPSG(int code);
    // WKT 1 or 2, ESRI-flavoured ".prj" text included; EPSG() is the code
    // identified for the text, -1 when none is certain.
    static std::shared_ptr<const CoordinateSystem> ByWKT(const std::string& wkt);
    static std::shared_ptr<const CoordinateSystem> ByWKTFile(const std::string& path);

private:
    static std::shared_ptr<const CoordinateSystem> Make(const OGRSpatialReference& srs, int epsg);
};
