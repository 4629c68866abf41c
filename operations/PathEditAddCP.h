#pragma once
// PathEditAddCP: appends a control point to the end of an open path and joins it to the
// previous last node with intermediate nodes computed by a connector; drawing a path point by
// point is a sequence of these. It works on the path set alone: no selection is kept with its
// snapshots or repaired after it.
//
// Holds a handle to the node it appends; the path set, the connector are not owned.

#include "McHandle.h"
#include "SinglePathOperation.h"

class PathConnector;

class PathEditAddCP : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditAddCP)
  public:
    // Appends the existing node at `nodeIndex` of the node table (the caller passes a valid
    // index); a path may revisit a node.
    PathEditAddCP(SurfacePathSet* pathSet, int pathIndex, int nodeIndex, PathConnector* connector);
    // Appends a new node, which also goes to the end of the node table.
    PathEditAddCP(SurfacePathSet* pathSet, int pathIndex, SurfaceNode* node, PathConnector* connector);

    // False for a path index past the last path, a closed path, a null node, and when the
    // connector cannot join the new point (the appended node then stays in the node table;
    // the caller rolls back).
    bool exec() override;

    int pathIndex;
    McHandle<SurfaceNode> node;
    PathConnector* connector;  // not owned
    // True when `node` is not yet in the node table.
    bool isNewNode;

  private:
    // The node's index in the node table, appending it first if it is new; -1 if it is not there.
    int nodeTableIndex();
};
