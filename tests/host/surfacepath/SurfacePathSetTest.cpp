// The path set's contract: control points and their neighbours at path ends and across the
// seam of closed paths, removals, connections, clean-ups, copies and the self-check.

#include "DijkstraConnector.h"
#include "Surface.h"
#include "SurfaceEdgeNode.h"
#include "SurfacePathSet.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

// A strip of 12 triangles: point 2k at (k, 0, 0), point 2k + 1 at (k, 1, 0).
class PathSet : public testing::Test {
  protected:
    int vertex(int v, bool controlPoint = false) {
        SurfaceNode* node = set.nodeFactory.createVertexNode(v);
        node->isControlPoint = controlPoint;
        return set.addNode(node);
    }
    int path(std::initializer_list<int> nodeIndices) { return set.addPath(McDArray<int>(nodeIndices)); }
    McDArray<int> const& entries(int p) const { return set.paths[p].nodeIndices; }

    Surface strip = makeStrip(12);
    SurfacePathSet set{&strip};
};

// Nodes A, B, C are control points; x, y, z are not.
class ControlPoints : public PathSet {
  protected:
    void SetUp() override {
        A = vertex(0, true), x = vertex(2), B = vertex(4, true), y = vertex(6), C = vertex(7, true), z = vertex(5);
        open = path({A, x, B, y, C});
        closed = path({A, x, B, y, C, z, A});
    }
    int A, x, B, y, C, z, open, closed;
};

TEST_F(ControlPoints, ClosedMeansFirstEqualsLastWithMoreThanOneNode) {
    EXPECT_FALSE(set.isPathClosed(open));
    EXPECT_TRUE(set.isPathClosed(closed));
    EXPECT_FALSE(set.isPathClosed(path({A}))) << "one node is never closed";
    EXPECT_TRUE(set.isPathClosed(path({A, A})));
    EXPECT_TRUE(set.isPathEmpty(path({})));
    EXPECT_TRUE(set.isPathEmpty(99));
    EXPECT_FALSE(set.isPathClosed(-1));
}

TEST_F(ControlPoints, CountingSkipsTheRepeatedSeam) {
    EXPECT_EQ(set.getNumControlPointsOnPath(open), 3);
    EXPECT_EQ(set.getNumControlPointsOnPath(closed), 3);
    EXPECT_EQ(set.getCPIndexOnPath(C, closed), 2);
    EXPECT_EQ(set.getCPIndexOnPath(x, open), -1) << "an intermediate node is no control point";
    EXPECT_EQ(set.getCPIndexOnPath(A, 42), -1);
    EXPECT_EQ(set.getIndexOfIthCP(1, open), B);
    EXPECT_EQ(set.getIndexOfIthCP(3, closed), -1);
}

TEST_F(ControlPoints, NeighboursStopAtOpenEndsAndWrapAcrossTheSeamOfLoops) {
    EXPECT_EQ(set.getPrevControlPoint(open, 0), 0) << "an open end is its own neighbour";
    EXPECT_EQ(set.getNextControlPoint(open, 4), 4);
    EXPECT_EQ(set.getNextControlPoint(open, 2), 4);
    EXPECT_EQ(set.getPrevControlPoint(open, 3), 2) << "from an intermediate node";
    EXPECT_EQ(set.getPrevControlPoint(open, 5), -1);
    EXPECT_EQ(set.getPrevControlPoint(closed, 0), 4);
    EXPECT_EQ(set.getNextControlPoint(closed, 0), 2);
    EXPECT_EQ(set.getPrevControlPoint(closed, 6), 4);
    EXPECT_EQ(set.getNextControlPoint(closed, 6), 2);
    EXPECT_EQ(set.getNextControlPoint(closed, 4), 6);
}

