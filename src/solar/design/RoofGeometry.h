// Plain polygon geometry of roof planes: areas, normals, the outward grown
// outline, and point tests.
#pragma once

#include <cstdio>
#include <vector>

#include "RoofPlane.h"

// Shoelace area in plan; a closing point that repeats the first is dropped.
double CalculatePlaneArea(const PLANE* p);
// True inside or on an edge of a convex polygon, whatever its winding.
bool IsPointInsideConvexPolygon(TGIS_Point3D point, const TGIS_Point3D* polygon, int numPoints);
// Area in 3D as a fan of triangles from the vertices' mean.
double Calculate3DPolygonArea(const TGIS_Point3D* P, int NP);
// Unit normal by Newell's method; (0, 0, 1) when there is none.
void Calculate3DPolygonNormal(const TGIS_Point3D* P, int NP, double& nx, double& ny, double& nz);
// The polygon grown outward by 3 m at each vertex (in its own plane). RR is
// only written to the log, which may be null.
std::vector<TGIS_Point3D> ExpandPolygon3D(const TGIS_Point3D* P, int NP, float RR, std::FILE* logfile);
// The point with the Z of the plane's vertex nearest to it in plan.
TGIS_Point3D ProjectPoint(const PLANE* plane, TGIS_Point3D point);
