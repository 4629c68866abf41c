#pragma once
// BenchMeshes: the real meshes the benchmarks run on, and vertex pairs to connect on them.
// A mesh that cannot be read ends the benchmark with the reader's reason.

#include <utility>
#include <vector>

class Surface;

class BenchMeshes {
  public:
    // A mesh of the mesh folder, by file name.
    static void read(char const* fileName, Surface& surface);
    // The dragon subdivided three times: about 1.3 million triangles.
    static void readDragon(Surface& surface);

    // Vertex pairs `hops` edges apart along a random walk; the same pairs on every call.
    static std::vector<std::pair<int, int>> walkPairs(Surface const& surface, int hops, int count);
    // Pairs of vertices on opposite ends of the mesh's longest extent.
    static std::vector<std::pair<int, int>> farPairs(Surface const& surface, int count);
};
