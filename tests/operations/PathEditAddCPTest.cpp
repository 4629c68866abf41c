// Appending control points to the end of a path.
//
// The strip surfaces have their bottom row at the even vertices (0, 2, 4, ...) and their top
// row at the odd ones, one unit apart.
#include "DijkstraConnector.h"
#include "HxMessage.h"
#include "OperationTestSupport.h"
#include "PathEditAddCP.h"
#include "PathEditUndoBuffer.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

using Vertices = std::vector<int>;

class AddControlPointTest : public ::testing::Test {
  protected:
    AddControlPointTest() { dijkstra.init(&set.pathSet, nullptr); }

    // An add of a new control point at `vertex`.
    McHandle<PathEditAddCP> addAt(int path, int vertex) {
        return new PathEditAddCP(&set.pathSet, path, makeControlPoint(set.pathSet, vertex), &dijkstra);
    }

    EditedPathSet set{makeStrip(6)};
    DijkstraConnector dijkstra;
};

TEST_F(AddControlPointTest, TheFirstPointOfAPathNeedsNoConnector) {
    const int path = set.pathSet.addPath({});
    SurfaceNode* node = set.pathSet.nodeFactory.createVertexNode(4);
    McHandle<PathEditAddCP> add = new PathEditAddCP(&set.pathSet, path, node, nullptr);
    ASSERT_TRUE(runProtocol(add)) << "without a connector, any segment would fail";
    EXPECT_EQ(verticesOf(set.pathSet, path), (Vertices{4}));
    EXPECT_EQ(set.pathSet.getNode(set.nodeAt(path, 0)), node);
    EXPECT_TRUE(node->isControlPoint) << "the operation flags the node";
}

TEST_F(AddControlPointTest, JoinsTheNewPointThroughIntermediateNodes) {
    const int path = set.addVertexPath({0});
    expectUndoRedoRestores(set, addAt(path, 6));
    EXPECT_EQ(verticesOf(set.pathSet, path), (Vertices{0, 2, 4, 6}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, path), (Vertices{0, 6}));
    EXPECT_TRUE(isConsistent(set.pathSet));
    ASSERT_TRUE(runProtocol(addAt(path, 7)));
    EXPECT_EQ(verticesOf(set.pathSet, path), (Vertices{0, 2, 4, 6, 7})) << "the next segment starts at the last point";
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
    const PathSetState before = captureState(set.pathSet);
    for (int path : {0, 1}) {
        EXPECT_FALSE(addAt(path, 6)->exec()) << "path " << path;
        EXPECT_EQ(captureState(set.pathSet), before) << "path " << path;
    }
    set.pathSet.addPath({});
    SurfaceNode* const noNode = nullptr;
    McHandle<PathEditAddCP> addNothing = new PathEditAddCP(&set.pathSet, 1, noNode, &dijkstra);
    EXPECT_FALSE(addNothing->exec());
    EXPECT_TRUE(set.pathSet.isPathEmpty(1));
}

TEST_F(AddControlPointTest, AFailedConnectionWarnsAndIsRolledBack) {
    const int path = set.addVertexPath({0, 2});
    const PathSetState before = captureState(set.pathSet);
    McHandle<PathEditAddCP> add =
        new PathEditAddCP(&set.pathSet, path, set.pathSet.nodeFactory.createTriangleNode(3, 0.2f, 0.2f), &dijkstra);
    add->initUndo();
    HxMessage::getTheMsg()->startCapture();
    EXPECT_FALSE(add->exec());
    EXPECT_EQ(HxMessage::getTheMsg()->stopCapture(), "Warning: cannot connect points\n");
    EXPECT_EQ(pathOf(set.pathSet, path), before.paths[path]) << "the appended entry is taken back";
    EXPECT_EQ(set.pathSet.getNumNodes(), 3) << "the new node stays in the table until the rollback";
    add->undo();
    EXPECT_EQ(captureState(set.pathSet), before);
}

// Drawing on a real mesh point by point, then taking every point back through the history.
TEST(PathEditAddCP, DrawsAndUndoesAPathOnARealMesh) {
    EditedPathSet elephant(readMesh("elephant.off"));
    DijkstraConnector dijkstra;
    dijkstra.init(&elephant.pathSet, nullptr);
    const int numPoints = elephant.surface.getNumPoints();
    const int path = elephant.pathSet.addPath({});
    PathEditUndoBuffer history;
    std::vector<PathSetState> states{captureState(elephant.pathSet)};
    const Vertices clicked{0, numPoints / 3, 2 * numPoints / 3, numPoints - 1};
    for (int vertex : clicked) {
        McHandle<PathOperation> add =
            new PathEditAddCP(&elephant.pathSet, path, makeControlPoint(elephant.pathSet, vertex), &dijkstra);
        ASSERT_TRUE(runProtocol(add)) << "vertex " << vertex;
        history.push(add);
        states.push_back(captureState(elephant.pathSet));
    }
    EXPECT_EQ(controlPointVerticesOf(elephant.pathSet, path), clicked);
    EXPECT_GT(elephant.pathSet.getNumNodesOnPath(path), 20);
    EXPECT_TRUE(isConsistent(elephant.pathSet));
    for (size_t i = states.size() - 1; i > 0; --i) {
        history.undo();
        EXPECT_EQ(captureState(elephant.pathSet), states[i - 1]) << "after undoing point " << i;
    }
    history.redo();
    EXPECT_EQ(captureState(elephant.pathSet), states[1]);
}

}  // namespace
