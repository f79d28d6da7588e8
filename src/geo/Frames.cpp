#include "Frames.h"

#include "scene/engine_interface.h"

FrameState& frameState() {
    static FrameState state;
    return state;
}

void resetFrameState() { frameState() = FrameState{}; }

double OC(int I) {
    const FrameState& f = frameState();
    return f.OriginalobjectCenter[I] + f.Offset[I];
}

double GetZFromXY(double X, double Y) {
    double Z = -9999;
    const double x = X - OC(0);
    const double y = Y - OC(1);
    const double v1[3] = {x, y, 9999};
    const double v2[3] = {x, y, -9999};
    double intersection[3];
    if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, intersection, 0) > 0) Z = intersection[2] + OC(2);
    return Z;
}

double GetZFromXYLocal(double X, double Y) {
    const double v1[3] = {X, Y, -9999};
    const double v2[3] = {X, Y, 9999};
    double intersection[3];
    if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, intersection, 0) > 0) return intersection[2];
    return -9999;
}

void ApplyScale() {
    FrameState& f = frameState();
    if (!(f.SCALE > 0) || !(f.scaleInForce > 0) || f.SCALE == f.scaleInForce) return;
    const double factor = f.SCALE / f.scaleInForce;
    const double factors[3] = {factor, factor, factor};
    if (At3d_ScaleObject(factors)) f.scaleInForce = f.SCALE;
}
