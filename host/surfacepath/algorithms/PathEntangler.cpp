#include "PathEntangler.h"

#include "Surface.h"
#include "SurfacePathSet.h"

#include <algorithm>

namespace {

// Below this barycentric weight a crossing lies on the triangle's side (or corner), so that
// crossings on edges come out as edge nodes despite rounding.
constexpr float kOnSide = 1e-5f;
constexpr int kMaxPasses = 8;

}  // namespace

PathEntangler::PathEntangler(SurfacePathSet* pathSet, float tolerance, bool markControlPoints)
    : PathEntangler(pathSet, McDArray<int>(), tolerance, markControlPoints) {}

PathEntangler::PathEntangler(SurfacePathSet* pathSet, McDArray<int> const& paths, float tolerance,
                             bool markControlPoints)
    : mSet(pathSet), mPaths(paths), mTolerance(std::max(tolerance, 1e-6f)), mMarkControlPoints(markControlPoints) {}

bool PathEntangler::compute() {
    if (!mSet || !mSet->getSurface()) return false;
    if (mPaths.empty())
        for (int p = 0; p < mSet->getNumPaths(); ++p) mPaths.append(p);
    // Crossings that lie within the tolerance of each other only meet once they are nodes, so
    // passes repeat until nothing changes; each pass after the first mostly joins nodes.
    bool changed = false;
    for (int pass = 0; pass < kMaxPasses && entangleOnce(); ++pass) changed = true;
    if (mMarkControlPoints) markSharedNodes();
    releaseWorkspace();
    return changed;
}

// Callers keep the entangler while they go on with the set, so its per-segment tables (as
// large as the set itself) go now.
void PathEntangler::releaseWorkspace() {
    mSegments = McDArray<Segment>();
    mPathSegmentStart = McDArray<int>();
    mInsertions = McDArray<Insertion>();
    mParent = McDArray<int>();
    mCreated.clear();
    mMet = McDArray<int>();
}

bool PathEntangler::entangleOnce() {
    mSegments.clear();
    mPathSegmentStart.clear();
    mInsertions.clear();
    mCreated.clear();
    mParent.resize(mSet->getNumNodes());
    for (int i = 0; i < mSet->getNumNodes(); ++i) mParent[i] = i;
    collectSegments();
    joinNodesAtOneVertex();
    compareSegmentsPerTriangle();
    const bool changed = rebuildPaths();
    for (int& met : mMet) met = representative(met);
    return changed;
}

// === Finding the meetings

void PathEntangler::collectSegments() {
    for (int p : mPaths) {
        mPathSegmentStart.append(int(mSegments.size()));
        if (!mSet->isValidPath(p)) continue;
        McDArray<int> const& indices = mSet->paths[p].nodeIndices;
        for (int64_t j = 0; j + 1 < indices.size(); ++j) {
            Segment segment{p, int(j), indices[j], indices[j + 1], {}};
            SurfaceNode* from = mSet->getNode(segment.from);
            SurfaceNode* to = mSet->getNode(segment.to);
            if (from && to && segment.from != segment.to) {
                McDArray<int> fromTriangles, toTriangles;
                from->getTriangles(fromTriangles);
                to->getTriangles(toTriangles);
                for (int t : fromTriangles)
                    if (toTriangles.findFirst(t) >= 0) segment.triangles.append(t);
            }
            mSegments.append(segment);
        }
    }
}

// Paths through one vertex may lie on no common triangle there (crossing edge paths), so
// vertex nodes are joined by their vertex rather than found per triangle.
void PathEntangler::joinNodesAtOneVertex() {
    McDArray<int> nodeAtVertex(mSet->getSurface()->getNumPoints());
    nodeAtVertex.fill(-1);
    for (Segment const& segment : mSegments) {
        for (int node : {segment.from, segment.to}) {
            SurfaceNode* n = mSet->getNode(node);
            if (!n || n->getKind() != SurfaceNode::VERTEX) continue;
            int& first = nodeAtVertex[n->getElement()];
            if (first < 0)
                first = node;
            else if (first != node)
                join(first, node);
        }
    }
}

