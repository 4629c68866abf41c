#pragma once
// PathEditMoveCP: replaces a control point by a new node elsewhere on the surface and
// recomputes the path on both sides of it. The control point is named by its node index, so
// every path through that node changes: a junction moves in all its paths. The old node stays
// in the node table.
//
// Holds a handle to the new node; the path set, selection and connector are not owned.

#include "McHandle.h"
#include "SinglePathOperation.h"

class PathConnector;

class PathEditMoveCP : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditMoveCP)
  public:
    // `node` is made by the caller at the target point and already flagged as a control point.
    PathEditMoveCP(SurfacePathSet* pathSet, SelectionInfo* selection, int oldNode, SurfaceNode* node,
                   PathConnector* connector);

    // False when a stretch cannot be removed or a new segment cannot be computed; the path is
    // then left half-rebuilt for the caller to roll back.
    bool updatePathset() override;

    PathConnector* connector;  // not owned
    int oldNode;
    McHandle<SurfaceNode> node;

  private:
    // Replaces the occurrence of the old node at position j of a path by node k. Returns the
    // position to scan on from, or one of the negative outcomes below.
    int replaceAt(int path, int j, int k);
    static constexpr int kFailed = -1;
    static constexpr int kPathDone = -2;

    // A loop of two control points becomes other -> k -> other, by an add and a close.
    void rebuildTwoPointLoop(int path, int other, int k);
    bool replaceSeam(int path, int k);
    bool replaceEnd(int path, int k);
    bool replaceStart(int path, int k);
    bool replaceInner(int path, int prev, int k);
    bool connect(int path, int from, int to);
};
