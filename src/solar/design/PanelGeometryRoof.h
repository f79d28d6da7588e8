// The roof plane a panel was laid on (the plane through its PP points) and
// the tools that measure against it or move points off it.
#pragma once

#include "PanelStruct.h"

// The point on the plane with the same X and Y.
TGIS_Point3D ProjectPointToRoof(TGIS_Point3D point, const PANEL& panel);
// Absolute distance of the point from the plane.
double DistancePanelPointFromRoof(const PANEL& panel, TGIS_Point3D point);
// The point put onto the plane and then moved lift along the plane's normal;
// the normal is not turned upward, so its sign follows the clicking order.
TGIS_Point3D LiftPointAlongPanelNormal(const PANEL& panel, TGIS_Point3D point, float lift);
// The upward normal of a polygon times Lift; a zero vector (and a log line)
// for fewer than 3 distinct points or a degenerate polygon.
TGIS_Point3D LiftPointAlongPolygonNormal(const TGIS_Point3D* P, int npoints, float Lift);
// CenterPoint moved Lift along the upward normal of PP.
TGIS_Point3D LiftPanel(const PANEL& panel, float Lift);
// The corner nearest to the point; a zero point when none lies within 9999 m.
TGIS_Point3D FindClosestCorner(const PANEL& panel, TGIS_Point3D point);
