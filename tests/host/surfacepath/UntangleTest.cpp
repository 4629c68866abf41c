// Untangling: shared node-table entries become copies of their own, the node table growing by
// exactly one entry per further use.

#include "Surface.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

class Untangle : public testing::Test {
  protected:
    int vertex(int v, bool controlPoint = false) {
        SurfaceNode* node = set.nodeFactory.createVertexNode(v);
        node->isControlPoint = controlPoint;
        return set.addNode(node);
    }
    int path(std::initializer_list<int> nodeIndices) { return set.addPath(McDArray<int>(nodeIndices)); }
    McDArray<int> const& entries(int p) const { return set.paths[p].nodeIndices; }
    void expectCopyOf(int copy, int original) {
        ASSERT_NE(set.nodes[copy].ptr(), set.nodes[original].ptr());
        EXPECT_EQ(set.nodes[copy]->getKind(), set.nodes[original]->getKind());
        EXPECT_EQ(set.nodes[copy]->getElement(), set.nodes[original]->getElement());
    }

    Surface strip = makeStrip(12);
    SurfacePathSet set{&strip};
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
