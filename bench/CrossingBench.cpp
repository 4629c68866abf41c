// Crossing paths at scale, against one copyData of the same set: entangling (100k against
// 1M nodes, which should cost about ten times as much) and splitting at intersections through
// the editor's protocol (target: under 2 s, and a peak under 4x the set's own memory).
//
// The surface is a flat grid of 1000 x 501 points (about 1M triangles; each cell is cut by
// its diagonal from (x, y) to (x + 1, y + 1)). Rows of edge nodes run across it at height
// y + 0.3, one row per cell band, 2,000 nodes each; 32 short columns at x + 0.6 cross the
// first 32 rows, so that there are 1,024 crossings, all inside triangles.

#include "PathEditFixIntersections.h"
#include "PathEntangler.h"
#include "Surface.h"
#include "SurfacePathSet.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <memory>
#include <string>

namespace {

constexpr int kWidth = 1000;   // points per row
constexpr int kHeight = 501;   // points per column
constexpr int kColumns = 32;   // crossing paths
constexpr int kColumnBands = 32;

using Clock = std::chrono::steady_clock;
double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

Surface& grid() {
    static Surface surface = [] {
        Surface s;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) s.points.append(McVec3f(float(x), float(y), 0));
        for (int y = 0; y + 1 < kHeight; ++y)
            for (int x = 0; x + 1 < kWidth; ++x) {
                const int a = x + kWidth * y;
                s.triangles.append(Surface::Triangle(a, a + 1, a + kWidth + 1));
                s.triangles.append(Surface::Triangle(a, a + kWidth + 1, a + kWidth));
            }
        s.buildAllTables();
        return s;
    }();
    return surface;
}

// The two triangles of cell (x, y): below and above its diagonal.
int lowerTriangle(int x, int y) { return 2 * (x + (kWidth - 1) * y); }
int upperTriangle(int x, int y) { return lowerTriangle(x, y) + 1; }

class CrossingSet {
  public:
    explicit CrossingSet(int rows) : pathSet(&grid()) {
        for (int y = 0; y < rows; ++y) addRow(y);
        for (int i = 0; i < kColumns; ++i) addColumn(15 + 31 * i);
    }

    SurfacePathSet pathSet;

  private:
    int edgeNode(int triangle, float x, float y) {
        return pathSet.addNode(pathSet.nodeFactory.createNode(SurfaceNode::EDGE, triangle, McVec3f(x, y, 0)));
    }
    // Across band y: the left side and the diagonal of every cell, then the right border.
    void addRow(int y) {
        const float h = float(y) + 0.3f;
        McDArray<int> path;
        for (int x = 0; x + 1 < kWidth; ++x) {
            path.append(edgeNode(upperTriangle(x, y), float(x), h));
            path.append(edgeNode(upperTriangle(x, y), float(x) + 0.3f, h));
        }
        path.append(edgeNode(lowerTriangle(kWidth - 2, y), float(kWidth - 1), h));
        markEnds(path);
        pathSet.addPath(path);
    }
    // Up column x through the first bands: the bottom side and the diagonal of every cell,
    // then the top side.
    void addColumn(int x) {
        const float v = float(x) + 0.6f;
        McDArray<int> path;
        for (int y = 0; y < kColumnBands; ++y) {
            path.append(edgeNode(lowerTriangle(x, y), v, float(y)));
            path.append(edgeNode(lowerTriangle(x, y), v, float(y) + 0.6f));
        }
        path.append(edgeNode(upperTriangle(x, kColumnBands - 1), v, float(kColumnBands)));
        markEnds(path);
        pathSet.addPath(path);
    }
    void markEnds(McDArray<int> const& path) {
        pathSet.getNode(path[0])->isControlPoint = 1;
        pathSet.getNode(path.last())->isControlPoint = 1;
    }
};

