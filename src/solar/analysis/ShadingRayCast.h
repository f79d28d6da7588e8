// The ray pass of the shading analysis on all cores: segments from each test
// point towards the sun of each hour, cast in chunks whose bounds do not
// depend on the number of threads, so every answer and hit is the same as
// on one thread.
#pragma once

#include <cstdint>
#include <vector>

#include "SunDirection.h"

struct ShadingRays {
    std::vector<std::uint8_t> shaded;  // [point * hourCount + hour], 1 on a hit
    std::vector<double> hits;          // 3 per ray: the hit, engine coordinates; 0 without one
};

// origins: the test points in engine coordinates; directions: unit vectors
// towards the sun. Each segment runs `length` metres; hits nearer than
// skipDistance to its start do not count; the first hit found ends a ray.
// threads 0 takes every core.
ShadingRays CastShadingRays(const std::vector<Vec3>& origins, const std::vector<Vec3>& directions, double length,
                            double skipDistance, int threads);
