#include "OperationTestSupport.h"
#include "PathEditMergePaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

class MergePaths : public StripEditTest {
  protected:
    // A path of two control points: vertex `from`, then a node at parameter t on the edge from
    // point a to point b (a < b).
    void addPathToEdgeNode(int from, int a, int b, float t) {
        SurfaceNode* end = set.pathSet.nodeFactory.createEdgeNode(set.surface.findEdge(a, b), t);
        end->isControlPoint = 1;
        set.pathSet.addPath({set.pathSet.addNode(makeControlPoint(set.pathSet, from)), set.pathSet.addNode(end)});
    }
    bool merge(McDArray<int> const& indices) { return runProtocol(merger(indices)); }
    McHandle<PathOperation> merger(McDArray<int> const& indices) {
        return new PathEditMergePaths(&set.pathSet, &set.selection, indices);
    }
    std::vector<Vertices> vertexPaths() const { return verticesOfAllPaths(set.pathSet); }
};

struct EndsCase {
    Vertices a, b, joined;
};

// A join lowers the number of paths, which clears the selection.
TEST(MergePathEnds, PathsMeetingAtEitherEndAreJoinedInPathOrder) {
    const std::array<EndsCase, 4> cases{{
        {{0, 2}, {2, 4}, {0, 2, 4}},  // last meets first
        {{2, 0}, {2, 4}, {0, 2, 4}},  // first meets first: the first path is reversed
        {{0, 2}, {4, 2}, {0, 2, 4}},  // last meets last: the second path is reversed
        {{2, 4}, {0, 2}, {4, 2, 0}},  // first meets last: both are reversed
    }};
    for (EndsCase const& c : cases) {
        EditedPathSet fresh(makeStrip(6));
        fresh.addVertexPath(c.a);
        fresh.addVertexPath({1, 3});  // not listed: only moves down
        fresh.addVertexPath(c.b);
        fresh.select(2, 0);
        McHandle<PathOperation> op(new PathEditMergePaths(&fresh.pathSet, &fresh.selection, {0, 2}));
        EXPECT_TRUE(expectUndoRedoRestores(fresh, op).activePaths.empty());
        ASSERT_EQ(fresh.pathSet.getNumPaths(), 2);
        EXPECT_EQ(verticesOf(fresh.pathSet, 0), c.joined);
        EXPECT_EQ(verticesOf(fresh.pathSet, 1), (Vertices{1, 3}));
        EXPECT_EQ(fresh.pathSet.getNumNodes(), 5) << "the doubled join node is merged";
        EXPECT_EQ(fresh.pathSet.getNumControlPointsOnPath(0), 3) << "the join keeps its control point";
        EXPECT_TRUE(isConsistent(fresh.pathSet));
    }
}

// Pieces of more than two nodes, so that a reversal must turn their inner nodes round too.
TEST(MergePathEnds, ThreePiecesOfALineEndAsOnePathInAnyOrderAndDirection) {
    const std::array<Vertices, 3> pieces{{{0, 2, 4}, {4, 6}, {6, 8, 10}}};
    const Vertices line{0, 2, 4, 6, 8, 10};
    std::array<int, 3> order{0, 1, 2};
    do {
        for (int reversed = 0; reversed < 8; ++reversed) {
            EditedPathSet fresh(makeStrip(10));
            for (int k : order) {
                Vertices piece = pieces[k];
                if (reversed & (1 << k)) std::reverse(piece.begin(), piece.end());
                fresh.addVertexPath(piece);
            }
            ASSERT_TRUE(runProtocol(new PathEditMergePaths(&fresh.pathSet, &fresh.selection, {0, 1, 2})));
            ASSERT_EQ(fresh.pathSet.getNumPaths(), 1) << "order " << order[0] << order[1] << order[2];
            Vertices joined = verticesOf(fresh.pathSet, 0);
            if (joined.front() != line.front()) std::reverse(joined.begin(), joined.end());
            EXPECT_EQ(joined, line) << "order " << order[0] << order[1] << order[2] << " reversed " << reversed;
            EXPECT_EQ(fresh.pathSet.getNumNodes(), 6) << "joins and unused nodes leave the table";
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(MergePaths, PathsThatDoNotMeetStayAndEmptyPathsGoListedOrNot) {
    set.addVertexPath({0, 2});
    set.pathSet.paths.append(SurfacePathSet::SurfacePath());
    set.addVertexPath({4, 6});
    ASSERT_TRUE(merge({0, 2}));
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{0, 2}, {4, 6}}));
}

