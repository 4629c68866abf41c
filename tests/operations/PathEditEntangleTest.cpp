// Entangling and untangling as undoable steps: the node tables before and after each step come
// back exactly, node by node.
//
// On the quad, the two paths cross at (0.75, 0.25) inside triangle 0.

#include "OperationTestSupport.h"
#include "PathEditEntangle.h"
#include "PathEditUntangle.h"

#include <gtest/gtest.h>

namespace {

class EntangleUntangle : public testing::Test {
  protected:
    EntangleUntangle() {
        set.addPath({edgeMiddle(0, 1), edgeMiddle(1, 2)});
        set.addPath({controlPoint(set.nodeFactory.createVertexNode(1)), edgeMiddle(0, 2)});
        set.addPath({controlPoint(set.nodeFactory.createVertexNode(3)), controlPoint(set.nodeFactory.createVertexNode(0))});
    }
    int controlPoint(SurfaceNode* node) {
        node->isControlPoint = 1;
        return set.addNode(node);
    }
    int edgeMiddle(int p, int q) { return controlPoint(set.nodeFactory.createEdgeNode(edited.surface.findEdge(p, q), 0.5f)); }
    McDArray<int> const& entries(int path) const { return set.paths[path].nodeIndices; }

    EditedPathSet edited{makeQuad()};
    SurfacePathSet& set = edited.pathSet;
};

TEST_F(EntangleUntangle, CrossingPathsShareAControlPointUntilUntangledAndUndoBringsEachTableBack) {
    const PathSetState crossing = captureState(edited);
    const PathSetState entangled =
        expectUndoRedoRestores(edited, new PathEditEntangle(&set, &edited.selection, McDArray<int>({0, 1}), 0.001f));
    ASSERT_EQ(entries(0).size(), 3);
    ASSERT_EQ(entries(1).size(), 3);
    const int shared = entries(0)[1];
    EXPECT_EQ(entries(1)[1], shared);
    EXPECT_EQ(set.getNumNodes(), 7);
    EXPECT_EQ(set.getNode(shared)->isControlPoint, 1);

    McHandle<PathOperation> untangle = new PathEditUntangle(&set, &edited.selection);
    const PathSetState untangled = expectUndoRedoRestores(edited, untangle);
    EXPECT_EQ(entries(0)[1], shared) << "the lower path keeps the entry";
    EXPECT_EQ(entries(1)[1], 7) << "the other gets a copy";
    EXPECT_NE(set.getNode(7), set.getNode(shared));

    untangle->undo();
    EXPECT_EQ(captureState(edited), entangled);
    EXPECT_FALSE(captureState(edited) == untangled);
    EXPECT_FALSE(entangled == crossing);
    EXPECT_TRUE(isConsistent(set));
}

// Nothing to do is still a step of its own.
TEST_F(EntangleUntangle, WithNothingToShareBothStillSucceed) {
    const PathSetState before = captureState(edited);
    EXPECT_TRUE(runProtocol(new PathEditUntangle(&set, &edited.selection, McDArray<int>({0, 1}))));
    EXPECT_TRUE(runProtocol(new PathEditEntangle(&set, &edited.selection, McDArray<int>({2}), 0.001f)));
    EXPECT_EQ(captureState(edited), before);
}

}  // namespace
