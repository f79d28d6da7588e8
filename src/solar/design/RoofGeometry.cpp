#include "RoofGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

struct V3 {
    double x, y, z;
};

V3 Sub(const TGIS_Point3D& a, const TGIS_Point3D& b) { return {a.X - b.X, a.Y - b.Y, a.Z - b.Z}; }
V3 Cross(const V3& a, const V3& b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double Length(const V3& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

V3 Normalized(const V3& v) {
    const double length = Length(v);
    return length > 0 ? V3{v.x / length, v.y / length, v.z / length} : v;
}

double ShoelaceInPlan(const TGIS_Point3D* P, int n) {
    double sum = 0;
    for (int i = 0; i < n; ++i) {
        const TGIS_Point3D& a = P[i];
        const TGIS_Point3D& b = P[(i + 1) % n];
        sum += a.X * b.Y - b.X * a.Y;
    }
    return std::fabs(sum) / 2;
}

}  // namespace

double CalculatePlaneArea(const PLANE* p) {
    int n = p->Npoints;
    if (n < 3) return 0;
    const TGIS_Point3D& first = p->P[0];
    const TGIS_Point3D& last = p->P[n - 1];
    if (std::fabs(first.X - last.X) < 1e-6 && std::fabs(first.Y - last.Y) < 1e-6) --n;
    return ShoelaceInPlan(p->P, n);
}

bool IsPointInsideConvexPolygon(TGIS_Point3D point, const TGIS_Point3D* polygon, int numPoints) {
    if (numPoints < 3) return false;
    int expectedSign = 0;
    for (int i = 0; i < numPoints; ++i) {
        const TGIS_Point3D& a = polygon[i];
        const TGIS_Point3D& b = polygon[(i + 1) % numPoints];
        const double cross = (b.X - a.X) * (point.Y - a.Y) - (b.Y - a.Y) * (point.X - a.X);
        if (std::fabs(cross) <= 1e-10) continue;
        const int sign = cross > 0 ? 1 : -1;
        if (expectedSign == 0)
            expectedSign = sign;
        else if (sign != expectedSign)
            return false;
    }
    return true;
}

double Calculate3DPolygonArea(const TGIS_Point3D* P, int NP) {
    if (NP < 3) return 0;
    TGIS_Point3D centre;
    for (int i = 0; i < NP; ++i) {
        centre.X += P[i].X / NP;
        centre.Y += P[i].Y / NP;
        centre.Z += P[i].Z / NP;
    }
    double area = 0;
    for (int i = 0; i < NP; ++i) area += Length(Cross(Sub(P[i], centre), Sub(P[(i + 1) % NP], centre))) / 2;
    return area;
}

void Calculate3DPolygonNormal(const TGIS_Point3D* P, int NP, double& nx, double& ny, double& nz) {
    nx = 0, ny = 0, nz = 1;
    if (NP < 3) return;
    V3 n{0, 0, 0};
    for (int i = 0; i < NP; ++i) {
        const TGIS_Point3D& a = P[i];
        const TGIS_Point3D& b = P[(i + 1) % NP];
        n.x += (a.Y - b.Y) * (a.Z + b.Z);
        n.y += (a.Z - b.Z) * (a.X + b.X);
        n.z += (a.X - b.X) * (a.Y + b.Y);
    }
    const double length = Length(n);
    if (length == 0) return;
    nx = n.x / length, ny = n.y / length, nz = n.z / length;
}

std::vector<TGIS_Point3D> ExpandPolygon3D(const TGIS_Point3D* P, int NP, float RR, std::FILE* logfile) {
    constexpr double OFFSET = 3.0;
    std::vector<TGIS_Point3D> out(P, P + std::max(NP, 0));
    if (logfile) std::fprintf(logfile, "ExpandPolygon3D: %d points, RR=%.3f, offset %.1f m\n", NP, RR, OFFSET);
    if (NP < 3) {
        if (logfile) std::fprintf(logfile, "WARNING: Polygon has < 3 points, returning unchanged\n");
        return out;
    }
    V3 n;
    Calculate3DPolygonNormal(P, NP, n.x, n.y, n.z);
    for (int i = 0; i < NP; ++i) {
        const V3 e1 = Sub(P[i], P[(i + NP - 1) % NP]);
        const V3 e2 = Sub(P[(i + 1) % NP], P[i]);
        // The polygon's normal follows its winding, so edge x normal points
        // away from the inside whichever way the clicks went round.
        const V3 perp1 = Normalized(Cross(e1, n));
        const V3 perp2 = Normalized(Cross(e2, n));
        const V3 average = Normalized({perp1.x + perp2.x, perp1.y + perp2.y, perp1.z + perp2.z});
        const double dot = std::clamp(average.x * perp1.x + average.y * perp1.y + average.z * perp1.z, -1.0, 1.0);
        const double s = std::sin(std::acos(dot) / 2);
        const double offset = s > 0.01 ? OFFSET / s : OFFSET;
        out[i].X += average.x * offset;
        out[i].Y += average.y * offset;
        out[i].Z += average.z * offset;
        if (logfile)
            std::fprintf(logfile, "  vertex %d: (%.3f, %.3f, %.3f) -> (%.3f, %.3f, %.3f), offset %.3f\n", i, P[i].X,
                         P[i].Y, P[i].Z, out[i].X, out[i].Y, out[i].Z, offset);
    }
    if (logfile) {
        std::fprintf(logfile, "\n3D AREA SUMMARY:\n");
        std::fprintf(logfile, "  Original area: %.3f m2\n", Calculate3DPolygonArea(P, NP));
        std::fprintf(logfile, "  Expanded area: %.3f m2\n", Calculate3DPolygonArea(out.data(), NP));
    }
    return out;
}

TGIS_Point3D ProjectPoint(const PLANE* plane, TGIS_Point3D point) {
    double best = 1e300;
    for (int i = 0; i < plane->Npoints; ++i) {
        const double dx = plane->P[i].X - point.X;
        const double dy = plane->P[i].Y - point.Y;
        const double distance = dx * dx + dy * dy;
        if (distance < best) {
            best = distance;
            point.Z = plane->P[i].Z;
        }
    }
    return point;
}
