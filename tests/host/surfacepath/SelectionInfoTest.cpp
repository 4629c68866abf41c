// The editing selection: active paths, the single path in edit mode, the active control point,
// and how it follows changes of the path set.

#include "SelectionInfo.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

class Selection : public testing::Test {
  protected:
    void SetUp() override {
        for (int v = 0; v < 4; ++v) {
            SurfaceNode* node = set.nodeFactory.createVertexNode(v);
            node->isControlPoint = v != 1;
            set.addNode(node);
        }
        set.addPath(McDArray<int>({0, 1, 2}));
        set.addPath(McDArray<int>({3}));
    }
    Surface quad = makeQuad();
    SurfacePathSet set{&quad};
    SelectionInfo selection{&set};
};

TEST_F(Selection, OnlyASinglePathIsTheActivePathAndPathsAreActiveOnce) {
    selection.setSinglePathActive(1);
    EXPECT_EQ(selection.getActivePath(), 1);
    selection.addToActivePaths(0);
    selection.addToActivePaths(0);
    EXPECT_EQ(selection.getActivePaths(), McDArray<int>({1, 0})) << "a path is active once";
    EXPECT_EQ(selection.getActivePath(), -1) << "with several active paths none is the active one";
    selection.setSinglePathActive(-1);
    EXPECT_TRUE(selection.noPathSelected());
}

TEST_F(Selection, ActiveControlPointFollowsItsPath) {
    selection.setSinglePathActive(0);
    selection.setActiveCP(2);
    EXPECT_TRUE(selection.isCPOnActivePath(2));
    EXPECT_FALSE(selection.isCPOnActivePath(3));
    selection.addToActivePaths(1);
    selection.deselectPath(1);
    EXPECT_EQ(selection.getActiveCP(), 2) << "deselecting another path keeps it";
    selection.setSinglePathActive(1);
    EXPECT_EQ(selection.getActiveCP(), -1) << "not on the new active path";
    selection.setSinglePathActive(0);
    selection.setActiveCP(0);
    selection.deselectAll();
    EXPECT_EQ(selection.getActiveCP(), -1);
    EXPECT_TRUE(selection.noPathSelected());
}

TEST_F(Selection, SynchronizeDropsWhatTheSetNoLongerHas) {
    selection.addToActivePaths(0);
    selection.addToActivePaths(1);
    selection.setActiveCP(3);
    set.paths.remove(1);
    selection.synchronize();
    EXPECT_EQ(selection.getActivePaths(), McDArray<int>({0}));
    EXPECT_EQ(selection.getActiveCP(), -1);
    selection.setActiveCP(1);
    selection.synchronize();
    EXPECT_EQ(selection.getActiveCP(), -1) << "node 1 is no control point";
}

}  // namespace
