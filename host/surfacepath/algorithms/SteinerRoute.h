#pragma once
// SteinerRoute: a short way between two surface nodes through the graph whose nodes are the
// surface's vertices and `pointsPerEdge` evenly spaced points inside every edge, linked by
// straight segments across each triangle (Lanthier, Maheshwari and Sack's Steiner graph).
// Each point costs the route at most half a point spacing at every edge it crosses, so a few
// points per edge bring it within about a percent of the geodesic (more on skinny triangles),
// where edge paths stray up to 15%: it runs on the same side of nearly every feature as the
// geodesic, and a narrow band around it holds the geodesic.
//
// The search is A* with the straight-line distance to the target as its heuristic, so its
// cost grows with the region around the route. Its per-node arrays are kept between searches
// (cleared by a search counter) and rebuilt only when the surface changes.
//
// Needs the surface's edges and triangles per point.

#include "McDArray.h"
#include "McVec3f.h"

#include <cstdint>
#include <functional>
#include <queue>
#include <utility>
#include <vector>

class Surface;
class SurfaceNode;

class SteinerRoute {
  public:
    explicit SteinerRoute(int pointsPerEdge = 2) : mPointsPerEdge(pointsPerEdge < 0 ? 0 : pointsPerEdge) {}

    // The shortest route in the graph between two nodes of one surface; the corners of the
    // triangles it crosses go to `corners` (with repeats). False when no route joins them.
    bool find(SurfaceNode const* from, SurfaceNode const* to, McDArray<int>& corners);

    // === Queries
    // The last route's length: a path on the surface, so at least the geodesic's.
    double getLength() const { return mLength; }
    int64_t getNumSettled() const { return mNumSettled; }

  private:
    using QueueEntry = std::pair<double, int>;  // estimated total length, graph node

    void prepare(Surface const* surface);
    void setEnds(SurfaceNode const* from, SurfaceNode const* to);
    // Graph nodes: vertices, then the points inside each edge, then the two ends.
    int source() const { return mNumNodes; }
    int target() const { return mNumNodes + 1; }
    int pointOnEdge(int edge, int i) const { return mNumVertices + edge * mPointsPerEdge + i; }
    McVec3f position(int node) const;
    // Calls `visit` with every node a straight segment inside one triangle joins to `node`.
    template <class Visit> void forEachNeighbour(int node, Visit const& visit) const;
    // `visit` with every corner and edge point of triangle t.
    template <class Visit> void forEachPointOf(int triangle, Visit const& visit) const;
    bool touchesTarget(int node) const;
    void relax(int node, int parent, double length);
    bool search();
    void collectCorners(McDArray<int>& corners) const;

    int mPointsPerEdge;
    Surface const* mSurface = nullptr;
    int mNumVertices = 0, mNumNodes = 0;
    int64_t mNumEdges = -1;
    McVec3f mFrom, mTo;
    McDArray<int> mFromTriangles, mToTriangles;

    // Search state: a node is reached where its stamp is 2 * mSearch, settled at 2 * mSearch + 1.
    // Single precision halves the largest array (millions of nodes on a large mesh); the
    // route needs no more.
    std::vector<float> mDistance;
    std::vector<int> mParent;
    std::vector<uint32_t> mStamp;
    uint32_t mSearch = 0;
    std::priority_queue<QueueEntry, std::vector<QueueEntry>, std::greater<QueueEntry>> mQueue;
    double mLength = 0;
    int64_t mNumSettled = 0;
};
