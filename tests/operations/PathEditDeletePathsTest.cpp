#include "OperationTestSupport.h"
#include "PathEditDeleteAllPaths.h"
#include "PathEditDeletePaths.h"

#include <gtest/gtest.h>

namespace {

using Paths = std::vector<std::vector<int>>;

// Five paths, path k from vertex k to vertex k + 1 with both ends control points.
class DeletePaths : public StripEditTest {
  protected:
    DeletePaths() {
        for (int k = 0; k < 5; ++k) set.addVertexPath({k, k + 1});
        original = captureState(set).paths;
    }
    McHandle<PathOperation> deletion(McDArray<int> const& indices, int emptyOnly) {
        return new PathEditDeletePaths(&set.pathSet, &set.selection, indices, emptyOnly);
    }
    Paths paths() const { return captureState(set).paths; }

    Paths original;
};

TEST_F(DeletePaths, UnsortedIndicesRemoveTheNamedPathsAndClearTheSelection) {
    set.select(3, 1);
    const PathSetState after = expectUndoRedoRestores(set, deletion({3, 1, 2}, 0));
    EXPECT_EQ(after.paths, (Paths{original[0], original[4]}));
    EXPECT_EQ(after.nodes.size(), 10u) << "the nodes stay in the table";
    EXPECT_TRUE(after.activePaths.empty());
    EXPECT_EQ(after.activeCP, -1);
}

TEST_F(DeletePaths, DuplicatedIndexRemovesThePathThatMovedIntoItsSlotToo) {
    ASSERT_TRUE(runProtocol(deletion({1, 1}, 0)));
    EXPECT_EQ(paths(), (Paths{original[0], original[3], original[4]}));
}

TEST_F(DeletePaths, EmptyIndexListSucceedsAndChangesNothing) {
    set.select(1, 0);
    const PathSetState before = captureState(set);
    ASSERT_TRUE(runProtocol(deletion({}, 0)));
    EXPECT_EQ(captureState(set), before);
}

TEST_F(DeletePaths, EmptyOnlyKeepsEverySlotAndEmptiesTheNamedPaths) {
    ASSERT_TRUE(runProtocol(deletion({3, 1, 3}, 1)));
    EXPECT_EQ(paths(), (Paths{original[0], {}, original[2], {}, original[4]}));
}

TEST_F(DeletePaths, AllPathsGoAndTheNodesStay) {
    set.select(1, 0);
    const PathSetState before = captureState(set);
    const PathSetState after = expectUndoRedoRestores(set, new PathEditDeleteAllPaths(&set.pathSet, &set.selection));
    EXPECT_TRUE(after.paths.empty());
    EXPECT_EQ(after.nodes, before.nodes);
    EXPECT_TRUE(after.activePaths.empty());
    EXPECT_EQ(after.activeCP, -1);
}

TEST(DeleteAllPaths, AnEmptyOrMissingSetSucceedsAndClearsTheSelection) {
    EditedPathSet edited(makeQuad());
    edited.selection.addToActivePaths(0);  // stale: the set has no path
    edited.selection.setActiveCP(2);
    ASSERT_TRUE(runProtocol(new PathEditDeleteAllPaths(&edited.pathSet, &edited.selection)));
    EXPECT_TRUE(edited.selection.noPathSelected());
    EXPECT_EQ(edited.selection.getActiveCP(), -1);

    SelectionInfo selection;
    selection.addToActivePaths(1);
    PathEditDeleteAllPaths withoutSet(nullptr, &selection);
    EXPECT_TRUE(withoutSet.exec());
    EXPECT_TRUE(selection.noPathSelected());
}

}  // namespace
