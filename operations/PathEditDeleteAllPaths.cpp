#include "PathEditDeleteAllPaths.h"

MC_TYPED_IMPL(PathEditDeleteAllPaths, SinglePathOperation)

PathEditDeleteAllPaths::PathEditDeleteAllPaths(SurfacePathSet* pathSet_, SelectionInfo* selection_)
    : SinglePathOperation(pathSet_, selection_, nullptr) {}

bool PathEditDeleteAllPaths::exec() {
    if (pathSet) pathSet->paths.clear();
    if (selection) selection->deselectAll();
    return true;
}
