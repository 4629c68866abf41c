#include "PolygonTriangulator.h"

#include <cmath>

namespace {

using Point2 = std::array<double, 2>;

double cross(Point2 const& a, Point2 const& b, Point2 const& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

// The polygon in 2D, dropping the normal's largest axis, turned so that it runs
// counter-clockwise; empty when the polygon has no area.
std::vector<Point2> project(std::vector<std::array<double, 3>> const& corners) {
    double normal[3] = {0, 0, 0};
    const size_t n = corners.size();
    for (size_t i = 0; i < n; ++i) {
        auto const& p = corners[i];
        auto const& q = corners[(i + 1) % n];
        normal[0] += (p[1] - q[1]) * (p[2] + q[2]);
        normal[1] += (p[2] - q[2]) * (p[0] + q[0]);
        normal[2] += (p[0] - q[0]) * (p[1] + q[1]);
    }
    int axis = 0;
    for (int k = 1; k < 3; ++k)
        if (std::fabs(normal[k]) > std::fabs(normal[axis])) axis = k;
    if (!(std::fabs(normal[axis]) > 0) || !std::isfinite(normal[axis])) return {};
    const int u = (axis + 1) % 3, v = (axis + 2) % 3;
    const bool flip = normal[axis] < 0;
    std::vector<Point2> ring;
    for (auto const& p : corners) ring.push_back({p[u], flip ? -p[v] : p[v]});
    return ring;
}

bool insideOrOn(Point2 const& p, Point2 const& a, Point2 const& b, Point2 const& c) {
    return cross(a, b, p) >= 0 && cross(b, c, p) >= 0 && cross(c, a, p) >= 0;
}

// An ear: a convex corner whose triangle holds no other remaining corner.
bool isEar(std::vector<Point2> const& ring, std::vector<int> const& left, size_t i) {
    const size_t m = left.size();
    const int a = left[(i + m - 1) % m], b = left[i], c = left[(i + 1) % m];
    if (cross(ring[size_t(a)], ring[size_t(b)], ring[size_t(c)]) <= 0) return false;
    for (int other : left) {
        if (other == a || other == b || other == c) continue;
        if (insideOrOn(ring[size_t(other)], ring[size_t(a)], ring[size_t(b)], ring[size_t(c)])) return false;
    }
    return true;
}

}  // namespace

bool PolygonTriangulator::triangulate(std::vector<std::array<double, 3>> const& corners,
                                      std::vector<std::array<int, 3>>& triangles) {
    triangles.clear();
    if (corners.size() < 3 || corners.size() > kMaxCorners) return false;
    const std::vector<Point2> ring = project(corners);
    if (ring.empty()) return false;
    std::vector<int> left;
    for (size_t i = 0; i < ring.size(); ++i) left.push_back(int(i));
    while (left.size() > 3) {
        size_t ear = left.size();
        for (size_t i = 0; i < left.size() && ear == left.size(); ++i)
            if (isEar(ring, left, i)) ear = i;
        if (ear == left.size()) {  // not simple in its plane
            triangles.clear();
            return false;
        }
        const size_t m = left.size();
        triangles.push_back({left[(ear + m - 1) % m], left[ear], left[(ear + 1) % m]});
        left.erase(left.begin() + long(ear));
    }
    if (cross(ring[size_t(left[0])], ring[size_t(left[1])], ring[size_t(left[2])]) <= 0) {
        triangles.clear();
        return false;
    }
    triangles.push_back({left[0], left[1], left[2]});
    return true;
}
