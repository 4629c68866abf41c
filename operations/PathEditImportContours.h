#pragma once
// PathEditImportContours: adds a surface's contours (its boundary loops and the borders
// between its patches) to a path set as paths of vertex nodes.
//
// Never fails: a surface without contours, or none at all, still yields an (empty) undoable
// step. Neither the set nor the surface is owned.

#include "SinglePathOperation.h"

class PathEditImportContours : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditImportContours)
  public:
    PathEditImportContours(SurfacePathSet* pathSet, SelectionInfo* selection, Surface* surface);

    bool updatePathset() override;

    SurfacePathSet* targetSet;
    Surface* contourSurface;
};
