// The path set display in an offscreen viewer, over its surface's display: picks on lines
// name the path and the segment (paths too short to draw do not count), picks on markers the
// control point, the nearest thing wins, lines on the surface are drawn over it, and the
// display follows the set and owns its selection.

#include "HxController.h"
#include "HxDisplaySurfacePathSet.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "SoControlPointSeparator.h"
#include "TestSurfaces.h"
#include "TestTcl.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoIndexedLineSet.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class HxDisplaySurfacePathSetTest : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        viewer = HxController::getTheController()->viewer(0, 1);
        McString error;
        ASSERT_TRUE(viewer->setSize(400, 200, error));
        viewer->getCamera()->orientation.setValue(SbRotation::identity());
    }
    void TearDown() override { HxObjectPool::getTheObjectPool().removeAll(); }

    // A surface named S, a path set PS on it, both shown; the set's paths are `paths`.
    void makeScene(Surface const& surface, std::initializer_list<char const*> paths) {
        evalOk("create HxSurface S");
        static_cast<HxSurface*>(HxObjectPool::getTheObjectPool().findObject("S"))->surface = surface;
        evalOk("create HxSurfacePathSet PS; PS surface connect S");
        for (char const* path : paths) evalOk(std::string("PS addPath ") + path);
        evalOk("S show");
        ASSERT_EQ(evalOk("PS show"), "PS-display");
        set = static_cast<HxSurfacePathSet*>(HxObjectPool::getTheObjectPool().findObject("PS"));
        display = set->getDisplaySurfacePathSet(false);
        viewer->viewAll();
    }
    // What `viewer 0 pick` says about the world point p, seen from dx, dy pixels away.
    std::string pickAt(McVec3f const& p, float dx = 0, float dy = 0) {
        float sx, sy;
        EXPECT_TRUE(viewer->project(p, sx, sy));
        return evalOk("viewer 0 pick " + std::to_string(sx + dx) + " " + std::to_string(sy + dy));
    }
    static std::string tail(std::string const& words, char const* from) {
        const size_t at = words.find(from);
        return at == std::string::npos ? words : words.substr(at);
    }

    HxViewer* viewer = nullptr;
    HxSurfacePathSet* set = nullptr;
    HxDisplaySurfacePathSet* display = nullptr;
};

// Strip points: 2k at (k, 0, 0), 2k + 1 at (k, 1, 0). Path 0 has one node and no line.
TEST_F(HxDisplaySurfacePathSetTest, LinePicksNameThePathAndTheSegment) {
    makeScene(makeStrip(16), {"v:0", "v:1 v:4 v:7", "v:8 v:11 v:12 v:15"});
    EXPECT_EQ(display->getPathLineNode()->coordIndex.getNum(), 3 + 1 + 4 + 1);
    for (float dy : {0.0f, 2.0f}) {  // on the line and two pixels beside it: the line, not the surface
        EXPECT_EQ(tail(pickAt(McVec3f(5.5f, 0.5f, 0), 0, dy), "path"), "path 2 segment 1 line 1 part 3") << dy;
        EXPECT_EQ(tail(pickAt(McVec3f(1.0f, 0.5f, 0), 0, dy), "path"), "path 1 segment 0 line 0 part 0") << dy;
    }
    // From a slant the line still wins beside it, where the surface lies nearer.
    viewer->getCamera()->orientation.setValue(SbRotation(SbVec3f(1, 0, 0), 1.1f));
    viewer->viewAll();
    for (float dy : {-2.0f, 2.0f})
        EXPECT_EQ(tail(pickAt(McVec3f(6.5f, 0.5f, 0), 2, dy), "path"), "path 2 segment 2 line 1 part 4");

    const int lastNode = set->pathSet.paths[2].nodeIndices.last();
    EXPECT_EQ(tail(pickAt(McVec3f(7, 1, 0)), "controlPoint"), "controlPoint " + std::to_string(lastNode) + " path 2");
    float sx, sy;
    viewer->project(McVec3f(7, 1, 0), sx, sy);
    SoPath const* path = viewer->pick(sx, sy)->getPath();
    SoControlPointSeparator* marker = HxDisplaySurfacePathSet::findControlPoint(path);
    ASSERT_NE(marker, nullptr);
    EXPECT_EQ(marker->getNodeIndex(), lastNode);
    EXPECT_TRUE(path->containsNode(display->getControlPointNode()));
}

// Cube points: x + 2y + 4z at (x, y, z). Seen from +z, path 0 runs on the front side (z = 1),
// path 1 on the back side.
TEST_F(HxDisplaySurfacePathSetTest, TheNearestThingWins) {
    makeScene(makeCube(), {"v:4 v:7", "v:0 v:3"});
    EXPECT_EQ(tail(pickAt(McVec3f(0.4f, 0.4f, 1)), "path"), "path 0 segment 0 line 0 part 0");
    const std::string behind = pickAt(McVec3f(0.6f, 0.4f, 0));
    EXPECT_EQ(behind.rfind("object S-display", 0), 0u) << "the back path hides behind the front side: " << behind;
}

TEST_F(HxDisplaySurfacePathSetTest, LinesOnTheSurfaceAreDrawnOverItInTheirPathsColours) {
    makeScene(makeStrip(12), {"v:1 v:4 v:7", "v:8 v:11"});
    display->getSelectionInfo().setSinglePathActive(1);
    display->refresh();
    auto pixelAt = [&](McVec3f const& p) {
        float sx, sy;
        viewer->project(p, sx, sy);
        return viewer->getImage() + 4 * (size_t(sy) * 400 + size_t(sx));
    };
    for (char const* style : {"0", "3"}) {
        evalOk(std::string("S-display drawStyle setValue ") + style + "; S-display fire");
        viewer->redraw();
        unsigned char const* ordinary = pixelAt(McVec3f(1.0f, 0.5f, 0));
        EXPECT_TRUE(ordinary[0] > 200 && ordinary[2] < 100) << "style " << style << ": orange, not grey";
        unsigned char const* active = pixelAt(McVec3f(4.5f, 0.5f, 0));
        EXPECT_TRUE(active[0] < 100 && active[2] > 200) << "style " << style << ": cyan";
    }
}

TEST_F(HxDisplaySurfacePathSetTest, FollowsTheSetAndOwnsItsSelection) {
    makeScene(makeStrip(12), {"v:1 v:4", "v:8 v:11"});
    SelectionInfo& selection = display->getSelectionInfo();
    EXPECT_EQ(selection.getPathSet(), &set->pathSet);
    selection.setSinglePathActive(1);
    selection.setActiveCP(set->pathSet.paths[1].nodeIndices[0]);
    display->refresh();
    EXPECT_EQ(evalOk("PS getSelection"), "1 " + std::to_string(selection.getActiveCP()));

    evalOk("PS addPath v:12 v:13");
    EXPECT_EQ(display->getPathOfLine(2), 2) << "the new path is drawn";
    EXPECT_EQ(display->getControlPointNode()->getNumChildren(), 6);

    SoSeparator* geometry = HxController::getTheController()->getGeometryRoot();
    evalOk("remove PS");
    EXPECT_LT(geometry->findChild(display->getSceneNode()), 0);
    EXPECT_EQ(display->getSelectionInfo().getPathSet(), nullptr);
    EXPECT_EQ(display->getPathLineNode()->coordIndex.getNum(), 0);
}

}  // namespace
