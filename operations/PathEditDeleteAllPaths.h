#pragma once
// PathEditDeleteAllPaths: empties the whole path set and clears the selection. The nodes stay
// in the node table. It makes its change in exec(), so the selection is cleared outright
// instead of being repaired.

#include "SinglePathOperation.h"

class PathEditDeleteAllPaths : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditDeleteAllPaths)
  public:
    PathEditDeleteAllPaths(SurfacePathSet* pathSet, SelectionInfo* selection);

    // Never fails, not even without a path set.
    bool exec() override;
};
