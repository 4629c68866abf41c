// Benchmarks of the surface path library on a real mesh subdivided to about a million
// triangles, each against a baseline that bounds what the operation could cost:
// - the Dijkstra connector (A*, early exit) for short and long segments against one full
//   single-source pass of the Boost Graph Library's dijkstra_shortest_paths over the same
//   edge graph; counter `of_full_bgl` is the connector's time as a fraction of that pass;
// - copyData of path sets of 10k, 100k and 1M nodes against a memcpy of the same bytes
//   (node handles and path entries); counter `x_memcpy` is the ratio. Copies share the
//   arrays, so the copy alone is cheap; the copy followed by a write to every array pays
//   for the detaches.
// - retriangulating the mesh along paths of 10k edge and triangle nodes (both triangulators)
//   against one copyData of the surface; counter `x_copyData` is the ratio.
// Summary lines at the end state whether a short segment costs under 5% of a full pass and
// whether retriangulating along 10k nodes takes under 1 s.

#include "BenchMeshes.h"
#include "DijkstraConnector.h"
#include "PathTriangulator.h"
#include "PathTriangulatorFactory.h"
#include "Surface.h"
#include "SurfacePathSet.h"
#include "SurfaceVertexNode.h"
#include "WriteEveryArray.h"

#include <benchmark/benchmark.h>
#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/dijkstra_shortest_paths.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Csr = boost::compressed_sparse_row_graph<boost::directedS, boost::no_property, boost::property<boost::edge_weight_t, double>>;

struct Mesh {
    Surface surface;
    std::unique_ptr<Csr> graph;
    double fullPassSeconds = 0;
};

double edgeLength(Surface const& s, int a, int b) {
    const McVec3f d = s.points[a] - s.points[b];
    return std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z);
}

double runFullPass(Csr const& graph, int source) {
    std::vector<double> distance(boost::num_vertices(graph));
    const auto start = Clock::now();
    boost::dijkstra_shortest_paths(
        graph, size_t(source),
        boost::distance_map(boost::make_iterator_property_map(distance.begin(), boost::get(boost::vertex_index, graph))));
    benchmark::DoNotOptimize(distance.data());
    return std::chrono::duration<double>(Clock::now() - start).count();
}

Mesh& mesh() {
    static Mesh* m = [] {
        auto* result = new Mesh;
        BenchMeshes::readDragon(result->surface);
        Surface const& s = result->surface;
        std::vector<std::pair<size_t, size_t>> arcs;
        std::vector<double> weights;
        for (Surface::Edge const& e : s.edges) {
            const double length = edgeLength(s, e.points[0], e.points[1]);
            arcs.emplace_back(e.points[0], e.points[1]);
            arcs.emplace_back(e.points[1], e.points[0]);
            weights.push_back(length);
            weights.push_back(length);
        }
        result->graph = std::make_unique<Csr>(boost::edges_are_unsorted_multi_pass, arcs.begin(), arcs.end(),
                                              weights.begin(), size_t(s.getNumPoints()));
        std::vector<double> times;
        for (int run = 0; run < 5; ++run) times.push_back(runFullPass(*result->graph, run * 1000));
        std::sort(times.begin(), times.end());
        result->fullPassSeconds = times[2];
        return result;
    }();
    return *m;
}

std::vector<std::pair<int, int>> walkPairs(int hops, int count) { return BenchMeshes::walkPairs(mesh().surface, hops, count); }
std::vector<std::pair<int, int>> farPairs(int count) { return BenchMeshes::farPairs(mesh().surface, count); }

std::map<std::string, double> fractions;

void connect(benchmark::State& state, std::vector<std::pair<int, int>> const& pairs, char const* name) {
    Mesh& m = mesh();
    SurfacePathSet set(&m.surface);
    DijkstraConnector dijkstra;
    dijkstra.init(&set, nullptr);
    McDArray<int> vertices;
    size_t next = 0;
    int64_t settled = 0;
    double seconds = 0;
    for (auto _ : state) {
        auto const& pair = pairs[next++ % pairs.size()];
        const auto start = Clock::now();
        if (!dijkstra.findPath(&m.surface, pair.first, pair.second, vertices)) state.SkipWithError("no path");
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
        settled += dijkstra.getNumSettled();
    }
    const double perCall = seconds / double(state.iterations());
    state.counters["of_full_bgl"] = perCall / m.fullPassSeconds;
    state.counters["settled"] = double(settled) / double(state.iterations());
    state.counters["mesh_triangles"] = m.surface.getNumTriangles();
    fractions[name] = perCall / m.fullPassSeconds;
}

void BM_DijkstraShortSegment(benchmark::State& state) { connect(state, walkPairs(400, 64), "short"); }
void BM_DijkstraLongSegment(benchmark::State& state) { connect(state, farPairs(4), "long"); }

void BM_BglFullPass(benchmark::State& state) {
    Mesh& m = mesh();
    int source = 0;
    for (auto _ : state) runFullPass(*m.graph, (source += 9973) % m.surface.getNumPoints());
    state.counters["mesh_triangles"] = m.surface.getNumTriangles();
}

// A path set of n vertex nodes in paths of 1000 nodes.
SurfacePathSet* makePathSet(int n) {
    Mesh& m = mesh();
    auto* set = new SurfacePathSet(&m.surface);
    for (int i = 0; i < n; ++i) set->addNode(new SurfaceVertexNode(&m.surface, i % m.surface.getNumPoints()));
    for (int start = 0; start < n; start += 1000) {
        McDArray<int> indices;
        for (int i = start; i < std::min(n, start + 1000); ++i) indices.append(i);
        set->addPath(indices);
    }
    return set;
}

