// Snapping nodes to nearby vertices and edges as an undoable step, in both ways of measuring
// the tolerance, on chosen paths or on the whole node table.
//
// On the quad, edge 0-1 runs along the bottom with length 1: a node at parameter 0.02 lies
// 0.02 from vertex 0. The triangle node lies 0.03 above that edge, in the middle.

#include "OperationTestSupport.h"
#include "PathEditSnapNodes.h"

#include <gtest/gtest.h>

namespace {

struct SnapScene {
    SnapScene() {
        nearVertex = set.addNode(set.nodeFactory.createEdgeNode(edited.surface.findEdge(0, 1), 0.02f));
        middle = set.addNode(set.nodeFactory.createEdgeNode(edited.surface.findEdge(0, 2), 0.5f));
        nearEdge = set.addNode(set.nodeFactory.createTriangleNode(0, 0.47f, 0.03f));
        offPath = set.addNode(set.nodeFactory.createEdgeNode(edited.surface.findEdge(1, 2), 0.97f));
        set.addPath(McDArray<int>({nearVertex, middle}));
        set.addPath(McDArray<int>({middle, nearEdge}));
        set.nodes[nearVertex]->isControlPoint = 1;
    }
    int run(float tolerance, int mode, McDArray<int> const& paths = {}) {
        McHandle<PathEditSnapNodes> snap = new PathEditSnapNodes(&set);
        snap->tolerance = tolerance;
        snap->mode = mode;
        snap->paths = paths;
        return snap->snapNodes();
    }
    int kindOf(int node) const { return set.getNode(node)->getKind(); }

    EditedPathSet edited{makeQuad()};
    SurfacePathSet& set = edited.pathSet;
    int nearVertex, middle, nearEdge, offPath;
};

TEST(SnapNodes, BarycentricAndWorldToleranceSnapTheSameNearbyNodesAndTheFactorySettingComesBack) {
    for (int mode : {int(SurfaceNodeFactory::BARYCENTRIC), int(SurfaceNodeFactory::WORLD)}) {
        SCOPED_TRACE(mode);
        SnapScene s;
        s.set.nodeFactory.mode = SurfaceNodeFactory::WORLD + SurfaceNodeFactory::BARYCENTRIC;
        s.set.nodeFactory.tolerance = 0.25f;
        EXPECT_EQ(s.run(0.01f, mode), 0);
        EXPECT_EQ(s.run(0.05f, 0x100 | mode), 3) << "only the low byte of the mode counts";
        EXPECT_EQ(s.kindOf(s.nearVertex), SurfaceNode::VERTEX);
        EXPECT_EQ(s.set.getNode(s.nearVertex)->getElement(), 0);
        EXPECT_EQ(s.set.getNode(s.nearVertex)->isControlPoint, 1);
        EXPECT_EQ(s.kindOf(s.middle), SurfaceNode::EDGE);
        EXPECT_EQ(s.kindOf(s.nearEdge), SurfaceNode::EDGE);
        EXPECT_EQ(s.kindOf(s.offPath), SurfaceNode::VERTEX) << "an empty path list takes every node";
        EXPECT_EQ(s.set.nodeFactory.mode, SurfaceNodeFactory::WORLD + SurfaceNodeFactory::BARYCENTRIC);
        EXPECT_EQ(s.set.nodeFactory.tolerance, 0.25f);
        EXPECT_TRUE(isConsistent(s.set));
    }
}

TEST(SnapNodes, ChosenPathsSnapTheirNodesAlsoWhereOtherPathsShareThem) {
    SnapScene s;
    EXPECT_EQ(s.run(0.05f, SurfaceNodeFactory::BARYCENTRIC, McDArray<int>({1, 7})), 1);
    EXPECT_EQ(s.kindOf(s.nearEdge), SurfaceNode::EDGE);
    EXPECT_EQ(s.kindOf(s.nearVertex), SurfaceNode::EDGE) << "on path 0 only";
    EXPECT_EQ(s.kindOf(s.offPath), SurfaceNode::EDGE) << "on no path";
    EXPECT_EQ(pathOf(s.set, 1), std::vector<int>({s.middle, s.nearEdge}));
}

TEST(SnapNodes, IsAnUndoableStepEvenWhenNothingChanges) {
    SnapScene s;
    McHandle<PathEditSnapNodes> nothing = new PathEditSnapNodes(&s.set);
    nothing->tolerance = 0;
    const PathSetState before = captureState(s.edited);
    EXPECT_EQ(expectUndoRedoRestores(s.edited, nothing.ptr()), before);
    McHandle<PathEditSnapNodes> snap = new PathEditSnapNodes(&s.set);
    snap->tolerance = 0.05f;
    EXPECT_FALSE(expectUndoRedoRestores(s.edited, snap.ptr()) == before);
    EXPECT_EQ(PathEditSnapNodes(nullptr).snapNodes(), 0);
}

}  // namespace
