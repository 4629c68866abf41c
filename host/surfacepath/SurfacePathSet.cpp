#include "SurfacePathSet.h"

#include "HxMessage.h"
#include "NodeDuplicateFinder.h"
#include "PathConnector.h"
#include "Surface.h"
#include "SurfaceContours.h"

#include <algorithm>

// === Copies

void SurfacePathSet::copyData(SurfacePathSet const& other, Surface* surface) {
    if (surface) {
        McDArray<McHandle<SurfaceNode>> copies(other.nodes.size());
        for (int64_t i = 0; i < other.nodes.size(); ++i)
            if (other.nodes[i]) copies[i] = other.nodes[i]->copy(surface);
        nodes = std::move(copies);
        setSurface(surface);
    } else if (this != &other) {
        nodes = other.nodes;
    }
    if (this == &other) return;
    paths = other.paths;
    nodeFactory.mode = other.nodeFactory.mode;
    nodeFactory.tolerance = other.nodeFactory.tolerance;
    nodeFactory.backupMode = other.nodeFactory.backupMode;
    nodeFactory.backupTolerance = other.nodeFactory.backupTolerance;
    nodeRemap = other.nodeRemap;
}

void SurfacePathSet::clear() {
    paths.clear();
    nodes.clear();
    nodeRemap.clear();
}

// === Paths

int SurfacePathSet::getNumNodesOnPath(int path) const {
    return isValidPath(path) ? static_cast<int>(paths[path].nodeIndices.size()) : 0;
}

bool SurfacePathSet::getPath(int path, McDArray<int>& nodeIndices) const {
    if (!isValidPath(path)) {
        nodeIndices.clear();
        return false;
    }
    nodeIndices = paths[path].nodeIndices;
    return true;
}

bool SurfacePathSet::isPathClosed(int path) const {
    if (!isValidPath(path)) return false;
    McDArray<int> const& indices = paths[path].nodeIndices;
    return indices.size() > 1 && indices[0] == indices.last();
}

bool SurfacePathSet::isPathEmpty(int path) const { return getNumNodesOnPath(path) == 0; }

float SurfacePathSet::getPathLength(int path) const {
    double length = 0;
    for (int i = 1; i < getNumNodesOnPath(path); ++i) {
        SurfaceNode* a = getSurfaceNode(path, i - 1);
        SurfaceNode* b = getSurfaceNode(path, i);
        if (a && b) length += (b->getPosition() - a->getPosition()).length();
    }
    return static_cast<float>(length);
}

int SurfacePathSet::addPath(McDArray<int> const& nodeIndices) {
    paths.append(SurfacePath{nodeIndices});
    return getNumPaths() - 1;
}

// === Nodes

SurfaceNode* SurfacePathSet::getNode(int nodeIndex) const {
    return nodeIndex >= 0 && nodeIndex < getNumNodes() ? nodes[nodeIndex].ptr() : nullptr;
}

SurfaceNode* SurfacePathSet::getSurfaceNode(int path, int position) const {
    if (position < 0 || position >= getNumNodesOnPath(path)) return nullptr;
    return getNode(paths[path].nodeIndices[position]);
}

int SurfacePathSet::addNode(SurfaceNode* node) {
    nodes.append(node);
    return getNumNodes() - 1;
}

int SurfacePathSet::getNodeIndexOnPath(int path, int nodeIndex) const {
    return isValidPath(path) ? static_cast<int>(paths[path].nodeIndices.findFirst(nodeIndex)) : -1;
}

int SurfacePathSet::getPathForNode(int nodeIndex) const {
    for (int p = 0; p < getNumPaths(); ++p)
        if (paths[p].nodeIndices.findFirst(nodeIndex) >= 0) return p;
    return -1;
}

bool SurfacePathSet::isPureSurfaceVertexPath() const {
    for (SurfaceNode* node : nodes)
        if (!node || node->getKind() != SurfaceNode::VERTEX) return false;
    return true;
}

