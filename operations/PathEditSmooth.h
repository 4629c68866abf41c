#pragma once
// PathEditSmooth: smooths paths on the surface. Every inner node moves along the surface (a
// straightest geodesic) a fraction of the way towards the midpoint of its neighbours; the
// moved nodes are joined again through triangle strips, and the set is snapped to edges and
// cleaned of duplicate nodes. End nodes never move; control points move like the others and
// keep their flag.
//
// Undo and redo restore the path set only (no selection, no surface in the snapshots). A path
// whose nodes cannot be joined again keeps its node list ("Error: cannot smooth path %d") and
// does not fail the operation; an inconsistent set after a pass does ("PathSmooth failed").
// Every pass appends new nodes to the node table; the old ones are left to the cleaning.

#include "SinglePathOperation.h"
#include "StraightestGeodesic.h"
#include "TriangleStripConnector.h"

class PathEditSmooth : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditSmooth)
  public:
    explicit PathEditSmooth(SurfacePathSet* pathSet);

    bool exec() override;
    // One smoothing pass over one path.
    void smoothPath(int pathIndex);

    SurfacePathSet* smoothPathSet;
    float weight = 0.5f;
    int iterations = 1;
    // The paths to smooth; empty means all.
    McDArray<int> pathList;
    TriangleStripConnector stripConnector;
    StraightestGeodesic geodesic;
};
