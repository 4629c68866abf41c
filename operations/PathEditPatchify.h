#pragma once
// PathEditPatchify: cuts the surface of a path set into patches along its paths (which must
// run along mesh edges), giving the triangles new patch indices; the present patch borders
// stay borders.
//
// Undo and redo restore the surface only: the paths and the selection stay as they are, since
// the operation never changes them. The editor that runs it sets `viewer`, so that undo and
// redo refresh what depends on the surface. Owns neither the set nor the surface.

#include "SinglePathOperation.h"

class PathEditPatchify : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditPatchify)
  public:
    explicit PathEditPatchify(SurfacePathSet* pathSet);

    // False, leaving the surface alone, when some path does not run along mesh edges (the
    // console names it) or there is no path set or surface.
    bool exec() override;

    SurfacePathSet* patchSet;
};
