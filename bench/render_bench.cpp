// Drawing a large textured site with the renderer: the first frame after
// opening (reading, centring, sending the layers and the texture to the
// card) and the frames after it, at 1280 x 1024. Needs an X server (run it
// under xvfb-run) and a model with its texture in ZV_BENCH_RENDER_OBJ, e.g.
// zv-citygen city.obj --triangles 1000000 --texture 8192.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <cstdlib>
#include <memory>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "scene/render/RenderModes.h"
#include "scene/render/SceneRenderer.h"
#include "scene/render/ViewCapture.h"

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 1024;

// One context, surface and framebuffer for the whole run, as a window has.
struct DrawingTarget {
    QOpenGLContext context;
    QOffscreenSurface surface;
    std::unique_ptr<QOpenGLFramebufferObject> framebuffer;
    std::unique_ptr<render::SceneRenderer> renderer;

    bool open() {
        context.setFormat(render::renderSurfaceFormat());
        if (!context.create()) return false;
        surface.setFormat(context.format());
        surface.create();
        if (!context.makeCurrent(&surface)) return false;
        framebuffer = std::make_unique<QOpenGLFramebufferObject>(kWidth, kHeight, QOpenGLFramebufferObject::Depth);
        renderer = std::make_unique<render::SceneRenderer>(true);
        return framebuffer->bind() && renderer->initialize();
    }
    // Waits for the frame to be finished, as a swap would.
    void draw() {
        renderer->render(engine::engineState(), kWidth, kHeight, 1.0f, render::renderClockMilliseconds());
        context.functions()->glFinish();
    }
};

// Made and destroyed inside main, while the application lives.
std::unique_ptr<DrawingTarget>& targetSlot() {
    static std::unique_ptr<DrawingTarget> t;
    return t;
}

DrawingTarget& target() { return *targetSlot(); }

bool openModel(const char* path) {
    At3d_Clear();
    if (!At3d_Read(AT3D_READ_OBJ, path, 1)) return false;
    At3d_SetObject_XYZCenter();
    At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);
    At3d_WriteFlag(LIBFLAG_BACKFACE_CULL, 1);
    At3d_Size(kWidth, kHeight);
    At3d_ZoomReset();
    At3d_ViewTop();
    At3d_RotateCamera(0, 45, 0, 0);
    return true;
}

void peakMemory(benchmark::State& state) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_MiB"] = usage.ru_maxrss / 1024.0;
}

void OpenToFirstFrame(benchmark::State& state) {
    const char* path = std::getenv("ZV_BENCH_RENDER_OBJ");
    if (!path || !target().open()) {
        state.SkipWithError("set ZV_BENCH_RENDER_OBJ and run under an X server");
        return;
    }
    At3d_Start();
    for (auto _ : state) {
        if (!openModel(path)) {
            state.SkipWithError("the model could not be read");
            return;
        }
        target().draw();
    }
    peakMemory(state);
}

void FrameWhileTurning(benchmark::State& state) {
    if (!target().renderer || !target().renderer->initialized() || At3d_LayerCount() == 0) {
        state.SkipWithError("needs the model of OpenToFirstFrame");
        return;
    }
    for (auto _ : state) {
        At3d_RotateCamera(1, 0, 0, 1);
        target().draw();
    }
    long faces = 0;
    for (const engine::Layer& layer : engine::engineState().layers) faces += long(layer.faceCount());
    state.counters["faces"] = double(faces);
    peakMemory(state);
}

}  // namespace

BENCHMARK(OpenToFirstFrame)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(FrameWhileTurning)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(20);

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    targetSlot() = std::make_unique<DrawingTarget>();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (target().renderer) target().renderer->release();
    target().framebuffer.reset();
    target().context.doneCurrent();
    targetSlot().reset();
    return 0;
}
