#include "PathEditMoveCP.h"

#include "PathEditAddCP.h"
#include "PathEditClosePath.h"

#include <utility>

MC_TYPED_IMPL(PathEditMoveCP, SinglePathOperation)

PathEditMoveCP::PathEditMoveCP(SurfacePathSet* pathSet_, SelectionInfo* selection_, int oldNode_, SurfaceNode* node_,
                               PathConnector* connector_)
    : SinglePathOperation(pathSet_, selection_, nullptr), connector(connector_), oldNode(oldNode_), node(node_) {}

bool PathEditMoveCP::updatePathset() {
    const int k = pathSet->addNode(node);
    for (int p = 0; p < pathSet->getNumPaths(); ++p) {
        // The count is read afresh: every replacement changes it.
        for (int j = 0; j < pathSet->getNumNodesOnPath(p);) {
            if (std::as_const(pathSet->paths)[p].nodeIndices[j] != oldNode) {
                ++j;
                continue;
            }
            j = replaceAt(p, j, k);
            if (j == kFailed) return false;
            if (j == kPathDone) break;
        }
    }
    return true;
}

int PathEditMoveCP::replaceAt(int path, int j, int k) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    const int n = static_cast<int>(indices.size());
    const bool closed = pathSet->isPathClosed(path);
    const int numControlPoints = pathSet->getNumControlPointsOnPath(path);
    if (numControlPoints == 1) {
        indices.clear();
        indices.append(k);
        return kPathDone;
    }
    const int prev = pathSet->getPrevControlPoint(path, j);
    const int next = pathSet->getNextControlPoint(path, j);
    if (numControlPoints == 2 && closed) {
        rebuildTwoPointLoop(path, indices[prev], k);
        return kPathDone;
    }
    if (!pathSet->removeIntermediateNodesFromPath(path, prev, next)) return kFailed;
    if (j == 0 && closed) return replaceSeam(path, k) ? j + 1 : kFailed;
    if (j == n - 1) return replaceEnd(path, k) ? n : kFailed;
    if (j == 0) return replaceStart(path, k) ? j + 1 : kFailed;
    return replaceInner(path, prev, k) ? 1 : kFailed;
}

// The results of the add and the close are not looked at: a loop that cannot be rebuilt
// stays as far as it got.
void PathEditMoveCP::rebuildTwoPointLoop(int path, int other, int k) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    indices.clear();
    indices.append(other);
    McHandle<PathEditAddCP> add = new PathEditAddCP(pathSet, path, k, connector);
    add->exec();
    McHandle<PathEditClosePath> close = new PathEditClosePath(pathSet, path, connector);
    close->exec();
}

// The seam of a closed loop is both its first and its last entry; the removal took both.
bool PathEditMoveCP::replaceSeam(int path, int k) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    indices.insert(0, k);
    if (!connect(path, 0, 1)) return false;
    indices.append(k);
    const int count = static_cast<int>(indices.size());
    return connect(path, count - 2, count - 1);
}

bool PathEditMoveCP::replaceEnd(int path, int k) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    indices.remove(indices.size() - 1);
    indices.append(k);
    const int count = static_cast<int>(indices.size());
    return connect(path, count - 2, count - 1);
}

bool PathEditMoveCP::replaceStart(int path, int k) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    indices.remove(0);
    indices.insert(0, k);
    return connect(path, 0, 1);
}

// The removal took the old control point: the next control point now follows `prev`. On a
// loop whose seam is no control point the removal may wrap past the end and `prev` then lies
// beyond the shortened list; the move fails there instead of writing past the path.
bool PathEditMoveCP::replaceInner(int path, int prev, int k) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    if (prev + 1 > indices.size()) return false;
    indices.insert(prev + 1, k);
    return connect(path, prev + 1, prev + 2) && connect(path, prev, prev + 1);
}

bool PathEditMoveCP::connect(int path, int from, int to) {
    return pathSet->connectSurfaceNodes(path, from, to, connector);
}
