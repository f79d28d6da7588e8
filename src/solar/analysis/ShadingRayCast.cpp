#include "ShadingRayCast.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include "scene/engine_interface.h"

namespace {

// Hours per batch call: a multiple of the engine's ray block, fixed so that
// each call sees the same segments whatever the thread count.
constexpr int kChunkHours = 512;

}  // namespace

ShadingRays CastShadingRays(const std::vector<Vec3>& origins, const std::vector<Vec3>& directions, double length,
                            double skipDistance, int threads) {
    const int hourCount = static_cast<int>(directions.size());
    const int pointCount = static_cast<int>(origins.size());
    const std::size_t rays = static_cast<std::size_t>(hourCount) * static_cast<std::size_t>(pointCount);
    ShadingRays out;
    out.shaded.assign(rays, 0);
    out.hits.assign(3 * rays, 0.0);
    if (rays == 0) return out;

    std::vector<double> starts(3 * rays);
    std::vector<double> ends(3 * rays);
    for (int p = 0; p < pointCount; ++p) {
        const Vec3& o = origins[static_cast<std::size_t>(p)];
        for (int h = 0; h < hourCount; ++h) {
            const Vec3& d = directions[static_cast<std::size_t>(h)];
            double* s = &starts[3 * (static_cast<std::size_t>(p) * hourCount + h)];
            double* e = &ends[3 * (static_cast<std::size_t>(p) * hourCount + h)];
            s[0] = o.x;
            s[1] = o.y;
            s[2] = o.z;
            e[0] = o.x + d.x * length;
            e[1] = o.y + d.y * length;
            e[2] = o.z + d.z * length;
        }
    }

    const int chunksPerPoint = (hourCount + kChunkHours - 1) / kChunkHours;
    const int chunkCount = chunksPerPoint * pointCount;
    std::vector<int> results(rays, 0);
    std::atomic<int> next{0};
    auto work = [&] {
        for (int c = next.fetch_add(1); c < chunkCount; c = next.fetch_add(1)) {
            const int hour0 = (c % chunksPerPoint) * kChunkHours;
            const std::size_t first = static_cast<std::size_t>(c / chunksPerPoint) * hourCount + hour0;
            const int count = std::min(kChunkHours, hourCount - hour0);
            At3d_Get_Line_Mesh_Intersection_Points(count, &starts[3 * first], &ends[3 * first], skipDistance,
                                                   &out.hits[3 * first], &results[first], 1);
        }
    };
    if (threads <= 0) threads = static_cast<int>(std::thread::hardware_concurrency());
    threads = std::clamp(threads, 1, chunkCount);
    std::vector<std::thread> helpers;
    helpers.reserve(static_cast<std::size_t>(threads - 1));
    for (int t = 1; t < threads; ++t) helpers.emplace_back(work);
    work();
    for (std::thread& t : helpers) t.join();
    for (std::size_t i = 0; i < rays; ++i) out.shaded[i] = results[i] != 0 ? 1 : 0;
    return out;
}
