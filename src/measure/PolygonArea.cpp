#include "PolygonArea.h"

#include <cmath>

namespace {

// The cross product a x b scaled to unit length; zero for parallel vectors.
MyPoint normcrossprod3D(const MyPoint& a, const MyPoint& b) {
    MyPoint n{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    if (length > 0) {
        n.x /= length;
        n.y /= length;
        n.z /= length;
    }
    return n;
}

MyPoint minus(const MyPoint& a, const MyPoint& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

}  // namespace

double isLeft(const MyPoint& P0, const MyPoint& P1, const MyPoint& P2) {
    return (P1.x - P0.x) * (P2.y - P0.y) - (P2.x - P0.x) * (P1.y - P0.y);
}

double orientation2D_Triangle(const MyPoint& V0, const MyPoint& V1, const MyPoint& V2) { return isLeft(V0, V1, V2); }

double area2D_Triangle(const MyPoint& V0, const MyPoint& V1, const MyPoint& V2) { return isLeft(V0, V1, V2) / 2.0; }

double orientation2D_Polygon(int n, MyPoint* V) {
    if (n < 3) return 0;
    V[n] = V[0];
    // The lowest vertex, the rightmost of equals, is convex: its turn is the polygon's.
    int rmin = 0;
    for (int i = 1; i < n; ++i)
        if (V[i].y < V[rmin].y || (V[i].y == V[rmin].y && V[i].x > V[rmin].x)) rmin = i;
    const int previous = rmin == 0 ? n - 1 : rmin - 1;
    return isLeft(V[previous], V[rmin], V[rmin + 1]);
}

double area2D_Polygon(int n, MyPoint* V) {
    if (n < 3) return 0;
    V[n] = V[0];
    double area = 0;
    for (int i = 1; i < n; ++i) area += V[i].x * (V[i + 1].y - V[i - 1].y);
    area += V[n].x * (V[1].y - V[n - 1].y);
    return area / 2.0;
}

double area3D_Polygon(int n, MyPoint* V) {
    if (n < 3) return 0;
    V[n] = V[0];
    V[n + 1] = V[1];
    const MyPoint N = normcrossprod3D(minus(V[2], V[1]), minus(V[0], V[1]));
    const double ax = std::fabs(N.x), ay = std::fabs(N.y), az = std::fabs(N.z);
    // 1 drops x, 2 drops y, 3 drops z; the two kept stay in cyclic order.
    int coord = 3;
    if (ax > ay) {
        if (ax > az) coord = 1;
    } else if (ay > az) {
        coord = 2;
    }
    const auto a = [coord](const MyPoint& p) { return coord == 1 ? p.y : coord == 2 ? p.z : p.x; };
    const auto b = [coord](const MyPoint& p) { return coord == 1 ? p.z : coord == 2 ? p.x : p.y; };
    double sum = 0;
    for (int i = 1; i < n; ++i) sum += a(V[i]) * (b(V[i + 1]) - b(V[i - 1]));
    sum += a(V[n]) * (b(V[1]) - b(V[n - 1]));
    const double component = coord == 1 ? N.x : coord == 2 ? N.y : N.z;
    if (component == 0) return 0;
    const double length = std::sqrt(N.x * N.x + N.y * N.y + N.z * N.z);
    return std::fabs(sum * length / (2 * component));
}
