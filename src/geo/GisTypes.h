// The GIS engine's plain point and extent records: X east (or longitude),
// Y north (or latitude), in the units of the system they belong to.
#pragma once

struct TGIS_Point {
    double X = 0;
    double Y = 0;
};

struct TGIS_Point3D {
    double X = 0;
    double Y = 0;
    double Z = 0;
    double M = 0;
};

struct TGIS_Extent {
    double XMin = 0;
    double YMin = 0;
    double XMax = 0;
    double YMax = 0;
};

inline bool PointInExtent(const TGIS_Point& p, const TGIS_Extent& e) {
    return p.X >= e.XMin && p.X <= e.XMax && p.Y >= e.YMin && p.Y <= e.YMax;
}