// === Control points

bool SurfacePathSet::isControlPointAt(McDArray<int> const& indices, int position) const {
    SurfaceNode* node = getNode(indices[position]);
    return node && node->isControlPoint;
}

int SurfacePathSet::getNumControlPointsOnPath(int path) const {
    const int distinct = getNumNodesOnPath(path) - (isPathClosed(path) ? 1 : 0);
    int count = 0;
    for (int i = 0; i < distinct; ++i)
        if (isControlPointAt(paths[path].nodeIndices, i)) ++count;
    return count;
}

int SurfacePathSet::getCPIndexOnPath(int nodeIndex, int path) const {
    const int distinct = getNumNodesOnPath(path) - (isPathClosed(path) ? 1 : 0);
    int ordinal = 0;
    for (int i = 0; i < distinct; ++i) {
        if (!isControlPointAt(paths[path].nodeIndices, i)) continue;
        if (paths[path].nodeIndices[i] == nodeIndex) return ordinal;
        ++ordinal;
    }
    return -1;
}

int SurfacePathSet::getIndexOfIthCP(int i, int path) const {
    const int distinct = getNumNodesOnPath(path) - (isPathClosed(path) ? 1 : 0);
    int ordinal = 0;
    for (int position = 0; position < distinct; ++position) {
        if (!isControlPointAt(paths[path].nodeIndices, position)) continue;
        if (ordinal++ == i) return paths[path].nodeIndices[position];
    }
    return -1;
}

int SurfacePathSet::getPrevControlPoint(int path, int position) const {
    const int n = getNumNodesOnPath(path);
    if (position < 0 || position >= n) return -1;
    McDArray<int> const& indices = paths[path].nodeIndices;
    for (int i = position - 1; i >= 0; --i)
        if (isControlPointAt(indices, i)) return i;
    if (!isPathClosed(path)) return 0;
    // Across the seam: the last entry repeats position 0, so the search goes on before it.
    for (int i = n - 2; i > position; --i)
        if (isControlPointAt(indices, i)) return i;
    return n - 1;
}

int SurfacePathSet::getNextControlPoint(int path, int position) const {
    const int n = getNumNodesOnPath(path);
    if (position < 0 || position >= n) return -1;
    McDArray<int> const& indices = paths[path].nodeIndices;
    for (int i = position + 1; i < n; ++i)
        if (isControlPointAt(indices, i)) return i;
    if (!isPathClosed(path)) return n - 1;
    for (int i = 1; i < position; ++i)
        if (isControlPointAt(indices, i)) return i;
    return 0;
}

// === Editing

bool SurfacePathSet::removeIntermediateNodesFromPath(int path, int from, int to) {
    const int n = getNumNodesOnPath(path);
    if (from < 0 || to < 0 || from >= n || to >= n) return false;
    McDArray<int>& indices = paths[path].nodeIndices;
    const bool closed = isPathClosed(path);
    // On a loop, from == to is the only control point seen from both sides: everything else
    // goes. (Removing nothing there would let callers that delete the control point between
    // them find it again forever.)
    if (from < to || (from == to && !closed)) {
        if (to - from > 1) indices.remove(from + 1, to - from - 1);
        return true;
    }
    if (!closed) return false;
    if (from == to) {
        const int keep = indices[from];
        indices.clear();
        indices.append(keep);
        return true;
    }
    indices.remove(from + 1, n - 1 - from);
    indices.remove(0, to);
    return true;
}

bool SurfacePathSet::connectSurfaceNodes(int path, int from, int to, PathConnector* connector) {
    const int n = getNumNodesOnPath(path);
    if (!connector || from < 0 || from >= to || to >= n) return false;
    SurfaceNode* a = getSurfaceNode(path, from);
    SurfaceNode* b = getSurfaceNode(path, to);
    if (!a || !b) return false;
    McDArray<McHandle<SurfaceNode>> between;
    if (!connector->computeConnection(a, b, between, nullptr)) return false;
    for (SurfaceNode* node : between)
        if (!node) return false;
    McDArray<int> newIndices(between.size());
    for (int64_t i = 0; i < between.size(); ++i) newIndices[i] = addNode(between[i]);
    McDArray<int>& indices = paths[path].nodeIndices;
    if (to - from > 1) indices.remove(from + 1, to - from - 1);
    indices.insert(from + 1, newIndices.size(), newIndices.dataPtr());
    return true;
}

