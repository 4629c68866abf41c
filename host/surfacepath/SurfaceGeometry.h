#pragma once
// Small geometric helpers shared by the node factory and the connectors.

#include "McVec3f.h"

namespace SurfaceGeometry {
// Parameter in [0,1] of the point of segment a-b nearest to p.
float closestSegmentParameter(McVec3f const& a, McVec3f const& b, McVec3f const& p);
// Barycentric coordinates of the point of triangle a, b, c nearest to p.
void closestTriangleBarycentric(McVec3f const& a, McVec3f const& b, McVec3f const& c, McVec3f const& p,
                                float bary[3]);
}  // namespace SurfaceGeometry
