// The editor base in the offscreen viewer: its callbacks come and go with activation, it finds
// or makes the surface display, real clicks become click records (the nearest thing wins,
// paths without a line are skipped, a shared control point goes to the last active path),
// clicks become new nodes, and operations run with rollback.

#include "HxController.h"
#include "HxDisplaySurface.h"
#include "HxDisplaySurfacePathSet.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "SinglePathOperation.h"
#include "SurfacePathEditorGUIBase.h"
#include "TestSurfaces.h"
#include "TestTcl.h"

#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoCamera.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

// Records what the base hands it; every click is turned into a click record.
class RecordingEditor : public SurfacePathEditorGUIBase {
  public:
    using SurfacePathEditorGUIBase::SurfacePathEditorGUIBase;

    int keyCB(SoEvent const*) override { return ++keys, 0; }
    void mousePickCB(SoEventCallback* cb) override {
        ++picks;
        click.element = click.controlPoint = click.path = click.segment = click.kind = click.button = -1;
        initClickInfo(&click, cb, getPathSet());
    }
    void initButtons(HxSurfacePathEditor*) override {}
    void checkButtons() override { ++checks; }
    void update() override {}
    int parse(Tcl_Interp*, int, char**) override { return 1; }
    void updateData() override { ++dataUpdates; }

    PathEditUndoBuffer& buffer() { return undoBuffer; }
    void callEditorCallback() { editorCallback(editorCallbackData); }
    void (*editorCallbackOrNull())(void*) { return editorCallback; }

    int keys = 0, picks = 0, checks = 0, dataUpdates = 0;
    McVec3f point{0, 0, 0};
    PathEditClickInfo click{point};
};

// Removes every path, then fails: the editor has to roll it back.
class ClearAndFail : public SinglePathOperation {
  public:
    using SinglePathOperation::SinglePathOperation;
    bool updatePathset() override {
        pathSet->clear();
        return false;
    }
};

class AppendPath : public SinglePathOperation {
  public:
    using SinglePathOperation::SinglePathOperation;
    bool updatePathset() override {
        pathSet->addPath(pathSet->paths[0].nodeIndices);
        return true;
    }
};

class SurfacePathEditorViewerBaseTest : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        viewer = HxController::getTheController()->viewer(0, 1);
        McString error;
        ASSERT_TRUE(viewer->setSize(400, 200, error));
        viewer->getCamera()->orientation.setValue(SbRotation::identity());
        viewer->setViewing(false);
    }
    void TearDown() override {
        editor.reset();
        HxObjectPool::getTheObjectPool().removeAll();
    }

    // A surface S and a path set PS on it with `paths` (node words; both ends control points).
    void makeSet(Surface const& surface, std::initializer_list<char const*> paths) {
        evalOk("create HxSurface S");
        static_cast<HxSurface*>(pool().findObject("S"))->surface = surface;
        evalOk("create HxSurfacePathSet PS; PS surface connect S");
        for (char const* path : paths) evalOk(std::string("PS addPath ") + path);
        set = static_cast<HxSurfacePathSet*>(pool().findObject("PS"));
    }
    // The editor, active on PS, with everything in view.
    void startEditor() {
        editor = std::make_unique<RecordingEditor>();
        editor->setPathSet(set);
        viewer->viewAll();
    }
    // A real button-1 release over the world point, through the viewer's dispatch.
    PathEditClickInfo const& clickAt(McVec3f const& p) {
        float sx, sy;
        EXPECT_TRUE(viewer->project(p, sx, sy));
        SoMouseButtonEvent release;
        release.setButton(SoMouseButtonEvent::BUTTON1);
        release.setState(SoButtonEvent::UP);
        release.setPosition(SbVec2s(short(sx + 0.5f), short(sy + 0.5f)));
        viewer->processEvent(&release);
        return editor->click;
    }
    void pressKey() {
        SoKeyboardEvent key;
        key.setKey(SoKeyboardEvent::A);
        key.setState(SoButtonEvent::DOWN);
        viewer->processEvent(&key);
    }
    static HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

    HxViewer* viewer = nullptr;
    HxSurfacePathSet* set = nullptr;
    std::unique_ptr<RecordingEditor> editor;
};

