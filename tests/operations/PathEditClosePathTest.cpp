// Closing, opening and reversing one path.
#include "OperationTestSupport.h"
#include "PathEditClosePath.h"
#include "PathEditOpenPath.h"
#include "PathEditReversePath.h"

#include <gtest/gtest.h>

namespace {

class PathStructureTest : public StripEditTest {
  protected:
    McHandle<PathEditClosePath> close(int path) { return new PathEditClosePath(&set.pathSet, path, &dijkstra); }
    McHandle<PathEditOpenPath> open(int path, int position, bool newControlPoints) {
        return new PathEditOpenPath(&set.pathSet, &set.selection, path, position, newControlPoints);
    }
    McHandle<PathEditReversePath> reverse(int path) {
        return new PathEditReversePath(&set.pathSet, &set.selection, path);
    }
};

// === Close

TEST_F(PathStructureTest, ClosingTwoControlPointsMakesALoopOfTwoSegments) {
    set.addVertexPath({0, 2, 4, 5});
    expectUndoRedoRestores(set, close(0));
    EXPECT_TRUE(set.pathSet.isPathClosed(0));
    EXPECT_EQ(set.nodeAt(0, 0), set.pathSet.paths[0].nodeIndices.last()) << "the first node itself ends the loop";
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 5, 0}));
    EXPECT_EQ(set.pathSet.getNumNodesOnPath(0), 7) << "the way back from 5 to 0 takes three edges";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(PathStructureTest, PathsThatCannotBeClosedAreLeftAsBefore) {
    set.addVertexPath({0});                  // one node: never taken as closed, one control point
    set.addVertexPath({0, 2, 4}, {0});       // one control point among three nodes
    set.addVertexPath({0, 2, 3, 1, 0});      // already closed
    const PathSetState before = captureState(set);
    for (int path : {0, 1, 2, 3, -1}) {
        EXPECT_FALSE(close(path)->exec()) << "path " << path;
        EXPECT_EQ(captureState(set), before) << "path " << path;
    }
    set.pathSet.paths[0].nodeIndices.append(set.pathSet.addNode(insideTriangle(2)));
    EXPECT_TRUE(failsWithoutChange(set, close(0))) << "an end the connector cannot reach";
}

// === Open

TEST_F(PathStructureTest, OpeningALoopRotatesItToStartAtTheNodeOrDropsTheSeam) {
    set.addVertexPath({0, 2, 3, 1, 0}, {0});
    set.addVertexPath({0, 2, 3, 1, 0}, {0});
    ASSERT_TRUE(runProtocol(open(0, 2, true)));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{3, 1, 0, 2}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{3, 0, 2})) << "both new ends become control points";
    ASSERT_TRUE(runProtocol(open(1, 0, false)));
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{0, 2, 3, 1}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 1), (Vertices{0}));
    EXPECT_EQ(set.pathSet.getNumPaths(), 2);
}

TEST_F(PathStructureTest, CuttingAnOpenPathAppendsItsTailAsTheActivePath) {
    set.addVertexPath({0, 2, 4, 6});
    set.addVertexPath({1, 3});
    set.select(0, 0);
    expectUndoRedoRestores(set, open(0, 1, false));
    ASSERT_EQ(set.pathSet.getNumPaths(), 3);
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2}));
    EXPECT_EQ(verticesOf(set.pathSet, 2), (Vertices{2, 4, 6}));
    EXPECT_EQ(set.nodeAt(0, 1), set.nodeAt(2, 0)) << "both halves share the node at the cut";
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 2), (Vertices{6}));
    EXPECT_EQ(set.selection.getActivePath(), 2) << "the new last path is the only active path";
    EXPECT_EQ(set.selection.getActiveCP(), -1);
    ASSERT_TRUE(runProtocol(open(2, 1, true)));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 2), (Vertices{4})) << "the node at the cut ends both halves";
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 3), (Vertices{4, 6}));
}

TEST_F(PathStructureTest, APositionThatNamesNoNodeFails) {
    set.addVertexPath({0, 2, 3, 1, 0});
    set.addVertexPath({0, 2, 3});
    set.select(0, 0);
    EXPECT_TRUE(failsWithoutChange(set, open(0, -1, true)));
    EXPECT_TRUE(failsWithoutChange(set, open(0, 5, true))) << "past the end of a loop";
    EXPECT_TRUE(failsWithoutChange(set, open(1, 3, true))) << "past the end of an open path";
    // Pins a cut of an emptied path that made up an entry naming node 0 of an empty table.
    set.pathSet.paths[1].nodeIndices.clear();
    EXPECT_TRUE(failsWithoutChange(set, open(1, 0, false))) << "an empty path";
}

// === Reverse

TEST_F(PathStructureTest, ReversingCarriesTheControlPointsAlongAndTwiceRestores) {
    set.addVertexPath({0, 2, 4, 6, 7}, {0, 4, 7});
    const PathSetState before = captureState(set);
    ASSERT_TRUE(runProtocol(reverse(0)));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{7, 6, 4, 2, 0}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{7, 4, 0}));
    ASSERT_TRUE(runProtocol(reverse(0)));
    EXPECT_EQ(captureState(set), before);
    for (int path : {1, -1}) {
        EXPECT_TRUE(runProtocol(reverse(path))) << "a missing path succeeds without change: " << path;
        EXPECT_EQ(captureState(set), before) << "path " << path;
    }
}

}  // namespace
