// Areas and orientation of polygons given as vertex arrays. The arrays are
// closed in place: each function writes V[n] = V[0], and area3D_Polygon
// also reads V[n + 1], so V must hold n + 2 points.
#pragma once

struct MyPoint {
    double x = 0, y = 0, z = 0;
};

// > 0 when P2 lies left of the line P0 -> P1, < 0 right of it, 0 on it.
double isLeft(const MyPoint& P0, const MyPoint& P1, const MyPoint& P2);
// Twice the signed area: > 0 counter-clockwise.
double orientation2D_Triangle(const MyPoint& V0, const MyPoint& V1, const MyPoint& V2);
// Signed area, > 0 counter-clockwise.
double area2D_Triangle(const MyPoint& V0, const MyPoint& V1, const MyPoint& V2);
// > 0 counter-clockwise, < 0 clockwise, 0 degenerate; told at the lowest,
// rightmost vertex. V holds n + 1 points.
double orientation2D_Polygon(int n, MyPoint* V);
// Signed plan area, > 0 counter-clockwise; 0 below 3 vertices. V holds n + 1 points.
double area2D_Polygon(int n, MyPoint* V);
// Area of a planar polygon in space, 0 below 3 vertices. The plane's normal
// comes from the first three vertices; the polygon is projected onto the
// coordinate plane that normal is most nearly square to. V holds n + 2 points.
double area3D_Polygon(int n, MyPoint* V);