// Sets of 100k and 1M nodes, made once: the benchmarks work on copies.
CrossingSet const& crossingSet(int rows, size_t* heapBytes = nullptr) {
    static std::unique_ptr<CrossingSet> sets[2];
    static size_t bytes[2];
    const int which = rows > 100 ? 1 : 0;
    if (!sets[which]) {
        grid();
        const size_t before = mallinfo2().uordblks;
        sets[which] = std::make_unique<CrossingSet>(rows);
        bytes[which] = mallinfo2().uordblks - before;
    }
    if (heapBytes) *heapBytes = bytes[which];
    return *sets[which];
}

double copyDataSeconds(SurfacePathSet const& set) {
    SurfacePathSet copy;
    const auto start = Clock::now();
    copy.copyData(set, nullptr);
    return secondsSince(start);
}

// Kibibytes of a field of /proc/self/status ("VmRSS", "VmHWM").
double statusMiB(char const* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const std::string key = std::string(field) + ":";
    while (std::getline(status, line))
        if (line.rfind(key, 0) == 0) return std::stod(line.substr(key.size())) / 1024.0;
    return 0;
}
// Makes the peak resident size start again from the present one.
void resetPeakMemory() { std::ofstream("/proc/self/clear_refs") << "5"; }

// Counters: nodes, seconds per entangling, ns_per_node and the ratio to one copyData.
void BM_Entangle(benchmark::State& state) {
    SurfacePathSet const& original = crossingSet(static_cast<int>(state.range(0))).pathSet;
    const double copySeconds = copyDataSeconds(original);
    double seconds = 0;
    for (auto _ : state) {
        state.PauseTiming();
        SurfacePathSet work(&grid());
        work.copyData(original, nullptr);
        state.ResumeTiming();
        const auto start = Clock::now();
        PathEntangler(&work, 0.001f, false).compute();
        seconds += secondsSince(start);
    }
    const double perRun = seconds / double(state.iterations());
    state.counters["nodes"] = original.getNumNodes();
    state.counters["entangle_s"] = perRun;
    state.counters["ns_per_node"] = perRun * 1e9 / original.getNumNodes();
    state.counters["x_copyData"] = perRun / copySeconds;
}
BENCHMARK(BM_Entangle)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond)->Iterations(3);

// Counters: seconds of the split through the protocol (both undo snapshots included), its
// ratio to one copyData, the set's own heap bytes, the resident peak during the split above
// what was resident before it, and that peak over the set's bytes.
void BM_SplitAtIntersections(benchmark::State& state) {
    size_t setBytes = 0;
    SurfacePathSet const& original = crossingSet(500, &setBytes).pathSet;
    const double copySeconds = copyDataSeconds(original);
    double seconds = 0, extraPeakMiB = 0, peakMiB = 0;
    int paths = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto work = std::make_unique<SurfacePathSet>(&grid());
        work->copyData(original, nullptr);
        SelectionInfo selection(work.get());
        malloc_trim(0);
        const double residentBefore = statusMiB("VmRSS");
        resetPeakMemory();
        state.ResumeTiming();
        const auto start = Clock::now();
        {
            McHandle<PathOperation> split = new PathEditFixIntersections(work.get(), &selection, false);
            split->initUndo();
            if (split->exec()) split->initRedo();
        }
        seconds += secondsSince(start);
        state.PauseTiming();
        peakMiB = std::max(peakMiB, statusMiB("VmHWM"));
        extraPeakMiB = std::max(extraPeakMiB, statusMiB("VmHWM") - residentBefore);
        paths = work->getNumPaths();
        work.reset();
        state.ResumeTiming();
    }
    const double perRun = seconds / double(state.iterations());
    const double setMiB = double(setBytes) / (1 << 20);
    state.counters["nodes"] = original.getNumNodes();
    state.counters["paths_after"] = paths;
    state.counters["split_s"] = perRun;
    state.counters["x_copyData"] = perRun / copySeconds;
    state.counters["set_MiB"] = setMiB;
    state.counters["peak_extra_MiB"] = extraPeakMiB;
    state.counters["peak_x_set"] = extraPeakMiB / setMiB;
    state.counters["peak_rss_MiB"] = peakMiB;
}
BENCHMARK(BM_SplitAtIntersections)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
