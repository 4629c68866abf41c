#include "PathEditUntangle.h"

MC_TYPED_IMPL(PathEditUntangle, SinglePathOperation)

PathEditUntangle::PathEditUntangle(SurfacePathSet* pathSet_, SelectionInfo* selection_, McDArray<int> const& paths)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathIndices(paths) {}

PathEditUntangle::PathEditUntangle(SurfacePathSet* pathSet_, SelectionInfo* selection_)
    : PathEditUntangle(pathSet_, selection_, McDArray<int>()) {}

bool PathEditUntangle::updatePathset() {
    pathSet->untangle(pathIndices);
    return true;
}
