// Splitting at intersections: where paths meet, new paths end at one shared control point.
//
// On the strip, the cell 2-4-5-3 is a loop of four edges; its side 2-3 separates triangle 1
// (points 1, 2, 3) from triangle 2 (points 2, 3, 4).

#include "OperationTestSupport.h"
#include "PathEditFixIntersections.h"

#include <gtest/gtest.h>

namespace {

class FixIntersections : public StripEditTest {
  protected:
    int addNode(SurfaceNode* node) {
        node->isControlPoint = 1;
        return set.pathSet.addNode(node);
    }
    std::vector<Vertices> vertexPaths() const { return verticesOfAllPaths(set.pathSet); }
    PathSetState split(bool smooth = false) {
        return expectUndoRedoRestores(set, new PathEditFixIntersections(&set.pathSet, &set.selection, smooth));
    }
    bool isControlPointAt(int path, int position) const {
        return set.pathSet.getSurfaceNode(path, position)->isControlPoint == 1;
    }
};

TEST(FixIntersectionsInATriangle, TwoPathsCrossingOnceBecomeFourEndingAtTheSharedControlPoint) {
    EditedPathSet quad(makeQuad());
    SurfacePathSet& set = quad.pathSet;
    auto node = [&set](SurfaceNode* n) {
        n->isControlPoint = 1;
        return set.addNode(n);
    };
    auto edgeMiddle = [&](int p, int q) { return node(set.nodeFactory.createEdgeNode(quad.surface.findEdge(p, q), 0.5f)); };
    // They cross at (0.75, 0.25) inside triangle 0.
    set.addPath({edgeMiddle(0, 1), edgeMiddle(1, 2)});
    set.addPath({node(set.nodeFactory.createVertexNode(1)), edgeMiddle(0, 2)});
    std::vector<SurfaceNode*> ends;
    for (int p = 0; p < 2; ++p) {
        ends.push_back(set.getSurfaceNode(p, 0));
        ends.push_back(set.getSurfaceNode(p, 1));
    }

    expectUndoRedoRestores(quad, new PathEditFixIntersections(&set, &quad.selection, false));
    ASSERT_EQ(set.getNumPaths(), 4);
    ASSERT_EQ(set.getNumNodes(), 5);
    SurfaceNode* crossing = set.getSurfaceNode(0, 1);
    EXPECT_NEAR((crossing->getPosition() - McVec3f(0.75f, 0.25f, 0)).length(), 0, 1e-6);
    EXPECT_EQ(crossing->isControlPoint, 1);
    // The walk follows the first path through the crossing, then takes the other pieces there.
    const SurfaceNode* expected[4][2] = {{ends[0], crossing}, {crossing, ends[1]}, {crossing, ends[2]}, {crossing, ends[3]}};
    for (int p = 0; p < 4; ++p) {
        ASSERT_EQ(set.getNumNodesOnPath(p), 2);
        EXPECT_EQ(set.getSurfaceNode(p, 0), expected[p][0]) << "path " << p;
        EXPECT_EQ(set.getSurfaceNode(p, 1), expected[p][1]) << "path " << p;
    }
    EXPECT_EQ(quad.selection.getActivePaths(), McDArray<int>({3})) << "new paths select the last one";
    EXPECT_TRUE(isConsistent(set));
}

// Node 2 of the first path was no control point; undo must bring that back.
TEST_F(FixIntersections, APathTouchingAnotherWithItsEndCutsItThereAndStaysWhole) {
    set.addVertexPath({0, 2, 4, 6});
    set.addVertexPath({1, 3, 2});
    split();
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{0, 2}, {2, 4, 6}, {2, 3, 1}}));
    EXPECT_EQ(set.pathSet.getNumNodes(), 6);
    EXPECT_EQ(set.pathSet.paths[0].nodeIndices.last(), set.pathSet.paths[1].nodeIndices[0]);
    EXPECT_TRUE(isControlPointAt(1, 0));
    EXPECT_FALSE(isControlPointAt(2, 1)) << "inner nodes keep their flags";
}

