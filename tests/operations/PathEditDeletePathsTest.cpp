#include "OperationTestSupport.h"
#include "PathEditDeleteAllPaths.h"
#include "PathEditDeletePaths.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

// Five paths on the strip, path k from vertex k to vertex k + 1 with both ends control points.
class DeletePaths : public ::testing::Test {
  protected:
    DeletePaths() : edited(makeStrip(5)) {
        for (int k = 0; k < 5; ++k) edited.addVertexPath({k, k + 1});
        for (int k = 0; k < 5; ++k) original.push_back(pathOf(edited.pathSet, k));
    }
    bool run(McDArray<int> const& indices, int emptyOnly) {
        McHandle<PathOperation> op(new PathEditDeletePaths(&edited.pathSet, &edited.selection, indices, emptyOnly));
        return runProtocol(op);
    }
    std::vector<std::vector<int>> paths() const { return captureState(edited).paths; }

    EditedPathSet edited;
    std::vector<std::vector<int>> original;
};

TEST_F(DeletePaths, UnsortedIndicesRemoveThePathsTheyNamed) {
    ASSERT_TRUE(run({3, 1, 2}, 0));
    EXPECT_EQ(paths(), (std::vector<std::vector<int>>{original[0], original[4]}));
    EXPECT_EQ(edited.pathSet.getNumNodes(), 10) << "the nodes stay in the table";
}

TEST_F(DeletePaths, DuplicatedIndexRemovesThePathThatMovedIntoItsSlotToo) {
    ASSERT_TRUE(run({1, 1}, 0));
    EXPECT_EQ(paths(), (std::vector<std::vector<int>>{original[0], original[3], original[4]}));
}

TEST_F(DeletePaths, RemovalClearsEverySelection) {
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 1));
    ASSERT_TRUE(run({2}, 0));
    EXPECT_TRUE(edited.selection.noPathSelected());
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

TEST_F(DeletePaths, EmptyOnlyKeepsEverySlotAndEmptiesTheNamedPaths) {
    ASSERT_TRUE(run({3, 1, 3}, 1));
    EXPECT_EQ(paths(), (std::vector<std::vector<int>>{original[0], {}, original[2], {}, original[4]}));
}

TEST_F(DeletePaths, EmptyOnlyKeepsTheActiveCPOfAnUntouchedPath) {
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 1));
    ASSERT_TRUE(run({2}, 1));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{0});
    EXPECT_EQ(edited.selection.getActiveCP(), edited.nodeAt(0, 1));
}

TEST_F(DeletePaths, EmptyOnlyOnTheEditedPathClearsItsActiveCPButKeepsItActive) {
    edited.selection.setSinglePathActive(2);
    edited.selection.setActiveCP(edited.nodeAt(2, 0));
    ASSERT_TRUE(run({2}, 1));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{2});
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

TEST_F(DeletePaths, EmptyIndexListSucceedsAndChangesNothing) {
    edited.selection.setSinglePathActive(1);
    const PathSetState before = captureState(edited);
    ASSERT_TRUE(run({}, 0));
    EXPECT_EQ(captureState(edited), before);
}

TEST_F(DeletePaths, UndoThenRedoRestoresPathsNodesAndSelection) {
    edited.selection.setSinglePathActive(3);
    edited.selection.setActiveCP(edited.nodeAt(3, 1));
    McHandle<PathOperation> op(new PathEditDeletePaths(&edited.pathSet, &edited.selection, {0, 3}, 0));
    EXPECT_EQ(expectUndoRedoRestores(edited, op).paths.size(), 3u);
}

TEST_F(DeletePaths, AllPathsGoAndTheNodesStay) {
    edited.selection.setSinglePathActive(1);
    edited.selection.setActiveCP(edited.nodeAt(1, 0));
    const PathSetState before = captureState(edited);
    McHandle<PathOperation> op(new PathEditDeleteAllPaths(&edited.pathSet, &edited.selection));
    const PathSetState after = expectUndoRedoRestores(edited, op);
    EXPECT_TRUE(after.paths.empty());
    EXPECT_EQ(after.nodes, before.nodes);
    EXPECT_TRUE(after.activePaths.empty());
    EXPECT_EQ(after.activeCP, -1);
}

TEST(DeleteAllPaths, EmptySetSucceedsAndClearsTheSelection) {
    EditedPathSet edited(makeQuad());
    edited.selection.addToActivePaths(0);  // stale: the set has no path
    edited.selection.setActiveCP(2);
    McHandle<PathOperation> op(new PathEditDeleteAllPaths(&edited.pathSet, &edited.selection));
    ASSERT_TRUE(runProtocol(op));
    EXPECT_TRUE(edited.selection.noPathSelected());
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

TEST(DeleteAllPaths, WithoutPathSetOnlyTheSelectionIsCleared) {
    SelectionInfo selection;
    selection.addToActivePaths(1);
    PathEditDeleteAllPaths op(nullptr, &selection);
    EXPECT_TRUE(op.exec());
    EXPECT_TRUE(selection.noPathSelected());
}

}  // namespace
