#pragma once
// PathEditDeleteCP: removes a control point and joins its two neighbouring control points by a
// new segment. The control point is named by its node index, so every path through that node
// loses it. The node stays in the node table; only path entries go.
//
// The path set, selection and connector are not owned.

#include "SinglePathOperation.h"

class PathConnector;

class PathEditDeleteCP : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditDeleteCP)
  public:
    // With `emptyOnly` 0 a path that consisted of the node alone is removed from the path
    // array; otherwise it stays in its slot with no nodes.
    PathEditDeleteCP(SurfacePathSet* pathSet, SelectionInfo* selection, int cpNode, PathConnector* connector,
                     int emptyOnly);

    // False when a stretch cannot be removed or the joining segment cannot be computed; the
    // path is then left half-changed for the caller to roll back.
    bool updatePathset() override;

    int cpNode;
    PathConnector* connector;  // not owned
    int emptyOnly;

  private:
    // Deletes the occurrence of the node at position j of a path. Returns the position to
    // scan on from, or one of the negative outcomes below.
    int deleteAt(int path, int j);
    static constexpr int kFailed = -1;
    // The path was this node alone: it is gone or empty, and the same index is visited again.
    static constexpr int kRevisitPath = -2;

    void removeSingleNodePath(int path);
};
