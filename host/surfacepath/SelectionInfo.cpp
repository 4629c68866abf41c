#include "SelectionInfo.h"

#include "SurfacePathSet.h"

bool SelectionInfo::isCPOnActivePath(int nodeIndex) const {
    if (!mPathSet || nodeIndex < 0) return false;
    for (int path : mActivePaths)
        if (mPathSet->getNodeIndexOnPath(path, nodeIndex) >= 0) return true;
    return false;
}

void SelectionInfo::addToActivePaths(int path) {
    if (path >= 0 && !isPathActive(path)) mActivePaths.append(path);
}

void SelectionInfo::setSinglePathActive(int path) {
    mActivePaths.clear();
    addToActivePaths(path);
    if (!isCPOnActivePath(mActiveCP)) mActiveCP = -1;
}

void SelectionInfo::deselectPath(int path) {
    const int64_t i = mActivePaths.findFirst(path);
    if (i >= 0) mActivePaths.remove(i);
    if (!isCPOnActivePath(mActiveCP)) mActiveCP = -1;
}

void SelectionInfo::deselectAll() {
    mActivePaths.clear();
    mActiveCP = -1;
}

void SelectionInfo::synchronize() {
    if (!mPathSet) return;
    for (int64_t i = mActivePaths.size() - 1; i >= 0; --i)
        if (!mPathSet->isValidPath(mActivePaths[i])) mActivePaths.remove(i);
    SurfaceNode* node = mPathSet->getNode(mActiveCP);
    if (!node || !node->isControlPoint || !isCPOnActivePath(mActiveCP)) mActiveCP = -1;
}
