#pragma once
// PolygonTriangulator: splits a polygon of a surface file into triangles by ear clipping in
// the plane of its (Newell) normal, so that concave faces keep their shape. It never fails
// loudly: a degenerate polygon, one that is not simple in that plane, or one with more than
// kMaxCorners corners (whose clipping would cost too much) is refused and the caller fans it.

#include <array>
#include <cstddef>
#include <vector>

class PolygonTriangulator {
  public:
    static constexpr std::size_t kMaxCorners = 256;

    // Triangles as corner positions in ring order (so they keep the polygon's orientation);
    // false, leaving `triangles` empty, when the polygon is refused.
    static bool triangulate(std::vector<std::array<double, 3>> const& corners, std::vector<std::array<int, 3>>& triangles);
};
