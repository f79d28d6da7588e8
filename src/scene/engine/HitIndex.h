// Spatial index over the triangles of all layers whose output flag is on.
// Built once per scene state; every query is const and thread-safe.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Layer.h"

namespace engine {

struct RayHit {
    double t = 0;            // distance along the unit direction
    double point[3] = {0, 0, 0};
    int layerIndex = -1;     // index into the layer vector the index was built from
    unsigned primitive = 0;  // triangle of that layer
    float u = 0, v = 0;      // barycentric coordinates of the hit in that triangle
};

class HitIndex {
public:
    static std::unique_ptr<HitIndex> build(const std::vector<Layer>& layers);
    virtual ~HitIndex() = default;

    // Nearest hit with tNear <= t <= tFar along origin + t * direction (unit).
    virtual bool intersectNearest(const double origin[3], const double direction[3], double tNear,
                                  double tFar, RayHit& hit) const = 0;
    // Any hit in that range; the traversal stops at the first one found.
    virtual bool intersectAny(const double origin[3], const double direction[3], double tNear, double tFar,
                              RayHit& hit) const = 0;
    // Segments in bulk: fills hits[i], and found[i] with 1 where segment i hit.
    virtual void intersectSegments(int count, const double* v1s, const double* v2s, double skipDistance,
                                   bool nearest, RayHit* hits, std::uint8_t* found) const = 0;
    virtual std::size_t triangleCount() const = 0;
};

// Sets flush-to-zero and denormals-are-zero once on the calling thread, as
// the ray tracer asks of every thread that casts rays.
void prepareRayThread();

}  // namespace engine
