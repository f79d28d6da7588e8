#include "AdjacencyGrouping.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "PanelStore.h"
#include "PlanEdges.h"
#include "app/services/RunLog.h"

namespace {

constexpr double kAdjacency = 0.1;      // m, plan distance of touching edges
constexpr double kPrecheck = 5.0;       // m between centres before the edge test
constexpr double kRowJoin = 0.05;       // m, corners meeting end to end
constexpr double kNeighbourJoin = 0.2;  // m, ArePanelsNeighbours
constexpr float kTwoRowSpread = 0.15f;  // m of centre heights for two rows, compared as stored

PlanPoint plan(const TGIS_Point3D& p) { return {p.X, p.Y}; }

double dist3(const TGIS_Point3D& a, const TGIS_Point3D& b) {
    return std::sqrt((a.X - b.X) * (a.X - b.X) + (a.Y - b.Y) * (a.Y - b.Y) + (a.Z - b.Z) * (a.Z - b.Z));
}

enum Corner { LL = 0, UL = 1, UR = 2, LR = 3 };

// B continues A's row on either side: their facing corners coincide.
bool touchEndToEnd(const PANEL& A, const PANEL& B) {
    const bool aThenB =
        dist3(A.Corners[LR], B.Corners[LL]) < kRowJoin && dist3(A.Corners[UR], B.Corners[UL]) < kRowJoin;
    const bool bThenA =
        dist3(B.Corners[LR], A.Corners[LL]) < kRowJoin && dist3(B.Corners[UR], A.Corners[UL]) < kRowJoin;
    return aThenB || bThenA;
}

void numberRows(const CONSTRUCTION_GROUP& g, std::array<PANEL, MAX_PANELS>& panels) {
    for (int m = 0; m < g.panelCount; ++m) panels[g.panelIndices[m]].Row = 0;
    int currentRow = 1;
    for (;;) {
        int seed = -1;
        for (int m = 0; m < g.panelCount && seed < 0; ++m)
            if (panels[g.panelIndices[m]].Row == 0) seed = g.panelIndices[m];
        if (seed < 0) break;
        panels[seed].Row = currentRow;
        bool changed = true;
        while (changed) {
            changed = false;
            for (int a = 0; a < g.panelCount; ++a) {
                const PANEL& A = panels[g.panelIndices[a]];
                if (A.Row != currentRow) continue;
                for (int b = 0; b < g.panelCount; ++b) {
                    PANEL& B = panels[g.panelIndices[b]];
                    if (B.Row == 0 && touchEndToEnd(A, B)) {
                        B.Row = currentRow;
                        changed = true;
                    }
                }
            }
        }
        ++currentRow;
    }
}

}  // namespace

ConstructionGroups& constructionGroups() {
    static ConstructionGroups state;
    return state;
}

void resetConstructionGroups() { constructionGroups() = ConstructionGroups{}; }

double MinEdgeDistance(const PANEL& a, const PANEL& b) {
    double best = 1e300;
    for (int i = 0; i < 4; ++i) {
        const PlanPoint a0 = plan(a.Corners[i]), a1 = plan(a.Corners[(i + 1) % 4]);
        for (int j = 0; j < 4; ++j) {
            const PlanPoint b0 = plan(b.Corners[j]), b1 = plan(b.Corners[(j + 1) % 4]);
            best = std::min(best, PlanEdgeGap(a0, a1, b0, b1));
        }
    }
    return best;
}

bool PanelsAdjacent(const PANEL& a, const PANEL& b) {
    if (std::hypot(a.CenterPoint.X - b.CenterPoint.X, a.CenterPoint.Y - b.CenterPoint.Y) > kPrecheck) return false;
    return MinEdgeDistance(a, b) <= kAdjacency;
}

