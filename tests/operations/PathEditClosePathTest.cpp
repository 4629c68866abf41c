// Closing, opening and reversing one path.
//
// The strip surfaces have their bottom row at the even vertices (0, 2, 4, ...) and their top
// row at the odd ones, one unit apart.
#include "DijkstraConnector.h"
#include "OperationTestSupport.h"
#include "PathEditClosePath.h"
#include "PathEditOpenPath.h"
#include "PathEditReversePath.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

using Vertices = std::vector<int>;

class PathStructureTest : public ::testing::Test {
  protected:
    PathStructureTest() { dijkstra.init(&set.pathSet, nullptr); }

    EditedPathSet set{makeStrip(6)};
    DijkstraConnector dijkstra;
};

// === Close

TEST_F(PathStructureTest, ClosingTwoControlPointsMakesALoopOfTwoSegments) {
    set.addVertexPath({0, 2, 4, 5});
    McHandle<PathEditClosePath> close = new PathEditClosePath(&set.pathSet, 0, &dijkstra);
    expectUndoRedoRestores(set, close);
    EXPECT_TRUE(set.pathSet.isPathClosed(0));
    EXPECT_EQ(set.nodeAt(0, 0), set.pathSet.paths[0].nodeIndices.last()) << "the first node itself ends the loop";
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 5, 0}));
    EXPECT_EQ(set.pathSet.getNumNodesOnPath(0), 7) << "the way back from 5 to 0 takes three edges";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(PathStructureTest, RefusesPathsThatCannotBeClosedWithoutChangingThem) {
    set.addVertexPath({0});                  // one node: never taken as closed, one control point
    set.addVertexPath({0, 2, 4}, {0});       // one control point among three nodes
    set.addVertexPath({0, 2, 3, 1, 0});      // already closed
    const PathSetState before = captureState(set);
    for (int path : {0, 1, 2, 3, -1}) {
        McHandle<PathEditClosePath> close = new PathEditClosePath(&set.pathSet, path, &dijkstra);
        EXPECT_FALSE(close->exec()) << "path " << path;
        EXPECT_EQ(captureState(set), before) << "path " << path;
    }
}

TEST_F(PathStructureTest, AnEndTheConnectorCannotReachIsRolledBack) {
    const int path = set.addVertexPath({0, 2});
    SurfaceNode* inside = set.pathSet.nodeFactory.createTriangleNode(2, 0.3f, 0.3f);
    inside->isControlPoint = 1;
    set.pathSet.paths[path].nodeIndices.append(set.pathSet.addNode(inside));
    const PathSetState before = captureState(set);
    McHandle<PathEditClosePath> close = new PathEditClosePath(&set.pathSet, path, &dijkstra);
    close->initUndo();
    EXPECT_FALSE(close->exec());
    EXPECT_EQ(set.pathSet.getNumNodesOnPath(path), 4) << "the repeated first node stays until the rollback";
    close->undo();
    EXPECT_EQ(captureState(set), before);
}

// === Open

TEST_F(PathStructureTest, OpeningALoopRotatesItToStartAtTheNode) {
    set.addVertexPath({0, 2, 3, 1, 0}, {0});
    McHandle<PathEditOpenPath> open = new PathEditOpenPath(&set.pathSet, &set.selection, 0, 2, true);
    ASSERT_TRUE(runProtocol(open));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{3, 1, 0, 2}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{3, 0, 2})) << "both new ends become control points";
    EXPECT_EQ(set.pathSet.getNumPaths(), 1);
}

TEST_F(PathStructureTest, OpeningALoopAtItsSeamDropsTheRepeatedNode) {
    set.addVertexPath({0, 2, 3, 1, 0}, {0});
    McHandle<PathEditOpenPath> open = new PathEditOpenPath(&set.pathSet, &set.selection, 0, 0, false);
    ASSERT_TRUE(runProtocol(open));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 3, 1}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0}));
}

TEST_F(PathStructureTest, CuttingAnOpenPathAppendsItsTailAsTheActivePath) {
    set.addVertexPath({0, 2, 4, 6});
    set.addVertexPath({1, 3});
    set.selection.setSinglePathActive(0);
    set.selection.setActiveCP(set.nodeAt(0, 0));
    McHandle<PathEditOpenPath> cut = new PathEditOpenPath(&set.pathSet, &set.selection, 0, 1, false);
    expectUndoRedoRestores(set, cut);
    ASSERT_EQ(set.pathSet.getNumPaths(), 3);
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2}));
    EXPECT_EQ(verticesOf(set.pathSet, 2), (Vertices{2, 4, 6}));
    EXPECT_EQ(set.nodeAt(0, 1), set.nodeAt(2, 0)) << "both halves share the node at the cut";
    EXPECT_EQ(set.selection.getActivePath(), 2) << "the new last path is the only active path";
    EXPECT_EQ(set.selection.getActiveCP(), -1);
}

