// Benchmark of one click through the path editor on a real mesh subdivided to about a
// million triangles: a Shift+click (press and release) in the viewer that appends a control
// point to the edited path, with everything it sets off: the pick and click record, the
// Dijkstra connector, the operation's two snapshots, the undo entry and the refresh of the
// displays. Counter `of_render` is one click's time as a fraction of one full render.

#include "BenchScene.h"
#include "HxController.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxResources.h"
#include "HxSurface.h"
#include "HxViewer.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using BenchScene::tcl;

struct Scene {
    HxViewer* viewer = nullptr;
    int numTriangles = 0;
    double renderSeconds = 0;
    // Two screen points on the surface, a little apart, clicked in turn.
    std::string points[2];
};

// A point on the surface near the middle of the window, found by picking outwards.
std::string surfacePointNear(HxViewer* viewer, float fx, float fy) {
    const SbVec2s size = viewer->getGlxSize();
    for (int ring = 0; ring < 40; ++ring) {
        const float sx = size[0] * fx + 5.0f * ring, sy = size[1] * fy;
        if (viewer->pick(sx, sy)) return std::to_string(sx) + " " + std::to_string(sy);
    }
    std::fprintf(stderr, "benchmark set-up failed: no surface near %g %g\n", fx, fy);
    std::exit(1);
}

Scene& scene() {
    static Scene* s = [] {
        auto* result = new Scene;
        HxSurface* surface = BenchScene::loadDragon("dragon");
        HxResources::loadAll();  // the package's editor lists
        result->numTriangles = surface->surface.getNumTriangles();
        tcl("create HxSurfacePathSet paths; paths surface connect dragon");
        tcl("create HxSurfacePathEditor editor; editor attach paths");
        tcl("editor portEditorTypes setIndex 0; editor portStartEditor hit 0; editor fire");
        tcl("viewer 0 setSize 1024 768; viewer 0 setViewing 0; viewer 0 viewAll");
        result->viewer = HxController::getTheController()->viewer(0, 0);
        result->points[0] = surfacePointNear(result->viewer, 0.45f, 0.5f);
        result->points[1] = surfacePointNear(result->viewer, 0.55f, 0.5f);
        tcl("viewer 0 mouse release 1 " + result->points[0] + " -shift");  // the path to extend
        result->renderSeconds = BenchScene::medianRenderSeconds(result->viewer);
        return result;
    }();
    return *s;
}

double clickSeconds = 0;

void BM_ShiftClickAppendsControlPoint(benchmark::State& state) {
    Scene& sc = scene();
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    int i = 0;
    const auto start = BenchScene::Clock::now();
    for (auto _ : state) {
        std::string const& xy = sc.points[++i % 2];
        interp.eval("viewer 0 mouse press 1 %s -shift; viewer 0 mouse release 1 %s -shift", xy.c_str(), xy.c_str());
    }
    clickSeconds = BenchScene::seconds(start) / double(state.iterations());
    state.counters["of_render"] = clickSeconds / sc.renderSeconds;
    state.counters["path_nodes"] = std::atoi(interp.eval("paths getNumNodes"));
}
BENCHMARK(BM_ShiftClickAppendsControlPoint)->Unit(benchmark::kMillisecond)->Iterations(40);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (clickSeconds > 0)
        std::printf("summary: %d triangles, 1024x768; render %.0f ms, one Shift+click through the editor %.1f ms "
                    "= %.2f renders\n",
                    scene().numTriangles, 1000 * scene().renderSeconds, 1000 * clickSeconds,
                    clickSeconds / scene().renderSeconds);
    HxObjectPool::getTheObjectPool().removeAll();
    return 0;
}
