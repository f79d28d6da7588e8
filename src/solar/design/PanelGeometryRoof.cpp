#include "PanelGeometryRoof.h"

#include <cmath>

#include "PanelGeometryVector.h"
#include "app/services/RunLog.h"

namespace {

TGIS_Point3D roofNormal(const PANEL& panel) {
    const TGIS_Point3D n = pgv::cross(pgv::sub(panel.PP[1], panel.PP[0]), pgv::sub(panel.PP[2], panel.PP[0]));
    return pgv::normalized(n, 0.0001, n);
}

}  // namespace

TGIS_Point3D ProjectPointToRoof(TGIS_Point3D point, const PANEL& panel) {
    const TGIS_Point3D n = roofNormal(panel);
    const TGIS_Point3D d = pgv::sub(point, panel.PP[0]);
    TGIS_Point3D result = pgv::make(point.X, point.Y, panel.PP[0].Z);
    if (std::fabs(n.Z) > 0.0001) result.Z = panel.PP[0].Z - (n.X * d.X + n.Y * d.Y) / n.Z;
    return result;
}

double DistancePanelPointFromRoof(const PANEL& panel, TGIS_Point3D point) {
    return std::fabs(pgv::dot(roofNormal(panel), pgv::sub(point, panel.PP[0])));
}

TGIS_Point3D LiftPointAlongPanelNormal(const PANEL& panel, TGIS_Point3D point, float lift) {
    const TGIS_Point3D n = roofNormal(panel);
    const double signedDistance = pgv::dot(n, pgv::sub(point, panel.PP[0]));
    return pgv::add(pgv::sub(point, pgv::scale(n, signedDistance)), pgv::scale(n, lift));
}

TGIS_Point3D LiftPointAlongPolygonNormal(const TGIS_Point3D* P, int npoints, float Lift) {
    int n = npoints;
    if (n > 1 && std::fabs(P[n - 1].X - P[0].X) < 1e-9 && std::fabs(P[n - 1].Y - P[0].Y) < 1e-9 &&
        std::fabs(P[n - 1].Z - P[0].Z) < 1e-9)
        --n;
    if (n < 3) {
        PrintRunLog("LiftPointAlongPolygonNormal: Insufficient points (%d effective)\n", n);
        return {};
    }
    TGIS_Point3D normal{};
    for (int i = 0; i < n; ++i) {
        const TGIS_Point3D& a = P[i];
        const TGIS_Point3D& b = P[(i + 1) % n];
        normal.X += (a.Y - b.Y) * (a.Z + b.Z);
        normal.Y += (a.Z - b.Z) * (a.X + b.X);
        normal.Z += (a.X - b.X) * (a.Y + b.Y);
    }
    const double mag = pgv::length(normal);
    if (!(mag >= 1e-10)) {
        PrintRunLog("LiftPointAlongPolygonNormal: Degenerate normal (mag=%.12f)\n", mag);
        return {};
    }
    normal = pgv::scale(normal, 1.0 / mag);
    if (normal.Z < 0) normal = pgv::scale(normal, -1);
    return pgv::scale(normal, Lift);
}

TGIS_Point3D LiftPanel(const PANEL& panel, float Lift) {
    return pgv::add(panel.CenterPoint, LiftPointAlongPolygonNormal(panel.PP, 3, Lift));
}

TGIS_Point3D FindClosestCorner(const PANEL& panel, TGIS_Point3D point) {
    double best = 9999;
    TGIS_Point3D result{};
    for (const TGIS_Point3D& corner : panel.Corners) {
        const double d = pgv::length(pgv::sub(corner, point));
        if (d < best) {
            best = d;
            result = corner;
        }
    }
    return result;
}
