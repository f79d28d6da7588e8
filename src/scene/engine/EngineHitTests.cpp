// Segment-against-mesh tests: the hot path of measuring and of the solar
// shading, which casts millions of sun rays from many threads.
#include <cmath>
#include <cstdint>
#include <vector>

#include "EngineState.h"

int At3d_Get_Line_Mesh_Intersection_Point(const double* v1, const double* v2, double skipDistance,
                                          double* intersection, int exitFirstHitFlag) {
    if (!v1 || !v2) return 0;
    const engine::HitIndex* index = engine::currentHitIndex();
    if (!index) return 0;
    const double d[3] = {v2[0] - v1[0], v2[1] - v1[1], v2[2] - v1[2]};
    const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    if (!(length > 0) || skipDistance >= length) return 0;
    const double direction[3] = {d[0] / length, d[1] / length, d[2] / length};
    const double tNear = skipDistance > 0 ? skipDistance : 0;
    engine::RayHit hit;
    const bool found = exitFirstHitFlag == 1 ? index->intersectAny(v1, direction, tNear, length, hit)
                                             : index->intersectNearest(v1, direction, tNear, length, hit);
    if (!found) return 0;
    if (intersection)
        for (int k = 0; k < 3; ++k) intersection[k] = hit.point[k];
    return 1;
}

int At3d_Get_Line_Mesh_Intersection_Points(int count, const double* v1s, const double* v2s, double skipDistance,
                                           double* intersections, int* results, int exitFirstHitFlag) {
    if (count <= 0 || !v1s || !v2s) return 0;
    const engine::HitIndex* index = engine::currentHitIndex();
    if (!index) {
        if (results)
            for (int i = 0; i < count; ++i) results[i] = 0;
        return 0;
    }
    thread_local std::vector<engine::RayHit> hits;
    thread_local std::vector<std::uint8_t> found;
    hits.resize(static_cast<std::size_t>(count));
    found.resize(static_cast<std::size_t>(count));
    index->intersectSegments(count, v1s, v2s, skipDistance, exitFirstHitFlag != 1, hits.data(), found.data());
    int hitCount = 0;
    for (int i = 0; i < count; ++i) {
        const bool hit = found[static_cast<std::size_t>(i)] != 0;
        hitCount += hit ? 1 : 0;
        if (results) results[i] = hit ? 1 : 0;
        if (hit && intersections)
            for (int k = 0; k < 3; ++k) intersections[3 * i + k] = hits[static_cast<std::size_t>(i)].point[k];
    }
    return hitCount;
}