TEST_F(FixIntersections, ASharedStretchBecomesOnePathOrStaysWithTheLongerPathWhenSmoothed) {
    set.addVertexPath({0, 2, 4, 6, 8});
    set.addVertexPath({1, 2, 4, 6, 7});
    split();
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{0, 2}, {2, 4, 6}, {6, 8}, {6, 7}, {2, 1}}));

    EditedPathSet again(makeStrip(8));
    again.addVertexPath({0, 2, 4, 6, 8});
    again.addVertexPath({1, 2, 4, 6, 7});
    expectUndoRedoRestores(again, new PathEditFixIntersections(&again.pathSet, &again.selection, true));
    // Equal lengths: the lower index is served first and keeps the stretch.
    EXPECT_EQ(verticesOfAllPaths(again.pathSet), (std::vector<Vertices>{{6, 7}, {0, 2, 4, 6, 8}, {2, 1}}));
    EXPECT_TRUE(isConsistent(again.pathSet));
}

// The walk gives the loop back whole, starting and ending at its start; the re-closing merge
// then meets it at both ends and drops it.
TEST_F(FixIntersections, ALoneUncrossedLoopIsDropped) {
    set.addVertexPath({2, 4, 5, 3, 2});
    set.addVertexPath({7, 9});
    split();
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{7, 9}}));
    EXPECT_EQ(set.pathSet.getNumNodes(), 2);
}

TEST_F(FixIntersections, ALoopCrossedOnceIsClosedAgainAtTheCrossing) {
    set.addVertexPath({2, 4, 5, 3, 2});
    SurfaceNodeFactory& factory = set.pathSet.nodeFactory;
    const int onSide = addNode(factory.createEdgeNode(set.surface.findEdge(2, 3), 0.5f));
    set.pathSet.addPath({addNode(factory.createTriangleNode(1, 0.3f, 0.3f)), onSide,
                         addNode(factory.createTriangleNode(2, 0.3f, 0.3f))});
    split();
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{-1, 3, 5, 4, 2, -1}, {-1, -1}, {-1, -1}}));
    SurfacePathSet const& result = set.pathSet;
    ASSERT_TRUE(result.isPathClosed(0));
    const int crossing = result.paths[0].nodeIndices[0];
    EXPECT_EQ(result.getNode(crossing)->getKind(), SurfaceNode::EDGE);
    EXPECT_EQ(result.paths[1].nodeIndices[0], crossing);
    EXPECT_EQ(result.paths[2].nodeIndices[0], crossing);
    EXPECT_EQ(result.getNode(result.paths[1].nodeIndices[1])->getElement(), 1);
    EXPECT_EQ(result.getNode(result.paths[2].nodeIndices[1])->getElement(), 2);
    EXPECT_TRUE(isConsistent(result));
}

// The selected paths cross at vertex 2 (each through a node of its own there); joined again by
// their own pieces, they come back whole, now sharing that node, after the unselected path.
TEST_F(FixIntersections, TheSelectedFormKeepsUnselectedPathsFirstAndSelectedOnesWhole) {
    set.addVertexPath({8, 9});
    set.addVertexPath({0, 2, 4, 6});
    set.addVertexPath({1, 2, 3});
    const McDArray<int> unselected = set.pathSet.paths[0].nodeIndices;
    const int nodesBefore = set.pathSet.getNumNodes();
    expectUndoRedoRestores(set, new PathEditFixIntersections(&set.pathSet, &set.selection, {1, 2}, false));
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{8, 9}, {0, 2, 4, 6}, {1, 2, 3}}));
    EXPECT_EQ(set.pathSet.paths[0].nodeIndices, unselected);
    EXPECT_EQ(set.pathSet.paths[1].nodeIndices[1], set.pathSet.paths[2].nodeIndices[1]);
    // The fixed paths bring the temporary set's table, merged down to the six nodes they use.
    EXPECT_EQ(set.pathSet.getNumNodes(), nodesBefore + 6);
    EXPECT_TRUE(isConsistent(set.pathSet));
}

// A path of a million nodes walked straight through would need a million nested calls.
TEST(FixIntersectionsWalk, ALongPathIsWalkedWithoutRecursionAndComesBackUnchanged) {
    constexpr int kTriangles = 2 * 50000;
    EditedPathSet strip(makeStrip(kTriangles));
    std::vector<int> zigzag;
    for (int v = 0; v < kTriangles + 2; ++v) zigzag.push_back(v);
    strip.addVertexPath(zigzag);
    runProtocol(new PathEditFixIntersections(&strip.pathSet, &strip.selection, false));
    ASSERT_EQ(strip.pathSet.getNumPaths(), 1);
    EXPECT_EQ(verticesOf(strip.pathSet, 0), zigzag);
}

}  // namespace
