#pragma once
// PathEditAddPath: puts a ready-made sequence of surface nodes into the path set, either as a
// new last path or as the whole content of a given path. Nothing is connected: the nodes are
// taken as they are, and both ends of the sequence become control points.
//
// The operation owns its copy of the sequence; the handles keep the nodes alive until the
// path set holds them too.

#include "SinglePathOperation.h"

class PathEditAddPath : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditAddPath)
  public:
    // pathIndex -1 appends a new path; an index >= 0 names the path whose nodes are replaced.
    PathEditAddPath(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<McHandle<SurfaceNode>> const& nodes,
                    int pathIndex);
    PathEditAddPath(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<McHandle<SurfaceNode>> const& nodes);
    PathEditAddPath(SurfacePathSet* pathSet, SelectionInfo* selection, SurfaceNode* node, int pathIndex);
    PathEditAddPath(SurfacePathSet* pathSet, SelectionInfo* selection, SurfaceNode* node);

    // False for an empty sequence or a null node in it.
    bool updatePathset() override;

    McDArray<McHandle<SurfaceNode>> pathNodes;
    // After a successful append: the index of the new path.
    int pathIndex;

  private:
    // Appends every node of the sequence to the node table; false at the first null node.
    bool appendNodesToTable(McDArray<int>& nodeIndices);
};