void PathEntangler::compareSegmentsPerTriangle() {
    const int numTriangles = mSet->getSurface()->getNumTriangles();
    McDArray<int> start(numTriangles + 1);
    for (Segment const& segment : mSegments)
        for (int t : segment.triangles) ++start[t + 1];
    for (int t = 0; t < numTriangles; ++t) start[t + 1] += start[t];
    McDArray<int> bucket(start.last());
    McDArray<int> fill = start;
    for (int64_t s = 0; s < mSegments.size(); ++s)
        for (int t : mSegments[s].triangles) bucket[fill[t]++] = int(s);

    for (int t = 0; t < numTriangles; ++t) {
        for (int i = start[t]; i < start[t + 1]; ++i) {
            for (int j = i + 1; j < start[t + 1]; ++j) {
                Segment const& a = mSegments[bucket[i]];
                Segment const& b = mSegments[bucket[j]];
                if (areNeighbours(a, b)) continue;
                // Segments along an edge lie on both its triangles: compare them in the first.
                int firstCommon = -1;
                for (int x : a.triangles)
                    if (b.triangles.findFirst(x) >= 0 && (firstCommon < 0 || x < firstCommon)) firstCommon = x;
                if (firstCommon == t) meet(t, bucket[i], bucket[j]);
            }
        }
    }
}

bool PathEntangler::areNeighbours(Segment const& a, Segment const& b) const {
    if (a.path != b.path) return false;
    const int distance = std::abs(a.position - b.position);
    const int last = mSet->getNumNodesOnPath(a.path) - 2;
    return distance == 1 || (mSet->isPathClosed(a.path) && distance == last);
}

void PathEntangler::meet(int triangle, int a, int b) {
    TrianglePlane plane(*mSet->getSurface(), triangle);
    if (!plane.isValid()) return;
    auto pointOf = [&](int node) {
        float bary[3];
        mSet->getNode(node)->getBarycentric(triangle, bary);
        return plane.fromBarycentric(bary);
    };
    const int a0 = mSegments[a].from, a1 = mSegments[a].to, b0 = mSegments[b].from, b1 = mSegments[b].to;
    const TrianglePlane::Point pa0 = pointOf(a0), pa1 = pointOf(a1), pb0 = pointOf(b0), pb1 = pointOf(b1);
    const double d = mTolerance * plane.size();
    bool touched = touch(a0, pa0, b, pb0, pb1, d);
    touched |= touch(a1, pa1, b, pb0, pb1, d);
    touched |= touch(b0, pb0, a, pa0, pa1, d);
    touched |= touch(b1, pb1, a, pa0, pa1, d);
    double s, t;
    if (touched || !TrianglePlane::crossing(pa0, pa1, pb0, pb1, s, t)) return;
    float bary[3];
    plane.toBarycentric(TrianglePlane::along(pa0, pa1, s), bary);
    const int node = crossingNode(triangle, bary);
    if (node < 0) return;
    mInsertions.append(Insertion{a, s, node});
    mInsertions.append(Insertion{b, t, node});
    mMet.append(node);
}

bool PathEntangler::touch(int node, TrianglePlane::Point const& point, int segment, TrianglePlane::Point const& q0,
                          TrianglePlane::Point const& q1, double d) {
    Segment const& other = mSegments[segment];
    if (node == other.from || node == other.to) return true;
    const double s = TrianglePlane::closestParameter(point, q0, q1);
    if (TrianglePlane::distance(point, TrianglePlane::along(q0, q1, s)) > d) return false;
    if (TrianglePlane::distance(point, q0) <= d)
        join(other.from, node);
    else if (TrianglePlane::distance(point, q1) <= d)
        join(other.to, node);
    else
        mInsertions.append(Insertion{segment, s, node});
    mMet.append(node);
    return true;
}

