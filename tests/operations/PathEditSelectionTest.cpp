#include "OperationTestSupport.h"
#include "PathEditSelection.h"

#include <gtest/gtest.h>

namespace {

// Two paths; path 0 is being edited with its last node as the active control point.
class SelectionChange : public StripEditTest {
  protected:
    SelectionChange() {
        set.addVertexPath({0, 1, 2});
        set.addVertexPath({2, 3});
        set.select(0, 2);
    }
    // The current paths and nodes with the selection of `selected`.
    PathSetState withSelectionOf(PathSetState const& selected) const {
        PathSetState state = captureState(set);
        state.activePaths = selected.activePaths;
        state.activeCP = selected.activeCP;
        return state;
    }
};

TEST_F(SelectionChange, UndoAndRedoWalkTheSelectionButNeverThePathSet) {
    const PathSetState before = captureState(set);
    SelectionInfo next(&set.pathSet);
    next.addToActivePaths(0);
    next.addToActivePaths(1);
    McHandle<PathOperation> op(new PathEditSelection(&set.selection, next));
    ASSERT_TRUE(runProtocol(op));
    const PathSetState after = captureState(set);
    EXPECT_EQ(after.activePaths, (std::vector<int>{0, 1}));
    EXPECT_EQ(after.activeCP, -1);

    set.addVertexPath({1, 3});  // an edit that this operation must not undo
    const PathSetState undone = withSelectionOf(before);
    op->undo();
    EXPECT_EQ(captureState(set), undone);
    const PathSetState redone = withSelectionOf(after);
    op->redo();
    EXPECT_EQ(captureState(set), redone);
}

// The operation keeps its own copy of the new selection and applies it without repair.
TEST_F(SelectionChange, TheSelectionIsAppliedAsGivenWithoutRepair) {
    SelectionInfo next(&set.pathSet);
    next.setSinglePathActive(1);
    next.setActiveCP(set.nodeAt(0, 0));  // not on the active path: kept as it is
    McHandle<PathOperation> op(new PathEditSelection(&set.selection, next));
    next.deselectAll();
    ASSERT_TRUE(runProtocol(op));
    EXPECT_EQ(captureState(set).activePaths, std::vector<int>{1});
    EXPECT_EQ(set.selection.getActiveCP(), set.nodeAt(0, 0));
}

}  // namespace
