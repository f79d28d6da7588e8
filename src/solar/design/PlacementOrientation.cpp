#include "PlacementOrientation.h"

#include <algorithm>
#include <cmath>

#include "PanelGeometryVector.h"
#include "geo/Units.h"

namespace {

double wrap360(double a) {
    a = std::fmod(a, 360.0);
    return a < 0 ? a + 360.0 : a;
}

// false when the normal is too short to tell anything.
bool orientationOf(const TGIS_Point3D& v1, const TGIS_Point3D& v2, double& tilt, double& azimuth) {
    TGIS_Point3D n = pgv::cross(v1, v2);
    const double l = pgv::length(n);
    if (l <= 1e-7) {
        tilt = 0;
        azimuth = 0;
        return false;
    }
    n = pgv::scale(n, 1.0 / l);
    if (std::fabs(n.Z) >= 1e-7 && n.Z < 0) n = pgv::scale(n, -1);
    tilt = std::acos(std::clamp(n.Z, -1.0, 1.0)) / pgv::kDeg;
    azimuth = std::atan2(n.X, n.Y) / pgv::kDeg;
    return true;
}

}  // namespace

void CalculateOrientation(const TGIS_Point3D* PA, double& dtilt, double& dazimuth) {
    if (!orientationOf(pgv::sub(PA[1], PA[0]), pgv::sub(PA[2], PA[0]), dtilt, dazimuth)) return;
    // A nearly flat roof has no slope direction worth the name: face square to the baseline.
    if (dtilt < 3) dazimuth = azimD(PA[0].X, PA[0].Y, PA[1].X, PA[1].Y) + 90;
    dazimuth = wrap360(dazimuth);
}

void CalculateOrientation(const PANEL& panel, double& dtilt, double& dazimuth) {
    const TGIS_Point3D* c = panel.Corners;
    if (!orientationOf(pgv::sub(c[3], c[0]), pgv::sub(c[1], c[0]), dtilt, dazimuth)) return;
    dazimuth = wrap360(dazimuth);
}

void CalculatePanelOrientation(PANEL& panel, double& azimuth, double& tilt) {
    const TGIS_Point3D* c = panel.Corners;
    TGIS_Point3D n = pgv::cross(pgv::sub(c[1], c[0]), pgv::sub(c[3], c[0]));
    const double l = pgv::length(n);
    if (l < 0.0001) {
        azimuth = 0;
        tilt = 0;
    } else {
        n = pgv::scale(n, 1.0 / l);
        if (n.Z < 0) n = pgv::scale(n, -1);
        tilt = std::acos(std::clamp(n.Z, -1.0, 1.0)) / pgv::kDeg;
        azimuth = wrap360(std::atan2(n.X, n.Y) / pgv::kDeg);
    }
    panel.DTilt = tilt;
    panel.DAzimuth = azimuth;
}
