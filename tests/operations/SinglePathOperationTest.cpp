#include "OperationTestSupport.h"
#include "SinglePathOperation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using Change = std::function<bool(SurfacePathSet&)>;

// An operation whose change is given by the test, so that the base's protocol and selection
// repair can be driven through each of their cases.
class ScriptedOperation : public SinglePathOperation {
  public:
    ScriptedOperation(SurfacePathSet* pathSet, SelectionInfo* selection, Change change)
        : SinglePathOperation(pathSet, selection, nullptr), mChange(std::move(change)) {}
    bool updatePathset() override { return mChange(*pathSet); }

  private:
    Change mChange;
};

bool appendOneNodePath(SurfacePathSet& pathSet) {
    pathSet.addPath({pathSet.addNode(makeControlPoint(pathSet, 2))});
    return true;
}

// Path 0 runs through vertices 0 1 2 3 with control points at its ends; path 1 is a second
// path.
class SelectionRepair : public StripEditTest {
  protected:
    SelectionRepair() {
        set.addVertexPath({0, 1, 2, 3});
        set.addVertexPath({1, 3});
    }
    McHandle<ScriptedOperation> scripted(Change change, SelectionInfo* selection) {
        return new ScriptedOperation(&set.pathSet, selection, std::move(change));
    }
    bool run(Change change) { return scripted(std::move(change), &set.selection)->exec(); }
    std::vector<int> activePaths() const { return captureState(set).activePaths; }
    // Moves surface vertex 0, where the active control point sits, from the origin by dx.
    int moveActiveCPBy(float dx) {
        set.surface.points[0] = McVec3f(0, 0, 0);
        set.select(0, 0);
        EXPECT_TRUE(run([this, dx](SurfacePathSet&) {
            set.surface.points[0] = McVec3f(dx, 0, 0);
            return true;
        }));
        return set.selection.getActiveCP();
    }
};

TEST_F(SelectionRepair, AppendedPathBecomesTheOnlyActivePathAndUndoRedoRestoresIt) {
    set.select(0, 3);
    set.selection.addToActivePaths(1);
    const PathSetState after = expectUndoRedoRestores(set, scripted(appendOneNodePath, &set.selection));
    EXPECT_EQ(after.activePaths, std::vector<int>{2});
    EXPECT_EQ(after.activeCP, -1);
}

TEST_F(SelectionRepair, RemovedPathClearsEverySelection) {
    set.select(0, 0);
    ASSERT_TRUE(run([](SurfacePathSet& pathSet) {
        pathSet.paths.remove(1);
        return true;
    }));
    EXPECT_TRUE(set.selection.noPathSelected());
    EXPECT_EQ(set.selection.getActiveCP(), -1);
}

// The active control point is found again by its ordinal on the path, whatever the nodes
// before it became.
TEST_F(SelectionRepair, ActiveCPIsFoundAgainAfterIntermediateNodesAndItsOwnNodeChange) {
    set.select(0, 3);
    int replacement = -1;
    ASSERT_TRUE(run([&replacement](SurfacePathSet& pathSet) {
        pathSet.paths[0].nodeIndices[1] = pathSet.addNode(pathSet.nodeFactory.createVertexNode(1));
        pathSet.paths[0].nodeIndices.remove(2);
        replacement = pathSet.addNode(makeControlPoint(pathSet, 3));
        pathSet.paths[0].nodeIndices[2] = replacement;
        return true;
    }));
    EXPECT_EQ(activePaths(), std::vector<int>{0});
    EXPECT_EQ(set.selection.getActiveCP(), replacement);
}

TEST_F(SelectionRepair, ChangedControlPointCountClearsOnlyTheActiveCP) {
    set.select(0, 3);
    ASSERT_TRUE(run([](SurfacePathSet& pathSet) {
        pathSet.getSurfaceNode(0, 1)->isControlPoint = 1;
        return true;
    }));
    EXPECT_EQ(activePaths(), std::vector<int>{0});
    EXPECT_EQ(set.selection.getActiveCP(), -1);
}

// The bound is compared in single precision: a squared distance equal to it is kept.
TEST_F(SelectionRepair, ActiveCPMovedFartherThanTheToleranceIsCleared) {
    EXPECT_EQ(moveActiveCPBy(1e-06f), set.nodeAt(0, 0));
    EXPECT_EQ(moveActiveCPBy(std::nextafter(1e-06f, 1.0f)), -1);
    EXPECT_EQ(moveActiveCPBy(0.25f), -1);
    EXPECT_EQ(activePaths(), std::vector<int>{0});
}

TEST_F(SelectionRepair, FailureAfterChangingTheSetIsRolledBackCompletely) {
    set.select(0, 3);
    const Change appendThenFail = [](SurfacePathSet& pathSet) {
        appendOneNodePath(pathSet);
        pathSet.paths[0].nodeIndices.append(pathSet.addNode(makeControlPoint(pathSet, 3)));
        return false;
    };
    EXPECT_TRUE(failsWithoutChange(set, scripted(appendThenFail, &set.selection)));
}

TEST_F(SelectionRepair, NullSelectionIsNeitherReadNorWritten) {
    set.select(0, 0);
    McHandle<ScriptedOperation> op = scripted(
        [](SurfacePathSet& pathSet) {
            pathSet.paths.remove(0);
            return true;
        },
        nullptr);
    ASSERT_TRUE(runProtocol(op));
    EXPECT_EQ(activePaths(), std::vector<int>{0}) << "no repair without a selection";
    set.selection.deselectAll();
    op->undo();
    EXPECT_EQ(set.pathSet.getNumPaths(), 2);
    EXPECT_TRUE(set.selection.noPathSelected()) << "undo does not write a selection it was not given";
}

// The change would dereference the missing set.
TEST(SinglePathOperationProtocol, WithoutPathSetExecFailsBeforeAnyChange) {
    SelectionInfo selection;
    McHandle<ScriptedOperation> op = new ScriptedOperation(nullptr, &selection, appendOneNodePath);
    EXPECT_FALSE(op->exec());
}

}  // namespace
