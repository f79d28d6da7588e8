// Plan (x, y) geometry of panel edges shared by the grouping and the
// construction tables.
#pragma once

struct PlanPoint {
    double x, y;
};

// The gap between edge a (a0-a1) and edge b (b0-b1) as the construction
// rules measure it: from the middle of b to its nearest point on a, and from
// there back to the nearest point on b.
double PlanEdgeGap(PlanPoint a0, PlanPoint a1, PlanPoint b0, PlanPoint b1);
