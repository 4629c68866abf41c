// Straightest geodesics where their course is known: the straight line on a plane, a helix on
// a cylinder (a straight line of the unrolled prism), and the stops at the border.

#include "StraightestGeodesic.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(StraightestGeodesic, FollowsTheStraightLineOnAPlane) {
    Surface grid = makeGrid(10);
    StraightestGeodesic geodesic;
    geodesic.init(&grid);
    McHandle<SurfaceNode> result;
    for (SurfaceNode* start : {static_cast<SurfaceNode*>(new SurfaceTriangleNode(&grid, 22, 0.2f, 0.3f)),
                               static_cast<SurfaceNode*>(new SurfaceVertexNode(&grid, 24)),
                               static_cast<SurfaceNode*>(new SurfaceEdgeNode(&grid, 40, 0.3f))}) {
        McHandle<SurfaceNode> keep = start;
        for (McVec3f direction : {McVec3f(1, 0.4f, 0.3f), McVec3f(-0.2f, 1, 0), McVec3f(1, 1, 0)}) {
            ASSERT_TRUE(geodesic.compute(start, direction, 4.5f, result)) << start->getTypeName();
            const McVec3f flat(direction.x, direction.y, 0);
            const McVec3f expected = start->getPosition() + flat.normalized() * 4.5f;
            EXPECT_NEAR((result->getPosition() - expected).length(), 0, 1e-4) << start->getTypeName();
        }
    }
    McHandle<SurfaceNode> corner = new SurfaceVertexNode(&grid, 0);
    EXPECT_FALSE(geodesic.compute(corner, McVec3f(-1, -1, 0), 1, result)) << "leaving the surface at once";
    EXPECT_FALSE(result);
    EXPECT_FALSE(geodesic.compute(corner, McVec3f(0, 0, 1), 1, result)) << "along the normal";
    McHandle<SurfaceNode> inside = new SurfaceTriangleNode(&grid, 0, 0.2f, 0.2f);
    ASSERT_TRUE(geodesic.compute(inside, McVec3f(1, 0, 0), 100, result));
    EXPECT_NEAR(result->getPosition().x, 10, 1e-5) << "stops at the border";
}

TEST(StraightestGeodesic, WindsAroundACylinderAsAHelix) {
    const int around = 12;
    Surface cylinder = makeCylinder(around, 20);
    StraightestGeodesic geodesic;
    geodesic.init(&cylinder);
    const double side = 2 * std::sin(M_PI / around);
    // Unrolled, the prism is a flat strip: the walk rises at a constant rate and its way around
    // is the rest of its length.
    auto wayAround = [&](McVec3f const& p) {
        double angle = std::atan2(double(p.y), double(p.x));
        if (angle < 0) angle += 2 * M_PI;
        const int sector = int(angle / (2 * M_PI / around));
        const McVec3f corner(float(std::cos(2 * M_PI * sector / around)), float(std::sin(2 * M_PI * sector / around)), p.z);
        return side * sector + (p - corner).length();
    };
    const int triangle = 2 * around * 2 + 1;
    McHandle<SurfaceNode> start = new SurfaceTriangleNode(&cylinder, triangle, 0.3f, 0.2f);
    const McVec3f p0 = start->getPosition(), normal = cylinder.normals[triangle];
    const McVec3f direction = McVec3f(0, 0, 1).cross(normal) * 0.8f + McVec3f(0, 0, 0.6f);  // in the side's plane
    const double slope = direction.normalized().z;  // rise per unit of length
    for (float length : {3.0f, 9.0f, 20.0f}) {
        McHandle<SurfaceNode> end;
        ASSERT_TRUE(geodesic.compute(start, direction, length, end));
        const McVec3f p = end->getPosition();
        EXPECT_NEAR(p.z, p0.z + slope * length, 1e-3);
        const double expected = std::fmod(wayAround(p0) + length * std::sqrt(1 - slope * slope), side * around);
        EXPECT_NEAR(wayAround(p), expected, 1e-3) << "after " << length;
    }
}

}  // namespace
