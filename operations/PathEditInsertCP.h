#pragma once
// PathEditInsertCP: inserts a new node into a segment of a path, after a given position. The
// node lies on the segment already drawn, so no connector runs: the path keeps its shape and
// gains a node the user can move later.
//
// Holds a handle to the new node; the path set and selection are not owned.

#include "McHandle.h"
#include "SinglePathOperation.h"

class PathEditInsertCP : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditInsertCP)
  public:
    // The caller passes a valid path, 0 <= position < its node count, and a non-null node
    // (made on the clicked segment and already flagged as a control point).
    PathEditInsertCP(SurfacePathSet* pathSet, SelectionInfo* selection, int pathIndex, int position,
                     SurfaceNode* node);

    // Appends the node to the node table and inserts it after `position`; always succeeds.
    bool updatePathset() override;

    int pathIndex;
    // The start of the clicked segment.
    int position;
    McHandle<SurfaceNode> node;
};