// Deleting or moving the seam's control point removes the stretch from the previous to the
// next control point across the seam, first and last entry included.
TEST_F(ControlPoints, RemovalBetweenNeighboursStopsAtOpenEndsAndTakesBothSeamEntriesOfALoop) {
    ASSERT_TRUE(set.removeIntermediateNodesFromPath(open, 0, 4));
    EXPECT_EQ(entries(open), McDArray<int>({A, C}));
    EXPECT_TRUE(set.removeIntermediateNodesFromPath(open, 1, 1)) << "nothing lies between a position and itself";
    EXPECT_FALSE(set.removeIntermediateNodesFromPath(open, 1, 0)) << "an open path does not wrap";
    EXPECT_FALSE(set.removeIntermediateNodesFromPath(open, 0, 2));
    EXPECT_EQ(entries(open), McDArray<int>({A, C}));
    ASSERT_TRUE(set.removeIntermediateNodesFromPath(closed, set.getPrevControlPoint(closed, 0),
                                                    set.getNextControlPoint(closed, 0)));
    EXPECT_EQ(entries(closed), McDArray<int>({B, y, C}));
}

// Deleting a control point of a loop whose only other control point is the neighbour on both
// sides once removed nothing, so the delete found the same control point again forever.
TEST_F(ControlPoints, RemovalBetweenTheOnlyControlPointOfALoopAndItselfKeepsOnlyIt) {
    ASSERT_TRUE(set.removeIntermediateNodesFromPath(closed, 2, 2));
    EXPECT_EQ(entries(closed), McDArray<int>({B}));
}

TEST_F(PathSet, ConnectFillsTheStretchAndFailsWithoutChange) {
    DijkstraConnector dijkstra;
    dijkstra.init(&set, nullptr);
    const int a = vertex(0, true), b = vertex(12, true);
    const int p = path({a, b});
    ASSERT_TRUE(set.connectSurfaceNodes(p, 0, 1, &dijkstra));
    EXPECT_EQ(set.getNumNodesOnPath(p), 7) << "six unit steps along the strip's bottom";
    EXPECT_FLOAT_EQ(set.getPathLength(p), 6);
    for (int i = 1; i + 1 < set.getNumNodesOnPath(p); ++i) EXPECT_EQ(set.getSurfaceNode(p, i)->isControlPoint, 0);
    // Connecting again replaces the stretch rather than adding to it.
    const int64_t nodesBefore = set.nodes.size();
    ASSERT_TRUE(set.connectSurfaceNodes(p, 0, 6, &dijkstra));
    EXPECT_EQ(set.getNumNodesOnPath(p), 7);
    EXPECT_EQ(set.nodes.size(), nodesBefore + 5);

    const int t = set.addNode(new SurfaceTriangleNode(&strip, 0, 0.2f, 0.2f));
    const int q = path({a, t});
    EXPECT_FALSE(set.connectSurfaceNodes(q, 0, 1, &dijkstra)) << "Dijkstra joins vertex nodes only";
    EXPECT_EQ(entries(q), McDArray<int>({a, t}));
    EXPECT_FALSE(set.connectSurfaceNodes(q, 0, 1, nullptr));
    EXPECT_FALSE(set.connectSurfaceNodes(q, 1, 0, &dijkstra));
}

TEST_F(PathSet, LookupsByNodeAndPositionAndTheKindsOfNodes) {
    const int a = vertex(0), b = vertex(1), c = vertex(2);
    path({a, b});
    path({c, b, a});
    EXPECT_EQ(set.getPathForNode(c), 1);
    EXPECT_EQ(set.getPathForNode(b), 0);
    EXPECT_EQ(set.getPathForNode(99), -1);
    EXPECT_EQ(set.getNodeIndexOnPath(1, a), 2);
    EXPECT_EQ(set.getNodeIndexOnPath(0, c), -1);
    EXPECT_EQ(set.getSurfaceNode(1, 0), set.getNode(c));
    EXPECT_EQ(set.getSurfaceNode(1, 3), nullptr);
    McDArray<int> copy;
    EXPECT_TRUE(set.getPath(1, copy));
    EXPECT_EQ(copy, McDArray<int>({c, b, a}));
    EXPECT_FALSE(set.getPath(2, copy));
    EXPECT_TRUE(copy.empty());
    EXPECT_TRUE(set.isPureSurfaceVertexPath());
    set.addNode(new SurfaceEdgeNode(&strip, 0, 0.5f));
    EXPECT_FALSE(set.isPureSurfaceVertexPath());
}

