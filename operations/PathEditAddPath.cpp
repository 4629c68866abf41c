#include "PathEditAddPath.h"

MC_TYPED_IMPL(PathEditAddPath, SinglePathOperation)

PathEditAddPath::PathEditAddPath(SurfacePathSet* pathSet_, SelectionInfo* selection_,
                                 McDArray<McHandle<SurfaceNode>> const& nodes, int pathIndex_)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathNodes(nodes), pathIndex(pathIndex_) {}

PathEditAddPath::PathEditAddPath(SurfacePathSet* pathSet_, SelectionInfo* selection_,
                                 McDArray<McHandle<SurfaceNode>> const& nodes)
    : PathEditAddPath(pathSet_, selection_, nodes, -1) {}

PathEditAddPath::PathEditAddPath(SurfacePathSet* pathSet_, SelectionInfo* selection_, SurfaceNode* node,
                                 int pathIndex_)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathIndex(pathIndex_) {
    pathNodes.append(McHandle<SurfaceNode>(node));
}

PathEditAddPath::PathEditAddPath(SurfacePathSet* pathSet_, SelectionInfo* selection_, SurfaceNode* node)
    : PathEditAddPath(pathSet_, selection_, node, -1) {}

bool PathEditAddPath::updatePathset() {
    if (pathNodes.empty()) return false;
    // Only the ends are marked: the caller decides about the nodes between.
    if (!pathNodes[0]) return false;
    pathNodes[0]->isControlPoint = 1;
    if (!pathNodes.last()) return false;
    pathNodes.last()->isControlPoint = 1;

    McDArray<int> nodeIndices;
    if (!appendNodesToTable(nodeIndices)) return false;

    if (pathIndex < 0) {
        pathIndex = pathSet->addPath(nodeIndices);
        return true;
    }
    if (pathSet->paths.size() <= pathIndex) pathSet->paths.resize(pathIndex + 1);
    pathSet->paths[pathIndex].nodeIndices = nodeIndices;
    return true;
}

// Every node gets a new table entry, even one that already stands in the table: the table is
// only ever appended to, so the indices held elsewhere stay valid.
bool PathEditAddPath::appendNodesToTable(McDArray<int>& nodeIndices) {
    for (McHandle<SurfaceNode> const& node : pathNodes) {
        if (!node) return false;
        pathSet->nodes.append(node);
        nodeIndices.append(static_cast<int>(pathSet->nodes.size()) - 1);
    }
    return true;
}
