#pragma once
// PathEditEntangle: makes crossing or touching paths share a node at each crossing, so that a
// crossing becomes a node of both paths. The shared nodes become control points, so that
// re-connecting a path later keeps them.
//
// Never fails: a set without crossings still yields an (empty) undoable step.

#include "SinglePathOperation.h"

class PathEditEntangle : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditEntangle)
  public:
    // Only the listed paths (empty: all). The tolerance is the entangler's (a fraction of the
    // size of the triangle where two paths meet).
    PathEditEntangle(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<int> const& paths, float tolerance);
    // All paths.
    PathEditEntangle(SurfacePathSet* pathSet, SelectionInfo* selection, float tolerance);

    bool updatePathset() override;

    float entangleTolerance;
    McDArray<int> pathIndices;
};
