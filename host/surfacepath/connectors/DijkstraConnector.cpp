#include "DijkstraConnector.h"

#include "Surface.h"
#include "SurfacePathSet.h"
#include "SurfaceVertexNode.h"

#include <cmath>
#include <cstring>

MC_TYPED_IMPL_CREATABLE(DijkstraConnector, PathConnector)

namespace {

// The search runs along edges from vertex to vertex: a node inside an edge or a triangle has
// no place in its graph.
McString vertexNodesOnly(McString const& connector, SurfaceNode const* node, bool isStart) {
    const bool isEdge = node->getKind() == SurfaceNode::EDGE;
    return McString::format("the %s connector joins vertex nodes only, and the %s node is %s %s node", connector.c_str(),
                            isStart ? "start" : "end", isEdge ? "an" : "a", isEdge ? "edge" : "triangle");
}

}  // namespace

void DijkstraConnector::init(SurfacePathSet* pathSet, McProgressInterface* progress) {
    PathConnector::init(pathSet, progress);
    if (pathSet && pathSet->getSurface()) ensureGraph(pathSet->getSurface());
}

bool DijkstraConnector::ensureGraph(Surface* surface) {
    if (!surface) return false;
    if (surface->getNumEdges() == 0 && surface->getNumTriangles() > 0) surface->createAllEdges(0);
    if (surface != mGraphSurface || surface->getNumPoints() != mGraphPoints || surface->getNumEdges() != mGraphEdges)
        buildGraph(surface);
    return true;
}

void DijkstraConnector::buildGraph(Surface const* surface) {
    const int numPoints = surface->getNumPoints();
    mOffsets.assign(size_t(numPoints) + 1, 0);
    for (Surface::Edge const& edge : surface->edges) {
        ++mOffsets[size_t(edge.points[0]) + 1];
        ++mOffsets[size_t(edge.points[1]) + 1];
    }
    for (int v = 0; v < numPoints; ++v) mOffsets[size_t(v) + 1] += mOffsets[size_t(v)];
    mTargets.resize(size_t(mOffsets.back()));
    mLengths.resize(size_t(mOffsets.back()));
    std::vector<int> fill(mOffsets.begin(), mOffsets.end() - 1);
    for (Surface::Edge const& edge : surface->edges) {
        const int a = edge.points[0], b = edge.points[1];
        const McVec3f d = surface->points[a] - surface->points[b];
        const double length = std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z);
        mTargets[size_t(fill[a])] = b;
        mLengths[size_t(fill[a]++)] = length;
        mTargets[size_t(fill[b])] = a;
        mLengths[size_t(fill[b]++)] = length;
    }
    mDistance.assign(size_t(numPoints), 0);
    mParent.assign(size_t(numPoints), -1);
    mReached.assign(size_t(numPoints), 0);
    mSettled.assign(size_t(numPoints), 0);
    mSearch = 0;
    mGraphSurface = surface;
    mGraphPoints = numPoints;
    mGraphEdges = surface->getNumEdges();
}

double DijkstraConnector::heuristic(int vertex, int target) const {
    const McVec3f d = mGraphSurface->points[vertex] - mGraphSurface->points[target];
    return std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z);
}

void DijkstraConnector::relax(int vertex, int parent, double length, int target) {
    if (mReached[size_t(vertex)] == mSearch && mDistance[size_t(vertex)] <= length) return;
    mReached[size_t(vertex)] = mSearch;
    mDistance[size_t(vertex)] = length;
    mParent[size_t(vertex)] = parent;
    mQueue.emplace(length + heuristic(vertex, target), vertex);
}

bool DijkstraConnector::search(int from, int to) {
    if (++mSearch == 0) {  // the counter wrapped: old stamps could look current
        std::fill(mReached.begin(), mReached.end(), 0);
        std::fill(mSettled.begin(), mSettled.end(), 0);
        mSearch = 1;
    }
    mQueue = decltype(mQueue)();
    mNumSettled = 0;
    relax(from, -1, 0, to);
    while (!mQueue.empty()) {
        const int v = mQueue.top().second;
        mQueue.pop();
        if (mSettled[size_t(v)] == mSearch) continue;  // a stale, longer entry
        mSettled[size_t(v)] = mSearch;
        ++mNumSettled;
        if (v == to) return true;
        for (int i = mOffsets[size_t(v)]; i < mOffsets[size_t(v) + 1]; ++i) {
            const int w = mTargets[size_t(i)];
            if (mSettled[size_t(w)] != mSearch) relax(w, v, mDistance[size_t(v)] + mLengths[size_t(i)], to);
        }
    }
    return false;
}

bool DijkstraConnector::findPath(Surface* surface, int from, int to, McDArray<int>& vertices) {
    vertices.clear();
    if (!ensureGraph(surface) || from < 0 || to < 0 || from >= mGraphPoints || to >= mGraphPoints) return false;
    if (!search(from, to)) return false;
    for (int v = to; v >= 0; v = mParent[size_t(v)]) vertices.append(v);
    vertices.reverse();
    return true;
}

bool DijkstraConnector::computeConnection(SurfaceNode* from, SurfaceNode* to,
                                          McDArray<McHandle<SurfaceNode>>& between, McProgressInterface*) {
    Surface* surface = startConnection(from, to, between);
    if (!surface) return false;
    SurfaceNode const* inside = from->getKind() != SurfaceNode::VERTEX ? from
                              : to->getKind() != SurfaceNode::VERTEX   ? to
                                                                       : nullptr;
    if (inside) return fail(vertexNodesOnly(getName(), inside, inside == from));
    McDArray<int> vertices;
    if (!findPath(surface, from->getElement(), to->getElement(), vertices)) return false;
    for (int64_t i = 1; i + 1 < vertices.size(); ++i) between.append(new SurfaceVertexNode(surface, vertices[i]));
    return true;
}

int DijkstraConnector::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc == 3 && !strcmp(argv[2], "getNumSettled")) {
        Tcl_SetObjResult(interp, Tcl_NewIntObj(mNumSettled));
        return TCL_OK;
    }
    return PathConnector::parse(interp, argc, argv);
}
