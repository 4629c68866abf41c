#include "PathEditFixIntersections.h"

#include "PathEditMergePaths.h"
#include "PathEntangler.h"

#include <algorithm>

MC_TYPED_IMPL(PathEditFixIntersections, SinglePathOperation)

using SurfacePath = SurfacePathSet::SurfacePath;

namespace {
// Nodes this close (world distance) are one node once the pieces are in place.
constexpr float kDuplicateTolerance = 1e-06f;
constexpr float kDefaultEntangleTolerance = 0.001f;

// Where the walk goes on once everything beyond a vertex is walked: the junction's next
// neighbour, or the second segment of a vertex that the walk went straight through.
struct WalkResume {
    int vertex;
    int64_t nextNeighbour;  // junction: the neighbour to try next
    int secondSegment;      // straight through: the segment not yet taken (-1 at a junction)
};
}  // namespace

PathEditFixIntersections::PathEditFixIntersections(SurfacePathSet* pathSet_, SelectionInfo* selection_, bool smooth_)
    : SinglePathOperation(pathSet_, selection_, nullptr),
      fixedSet(pathSet_),
      smooth(smooth_),
      entangleTolerance(kDefaultEntangleTolerance) {}

PathEditFixIntersections::PathEditFixIntersections(SurfacePathSet* pathSet_, SelectionInfo* selection_,
                                                   McDArray<int> const& selectedPaths_, bool smooth_)
    : SinglePathOperation(pathSet_, selection_, nullptr), fixedSet(pathSet_), selectedPaths(selectedPaths_),
      smooth(smooth_) {}

PathEditFixIntersections::~PathEditFixIntersections() { releaseGraph(); }

bool PathEditFixIntersections::updatePathset() { return selectedPaths.empty() ? fixAllPaths() : fixSelectedPaths(); }

bool PathEditFixIntersections::fixAllPaths() {
    const McDArray<int> closed = closedPaths();
    PathEntangler entangler(fixedSet, entangleTolerance, false);
    entangler.compute();
    McDArray<int> closedStarts;
    for (int path : closed) closedStarts.append(fixedSet->paths[path].nodeIndices[0]);

    buildGraph();
    McDArray<SurfacePath*> newPaths;
    buildNewPathSet(newPaths);
    if (smooth) smoothPaths(newPaths);
    replacePaths(newPaths);
    releaseGraph();
    recloseLoops(closedStarts);
    fixedSet->removeDuplicateNodes(kDuplicateTolerance, 1);
    return true;
}

// The inner run joins the pieces of each selected path again (smooth), whatever this
// instance was asked for, so that a selection keeps its paths whole where they only cross.
bool PathEditFixIntersections::fixSelectedPaths() {
    SurfacePathSet tmp;
    createSelectedPathsSet(tmp);
    PathEditFixIntersections inner(&tmp, nullptr, true);
    inner.exec();
    deleteSelectedPaths();
    copyFixedPathsBack(tmp);
    return true;
}

McDArray<int> PathEditFixIntersections::closedPaths() const {
    McDArray<int> closed;
    for (int path = 0; path < fixedSet->getNumPaths(); ++path)
        if (fixedSet->isPathClosed(path)) closed.append(path);
    return closed;
}

// === Graph

void PathEditFixIntersections::buildGraph() {
    releaseGraph();
    const int64_t n = fixedSet->nodes.size();
    mRecords.reset(new GraphSurfaceNode[n]);
    graphNodes.resize(n);
    for (int64_t i = 0; i < n; ++i) {
        graphNodes[i] = &mRecords[i];
        graphNodes[i]->node = fixedSet->nodes[i].ptr();
    }
    auto addNeighbour = [](GraphSurfaceNode& g, GraphSurfaceNode* other) {
        if (g.neighbours.findFirst(other) < 0) g.neighbours.append(other);
    };
    for (int p = 0; p < fixedSet->getNumPaths(); ++p) {
        McDArray<int> const& indices = fixedSet->paths[p].nodeIndices;
        for (int64_t j = 0; j < indices.size(); ++j) {
            GraphSurfaceNode& v = *graphNodes[indices[j]];
            // Paths are visited in order, so p can only be the last one recorded.
            if (v.pathIndices.empty() || v.pathIndices.last() != p) v.pathIndices.append(p);
            if (j > 0) addNeighbour(v, graphNodes[indices[j - 1]]);
            if (j + 1 < indices.size()) addNeighbour(v, graphNodes[indices[j + 1]]);
        }
    }
    // Neighbours are recorded from both sides, so every entry names a segment not yet walked.
    edgeAvailable.first.resize(n + 1);
    int64_t flags = 0;
    for (int64_t i = 0; i < n; ++i) {
        edgeAvailable.first[i] = flags;
        flags += graphNodes[i]->neighbours.size();
    }
    edgeAvailable.first[n] = flags;
    edgeAvailable.available.resize(flags);
    edgeAvailable.available.fill(1);
}

