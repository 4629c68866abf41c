// The price of snapshot undo, for the most common edit: appending a control point to a path.
// - One add-control-point run through the editor's protocol (a snapshot before and after)
//   on sets of 10k, 100k and 1M nodes, with snapshots that share the set's arrays against
//   the same operation with snapshots that copy every array (what a snapshot cost before
//   arrays were shared); counter `ms` per operation, and the ratio in the summary.
// - The memory held by an undo history of 1,000 add-control-points on 100k and 1M nodes;
//   counters `history_MiB` (heap in use), `x_snapshot` (that over the bytes of one full
//   snapshot; full snapshots made it over 2,000) and `resident_MiB` (growth of the resident set).
// A summary at the end states whether the targets are met: under 1 ms and at least 20x
// cheaper than full copies on 1M nodes, a 1,000-operation history on 1M nodes under 200 MB.

#include "DijkstraConnector.h"
#include "PathEditAddCP.h"
#include "PathEditUndoBuffer.h"
#include "SurfaceIO.h"
#include "WriteEveryArray.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <map>

namespace {

Surface& elephant() {
    static Surface surface = [] {
        Surface s;
        McString error, warnings;
        if (!SurfaceIO::read(SURFPATH_MESH_DIR "/elephant.off", s, error, warnings))
            std::fprintf(stderr, "cannot read elephant.off: %s\n", error.c_str());
        s.buildAllTables();
        return s;
    }();
    return surface;
}

// The same operation with each snapshot a full copy, as snapshots were before arrays were
// shared.
class FullCopyAddCP : public PathEditAddCP {
  public:
    using PathEditAddCP::PathEditAddCP;
    void initUndo() override {
        PathEditAddCP::initUndo();
        writeEveryArray(pathSetState[0]);
    }
    void initRedo() override {
        PathEditAddCP::initRedo();
        writeEveryArray(pathSetState[1]);
    }
};

// A path set of `numNodes` vertex nodes in paths of 100 nodes, and a Dijkstra connector on it.
struct BenchPathSet {
    explicit BenchPathSet(int numNodes) : pathSet(&elephant()) {
        const int numPoints = elephant().getNumPoints();
        McDArray<int> path;
        for (int i = 0; i < numNodes; ++i) {
            SurfaceNode* node = pathSet.nodeFactory.createVertexNode(i % numPoints);
            node->isControlPoint = path.empty();
            path.append(pathSet.addNode(node));
            if (path.size() == 100 || i + 1 == numNodes) {
                pathSet.addPath(path);
                path.clear();
            }
        }
        connector.init(&pathSet, nullptr);
    }
    // What one full snapshot copies: the node handles and every path's node indices.
    size_t snapshotBytes() const {
        size_t bytes = pathSet.nodes.size() * sizeof(McHandle<SurfaceNode>);
        for (auto const& path : pathSet.paths) bytes += sizeof(path) + path.nodeIndices.size() * sizeof(int);
        return bytes;
    }
    // A new control point on a vertex next to the path's last one: one edge away.
    SurfaceNode* nextControlPoint(int path) {
        Surface const& s = elephant();
        SurfacePathSet const& set = pathSet;
        const int vertex = set.getNode(set.paths[path].nodeIndices.last())->getElement();
        Surface::Triangle const& t = s.triangles[s.pointTriangles[s.pointTriangleStart[vertex]]];
        const int corner = t.points[0] != vertex ? t.points[0] : t.points[1];
        SurfaceNode* node = pathSet.nodeFactory.createVertexNode(corner);
        node->isControlPoint = 1;
        return node;
    }
    template <class AddCP = PathEditAddCP>
    PathOperation* addControlPoint(int i) {
        const int path = i % pathSet.getNumPaths();
        return new AddCP(&pathSet, path, nextControlPoint(path), &connector);
    }
    SurfacePathSet pathSet;
    DijkstraConnector connector;
};

bool runProtocol(PathOperation* op) {
    op->initUndo();
    if (!op->exec()) return false;
    op->initRedo();
    return true;
}

std::map<int64_t, double> sharedSeconds, fullCopySeconds;

// The operation before stays alive, as it would in the undo history: its after-snapshot
// shares the set's arrays when the next operation starts.
void measureProtocol(benchmark::State& state, bool fullCopies) {
    BenchPathSet bench(static_cast<int>(state.range(0)));
    McHandle<PathOperation> previous;
    double seconds = 0;
    int i = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        McHandle<PathOperation> op = fullCopies ? bench.addControlPoint<FullCopyAddCP>(i) : bench.addControlPoint(i);
        ++i;
        if (!runProtocol(op)) state.SkipWithError("the control point was not added");
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.PauseTiming();
        previous = op;
        state.ResumeTiming();
    }
    const double perOperation = seconds / static_cast<double>(state.iterations());
    state.counters["ms"] = 1e3 * perOperation;
    (fullCopies ? fullCopySeconds : sharedSeconds)[state.range(0)] = perOperation;
}

