#pragma once
// StraightestGeodesic: walks from a node along the surface in a tangent direction for a given
// length, as a straightest geodesic (Polthier and Schmies): straight inside triangles, across
// an edge with equal angles on both sides, and through a vertex so that the surface angle to
// the left of the path equals the angle to its right. On a plane it is the straight line; on
// a cylinder, a helix. The walk stops early at the surface's border or at a border vertex.
//
// Holds a plain pointer to the surface; the surface needs its edges, neighbours and triangle
// normals built.

#include "McHandle.h"
#include "McVec3f.h"
#include "SurfaceNode.h"

class Surface;

class StraightestGeodesic {
  public:
    void init(Surface* surface) { mSurface = surface; }

    // The node reached from `start` after `length` along the surface, leaving in `direction`
    // projected onto the surface there. `result` is null when the walk cannot start: no
    // surface, a direction along the normal, or a direction leaving the surface at its border.
    // Returns whether `result` is set.
    bool compute(SurfaceNode* start, McVec3f const& direction, float length, McHandle<SurfaceNode>& result);

  private:
    // Where the walk is: a triangle, barycentric coordinates in it, a unit direction in its plane.
    struct Walker {
        int triangle = -1;
        double at[3] = {0, 0, 0};
        McVec3f direction;
    };

    // The triangle the walk leaves `start` through.
    bool begin(SurfaceNode* start, McVec3f const& direction, Walker& walker) const;
    // A walker at `vertex` in one of its triangles, heading along `direction` if that lies in
    // the triangle's wedge.
    bool beginAtVertex(int vertex, McVec3f const& direction, Walker& walker) const;
    // Continues through `vertex`, reached in `walker.triangle`, with equal angles on both sides;
    // false at a border vertex.
    bool passVertex(int vertex, Walker& walker) const;
    // Continues across side `side` of the walker's triangle; false at a border.
    bool crossSide(int side, Walker& walker) const;
    McVec3f position(Walker const& walker) const;

    Surface* mSurface = nullptr;
};
