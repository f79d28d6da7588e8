// Shading pattern: rays from roof tops of a large city towards a year of
// daylight sun directions, 1000 m long, skip 0.5, first hit, through the
// engine's public calls on all cores.
#include <benchmark/benchmark.h>

#include <thread>
#include <vector>

#include "SunDirections.h"
#include "CityScene.h"
#include "gen/CityGenerator.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"

namespace {

constexpr std::size_t POINTS = 1000;
constexpr std::size_t SUN_HOURS = 4360;
constexpr double RAY_LENGTH = 1000;
constexpr double SKIP = 0.5;

struct ShadingScene {
    std::vector<std::array<double, 3>> points;  // local frame
    std::vector<std::array<double, 3>> sun;
    std::size_t triangles = 0;
};

const ShadingScene& shadingScene() {
    static ShadingScene scene = [] {
        benchgen::CityOptions options;
        options.targetTriangles = 2'100'000;
        benchgen::CityMesh mesh = benchgen::makeCityMesh(options);
        const std::array<double, 3> center = LoadCityScene(mesh);
        ShadingScene s;
        s.triangles = At3d_FaceCount("city");
        for (std::size_t i = 0; i < POINTS && i < mesh.roofPoints.size(); ++i)
            s.points.push_back({mesh.roofPoints[i][0] - center[0], mesh.roofPoints[i][1] - center[1],
                                mesh.roofPoints[i][2] - center[2]});
        s.sun = benchgen::daylightSunDirections(32.0, SUN_HOURS);
        double hit[3];
        const double a[3] = {0, 0, 1000}, b[3] = {0, 0, -1000};
        At3d_Get_Line_Mesh_Intersection_Point(a, b, 0, hit, 0);  // builds the index outside the timing
        return s;
    }();
    return scene;
}

// One thread's share of the points with single calls; returns the hits.
long shadeSingle(const ShadingScene& s, std::size_t begin, std::size_t end) {
    long hits = 0;
    double v2[3], hit[3];
    for (std::size_t p = begin; p < end; ++p) {
        const double* v1 = s.points[p].data();
        for (const auto& d : s.sun) {
            for (int k = 0; k < 3; ++k) v2[k] = v1[k] + RAY_LENGTH * d[k];
            hits += At3d_Get_Line_Mesh_Intersection_Point(v1, v2, SKIP, hit, 1) > 0;
        }
    }
    return hits;
}

// The same with one batch call per point.
long shadeBatch(const ShadingScene& s, std::size_t begin, std::size_t end) {
    long hits = 0;
    const std::size_t n = s.sun.size();
    std::vector<double> v1s(n * 3), v2s(n * 3), points(n * 3);
    std::vector<int> results(n);
    for (std::size_t p = begin; p < end; ++p) {
        for (std::size_t h = 0; h < n; ++h)
            for (int k = 0; k < 3; ++k) {
                v1s[h * 3 + k] = s.points[p][k];
                v2s[h * 3 + k] = s.points[p][k] + RAY_LENGTH * s.sun[h][k];
            }
        hits += At3d_Get_Line_Mesh_Intersection_Points(static_cast<int>(n), v1s.data(), v2s.data(), SKIP,
                                                       points.data(), results.data(), 1);
    }
    return hits;
}

template <long (*Shade)(const ShadingScene&, std::size_t, std::size_t)>
void runShading(benchmark::State& state) {
    const ShadingScene& s = shadingScene();
    const auto threads = static_cast<std::size_t>(state.range(0));
    long hits = 0;
    for (auto _ : state) {
        std::vector<long> perThread(threads, 0);
        std::vector<std::thread> workers;
        for (std::size_t t = 0; t < threads; ++t)
            workers.emplace_back([&, t] {
                perThread[t] = Shade(s, s.points.size() * t / threads, s.points.size() * (t + 1) / threads);
            });
        for (auto& w : workers) w.join();
        hits = 0;
        for (long h : perThread) hits += h;
    }
    const double segments = static_cast<double>(s.points.size() * s.sun.size());
    state.SetItemsProcessed(static_cast<int64_t>(segments) * state.iterations());
    state.counters["segments"] = segments;
    state.counters["shaded_fraction"] = hits / segments;
    state.counters["triangles"] = static_cast<double>(s.triangles);
}

}  // namespace

BENCHMARK(runShading<shadeSingle>)->Name("Shading/SingleCalls")->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(runShading<shadeBatch>)->Name("Shading/BatchCalls")->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
