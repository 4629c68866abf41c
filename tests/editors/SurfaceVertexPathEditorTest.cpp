// The vertex editor driven as a user drives it: real clicks and keys through the offscreen
// viewer, port presses through update(), on a flat strip seen from above.

#include "HxController.h"
#include "HxDisplaySurfacePathSet.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxPortButtonList.h"
#include "HxPortInfo.h"
#include "HxPortIntSlider.h"
#include "HxPortToggleList.h"
#include "HxSurface.h"
#include "HxSurfacePathEditor.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "SurfaceVertexPathEditor.h"
#include "TestSurfaces.h"

#include <Inventor/nodes/SoCamera.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::string eval(std::string const& command) {
    std::string result = HxInterpreter::getTheInterpreter().eval("%s", command.c_str());
    EXPECT_EQ(HxInterpreter::getTheInterpreter().lastCode(), TCL_OK) << command << ": " << result;
    return result;
}

// Strip points: 2k at (k, 0, 0), 2k + 1 at (k, 1, 0).
class SurfaceVertexPathEditorTest : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        eval("namespace eval hxsurfacepathedit { variable vertexEditorConnectors Dijkstra }");
        eval("create HxSurface S");
        surfaceObject = static_cast<HxSurface*>(HxObjectPool::getTheObjectPool().findObject("S"));
        surfaceObject->surface = makeStrip(24);
        eval("create HxSurfacePathSet PS; PS surface connect S");
        ps = static_cast<HxSurfacePathSet*>(HxObjectPool::getTheObjectPool().findObject("PS"));
        ps->setEditorActive(true);  // as while the editor module edits it
        module = new HxSurfacePathEditor;
        HxObjectPool::getTheObjectPool().addObject(module);

        editor = new SurfaceVertexPathEditor;
        editor->setPathSet(ps);
        editor->setEditorCallback(editorCallBack, editor);
        editor->initButtons(module);
        editor->init();
        editor->checkButtons();
        clearPortFlags();  // as the module's fire does after it started the editor
        viewer = HxController::getTheController()->viewer(0, 1);
        McString error;
        viewer->setSize(600, 200, error);
        viewer->setViewing(false);
        viewer->getCamera()->orientation.setValue(SbRotation::identity());
        viewer->viewAll();
    }
    void TearDown() override {
        delete editor;
        module->stopEditing();  // deletes the ports the editor made on it
        HxObjectPool::getTheObjectPool().removeAll();
    }

    // Screen position of (x, y) on the strip; points on its border are moved 0.05 inwards,
    // so that a click there hits the strip next to that vertex.
    std::string at(float x, float y) {
        x = std::min(std::max(x, 0.05f), 11.95f);
        y = std::min(std::max(y, 0.05f), 0.95f);
        float sx, sy;
        EXPECT_TRUE(viewer->project(McVec3f(x, y, 0), sx, sy));
        return std::to_string(sx) + " " + std::to_string(sy);
    }
    void click(float x, float y, char const* modifiers = "", int button = 1) {
        eval("viewer 0 mouse press " + std::to_string(button) + " " + at(x, y) + " " + modifiers);
        eval("viewer 0 mouse release " + std::to_string(button) + " " + at(x, y) + " " + modifiers);
    }
    // A click right on a node (its control-point marker, if it has one).
    void clickNode(int node, char const* modifiers = "") {
        const McVec3f p = ps->pathSet.getNode(node)->getPosition();
        float sx, sy;
        ASSERT_TRUE(viewer->project(p, sx, sy));
        const std::string xy = std::to_string(sx) + " " + std::to_string(sy) + " " + modifiers;
        eval("viewer 0 mouse press 1 " + xy);
        eval("viewer 0 mouse release 1 " + xy);
    }
    void key(char const* state, char const* k) { eval(std::string("viewer 0 key ") + state + " " + k); }
    void clearPortFlags() {
        for (HxPort* p : module->getPorts()) p->untouch();
    }
    void press(HxPortButtonList* port, int button) {
        port->hit(button);
        editor->update();
        editor->checkButtons();
        clearPortFlags();
    }
    std::vector<int> path(int i) const {
        McDArray<int> nodes;
        ps->pathSet.getPath(i, nodes);
        std::vector<int> vertices;
        for (int node : nodes) vertices.push_back(ps->pathSet.getNode(node)->getElement());
        return vertices;
    }
    SelectionInfo& selection() { return ps->getDisplaySurfacePathSet(false)->getSelectionInfo(); }

    HxSurface* surfaceObject = nullptr;
    HxSurfacePathSet* ps = nullptr;
    HxSurfacePathEditor* module = nullptr;
    SurfaceVertexPathEditor* editor = nullptr;
    HxViewer* viewer = nullptr;
};

