#include "OperationTestSupport.h"
#include "PathEditSelection.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

// Two paths on the quad; path 0 is being edited with its last node as the active control point.
class SelectionChange : public ::testing::Test {
  protected:
    SelectionChange() : edited(makeQuad()) {
        edited.addVertexPath({0, 1, 2});
        edited.addVertexPath({2, 3});
        edited.selection.setSinglePathActive(0);
        edited.selection.setActiveCP(edited.nodeAt(0, 2));
    }
    EditedPathSet edited;
};

TEST_F(SelectionChange, UndoAndRedoWalkTheSelectionButNeverThePathSet) {
    const PathSetState before = captureState(edited);
    SelectionInfo next(&edited.pathSet);
    next.addToActivePaths(0);
    next.addToActivePaths(1);
    McHandle<PathOperation> op(new PathEditSelection(&edited.selection, next));
    ASSERT_TRUE(runProtocol(op));
    const PathSetState after = captureState(edited);
    EXPECT_EQ(after.activePaths, (std::vector<int>{0, 1}));
    EXPECT_EQ(after.activeCP, -1);

    edited.addVertexPath({1, 3});  // an edit that this operation must not undo
    const std::vector<std::vector<int>> paths = captureState(edited).paths;
    op->undo();
    EXPECT_EQ(captureState(edited).activePaths, before.activePaths);
    EXPECT_EQ(captureState(edited).activeCP, before.activeCP);
    EXPECT_EQ(captureState(edited).paths, paths);
    op->redo();
    EXPECT_EQ(captureState(edited).activePaths, after.activePaths);
    EXPECT_EQ(captureState(edited).activeCP, after.activeCP);
    EXPECT_EQ(captureState(edited).paths, paths);
}

TEST_F(SelectionChange, TheSelectionIsAppliedAsGivenWithoutRepair) {
    SelectionInfo next(&edited.pathSet);
    next.setSinglePathActive(1);
    next.setActiveCP(edited.nodeAt(0, 0));  // not on the active path: kept as it is
    McHandle<PathOperation> op(new PathEditSelection(&edited.selection, next));
    ASSERT_TRUE(runProtocol(op));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{1});
    EXPECT_EQ(edited.selection.getActiveCP(), edited.nodeAt(0, 0));
}

TEST_F(SelectionChange, TheSameSelectionRecordsAStepThatChangesNothing) {
    const PathSetState before = captureState(edited);
    McHandle<PathOperation> op(new PathEditSelection(&edited.selection, edited.selection));
    ASSERT_TRUE(runProtocol(op));
    EXPECT_EQ(captureState(edited), before);
    op->undo();
    EXPECT_EQ(captureState(edited), before);
}

TEST_F(SelectionChange, TheOperationKeepsItsOwnCopyOfTheNewSelection) {
    SelectionInfo next(&edited.pathSet);
    next.setSinglePathActive(1);
    McHandle<PathOperation> op(new PathEditSelection(&edited.selection, next));
    next.deselectAll();
    ASSERT_TRUE(runProtocol(op));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{1});
}

}  // namespace
