#pragma once
// Small geometric helpers shared by the node factory and the connectors.

#include "McVec3f.h"

class Surface;

namespace SurfaceGeometry {
// Parameter in [0,1] of the point of segment a-b nearest to p.
float closestSegmentParameter(McVec3f const& a, McVec3f const& b, McVec3f const& p);
// Barycentric coordinates of the point of triangle a, b, c nearest to p.
void closestTriangleBarycentric(McVec3f const& a, McVec3f const& b, McVec3f const& c, McVec3f const& p,
                                float bary[3]);
// The direction d, taken in the plane of triangle t, as the change of t's barycentric
// coordinates per unit of d.
void barycentricDirection(Surface const& surface, int triangle, McVec3f const& d, double change[3]);
// The triangle across side `side` of `triangle` (points[side] -> points[side + 1]); -1 at a
// border or at a side shared by more than two triangles. Needs the surface's edges.
int triangleAcross(Surface const& surface, int triangle, int side);
}  // namespace SurfaceGeometry
