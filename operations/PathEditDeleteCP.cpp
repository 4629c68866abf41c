#include "PathEditDeleteCP.h"

#include "PathEditClosePath.h"

#include <utility>

MC_TYPED_IMPL(PathEditDeleteCP, SinglePathOperation)

PathEditDeleteCP::PathEditDeleteCP(SurfacePathSet* pathSet_, SelectionInfo* selection_, int cpNode_,
                                   PathConnector* connector_, int emptyOnly_)
    : SinglePathOperation(pathSet_, selection_, nullptr),
      cpNode(cpNode_),
      connector(connector_),
      emptyOnly(emptyOnly_) {}

bool PathEditDeleteCP::updatePathset() {
    // Path and node counts are read afresh: every deletion changes them.
    for (int p = 0; p < pathSet->getNumPaths(); ++p) {
        for (int j = 0; j < pathSet->getNumNodesOnPath(p);) {
            if (std::as_const(pathSet->paths)[p].nodeIndices[j] != cpNode) {
                ++j;
                continue;
            }
            j = deleteAt(p, j);
            if (j == kFailed) return false;
            if (j == kRevisitPath) {
                --p;
                break;
            }
        }
    }
    return true;
}

int PathEditDeleteCP::deleteAt(int path, int j) {
    McDArray<int>& indices = pathSet->paths[path].nodeIndices;
    const int n = static_cast<int>(indices.size());
    const bool closed = pathSet->isPathClosed(path);
    if (n == 1) {
        removeSingleNodePath(path);
        return kRevisitPath;
    }
    const int prev = pathSet->getPrevControlPoint(path, j);
    const int next = pathSet->getNextControlPoint(path, j);
    if (!pathSet->removeIntermediateNodesFromPath(path, prev, next)) return kFailed;
    if (j == 0 && closed) {
        // The removal took the seam (first and last entry): join the new ends again.
        McHandle<PathEditClosePath> close = new PathEditClosePath(pathSet, path, connector);
        return close->exec() ? 1 : kFailed;
    }
    if (j == n - 1) {
        indices.remove(indices.size() - 1);
        return n;
    }
    if (j == 0) {
        indices.remove(0);
        return 0;
    }
    // The previous and the next control point are now adjacent.
    return pathSet->connectSurfaceNodes(path, prev, prev + 1, connector) ? 1 : kFailed;
}

void PathEditDeleteCP::removeSingleNodePath(int path) {
    if (emptyOnly == 0)
        pathSet->paths.remove(path);
    else
        pathSet->paths[path].nodeIndices.clear();
}
