#pragma once
// PathEditUntangle: ends node sharing between paths: every further user of a shared node gets
// a copy of its own (the reverse of PathEditEntangle).
//
// Never fails: a set without shared nodes still yields an (empty) undoable step.

#include "SinglePathOperation.h"

class PathEditUntangle : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditUntangle)
  public:
    // Only the listed paths (empty: all).
    PathEditUntangle(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<int> const& paths);
    // All paths.
    PathEditUntangle(SurfacePathSet* pathSet, SelectionInfo* selection);

    bool updatePathset() override;

    McDArray<int> pathIndices;
};
