#include "GeoConversions.h"

#include "Frames.h"
#include "GeoState.h"
#include "LatLonText.h"

void GPSEastNorth2LatLon(double East, double North, double& Lat, double& Lon) {
    Lat = 0;
    Lon = 0;
    const auto& cs = geoState().GlobalCS;
    TGIS_Point lonLat;
    if (!cs || !cs->unproject(TGIS_Point{East, North}, lonLat)) return;
    Lon = lonLat.X;
    Lat = lonLat.Y;
}

bool GPSLatLon2EastNorth(double Lat, double Lon, double& East, double& North) {
    East = 0;
    North = 0;
    const auto& cs = geoState().GlobalCS;
    TGIS_Point xy;
    if (!cs || !cs->project(TGIS_Point{Lon, Lat}, xy)) return false;
    East = xy.X;
    North = xy.Y;
    return true;
}

QString EastNorth2String(double East, double North) {
    constexpr double kDegreeToRadian = 0.01745329252;
    double Lat, Lon;
    GPSEastNorth2LatLon(East, North, Lat, Lon);
    return GisLatitudeToStr(Lat * kDegreeToRadian) + ' ' + GisLongitudeToStr(Lon * kDegreeToRadian);
}

bool LoadGlobalCS(const std::string& prjPath) {
    GeoState& geo = geoState();
    geo.GlobalCS = GlobalCSFactory::ByWKTFile(prjPath);
    geo.EPSG = geo.GlobalCS ? geo.GlobalCS->EPSG() : -1;
    return geo.GlobalCS != nullptr;
}

void SetGeographicCentre() {
    FrameState& frame = frameState();
    GPSEastNorth2LatLon(frame.OCENTER[0], frame.OCENTER[1], frame.OCENTERLat, frame.OCENTERLon);
    GPSEastNorth2LatLon(frame.OCENTER[0] + frame.Offset[0], frame.OCENTER[1] + frame.Offset[1], frame.MapCenterLat,
                        frame.MapCenterLon);
    geoState().CenterPwgs = TGIS_Point{frame.OCENTERLon, frame.OCENTERLat};
}
