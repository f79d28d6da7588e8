// Moving panels against one another: the corner snap of a measured line and
// the free positions proposed next to a panel. Points in the map frame.
#pragma once

#include <QString>

#include "PanelStruct.h"

constexpr int MAX_NEIGHBOUR_CENTERS = 50;

// What the last snap and neighbour search found, for the panel dialog.
struct PlacementSnapState {
    int GlobalSnapped[2] = {0, 0};  // 1 where an end of the line met a panel corner
    QString GlobalSnappedTCaption;  // the last snap for the panel dialog's caption
    TGIS_Point3D GlobalNeighbourPanelCenters[MAX_NEIGHBOUR_CENTERS] = {};
    int HowmanyNeighbours = 0;
};

PlacementSnapState& placementSnapState();
void resetPlacementSnapState();

// The move that puts the corner of the panel under P1 nearest to P1 onto the
// nearest corner of the panel under P2, or onto P2 at the first panel's
// height above its roof. Zero when P1 is on no panel. Leaves the flags and
// the caption " Snapped %d %d   %.2lf %.2lf %.2lf" behind.
TGIS_Point3D SnapTile(TGIS_Point3D P1, TGIS_Point3D P2);

// Free centres next to panel along the measured line P1-P2, at most 50, into
// GlobalNeighbourPanelCenters and HowmanyNeighbours.
void GetNeighbourCenters(const PANEL& panel, TGIS_Point3D P1, TGIS_Point3D P2);
// The first of those centres; (0, 0, 0) when there is none.
TGIS_Point3D GetNeighbourCenter(const PANEL& panel, TGIS_Point3D P1, TGIS_Point3D P2);
