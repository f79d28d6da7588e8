// An outline being digitised: the clicked points and the drawn vertices,
// both in the local frame, and the outline's number in the measure list.
#pragma once

constexpr int MAX_WAYPOINTS = 500;

struct WAYPOINT {
    double X = 0, Y = 0, Z = 0;
};

struct DigitiseState {
    WAYPOINT WaypointS[MAX_WAYPOINTS];
    int NWPS = 0;
    // The clicked points with the vertices between them, lifted by GLOBALZUZ4DIGITIZING.
    WAYPOINT WaypointW[MAX_WAYPOINTS];
    int NWPW = 0;
    // Seconds of the day at the outline's first segment: "POL_<number>-<vertex>".
    int GlobalPolygonMumber = 0;
};

DigitiseState& digitiseState();
void resetDigitiseState();
