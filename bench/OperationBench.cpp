// The price of snapshot undo: one operation run through the editor's protocol (two full
// snapshots of the path set) against a memcpy of the same bytes, and the memory held by an
// undo history of 1,000 operations.

#include "PathEditReversePath.h"
#include "PathEditUndoBuffer.h"
#include "SurfaceIO.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <chrono>
#include <cstring>
#include <vector>

namespace {

Surface& elephant() {
    static Surface surface = [] {
        Surface s;
        McString error, warnings;
        if (!SurfaceIO::read(SURFPATH_MESH_DIR "/elephant.off", s, error, warnings))
            std::fprintf(stderr, "cannot read elephant.off: %s\n", error.c_str());
        return s;
    }();
    return surface;
}

// A path set of `numNodes` vertex nodes in paths of 100 nodes.
struct BenchPathSet {
    explicit BenchPathSet(int numNodes) : pathSet(&elephant()), selection(&pathSet) {
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
    }
    // What one snapshot copies: the node handles and every path's node indices.
    size_t snapshotBytes() const {
        size_t bytes = pathSet.nodes.size() * sizeof(McHandle<SurfaceNode>);
        for (auto const& path : pathSet.paths) bytes += sizeof(path) + path.nodeIndices.size() * sizeof(int);
        return bytes;
    }
    SurfacePathSet pathSet;
    SelectionInfo selection;
};

double secondsOfMemcpy(size_t bytes, int repeats) {
    std::vector<char> from(bytes, 1), to(bytes);
    double best = 1e30;
    for (int r = 0; r < repeats; ++r) {
        const auto start = std::chrono::steady_clock::now();
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

void runProtocol(PathOperation* op) {
    op->initUndo();
    if (op->exec()) op->initRedo();
}

// Counter x_memcpy: the protocol's time over a memcpy of both snapshots' bytes.
void BM_ProtocolAgainstMemcpy(benchmark::State& state) {
    BenchPathSet bench(static_cast<int>(state.range(0)));
    const double memcpySeconds = secondsOfMemcpy(2 * bench.snapshotBytes(), 20);
    double seconds = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        McHandle<PathOperation> op = new PathEditReversePath(&bench.pathSet, &bench.selection, 0);
        runProtocol(op);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    state.counters["nodes"] = static_cast<double>(state.range(0));
    state.counters["x_memcpy"] = seconds / static_cast<double>(state.iterations()) / memcpySeconds;
}
BENCHMARK(BM_ProtocolAgainstMemcpy)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// Counters: bytes held by 1,000 recorded operations on a 100k-node set, and that over the
// bytes of one snapshot (two snapshots per operation make 2,000 the floor).
void BM_UndoHistoryMemory(benchmark::State& state) {
    for (auto _ : state) {
        BenchPathSet bench(100000);
        const size_t before = mallinfo2().uordblks;
        {
            PathEditUndoBuffer buffer;
            for (int i = 0; i < 1000; ++i) {
                auto* op = new PathEditReversePath(&bench.pathSet, &bench.selection, i % bench.pathSet.getNumPaths());
                runProtocol(op);
                buffer.push(op);
            }
            const double held = static_cast<double>(mallinfo2().uordblks - before);
            state.counters["history_MiB"] = held / (1 << 20);
            state.counters["x_snapshot"] = held / static_cast<double>(bench.snapshotBytes());
        }
    }
}
BENCHMARK(BM_UndoHistoryMemory)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();
