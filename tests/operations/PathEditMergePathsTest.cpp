#include "OperationTestSupport.h"
#include "PathEditMergePaths.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using Vertices = std::vector<int>;

// The strip of six triangles; its lower row of points 0 2 4 6 lies on the x axis at x = 0..3.
class MergePaths : public ::testing::Test {
  protected:
    MergePaths() : edited(makeStrip(6)) {}

    int addPath(Vertices const& vertices) { return addVertexPath(edited.pathSet, vertices); }
    // A path of two nodes: vertex `from`, then a node at parameter t on the edge from point a
    // to point b (a < b).
    int addPathToEdgeNode(int from, int a, int b, float t) {
        SurfacePathSet& set = edited.pathSet;
        SurfaceNode* end = set.nodeFactory.createEdgeNode(edited.surface.findEdge(a, b), t);
        end->isControlPoint = 1;
        McDArray<int> indices;
        indices.append(set.addNode(set.nodeFactory.createVertexNode(from)));
        set.getNode(indices[0])->isControlPoint = 1;
        indices.append(set.addNode(end));
        return set.addPath(indices);
    }
    bool merge(McDArray<int> const& indices) {
        McHandle<PathOperation> op(new PathEditMergePaths(&edited.pathSet, &edited.selection, indices));
        return runProtocol(op);
    }
    std::vector<Vertices> vertexPaths() const {
        std::vector<Vertices> result;
        for (int p = 0; p < edited.pathSet.getNumPaths(); ++p) result.push_back(verticesOf(edited.pathSet, p));
        return result;
    }

    EditedPathSet edited;
};

struct EndsCase {
    Vertices a, b, joined;
};

TEST_F(MergePaths, PathsMeetingAtEitherEndAreJoinedInPathOrder) {
    const std::array<EndsCase, 4> cases{{
        {{0, 2}, {2, 4}, {0, 2, 4}},  // last meets first
        {{2, 0}, {2, 4}, {0, 2, 4}},  // first meets first: the first path is reversed
        {{0, 2}, {4, 2}, {0, 2, 4}},  // last meets last: the second path is reversed
        {{2, 4}, {0, 2}, {4, 2, 0}},  // first meets last: both are reversed
    }};
    for (EndsCase const& c : cases) {
        EditedPathSet fresh(makeStrip(6));
        addVertexPath(fresh.pathSet, c.a);
        addVertexPath(fresh.pathSet, {1, 3});  // not listed: only moves down
        addVertexPath(fresh.pathSet, c.b);
        McHandle<PathOperation> op(new PathEditMergePaths(&fresh.pathSet, &fresh.selection, {0, 2}));
        ASSERT_TRUE(runProtocol(op));
        ASSERT_EQ(fresh.pathSet.getNumPaths(), 2);
        EXPECT_EQ(verticesOf(fresh.pathSet, 0), c.joined);
        EXPECT_EQ(verticesOf(fresh.pathSet, 1), (Vertices{1, 3}));
        EXPECT_EQ(fresh.pathSet.getNumNodes(), 5) << "the doubled join node is merged";
        EXPECT_EQ(fresh.pathSet.getNumControlPointsOnPath(0), 3) << "the join keeps its control point";
        EXPECT_TRUE(fresh.pathSet.isConsistent(true, nullptr));
    }
}

TEST_F(MergePaths, ThreePiecesOfALineEndAsOnePathInAnyOrderAndDirection) {
    const std::array<Vertices, 3> pieces{{{0, 2}, {2, 4}, {4, 6}}};
    std::array<int, 3> order{0, 1, 2};
    do {
        for (int reversed = 0; reversed < 8; ++reversed) {
            EditedPathSet fresh(makeStrip(6));
            for (int k : order) {
                Vertices piece = pieces[k];
                if (reversed & (1 << k)) std::reverse(piece.begin(), piece.end());
                addVertexPath(fresh.pathSet, piece);
            }
            McHandle<PathOperation> op(new PathEditMergePaths(&fresh.pathSet, &fresh.selection, {0, 1, 2}));
            ASSERT_TRUE(runProtocol(op));
            ASSERT_EQ(fresh.pathSet.getNumPaths(), 1) << "order " << order[0] << order[1] << order[2];
            const Vertices joined = verticesOf(fresh.pathSet, 0);
            EXPECT_TRUE(joined == (Vertices{0, 2, 4, 6}) || joined == (Vertices{6, 4, 2, 0}))
                << "order " << order[0] << order[1] << order[2] << " reversed " << reversed;
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(MergePaths, PathsThatDoNotMeetStayAsTheyAre) {
    addPath({0, 2});
    addPath({4, 6});
    ASSERT_TRUE(merge({0, 1}));
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{0, 2}, {4, 6}}));
}

TEST_F(MergePaths, LoneLoopListedTwiceMeetsItselfAndIsDropped) {
    addPath({0, 2, 1});
    edited.pathSet.paths[0].nodeIndices.append(edited.nodeAt(0, 0));
    ASSERT_TRUE(edited.pathSet.isPathClosed(0));
    addPath({4, 6});
    ASSERT_TRUE(merge({0, 0}));
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{4, 6}}));
}

TEST_F(MergePaths, EveryEmptyPathOfTheSetIsRemovedListedOrNot) {
    addPath({0, 2});
    edited.pathSet.paths.append(SurfacePathSet::SurfacePath());
    addPath({4, 6});
    ASSERT_TRUE(merge({0, 2}));
    EXPECT_EQ(vertexPaths(), (std::vector<Vertices>{{0, 2}, {4, 6}}));
}

