#include "PanelDaeEarClipping.h"

#include <cmath>

namespace {

struct Point2 {
    double u;
    double v;
};

double cross(const Point2& a, const Point2& b, const Point2& c) {
    return (b.u - a.u) * (c.v - b.v) - (b.v - a.v) * (c.u - b.u);
}

bool insideTriangle(const Point2& p, const Point2& a, const Point2& b, const Point2& c) {
    const double v0u = c.u - a.u, v0v = c.v - a.v;
    const double v1u = b.u - a.u, v1v = b.v - a.v;
    const double v2u = p.u - a.u, v2v = p.v - a.v;
    const double d00 = v0u * v0u + v0v * v0v, d01 = v0u * v1u + v0v * v1v, d02 = v0u * v2u + v0v * v2v;
    const double d11 = v1u * v1u + v1v * v1v, d12 = v1u * v2u + v1v * v2v;
    const double denominator = d00 * d11 - d01 * d01;
    if (denominator == 0) return false;
    const double s = (d11 * d02 - d01 * d12) / denominator;
    const double t = (d00 * d12 - d01 * d02) / denominator;
    constexpr double tolerance = -1e-12;
    return s >= tolerance && t >= tolerance && s + t <= 1 - tolerance;
}

// The polygon seen along the axis its Newell normal leans on most, keeping
// the two others in right-handed order.
std::vector<Point2> project(const TGIS_Point3D* P, int NP) {
    double nx = 0, ny = 0, nz = 0;
    for (int i = 0; i < NP; ++i) {
        const TGIS_Point3D& a = P[i];
        const TGIS_Point3D& b = P[(i + 1) % NP];
        nx += (a.Y - b.Y) * (a.Z + b.Z);
        ny += (a.Z - b.Z) * (a.X + b.X);
        nz += (a.X - b.X) * (a.Y + b.Y);
    }
    std::vector<Point2> out(static_cast<std::size_t>(NP));
    for (int i = 0; i < NP; ++i) {
        const TGIS_Point3D& p = P[i];
        if (std::fabs(nz) >= std::fabs(nx) && std::fabs(nz) >= std::fabs(ny))
            out[i] = {p.X, p.Y};
        else if (std::fabs(nx) >= std::fabs(ny))
            out[i] = {p.Y, p.Z};
        else
            out[i] = {p.Z, p.X};
    }
    return out;
}

}  // namespace

std::vector<std::array<int, 3>> EarClipPolygon(const TGIS_Point3D* P, int NP) {
    std::vector<std::array<int, 3>> triangles;
    if (!P || NP < 3) return triangles;
    const std::vector<Point2> q = project(P, NP);
    double area = 0;
    for (int i = 0; i < NP; ++i) area += q[i].u * q[(i + 1) % NP].v - q[(i + 1) % NP].u * q[i].v;

    // Walk the corners counter-clockwise, so every ear turns left.
    std::vector<int> ring(static_cast<std::size_t>(NP));
    for (int i = 0; i < NP; ++i) ring[i] = area >= 0 ? i : NP - 1 - i;

    const long bound = long(NP) * NP + 100;
    long iterations = 0;
    std::size_t at = 0;
    while (ring.size() > 3 && iterations++ < bound) {
        const std::size_t n = ring.size();
        const int a = ring[(at + n - 1) % n], b = ring[at % n], c = ring[(at + 1) % n];
        bool ear = cross(q[a], q[b], q[c]) > 1e-15;
        for (std::size_t k = 0; ear && k < n; ++k) {
            const int other = ring[k];
            if (other != a && other != b && other != c && insideTriangle(q[other], q[a], q[b], q[c])) ear = false;
        }
        if (ear) {
            triangles.push_back({a, b, c});
            ring.erase(ring.begin() + static_cast<long>(at % n));
            at = at % ring.size();
        } else {
            at = (at + 1) % n;
        }
    }
    for (std::size_t k = 1; k + 1 < ring.size(); ++k) triangles.push_back({ring[0], ring[k], ring[k + 1]});
    return triangles;
}