void BM_AddControlPointSharedSnapshots(benchmark::State& state) { measureProtocol(state, false); }
void BM_AddControlPointFullCopies(benchmark::State& state) { measureProtocol(state, true); }
BENCHMARK(BM_AddControlPointSharedSnapshots)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AddControlPointFullCopies)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

std::map<int64_t, double> historyBytes, historyOverSnapshot, historyResidentBytes;

// Bytes of the heap in use, including the blocks that malloc maps on their own.
double heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double residentBytes() {
    long pages = 0, resident = 0;
    if (FILE* statm = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(statm);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Counters: the heap that 1,000 recorded operations hold, that over the bytes of one full
// snapshot, and the growth of the resident set over the same time as a cross-check.
void BM_UndoHistoryMemory(benchmark::State& state) {
    for (auto _ : state) {
        BenchPathSet bench(static_cast<int>(state.range(0)));
        malloc_trim(0);
        const double heapBefore = heapBytes(), residentBefore = residentBytes();
        PathEditUndoBuffer buffer;
        for (int i = 0; i < 1000; ++i) {
            PathOperation* op = bench.addControlPoint(i);
            if (!runProtocol(op)) state.SkipWithError("the control point was not added");
            buffer.push(op);
        }
        const double held = heapBytes() - heapBefore;
        historyBytes[state.range(0)] = held;
        historyResidentBytes[state.range(0)] = residentBytes() - residentBefore;
        historyOverSnapshot[state.range(0)] = held / static_cast<double>(bench.snapshotBytes());
        state.counters["history_MiB"] = held / (1 << 20);
        state.counters["resident_MiB"] = historyResidentBytes[state.range(0)] / (1 << 20);
        state.counters["x_snapshot"] = historyOverSnapshot[state.range(0)];
    }
}
BENCHMARK(BM_UndoHistoryMemory)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kSecond);

void printSummary() {
    for (auto const& [nodes, shared] : sharedSeconds) {
        if (!fullCopySeconds.count(nodes)) continue;
        std::printf("summary: add-control-point on %lld nodes: %.3f ms with shared snapshots, %.3f ms with full "
                    "copies (%.0fx)\n",
                    static_cast<long long>(nodes), 1e3 * shared, 1e3 * fullCopySeconds[nodes],
                    fullCopySeconds[nodes] / shared);
    }
    for (auto const& [nodes, bytes] : historyBytes)
        std::printf("summary: 1,000 add-control-points on %lld nodes hold %.1f MB of heap (%.1fx one full snapshot of "
                    "%.1f MB); the resident set grew by %.1f MB\n",
                    static_cast<long long>(nodes), bytes / 1e6, historyOverSnapshot[nodes],
                    bytes / historyOverSnapshot[nodes] / 1e6, historyResidentBytes[nodes] / 1e6);
    if (sharedSeconds.count(1000000) && fullCopySeconds.count(1000000) && historyBytes.count(1000000)) {
        const double shared = sharedSeconds[1000000];
        const bool fast = shared < 1e-3 && fullCopySeconds[1000000] >= 20 * shared;
        const bool small = historyBytes[1000000] < 200e6;
        std::printf("summary: on 1M nodes under 1 ms and 20x cheaper than full copies: %s; history under 200 MB: %s\n",
                    fast ? "met" : "MISSED", small ? "met" : "MISSED");
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    printSummary();
    return 0;
}