TEST_F(MergePaths, LoneLoopListedTwiceMeetsItselfAndIsDropped) {
    set.addVertexPath({0, 2, 1, 0});
    set.addVertexPath({4, 6});
    ASSERT_TRUE(merge({0, 0}));
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{4, 6}}));
}

TEST_F(MergePaths, FewerThanTwoIndicesFailAndChangeNothing) {
    set.addVertexPath({0, 2});
    set.addVertexPath({2, 4});
    set.pathSet.paths.append(SurfacePathSet::SurfacePath());
    set.select(1, 0);
    EXPECT_TRUE(failsWithoutChange(set, merger({0})));
    EXPECT_TRUE(failsWithoutChange(set, merger({})));
}

// Ends on the edge from point 2 to point 4 (length 1): joined when closer than the meet
// tolerance, and made one node when closer than the duplicate tolerance.
TEST_F(MergePaths, EndsAreJoinedAndMadeOneNodeByTheirDistance) {
    const struct {
        float gap;
        int numPaths, numNodesOnFirst;
    } cases[] = {{5e-07f, 1, 3}, {5e-06f, 1, 4}, {5e-05f, 2, 2}};
    for (auto const& c : cases) {
        set.pathSet.paths.clear();
        addPathToEdgeNode(0, 2, 4, 0.5f);
        addPathToEdgeNode(6, 2, 4, 0.5f + c.gap);
        ASSERT_TRUE(merge({0, 1}));
        EXPECT_EQ(set.pathSet.getNumPaths(), c.numPaths) << "gap " << c.gap;
        EXPECT_EQ(set.pathSet.getNumNodesOnPath(0), c.numNodesOnFirst) << "gap " << c.gap;
    }
}

TEST_F(MergePaths, TheFactorysOwnToleranceIsSetAsideAndRestored) {
    SurfaceNodeFactory& factory = set.pathSet.nodeFactory;
    factory.mode = SurfaceNodeFactory::WORLD;
    factory.tolerance = 0.6f;
    addPathToEdgeNode(0, 2, 4, 0.5f);
    addPathToEdgeNode(6, 2, 4, 0.9f);  // would meet in the editor's own setting
    ASSERT_TRUE(merge({0, 1}));
    EXPECT_EQ(set.pathSet.getNumPaths(), 2);
    EXPECT_EQ(factory.mode, SurfaceNodeFactory::WORLD);
    EXPECT_EQ(factory.tolerance, 0.6f);
}

// The merge drops unused nodes from the table, which renumbers the active control point.
TEST_F(MergePaths, WithoutAJoinTheActiveCPIsFoundAgainAfterRenumbering) {
    set.pathSet.addNode(set.pathSet.nodeFactory.createVertexNode(7));  // used by no path
    set.addVertexPath({0, 2});
    set.addVertexPath({4, 6});
    set.select(1, 1);
    const int oldIndex = set.nodeAt(1, 1);
    ASSERT_TRUE(merge({0, 1}));
    EXPECT_EQ(set.selection.getActiveCP(), set.nodeAt(1, 1));
    EXPECT_NE(set.selection.getActiveCP(), oldIndex);
    EXPECT_EQ(captureState(set).activePaths, std::vector<int>{1});
}

}  // namespace
