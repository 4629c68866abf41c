#include "TrianglePlane.h"

#include "Surface.h"

#include <algorithm>
#include <cmath>

TrianglePlane::TrianglePlane(Surface const& surface, int triangle) {
    int const* p = surface.triangles[triangle].points;
    double side1[3] = {}, side2[3] = {};
    for (int k = 0; k < 3; ++k) {
        side1[k] = double(surface.points[p[1]][k]) - surface.points[p[0]][k];
        side2[k] = double(surface.points[p[2]][k]) - surface.points[p[0]][k];
    }
    auto dot = [](double const* a, double const* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    mCorner1 = std::sqrt(dot(side1, side1));
    const double length2 = std::sqrt(dot(side2, side2));
    if (mCorner1 > 0) {
        mCorner2.x = dot(side1, side2) / mCorner1;
        mCorner2.y = std::sqrt(std::max(0.0, dot(side2, side2) - mCorner2.x * mCorner2.x));
    }
    mSize = std::max({mCorner1, length2, distance(Point{mCorner1, 0}, mCorner2)});
}

TrianglePlane::Point TrianglePlane::fromBarycentric(float const bary[3]) const {
    return Point{bary[1] * mCorner1 + bary[2] * mCorner2.x, bary[2] * mCorner2.y};
}

void TrianglePlane::toBarycentric(Point const& p, float bary[3]) const {
    const double b2 = std::clamp(p.y / mCorner2.y, 0.0, 1.0);
    const double b1 = std::clamp((p.x - b2 * mCorner2.x) / mCorner1, 0.0, 1.0 - b2);
    bary[0] = float(1 - b1 - b2);
    bary[1] = float(b1);
    bary[2] = float(b2);
}

double TrianglePlane::distance(Point const& a, Point const& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double TrianglePlane::closestParameter(Point const& p, Point const& a, Point const& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double length2 = dx * dx + dy * dy;
    if (length2 <= 0) return 0;
    return std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length2, 0.0, 1.0);
}

TrianglePlane::Point TrianglePlane::along(Point const& a, Point const& b, double t) {
    return Point{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

bool TrianglePlane::crossing(Point const& a0, Point const& a1, Point const& b0, Point const& b1, double& s,
                             double& t) {
    const double rx = a1.x - a0.x, ry = a1.y - a0.y;
    const double qx = b1.x - b0.x, qy = b1.y - b0.y;
    const double denominator = rx * qy - ry * qx;
    if (std::fabs(denominator) <= 1e-12 * std::hypot(rx, ry) * std::hypot(qx, qy)) return false;
    const double wx = b0.x - a0.x, wy = b0.y - a0.y;
    s = (wx * qy - wy * qx) / denominator;
    t = (wx * ry - wy * rx) / denominator;
    return s >= 0 && s <= 1 && t >= 0 && t <= 1;
}
