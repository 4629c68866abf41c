#include "PathEditReversePath.h"

MC_TYPED_IMPL(PathEditReversePath, SinglePathOperation)

PathEditReversePath::PathEditReversePath(SurfacePathSet* pathSet_, SelectionInfo* selection_, int pathIndex_)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathIndex(pathIndex_) {}

bool PathEditReversePath::updatePathset() {
    if (pathSet->isValidPath(pathIndex)) pathSet->paths[pathIndex].nodeIndices.reverse();
    return true;
}
