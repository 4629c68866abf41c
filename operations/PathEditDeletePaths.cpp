#include "PathEditDeletePaths.h"

#include <algorithm>

MC_TYPED_IMPL(PathEditDeletePaths, SinglePathOperation)

PathEditDeletePaths::PathEditDeletePaths(SurfacePathSet* pathSet_, SelectionInfo* selection_, int pathIndex,
                                         int emptyOnly_)
    : SinglePathOperation(pathSet_, selection_, nullptr), emptyOnly(emptyOnly_) {
    pathIndices.append(pathIndex);
}

PathEditDeletePaths::PathEditDeletePaths(SurfacePathSet* pathSet_, SelectionInfo* selection_,
                                         McDArray<int> const& pathIndices_, int emptyOnly_)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathIndices(pathIndices_), emptyOnly(emptyOnly_) {}

bool PathEditDeletePaths::updatePathset() {
    std::sort(pathIndices.begin(), pathIndices.end());
    // Highest index first, so that the lower indices still name the same paths.
    for (int64_t k = pathIndices.size() - 1; k >= 0; --k) {
        const int path = pathIndices[k];
        if (!emptyOnly)
            pathSet->paths.remove(path);
        else if (!pathSet->isPathEmpty(path))
            pathSet->paths[path].nodeIndices.clear();
    }
    return true;
}
