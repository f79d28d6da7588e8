// The model's coordinate system and the geodetic values of the session.
#pragma once

#include <memory>

#include "CoordinateSystem.h"
#include "GisTypes.h"

struct GeoState {
    // Null when the model has none; callers test it before converting.
    std::shared_ptr<const CoordinateSystem> GlobalCS;
    int EPSG = -1;
    // Geographic centre of the model: X longitude, Y latitude.
    TGIS_Point CenterPwgs;
    // The geoid is read once a run: the first value found stays.
    double GlobalGeoidalSeparation = 0;
    bool GlobalGeoidalSeparationSet = false;
    bool SecondGeoidalEXTRead = false;
    bool SecondGeoidalExists = false;
    TGIS_Extent SecondGeoidalEXT;
    bool GeoidMissingReported = false;
    // Display lengths in feet and inches.
    bool IMPERIAL = false;
};

GeoState& geoState();
void resetGeoState();
