#include "OperationTestSupport.h"
#include "PathEditAddPath.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

using NodeList = McDArray<McHandle<SurfaceNode>>;

// Path 0 on the strip runs through vertices 0 1 2 3 with control points at its ends.
class AddPath : public ::testing::Test {
  protected:
    AddPath() : edited(makeStrip(4)) { edited.addVertexPath({0, 1, 2, 3}); }

    NodeList vertexNodes(std::initializer_list<int> vertices) {
        NodeList nodes;
        for (int v : vertices) nodes.append(edited.pathSet.nodeFactory.createVertexNode(v));
        return nodes;
    }
    bool run(PathEditAddPath* op) {
        McHandle<PathOperation> keep(op);
        return runProtocol(op);
    }

    EditedPathSet edited;
};

TEST_F(AddPath, OneNodeBecomesANewLastPathOfOneControlPoint) {
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 0));
    SurfaceNode* node = edited.pathSet.nodeFactory.createVertexNode(5);
    McHandle<PathEditAddPath> op(new PathEditAddPath(&edited.pathSet, &edited.selection, node));
    ASSERT_TRUE(runProtocol(op));

    ASSERT_EQ(edited.pathSet.getNumPaths(), 2);
    EXPECT_EQ(op->pathIndex, 1);
    EXPECT_EQ(pathOf(edited.pathSet, 1), std::vector<int>{4});
    EXPECT_EQ(edited.pathSet.getNode(4), node);
    EXPECT_TRUE(node->isControlPoint);
    EXPECT_FALSE(edited.pathSet.isPathClosed(1));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{1});
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

TEST_F(AddPath, SequenceKeepsItsOrderAndOnlyItsEndsBecomeControlPoints) {
    NodeList nodes = vertexNodes({5, 4, 3, 2});
    nodes[2]->isControlPoint = 1;  // the caller's own choice between the ends stays
    ASSERT_TRUE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, nodes)));

    EXPECT_EQ(verticesOf(edited.pathSet, 1), (std::vector<int>{5, 4, 3, 2}));
    EXPECT_EQ(edited.pathSet.getNumControlPointsOnPath(1), 3);
    EXPECT_FALSE(nodes[1]->isControlPoint);
}

TEST_F(AddPath, NodeAlreadyInTheTableGetsASecondEntry) {
    SurfaceNode* existing = edited.pathSet.getNode(edited.nodeAt(0, 3));
    NodeList nodes = vertexNodes({5});
    nodes.append(existing);
    ASSERT_TRUE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, nodes)));

    ASSERT_EQ(edited.pathSet.getNumNodes(), 6);
    EXPECT_EQ(pathOf(edited.pathSet, 1), (std::vector<int>{4, 5}));
    EXPECT_EQ(edited.pathSet.getNode(5), existing);
    EXPECT_EQ(pathOf(edited.pathSet, 0), (std::vector<int>{0, 1, 2, 3})) << "the first entry is left alone";
}

TEST_F(AddPath, GivenExistingPathIsReplacedNotExtended) {
    edited.addVertexPath({4, 5});
    ASSERT_TRUE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, vertexNodes({2, 4, 5}), 0)));

    EXPECT_EQ(edited.pathSet.getNumPaths(), 2);
    EXPECT_EQ(verticesOf(edited.pathSet, 0), (std::vector<int>{2, 4, 5}));
    EXPECT_EQ(verticesOf(edited.pathSet, 1), (std::vector<int>{4, 5}));
}

// The path count stays, so the active control point survives where its ordinal still lies at
// the same place, re-mapped to the new node.
TEST_F(AddPath, ReplacingTheEditedPathKeepsAnActiveCPThatStaysInPlace) {
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 3));
    ASSERT_TRUE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, vertexNodes({1, 2, 3}), 0)));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{0});
    EXPECT_EQ(edited.selection.getActiveCP(), edited.nodeAt(0, 2));

    edited.selection.setActiveCP(edited.nodeAt(0, 2));
    ASSERT_TRUE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, vertexNodes({1, 2, 4}), 0)));
    EXPECT_EQ(edited.selection.getActiveCP(), -1) << "the control point of the same ordinal lies elsewhere";
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{0});
}

TEST_F(AddPath, IndexBeyondTheLastPathCreatesTheEmptyPathsBetween) {
    McHandle<PathEditAddPath> op(
        new PathEditAddPath(&edited.pathSet, &edited.selection, edited.pathSet.nodeFactory.createVertexNode(4), 3));
    ASSERT_TRUE(runProtocol(op));

    ASSERT_EQ(edited.pathSet.getNumPaths(), 4);
    EXPECT_TRUE(edited.pathSet.isPathEmpty(1));
    EXPECT_TRUE(edited.pathSet.isPathEmpty(2));
    EXPECT_EQ(verticesOf(edited.pathSet, 3), std::vector<int>{4});
    EXPECT_EQ(op->pathIndex, 3);
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{3}) << "the set grew: the last path is active";
}

TEST_F(AddPath, EmptyOrNullSequencesFailAndLeaveEverythingAsBefore) {
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 0));
    const PathSetState before = captureState(edited);

    EXPECT_FALSE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, NodeList())));
    EXPECT_FALSE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, static_cast<SurfaceNode*>(nullptr))));
    NodeList nullLast = vertexNodes({4, 5});
    nullLast.append(nullptr);
    EXPECT_FALSE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, nullLast)));
    // The nodes before the null one reach the table before the operation gives up.
    NodeList nullInside = vertexNodes({4, 5});
    nullInside.insert(1, McHandle<SurfaceNode>());
    EXPECT_FALSE(run(new PathEditAddPath(&edited.pathSet, &edited.selection, nullInside, 0)));

    EXPECT_EQ(captureState(edited), before);
}

TEST_F(AddPath, UndoThenRedoRestoresTheAfterStateWithItsSelection) {
    edited.selection.setSinglePathActive(0);
    McHandle<PathOperation> op(new PathEditAddPath(&edited.pathSet, &edited.selection, vertexNodes({4, 5})));
    EXPECT_EQ(expectUndoRedoRestores(edited, op).activePaths, std::vector<int>{1});
}

// A path computed on a real mesh is stored as given and is a valid path of the set.
TEST(AddPathOnMesh, ComputedVertexSequenceIsStoredAsAConsistentPath) {
    EditedPathSet edited(readMesh("elephant.off"));
    const std::vector<int> vertices = shortestVertexPath(edited.surface, 0, edited.surface.getNumPoints() / 2);
    ASSERT_FALSE(vertices.empty());
    NodeList nodes;
    for (int v : vertices) nodes.append(edited.pathSet.nodeFactory.createVertexNode(v));

    McHandle<PathEditAddPath> op(new PathEditAddPath(&edited.pathSet, &edited.selection, nodes));
    ASSERT_TRUE(runProtocol(op));
    EXPECT_EQ(verticesOf(edited.pathSet, 0), vertices);
    EXPECT_EQ(edited.pathSet.getNumControlPointsOnPath(0), 2);
    EXPECT_TRUE(edited.pathSet.isConsistent(true, nullptr));
}

}  // namespace
