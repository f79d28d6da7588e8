#include "PanelGeometry.h"

#include <algorithm>
#include <cmath>

#include "PanelFormLogic.h"
#include "PanelGeometryBaseline.h"
#include "PanelGeometryRows.h"
#include "PanelGeometryVector.h"
#include "PanelNames.h"
#include "PanelStore.h"
#include "PlacementAddPanel.h"
#include "PlacementOrientation.h"
#include "RowSpacing.h"
#include "app/services/OrvoDialogs.h"

namespace {

struct RoofFrame {
    TGIS_Point3D lineDirection;
    TGIS_Point3D rowDirection;
};

RoofFrame roofFrame(const TGIS_Point3D* PA) {
    const TGIS_Point3D up = pgv::make(0, 0, 1);
    RoofFrame f;
    const TGIS_Point3D line = pgv::sub(PA[1], PA[0]);
    f.lineDirection = pgv::normalized(line, 0.0001, line);
    const TGIS_Point3D normal = pgv::normalized(pgv::cross(f.lineDirection, pgv::sub(PA[2], PA[0])), 0.0001, up);
    const TGIS_Point3D row = pgv::cross(normal, f.lineDirection);
    f.rowDirection = pgv::normalized(row, 0.0001, row);
    return f;
}

// v rotated about the unit axis k by theta (Rodrigues), with sinSign choosing the sense.
TGIS_Point3D rotate(const TGIS_Point3D& v, const TGIS_Point3D& k, double theta, double sinSign) {
    const double c = std::cos(theta), s = sinSign * std::sin(theta);
    return pgv::add(pgv::add(pgv::scale(v, c), pgv::scale(pgv::cross(k, v), s)),
                    pgv::scale(k, pgv::dot(k, v) * (1 - c)));
}

struct RowGeometry {
    TGIS_Point3D baseline[2];
    TGIS_Point3D lineDirection;
    TGIS_Point3D stepVector;
    bool isLandscape = false;
    int panelCount = 0;
    double panelWidth = 0;
};

RowGeometry rowGeometry(const TGIS_Point3D* PA, const RoofFrame& frame, const PlannedRow& plan, double Lm, double Wm,
                        double tiltRelDeg) {
    RowGeometry g;
    for (int i = 0; i < 2; ++i) {
        g.baseline[i] = pgv::add(PA[i], pgv::scale(frame.rowDirection, plan.offset));
        g.baseline[i].Z += plan.verticalExtra;
    }
    if (std::fabs(g.baseline[0].Z - g.baseline[1].Z) > 1e-9)
        g.baseline[0].Z = g.baseline[1].Z = std::max(g.baseline[0].Z, g.baseline[1].Z);
    g.lineDirection = pgv::normalized(pgv::sub(g.baseline[1], g.baseline[0]), 0.0001, pgv::make(1, 0, 0));
    g.isLandscape = plan.landscape;
    g.panelWidth = plan.landscape ? Lm : Wm;
    g.panelCount = plan.panelCount;
    // The far edge of a panel always rises, whichever way the roof was clicked.
    const TGIS_Point3D v0 = pgv::scale(frame.rowDirection, plan.landscape ? Wm : Lm);
    const double theta = tiltRelDeg * pgv::kDeg;
    g.stepVector = rotate(v0, g.lineDirection, theta, 1);
    if (g.stepVector.Z < 0) g.stepVector = rotate(v0, g.lineDirection, theta, -1);
    return g;
}

TGIS_Point3D boxTop(const TGIS_Point3D& corner, const TGIS_Point3D* c, double thickness) {
    const TGIS_Point3D n = pgv::normalized(pgv::cross(pgv::sub(c[3], c[0]), pgv::sub(c[1], c[0])), 1e-12,
                                           pgv::make(0, 0, 1));
    return pgv::add(corner, pgv::scale(n.Z < 0 ? pgv::scale(n, -1) : n, thickness));
}

// The stored panel's own orientation and the fields the template still owes it.
void finishPanel(PANEL& p, const PANEL& g) {
    CalculateOrientation(p, p.DTilt, p.DAzimuth);
    if (p.Length == 0) p.Length = g.Length;
    if (p.Width == 0) p.Width = g.Width;
    if (p.Thickness == 0) p.Thickness = g.Thickness;
    if (p.Gapmm == 0) p.Gapmm = g.Gapmm;
    if (p.Repeat == 0) p.Repeat = g.Repeat;
    if (p.Lift == 0) p.Lift = g.Lift;
    if (p.RoofType == 0) p.RoofType = g.RoofType;
    if (p.Opacity == 0) p.Opacity = g.Opacity;
    if (p.EPSG == 0) p.EPSG = g.EPSG;
    if (p.CenterLat == 0 && p.CenterLon == 0) {
        p.CenterLat = g.CenterLat;
        p.CenterLon = g.CenterLon;
    }
    p.CenterPoint = pgv::scale(pgv::add(p.Corners[0], p.Corners[2]), 0.5);
    p.Landscape = pgv::length(pgv::sub(p.Corners[3], p.Corners[0])) > pgv::length(pgv::sub(p.Corners[1], p.Corners[0]));
}

}  // namespace

