#include "PlanEdges.h"

#include <algorithm>
#include <cmath>

namespace {

PlanPoint nearestOnSegment(PlanPoint a, PlanPoint b, PlanPoint q) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double len2 = dx * dx + dy * dy;
    if (len2 <= 0) return a;
    const double t = std::clamp(((q.x - a.x) * dx + (q.y - a.y) * dy) / len2, 0.0, 1.0);
    return {a.x + t * dx, a.y + t * dy};
}

}  // namespace

double PlanEdgeGap(PlanPoint a0, PlanPoint a1, PlanPoint b0, PlanPoint b1) {
    const PlanPoint middle{(b0.x + b1.x) / 2, (b0.y + b1.y) / 2};
    const PlanPoint onA = nearestOnSegment(a0, a1, middle);
    const PlanPoint onB = nearestOnSegment(b0, b1, onA);
    return std::hypot(onA.x - onB.x, onA.y - onB.y);
}
