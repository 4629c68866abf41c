#include "PathEditInsertCP.h"

MC_TYPED_IMPL(PathEditInsertCP, SinglePathOperation)

PathEditInsertCP::PathEditInsertCP(SurfacePathSet* pathSet_, SelectionInfo* selection_, int pathIndex_,
                                   int position_, SurfaceNode* node_)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathIndex(pathIndex_), position(position_), node(node_) {}

bool PathEditInsertCP::updatePathset() {
    const int k = pathSet->addNode(node);
    pathSet->paths[pathIndex].nodeIndices.insert(position + 1, k);
    return true;
}