void PathEditFixIntersections::releaseGraph() {
    graphNodes.clear();
    mRecords.reset();
    edgeAvailable.first.clear();
    edgeAvailable.available.clear();
}

int64_t PathEditFixIntersections::flagOf(int from, int to) const {
    const int64_t slot = graphNodes[from]->neighbours.findFirst(graphNodes[to]);
    return slot < 0 ? -1 : edgeAvailable.first[from] + slot;
}

bool PathEditFixIntersections::isEdgeAvailable(int from, int to) const {
    const int64_t flag = flagOf(from, to);
    return flag >= 0 && edgeAvailable.available[flag];
}

void PathEditFixIntersections::useEdge(int from, int to) {
    for (int64_t flag : {flagOf(from, to), flagOf(to, from)})
        if (flag >= 0) edgeAvailable.available[flag] = 0;
}

void PathEditFixIntersections::buildNewPathSet(McDArray<SurfacePath*>& newPaths) {
    mNextStartPath = 0;
    while (GraphSurfaceNode* start = getUnmarkedStartNode()) {
        McDArray<int> current;
        current.append(indexOf(start));
        dfs(start, current, newPaths);
    }
}

PathEditFixIntersections::GraphSurfaceNode* PathEditFixIntersections::getUnmarkedStartNode() {
    for (; mNextStartPath < fixedSet->getNumPaths(); ++mNextStartPath) {
        McDArray<int> const& indices = fixedSet->paths[mNextStartPath].nodeIndices;
        if (indices.empty() || indices[0] >= graphNodes.size()) continue;
        GraphSurfaceNode* first = graphNodes[indices[0]];
        if (!first->neighbours.empty() && !first->marked) return first;
    }
    return nullptr;
}

void PathEditFixIntersections::emit(McDArray<int> const& current, McDArray<SurfacePath*>& newPaths) const {
    if (current.size() >= 2) newPaths.append(createNewSurfacePath(current));
}

// A depth-first walk that ends a piece wherever the paths entering a vertex are not exactly
// those leaving it. It visits in the order of the recursion "enter a vertex, walk on, then
// take what is left at the vertex", but keeps the pending rests on its own stack: a walk along
// a path of a million nodes would otherwise be a million calls deep.
void PathEditFixIntersections::dfs(GraphSurfaceNode* g, McDArray<int>& current, McDArray<SurfacePath*>& newPaths) {
    McDArray<WalkResume> pending;
    while (g || !pending.empty()) {
        if (!g) {
            WalkResume& top = pending.last();
            GraphSurfaceNode* vertex = graphNodes[top.vertex];
            if (top.secondSegment < 0) {
                while (!g && top.nextNeighbour < vertex->neighbours.size()) {
                    const int next = indexOf(vertex->neighbours[top.nextNeighbour++]);
                    current.clear();
                    if (!isEdgeAvailable(top.vertex, next)) continue;
                    useEdge(top.vertex, next);
                    current = {top.vertex, next};
                    g = graphNodes[next];
                }
                if (!g) pending.remove(pending.size() - 1);
                continue;
            }
            const int from = top.vertex, second = top.secondSegment;
            pending.remove(pending.size() - 1);
            if (!isEdgeAvailable(from, second)) continue;
            useEdge(from, second);
            current = {from, second};
            g = graphNodes[second];
            continue;
        }

        const int gi = indexOf(g);
        if (g->marked) {
            emit(current, newPaths);
            g = nullptr;
            continue;
        }
        g->marked = true;
        if (g->neighbours.size() > 2) {
            emit(current, newPaths);
            pending.append(WalkResume{gi, 0, -1});
            g = nullptr;
            continue;
        }
        int a = -1, b = -1;
        for (GraphSurfaceNode* neighbour : g->neighbours) {
            const int ni = indexOf(neighbour);
            if (!isEdgeAvailable(gi, ni)) continue;
            if (a == -1)
                a = ni;
            else
                b = ni;
        }
        if (a == -1) {
            emit(current, newPaths);
            g = nullptr;
            continue;
        }
        if (!pathEndsHere(g, graphNodes[a]) && !pathStartsHere(current)) {
            useEdge(gi, a);
            current.append(a);
            if (b != -1) pending.append(WalkResume{gi, -1, b});
        } else {
            emit(current, newPaths);
            current.clear();
            if (!isEdgeAvailable(gi, a)) {
                g = nullptr;
                continue;
            }
            useEdge(gi, a);
            current = {gi, a};
        }
        g = graphNodes[a];
    }
}

