#pragma once
// PathTriangulator: rebuilds the triangles of a surface that its paths cross, so that every
// path runs along mesh edges.
//
// Each triangle that a path crosses, or that has a path node on a side or inside, is split by
// a constrained Delaunay triangulation in its own plane: its corners, the nodes on its sides
// and inside it are the vertices, the path segments and its sides the constrained edges. A
// node on an edge becomes one vertex shared by both triangles of that edge, so the surface
// stays conforming. Afterwards every node of the set is a vertex node at the same place (a
// segment that passes through another vertex is split there), the new triangles keep the
// patch of the triangle they replace, and every other triangle keeps its index.
//
// Nodes within the tolerance (barycentric, as the node factory measures it) of a vertex or
// edge snap to it first, so that no sliver is made for them. The switches set the mode: "q"
// also refines the new triangles for quality (no angle below about 20.7 degrees), with at
// most the number after "S" of extra points inside each split triangle (10 without "S");
// "p", "z" and "Q" are accepted and always in effect (constrained edges, vertices numbered
// from zero, no output but messages).
//
// Fails (false, with a console message, the surface and the paths untouched) when a segment
// of a path joins nodes on no common triangle, when two paths cross inside a triangle without
// a common node, or when a node lies on another surface. Holds plain pointers, owns nothing.
// Time and memory are linear in the surface plus the crossed triangles.

#include "McDArray.h"
#include "McString.h"

class Surface;
class SurfacePathSet;

class PathTriangulator {
  public:
    explicit PathTriangulator(char const* switches = "pzQ");

    // === Settings
    void setTolerance(float tolerance) { mTolerance = tolerance; }
    void setPathSet(SurfacePathSet* pathSet) { mPathSet = pathSet; }
    // False, keeping the present switches, for a letter that is not one of "pqzSQ".
    bool setSwitches(char const* switches);
    McString const& getSwitches() const { return mSwitches; }
    // Extra points allowed inside each split triangle; 0 when there is no refinement.
    int getMaxExtraPoints() const { return mMaxExtraPoints; }

    // === Running
    // With `patchify`, the surface is then also cut into patches along the paths (keeping its
    // present patch borders), as SurfacePathPatchifier does.
    bool run(bool patchify);

  private:
    SurfacePathSet* mPathSet = nullptr;
    float mTolerance = 0;
    McString mSwitches;
    int mMaxExtraPoints = 0;
};