TEST_F(SurfaceVertexPathEditorTest, ShiftClicksBuildAPathAndPlainClicksSelect) {
    EXPECT_STREQ(editor->info->getText(), "To create a new path, Shift+Click onto the surface.");
    EXPECT_FALSE(editor->pathSelection->isSensitive(0));
    click(0, 0, "-shift");  // no path selected: a new one-node path
    ASSERT_EQ(ps->pathSet.getNumPaths(), 1);
    EXPECT_EQ(path(0), (std::vector<int>{0}));
    EXPECT_EQ(selection().getActivePath(), 0);
    click(4, 0, "-shift");  // in edit mode: a control point appended, joined by Dijkstra
    click(4, 1, "-shift");
    EXPECT_EQ(path(0).front(), 0);
    EXPECT_EQ(path(0).back(), 9);
    EXPECT_EQ(ps->pathSet.getNumControlPointsOnPath(0), 3);
    EXPECT_TRUE(editor->pathOperations1->isSensitive(0));   // Close
    EXPECT_TRUE(editor->pathOperations1->isSensitive(1));   // Open needs three control points
    EXPECT_TRUE(editor->action->isSensitive(0));             // Undo
    EXPECT_FALSE(editor->action->isSensitive(1));            // Redo
    EXPECT_EQ(std::string(editor->info->getText()).rfind("Active 0: nPoints ", 0), 0u);

    click(10.5f, 0.5f);  // a plain click on the surface deselects everything
    EXPECT_TRUE(selection().noPathSelected());
    EXPECT_STREQ(editor->info->getText(), "No active path: To select a path, click onto the path.");
    const int first = ps->pathSet.paths[0].nodeIndices[0];
    clickNode(first);  // on a control point of the inactive path: its path is selected
    EXPECT_EQ(selection().getActivePath(), 0);
    EXPECT_EQ(selection().getActiveCP(), -1);
    clickNode(first);  // and now the control point itself
    EXPECT_EQ(selection().getActiveCP(), first);
    clickNode(first);  // a second click on the active control point deselects it
    EXPECT_EQ(selection().getActiveCP(), -1);
}

TEST_F(SurfaceVertexPathEditorTest, MiddleButtonUndoesAndDeleteActsOnRelease) {
    click(0, 0, "-shift");
    click(5, 1, "-shift");
    const int nodes = ps->pathSet.getNumNodesOnPath(0);
    click(3, 0.5f, "", 2);  // middle click: the append is undone, whatever it hits
    EXPECT_EQ(ps->pathSet.getNumNodesOnPath(0), 1);
    press(editor->action, 1);  // Redo
    EXPECT_EQ(ps->pathSet.getNumNodesOnPath(0), nodes);

    clickNode(ps->pathSet.paths[0].nodeIndices.last());  // the last control point (path already active)
    ASSERT_GE(selection().getActiveCP(), 0);
    key("press", "d");
    EXPECT_EQ(ps->pathSet.getNumNodesOnPath(0), nodes) << "holding d deletes nothing";
    key("release", "d");
    EXPECT_EQ(ps->pathSet.getNumNodesOnPath(0), 1);
    key("release", "DELETE");  // no active control point: the active path goes
    EXPECT_EQ(ps->pathSet.getNumPaths(), 0);
}

TEST_F(SurfaceVertexPathEditorTest, ModeKeysToggleTheSelectionAndInsert) {
    click(0, 0, "-shift");
    click(2, 0, "-shift");
    click(10.5f, 0.5f);
    click(10, 0, "-shift");
    click(11, 1, "-shift");
    ASSERT_EQ(ps->pathSet.getNumPaths(), 2);
    key("press", "s");
    click(1, 0);  // on path 0's line: added to the selection
    EXPECT_EQ(selection().getActivePaths().size(), 2);
    key("release", "s");
    EXPECT_EQ(editor->modeKey, '0');

    click(1, 0);  // path 0 alone
    key("press", "i");
    const int before = ps->pathSet.getNumControlPointsOnPath(0);
    click(1, 0);  // on the active path's line: a control point inserted
    EXPECT_EQ(ps->pathSet.getNumControlPointsOnPath(0), before + 1);
    click(10.5f, 0.5f);  // 'i' held off the active path: nothing, not even a selection change
    EXPECT_EQ(selection().getActivePath(), 0);
    key("release", "i");
}

