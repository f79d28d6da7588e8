// Small vector arithmetic on TGIS_Point3D for the placement's geometry; M is
// carried as 0.
#pragma once

#include <cmath>

#include "geo/GisTypes.h"

namespace pgv {

inline TGIS_Point3D make(double x, double y, double z) { return TGIS_Point3D{x, y, z, 0}; }
inline TGIS_Point3D add(const TGIS_Point3D& a, const TGIS_Point3D& b) { return make(a.X + b.X, a.Y + b.Y, a.Z + b.Z); }
inline TGIS_Point3D sub(const TGIS_Point3D& a, const TGIS_Point3D& b) { return make(a.X - b.X, a.Y - b.Y, a.Z - b.Z); }
inline TGIS_Point3D scale(const TGIS_Point3D& a, double s) { return make(a.X * s, a.Y * s, a.Z * s); }
inline double dot(const TGIS_Point3D& a, const TGIS_Point3D& b) { return a.X * b.X + a.Y * b.Y + a.Z * b.Z; }
inline TGIS_Point3D cross(const TGIS_Point3D& a, const TGIS_Point3D& b) {
    return make(a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X);
}
inline double length(const TGIS_Point3D& a) { return std::sqrt(dot(a, a)); }
inline double planDistance(const TGIS_Point3D& a, const TGIS_Point3D& b) { return std::hypot(b.X - a.X, b.Y - a.Y); }
// a divided by its length when that exceeds threshold, otherwise fallback.
inline TGIS_Point3D normalized(const TGIS_Point3D& a, double threshold, const TGIS_Point3D& fallback) {
    const double l = length(a);
    return l > threshold ? scale(a, 1.0 / l) : fallback;
}

constexpr double kDeg = 3.14159265358979323846 / 180.0;

}  // namespace pgv
