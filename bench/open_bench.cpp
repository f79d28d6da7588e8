// Opening a large OBJ to a scene ready for hit tests. The model comes from
// zv-citygen (scripts/run-benchmarks.sh writes it); its path is in ZV_BENCH_OBJ.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdlib>
#include <string>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"

namespace {

void OpenObjReadyForHitTests(benchmark::State& state) {
    const char* path = std::getenv("ZV_BENCH_OBJ");
    if (!path) {
        state.SkipWithError("set ZV_BENCH_OBJ to a generated OBJ");
        return;
    }
    At3d_Start();
    long faces = 0;
    for (auto _ : state) {
        At3d_Clear();
        if (!At3d_Read(AT3D_READ_OBJ, path, 1)) {
            state.SkipWithError("the model could not be read");
            return;
        }
        At3d_SetObject_XYZCenter();
        double hit[3];
        const double a[3] = {0, 0, 1e4}, b[3] = {0, 0, -1e4};
        At3d_Get_Line_Mesh_Intersection_Point(a, b, 0, hit, 0);  // the index is built here
        faces = 0;
        char name[AT3D_NAME_SIZE];
        for (void* h = At3d_GetNextLayer(nullptr, name); h; h = At3d_GetNextLayer(h, name)) faces += At3d_FaceCount(name);
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["faces"] = static_cast<double>(faces);
    state.counters["peak_MiB"] = usage.ru_maxrss / 1024.0;
}

}  // namespace

BENCHMARK(OpenObjReadyForHitTests)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(3);

BENCHMARK_MAIN();