int PerformAdjacencyGrouping(CONSTRUCTION_GROUP* groups) {
    PanelStore& store = panelStore();
    const int n = store.NumPanelsCreated;
    for (int i = 0; i < n; ++i) store.panels[i].GroupingName = 0;
    if (n <= 0) return 0;

    std::vector<bool> grouped(n, false);
    int groupedCount = 0;
    int groupCount = 0;
    char label = 'A';
    while (groupedCount < n && groupCount < MAX_GROUPS) {
        int seed = 0;
        while (grouped[seed]) ++seed;
        CONSTRUCTION_GROUP& g = groups[groupCount];
        g = CONSTRUCTION_GROUP{};
        g.groupIndex = groupCount;
        g.groupLetter = label;
        g.panelIndices[g.panelCount++] = seed;
        grouped[seed] = true;
        ++groupedCount;
        store.panels[seed].GroupingName = label;
        bool grew = true;
        while (grew) {
            grew = false;
            for (int m = 0; m < g.panelCount; ++m) {
                const PANEL& member = store.panels[g.panelIndices[m]];
                for (int c = 0; c < n && g.panelCount < MAX_PER_GROUP; ++c) {
                    if (grouped[c] || !PanelsAdjacent(member, store.panels[c])) continue;
                    g.panelIndices[g.panelCount++] = c;
                    grouped[c] = true;
                    ++groupedCount;
                    store.panels[c].GroupingName = label;
                    grew = true;
                }
            }
        }
        ++groupCount;
        if (label == 'Z') break;
        ++label;
    }
    for (int k = 0; k < groupCount; ++k) numberRows(groups[k], store.panels);
    PrintRunLog("PerformAdjacencyGrouping: %d panels in %d groups\n", n, groupCount);
    return groupCount;
}

bool ArePanelsNeighbours(const PANEL& A, const PANEL& B) {
    const double d1 = dist3(A.Corners[UR], B.Corners[UL]);
    const double d2 = dist3(A.Corners[LR], B.Corners[LL]);
    const double m1 = dist3(B.Corners[UR], A.Corners[UL]);
    const double m2 = dist3(B.Corners[LR], A.Corners[LL]);
    const bool result =
        (d1 <= kNeighbourJoin && d2 <= kNeighbourJoin) || (m1 <= kNeighbourJoin && m2 <= kNeighbourJoin);
    PrintRunLog("ArePanelsNeighbours (10cm): %s-%s %.3f %.3f / %.3f %.3f -> %d\n", A.Name, B.Name, d1, d2, m1, m2,
                result ? 1 : 0);
    return result;
}

void ComputeGroupAttributes(CONSTRUCTION_GROUP& g) {
    if (g.panelCount <= 0) return;
    const PanelStore& store = panelStore();
    double sx = 0, sy = 0, sz = 0;
    for (int m = 0; m < g.panelCount; ++m) {
        const PANEL& p = store.panels[g.panelIndices[m]];
        const float x = float(p.CenterPoint.X), y = float(p.CenterPoint.Y), z = float(p.CenterPoint.Z);
        if (m == 0) {
            g.minX = g.maxX = x;
            g.minY = g.maxY = y;
            g.minZ = g.maxZ = z;
        }
        g.minX = std::min(g.minX, x), g.maxX = std::max(g.maxX, x);
        g.minY = std::min(g.minY, y), g.maxY = std::max(g.maxY, y);
        g.minZ = std::min(g.minZ, z), g.maxZ = std::max(g.maxZ, z);
        sx += p.CenterPoint.X, sy += p.CenterPoint.Y, sz += p.CenterPoint.Z;
        g.RoofType = p.RoofType;
    }
    g.groupCenterX = float(sx / g.panelCount);
    g.groupCenterY = float(sy / g.panelCount);
    g.groupCenterZ = float(sz / g.panelCount);

    const float elevDiff = g.maxZ - g.minZ;
    g.rowCount = elevDiff > kTwoRowSpread ? 2 : 1;
    g.firstRowLandscape = store.panels[g.panelIndices[0]].Landscape;
    g.secondRowLandscape = false;
    if (g.rowCount == 2) {
        const double upper = g.minZ + 0.6 * double(elevDiff);
        for (int m = 0; m < g.panelCount; ++m) {
            const PANEL& p = store.panels[g.panelIndices[m]];
            if (p.CenterPoint.Z > upper) g.secondRowLandscape = p.Landscape;
        }
        std::snprintf(g.constructionType, sizeof g.constructionType, "%c-%c(%d)", g.firstRowLandscape ? 'L' : 'P',
                      g.secondRowLandscape ? 'L' : 'P', g.panelCount);
    } else {
        std::snprintf(g.constructionType, sizeof g.constructionType, "%c(%d)", g.firstRowLandscape ? 'L' : 'P',
                      g.panelCount);
    }
}
