#include "OperationTestSupport.h"
#include "PathEditAddPath.h"

#include <gtest/gtest.h>

namespace {

using NodeList = McDArray<McHandle<SurfaceNode>>;
// Path 0 runs through vertices 0 1 2 3 with control points at its ends.
class AddPath : public StripEditTest {
  protected:
    AddPath() { set.addVertexPath({0, 1, 2, 3}); }

    NodeList vertexNodes(std::initializer_list<int> vertices) {
        NodeList nodes;
        for (int v : vertices) nodes.append(set.pathSet.nodeFactory.createVertexNode(v));
        return nodes;
    }
    McHandle<PathEditAddPath> addPath(NodeList const& nodes, int path = -1) {
        return new PathEditAddPath(&set.pathSet, &set.selection, nodes, path);
    }
};

TEST_F(AddPath, SequenceKeepsItsOrderAndOnlyItsEndsBecomeControlPoints) {
    set.selection.setSinglePathActive(0);
    NodeList nodes = vertexNodes({5, 4, 3, 2});
    nodes[2]->isControlPoint = 1;  // the caller's own choice between the ends stays
    EXPECT_EQ(expectUndoRedoRestores(set, addPath(nodes)).activePaths, std::vector<int>{1});
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{5, 4, 3, 2}));
    EXPECT_EQ(controlPointVerticesOf(set.pathSet, 1), (Vertices{5, 3, 2}));
}

TEST_F(AddPath, NodeAlreadyInTheTableGetsASecondEntry) {
    SurfaceNode* existing = set.pathSet.getNode(set.nodeAt(0, 3));
    NodeList nodes = vertexNodes({5});
    nodes.append(existing);
    ASSERT_TRUE(runProtocol(addPath(nodes)));
    EXPECT_EQ(pathOf(set.pathSet, 1), (Vertices{4, 5}));
    EXPECT_EQ(set.pathSet.getNode(5), existing);
    EXPECT_EQ(pathOf(set.pathSet, 0), (Vertices{0, 1, 2, 3})) << "the first entry is left alone";
}

TEST_F(AddPath, GivenExistingPathIsReplacedNotExtended) {
    set.addVertexPath({4, 5});
    ASSERT_TRUE(runProtocol(addPath(vertexNodes({2, 4, 5}), 0)));
    EXPECT_EQ(set.pathSet.getNumPaths(), 2);
    EXPECT_EQ(verticesOf(set.pathSet, 0), (Vertices{2, 4, 5}));
    EXPECT_EQ(verticesOf(set.pathSet, 1), (Vertices{4, 5}));
}

TEST_F(AddPath, OneNodeBeyondTheLastPathIsAControlPointAfterEmptyPaths) {
    SurfaceNode* node = set.pathSet.nodeFactory.createVertexNode(4);
    McHandle<PathEditAddPath> op = new PathEditAddPath(&set.pathSet, &set.selection, node, 3);
    ASSERT_TRUE(runProtocol(op));
    ASSERT_EQ(set.pathSet.getNumPaths(), 4);
    EXPECT_TRUE(set.pathSet.isPathEmpty(1) && set.pathSet.isPathEmpty(2));
    EXPECT_EQ(verticesOf(set.pathSet, 3), Vertices{4});
    EXPECT_TRUE(node->isControlPoint);
    EXPECT_EQ(op->pathIndex, 3);
}

TEST_F(AddPath, EmptyOrNullSequencesFailAndLeaveEverythingAsBefore) {
    set.select(0, 0);
    EXPECT_TRUE(failsWithoutChange(set, addPath(NodeList())));
    SurfaceNode* const noNode = nullptr;
    EXPECT_TRUE(failsWithoutChange(set, new PathEditAddPath(&set.pathSet, &set.selection, noNode)));
    NodeList nullLast = vertexNodes({4, 5});
    nullLast.append(nullptr);
    EXPECT_TRUE(failsWithoutChange(set, addPath(nullLast)));
    // The nodes before the null one reach the table before the operation gives up.
    NodeList nullInside = vertexNodes({4, 5});
    nullInside.insert(1, McHandle<SurfaceNode>());
    EXPECT_TRUE(failsWithoutChange(set, addPath(nullInside, 0)));
}

}  // namespace
