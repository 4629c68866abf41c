// Deleting a control point from every path that passes through it.
#include "OperationTestSupport.h"
#include "PathEditDeleteCP.h"

#include <gtest/gtest.h>

namespace {

class DeleteControlPointTest : public StripEditTest {
  protected:
    McHandle<PathEditDeleteCP> deleteCP(int node, PathConnector* connector, int emptyOnly = 0) {
        return new PathEditDeleteCP(&set.pathSet, &set.selection, node, connector, emptyOnly);
    }
};

TEST_F(DeleteControlPointTest, TheOnlyNodeTakesItsPathAlongUnlessEmptyOnly) {
    set.addVertexPath({4});
    set.addVertexPath({0, 2});
    set.addVertexPath({6});
    set.select(1, 0);
    expectUndoRedoRestores(set, deleteCP(set.nodeAt(0, 0), nullptr));
    ASSERT_EQ(set.pathSet.getNumPaths(), 2);
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2})) << "the later paths move down";
    EXPECT_TRUE(set.selection.noPathSelected());
    EXPECT_EQ(set.pathSet.getNumNodes(), 4) << "the node stays in the table";

    set.selection.setSinglePathActive(1);
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(1, 0), nullptr, 1)));
    ASSERT_EQ(set.pathSet.getNumPaths(), 2);
    EXPECT_TRUE(set.pathSet.isPathEmpty(1)) << "the emptied path keeps its slot";
    EXPECT_EQ(set.selection.getActivePath(), 1);
}

TEST_F(DeleteControlPointTest, TheEndsOfAnOpenPathGoWithoutAConnector) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    const int four = set.nodeAt(0, 2);
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 4), nullptr))) << "a connector call would fail";
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4}));
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 0), nullptr)));
    EXPECT_EQ(pathOf(set.pathSet, 0), (Vertices{four})) << "the next control point starts the path";
}

// Deleting changes the count of control points on the path, which clears the active one.
TEST_F(DeleteControlPointTest, AnInnerControlPointIsBridgedByOneNewSegment) {
    set.addVertexPath({0, 1, 3, 5, 4, 6, 8}, {0, 3, 8});  // a detour over the top row
    set.select(0, 0);
    expectUndoRedoRestores(set, deleteCP(set.nodeAt(0, 2), &dijkstra));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6, 8}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 8}));
    EXPECT_EQ(set.selection.getActiveCP(), -1);
    EXPECT_TRUE(isConsistent(set.pathSet));
}

// On a loop whose seam is no control point and that has one other control point, the
// removal between that control point and itself once removed nothing: the delete then found
// the same control point again after every reconnection and never ended.
TEST_F(DeleteControlPointTest, ALoopWithOneOtherControlPointAndNoSeamControlPointEnds) {
    set.addVertexPath({0, 2, 3, 1, 0}, {2, 3});
    EXPECT_TRUE(failsWithoutChange(set, deleteCP(set.nodeAt(0, 1), &dijkstra)));
}

TEST_F(DeleteControlPointTest, DeletingTheSeamOfALoopKeepsItClosed) {
    set.addVertexPath({0, 2, 4, 6, 7, 5, 3, 1, 0}, {0, 6, 5});
    const int six = set.nodeAt(0, 3);
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 0), &dijkstra)));
    EXPECT_TRUE(set.pathSet.isPathClosed(0));
    EXPECT_EQ(set.nodeAt(0, 0), six) << "the loop now starts at the next control point";
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{6, 7, 5, 6})) << "5 and 6 share the diagonal";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(DeleteControlPointTest, ASharedNodeIsDeletedFromEveryPath) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    const int junction = set.nodeAt(0, 2);
    set.addVertexPath({1, 3, 4, 5, 7}, {1, 3, 4, 5, 7});
    set.pathSet.paths[1].nodeIndices[2] = junction;  // crosses path 0 at its control point
    ASSERT_TRUE(runProtocol(deleteCP(junction, &dijkstra)));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6, 8}));
    EXPECT_NE(set.nodeAt(0, 2), junction) << "the new segment brings its own node at vertex 4";
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{1, 3, 5, 7}));
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(DeleteControlPointTest, NeighboursTheConnectorCannotJoinLeaveEverythingAsBefore) {
    const int four = set.pathSet.addNode(makeControlPoint(set.pathSet, 4));
    set.pathSet.addPath({set.pathSet.addNode(insideTriangle(2)), four, set.pathSet.addNode(insideTriangle(4))});
    set.select(0, 1);
    EXPECT_TRUE(failsWithoutChange(set, deleteCP(four, &dijkstra)));
}

}  // namespace
