// Roof planes: a polygon of clicks fitted to a plane, and the closed volume
// that two such planes make. Points are in the model's map frame, metres.
#pragma once

#include <vector>

#include "geo/GisTypes.h"

constexpr int MAX_PLANE_POINTS = 20;

struct PLANE {
    TGIS_Point3D P[MAX_PLANE_POINTS] = {};
    int Npoints = 0;
    float Area = 0;         // m2
    float coplanarity = 0;  // m: largest distance of a point from the fitted plane
};

struct VOLUME {
    PLANE Top;
    PLANE Bottom;
    std::vector<PLANE> Walls;  // NumWalls quads
    int NumWalls = 0;
};

// The roof work of the session: what the last fit decided, and what the
// captured points are for.
struct RoofState {
    bool useHorizontalPlane = false;
    double TilesSlopeDegrees = 0;
    int ROOF = 0;           // 0 no roof work, 1 a roof polygon, 2 a panel placement
    int RoofPlaneCount = 0; // running number in the roof files' names
};

RoofState& roofState();
void resetRoofState();
