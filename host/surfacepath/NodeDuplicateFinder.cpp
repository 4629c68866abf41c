#include "NodeDuplicateFinder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace {

struct Cell {
    int64_t x, y, z;
    bool operator==(Cell const& o) const { return x == o.x && y == o.y && z == o.z; }
};

struct CellHash {
    size_t operator()(Cell const& c) const {
        return size_t(c.x * 73856093LL) ^ size_t(c.y * 19349663LL) ^ size_t(c.z * 83492791LL);
    }
};

// Below this size cells would separate floats that differ in their last bits only.
double minimumCellSize(McDArray<McHandle<SurfaceNode>> const& nodes) {
    float extent = 0;
    for (SurfaceNode* node : nodes) {
        if (!node) continue;
        const McVec3f p = node->getPosition();
        extent = std::max({extent, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
    }
    return 1e-6 * (1.0 + extent);
}

}  // namespace

McDArray<int> NodeDuplicateFinder::findRepresentatives(McDArray<McHandle<SurfaceNode>> const& nodes,
                                                       float tolerance) {
    const int64_t n = nodes.size();
    McDArray<int> representative(n);
    for (int64_t i = 0; i < n; ++i) representative[i] = int(i);
    const double cellSize = std::max<double>(tolerance, minimumCellSize(nodes));
    const double tol2 = double(tolerance) * tolerance;
    std::unordered_map<Cell, std::vector<int>, CellHash> grid;
    grid.reserve(size_t(n));
    for (int64_t i = 0; i < n; ++i) {
        SurfaceNode* node = nodes[i];
        if (!node) continue;
        const McVec3f p = node->getPosition();
        const Cell home{int64_t(std::floor(p.x / cellSize)), int64_t(std::floor(p.y / cellSize)),
                        int64_t(std::floor(p.z / cellSize))};
        int match = -1;
        for (int dx = -1; dx <= 1 && match < 0; ++dx)
            for (int dy = -1; dy <= 1 && match < 0; ++dy)
                for (int dz = -1; dz <= 1 && match < 0; ++dz) {
                    auto it = grid.find(Cell{home.x + dx, home.y + dy, home.z + dz});
                    if (it == grid.end()) continue;
                    for (int j : it->second) {
                        const McVec3f d = nodes[j]->getPosition() - p;
                        if (double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z <= tol2 &&
                            node->getSharedElement(nodes[j]) >= 0) {
                            match = j;
                            break;
                        }
                    }
                }
        if (match >= 0)
            representative[i] = match;
        else
            grid[home].push_back(int(i));
    }
    return representative;
}
