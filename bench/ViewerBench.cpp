// Benchmarks of the viewer on a real mesh subdivided to about a million triangles, with
// paths of about 10k nodes drawn on it:
// - one full offscreen render of the scene (the baseline);
// - a pick (ray pick under a screen point, as a click does) at points spread over the
//   surface; counter `of_render` is its time as a fraction of one render;
// - a snapshot to PNG, and the first one after the displays were made (building their
//   geometry included).
// A summary line at the end states whether a pick costs at most 20% of a render and a
// snapshot of the million-triangle surface stays under 2 s.

#include "BenchScene.h"
#include "HxController.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxViewer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using BenchScene::Clock;
using BenchScene::seconds;
using BenchScene::tcl;

struct Scene {
    HxViewer* viewer = nullptr;
    int numTriangles = 0;
    int numPathNodes = 0;
    double firstSnapshotSeconds = 0;
    double renderSeconds = 0;
    std::string file;
};

// Paths between spread-out vertices, filled in by the Dijkstra connector, until the set
// holds 10k nodes.
void addPaths(int numPoints) {
    for (int i = 0; std::atoi(HxInterpreter::getTheInterpreter().eval("paths getNumNodes")) < 10000; ++i) {
        const int a = (i * 7919) % numPoints, b = (i * 7919 + numPoints / 3) % numPoints;
        tcl("paths addPath v:" + std::to_string(a) + " v:" + std::to_string(b));
        tcl("paths connect " + std::to_string(i) + " 0 1 Dijkstra");
    }
}

Scene& scene() {
    static Scene* s = [] {
        auto* result = new Scene;
        HxSurface* surface = BenchScene::loadDragon("dragon");
        result->numTriangles = surface->surface.getNumTriangles();
        tcl("create HxSurfacePathSet paths");
        tcl("paths surface connect dragon");
        addPaths(surface->surface.getNumPoints());
        result->numPathNodes = std::atoi(HxInterpreter::getTheInterpreter().eval("paths getNumNodes"));
        result->file = std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/surfpath-viewer-bench.png";

        const auto start = Clock::now();
        tcl("dragon show");
        tcl("paths show");
        tcl("viewer 0 setSize 1024 768; viewer 0 viewAll");
        tcl("viewer 0 snapshot " + result->file);
        result->firstSnapshotSeconds = seconds(start);
        result->viewer = HxController::getTheController()->viewer(0, 0);

        result->renderSeconds = BenchScene::medianRenderSeconds(result->viewer);
        return result;
    }();
    return *s;
}

double pickSeconds = 0;
double snapshotSeconds = 0;

void BM_Render(benchmark::State& state) {
    HxViewer* viewer = scene().viewer;
    for (auto _ : state) viewer->redraw();
    state.counters["triangles"] = scene().numTriangles;
}
BENCHMARK(BM_Render)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// Picks on a grid over the middle of the window, where the dragon lies.
void BM_Pick(benchmark::State& state) {
    HxViewer* viewer = scene().viewer;
    const SbVec2s size = viewer->getGlxSize();
    int i = 0, hits = 0;
    const auto start = Clock::now();
    for (auto _ : state) {
        const float sx = size[0] * (0.3f + 0.4f * float(i % 17) / 16);
        const float sy = size[1] * (0.3f + 0.4f * float((i / 17) % 13) / 12);
        hits += viewer->pick(sx, sy) != nullptr;
        ++i;
    }
    pickSeconds = seconds(start) / double(state.iterations());
    state.counters["of_render"] = pickSeconds / scene().renderSeconds;
    state.counters["hit_fraction"] = double(hits) / double(state.iterations());
}
BENCHMARK(BM_Pick)->Unit(benchmark::kMillisecond);

void BM_Snapshot(benchmark::State& state) {
    HxViewer* viewer = scene().viewer;
    McString error;
    const auto start = Clock::now();
    for (auto _ : state)
        if (!viewer->snapshot(scene().file.c_str(), error)) state.SkipWithError(error.c_str());
    snapshotSeconds = seconds(start) / double(state.iterations());
    state.counters["path_nodes"] = scene().numPathNodes;
}
BENCHMARK(BM_Snapshot)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (pickSeconds > 0 && snapshotSeconds > 0) {
        const double ratio = pickSeconds / scene().renderSeconds;
        std::printf("summary: %d triangles, %d path nodes, 1024x768; render %.0f ms, pick %.2f ms = %.1f%% of a render "
                    "(target at most 20%%: %s); snapshot %.2f s, first snapshot with the displays built %.2f s "
                    "(target under 2 s: %s)\n",
                    scene().numTriangles, scene().numPathNodes, 1000 * scene().renderSeconds, 1000 * pickSeconds,
                    100 * ratio, ratio <= 0.2 ? "met" : "MISSED", snapshotSeconds, scene().firstSnapshotSeconds,
                    std::max(snapshotSeconds, scene().firstSnapshotSeconds) < 2 ? "met" : "MISSED");
    }
    std::remove(scene().file.c_str());
    HxObjectPool::getTheObjectPool().removeAll();
    return 0;
}
