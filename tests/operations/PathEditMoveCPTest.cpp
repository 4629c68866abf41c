// Moving a control point, in every path that passes through it.
#include "OperationTestSupport.h"
#include "PathEditMoveCP.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class MoveControlPointTest : public StripEditTest {
  protected:
    // Moves the control point with node index `oldNode` to a new vertex node at `vertex`.
    McHandle<PathEditMoveCP> move(int oldNode, int vertex) {
        return new PathEditMoveCP(&set.pathSet, &set.selection, oldNode, makeControlPoint(set.pathSet, vertex),
                                  &dijkstra);
    }
    // The index the next move's new node gets: it goes to the end of the table first.
    int nextNodeIndex() const { return set.pathSet.getNumNodes(); }
    bool passesThrough(int path, int node) const {
        std::vector<int> const indices = pathOf(set.pathSet, path);
        return std::find(indices.begin(), indices.end(), node) != indices.end();
    }
    std::vector<int> stretch(int path, int from, int to) const {
        std::vector<int> const indices = pathOf(set.pathSet, path);
        return std::vector<int>(indices.begin() + from, indices.begin() + to);
    }
};

TEST_F(MoveControlPointTest, TheOnlyControlPointBecomesAOneNodePath) {
    set.addVertexPath({4});
    set.addVertexPath({0, 2, 4}, {2});
    ASSERT_TRUE(runProtocol(move(set.nodeAt(0, 0), 9)));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{9}));
    ASSERT_TRUE(runProtocol(move(set.nodeAt(1, 1), 7)));
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{7})) << "the intermediate nodes go with it";
}

TEST_F(MoveControlPointTest, AnInnerControlPointGetsBothSegmentsRecomputed) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    const int old = set.nodeAt(0, 2);
    set.select(0, 2);
    expectUndoRedoRestores(set, move(old, 5));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 5, 8}));
    EXPECT_EQ(set.pathSet.getNumNodesOnPath(0), 6) << "three edges to 5, then the diagonal to 6 and on to 8";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(MoveControlPointTest, MovingAnEndRecomputesOnlyItsSegment) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    const std::vector<int> tail = stretch(0, 2, 5);
    ASSERT_TRUE(runProtocol(move(set.nodeAt(0, 0), 1)));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{1, 4, 8}));
    const int n = set.pathSet.getNumNodesOnPath(0);
    EXPECT_EQ(stretch(0, n - 3, n), tail) << "the stretch behind the first segment keeps its nodes";
    const std::vector<int> head = stretch(0, 0, n - 2);
    ASSERT_TRUE(runProtocol(move(set.nodeAt(0, n - 1), 9)));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{1, 4, 9}));
    EXPECT_EQ(stretch(0, 0, n - 2), head);
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(MoveControlPointTest, MovingTheSeamOfALoopKeepsItClosedAtTheNewNode) {
    set.addVertexPath({0, 2, 4, 6, 7, 5, 3, 1, 0}, {0, 6, 5});
    const std::vector<int> farSide = stretch(0, 3, 6);  // 6, 7, 5
    const int moved = nextNodeIndex();
    ASSERT_TRUE(runProtocol(move(set.nodeAt(0, 0), 2)));
    EXPECT_TRUE(set.pathSet.isPathClosed(0));
    EXPECT_EQ(set.nodeAt(0, 0), moved);
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{2, 6, 5, 2}));
    EXPECT_EQ(stretch(0, 2, 5), farSide) << "2 to 6 runs through 4, then the untouched side follows";
    EXPECT_EQ(set.pathSet.getNumNodesOnPath(0), 7) << "two edges from 5 back to 2";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(MoveControlPointTest, ALoopOfTwoControlPointsIsRebuiltThroughTheNewNode) {
    set.addVertexPath({0, 2, 3, 1, 0}, {0, 3});
    const int zero = set.nodeAt(0, 0);
    int three = set.nodeAt(0, 2);
    ASSERT_TRUE(runProtocol(move(three, 7)));
    EXPECT_TRUE(set.pathSet.isPathClosed(0));
    EXPECT_EQ(set.nodeAt(0, 0), zero) << "the loop starts at the other control point";
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 7, 0}));
    EXPECT_TRUE(isConsistent(set.pathSet));

    set.addVertexPath({0, 2, 3, 1, 0}, {0, 3});
    const int seam = set.nodeAt(1, 0);
    three = set.nodeAt(1, 2);
    ASSERT_TRUE(runProtocol(move(seam, 5)));
    EXPECT_EQ(set.nodeAt(1, 0), three) << "moving the seam starts the loop at the other control point";
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 1), (Vertices{3, 5, 3}));
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(MoveControlPointTest, AJunctionMovesInEveryPath) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    const int junction = set.nodeAt(0, 2);
    set.addVertexPath({1, 3, 4, 5}, {1, 3, 4, 5});
    set.pathSet.paths[1].nodeIndices[2] = junction;  // crosses path 0 at its control point
    const int moved = nextNodeIndex();
    ASSERT_TRUE(runProtocol(move(junction, 6)));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 6, 8}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 1), (Vertices{1, 3, 6, 5}));
    EXPECT_TRUE(passesThrough(0, moved) && passesThrough(1, moved)) << "both paths share the new node";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(MoveControlPointTest, APathThroughTheNodeTwiceHasBothOccurrencesReplaced) {
    set.addVertexPath({0, 2, 4, 5, 3, 1}, {0, 2, 5, 1});
    const int twice = set.nodeAt(0, 1);
    set.pathSet.paths[0].nodeIndices.insert(5, twice);  // ... 5, 3, [2], 1: back through vertex 2
    ASSERT_TRUE(isConsistent(set.pathSet));
    const int moved = nextNodeIndex();
    ASSERT_TRUE(runProtocol(move(twice, 4)));
    const std::vector<int> path = pathOf(set.pathSet, 0);
    EXPECT_EQ(std::count(path.begin(), path.end(), moved), 2);
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 4, 5, 4, 1}));
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(MoveControlPointTest, AFailedSegmentLeavesEverythingAsBefore) {
    set.addVertexPath({0, 2, 4, 6, 8}, {0, 4, 8});
    set.select(0, 2);
    McHandle<PathOperation> intoTriangle =
        new PathEditMoveCP(&set.pathSet, &set.selection, set.nodeAt(0, 2), insideTriangle(3), &dijkstra);
    EXPECT_TRUE(failsWithoutChange(set, intoTriangle));
}

// A loop whose seam is no control point (cut open without new control points, then closed)
// made the move write past the end of the shortened path.
TEST_F(MoveControlPointTest, ALoopWhoseSeamIsNoControlPointFailsInsteadOfWritingPastThePath) {
    set.addVertexPath({0, 2, 3, 1, 0}, {2, 3, 1});
    EXPECT_TRUE(failsWithoutChange(set, move(set.nodeAt(0, 1), 4)));
}

}  // namespace