TEST_F(MergePaths, FewerThanTwoIndicesFailAndChangeNothing) {
    addPath({0, 2});
    addPath({2, 4});
    edited.pathSet.paths.append(SurfacePathSet::SurfacePath());
    edited.selection.setSinglePathActive(1);
    const PathSetState before = captureState(edited);
    EXPECT_FALSE(merge({0}));
    EXPECT_FALSE(merge({}));
    EXPECT_EQ(captureState(edited), before);
}

// Ends on the edge from point 2 to point 4 (length 1), a distance `gap` apart.
class MergeTolerance : public MergePaths {
  protected:
    void mergeEndsWithGap(float gap) {
        addPathToEdgeNode(0, 2, 4, 0.5f);
        addPathToEdgeNode(6, 2, 4, 0.5f + gap);
        ASSERT_TRUE(merge({0, 1}));
    }
};

TEST_F(MergeTolerance, EndsCloserThanTheMeetToleranceAreJoinedButKeptApart) {
    mergeEndsWithGap(5e-06f);
    ASSERT_EQ(edited.pathSet.getNumPaths(), 1);
    EXPECT_EQ(edited.pathSet.getNumNodesOnPath(0), 4) << "both ends stay: farther apart than 1e-06";
}

TEST_F(MergeTolerance, EndsCloserThanTheDuplicateToleranceBecomeOneNode) {
    mergeEndsWithGap(5e-07f);
    ASSERT_EQ(edited.pathSet.getNumPaths(), 1);
    EXPECT_EQ(edited.pathSet.getNumNodesOnPath(0), 3);
}

TEST_F(MergeTolerance, EndsFartherThanTheMeetToleranceStaySeparate) {
    mergeEndsWithGap(5e-05f);
    EXPECT_EQ(edited.pathSet.getNumPaths(), 2);
}

TEST_F(MergeTolerance, TheFactorysOwnSettingIsSetAsideAndRestored) {
    SurfaceNodeFactory& factory = edited.pathSet.nodeFactory;
    factory.mode = SurfaceNodeFactory::WORLD;
    factory.tolerance = 0.6f;
    mergeEndsWithGap(0.4f);  // would meet in the editor's own setting
    EXPECT_EQ(edited.pathSet.getNumPaths(), 2);
    EXPECT_EQ(factory.mode, SurfaceNodeFactory::WORLD);
    EXPECT_EQ(factory.tolerance, 0.6f);
}

TEST_F(MergePaths, AJoinClearsTheSelection) {
    addPath({0, 2});
    addPath({2, 4});
    edited.selection.setSinglePathActive(1);
    edited.selection.setActiveCP(edited.nodeAt(1, 1));
    ASSERT_TRUE(merge({0, 1}));
    EXPECT_TRUE(edited.selection.noPathSelected());
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

// The merge drops unused nodes from the table, which renumbers the active control point.
TEST_F(MergePaths, WithoutAJoinTheActiveCPIsFoundAgainAfterRenumbering) {
    edited.pathSet.addNode(edited.pathSet.nodeFactory.createVertexNode(7));  // used by no path
    addPath({0, 2});
    addPath({4, 6});
    edited.selection.setSinglePathActive(1);
    const int oldIndex = edited.nodeAt(1, 1);
    edited.selection.setActiveCP(oldIndex);
    ASSERT_TRUE(merge({0, 1}));
    EXPECT_EQ(edited.selection.getActiveCP(), edited.nodeAt(1, 1));
    EXPECT_NE(edited.selection.getActiveCP(), oldIndex);
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{1});
}

TEST_F(MergePaths, UndoThenRedoRestoresTheAfterStateWithItsSelection) {
    addPath({0, 2});
    addPath({4, 2});
    addPath({5, 7});
    edited.selection.setSinglePathActive(2);
    McHandle<PathOperation> op(new PathEditMergePaths(&edited.pathSet, &edited.selection, {0, 1, 2}));
    EXPECT_EQ(expectUndoRedoRestores(edited, op).paths.size(), 2u);
}

// A shortest path on a real mesh, cut into three pieces listed out of order, one of them
// reversed, is joined back into the same line.
TEST(MergePathsOnMesh, PiecesOfAPathAreJoinedBackIntoIt) {
    EditedPathSet edited(readMesh("elephant.off"));
    const Vertices line = shortestVertexPath(edited.surface, 0, edited.surface.getNumPoints() / 2);
    ASSERT_GE(line.size(), 7u);
    const size_t cut1 = line.size() / 3, cut2 = 2 * line.size() / 3;
    Vertices middle(line.begin() + cut1, line.begin() + cut2 + 1);
    std::reverse(middle.begin(), middle.end());
    addVertexPath(edited.pathSet, Vertices(line.begin() + cut2, line.end()));
    addVertexPath(edited.pathSet, Vertices(line.begin(), line.begin() + cut1 + 1));
    addVertexPath(edited.pathSet, middle);

    McHandle<PathOperation> op(new PathEditMergePaths(&edited.pathSet, &edited.selection, {0, 1, 2}));
    ASSERT_TRUE(runProtocol(op));
    ASSERT_EQ(edited.pathSet.getNumPaths(), 1);
    Vertices joined = verticesOf(edited.pathSet, 0);
    if (joined.front() != line.front()) std::reverse(joined.begin(), joined.end());
    EXPECT_EQ(joined, line);
    EXPECT_EQ(edited.pathSet.getNumNodes(), static_cast<int>(line.size()));
    EXPECT_TRUE(edited.pathSet.isConsistent(true, nullptr));
}

}  // namespace