TEST_F(PathSet, DuplicatesMergeAndTheJoinCollapses) {
    // Two paths a-b and b'-c meeting at vertex 2, joined as a merge does: a b b' c.
    const int a = vertex(0, true), b = vertex(2, true), b2 = vertex(2, true), c = vertex(4, true), unused = vertex(9);
    const int p = path({a, b, b2, c});
    set.getNode(b)->isControlPoint = 0;
    EXPECT_EQ(set.removeDuplicateNodes(1e-6f, 0), 1);
    EXPECT_EQ(entries(p), McDArray<int>({a, b, c}));
    EXPECT_EQ(set.getNode(b)->isControlPoint, 1) << "a merged control point keeps the survivor a control point";
    EXPECT_EQ(set.getNumNodes(), 5) << "without compaction the table keeps its entries";

    EXPECT_EQ(set.removeDuplicateNodes(1e-6f, 1), 1) << "b' is still in the table and still a duplicate";
    EXPECT_EQ(set.getNumNodes(), 3);
    EXPECT_EQ(set.nodeRemap[unused], -1);
    EXPECT_EQ(set.nodeRemap[b2], -1);
    EXPECT_EQ(set.nodeRemap[c], 2);
    EXPECT_EQ(entries(p), McDArray<int>({0, 1, 2}));
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

TEST_F(PathSet, DuplicateMergingRespectsTheTolerance) {
    const int e = strip.findEdge(0, 2);
    const int a = set.addNode(new SurfaceEdgeNode(&strip, e, 0.5f));
    const int b = set.addNode(new SurfaceEdgeNode(&strip, e, 0.5f + 1e-4f));
    const int p = path({a, b});
    EXPECT_EQ(set.removeDuplicateNodes(1e-6f, 0), 0);
    EXPECT_EQ(set.removeDuplicateNodes(1e-3f, 0), 1);
    EXPECT_EQ(entries(p), McDArray<int>({a}));
}

TEST_F(PathSet, InteriorNodesGoWhereTheNeighboursShareATriangle) {
    const int a = vertex(0, true), b = vertex(2, true);
    const int inner = set.addNode(new SurfaceTriangleNode(&strip, 0, 0.3f, 0.3f));
    const int p = path({a, inner, b});
    set.getNode(inner)->isControlPoint = 1;
    EXPECT_EQ(set.removeInteriorNodes(p, 1), 0) << "control points stay when asked";
    EXPECT_EQ(set.removeInteriorNodes(p, 0), 1);
    EXPECT_EQ(entries(p), McDArray<int>({a, b}));
    const int far = vertex(12, true);
    const int q = path({a, set.addNode(new SurfaceTriangleNode(&strip, 0, 0.3f, 0.3f)), far});
    EXPECT_EQ(set.removeInteriorNodes(q, 0), 0) << "vertex 0 and 12 share no triangle";
}

TEST_F(PathSet, ConsistencyNamesTheFault) {
    const int a = vertex(0), b = vertex(1), far = vertex(12);
    path({a, b});
    EXPECT_TRUE(set.isConsistent(true, nullptr));
    int bad = 99;
    McString problem;
    const int p = path({a, far});
    EXPECT_TRUE(set.isConsistent(false, &bad)) << "segments are checked only on request";
    EXPECT_FALSE(set.isConsistent(true, &bad, problem));
    EXPECT_EQ(bad, p);
    EXPECT_EQ(problem, "path 1: the nodes at positions 0 and 1 share no triangle");
    set.paths[p].nodeIndices[1] = 7;
    EXPECT_FALSE(set.isConsistent(false, &bad, problem));
    EXPECT_EQ(problem, "path 1: entry 1 names node 7, but the set has 3 nodes");
    set.paths[p].nodeIndices[1] = b;
    set.nodes.append(new SurfaceVertexNode(&strip, 40));
    EXPECT_FALSE(set.isConsistent(false, &bad, problem));
    EXPECT_EQ(bad, -1);
    EXPECT_EQ(problem, "node 3: vertex 40 does not exist (the surface has 14 vertices)");
}

TEST_F(PathSet, CopiesOwnTheirPathsAndShareTheirNodes) {
    const int a = vertex(0, true), b = vertex(1, true);
    path({a, b});
    SurfacePathSet copy;
    copy.copyData(set, nullptr);
    EXPECT_EQ(copy.getSurface(), nullptr) << "a null surface keeps the copy's own";
    EXPECT_EQ(copy.getNode(a), set.getNode(a));
    EXPECT_EQ(set.getNode(a)->refCount(), 1) << "the copy shares the node table, not its handles";
    copy.paths[0].nodeIndices.append(a);
    EXPECT_EQ(set.getNumNodesOnPath(0), 2);
    // Restoring a snapshot puts the paths back.
    set.copyData(copy, nullptr);
    EXPECT_EQ(set.getNumNodesOnPath(0), 3);
    EXPECT_EQ(set.getSurface(), &strip);

    Surface other = makeStrip(12);
    SurfacePathSet moved;
    moved.copyData(set, &other);
    EXPECT_EQ(moved.getSurface(), &other);
    EXPECT_NE(moved.getNode(a), set.getNode(a));
    EXPECT_EQ(moved.getNode(a)->getSurface(), &other);
    EXPECT_TRUE(moved.isConsistent(true, nullptr));
}

// Untangling: shared node-table entries become copies of their own, the node table growing by
// exactly one entry per further use.
class Untangle : public PathSet {
  protected:
    void expectCopyOf(int copy, int original) {
        ASSERT_NE(set.nodes[copy].ptr(), set.nodes[original].ptr());
        EXPECT_EQ(set.nodes[copy]->getKind(), set.nodes[original]->getKind());
        EXPECT_EQ(set.nodes[copy]->getElement(), set.nodes[original]->getElement());
    }
};

TEST_F(Untangle, ASharedNodeGoesToTheLowerPathAndTheOtherGetsACopy) {
    const int a = vertex(0, true), s = vertex(2), b = vertex(4, true), c = vertex(1, true), d = vertex(3, true);
    const int first = path({a, s, b}), second = path({c, s, d}), end = path({s, d});
    set.untangle({});
    EXPECT_EQ(entries(first), McDArray<int>({a, s, b}));
    EXPECT_EQ(entries(second), McDArray<int>({c, 5, d}));
    EXPECT_EQ(entries(end), McDArray<int>({6, 7}));
    ASSERT_EQ(set.getNumNodes(), 8);
    expectCopyOf(5, s);
    expectCopyOf(6, s);
    expectCopyOf(7, d);
    EXPECT_EQ(set.nodes[5]->isControlPoint, 0) << "an intermediate copy keeps the flag";
    EXPECT_EQ(set.nodes[6]->isControlPoint, 1) << "a copy at a path's end starts it";
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

TEST_F(Untangle, APathPassingANodeTwiceGetsACopyButALoopKeepsItsSeam) {
    const int a = vertex(0, true), b = vertex(1), c = vertex(3), d = vertex(2, true);
    const int figure = path({a, b, c, b, d}), loop = path({a, b, c, a});
    set.untangle(McDArray<int>({figure}));
    EXPECT_EQ(entries(figure), McDArray<int>({a, b, c, 4, d}));
    EXPECT_EQ(entries(loop), McDArray<int>({a, b, c, a})) << "an unchosen path keeps sharing";
    ASSERT_EQ(set.getNumNodes(), 5);
    expectCopyOf(4, b);

    set.untangle({});
    EXPECT_EQ(entries(loop), McDArray<int>({5, 6, 7, 5})) << "both ends of the loop name the same copy";
    EXPECT_EQ(set.getNumNodes(), 8);
    set.untangle({});
    EXPECT_EQ(set.getNumNodes(), 8) << "nothing is shared any more";
}

}  // namespace
