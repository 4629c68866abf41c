// Patchifying: paths along mesh edges become patch borders, or nothing changes at all.
//
// On the cube the loop 0-1-5-7-6-2 runs around its middle, between corners 3 and 4.

#include "Surface.h"
#include "SurfacePathPatchifier.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <map>

namespace {

class Patchify : public testing::Test {
  protected:
    int vertexPath(std::initializer_list<int> vertices) {
        McDArray<int> indices;
        for (int v : vertices) indices.append(set.addNode(set.nodeFactory.createVertexNode(v)));
        return set.addPath(indices);
    }
    std::map<int, int> trianglesPerPatch() const {
        std::map<int, int> count;
        for (Surface::Triangle const& t : cube.triangles) ++count[t.patch];
        return count;
    }
    McDArray<int> patches() const {
        McDArray<int> result;
        for (Surface::Triangle const& t : cube.triangles) result.append(t.patch);
        return result;
    }

    Surface cube = makeCube();
    SurfacePathSet set{&cube};
};

// The halves coming back as the loop's contour is checked by the patchify operation's test.
TEST_F(Patchify, ALoopAroundTheMiddleMakesTwoHalves) {
    vertexPath({0, 1, 5, 7, 6, 2, 0});
    ASSERT_TRUE(SurfacePathPatchifier(&set, &cube).compute(true));
    EXPECT_EQ(trianglesPerPatch(), (std::map<int, int>{{0, 6}, {1, 6}}));
}

// The side z = 1 lies wholly on corner 4's side of the loop.
TEST_F(Patchify, ExistingBordersStayOnlyWhenAsked) {
    for (int t = 2; t < 4; ++t) cube.triangles[t].patch = 9;
    vertexPath({0, 1, 5, 7, 6, 2, 0});
    ASSERT_TRUE(SurfacePathPatchifier(&set, &cube).compute(true));
    EXPECT_EQ(trianglesPerPatch().size(), 3u);
    ASSERT_TRUE(SurfacePathPatchifier(&set, &cube).compute(false));
    EXPECT_EQ(trianglesPerPatch().size(), 2u);
}

TEST_F(Patchify, APathOffTheEdgesFailsAndLeavesTheSurfaceAlone) {
    for (int t = 0; t < cube.getNumTriangles(); ++t) cube.triangles[t].patch = t % 3;
    const McDArray<int> before = patches();
    vertexPath({0, 1, 5});
    const int across = vertexPath({0, 7});  // opposite corners: no edge joins them
    ASSERT_FALSE(SurfacePathPatchifier(&set, &cube).compute(true));
    EXPECT_EQ(patches(), before);

    set.paths[across].nodeIndices = {set.addNode(set.nodeFactory.createEdgeNode(0, 0.5f))};
    EXPECT_FALSE(SurfacePathPatchifier(&set, &cube).compute(true)) << "an edge node is no vertex";
    EXPECT_EQ(patches(), before);
    EXPECT_FALSE(SurfacePathPatchifier(&set, nullptr).compute(true));
}

}  // namespace