int CreatePanelGeometry(const TGIS_Point3D* PA_IN, int NP, float Thickness, double Tilt, int Repeat, float Gap,
                        std::vector<TGIS_Point3D>& outPoints, int& totalVertices, int& totalPolys,
                        int& firstPanelIndex, std::FILE* logFile) {
    PanelStore& store = panelStore();
    PANEL& global = store.GlobalPanel;
    const PanelFormState& form = panelFormState();
    global.DTilt = 0;
    outPoints.clear();
    totalVertices = 0;
    totalPolys = 0;
    firstPanelIndex = store.NumPanelsCreated;
    if (NP < 3 || !PA_IN) {
        MyShowMessage("At least 3 points needed to create geometry");
        return 0;
    }
    if (global.Thickness == 0) global.Thickness = static_cast<int>(std::lround(Thickness * 1000.0));
    if (global.Gapmm == 0) global.Gapmm = static_cast<int>(std::lround(Gap * 1000.0));
    if (global.Repeat == 0) global.Repeat = Repeat;
    for (int i = 0; i < 3; ++i) global.PP[i] = PA_IN[i];

    double roofTilt = 0, roofAzimuth = 0;
    CalculateOrientation(PA_IN, roofTilt, roofAzimuth);
    global.DAzimuth = roofAzimuth;
    const double tiltRelDeg = std::fabs(Tilt - roofTilt);

    global.DTilt = Tilt;
    const double Lm = global.Length / 1000.0;
    const double Wm = global.Width / 1000.0;
    double gapPP_safe = RowSpacing4Panel(global).spacing85;
    if (form.GlobalRowsGap > 0) gapPP_safe = form.GlobalRowsGap;

    std::vector<TGIS_Point3D> PA(PA_IN, PA_IN + NP);
    const std::vector<TGIS_Point3D> PB(PA_IN, PA_IN + NP);
    if (global.RoofType == 0 && !CorrectTiledBaseline(PA.data(), PB.data(), NP)) {
        if (logFile) std::fprintf(logFile, "Placement cancelled at the baseline question\n");
        return kPlacementCancelled;
    }
    TGIS_Point3D originalRoofPoints[3] = {PB[0], PB[1], PB[2]};

    const RoofFrame frame = roofFrame(PA.data());
    double depthInPlane = 0;
    for (const TGIS_Point3D& p : PA)
        depthInPlane = std::max(depthInPlane, std::fabs(pgv::dot(pgv::sub(p, PA[0]), frame.rowDirection)));

    const double c = std::cos(tiltRelDeg * pgv::kDeg);
    RowPlanInput in;
    in.rowPairing = form.GlobalRowpairing;
    in.roofIsTilted = roofTilt > 2;
    in.landscape = global.Landscape;
    in.repeat = std::max(1, Repeat);
    in.depthInPlane = depthInPlane;
    in.projPortrait = Lm * c;
    in.projLandscape = Wm * c;
    in.lengthM = Lm;
    in.widthM = Wm;
    in.gap = Gap;
    in.rowGap = gapPP_safe;
    in.baselineLength = pgv::length(pgv::sub(PA[1], PA[0]));
    in.tiltRelDeg = tiltRelDeg;
    const std::vector<PlannedRow> plan = PlanRows(in);

    const bool createBox = Thickness > 0;
    const int panelVertexCount = createBox ? 8 : 4;
    int planned = 0;
    for (const PlannedRow& r : plan) planned += r.panelCount;
    outPoints.reserve(static_cast<std::size_t>(panelVertexCount * planned));

    const int baseGroup = store.GlobalPanelGroup;
    const bool savedLandscape = global.Landscape;
    for (std::size_t r = 0; r < plan.size(); ++r) {
        const RowGeometry row = rowGeometry(PA.data(), frame, plan[r], Lm, Wm, tiltRelDeg);
        const int rowGroup = RowGroupNumber(baseGroup, static_cast<int>(r));
        global.Landscape = row.isLandscape;
        double refUL = 0, refUR = 0;
        for (int rep = 0; rep < row.panelCount; ++rep) {
            if (store.NumPanelsCreated >= MAX_PANELS) break;
            const double along = rep * (row.panelWidth + Gap) + plan[r].rightAlignOffset;
            const TGIS_Point3D LL = pgv::add(row.baseline[0], pgv::scale(row.lineDirection, along));
            const TGIS_Point3D LR = pgv::add(LL, pgv::scale(row.lineDirection, row.panelWidth));
            TGIS_Point3D UL = pgv::add(LL, row.stepVector);
            TGIS_Point3D UR = pgv::add(LR, row.stepVector);
            // One straight, level upper edge along the whole row.
            if (rep == 0) {
                refUL = UL.Z;
                refUR = UR.Z;
            } else {
                if (std::fabs(UL.Z - refUL) > 1e-9) UL.Z = refUL;
                if (std::fabs(UR.Z - refUR) > 1e-9) UR.Z = refUR;
            }
            const TGIS_Point3D corners[4] = {LL, UL, UR, LR};

            store.GlobalPanelGroup = rowGroup;
            const QByteArray name = GetNewPanelname().toUtf8();
            AddPanelToGlobalArray(corners, 4, name.constData(), Thickness, global.Color1, global.Color2,
                                  global.Opacity, Tilt, roofAzimuth, originalRoofPoints);
            store.GlobalPanelGroup = baseGroup;

            PANEL& stored = store.panels[store.NumPanelsCreated - 1];
            finishPanel(stored, global);
            for (const TGIS_Point3D& corner : stored.Corners) outPoints.push_back(corner);
            if (createBox)
                for (const TGIS_Point3D& corner : stored.Corners)
                    outPoints.push_back(boxTop(corner, stored.Corners, Thickness));
            totalVertices += panelVertexCount;
            if (store.NumPanelsCreated - 1 == firstPanelIndex) {
                for (int i = 0; i < 4; ++i) global.Corners[i] = stored.Corners[i];
                global.CenterPoint = stored.CenterPoint;
            }
        }
        global.Landscape = savedLandscape;
    }
    totalPolys = totalVertices / panelVertexCount * (createBox ? 6 : 1);
    if (logFile)
        std::fprintf(logFile, "Placement: %d rows, %d panels from index %d, roof tilt %.2f azimuth %.2f\n",
                     static_cast<int>(plan.size()), store.NumPanelsCreated - firstPanelIndex, firstPanelIndex,
                     roofTilt, roofAzimuth);
    return static_cast<int>(roofAzimuth);
}
