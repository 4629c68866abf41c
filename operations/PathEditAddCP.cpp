#include "PathEditAddCP.h"

#include "HxMessage.h"
#include "NodeTableSearch.h"

MC_TYPED_IMPL(PathEditAddCP, SinglePathOperation)

PathEditAddCP::PathEditAddCP(SurfacePathSet* pathSet_, int pathIndex_, int nodeIndex, PathConnector* connector_)
    : SinglePathOperation(pathSet_, nullptr, nullptr),
      pathIndex(pathIndex_),
      node(pathSet_->getNode(nodeIndex)),
      connector(connector_),
      isNewNode(false) {}

PathEditAddCP::PathEditAddCP(SurfacePathSet* pathSet_, int pathIndex_, SurfaceNode* node_, PathConnector* connector_)
    : SinglePathOperation(pathSet_, nullptr, nullptr),
      pathIndex(pathIndex_),
      node(node_),
      connector(connector_),
      isNewNode(true) {}

bool PathEditAddCP::exec() {
    // Callers pass a path index below the path count; a negative one is refused here
    // rather than written through.
    if (!pathSet || pathIndex < 0 || pathIndex + 1 > pathSet->getNumPaths()) return false;
    if (pathSet->isPathClosed(pathIndex)) return false;
    if (!node) return false;
    node->isControlPoint = 1;
    const int k = nodeTableIndex();
    McDArray<int>& indices = pathSet->paths[pathIndex].nodeIndices;
    if (k < pathSet->getNumNodes()) indices.append(k);
    const int n = static_cast<int>(indices.size());
    if (n == 1) return true;  // the first point of a path needs no segment
    if (pathSet->connectSurfaceNodes(pathIndex, n - 2, n - 1, connector)) return true;
    HxMessage::getTheMsg()->printf("Warning: cannot connect points");
    indices.remove(indices.size() - 1);
    return false;
}

int PathEditAddCP::nodeTableIndex() {
    if (!isNewNode) return NodeTableSearch::indexOf(*pathSet, node);
    return pathSet->addNode(node);
}
