// Entangling: paths that cross or touch end up holding one common node-table entry there.
//
// The quad's triangle 0 has corners (0,0), (1,0), (1,1). Path A runs from the middle of its side
// along y = 0 to the middle of its side along x = 1, that is along y = x - 0.5.

#include "PathEntangler.h"
#include "Surface.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

class Entangle : public testing::Test {
  protected:
    int vertex(int v) { return node(set.nodeFactory.createVertexNode(v)); }
    int edgeMiddle(int p, int q) { return node(set.nodeFactory.createEdgeNode(quad.findEdge(p, q), 0.5f)); }
    int inTriangle0(float u, float v) { return node(set.nodeFactory.createTriangleNode(0, u, v)); }
    int node(SurfaceNode* n) {
        n->isControlPoint = 0;
        return set.addNode(n);
    }
    int path(std::initializer_list<int> nodeIndices) { return set.addPath(McDArray<int>(nodeIndices)); }
    McDArray<int> const& entries(int p) const { return set.paths[p].nodeIndices; }

    Surface quad = makeQuad();
    SurfacePathSet set{&quad};
    int A = path({edgeMiddle(0, 1), edgeMiddle(1, 2)});
};

TEST_F(Entangle, PathsCrossingInsideATriangleGetOneNewNodeThere) {
    const int B = path({vertex(1), edgeMiddle(0, 2)});
    const int C = path({vertex(0), vertex(2)});  // along the diagonal, where B ends
    const McDArray<int> diagonal = entries(C);
    const int before = set.getNumNodes();

    ASSERT_TRUE(PathEntangler(&set, McDArray<int>({A, B}), 0.001f, false).compute());
    ASSERT_EQ(set.getNumNodes(), before + 1);
    EXPECT_EQ(entries(A).size(), 3);
    EXPECT_EQ(entries(B).size(), 3);
    EXPECT_EQ(entries(A)[1], before);
    EXPECT_EQ(entries(B)[1], before);
    SurfaceNode* crossing = set.getNode(before);
    EXPECT_EQ(crossing->getKind(), SurfaceNode::TRIANGLE);
    EXPECT_NEAR((crossing->getPosition() - McVec3f(0.75f, 0.25f, 0)).length(), 0, 1e-6);
    EXPECT_EQ(crossing->isControlPoint, 0);
    EXPECT_EQ(entries(C), diagonal) << "a path not chosen stays as it was";

    ASSERT_TRUE(PathEntangler(&set, 0.001f, true).compute());
    EXPECT_EQ(set.getNumNodes(), before + 1) << "a crossing already shared is not made again";
    EXPECT_EQ(entries(C), McDArray<int>({diagonal[0], entries(B)[2], diagonal[1]}));
    EXPECT_EQ(set.getNode(entries(B)[2])->isControlPoint, 1);
    EXPECT_TRUE(set.isConsistent(true, nullptr));
    EXPECT_FALSE(PathEntangler(&set, 0.001f, true).compute()) << "nothing left to share";
}

// D ends 0.0005 above A's line, in a triangle of size sqrt(2).
TEST_F(Entangle, APathEndingOnAnotherWithinTheToleranceIsInsertedIntoIt) {
    const int end = inTriangle0(0.4995f, 0.1005f);
    const int D = path({vertex(0), end});
    const McDArray<int> alone = entries(A);
    EXPECT_FALSE(PathEntangler(&set, 0.0001f, false).compute());
    EXPECT_EQ(entries(A), alone);

    const int before = set.getNumNodes();
    ASSERT_TRUE(PathEntangler(&set, 0.001f, false).compute());
    EXPECT_EQ(entries(A), McDArray<int>({alone[0], end, alone[1]}));
    EXPECT_EQ(entries(D).last(), end);
    EXPECT_EQ(set.getNumNodes(), before);
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

// Paths along edges that cross at a fan's centre lie on no common triangle there.
TEST(EntangleAtAVertex, PathsThroughOneVertexShareTheLowerNodeAndFlagACopyOfIt) {
    Surface fan = makeFan(8);
    SurfacePathSet set(&fan);
    auto vertex = [&set](int v) { return set.addNode(set.nodeFactory.createVertexNode(v)); };
    const int centre = vertex(0), other = vertex(0);
    const int A = set.addPath({vertex(1), centre, vertex(5)});
    const int B = set.addPath({vertex(3), other, vertex(7)});
    McHandle<SurfaceNode> original = set.nodes[centre];

    ASSERT_TRUE(PathEntangler(&set, 0.001f, true).compute());
    EXPECT_EQ(set.paths[B].nodeIndices[1], centre);
    EXPECT_EQ(set.paths[A].nodeIndices[1], centre);
    EXPECT_EQ(set.nodes[centre]->isControlPoint, 1);
    EXPECT_EQ(original->isControlPoint, 0) << "a node held elsewhere (an undo snapshot) is not changed in place";
    EXPECT_TRUE(set.isConsistent(true, nullptr));
}

}  // namespace
