#include "PlacementSnap.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "PanelGeometryRoof.h"
#include "PanelGeometryVector.h"
#include "PanelPicking.h"
#include "PanelStore.h"
#include "app/services/RunLog.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"

namespace {

constexpr double kNeighbourTolerance = 0.1;  // m between matching edge ends

void markSphere(const char* name, const TGIS_Point3D& mapPoint, float r, float g, float b) {
    const double local[3] = {mapPoint.X - OC(0), mapPoint.Y - OC(1), mapPoint.Z - OC(2)};
    const float rgb[3] = {r, g, b};
    At3d_Sphere_Marker_Add(name, 0.2, local, rgb, rgb, 0, 0, 0, 1);
}

bool near(const TGIS_Point3D& a, const TGIS_Point3D& b) { return pgv::length(pgv::sub(a, b)) <= kNeighbourTolerance; }

bool sameCorners(const PANEL& a, const PANEL& b) {
    for (int i = 0; i < 4; ++i)
        if (!near(a.Corners[i], b.Corners[i])) return false;
    return true;
}

// The centre of a panel sharing the edge a-b (either way round); false when none does.
bool neighbourOnEdge(const PANEL& panel, const TGIS_Point3D& a, const TGIS_Point3D& b, TGIS_Point3D& centre) {
    const PanelStore& store = panelStore();
    for (int i = 0; i < store.NumPanelsCreated; ++i) {
        const PANEL& other = store.panels[i];
        if (qstricmp(other.Name, panel.Name) == 0 || sameCorners(other, panel)) continue;
        for (int e = 0; e < 4; ++e) {
            const TGIS_Point3D& p = other.Corners[e];
            const TGIS_Point3D& q = other.Corners[(e + 1) % 4];
            if ((near(p, a) && near(q, b)) || (near(p, b) && near(q, a))) {
                centre = other.CenterPoint;
                return true;
            }
        }
    }
    return false;
}

// Candidates n x spacing from the panel's centre up to the far end of the line.
std::vector<TGIS_Point3D> candidates(const PANEL& panel, const TGIS_Point3D& spacing, const TGIS_Point3D& P1,
                                     const TGIS_Point3D& P2) {
    std::vector<TGIS_Point3D> out;
    const TGIS_Point3D line = pgv::sub(P2, P1);
    const double lineLength2 = pgv::dot(line, line);
    for (int n = 1; n <= MAX_NEIGHBOUR_CENTERS; ++n) {
        const TGIS_Point3D c = pgv::add(panel.CenterPoint, pgv::scale(spacing, n));
        if (lineLength2 < 1e-10 || pgv::dot(pgv::sub(c, P1), line) / lineLength2 > 1) break;
        out.push_back(c);
    }
    return out;
}

std::vector<TGIS_Point3D> neighbourCandidates(const PANEL& panel, const TGIS_Point3D& P1, const TGIS_Point3D& P2) {
    const TGIS_Point3D* c = panel.Corners;
    const int edges[4][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
    if (GetPanelIndexFromCoordinates(P2.X, P2.Y, P2.Z) < 0) {
        // A ray in plan from the centre towards P2; the edge it leaves by is the side to grow on.
        const double rx = P2.X - panel.CenterPoint.X, ry = P2.Y - panel.CenterPoint.Y;
        double bestT = 0;
        int bestEdge = -1;
        for (int e = 0; e < 4; ++e) {
            const TGIS_Point3D& a = c[edges[e][0]];
            const TGIS_Point3D& b = c[edges[e][1]];
            const double ex = b.X - a.X, ey = b.Y - a.Y;
            const double det = rx * (-ey) - ry * (-ex);
            if (std::fabs(det) <= 1e-10) continue;
            const double wx = a.X - panel.CenterPoint.X, wy = a.Y - panel.CenterPoint.Y;
            const double t = (wx * (-ey) - wy * (-ex)) / det;
            const double s = (rx * wy - ry * wx) / det;
            if (s < 0 || s > 1 || t <= 0) continue;
            if (bestEdge < 0 || t < bestT) {
                bestT = t;
                bestEdge = e;
            }
        }
        if (bestEdge < 0) return {};
        const TGIS_Point3D edgeCenter =
            pgv::scale(pgv::add(c[edges[bestEdge][0]], c[edges[bestEdge][1]]), 0.5);
        return candidates(panel, pgv::scale(pgv::sub(edgeCenter, panel.CenterPoint), 2), P1, P2);
    }
    for (int e = 0; e < 4; ++e) {
        TGIS_Point3D centre;
        if (neighbourOnEdge(panel, c[edges[e][0]], c[edges[e][1]], centre)) continue;
        const int o = (e + 2) % 4;
        if (!neighbourOnEdge(panel, c[edges[o][0]], c[edges[o][1]], centre)) continue;
        const std::vector<TGIS_Point3D> found = candidates(panel, pgv::sub(panel.CenterPoint, centre), P1, P2);
        if (!found.empty()) return found;
    }
    return {};
}

}  // namespace

PlacementSnapState& placementSnapState() {
    static PlacementSnapState state;
    return state;
}

void resetPlacementSnapState() { placementSnapState() = PlacementSnapState{}; }

TGIS_Point3D SnapTile(TGIS_Point3D P1, TGIS_Point3D P2) {
    PlacementSnapState& snap = placementSnapState();
    snap.GlobalSnapped[0] = snap.GlobalSnapped[1] = 0;
    const int panel1Index = GetPanelIndexFromCoordinates(P1.X, P1.Y, P1.Z);
    const int panel2Index = GetPanelIndexFromCoordinates(P2.X, P2.Y, P2.Z);
    if (panel1Index < 0) {
        PrintRunLog("  ERROR: P1 not in any panel\n");
        return {};
    }
    const PANEL& panel1 = panelStore().panels[panel1Index];
    const TGIS_Point3D corner1 = FindClosestCorner(panel1, P1);
    markSphere("SnapFrom", corner1, 1, 1, 0);
    snap.GlobalSnapped[0] = 1;

    TGIS_Point3D target;
    if (panel2Index >= 0) {
        target = FindClosestCorner(panelStore().panels[panel2Index], P2);
        markSphere("SnapTo", target, 0, 1, 0);
        snap.GlobalSnapped[1] = 1;
    } else {
        target = ProjectPointToRoof(P2, panel1);
        target.Z += DistancePanelPointFromRoof(panel1, corner1);
        markSphere("SnapTo", P2, 0, 0, 1);
    }
    TGIS_Point3D move = pgv::sub(target, corner1);
    const double zMin = std::min({panel1.PP[0].Z, panel1.PP[1].Z, panel1.PP[2].Z});
    const double zMax = std::max({panel1.PP[0].Z, panel1.PP[1].Z, panel1.PP[2].Z});
    // A flat roof moves flat.
    if (zMax - zMin < 0.05 && snap.GlobalSnapped[1] == 0) move.Z = 0;
    snap.GlobalSnappedTCaption = QString::asprintf(" Snapped %d %d   %.2lf %.2lf %.2lf", snap.GlobalSnapped[0],
                                                   snap.GlobalSnapped[1], move.X, move.Y, move.Z);
    return move;
}

void GetNeighbourCenters(const PANEL& panel, TGIS_Point3D P1, TGIS_Point3D P2) {
    PlacementSnapState& snap = placementSnapState();
    const std::vector<TGIS_Point3D> found = neighbourCandidates(panel, P1, P2);
    snap.HowmanyNeighbours = static_cast<int>(found.size());
    for (int i = 0; i < snap.HowmanyNeighbours; ++i) snap.GlobalNeighbourPanelCenters[i] = found[i];
}

TGIS_Point3D GetNeighbourCenter(const PANEL& panel, TGIS_Point3D P1, TGIS_Point3D P2) {
    const std::vector<TGIS_Point3D> found = neighbourCandidates(panel, P1, P2);
    return found.empty() ? TGIS_Point3D{} : found.front();
}
