#include "NodeDuplicateFinder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

struct Cell {
    int64_t x, y, z;
    bool operator==(Cell const& o) const { return x == o.x && y == o.y && z == o.z; }
};

// Nodes often sit on a regular lattice (a grid mesh, evenly spaced path nodes), which a plain
// product-and-xor hash folds onto a few buckets; every coordinate is mixed in fully instead.
uint64_t mix(uint64_t v) {
    v += 0x9e3779b97f4a7c15ULL;
    v = (v ^ (v >> 30)) * 0xbf58476d1ce4e5b9ULL;
    v = (v ^ (v >> 27)) * 0x94d049bb133111ebULL;
    return v ^ (v >> 31);
}

struct CellHash {
    size_t operator()(Cell const& c) const {
        return size_t(mix(uint64_t(c.x) ^ mix(uint64_t(c.y) ^ mix(uint64_t(c.z)))));
    }
};

// The cells next to `home` along one axis that can hold a point within `reach` of v: the
// lower one only when v is that close to the cell's lower side, the upper one likewise.
void neighbourRange(double v, int64_t home, double cellSize, double reach, int& low, int& high) {
    const double lowSide = double(home) * cellSize;
    low = v - lowSide <= reach ? -1 : 0;
    high = lowSide + cellSize - v <= reach ? 1 : 0;
}

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

namespace {

// An open-addressing table from cell to the latest representative in it. Slots hold node
// indices only; a slot's cell is the cell of its node, so the table costs 8 bytes per node.
class CellTable {
  public:
    CellTable(McDArray<McVec3f> const& positions, double cellSize) : mPositions(positions), mCellSize(cellSize) {
        int64_t capacity = 16;
        while (capacity < 2 * positions.size()) capacity *= 2;
        mSlots.resize(capacity);
        mSlots.fill(-1);
    }
    Cell cellOf(McVec3f const& p) const {
        return Cell{int64_t(std::floor(p.x / mCellSize)), int64_t(std::floor(p.y / mCellSize)),
                    int64_t(std::floor(p.z / mCellSize))};
    }
    // The slot of `cell`: the one holding a node in it, or the empty one where it would go.
    int& slot(Cell const& cell) {
        const uint64_t mask = uint64_t(mSlots.size() - 1);
        for (uint64_t h = CellHash()(cell) & mask;; h = (h + 1) & mask) {
            int& s = mSlots[int64_t(h)];
            if (s < 0 || cellOf(mPositions[s]) == cell) return s;
        }
    }

  private:
    McDArray<McVec3f> const& mPositions;
    double mCellSize;
    McDArray<int> mSlots;
};

}  // namespace

McDArray<int> NodeDuplicateFinder::findRepresentatives(McDArray<McHandle<SurfaceNode>> const& nodes,
                                                       float tolerance) {
    const int64_t n = nodes.size();
    McDArray<int> representative(n);
    McDArray<McVec3f> positions(n);
    for (int64_t i = 0; i < n; ++i) {
        representative[i] = int(i);
        positions[i] = nodes[i] ? nodes[i]->getPosition() : McVec3f(0, 0, 0);
    }
    // Cells several tolerances wide, so that most points need only their own cell searched.
    const double cellSize = std::max<double>(8.0 * tolerance, minimumCellSize(nodes));
    const double reach = double(tolerance) + 1e-6 * cellSize;
    const double tol2 = double(tolerance) * tolerance;
    CellTable latest(positions, cellSize);
    McDArray<int> previous(n);  // the representative that was latest in the same cell before
    for (int64_t i = 0; i < n; ++i) {
        SurfaceNode* node = nodes[i];
        if (!node) continue;
        const McVec3f p = positions[i];
        const Cell home = latest.cellOf(p);
        int x0, x1, y0, y1, z0, z1;
        neighbourRange(p.x, home.x, cellSize, reach, x0, x1);
        neighbourRange(p.y, home.y, cellSize, reach, y0, y1);
        neighbourRange(p.z, home.z, cellSize, reach, z0, z1);
        // The earliest match wins, wherever the cells put it.
        int match = -1;
        for (int dx = x0; dx <= x1; ++dx)
            for (int dy = y0; dy <= y1; ++dy)
                for (int dz = z0; dz <= z1; ++dz) {
                    for (int j = latest.slot(Cell{home.x + dx, home.y + dy, home.z + dz}); j >= 0; j = previous[j]) {
                        if (match >= 0 && j > match) continue;
                        const McVec3f d = positions[j] - p;
                        if (double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z <= tol2 &&
                            node->getSharedElement(nodes[j]) >= 0)
                            match = j;
                    }
                }
        if (match >= 0) {
            representative[i] = match;
            continue;
        }
        int& cell = latest.slot(home);
        previous[i] = cell;
        cell = int(i);
    }
    return representative;
}