// === Where paths begin and end

bool PathEditFixIntersections::pathEndsHere(GraphSurfaceNode* g, GraphSurfaceNode* next) const {
    for (int path : g->pathIndices)
        if (next->pathIndices.findFirst(path) < 0) return true;
    return false;
}

bool PathEditFixIntersections::pathStartsHere(McDArray<int> const& current) const {
    if (current.size() < 2) return false;
    return pathEndsHere(graphNodes[current.last()], graphNodes[current[current.size() - 2]]);
}

bool PathEditFixIntersections::startNewPathAt(GraphSurfaceNode* a, GraphSurfaceNode* b) const {
    return pathEndsHere(b, a);
}

bool PathEditFixIntersections::isPathInArray(SurfacePath* path, McDArray<SurfacePath*> const& array) const {
    McDArray<int> const& p = path->nodeIndices;
    if (p.size() < 2) return false;
    for (SurfacePath const* entry : array) {
        McDArray<int> const& e = entry->nodeIndices;
        if (e.size() < 2) continue;
        if (e[0] == p[0] && e[1] == p[1]) return true;
        if (e[0] == p.last() && e[1] == p[p.size() - 2]) return true;
    }
    return false;
}

SurfacePath* PathEditFixIntersections::createNewSurfacePath(McDArray<int> const& nodes) const {
    SurfacePath* path = new SurfacePath;
    path->nodeIndices = nodes;
    return path;
}

// === Joining pieces of one input path

int PathEditFixIntersections::getLongestPath(McBitfield const& done) const {
    int longest = -1;
    for (int path = 0; path < fixedSet->getNumPaths(); ++path) {
        if (path < done.size() && done[path]) continue;
        if (longest < 0 || fixedSet->getNumNodesOnPath(path) > fixedSet->getNumNodesOnPath(longest)) longest = path;
    }
    return longest;
}

// Input paths are served longest first, each collecting its own pieces, until a pass joins
// nothing more.
void PathEditFixIntersections::smoothPaths(McDArray<SurfacePath*>& newPaths) {
    int64_t countBefore = -1;
    while (countBefore != newPaths.size()) {
        countBefore = newPaths.size();
        McBitfield done(fixedSet->getNumPaths(), false);
        McDArray<SurfacePath*> patched;
        for (int i = 0; i < fixedSet->getNumPaths(); ++i) {
            const int path = getLongestPath(done);
            if (path < 0) break;
            patchPaths(path, newPaths, patched);
            done.set(path);
        }
        newPaths.appendArray(patched);
    }
}

void PathEditFixIntersections::patchPaths(int pathIndex, McDArray<SurfacePath*>& newPaths,
                                          McDArray<SurfacePath*>& patched) {
    if (newPaths.empty() || !fixedSet->isValidPath(pathIndex)) return;
    McDArray<int> const& original = fixedSet->paths[pathIndex].nodeIndices;
    mOnPath.resize(fixedSet->nodes.size(), false);
    for (int node : original) mOnPath.set(node);

    // Pieces keep their first two nodes until they are joined, so which of them belong to the
    // path is settled once; joined ones leave a gap that is closed at the end.
    McDArray<int64_t> candidates;
    for (int64_t k = 0; k < newPaths.size(); ++k)
        if (belongsToMarkedPath(newPaths[k])) candidates.append(k);
    if (!candidates.empty()) {
        SurfacePath* seed = newPaths[candidates[0]];
        newPaths[candidates[0]] = nullptr;
        candidates.remove(0);
        for (int64_t c = 0; c < candidates.size();) {
            SurfacePath*& piece = newPaths[candidates[c]];
            if (!joinIfTouching(*seed, *piece)) {
                ++c;
                continue;
            }
            delete piece;
            piece = nullptr;
            candidates.remove(c);
            c = 0;
        }
        if (seed->nodeIndices.size() >= 2)
            patched.append(seed);
        else
            delete seed;
        newPaths.resize(std::remove(newPaths.begin(), newPaths.end(), nullptr) - newPaths.begin());
    }
    for (int node : original) mOnPath.unset(node);
}

