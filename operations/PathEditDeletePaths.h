#pragma once
// PathEditDeletePaths: removes the given paths from the path set, or, with emptyOnly, leaves
// each in its slot and only empties its node list (so the indices of other paths stay valid).
// The nodes stay in the node table either way.
//
// Indices are not checked: the caller passes valid ones. Duplicates are kept on purpose: a
// duplicated index removes the path at the index and then the one that moved into its slot.

#include "SinglePathOperation.h"

class PathEditDeletePaths : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditDeletePaths)
  public:
    PathEditDeletePaths(SurfacePathSet* pathSet, SelectionInfo* selection, int pathIndex, int emptyOnly);
    PathEditDeletePaths(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<int> const& pathIndices,
                        int emptyOnly);

    // Never fails.
    bool updatePathset() override;

    McDArray<int> pathIndices;
    int emptyOnly;
};