// Strip points: 2k at (k, 0, 0), 2k + 1 at (k, 1, 0); triangle j has points j, j+1, j+2.

TEST_F(SurfacePathEditorViewerBaseTest, ActivationRegistersEachCallbackOnceAndDeactivationRemovesThem) {
    makeSet(makeStrip(8), {"v:0 v:7"});  // its nodes share no triangle
    HxMessage::getTheMsg()->startCapture();
    startEditor();
    editor->activate();
    EXPECT_NE(HxMessage::getTheMsg()->stopCapture().find("Warning: surface paths not consistent"), McString::npos);

    pressKey();
    clickAt(McVec3f(2.5f, 0.2f, 0));
    EXPECT_EQ(editor->keys, 1) << "a mouse event is no key, and the key callback is registered once";
    EXPECT_EQ(editor->picks, 1);
    editor->callEditorCallback();
    EXPECT_EQ(editor->checks, 1);

    editor->getSelection()->addToActivePaths(0);
    editor->deactivate();
    EXPECT_EQ(editor->editorCallbackOrNull(), nullptr);
    editor->deactivate();
    EXPECT_TRUE(set->getDisplaySurfacePathSet(false)->getSelectionInfo().noPathSelected());
    pressKey();
    clickAt(McVec3f(2.5f, 0.2f, 0));
    EXPECT_EQ(editor->keys, 1);
    EXPECT_EQ(editor->picks, 1);
}

TEST_F(SurfacePathEditorViewerBaseTest, SurfaceViewFindsTheSurfaceDisplayOrMakesOne) {
    makeSet(makeStrip(4), {"v:0 v:3"});
    RecordingEditor unattached;
    HxDisplaySurface* made = unattached.surfaceView(set);
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->getLabel(), "SurfaceView");
    EXPECT_TRUE(pool().contains(made));
    EXPECT_EQ(made->portData.getSource(), pool().findObject("S"));
    EXPECT_EQ(made->drawStyle.getValue(), 0);
    EXPECT_EQ(unattached.surfaceView(set), made);
    EXPECT_EQ(pool().getObjectsOfType(HxDisplaySurface::getClassTypeId()).size(), 1);
}

// Path 1 has one node and draws no line: the third drawn line belongs to path 3.
TEST_F(SurfacePathEditorViewerBaseTest, ClicksOnTheSurfaceAndOnLinesNameWhatTheyHit) {
    makeSet(makeStrip(16), {"v:0 v:3", "v:4", "v:6 v:9", "v:10 v:13 v:14 v:17"});
    startEditor();
    PathEditClickInfo const& click = clickAt(McVec3f(0.7f, 0.1f, 0));
    EXPECT_EQ(click.kind, 0);
    EXPECT_EQ(click.element, 0);
    EXPECT_EQ(click.button, 1);
    EXPECT_NEAR(click.point.x, 0.7f, 0.05f);
    EXPECT_NEAR(click.point.y, 0.1f, 0.05f);

    clickAt(McVec3f(6.5f, 0.5f, 0));
    EXPECT_EQ(click.kind, 1);
    EXPECT_EQ(click.path, 3);
    EXPECT_EQ(click.segment, 1);
    EXPECT_TRUE(click.element == 12 || click.element == 13) << "a triangle of points 13 and 14: " << click.element;
}

