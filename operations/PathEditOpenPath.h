#pragma once
// PathEditOpenPath: opens a closed path at one of its nodes, or cuts an open path in two
// there. No segment is computed: opening only drops the segment that ran into the node.

#include "SinglePathOperation.h"

class PathEditOpenPath : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditOpenPath)
  public:
    // A position that names no node of the path (negative, or past its end, as on an empty
    // path) is refused.
    PathEditOpenPath(SurfacePathSet* pathSet, SelectionInfo* selection, int pathIndex, int nodePosition,
                     bool setControlPoints);

    // A closed path A, B, C, D, A opened at position 2 becomes C, D, A, B. An open path
    // A, B, C, D cut at position 1 keeps A, B, and B, C, D is appended as a new last path.
    bool updatePathset() override;

    int pathIndex;
    int nodePosition;
    // Whether the new end nodes become control points.
    bool setControlPoints;

  private:
    void cutOpenPath();
    void openClosedPath();
    void markControlPoint(int nodeIndex);
};
