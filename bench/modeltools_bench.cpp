// Crop, clean, shift and rotate of a large OBJ in text: a generated
// 5M-triangle terrain (2.5M vertices with texture coordinates, map-size
// coordinates), streamed from disk. Throughput is bytes of input a second;
// peak_MB is the process's peak resident memory after the pass, to set
// against 64 MB + 16 bytes a vertex. Rates are of wall time. Run one benchmark a process
// (--benchmark_filter) for a peak of its own.
#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "geo/Frames.h"
#include "modeltools/CleanModel.h"
#include "modeltools/CropModel.h"
#include "modeltools/ShiftModel.h"

namespace {

constexpr int GRID = 1582;  // cells a side: 2 * 1581^2 = 5.0M triangles
constexpr double EAST = 612000, NORTH = 3612000, CELL = 0.5;

std::string benchFolder() { return (std::filesystem::temp_directory_path() / "zv_modeltools_bench").string() + "/"; }

// Written once, streamed: the generator holds no more than a line.
const std::string& bigModel() {
    static const std::string path = [] {
        const std::string folder = benchFolder();
        std::filesystem::create_directories(folder);
        const std::string file = folder + "Terrain.obj";
        if (std::filesystem::exists(file)) return file;
        std::FILE* out = std::fopen((file + ".tmp").c_str(), "w");
        std::fprintf(out, "mtllib Terrain.mtl\nusemtl ground\n");
        for (int row = 0; row < GRID; ++row)
            for (int col = 0; col < GRID; ++col)
                std::fprintf(out, "v %.6f %.6f %.6f\n", EAST + col * CELL, NORTH + row * CELL,
                             40 + 0.001 * ((row * 7 + col * 13) % 1000));
        for (int row = 0; row < GRID; ++row)
            for (int col = 0; col < GRID; ++col)
                std::fprintf(out, "vt %.6f %.6f\n", double(col) / GRID, double(row) / GRID);
        for (int row = 0; row + 1 < GRID; ++row)
            for (int col = 0; col + 1 < GRID; ++col) {
                const int a = row * GRID + col + 1, b = a + 1, c = a + GRID, d = c + 1;
                std::fprintf(out, "f %d/%d %d/%d %d/%d\nf %d/%d %d/%d %d/%d\n", a, a, b, b, d, d, a, a, d, d, c, c);
            }
        std::fclose(out);
        std::filesystem::rename(file + ".tmp", file);
        return file;
    }();
    return path;
}

void finish(benchmark::State& state) {
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(bigModel()));
    state.SetBytesProcessed(bytes * static_cast<std::int64_t>(state.iterations()));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_MB"] = usage.ru_maxrss / 1024.0;
    state.counters["input_MB"] = bytes / 1048576.0;
}

const double CENTER[3] = {EAST + GRID * CELL / 2, NORTH + GRID * CELL / 2, 40};

void BM_Crop(benchmark::State& state) {
    const std::string& input = bigModel();
    // A quarter of the terrain, local frame.
    const std::vector<double> x = {-200, 0, 0, -200, -200}, y = {-200, -200, 0, 0, -200};
    for (auto _ : state) benchmark::DoNotOptimize(CropObjFile(input, benchFolder() + "Cropped.obj", x, y, CENTER));
    finish(state);
}

void BM_Clean(benchmark::State& state) {
    const std::string& input = bigModel();
    resetFrameState();
    const std::vector<CLEAN> regions = {{1, float(CENTER[0]), float(CENTER[1]), 0, 20},
                                        {2, float(CENTER[0] + 100), float(CENTER[1]), 40.5f, 30}};
    for (auto _ : state) benchmark::DoNotOptimize(CleanObjFile(input, benchFolder() + "Cleaned.obj", regions, CENTER));
    finish(state);
}

void BM_Shift(benchmark::State& state) {
    const std::string& input = bigModel();
    frameState().ShiftXYZ[0] = 1.5;
    for (auto _ : state) benchmark::DoNotOptimize(ExportTheShiftedModel(input, benchFolder() + "Shifted.obj"));
    finish(state);
}

void BM_Rotate(benchmark::State& state) {
    const std::string& input = bigModel();
    for (auto _ : state) benchmark::DoNotOptimize(RotateModel(input, benchFolder() + "Rotated.obj", 30, 1, 2, 3));
    finish(state);
}

}  // namespace

BENCHMARK(BM_Crop)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(BM_Clean)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(BM_Shift)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(BM_Rotate)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK_MAIN();
