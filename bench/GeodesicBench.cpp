// Benchmarks of the geodesic connector and of smoothing:
// - the Geodesic connector (exact shortest path in a band that follows a route through points
//   on the edges) for short and long segments on the dragon subdivided to about 1.3 million
//   triangles;
// - on the elephant, small enough for the exact algorithm over the whole mesh, the connector
//   against CGAL's exact shortest path on every triangle for the same vertex pairs: counter
//   `length_ratio` is the connector's mean length over the exact one, `x_exact` its time as a
//   fraction of the exact computation's;
// - one smoothing pass over paths of 10k nodes on the dragon.
// A summary line at the end states the length ratio, the speed-up over the exact computation
// and whether a short segment on the large mesh takes under 5 ms.

#include "BenchMeshes.h"
#include "DijkstraConnector.h"
#include "GeodesicConnector.h"
#include "PathEditSmooth.h"
#include "Surface.h"
#include "SurfacePathSet.h"
#include "SurfaceShortestPath.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Pairs = std::vector<std::pair<int, int>>;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

Surface& dragon() {
    static Surface* surface = [] {
        auto* s = new Surface;
        BenchMeshes::readDragon(*s);
        return s;
    }();
    return *surface;
}

Surface& elephant() {
    static Surface* surface = [] {
        auto* s = new Surface;
        BenchMeshes::read("elephant.off", *s);
        return s;
    }();
    return *surface;
}

double polylineLength(SurfaceNode* from, McDArray<McHandle<SurfaceNode>> const& between, SurfaceNode* to) {
    double length = 0;
    McVec3f last = from->getPosition();
    for (int64_t i = 0; i <= between.size(); ++i) {
        const McVec3f next = i < between.size() ? between[i]->getPosition() : to->getPosition();
        length += double((next - last).length());
        last = next;
    }
    return length;
}

// What one way of joining a pair of vertices costs and how long its path is.
struct Joined {
    double seconds = 0;
    double length = 0;
};

Joined joinGeodesic(GeodesicConnector& connector, SurfacePathSet& set, std::pair<int, int> pair) {
    McHandle<SurfaceNode> from = set.nodeFactory.createVertexNode(pair.first);
    McHandle<SurfaceNode> to = set.nodeFactory.createVertexNode(pair.second);
    McDArray<McHandle<SurfaceNode>> between;
    const auto start = Clock::now();
    const bool joined = connector.computeConnection(from, to, between, nullptr);
    Joined result{secondsSince(start), joined ? polylineLength(from, between, to) : -1};
    return result;
}

Joined joinExactly(SurfacePathSet& set, std::pair<int, int> pair) {
    McHandle<SurfaceNode> from = set.nodeFactory.createVertexNode(pair.first);
    McHandle<SurfaceNode> to = set.nodeFactory.createVertexNode(pair.second);
    SurfaceShortestPath::Result path;
    McString error;
    const auto start = Clock::now();
    const bool joined = SurfaceShortestPath::compute(from, to, path, error);
    Joined result{secondsSince(start), joined ? polylineLength(from, path.between, to) : -1};
    if (!joined) std::fprintf(stderr, "the exact shortest path failed: %s\n", error.c_str());
    return result;
}

std::map<std::string, double> results;

void connectOnDragon(benchmark::State& state, Pairs const& pairs, char const* name) {
    SurfacePathSet set(&dragon());
    GeodesicConnector connector;
    connector.init(&set, nullptr);
    size_t next = 0;
    double seconds = 0, bandTriangles = 0;
    for (auto _ : state) {
        const Joined joined = joinGeodesic(connector, set, pairs[next++ % pairs.size()]);
        if (joined.length < 0) state.SkipWithError("the connector found no path");
        seconds += joined.seconds;
        bandTriangles += double(connector.getNumBandTriangles());
    }
    state.counters["band_triangles"] = bandTriangles / double(state.iterations());
    state.counters["mesh_triangles"] = dragon().getNumTriangles();
    results[name] = seconds / double(state.iterations());
}

