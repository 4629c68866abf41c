// Deleting a control point from every path that passes through it.
//
// The strip surfaces have their bottom row at the even vertices (0, 2, 4, ...) and their top
// row at the odd ones, one unit apart.
#include "DijkstraConnector.h"
#include "OperationTestSupport.h"
#include "PathEditDeleteCP.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

using Vertices = std::vector<int>;

class DeleteControlPointTest : public ::testing::Test {
  protected:
    DeleteControlPointTest() { dijkstra.init(&set.pathSet, nullptr); }

    McHandle<PathEditDeleteCP> deleteCP(int node, PathConnector* connector, int emptyOnly = 0) {
        return new PathEditDeleteCP(&set.pathSet, &set.selection, node, connector, emptyOnly);
    }
    // Node index of a new control point inside a triangle, where the connector cannot go.
    int insideControlPoint(int triangle) {
        SurfaceNode* node = set.pathSet.nodeFactory.createTriangleNode(triangle, 0.3f, 0.3f);
        node->isControlPoint = 1;
        return set.pathSet.addNode(node);
    }

    EditedPathSet set{makeStrip(8)};
    DijkstraConnector dijkstra;
};

TEST_F(DeleteControlPointTest, TheOnlyNodeTakesItsPathAlongAndClearsTheSelection) {
    set.addVertexPath({4});
    set.addVertexPath({0, 2});
    set.selection.setSinglePathActive(1);
    set.selection.setActiveCP(set.nodeAt(1, 0));
    expectUndoRedoRestores(set, deleteCP(set.nodeAt(0, 0), nullptr));
    ASSERT_EQ(set.pathSet.getNumPaths(), 1);
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2})) << "the later path moves down";
    EXPECT_TRUE(set.selection.noPathSelected());
    EXPECT_EQ(set.selection.getActiveCP(), -1);
    EXPECT_EQ(set.pathSet.getNumNodes(), 3) << "the node stays in the table";
}

TEST_F(DeleteControlPointTest, WithEmptyOnlyThePathStaysInItsSlot) {
    set.addVertexPath({4});
    set.addVertexPath({0, 2});
    set.selection.setSinglePathActive(0);
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 0), nullptr, 1)));
    ASSERT_EQ(set.pathSet.getNumPaths(), 2);
    EXPECT_TRUE(set.pathSet.isPathEmpty(0));
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{0, 2}));
    EXPECT_EQ(set.selection.getActivePath(), 0);
}

TEST_F(DeleteControlPointTest, TheEndsOfAnOpenPathGoWithoutAConnector) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    const int four = set.nodeAt(0, 2);
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 4), nullptr))) << "a connector call would fail";
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4}));
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 0), nullptr)));
    EXPECT_EQ(pathOf(set.pathSet, 0), (std::vector<int>{four})) << "the next control point starts the path";
}

TEST_F(DeleteControlPointTest, AnInnerControlPointIsBridgedByOneNewSegment) {
    set.addVertexPath({0, 1, 3, 5, 4, 6, 8}, {0, 3, 8});  // a detour over the top row
    ASSERT_TRUE(runProtocol(deleteCP(set.nodeAt(0, 2), &dijkstra)));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6, 8}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 8}));
    EXPECT_TRUE(isConsistent(set.pathSet));
}

// On a loop whose seam is no control point and that has one other control point, the
// removal between that control point and itself once removed nothing: the delete then found
// the same control point again after every reconnection and never ended.
TEST_F(DeleteControlPointTest, ALoopWithOneOtherControlPointAndNoSeamControlPointEnds) {
    set.addVertexPath({0, 2, 3, 1, 0}, {2, 3});
    const PathSetState before = captureState(set);
    EXPECT_FALSE(runProtocol(deleteCP(set.nodeAt(0, 1), &dijkstra)));
    EXPECT_EQ(captureState(set), before);
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
    addPathThrough(set.pathSet, {1, 3}, junction, {5, 7});
    ASSERT_TRUE(runProtocol(deleteCP(junction, &dijkstra)));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6, 8}));
    EXPECT_NE(set.nodeAt(0, 2), junction) << "the new segment brings its own node at vertex 4";
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{1, 3, 5, 7}));
    EXPECT_TRUE(isConsistent(set.pathSet));
}

// The active control point survives a deletion elsewhere on its path only if it keeps its
// ordinal; any deletion changes the count of control points and so clears it.
TEST_F(DeleteControlPointTest, DeletingAControlPointOfTheActivePathClearsTheActiveOne) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    set.selection.setSinglePathActive(0);
    set.selection.setActiveCP(set.nodeAt(0, 0));
    expectUndoRedoRestores(set, deleteCP(set.nodeAt(0, 2), &dijkstra));
    EXPECT_EQ(set.selection.getActiveCP(), -1);
    EXPECT_EQ(set.selection.getActivePath(), 0);
}

TEST_F(DeleteControlPointTest, NeighboursTheConnectorCannotJoinLeaveEverythingAsBefore) {
    const int four = set.pathSet.addNode(makeControlPoint(set.pathSet, 4));
    const int path = set.pathSet.addPath({insideControlPoint(2), four, insideControlPoint(4)});
    set.selection.setSinglePathActive(path);
    set.selection.setActiveCP(four);
    const PathSetState before = captureState(set);
    EXPECT_FALSE(runProtocol(deleteCP(four, &dijkstra)));
    EXPECT_EQ(captureState(set), before);
}

}  // namespace
