#include "PathEditOpenPath.h"

#include "HxMessage.h"

#include <algorithm>

MC_TYPED_IMPL(PathEditOpenPath, SinglePathOperation)

PathEditOpenPath::PathEditOpenPath(SurfacePathSet* pathSet_, SelectionInfo* selection_, int pathIndex_,
                                   int nodePosition_, bool setControlPoints_)
    : SinglePathOperation(pathSet_, selection_, nullptr),
      pathIndex(pathIndex_),
      nodePosition(nodePosition_),
      setControlPoints(setControlPoints_) {}

bool PathEditOpenPath::updatePathset() {
    // Past the end there is no node to cut at: the cut would lengthen the path with entries
    // that name no node, and the rotation of a loop would run past its end.
    if (nodePosition < 0 || nodePosition >= pathSet->getNumNodesOnPath(pathIndex)) {
        HxMessage::getTheMsg()->printf("Cannot open path %d at node %d: the path has %d nodes", pathIndex,
                                       nodePosition, pathSet->getNumNodesOnPath(pathIndex));
        return false;
    }
    if (pathSet->isPathClosed(pathIndex))
        openClosedPath();
    else
        cutOpenPath();
    return true;
}

// The node at the cut ends the shortened path and begins the new one.
void PathEditOpenPath::cutOpenPath() {
    McDArray<int>& indices = pathSet->paths[pathIndex].nodeIndices;
    McDArray<int> tail;
    tail.append(indices.size() - nodePosition, indices.dataPtr() + nodePosition);
    indices.resize(nodePosition + 1);
    if (setControlPoints) markControlPoint(indices.last());
    pathSet->addPath(tail);  // may move the path array: `indices` is not used after this
}

void PathEditOpenPath::openClosedPath() {
    McDArray<int>& indices = pathSet->paths[pathIndex].nodeIndices;
    indices.resize(indices.size() - 1);
    std::rotate(indices.begin(), indices.begin() + nodePosition, indices.end());
    if (!setControlPoints) return;
    markControlPoint(indices[0]);
    markControlPoint(indices.last());
}

void PathEditOpenPath::markControlPoint(int nodeIndex) {
    if (SurfaceNode* node = pathSet->getNode(nodeIndex)) node->isControlPoint = 1;
}