double memcpySeconds(size_t bytes) {
    std::vector<char> from(bytes, 1), to(bytes);
    std::vector<double> times;
    for (int run = 0; run < 7; ++run) {
        const auto start = Clock::now();
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
        times.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[3];
}

void measureCopyData(benchmark::State& state, bool thenWrite) {
    const int n = int(state.range(0));
    std::unique_ptr<SurfacePathSet> source(makePathSet(n));
    const size_t bytes = size_t(n) * (sizeof(McHandle<SurfaceNode>) + sizeof(int));
    SurfacePathSet copy;
    double seconds = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        copy.copyData(*source, nullptr);
        if (thenWrite) writeEveryArray(copy);
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
        benchmark::DoNotOptimize(std::as_const(copy).nodes.dataPtr());
    }
    state.counters["x_memcpy"] = seconds / double(state.iterations()) / memcpySeconds(bytes);
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
}

void BM_CopyData(benchmark::State& state) { measureCopyData(state, false); }
// A copy followed by a write to each of its arrays: the copies that must detach.
void BM_CopyDataThenWrite(benchmark::State& state) { measureCopyData(state, true); }

void BM_Memcpy(benchmark::State& state) {
    const size_t bytes = size_t(state.range(0)) * (sizeof(McHandle<SurfaceNode>) + sizeof(int));
    std::vector<char> from(bytes, 1), to(bytes);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
}

double surfaceCopySeconds = 0;
std::map<std::string, double> retriangulationSeconds;

void BM_SurfaceCopyData(benchmark::State& state) {
    Surface copy;
    double seconds = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        copy.copyData(mesh().surface);
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
        benchmark::DoNotOptimize(copy.triangles.dataPtr());
    }
    surfaceCopySeconds = seconds / double(state.iterations());
}

// Paths of alternating triangle and edge nodes, each walking into triangles no path visited
// yet, so that none crosses another; `nodes` nodes in all.
void addWalks(SurfacePathSet& set, int nodes) {
    Surface const& s = *set.getSurface();
    std::mt19937 random(5);
    std::uniform_real_distribution<float> unit(0.1f, 0.9f);
    std::vector<char> visited(size_t(s.getNumTriangles()));
    while (set.getNumNodes() < nodes) {
        int t = int(random() % unsigned(s.getNumTriangles()));
        McDArray<int> path;
        for (int step = 0; step < 50 && !visited[size_t(t)]; ++step) {
            visited[size_t(t)] = 1;
            path.append(set.addNode(set.nodeFactory.createTriangleNode(t, unit(random) * 0.5f, unit(random) * 0.5f)));
            const int side = int(random() % 3u), next = s.neighbours[3 * t + side];
            if (next < 0 || visited[size_t(next)]) break;
            path.append(set.addNode(set.nodeFactory.createEdgeNode(s.triangles[t].edges[side], unit(random))));
            t = next;
        }
        set.addPath(path);
    }
}

void retriangulate(benchmark::State& state, char const* name) {
    Surface surface;
    double seconds = 0;
    for (auto _ : state) {
        state.PauseTiming();
        surface.copyData(mesh().surface);
        surface.createNeighbours();  // the walks step across triangle sides
        SurfacePathSet set(&surface);
        addWalks(set, 10000);
        std::unique_ptr<PathTriangulator> triangulator(PathTriangulatorFactory::createPathTriangulator(name));
        triangulator->setTolerance(0.001f);
        triangulator->setPathSet(&set);
        state.ResumeTiming();
        const auto start = Clock::now();
        if (!triangulator->run(false)) state.SkipWithError("the retriangulation failed");
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
    }
    retriangulationSeconds[name] = seconds / double(state.iterations());
    state.counters["x_copyData"] = retriangulationSeconds[name] / surfaceCopySeconds;
    state.counters["mesh_triangles"] = mesh().surface.getNumTriangles();
}

void BM_RetriangulateConstrained(benchmark::State& state) { retriangulate(state, "Constrained Delaunay"); }
void BM_RetriangulateQuality(benchmark::State& state) { retriangulate(state, "Quality Delaunay"); }

}  // namespace

BENCHMARK(BM_BglFullPass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DijkstraShortSegment)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DijkstraLongSegment)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CopyData)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CopyDataThenWrite)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Memcpy)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SurfaceCopyData)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RetriangulateConstrained)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RetriangulateQuality)->Unit(benchmark::kMillisecond)->Iterations(3);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (fractions.count("short")) {
        const double shortFraction = fractions["short"];
        std::printf("summary: mesh of %d triangles; a short Dijkstra segment costs %.3f%% of a full BGL pass "
                    "(target below 5%%: %s); a long one %.1f%%\n",
                    mesh().surface.getNumTriangles(), 100 * shortFraction, shortFraction < 0.05 ? "met" : "MISSED",
                    100 * fractions["long"]);
    }
    for (auto const& [name, seconds] : retriangulationSeconds)
        std::printf("summary: retriangulating (%s) along 10k path nodes on %d triangles takes %.3f s, %.1f copyData "
                    "of the surface (target below 1 s: %s)\n",
                    name.c_str(), mesh().surface.getNumTriangles(), seconds, seconds / surfaceCopySeconds,
                    seconds < 1 ? "met" : "MISSED");
    return 0;
}
