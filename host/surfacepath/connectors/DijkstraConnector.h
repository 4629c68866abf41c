#pragma once
// DijkstraConnector (connector name "Dijkstra"): joins two vertex nodes by a shortest path
// along the surface's edges; the intermediate nodes are new vertex nodes.
//
// The search is A* with the straight-line distance to the target as its (consistent)
// heuristic and stops when the target is settled, so its cost grows with the length of the
// path rather than with the size of the mesh. The edge graph is built once per surface; the
// per-vertex search arrays are kept between searches and invalidated by a search counter
// instead of being cleared, so a search touches only the vertices it reaches.
//
// Tcl: `connector getName`, `connector getNumSettled` (vertices settled by the last search).

#include "PathConnector.h"

#include <cstdint>
#include <functional>
#include <queue>
#include <utility>
#include <vector>

class Surface;

class DijkstraConnector : public PathConnector {
    MC_TYPED_HEADER(DijkstraConnector)
    MC_TYPED_CREATABLE
  public:
    DijkstraConnector() = default;

    void init(SurfacePathSet* pathSet, McProgressInterface* progress) override;
    // Fails for nodes that are not vertex nodes or lie on another surface (saying so in
    // getFailure()), and for nodes in different components of the surface.
    bool computeConnection(SurfaceNode* from, SurfaceNode* to, McDArray<McHandle<SurfaceNode>>& between,
                           McProgressInterface* progress) override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;

    // The shortest vertex path on `surface` from one vertex to another, both included.
    bool findPath(Surface* surface, int from, int to, McDArray<int>& vertices);
    int getNumSettled() const { return mNumSettled; }

  protected:
    char const* getCommands() const override { return "getName, getNumSettled"; }

  private:
    using QueueEntry = std::pair<double, int>;  // estimated total length, vertex

    bool ensureGraph(Surface* surface);
    void buildGraph(Surface const* surface);
    double heuristic(int vertex, int target) const;
    // Reaches `vertex` with path length `length` from `parent` if that is shorter.
    void relax(int vertex, int parent, double length, int target);
    bool search(int from, int to);

    // The edge graph in compressed rows: neighbours of v are mTargets[mOffsets[v] .. mOffsets[v + 1]).
    Surface const* mGraphSurface = nullptr;
    int64_t mGraphPoints = -1, mGraphEdges = -1;
    std::vector<int> mOffsets, mTargets;
    std::vector<double> mLengths;

    // Search state, valid for a vertex only where its stamp equals mSearch.
    std::vector<double> mDistance;
    std::vector<int> mParent;
    std::vector<uint32_t> mReached, mSettled;
    uint32_t mSearch = 0;
    std::priority_queue<QueueEntry, std::vector<QueueEntry>, std::greater<QueueEntry>> mQueue;
    int mNumSettled = 0;
};
