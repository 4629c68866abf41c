#pragma once
// PathEditRetriangulate: rebuilds the triangles of the path set's surface along its paths with
// a triangulator chosen by name (PathTriangulatorFactory), so that the paths run along mesh
// edges through vertex nodes.
//
// The snapshots hold the path set and the surface (not the selection), since both change.
// Undo and redo rebuild the surface's derived tables after restoring it and tell the surface
// object, if one holds the surface, that it changed. Owns neither the set nor the surface;
// the triangulator lives for one exec.

#include "McString.h"
#include "SinglePathOperation.h"

class PathEditRetriangulate : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditRetriangulate)
  public:
    PathEditRetriangulate(SurfacePathSet* pathSet, char const* name, float tolerance, bool flag);

    // The triangulator's result; the editor's `viewer` is refreshed either way.
    bool exec() override;
    void undo() override;
    void redo() override;

    McString triangulatorName;
    bool flag;
    float tolerance;

  private:
    void rebuildSurface();
};
