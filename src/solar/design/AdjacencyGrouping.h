// Construction groups: panels lying side by side share one mounting frame.
// The groups come from the geometry alone, whatever group numbers the
// panels were created with.
#pragma once

#include <array>

#include "PanelStruct.h"

constexpr int MAX_GROUPS = 26;
constexpr int MAX_PER_GROUP = 150;

struct CONSTRUCTION_GROUP {
    int groupIndex = 0;
    char groupLetter = 0;                  // 'A'..'Z'
    int panelIndices[MAX_PER_GROUP] = {};  // store indices of the members
    int panelCount = 0;
    int RoofType = 0;  // of the last member looked at
    int rowCount = 0;  // 1 or 2, from the height spread
    bool firstRowLandscape = false;
    bool secondRowLandscape = false;
    char constructionType[20] = {};  // such as "P(12)" or "L-P(8)"
    float groupCenterX = 0, groupCenterY = 0, groupCenterZ = 0;
    float minX = 0, maxX = 0, minY = 0, maxY = 0, minZ = 0, maxZ = 0;
};

struct ConstructionGroups {
    std::array<CONSTRUCTION_GROUP, MAX_GROUPS> groups{};
    int groupCount = 0;
};

// Rebuilt on every use; only letters and rows written back to panels persist.
ConstructionGroups& constructionGroups();
void resetConstructionGroups();

// Smallest plan distance between the edges of two panels, as the grouping
// measures it (edge midpoints against the other's edges).
double MinEdgeDistance(const PANEL& a, const PANEL& b);
// Plan adjacency: centres within 5 m and an edge distance of at most 0.1 m.
bool PanelsAdjacent(const PANEL& a, const PANEL& b);

// Groups the live panels into groups (at most 26), writes GroupingName and
// Row back to the panels and returns the group count.
int PerformAdjacencyGrouping(CONSTRUCTION_GROUP* groups);

// The stricter 3D test: A's right edge meets B's left edge (0.2 m) or the mirror.
bool ArePanelsNeighbours(const PANEL& A, const PANEL& B);

// Bounds, row count, row orientations and the type string of one group.
void ComputeGroupAttributes(CONSTRUCTION_GROUP& group);