// A node on the triangle's corner, side or inside, shared by every crossing at the same point.
int PathEntangler::crossingNode(int triangle, float bary[3]) {
    Surface const& surface = *mSet->getSurface();
    Surface::Triangle const& corners = surface.triangles[triangle];
    int zeros = 0, nonZero = 0, zero = 0;
    for (int k = 0; k < 3; ++k) {
        if (bary[k] < kOnSide) {
            bary[k] = 0;
            ++zeros;
            zero = k;
        } else {
            nonZero = k;
        }
    }
    SurfaceNodeFactory const& factory = mSet->nodeFactory;
    SurfaceNode* candidate = nullptr;
    if (zeros >= 2) {
        candidate = factory.createVertexNode(corners.points[nonZero]);
    } else if (zeros == 1) {
        const int side = (zero + 1) % 3;  // points[side] -> points[side + 1]
        const int edge = corners.edges[side];
        const float weightOfStart = bary[side] / (bary[side] + bary[(side + 1) % 3]);
        const bool forward = edge >= 0 && surface.edges[edge].points[0] == corners.points[side];
        if (edge >= 0) candidate = factory.createEdgeNode(edge, forward ? 1 - weightOfStart : weightOfStart);
    } else {
        candidate = factory.createTriangleNode(triangle, bary[1], bary[2]);
    }
    if (!candidate) return -1;
    std::vector<int>& same = mCreated[{candidate->getKind(), candidate->getElement()}];
    for (int node : same) {
        if (mSet->getNode(node)->isSameSurfacePoint(candidate, kOnSide)) {
            delete candidate;
            return node;
        }
    }
    const int node = mSet->addNode(candidate);
    mParent.append(node);
    same.push_back(node);
    return node;
}

// === Joining coinciding nodes

int PathEntangler::representative(int node) {
    while (mParent[node] != node) {
        mParent[node] = mParent[mParent[node]];
        node = mParent[node];
    }
    return node;
}

// The node that stays must lie on every triangle of the one it replaces, so that the replaced
// node's neighbours on their paths still share a triangle with it.
bool PathEntangler::covers(int node, int other) const {
    McDArray<int> mine, theirs;
    mSet->getNode(node)->getTriangles(mine);
    mSet->getNode(other)->getTriangles(theirs);
    for (int t : theirs)
        if (mine.findFirst(t) < 0) return false;
    return true;
}

void PathEntangler::join(int a, int b) {
    a = representative(a);
    b = representative(b);
    if (a == b) return;
    if (b < a) std::swap(a, b);
    if (covers(a, b))
        mParent[b] = a;
    else if (covers(b, a))
        mParent[a] = b;
    else
        return;  // no node serves both: they stay apart
    mMet.append(a);
}

// === Writing the paths

bool PathEntangler::rebuildPaths() {
    std::sort(mInsertions.begin(), mInsertions.end(), [](Insertion const& x, Insertion const& y) {
        return x.segment != y.segment ? x.segment < y.segment : x.parameter < y.parameter;
    });
    bool changed = false;
    int64_t next = 0;
    for (int64_t k = 0; k < mPaths.size(); ++k) {
        if (!mSet->isValidPath(mPaths[k])) continue;
        McDArray<int> const& old = mSet->paths[mPaths[k]].nodeIndices;
        McDArray<int> entries;
        auto push = [&entries](int node) {
            if (entries.empty() || entries.last() != node) entries.append(node);
        };
        for (int64_t j = 0; j < old.size(); ++j) {
            push(representative(old[j]));
            if (j + 1 == old.size()) break;
            const int segment = mPathSegmentStart[k] + int(j);
            const int to = representative(old[j + 1]);
            for (; next < mInsertions.size() && mInsertions[next].segment == segment; ++next) {
                const int node = representative(mInsertions[next].node);
                if (node != to) push(node);
            }
        }
        if (entries != old) {
            mSet->paths[mPaths[k]].nodeIndices = entries;
            changed = true;
        }
    }
    return changed;
}

void PathEntangler::markSharedNodes() {
    for (int met : mMet) {
        const int node = representative(met);
        SurfaceNode* shared = mSet->getNode(node);
        if (shared->isControlPoint) continue;
        SurfaceNode* flagged = shared->copy();
        flagged->isControlPoint = 1;
        mSet->nodes[node] = flagged;
    }
}
