#pragma once
// SurfacePathPatchifier: cuts a surface into patches along the paths of a path set, by giving
// its triangles new patch indices.
//
// Every path must run along mesh edges (consecutive vertex nodes joined by an edge); the edges
// of all paths become patch borders, and a patch is a set of triangles that reach each other
// across edges no path covers. With `keepExistingBorders` the surface's present patch borders
// stay borders as well, so the paths subdivide the patches already there (what an editor wants
// after importing them as contours); without it only the paths divide the surface. Patches are
// numbered from 0 in the order of their lowest triangle.
//
// Fails (false, with a console message naming the path) when a path leaves the mesh edges or
// lies on another surface; the surface is then left untouched. Holds plain pointers, owns
// nothing. Linear time and memory.

#include "McDArray.h"

class Surface;
class SurfacePathSet;

class SurfacePathPatchifier {
  public:
    SurfacePathPatchifier(SurfacePathSet* pathSet, Surface* surface);

    bool compute(bool keepExistingBorders);

  private:
    // The edges the paths run along; false at the first path that does not run along edges.
    bool findPathEdges(McDArray<char>& onPath) const;
    McDArray<int> floodFill(McDArray<char> const& onPath, bool keepExistingBorders) const;

    SurfacePathSet* mSet;
    Surface* mSurface;
};
