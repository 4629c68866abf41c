// Inserting a node into a segment of a path.
#include "OperationTestSupport.h"
#include "PathEditInsertCP.h"

#include <gtest/gtest.h>

namespace {

class InsertControlPointTest : public StripEditTest {
  protected:
    // Inserts after `position` of path 0 a node on the side of `triangle` nearest to `point`.
    McHandle<PathEditInsertCP> insert(int position, int triangle, McVec3f const& point, bool isControlPoint = true) {
        SurfaceNode* node = set.pathSet.nodeFactory.createNode(SurfaceNode::EDGE, triangle, point);
        node->isControlPoint = isControlPoint;
        return new PathEditInsertCP(&set.pathSet, &set.selection, 0, position, node);
    }
};

TEST_F(InsertControlPointTest, InsertsAfterThePositionWithoutChangingTheShape) {
    set.addVertexPath({0, 2, 4, 6});
    const float length = set.pathSet.getPathLength(0);
    expectUndoRedoRestores(set, insert(1, 2, McVec3f(1.5f, 0, 0)));  // on the edge from vertex 2 to 4
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, -1, 4, 6}));
    EXPECT_FLOAT_EQ(set.pathSet.getPathLength(0), length);
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(InsertControlPointTest, OnTheLastSegmentOfALoopTheSeamStaysLast) {
    set.addVertexPath({0, 2, 3, 1, 0});
    const int seam = set.nodeAt(0, 0);
    ASSERT_TRUE(runProtocol(insert(3, 0, McVec3f(0, 0.5f, 0))));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 3, 1, -1, 0}));
    EXPECT_EQ(set.pathSet.paths[0].nodeIndices.last(), seam);
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(InsertControlPointTest, AfterTheLastPositionTheNodeIsAppended) {
    set.addVertexPath({0, 2, 4});
    McHandle<PathEditInsertCP> append =
        new PathEditInsertCP(&set.pathSet, &set.selection, 0, 2, makeControlPoint(set.pathSet, 6));
    ASSERT_TRUE(runProtocol(append));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6}));
}

// A new control point changes the count of control points on the active path; a new
// intermediate node does not, and the active control point then survives.
TEST_F(InsertControlPointTest, OnlyANewControlPointClearsTheActiveControlPoint) {
    set.addVertexPath({0, 2, 4, 6});
    set.select(0, 3);
    const int active = set.nodeAt(0, 3);
    ASSERT_TRUE(runProtocol(insert(0, 0, McVec3f(0.5f, 0, 0), false)));
    EXPECT_EQ(set.selection.getActiveCP(), active);
    ASSERT_TRUE(runProtocol(insert(2, 2, McVec3f(1.5f, 0, 0))));
    EXPECT_EQ(set.selection.getActiveCP(), -1);
    EXPECT_EQ(set.selection.getActivePath(), 0);
}

}  // namespace
