#include "SteinerRoute.h"

#include "Surface.h"
#include "SurfaceNode.h"

#include <algorithm>
#include <cmath>

namespace {

double distance(McVec3f const& a, McVec3f const& b) {
    const McVec3f d = a - b;
    return std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z);
}

}  // namespace

void SteinerRoute::prepare(Surface const* surface) {
    if (surface == mSurface && surface->getNumPoints() == mNumVertices && surface->getNumEdges() == mNumEdges) return;
    mSurface = surface;
    mNumVertices = surface->getNumPoints();
    mNumEdges = surface->getNumEdges();
    mNumNodes = mNumVertices + int(mNumEdges) * mPointsPerEdge;
    const size_t size = size_t(mNumNodes) + 2;
    mDistance.assign(size, 0);
    mParent.assign(size, -1);
    mStamp.assign(size, 0);
    mSearch = 0;
}

void SteinerRoute::setEnds(SurfaceNode const* from, SurfaceNode const* to) {
    mFrom = from->getPosition();
    mTo = to->getPosition();
    from->getTriangles(mFromTriangles);
    to->getTriangles(mToTriangles);
}

McVec3f SteinerRoute::position(int node) const {
    Surface const& s = *mSurface;
    if (node < mNumVertices) return s.points[node];
    if (node == source()) return mFrom;
    if (node == target()) return mTo;
    const int edge = (node - mNumVertices) / mPointsPerEdge, i = (node - mNumVertices) % mPointsPerEdge;
    const float t = float(i + 1) / float(mPointsPerEdge + 1);
    Surface::Edge const& e = s.edges[edge];
    return s.points[e.points[0]] * (1 - t) + s.points[e.points[1]] * t;
}

template <class Visit>
void SteinerRoute::forEachPointOf(int triangle, Visit const& visit) const {
    Surface::Triangle const& t = mSurface->triangles[triangle];
    for (int i = 0; i < 3; ++i) {
        visit(t.points[i]);
        if (t.edges[i] >= 0)
            for (int k = 0; k < mPointsPerEdge; ++k) visit(pointOnEdge(t.edges[i], k));
    }
}

template <class Visit>
void SteinerRoute::forEachNeighbour(int node, Visit const& visit) const {
    Surface const& s = *mSurface;
    const int k = mPointsPerEdge;
    if (node == source()) {
        for (int t : mFromTriangles) forEachPointOf(t, visit);
        for (int t : mFromTriangles)
            if (mToTriangles.findFirst(t) >= 0) visit(target());
        return;
    }
    if (node < mNumVertices) {
        for (int i = s.pointTriangleStart[node]; i < s.pointTriangleStart[node + 1]; ++i) {
            Surface::Triangle const& t = s.triangles[s.pointTriangles[i]];
            for (int e : t.edges) {
                if (e < 0) continue;
                Surface::Edge const& edge = s.edges[e];
                const bool incident = edge.points[0] == node || edge.points[1] == node;
                if (!incident) {
                    visit(edge.points[0]);
                    visit(edge.points[1]);
                    for (int j = 0; j < k; ++j) visit(pointOnEdge(e, j));
                } else if (k == 0) {
                    visit(edge.points[0] == node ? edge.points[1] : edge.points[0]);
                } else {
                    visit(pointOnEdge(e, edge.points[0] == node ? 0 : k - 1));
                }
            }
        }
        return;
    }
    const int e = (node - mNumVertices) / k, i = (node - mNumVertices) % k;
    Surface::Edge const& edge = s.edges[e];
    visit(i > 0 ? node - 1 : edge.points[0]);
    visit(i < k - 1 ? node + 1 : edge.points[1]);
    for (int n = 0; n < s.getNumTrianglesOfEdge(e); ++n) {
        Surface::Triangle const& t = s.triangles[s.getTrianglesOfEdge(e)[n]];
        for (int side = 0; side < 3; ++side) {
            const int corner = t.points[side], other = t.edges[side];
            if (corner != edge.points[0] && corner != edge.points[1]) visit(corner);
            if (other == e || other < 0) continue;
            for (int j = 0; j < k; ++j) visit(pointOnEdge(other, j));
        }
    }
}

bool SteinerRoute::touchesTarget(int node) const {
    Surface const& s = *mSurface;
    if (node < mNumVertices) {
        for (int t : mToTriangles)
            for (int corner : s.triangles[t].points)
                if (corner == node) return true;
        return false;
    }
    if (node >= mNumNodes) return false;
    const int e = (node - mNumVertices) / mPointsPerEdge;
    for (int t : mToTriangles)
        for (int edge : s.triangles[t].edges)
            if (edge == e) return true;
    return false;
}

void SteinerRoute::relax(int node, int parent, double length) {
    const uint32_t reached = 2 * mSearch;
    if (mStamp[size_t(node)] > reached) return;  // settled
    if (mStamp[size_t(node)] == reached && mDistance[size_t(node)] <= float(length)) return;
    mStamp[size_t(node)] = reached;
    mDistance[size_t(node)] = float(length);
    mParent[size_t(node)] = parent;
    mQueue.emplace(length + distance(position(node), mTo), node);
}

bool SteinerRoute::search() {
    if (++mSearch >= (1u << 31)) {  // stamps would wrap: old marks could look current
        std::fill(mStamp.begin(), mStamp.end(), 0);
        mSearch = 1;
    }
    const uint32_t settled = 2 * mSearch + 1;
    mQueue = decltype(mQueue)();
    mNumSettled = 0;
    relax(source(), -1, 0);
    while (!mQueue.empty()) {
        const int v = mQueue.top().second;
        mQueue.pop();
        if (mStamp[size_t(v)] == settled) continue;  // a stale, longer entry
        mStamp[size_t(v)] = settled;
        ++mNumSettled;
        if (v == target()) return true;
        const McVec3f at = position(v);
        const double reach = double(mDistance[size_t(v)]);
        forEachNeighbour(v, [&](int w) { relax(w, v, reach + distance(at, position(w))); });
        if (v != source() && touchesTarget(v)) relax(target(), v, reach + distance(at, mTo));
    }
    return false;
}

void SteinerRoute::collectCorners(McDArray<int>& corners) const {
    Surface const& s = *mSurface;
    corners.clear();
    for (int node = target(); node >= 0; node = mParent[size_t(node)]) {
        if (node < mNumVertices) {
            corners.append(node);
        } else if (node < mNumNodes) {
            Surface::Edge const& edge = s.edges[(node - mNumVertices) / mPointsPerEdge];
            corners.append(edge.points[0]);
            corners.append(edge.points[1]);
        } else {
            for (int t : node == source() ? mFromTriangles : mToTriangles)
                for (int corner : s.triangles[t].points) corners.append(corner);
        }
    }
}

bool SteinerRoute::find(SurfaceNode const* from, SurfaceNode const* to, McDArray<int>& corners) {
    corners.clear();
    mLength = 0;
    prepare(from->getSurface());
    setEnds(from, to);
    if (!search()) return false;
    mLength = double(mDistance[size_t(target())]);
    collectCorners(corners);
    return true;
}
