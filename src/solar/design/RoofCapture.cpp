#include "RoofCapture.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

#include "PanelDaePolygon.h"
#include "PanelStore.h"
#include "RoofFlatPlane.h"
#include "RoofGeometry.h"
#include "app/services/RunLog.h"
#include "scene/engine_interface.h"

namespace {

RoofPlaneCapture& lastCapture() {
    static RoofPlaneCapture capture;
    return capture;
}

}  // namespace

bool CreateRoofPlaneFromPoints(const TGIS_Point3D* P, int NP, int countOfReports, RoofPlaneCapture& capture) {
    PANEL& global = panelStore().GlobalPanel;
    global.Opacity = 20;
    global.Color1 = 0xFF00;
    global.Color2 = 0xFF00;
    global.Repeat = 1;
    global.Thickness = 0;
    roofState().ROOF = 1;

    PLANE input;
    input.Npoints = std::clamp(NP, 0, MAX_PLANE_POINTS);
    std::copy(P, P + input.Npoints, input.P);
    capture.plane = FlatPlane(&input, 0.2f);
    if (capture.plane.Npoints == 0) return false;

    const PLANE& plane = capture.plane;
    int n = plane.Npoints;
    if (n > 1 && std::fabs(plane.P[0].X - plane.P[n - 1].X) < 1e-6 && std::fabs(plane.P[0].Y - plane.P[n - 1].Y) < 1e-6)
        --n;
    capture.outline.assign(plane.P, plane.P + n);
    for (int i = 0; i < n; ++i) {
        const TGIS_Point3D& a = capture.outline[i];
        const TGIS_Point3D& b = capture.outline[(i + 1) % n];
        PrintRunLog("Roof edge %d: %.3f m\n", i + 1, std::hypot(b.X - a.X, b.Y - a.Y, b.Z - a.Z));
    }
    PrintRunLog("Roof area: %.3f m2\n", static_cast<double>(plane.Area));

    At3d_MeasureList_Clear();
    At3d_Measure_Billboard_Delete_All();
    At3d_Sphere_Marker_Delete_All();

    const PanelStore& store = panelStore();
    const qint64 stamp = QCoreApplication::applicationPid() + countOfReports;
    const char* kind = store.GlobalPanel.DTilt > 10 ? "_TiledRoof_" : "_FlatRoof_";
    capture.fileName =
        store.PANELSFOLDER + QString::number(stamp) + kind + QString::number(++roofState().RoofPlaneCount) + ".DAE";

    capture.expanded = ExpandPolygon3D(capture.outline.data(), n, 3.0f, runLog().fp_prt);
    if (!CreatePolygonDAE(capture.fileName, capture.expanded.data(), n, store.GlobalPanel.Opacity,
                          store.GlobalPanel.Color1, store.GlobalPanel.DTilt, plane.Area))
        return false;
    lastCapture() = capture;
    return true;
}

const RoofPlaneCapture& LastRoofCapture() { return lastCapture(); }

void resetLastRoofCapture() { lastCapture() = RoofPlaneCapture{}; }

RoofPlaneFigures RoofCaptureFigures(const RoofPlaneCapture& capture) {
    RoofPlaneFigures figures;
    const int n = static_cast<int>(capture.outline.size());
    if (n < 3) return figures;
    double* v = figures.normal;
    Calculate3DPolygonNormal(capture.outline.data(), n, v[0], v[1], v[2]);
    if (v[2] < 0)
        for (int k = 0; k < 3; ++k) v[k] = -v[k];
    constexpr double kDeg = 180.0 / M_PI;
    figures.tilt = std::acos(std::clamp(v[2], -1.0, 1.0)) * kDeg;
    // A roof that faces nowhere has no direction: 0 rather than noise.
    if (std::hypot(v[0], v[1]) > 1e-9) figures.azimuth = std::fmod(std::atan2(v[0], v[1]) * kDeg + 360.0, 360.0);
    figures.area = Calculate3DPolygonArea(capture.outline.data(), n);
    figures.planArea = capture.plane.Area;
    return figures;
}
