#pragma once
// NodeDuplicateFinder: groups the nodes of a table that lie within a distance of each other on
// a common triangle, in O(n) expected time through a hash grid of cell size >= the tolerance.

#include "McDArray.h"
#include "McHandle.h"
#include "SurfaceNode.h"

class NodeDuplicateFinder {
  public:
    // For every node index the index of an earlier equal node that is its own representative
    // (itself when there is none).
    // Null entries stay alone.
    static McDArray<int> findRepresentatives(McDArray<McHandle<SurfaceNode>> const& nodes, float tolerance);
};