TEST_F(PathStructureTest, CuttingCanMakeTheSharedNodeAControlPoint) {
    set.addVertexPath({0, 2, 4, 6});
    McHandle<PathEditOpenPath> cut = new PathEditOpenPath(&set.pathSet, &set.selection, 0, 2, true);
    ASSERT_TRUE(runProtocol(cut));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{0, 4}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 1), (Vertices{4, 6}));
}

// The snapshots share their node objects with the edited set, so a control-point flag that an
// operation sets on a node that was already there outlives the undo.
// Snapshots share the node objects, so a flag set on a node that was already in the table
// is node state, not path state: undo restores the paths but the flag stays.
TEST_F(PathStructureTest, ControlPointFlagsOfExistingNodesLiveOnTheSharedNodes) {
    set.addVertexPath({0, 2, 4, 6});
    const int cutNode = set.nodeAt(0, 1);
    McHandle<PathEditOpenPath> cut = new PathEditOpenPath(&set.pathSet, &set.selection, 0, 1, true);
    ASSERT_TRUE(runProtocol(cut));
    cut->undo();
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{0, 2, 4, 6}));
    EXPECT_TRUE(set.pathSet.getNode(cutNode)->isControlPoint);
}

TEST_F(PathStructureTest, ANegativePositionFails) {
    set.addVertexPath({0, 2, 3, 1, 0});
    set.selection.setSinglePathActive(0);
    const PathSetState before = captureState(set);
    McHandle<PathEditOpenPath> open = new PathEditOpenPath(&set.pathSet, &set.selection, 0, -1, true);
    EXPECT_FALSE(runProtocol(open));
    EXPECT_EQ(captureState(set), before);
}

// === Reverse

TEST_F(PathStructureTest, ReversingCarriesTheControlPointsAlongAndTwiceRestores) {
    set.addVertexPath({0, 2, 4, 6, 7}, {0, 4, 7});
    const PathSetState before = captureState(set);
    McHandle<PathEditReversePath> reverse = new PathEditReversePath(&set.pathSet, &set.selection, 0);
    ASSERT_TRUE(runProtocol(reverse));
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{7, 6, 4, 2, 0}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 0), (Vertices{7, 4, 0}));
    McHandle<PathEditReversePath> again = new PathEditReversePath(&set.pathSet, &set.selection, 0);
    ASSERT_TRUE(runProtocol(again));
    EXPECT_EQ(captureState(set), before);
}

TEST_F(PathStructureTest, ReversingANonexistentPathSucceedsWithoutChange) {
    set.addVertexPath({0, 2, 4});
    const PathSetState before = captureState(set);
    for (int path : {1, -1}) {
        McHandle<PathEditReversePath> reverse = new PathEditReversePath(&set.pathSet, &set.selection, path);
        EXPECT_TRUE(runProtocol(reverse)) << "path " << path;
        EXPECT_EQ(captureState(set), before) << "path " << path;
    }
}

// The active control point is found again by its ordinal, which reversing changes.
TEST_F(PathStructureTest, ReversingKeepsOnlyAnActiveControlPointThatStaysInPlace) {
    set.addVertexPath({0, 2, 4, 6, 7}, {0, 4, 7});
    set.selection.setSinglePathActive(0);
    set.selection.setActiveCP(set.nodeAt(0, 2));
    McHandle<PathEditReversePath> reverse = new PathEditReversePath(&set.pathSet, &set.selection, 0);
    ASSERT_TRUE(runProtocol(reverse));
    EXPECT_EQ(set.selection.getActiveCP(), set.nodeAt(0, 2)) << "the middle control point keeps its ordinal";
    set.selection.setActiveCP(set.nodeAt(0, 0));
    McHandle<PathEditReversePath> back = new PathEditReversePath(&set.pathSet, &set.selection, 0);
    ASSERT_TRUE(runProtocol(back));
    EXPECT_EQ(set.selection.getActiveCP(), -1) << "the first control point is now another node elsewhere";
    EXPECT_EQ(set.selection.getActivePath(), 0);
    back->undo();
    EXPECT_EQ(set.selection.getActiveCP(), set.nodeAt(0, 0));
}

}  // namespace
