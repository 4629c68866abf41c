// Appending control points to the end of a path.
#include "HxMessage.h"
#include "OperationTestSupport.h"
#include "PathEditAddCP.h"

#include <gtest/gtest.h>

namespace {

class AddControlPointTest : public StripEditTest {
  protected:
    McHandle<PathEditAddCP> addAt(int path, int vertex) {
        return new PathEditAddCP(&set.pathSet, path, makeControlPoint(set.pathSet, vertex), &dijkstra);
    }
};

TEST_F(AddControlPointTest, TheFirstPointOfAPathNeedsNoConnector) {
    const int path = set.pathSet.addPath({});
    SurfaceNode* node = set.pathSet.nodeFactory.createVertexNode(4);
    McHandle<PathEditAddCP> add = new PathEditAddCP(&set.pathSet, path, node, nullptr);
    ASSERT_TRUE(runProtocol(add)) << "without a connector, any segment would fail";
    EXPECT_EQ(verticesOf(set.pathSet, path), (Vertices{4}));
    EXPECT_TRUE(node->isControlPoint) << "the operation flags the node";
}

TEST_F(AddControlPointTest, JoinsTheNewPointThroughIntermediateNodes) {
    const int path = set.addVertexPath({0});
    expectUndoRedoRestores(set, addAt(path, 6));
    EXPECT_EQ(verticesOf(set.pathSet, path), (Vertices{0, 2, 4, 6}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, path), (Vertices{0, 6}));
    ASSERT_TRUE(runProtocol(addAt(path, 7)));
    EXPECT_EQ(verticesOf(set.pathSet, path), (Vertices{0, 2, 4, 6, 7})) << "the next segment starts at the last point";
    EXPECT_TRUE(isConsistent(set.pathSet));
}

TEST_F(AddControlPointTest, AnExistingNodeIsAppendedByItsOwnIndex) {
    const int path = set.addVertexPath({0, 2, 4, 5, 3});
    const int revisited = set.nodeAt(path, 1);
    const int64_t numNodes = set.pathSet.getNumNodes();
    McHandle<PathEditAddCP> add = new PathEditAddCP(&set.pathSet, path, revisited, &dijkstra);
    ASSERT_TRUE(runProtocol(add));
    EXPECT_EQ(set.pathSet.paths[path].nodeIndices.last(), revisited) << "the path revisits the node";
    EXPECT_EQ(set.pathSet.getNumNodes(), numNodes) << "3 and 2 are neighbours: no node is added at all";
    EXPECT_TRUE(set.pathSet.getNode(revisited)->isControlPoint);
    EXPECT_FALSE(set.pathSet.isPathClosed(path));
}

TEST_F(AddControlPointTest, RefusesClosedAndMissingPathsAndNullNodesWithoutChange) {
    set.addVertexPath({0, 2, 3, 1, 0});
    const PathSetState before = captureState(set);
    for (int path : {0, 1}) {
        EXPECT_FALSE(addAt(path, 6)->exec()) << "path " << path;
        EXPECT_EQ(captureState(set), before) << "path " << path;
    }
    set.pathSet.addPath({});
    SurfaceNode* const noNode = nullptr;
    EXPECT_FALSE(McHandle<PathEditAddCP>(new PathEditAddCP(&set.pathSet, 1, noNode, &dijkstra))->exec());
    EXPECT_TRUE(set.pathSet.isPathEmpty(1));
}

TEST_F(AddControlPointTest, AFailedConnectionWarnsAndIsRolledBack) {
    const int path = set.addVertexPath({0, 2});
    HxMessage::getTheMsg()->startCapture();
    EXPECT_TRUE(failsWithoutChange(set, new PathEditAddCP(&set.pathSet, path, insideTriangle(3), &dijkstra)));
    EXPECT_EQ(HxMessage::getTheMsg()->stopCapture(), "Warning: cannot connect points\n");
}

}  // namespace
