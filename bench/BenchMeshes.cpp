#include "BenchMeshes.h"

#include "MeshSubdivision.h"
#include "Surface.h"
#include "SurfaceIO.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

void BenchMeshes::read(char const* fileName, Surface& surface) {
    const std::string path = std::string(SURFPATH_MESH_DIR "/") + fileName;
    McString error, warnings;
    if (!SurfaceIO::read(path.c_str(), surface, error, warnings)) {
        std::fprintf(stderr, "cannot read the benchmark mesh %s: %s\n", path.c_str(), error.c_str());
        std::exit(1);
    }
}

void BenchMeshes::readDragon(Surface& surface) {
    read("ChineseDragon-10kv.off", surface);
    MeshSubdivision::subdivide(surface, 3);
}

std::vector<std::pair<int, int>> BenchMeshes::walkPairs(Surface const& s, int hops, int count) {
    std::vector<std::vector<int>> neighbours(size_t(s.getNumPoints()));
    for (Surface::Edge const& e : s.edges) {
        neighbours[size_t(e.points[0])].push_back(e.points[1]);
        neighbours[size_t(e.points[1])].push_back(e.points[0]);
    }
    std::mt19937 random(17);
    std::vector<std::pair<int, int>> pairs;
    while (int(pairs.size()) < count) {
        const int start = int(random() % unsigned(s.getNumPoints()));
        int v = start;
        for (int h = 0; h < hops && !neighbours[size_t(v)].empty(); ++h)
            v = neighbours[size_t(v)][random() % neighbours[size_t(v)].size()];
        if (v != start) pairs.emplace_back(start, v);
    }
    return pairs;
}

std::vector<std::pair<int, int>> BenchMeshes::farPairs(Surface const& s, int count) {
    McVec3f min, max;
    s.getBoundingBox(min, max);
    const McVec3f extent = max - min;
    const int axis = extent.x >= extent.y && extent.x >= extent.z ? 0 : (extent.y >= extent.z ? 1 : 2);
    std::vector<int> order(size_t(s.getNumPoints()));
    for (size_t i = 0; i < order.size(); ++i) order[i] = int(i);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return s.points[a][axis] < s.points[b][axis]; });
    std::vector<std::pair<int, int>> pairs;
    for (int i = 0; i < count; ++i) pairs.emplace_back(order[size_t(i) * 7], order[order.size() - 1 - size_t(i) * 7]);
    return pairs;
}
