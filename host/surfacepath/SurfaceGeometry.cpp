#include "SurfaceGeometry.h"

#include "Surface.h"

#include <algorithm>

namespace SurfaceGeometry {

float closestSegmentParameter(McVec3f const& a, McVec3f const& b, McVec3f const& p) {
    const McVec3f ab = b - a;
    const float len2 = ab.length2();
    if (len2 <= 0) return 0;
    return std::clamp((p - a).dot(ab) / len2, 0.f, 1.f);
}

// Region tests of the closest-point query (Ericson, Real-Time Collision Detection, 5.1.5).
void closestTriangleBarycentric(McVec3f const& a, McVec3f const& b, McVec3f const& c, McVec3f const& p,
                                float bary[3]) {
    auto set = [bary](float wa, float wb, float wc) {
        bary[0] = wa;
        bary[1] = wb;
        bary[2] = wc;
    };
    const McVec3f ab = b - a, ac = c - a, ap = p - a;
    const float d1 = ab.dot(ap), d2 = ac.dot(ap);
    if (d1 <= 0 && d2 <= 0) return set(1, 0, 0);
    const McVec3f bp = p - b;
    const float d3 = ab.dot(bp), d4 = ac.dot(bp);
    if (d3 >= 0 && d4 <= d3) return set(0, 1, 0);
    const float vc = d1 * d4 - d3 * d2;
    if (vc <= 0 && d1 >= 0 && d3 <= 0) {
        const float v = d1 / (d1 - d3);
        return set(1 - v, v, 0);
    }
    const McVec3f cp = p - c;
    const float d5 = ab.dot(cp), d6 = ac.dot(cp);
    if (d6 >= 0 && d5 <= d6) return set(0, 0, 1);
    const float vb = d5 * d2 - d1 * d6;
    if (vb <= 0 && d2 >= 0 && d6 <= 0) {
        const float w = d2 / (d2 - d6);
        return set(1 - w, 0, w);
    }
    const float va = d3 * d6 - d5 * d4;
    if (va <= 0 && (d4 - d3) >= 0 && (d5 - d6) >= 0) {
        const float w = (d4 - d3) / ((d4 - d3) + (d5 - d6));
        return set(0, 1 - w, w);
    }
    const float denom = va + vb + vc;
    if (denom <= 0) return set(1, 0, 0);  // degenerate triangle
    const float v = vb / denom, w = vc / denom;
    set(1 - v - w, v, w);
}

void barycentricDirection(Surface const& s, int t, McVec3f const& d, double change[3]) {
    Surface::Triangle const& tri = s.triangles[t];
    const McVec3f e1 = s.points[tri.points[1]] - s.points[tri.points[0]], e2 = s.points[tri.points[2]] - s.points[tri.points[0]];
    const double a = e1.dot(e1), b = e1.dot(e2), c = e2.dot(e2), r1 = e1.dot(d), r2 = e2.dot(d);
    const double det = a * c - b * b;
    change[1] = det != 0 ? (r1 * c - r2 * b) / det : 0;
    change[2] = det != 0 ? (a * r2 - b * r1) / det : 0;
    change[0] = -change[1] - change[2];
}

int triangleAcross(Surface const& s, int t, int side) {
    const int e = s.triangles[t].edges[side];
    if (e < 0 || s.getNumTrianglesOfEdge(e) != 2) return -1;
    int const* pair = s.getTrianglesOfEdge(e);
    return pair[0] == t ? pair[1] : pair[0];
}

}  // namespace SurfaceGeometry
