// Smoothing on a flat grid, where the smoothed course is easy to state: a zig-zag gets
// straighter and shorter, straight runs and two-node paths stay, an empty list means every
// path, and a path that cannot be joined again keeps its nodes.

#include "PathEditSmooth.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class Smoothing : public testing::Test {
  protected:
    // A path through the given grid vertices, its ends control points.
    int addPath(std::initializer_list<int> vertices) {
        McDArray<int> indices;
        for (int v : vertices) indices.append(set.addNode(set.nodeFactory.createVertexNode(v)));
        set.nodes[indices[0]]->isControlPoint = set.nodes[indices.last()]->isControlPoint = 1;
        return set.addPath(indices);
    }
    McDArray<McVec3f> positions(int path) const {
        McDArray<McVec3f> result;
        for (int i = 0; i < set.getNumNodesOnPath(path); ++i) result.append(set.getSurfaceNode(path, i)->getPosition());
        return result;
    }
    double length(int path) const {
        double sum = 0;
        McDArray<McVec3f> p = positions(path);
        for (int64_t i = 1; i < p.size(); ++i) sum += (p[i] - p[i - 1]).length();
        return sum;
    }

    Surface grid = makeGrid(8);
    SurfacePathSet set{&grid};
};

TEST_F(Smoothing, StraightensAZigZagOfEveryPathWhenNoneIsListed) {
    const int zigZag = addPath({10, 20, 12, 22, 14, 24, 16});
    const int other = addPath({37, 47, 39, 49});
    const double before = length(zigZag), otherBefore = length(other);
    const McVec3f start = positions(zigZag)[0], end = positions(zigZag).last();
    PathEditSmooth smooth(&set);
    smooth.iterations = 3;
    ASSERT_TRUE(smooth.exec());
    EXPECT_LT(length(zigZag), before);
    EXPECT_LT(length(other), otherBefore) << "the empty list smooths every path";
    EXPECT_EQ(positions(zigZag)[0], start);
    EXPECT_EQ(positions(zigZag).last(), end) << "the ends never move";
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

TEST_F(Smoothing, KeepsStraightRunsAndTwoNodePaths) {
    const int straight = addPath({10, 11, 12, 13});
    const int twoNodes = addPath({30, 41});
    const McDArray<McVec3f> straightBefore = positions(straight);
    PathEditSmooth smooth(&set);
    ASSERT_TRUE(smooth.exec());
    EXPECT_EQ(positions(straight).size(), straightBefore.size());
    for (int64_t i = 0; i < straightBefore.size(); ++i) EXPECT_EQ(positions(straight)[i], straightBefore[i]);
    EXPECT_EQ(positions(twoNodes)[0], grid.points[30]);
    EXPECT_EQ(positions(twoNodes).last(), grid.points[41]) << "reconnected, not moved";
}

TEST_F(Smoothing, APathThatCannotBeJoinedAgainKeepsItsNodes) {
    const int far = addPath({10, 30, 12});
    const int near = addPath({40, 50, 51});  // its middle node moves within one triangle
    McDArray<int> farBefore, farAfter;
    set.getPath(far, farBefore);

    PathEditSmooth smooth(&set);
    smooth.stripConnector.setSearchLimit(1);  // only nodes in one triangle can be joined
    smooth.pathList = {far, near};
    EXPECT_FALSE(smooth.exec()) << "the kept path still has segments across triangles";
    set.getPath(far, farAfter);
    EXPECT_EQ(std::vector<int>(farAfter.begin(), farAfter.end()), std::vector<int>(farBefore.begin(), farBefore.end()));
    EXPECT_EQ(positions(near)[0], grid.points[40]) << "the other path is still there";
}

}  // namespace