int SurfacePathSet::removeInteriorNodes(int path, int keepControlPoints) {
    if (!isValidPath(path)) return 0;
    McDArray<int>& indices = paths[path].nodeIndices;
    int removed = 0;
    for (int64_t i = 1; i + 1 < indices.size();) {
        SurfaceNode* node = getNode(indices[i]);
        SurfaceNode* prev = getNode(indices[i - 1]);
        SurfaceNode* next = getNode(indices[i + 1]);
        const bool removable = node && prev && next && node->getKind() == SurfaceNode::TRIANGLE &&
                               !(keepControlPoints && node->isControlPoint) && prev->getSharedElement(next) >= 0;
        if (removable) {
            indices.remove(i);
            ++removed;
        } else {
            ++i;
        }
    }
    return removed;
}

int SurfacePathSet::removeDuplicateNodes(float tolerance, int compact) {
    const McDArray<int> representative = NodeDuplicateFinder::findRepresentatives(nodes, tolerance);
    int merged = 0;
    for (int i = 0; i < getNumNodes(); ++i) {
        if (representative[i] == i) continue;
        ++merged;
        if (getNode(i)->isControlPoint) getNode(representative[i])->isControlPoint = 1;
    }
    redirectPathEntries(representative);
    nodeRemap.clear();
    if (compact) compactNodes();
    return merged;
}

void SurfacePathSet::redirectPathEntries(McDArray<int> const& representative) {
    for (SurfacePath& path : paths) {
        McDArray<int>& indices = path.nodeIndices;
        int64_t kept = 0;
        for (int64_t i = 0; i < indices.size(); ++i) {
            const int entry = indices[i] >= 0 && indices[i] < representative.size() ? representative[indices[i]]
                                                                                      : indices[i];
            if (kept > 0 && indices[kept - 1] == entry) continue;
            indices[kept++] = entry;
        }
        indices.resize(kept);
    }
}

void SurfacePathSet::compactNodes() {
    nodeRemap.resize(nodes.size());
    nodeRemap.fill(-1);
    for (SurfacePath const& path : paths)
        for (int index : path.nodeIndices)
            if (index >= 0 && index < nodes.size()) nodeRemap[index] = 0;
    McDArray<McHandle<SurfaceNode>> kept;
    for (int64_t i = 0; i < nodes.size(); ++i) {
        if (nodeRemap[i] < 0) continue;
        nodeRemap[i] = static_cast<int>(kept.size());
        kept.append(nodes[i]);
    }
    nodes = std::move(kept);
    for (SurfacePath& path : paths)
        for (int& index : path.nodeIndices)
            if (index >= 0 && index < nodeRemap.size()) index = nodeRemap[index];
}

// === Checks

bool SurfacePathSet::isConsistent(bool checkSegments, int* badPath) const {
    McString problem;
    return isConsistent(checkSegments, badPath, problem);
}

bool SurfacePathSet::isConsistent(bool checkSegments, int* badPath, McString& problem) const {
    if (badPath) *badPath = -1;
    for (int i = 0; i < getNumNodes(); ++i) {
        McString nodeProblem;
        if (!nodes[i]) {
            problem.printf("node %d is missing", i);
            return false;
        }
        if (getSurface() && nodes[i]->getSurface() != getSurface()) {
            problem.printf("node %d lies on another surface than the path set", i);
            return false;
        }
        if (!nodes[i]->validate(nodeProblem)) {
            problem.printf("node %d: %s", i, nodeProblem.c_str());
            return false;
        }
    }
    for (int p = 0; p < getNumPaths(); ++p) {
        if (!checkPath(p, checkSegments, problem)) {
            if (badPath) *badPath = p;
            return false;
        }
    }
    return true;
}