TEST_F(SurfaceVertexPathEditorTest, PortsSelectAndTheFreeHandToggleSwitchesDrawing) {
    click(0, 0, "-shift");
    click(10.5f, 0.5f);
    click(6, 0, "-shift");
    click(10.5f, 0.5f);
    click(11, 1, "-shift");
    press(editor->pathSelection, 0);  // Select all: one undoable selection
    EXPECT_EQ(selection().getActivePaths().size(), 3);
    press(editor->action, 0);
    EXPECT_EQ(selection().getActivePaths().size(), 1);
    editor->advancedOptions->setValue(0, 1);
    editor->checkButtons();
    EXPECT_TRUE(editor->selectPath->isVisible());

    EXPECT_FALSE(editor->freeHandDraw);
    press(editor->freeHandDrawing, 0);
    EXPECT_TRUE(editor->freeHandDraw);
    EXPECT_STREQ(editor->freeHandDrawing->getLabel(0), "disable");
    // A stroke: press, moves, release: one new path along it.
    const int paths = ps->pathSet.getNumPaths();
    eval("viewer 0 mouse press 1 " + at(0.2f, 0.5f));
    for (float x = 0.2f; x <= 6.0f; x += 0.5f) eval("viewer 0 mouseMove " + at(x, 0.5f));
    eval("viewer 0 mouse release 1 " + at(6.0f, 0.5f));
    EXPECT_EQ(ps->pathSet.getNumPaths(), paths + 1);
    press(editor->freeHandDrawing, 0);
    EXPECT_FALSE(editor->freeHandDraw);
    EXPECT_STREQ(editor->freeHandDrawing->getLabel(0), "enable");
}

TEST_F(SurfaceVertexPathEditorTest, ClicksThatChangeNothingStillFollowTheirRows) {
    click(0, 0, "-shift");
    click(4, 0, "-shift");
    click(4, 1, "-shift");
    press(editor->pathOperations1, 0);  // Close
    EXPECT_TRUE(std::string(editor->info->getText()).find("nCPs 3 (closed)") != std::string::npos)
        << editor->info->getText();
    const int history = editor->getUndoBuffer().current;
    eval("viewer 0 mouse release 1 5 5");  // nothing under the pointer: no click at all
    EXPECT_EQ(editor->getUndoBuffer().current, history);
    // Another object over the strip: a click of kind "nothing" that runs an unchanged
    // selection, which is still recorded.
    eval("create HxSurface T");
    Surface lid = makeQuad();
    for (McVec3f& p : lid.points) p = McVec3f(p[0] + 7, p[1], 0.5f);
    static_cast<HxSurface*>(HxObjectPool::getTheObjectPool().findObject("T"))->surface = lid;
    eval("T show");
    click(7.5f, 0.5f);
    EXPECT_EQ(editor->lastHitKind, -1);
    EXPECT_EQ(editor->getUndoBuffer().current, history + 1);
    EXPECT_EQ(selection().getActivePath(), 0);
    eval("remove T-display T");

    click(10.5f, 0.5f);
    click(10, 0, "-shift");  // a second path
    press(editor->pathSelection, 0);  // both selected: not in edit mode
    const int nodes = ps->pathSet.getNumNodes();
    click(8, 0.5f, "-shift");  // neither appends nor starts a path
    EXPECT_EQ(ps->pathSet.getNumNodes(), nodes);
    EXPECT_EQ(ps->pathSet.getNumPaths(), 2);
}

// The free-hand port is left pressed by initButtons, so an update straight after it (rather
// than after the module's fire, which clears the press) switches drawing on.
TEST_F(SurfaceVertexPathEditorTest, AnUpdateRightAfterInitButtonsSwitchesFreeHandDrawingOn) {
    auto* other = new HxSurfacePathEditor;
    HxObjectPool::getTheObjectPool().addObject(other);
    SurfaceVertexPathEditor fresh;
    fresh.setPathSet(ps);
    fresh.initButtons(other);
    fresh.init();
    fresh.update();
    EXPECT_TRUE(fresh.freeHandDraw);
    EXPECT_STREQ(fresh.freeHandDrawing->getLabel(0), "disable");
    other->stopEditing();
}

}  // namespace
