#pragma once
// NodeEquality: whether two path ends meet, the test used when paths are joined: the path
// set's node factory must find them equal under its current setting, and the first node must
// take the second for the same surface point.

class SurfaceNode;
class SurfaceNodeFactory;

class NodeEquality {
  public:
    // False when either node is null.
    static bool meet(SurfaceNodeFactory const& factory, SurfaceNode* a, SurfaceNode* b);
};
