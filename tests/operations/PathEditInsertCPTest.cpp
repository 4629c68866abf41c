// Inserting a node into a segment of a path.
//
// The strip surfaces have their bottom row at the even vertices (0, 2, 4, ...) and their top
// row at the odd ones, one unit apart.
#include "OperationTestSupport.h"
#include "PathEditInsertCP.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

using Vertices = std::vector<int>;

class InsertControlPointTest : public ::testing::Test {
  protected:
    // A node on the side of `triangle` nearest to `point`, flagged as the editor flags them.
    SurfaceNode* edgeNode(int triangle, McVec3f const& point, bool isControlPoint = true) {
        SurfaceNode* node = set.pathSet.nodeFactory.createNode(SurfaceNode::EDGE, triangle, point);
        node->isControlPoint = isControlPoint;
        return node;
    }

    EditedPathSet set{makeStrip(6)};
};

TEST_F(InsertControlPointTest, InsertsAfterThePositionWithoutChangingTheShape) {
    set.addVertexPath({0, 2, 4, 6});
    const float length = set.pathSet.getPathLength(0);
    SurfaceNode* node = edgeNode(2, McVec3f(1.5f, 0, 0));  // on the edge from vertex 2 to 4
    McHandle<PathEditInsertCP> insert = new PathEditInsertCP(&set.pathSet, &set.selection, 0, 1, node);
    expectUndoRedoRestores(set, insert);
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, -1, 4, 6}));
    EXPECT_EQ(set.pathSet.getSurfaceNode(0, 2), node);
    EXPECT_EQ(set.nodeAt(0, 2), set.pathSet.getNumNodes() - 1) << "the node goes to the end of the table";
    EXPECT_FLOAT_EQ(set.pathSet.getPathLength(0), length);
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(InsertControlPointTest, OnTheLastSegmentOfALoopTheSeamStaysLast) {
    set.addVertexPath({0, 2, 3, 1, 0});
    const int seam = set.nodeAt(0, 0);
    McHandle<PathEditInsertCP> insert =
        new PathEditInsertCP(&set.pathSet, &set.selection, 0, 3, edgeNode(0, McVec3f(0, 0.5f, 0)));
    ASSERT_TRUE(runProtocol(insert));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 3, 1, -1, 0}));
    EXPECT_EQ(set.pathSet.paths[0].nodeIndices.last(), seam);
    EXPECT_TRUE(set.pathSet.isPathClosed(0));
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(InsertControlPointTest, AfterTheLastPositionTheNodeIsAppended) {
    set.addVertexPath({0, 2, 4});
    McHandle<PathEditInsertCP> insert =
        new PathEditInsertCP(&set.pathSet, &set.selection, 0, 2, makeControlPoint(set.pathSet, 6));
    ASSERT_TRUE(runProtocol(insert));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6}));
}

// A new control point changes the count of control points on the active path; a new
// intermediate node does not, and the active control point then survives.
TEST_F(InsertControlPointTest, OnlyANewControlPointClearsTheActiveControlPoint) {
    set.addVertexPath({0, 2, 4, 6});
    set.selection.setSinglePathActive(0);
    const int active = set.nodeAt(0, 3);
    set.selection.setActiveCP(active);
    McHandle<PathEditInsertCP> intermediate =
        new PathEditInsertCP(&set.pathSet, &set.selection, 0, 0, edgeNode(0, McVec3f(0.5f, 0, 0), false));
    ASSERT_TRUE(runProtocol(intermediate));
    EXPECT_EQ(set.selection.getActiveCP(), active);
    McHandle<PathEditInsertCP> controlPoint =
        new PathEditInsertCP(&set.pathSet, &set.selection, 0, 2, edgeNode(2, McVec3f(1.5f, 0, 0)));
    ASSERT_TRUE(runProtocol(controlPoint));
    EXPECT_EQ(set.selection.getActiveCP(), -1);
    EXPECT_EQ(set.selection.getActivePath(), 0);
    controlPoint->undo();
    EXPECT_EQ(set.selection.getActiveCP(), active);
    controlPoint->redo();
    EXPECT_EQ(set.selection.getActiveCP(), -1);
}

}  // namespace