void BM_GeodesicShortSegment(benchmark::State& state) {
    connectOnDragon(state, BenchMeshes::walkPairs(dragon(), 400, 64), "short");
}
void BM_GeodesicLongSegment(benchmark::State& state) { connectOnDragon(state, BenchMeshes::farPairs(dragon(), 2), "long"); }

// Short and long pairs alike, so the ratio covers both.
Pairs elephantPairs() {
    Pairs pairs = BenchMeshes::walkPairs(elephant(), 200, 6);
    for (auto const& pair : BenchMeshes::farPairs(elephant(), 2)) pairs.push_back(pair);
    return pairs;
}

void BM_GeodesicAgainstExactOnElephant(benchmark::State& state) {
    const Pairs pairs = elephantPairs();
    SurfacePathSet set(&elephant());
    GeodesicConnector connector;
    connector.init(&set, nullptr);
    double connectorSeconds = 0, exactSeconds = 0, ratioSum = 0;
    int64_t compared = 0;
    for (auto _ : state) {
        for (auto const& pair : pairs) {
            const Joined band = joinGeodesic(connector, set, pair);
            const Joined exact = joinExactly(set, pair);
            if (band.length < 0 || exact.length <= 0) {
                state.SkipWithError("a pair could not be joined");
                return;
            }
            connectorSeconds += band.seconds;
            exactSeconds += exact.seconds;
            ratioSum += band.length / exact.length;
            ++compared;
        }
    }
    state.counters["length_ratio"] = ratioSum / double(compared);
    state.counters["x_exact"] = connectorSeconds / exactSeconds;
    state.counters["connector_ms"] = 1000 * connectorSeconds / double(compared);
    state.counters["exact_ms"] = 1000 * exactSeconds / double(compared);
    results["length_ratio"] = ratioSum / double(compared);
    results["speedup"] = exactSeconds / connectorSeconds;
}

// Paths of vertex nodes along edge paths between nearby vertices, `nodes` nodes in all.
void addEdgePaths(SurfacePathSet& set, int nodes) {
    DijkstraConnector edgePaths;
    edgePaths.init(&set, nullptr);
    McDArray<int> vertices;
    for (auto const& pair : BenchMeshes::walkPairs(*set.getSurface(), 2000, nodes)) {
        if (set.getNumNodes() >= nodes) break;
        if (!edgePaths.findPath(set.getSurface(), pair.first, pair.second, vertices) || vertices.size() < 3) continue;
        McDArray<int> path;
        for (int vertex : vertices) path.append(set.addNode(set.nodeFactory.createVertexNode(vertex)));
        set.addPath(path);
    }
}

void BM_Smooth10kNodes(benchmark::State& state) {
    double seconds = 0;
    int nodes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        SurfacePathSet set(&dragon());
        addEdgePaths(set, 10000);
        nodes = set.getNumNodes();
        PathEditSmooth smooth(&set);
        state.ResumeTiming();
        const auto start = Clock::now();
        if (!smooth.exec()) state.SkipWithError("smoothing failed");
        seconds += secondsSince(start);
    }
    state.counters["nodes"] = nodes;
    state.counters["mesh_triangles"] = dragon().getNumTriangles();
    results["smooth"] = seconds / double(state.iterations());
}

}  // namespace

BENCHMARK(BM_GeodesicShortSegment)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GeodesicLongSegment)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_GeodesicAgainstExactOnElephant)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_Smooth10kNodes)->Unit(benchmark::kMillisecond)->Iterations(2);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (results.count("length_ratio"))
        std::printf("summary: on the elephant the geodesic connector's paths are %.4f times as long as the exact "
                    "shortest paths over the whole mesh, found %.1f times as fast\n",
                    results["length_ratio"], results["speedup"]);
    if (results.count("short"))
        std::printf("summary: a short geodesic segment on %d triangles takes %.2f ms (target below 5 ms: %s); a long "
                    "one %.1f ms\n",
                    dragon().getNumTriangles(), 1000 * results["short"], results["short"] < 0.005 ? "met" : "MISSED",
                    1000 * results["long"]);
    if (results.count("smooth"))
        std::printf("summary: one smoothing pass over 10k nodes on %d triangles takes %.3f s\n",
                    dragon().getNumTriangles(), results["smooth"]);
    return 0;
}
