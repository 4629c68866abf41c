#pragma once
// PathEditReversePath: reverses the direction of one path. Control-point flags belong to the
// nodes, so they travel with them.

#include "SinglePathOperation.h"

class PathEditReversePath : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditReversePath)
  public:
    PathEditReversePath(SurfacePathSet* pathSet, SelectionInfo* selection, int pathIndex);

    // Never fails; an index that names no path changes nothing.
    bool updatePathset() override;

    int pathIndex;
};
