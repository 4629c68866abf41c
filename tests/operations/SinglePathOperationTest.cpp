#include "OperationTestSupport.h"
#include "SinglePathOperation.h"
#include "TestSurfaces.h"

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
    bool updatePathset() override {
        ++calls;
        return mChange(*pathSet);
    }
    int calls = 0;

  private:
    Change mChange;
};

// A new vertex node at `vertex`, appended to the node table; returns its index.
int addVertexNode(SurfacePathSet& pathSet, int vertex, bool controlPoint) {
    SurfaceNode* node = pathSet.nodeFactory.createVertexNode(vertex);
    node->isControlPoint = controlPoint;
    return pathSet.addNode(node);
}

// Path 0 on the quad runs through vertices 0 1 2 3 with control points at its ends; path 1 is
// a second path. Path 0 is being edited with `activeCPPosition` as the active control point.
class SelectionRepair : public ::testing::Test {
  protected:
    SelectionRepair() : edited(makeQuad()) {
        edited.addVertexPath({0, 1, 2, 3});
        edited.addVertexPath({1, 3});
    }
    void activate(int path, int activeCPPosition) {
        edited.selection.setSinglePathActive(path);
        edited.selection.setActiveCP(edited.nodeAt(path, activeCPPosition));
    }
    bool run(Change change) {
        ScriptedOperation op(&edited.pathSet, &edited.selection, std::move(change));
        return op.exec();
    }
    std::vector<int> activePaths() const { return captureState(edited).activePaths; }

    EditedPathSet edited;
};

TEST_F(SelectionRepair, AppendedPathBecomesTheOnlyActivePathWithoutActiveCP) {
    activate(0, 3);
    edited.selection.addToActivePaths(1);
    ASSERT_TRUE(run([](SurfacePathSet& set) {
        McDArray<int> indices;
        indices.append(addVertexNode(set, 2, true));
        set.addPath(indices);
        return true;
    }));
    EXPECT_EQ(activePaths(), std::vector<int>{2});
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

TEST_F(SelectionRepair, RemovedPathClearsEverySelection) {
    activate(0, 0);
    ASSERT_TRUE(run([](SurfacePathSet& set) {
        set.paths.remove(1);
        return true;
    }));
    EXPECT_TRUE(edited.selection.noPathSelected());
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

TEST_F(SelectionRepair, ChangedIntermediateNodesKeepTheActiveCP) {
    activate(0, 3);
    const int activeCP = edited.nodeAt(0, 3);
    ASSERT_TRUE(run([](SurfacePathSet& set) {
        set.paths[0].nodeIndices[1] = addVertexNode(set, 1, false);
        set.paths[0].nodeIndices.remove(2);
        return true;
    }));
    EXPECT_EQ(activePaths(), std::vector<int>{0});
    EXPECT_EQ(edited.selection.getActiveCP(), activeCP);
}

TEST_F(SelectionRepair, ReplacedActiveCPIsFoundAgainAtItsNewNodeIndex) {
    activate(0, 3);
    int replacement = -1;
    ASSERT_TRUE(run([&replacement](SurfacePathSet& set) {
        replacement = addVertexNode(set, 3, true);
        set.paths[0].nodeIndices[3] = replacement;
        return true;
    }));
    EXPECT_EQ(edited.selection.getActiveCP(), replacement);
}

TEST_F(SelectionRepair, ChangedControlPointCountClearsOnlyTheActiveCP) {
    activate(0, 3);
    ASSERT_TRUE(run([](SurfacePathSet& set) {
        set.getSurfaceNode(0, 1)->isControlPoint = 1;
        return true;
    }));
    EXPECT_EQ(activePaths(), std::vector<int>{0});
    EXPECT_EQ(edited.selection.getActiveCP(), -1);
}

// The active control point sits at vertex 0, the origin; the change moves that vertex along x.
class ActiveCPMove : public SelectionRepair {
  protected:
    int moveActiveCPBy(float dx) {
        activate(0, 0);
        EXPECT_TRUE(run([this, dx](SurfacePathSet&) {
            edited.surface.points[0] = McVec3f(dx, 0, 0);
            return true;
        }));
        return edited.selection.getActiveCP();
    }
};

TEST_F(ActiveCPMove, ByExactlyTheToleranceKeepsTheActiveCP) {
    EXPECT_EQ(moveActiveCPBy(1e-06f), edited.nodeAt(0, 0)) << "a squared distance equal to the bound is kept";
    EXPECT_EQ(moveActiveCPBy(0.5e-06f), edited.nodeAt(0, 0));
}

TEST_F(ActiveCPMove, ByOneFloatStepMoreThanTheToleranceClearsTheActiveCP) {
    EXPECT_EQ(moveActiveCPBy(std::nextafter(1e-06f, 1.0f)), -1);
}

TEST_F(ActiveCPMove, FarClearsTheActiveCPButKeepsTheActivePath) {
    EXPECT_EQ(moveActiveCPBy(0.25f), -1);
    EXPECT_EQ(activePaths(), std::vector<int>{0});
}

TEST(SinglePathOperationProtocol, WithoutPathSetExecFailsBeforeAnyChange) {
    SelectionInfo selection;
    ScriptedOperation op(nullptr, &selection, [](SurfacePathSet&) { return true; });
    EXPECT_FALSE(op.exec());
    EXPECT_EQ(op.calls, 0);
}

TEST(SinglePathOperationProtocol, FailureAfterChangingTheSetIsRolledBackCompletely) {
    EditedPathSet edited(makeQuad());
    edited.addVertexPath({0, 1, 2});
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 2));
    const PathSetState before = captureState(edited);

    ScriptedOperation op(&edited.pathSet, &edited.selection, [](SurfacePathSet& set) {
        set.paths[0].nodeIndices.append(addVertexNode(set, 3, true));
        set.addPath(set.paths[0].nodeIndices);
        return false;
    });
    op.initUndo();
    EXPECT_FALSE(op.exec());
    EXPECT_EQ(captureState(edited).activeCP, before.activeCP) << "a failed change leaves the selection alone";
    EXPECT_EQ(captureState(edited).activePaths, before.activePaths);
    op.undo();
    EXPECT_EQ(captureState(edited), before);
}

