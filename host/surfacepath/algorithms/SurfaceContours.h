#pragma once
// SurfaceContours: the lines along which a surface ends or changes patch, as point lists.
//
// A contour edge has one triangle, or triangles that do not all carry one patch index. A
// contour is a chain of contour edges through points where exactly two of them meet; it ends
// at junctions (points where one or three or more meet) and repeats its first point at its
// end when it closes. Chains from junctions come first (junctions in point order, each one's
// edges in edge order), then the loops without a junction, each started at the lower point of
// its lowest edge; a chain leaves its start along the lowest unused edge. Linear time.

#include "McDArray.h"

class Surface;

namespace SurfaceContours {
// Needs the surface's edges (createAllEdges).
McDArray<McDArray<int>> find(Surface const& surface);
bool isContourEdge(Surface const& surface, int edge);
}  // namespace SurfaceContours
