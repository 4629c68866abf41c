// Contours as paths: boundary loops and patch borders, cut at junctions, loops closed.

#include "Surface.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <set>

namespace {

std::set<int> pointsOf(SurfacePathSet const& set, int path) {
    std::set<int> points;
    for (int index : set.paths[path].nodeIndices) {
        EXPECT_EQ(set.getNode(index)->getKind(), SurfaceNode::VERTEX);
        points.insert(set.getNode(index)->getElement());
    }
    return points;
}

TEST(ImportContours, TheBoundaryOfAnOpenSurfaceComesAsOneClosedLoop) {
    Surface quad = makeQuad();
    SurfacePathSet set(&quad);
    set.importContours(&quad);
    ASSERT_EQ(set.getNumPaths(), 1);
    EXPECT_TRUE(set.isPathClosed(0));
    EXPECT_EQ(set.getNumNodesOnPath(0), 5);
    EXPECT_EQ(pointsOf(set, 0), std::set<int>({0, 1, 2, 3}));
    EXPECT_EQ(set.getNumControlPointsOnPath(0), 1);
    EXPECT_TRUE(set.isConsistent(true, nullptr));

    set.importContours(nullptr);
    EXPECT_EQ(set.getNumPaths(), 1);
}

TEST(ImportContours, APatchBorderOnAClosedSurfaceIsALoop) {
    Surface cube = makeCube();
    for (int t = 2; t < 4; ++t) cube.triangles[t].patch = 1;  // the side z = 1
    SurfacePathSet set;
    set.importContours(&cube);
    EXPECT_EQ(set.getSurface(), &cube);
    ASSERT_EQ(set.getNumPaths(), 1);
    EXPECT_TRUE(set.isPathClosed(0));
    EXPECT_EQ(pointsOf(set, 0), std::set<int>({4, 5, 6, 7}));
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

// Strip points 2 and 3 are where the border between the two patches meets the boundary.
TEST(ImportContours, ContoursAreCutWhereThreeMeetAndShareTheJunctionNodes) {
    Surface strip = makeStrip(4);
    strip.triangles[2].patch = strip.triangles[3].patch = 7;
    SurfacePathSet set(&strip);
    set.importContours(&strip);
    ASSERT_EQ(set.getNumPaths(), 3);
    int segments = 0;
    std::set<int> endNodes;
    for (int p = 0; p < 3; ++p) {
        EXPECT_FALSE(set.isPathClosed(p));
        McDArray<int> const& indices = set.paths[p].nodeIndices;
        segments += int(indices.size()) - 1;
        endNodes.insert(indices[0]);
        endNodes.insert(indices.last());
        EXPECT_EQ(set.getNumControlPointsOnPath(p), 2);
    }
    EXPECT_EQ(segments, 7);
    EXPECT_EQ(endNodes.size(), 2u) << "one node per junction";
    EXPECT_EQ(set.getNode(set.paths[0].nodeIndices[0])->getElement(), 2) << "chains start at the lowest junction";
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

}  // namespace