TEST_F(SurfacePathEditorViewerBaseTest, SharedControlPointGoesToTheLastActivePathHoldingIt) {
    makeSet(makeStrip(16), {"v:2 v:5", "v:8 v:11", "v:14 v:17"});
    const int shared = set->pathSet.paths[1].nodeIndices[0];  // v:8 at (4, 0, 0)
    set->pathSet.paths[0].nodeIndices.append(shared);
    set->pathSet.paths[2].nodeIndices.insert(0, shared);
    startEditor();
    SelectionInfo* selection = editor->getSelection();
    selection->addToActivePaths(2);
    selection->addToActivePaths(0);
    set->getDisplaySurfacePathSet(false)->refresh();
    PathEditClickInfo const& click = clickAt(McVec3f(4, 0, 0));
    EXPECT_EQ(click.kind, 2);
    EXPECT_EQ(click.controlPoint, shared);
    EXPECT_EQ(click.path, 0);
    EXPECT_EQ(click.segment, 2);
    EXPECT_EQ(click.element, 8);
    EXPECT_NEAR(click.point.x, 4.0f, 1e-6f);
}

TEST_F(SurfacePathEditorViewerBaseTest, NewNodesFollowTheKindOfTheClick) {
    makeSet(makeStrip(16), {"v:10 v:13 v:14 v:17"});
    SurfacePathSet& ps = set->pathSet;
    RecordingEditor editor;
    McVec3f point(6.5f, 0.5f, 0);
    PathEditClickInfo click(point);
    EXPECT_EQ(editor.createNewSurfaceNode(&ps, click, 2), nullptr) << "no element";

    click.element = 12;
    click.kind = 0;
    McHandle<SurfaceNode> onSurface = editor.createNewSurfaceNode(&ps, click, SurfaceNode::TRIANGLE);
    EXPECT_EQ(onSurface->getKind(), SurfaceNode::TRIANGLE);
    EXPECT_TRUE(onSurface->isControlPoint);

    click.kind = 1;  // on the segment from point 13 to point 14, which share an edge
    click.path = 0;
    click.segment = 1;
    McHandle<SurfaceNode> onEdge = editor.createNewSurfaceNode(&ps, click, SurfaceNode::TRIANGLE);
    EXPECT_EQ(onEdge->getKind(), SurfaceNode::EDGE);
    EXPECT_TRUE(onEdge->isControlPoint);
    McHandle<SurfaceNode> onVertex = editor.createNewSurfaceNode(&ps, click, SurfaceNode::VERTEX);
    EXPECT_EQ(onVertex->getKind(), SurfaceNode::VERTEX) << "type 0 is kept even on a shared edge";

    click.kind = 2;
    click.controlPoint = ps.paths[0].nodeIndices[0];
    McHandle<SurfaceNode> copy = editor.createNewSurfaceNode(&ps, click, SurfaceNode::TRIANGLE);
    EXPECT_NE(copy.ptr(), ps.getNode(click.controlPoint));
    EXPECT_EQ(copy->getKind(), SurfaceNode::VERTEX);
    EXPECT_EQ(copy->getElement(), 10);
}

TEST_F(SurfacePathEditorViewerBaseTest, FailedOperationIsRolledBackAndNotRecorded) {
    makeSet(makeStrip(4), {"v:0 v:3"});
    RecordingEditor editor;
    SurfacePathSet& ps = set->pathSet;
    McHandle<SinglePathOperation> done = new AppendPath(&ps, nullptr, nullptr);
    ASSERT_TRUE(editor.exec(done));
    EXPECT_EQ(editor.buffer().operations.size(), 1);

    HxMessage::getTheMsg()->startCapture();
    McHandle<SinglePathOperation> failing = new ClearAndFail(&ps, nullptr, nullptr);
    EXPECT_FALSE(editor.exec(failing));
    EXPECT_NE(HxMessage::getTheMsg()->stopCapture().find("PathOperation failed ..."), McString::npos);
    EXPECT_EQ(ps.getNumPaths(), 2);
    EXPECT_EQ(editor.buffer().operations.size(), 1);
    EXPECT_EQ(editor.buffer().current, 0);

    EXPECT_FALSE(editor.exec(new ClearAndFail(&ps, nullptr, nullptr))) << "released, not leaked";

    done->viewer = &editor;
    editor.buffer().undo();
    EXPECT_EQ(ps.getNumPaths(), 1);
    EXPECT_EQ(editor.dataUpdates, 1) << "undo refreshes the editor";
}

}  // namespace