TEST(SinglePathOperationProtocol, UndoThenRedoRestoresTheAfterStateWithItsSelection) {
    EditedPathSet edited(makeQuad());
    edited.addVertexPath({0, 1, 2});
    edited.selection.setSinglePathActive(0);
    ScriptedOperation op(&edited.pathSet, &edited.selection, [](SurfacePathSet& set) {
        McDArray<int> indices;
        indices.append(addVertexNode(set, 3, true));
        set.addPath(indices);
        return true;
    });
    EXPECT_EQ(expectUndoRedoRestores(edited, &op).activePaths, std::vector<int>{1});
}

TEST(SinglePathOperationProtocol, NullSelectionIsNeitherReadNorWritten) {
    EditedPathSet edited(makeQuad());
    edited.addVertexPath({0, 1, 2});
    edited.selection.setSinglePathActive(0);
    edited.selection.setActiveCP(edited.nodeAt(0, 0));

    ScriptedOperation op(&edited.pathSet, nullptr, [](SurfacePathSet& set) {
        set.paths.remove(0);
        return true;
    });
    ASSERT_TRUE(runProtocol(&op));
    EXPECT_EQ(captureState(edited).activePaths, std::vector<int>{0}) << "no repair without a selection";
    EXPECT_EQ(op.selectionState[0].getPathSet(), nullptr) << "no snapshot of a selection";
    EXPECT_EQ(op.selectionState[1].getPathSet(), nullptr);

    edited.selection.deselectAll();
    op.undo();
    EXPECT_EQ(edited.pathSet.getNumPaths(), 1);
    EXPECT_TRUE(edited.selection.noPathSelected()) << "undo does not write a selection it was not given";
}

}  // namespace