bool SurfacePathSet::checkPath(int path, bool checkSegments, McString& problem) const {
    McDArray<int> const& indices = paths[path].nodeIndices;
    for (int64_t i = 0; i < indices.size(); ++i) {
        if (indices[i] < 0 || indices[i] >= getNumNodes()) {
            problem.printf("path %d: entry %ld names node %d, but the set has %d nodes", path, long(i), indices[i],
                           getNumNodes());
            return false;
        }
        if (!checkSegments || i == 0) continue;
        // Two equal entries make a closed loop through one node (left when the other control
        // point of a two-point loop is deleted); in any longer path each step must move on.
        if (indices[i] == indices[i - 1] && indices.size() != 2) {
            problem.printf("path %d repeats node %d at positions %ld and %ld", path, indices[i], long(i - 1), long(i));
            return false;
        }
        if (nodes[indices[i - 1]]->getSharedElement(nodes[indices[i]]) < 0) {
            problem.printf("path %d: the nodes at positions %ld and %ld share no triangle", path, long(i - 1), long(i));
            return false;
        }
    }
    return true;
}

// === Sharing

McDArray<int> SurfacePathSet::chosenPaths(McDArray<int> const& paths) const {
    McDArray<int> chosen;
    if (paths.empty()) {
        for (int p = 0; p < getNumPaths(); ++p) chosen.append(p);
        return chosen;
    }
    for (int p : paths)
        if (isValidPath(p)) chosen.append(p);
    std::sort(chosen.begin(), chosen.end());
    chosen.resize(std::unique(chosen.begin(), chosen.end()) - chosen.begin());
    return chosen;
}

int SurfacePathSet::copyOfNode(int nodeIndex, bool atOpenEnd) {
    SurfaceNode* copy = nodes[nodeIndex]->copy();
    if (atOpenEnd) copy->isControlPoint = 1;
    return addNode(copy);
}

void SurfacePathSet::untangle(McDArray<int> const& paths) {
    McDArray<char> used(getNumNodes());
    for (int p : chosenPaths(paths)) {
        McDArray<int>& indices = this->paths[p].nodeIndices;
        const bool closed = isPathClosed(p);
        const int64_t distinct = indices.size() - (closed ? 1 : 0);
        for (int64_t i = 0; i < distinct; ++i) {
            const int node = indices[i];
            if (node < 0 || node >= used.size() || !nodes[node]) continue;
            if (!used[node]) {
                used[node] = 1;
                continue;
            }
            const bool atOpenEnd = !closed && (i == 0 || i == indices.size() - 1);
            indices[i] = copyOfNode(node, atOpenEnd);
        }
        if (closed) indices.last() = indices[0];
    }
}

// === Contours

void SurfacePathSet::importContours(Surface* surface) {
    if (!surface) return;
    if (!getSurface()) setSurface(surface);
    if (surface != getSurface()) {
        HxMessage::getTheMsg()->printf("Cannot import contours: the surface is not the one the paths lie on");
        return;
    }
    surface->createAllEdges(0);
    McDArray<int> endNode(surface->getNumPoints());
    endNode.fill(-1);
    for (McDArray<int> const& contour : SurfaceContours::find(*surface)) {
        McDArray<int> indices(contour.size());
        for (int64_t i = 0; i < contour.size(); ++i) {
            const bool end = i == 0 || i == contour.size() - 1;
            int& shared = endNode[contour[i]];
            if (end && shared >= 0) {
                indices[i] = shared;
                continue;
            }
            SurfaceNode* node = nodeFactory.createVertexNode(contour[i]);
            node->isControlPoint = end;
            indices[i] = addNode(node);
            if (end) shared = indices[i];
        }
        addPath(indices);
    }
}
