// The box tree finds the same nearest triangle as testing every triangle, on a real mesh.

#include "TestSurfaces.h"
#include "TriangleBoxTree.h"

#include "SurfaceIO.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

// The nearest t >= 0 at which the ray meets the triangle's plane inside the triangle, in
// double precision; -1 if it misses.
double brute(Surface const& s, int t, McVec3f const& o, McVec3f const& d) {
    McVec3f const& a = s.points[s.triangles[t].points[0]];
    const McVec3f e1 = s.points[s.triangles[t].points[1]] - a, e2 = s.points[s.triangles[t].points[2]] - a;
    const McVec3f n = e1.cross(e2);
    const double denominator = n.dot(d);
    if (denominator == 0) return -1;
    const double along = n.dot(a - o) / denominator;
    const McVec3f p = o + d * float(along) - a;
    const double e11 = e1.dot(e1), e12 = e1.dot(e2), e22 = e2.dot(e2), p1 = p.dot(e1), p2 = p.dot(e2);
    const double det = e11 * e22 - e12 * e12;
    const double u = (p1 * e22 - p2 * e12) / det, v = (p2 * e11 - p1 * e12) / det;
    return along >= 0 && u >= 0 && v >= 0 && u + v <= 1 ? along : -1;
}

TEST(TriangleBoxTree, NearestHitIsTheNearestOfAllTriangles) {
    Surface s;
    McString error, warnings;
    ASSERT_TRUE(SurfaceIO::read(meshFile("elephant.off").c_str(), s, error, warnings)) << error.c_str();
    std::vector<float> points;
    std::vector<uint32_t> corners;
    for (McVec3f const& p : s.points) points.insert(points.end(), {p.x, p.y, p.z});
    for (Surface::Triangle const& t : s.triangles) corners.insert(corners.end(), t.points, t.points + 3);
    TriangleBoxTree tree(points.data(), corners.data(), s.getNumTriangles());

    McVec3f lo, hi;
    s.getBoundingBox(lo, hi);
    std::mt19937 random(7);
    std::uniform_real_distribution<float> unit(0, 1);
    int hits = 0;
    for (int ray = 0; ray < 200; ++ray) {
        // From a point outside the box towards a point inside it.
        const McVec3f target(lo.x + unit(random) * (hi.x - lo.x), lo.y + unit(random) * (hi.y - lo.y),
                             lo.z + unit(random) * (hi.z - lo.z));
        const McVec3f origin = target + McVec3f(unit(random) - 0.5f, unit(random) - 0.5f, 1.0f) * 2.0f;
        const McVec3f direction = (target - origin).normalized();
        double nearest = -1;
        int expected = -1;
        for (int t = 0; t < s.getNumTriangles(); ++t) {
            const double along = brute(s, t, origin, direction);
            if (along >= 0 && (nearest < 0 || along < nearest)) nearest = along, expected = t;
        }
        TriangleBoxTree::Hit hit;
        const bool found = tree.nearestHit(&origin.x, &direction.x, nullptr, hit);
        EXPECT_EQ(found, expected >= 0) << "ray " << ray;
        if (!found || expected < 0) continue;
        ++hits;
        EXPECT_NEAR(hit.t, nearest, 1e-5) << "ray " << ray << ": triangle " << hit.triangle << ", not " << expected;
    }
    EXPECT_GT(hits, 50);
}

}  // namespace
