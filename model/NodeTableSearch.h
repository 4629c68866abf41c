#pragma once
// NodeTableSearch: finding nodes in a path set's node table by identity, the way operations
// locate a node they hold a handle to. (Comparing through a temporary McHandle would take and
// drop a reference, destroying a node that nobody holds yet.)

class SurfacePathSet;
class SurfaceNode;

class NodeTableSearch {
  public:
    // First position at or after `start` whose handle refers to `node`; -1 if none (also for
    // a start past the end or a null node).
    static int indexOf(SurfacePathSet const& pathSet, SurfaceNode const* node, int start = 0);
};