bool PathEditFixIntersections::belongsToMarkedPath(SurfacePath const* piece) const {
    McDArray<int> const& p = piece->nodeIndices;
    return p.size() >= 2 && mOnPath[p[1]] && mOnPath[p[0]];
}

// Orients the two so that the seed's last node is the piece's first, then appends the piece.
bool PathEditFixIntersections::joinIfTouching(SurfacePath& seed, SurfacePath& piece) {
    McDArray<int>& s = seed.nodeIndices;
    McDArray<int>& t = piece.nodeIndices;
    if (t[0] == s[0]) {
        s.reverse();
    } else if (t.last() == s.last()) {
        t.reverse();
    } else if (t.last() == s[0]) {
        s.reverse();
        t.reverse();
    } else if (t[0] != s.last()) {
        return false;
    }
    s.resize(s.size() - 1);
    s.appendArray(t);
    return true;
}

// === Writing the result

void PathEditFixIntersections::replacePaths(McDArray<SurfacePath*>& newPaths) {
    fixedSet->paths.clear();
    for (SurfacePath* path : newPaths) {
        markControlPoint(path->nodeIndices[0]);
        markControlPoint(path->nodeIndices.last());
        fixedSet->paths.append(*path);
        delete path;
    }
    newPaths.clear();
}

// A node that others hold too (undo snapshots share the table's nodes) is replaced by a flagged
// copy, so that undo brings back its flag as it was.
void PathEditFixIntersections::markControlPoint(int nodeIndex) {
    SurfaceNode* node = fixedSet->getNode(nodeIndex);
    if (!node || node->isControlPoint) return;
    if (node->refCount() > 1) {
        node = node->copy();
        fixedSet->nodes[nodeIndex] = node;
    }
    node->isControlPoint = 1;
}

// The walk cuts a loop at its start node; where exactly two pieces end there, they are one loop
// again. (A loop that nothing crossed is one piece, listed twice, and the merge drops it.)
void PathEditFixIntersections::recloseLoops(McDArray<int> closedStarts) {
    for (int64_t k = 0; k < closedStarts.size(); ++k) {
        const int start = closedStarts[k];
        McDArray<int> atStart;
        for (int path = 0; path < fixedSet->getNumPaths(); ++path) {
            McDArray<int> const& indices = fixedSet->paths[path].nodeIndices;
            if (indices.empty()) continue;
            if (indices[0] == start) atStart.append(path);
            if (indices.last() == start) atStart.append(path);
        }
        if (atStart.size() != 2) continue;
        PathEditMergePaths merge(fixedSet, nullptr, atStart);
        merge.exec();
        // The merge renumbers the node table; the starts still to come follow it.
        McDArray<int> const& remap = fixedSet->nodeRemap;
        for (int64_t later = k + 1; later < closedStarts.size(); ++later) {
            int& s = closedStarts[later];
            if (!remap.empty()) s = s >= 0 && s < remap.size() ? remap[s] : -1;
        }
    }
}

// === The selected-only form

void PathEditFixIntersections::createSelectedPathsSet(SurfacePathSet& tmp) {
    tmp.nodes = fixedSet->nodes;
    tmp.setSurface(fixedSet->getSurface());
    tmp.nodeFactory.mode = fixedSet->nodeFactory.mode;
    tmp.nodeFactory.tolerance = fixedSet->nodeFactory.tolerance;
    for (int path : selectedPaths)
        if (fixedSet->isValidPath(path)) tmp.paths.append(fixedSet->paths[path]);
}

void PathEditFixIntersections::deleteSelectedPaths() {
    std::sort(selectedPaths.begin(), selectedPaths.end());
    for (int64_t k = selectedPaths.size() - 1; k >= 0; --k)
        if (fixedSet->isValidPath(selectedPaths[k])) fixedSet->paths.remove(selectedPaths[k]);
}

void PathEditFixIntersections::copyFixedPathsBack(SurfacePathSet& tmp) {
    const int offset = fixedSet->getNumNodes();
    fixedSet->nodes.appendArray(tmp.nodes);
    for (SurfacePath& path : tmp.paths) {
        for (int& index : path.nodeIndices) index += offset;
        fixedSet->paths.append(path);
    }
}
