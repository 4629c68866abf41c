// The generic path editor's additions to the vertex editor: the sensitivities of its rows, the
// sticky barycentric tolerance range, the snapping mode numbering, the `smooth` command's
// missing undo entry, and the retriangulation row following the registered triangulators.

#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxPortButtonList.h"
#include "HxPortFloatTextN.h"
#include "HxPortRadioBox.h"
#include "HxSurface.h"
#include "HxSurfacePathEditor.h"
#include "HxSurfacePathSet.h"
#include "PathEditSnapNodes.h"
#include "PathTriangulatorFactory.h"
#include "SurfacePathEditor.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string eval(std::string const& command) {
    return HxInterpreter::getTheInterpreter().eval("%s", command.c_str());
}

// Strip points: 2k at (k, 0, 0), 2k + 1 at (k, 1, 0).
class SurfacePathEditorTest : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        eval("namespace eval hxsurfacepathedit { variable genericEditorConnectors Dijkstra }");
        eval("create HxSurface S");
        static_cast<HxSurface*>(pool().findObject("S"))->surface = makeStrip(12);
        eval("create HxSurfacePathSet PS; PS surface connect S");
        ps = static_cast<HxSurfacePathSet*>(pool().findObject("PS"));
        ps->setEditorActive(true);
        module = new HxSurfacePathEditor;
        pool().addObject(module);
        editor = new SurfacePathEditor;
        editor->setPathSet(ps);
        editor->setEditorCallback(editorCallBack, editor);
        editor->initButtons(module);
        editor->init();
        editor->checkButtons();
        for (HxPort* p : module->getPorts()) p->untouch();
    }
    void TearDown() override {
        delete editor;
        module->stopEditing();
        pool().removeAll();
    }
    static HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }
    void press(HxPortButtonList* port, int button) {
        port->hit(button);
        editor->update();
        editor->checkButtons();
        for (HxPort* p : module->getPorts()) p->untouch();
    }
    // A path along the strip's lower side, from point 2 * from to point 2 * to.
    void addRungPath(int from, int to) {
        std::string command = "PS addPath";
        for (int k = from; k <= to; ++k) command += " v:" + std::to_string(2 * k);
        eval(command);
        editor->checkButtons();
    }
    int command(std::vector<char const*> words) {
        return editor->parse(HxInterpreter::getTheInterpreter().getTclInterp(), int(words.size()),
                             const_cast<char**>(words.data()));
    }
    int64_t historyLength() const { return editor->getUndoBuffer().operations.size(); }

    HxSurfacePathSet* ps = nullptr;
    HxSurfacePathEditor* module = nullptr;
    SurfacePathEditor* editor = nullptr;
};

TEST_F(SurfacePathEditorTest, RowsAreSensitiveOnceAnyPathExistsWhateverTheSelection) {
    for (HxPortButtonList* row : {editor->pathOperations3, editor->retriangulate})
        for (int i = 0; i < row->getNum(); ++i) EXPECT_FALSE(row->isSensitive(i)) << row->getName() << " " << i;
    addRungPath(0, 3);
    for (HxPortButtonList* row : {editor->pathOperations3, editor->retriangulate})
        for (int i = 0; i < row->getNum(); ++i) EXPECT_TRUE(row->isSensitive(i)) << row->getName() << " " << i;
    EXPECT_TRUE(editor->controlPointType->isVisible());
}

TEST_F(SurfacePathEditorTest, TheBarycentricRangeStaysAfterSwitchingBackToWorld) {
    EXPECT_FLOAT_EQ(editor->SnapEpsilon->getMaxValue(), 0.5f) << "barycentric from the start";
    editor->snapEpsilonMode->setValue(0);
    editor->checkButtons();
    EXPECT_FLOAT_EQ(editor->SnapEpsilon->getMaxValue(), 0.5f);
}

TEST_F(SurfacePathEditorTest, SnappingCountsItsModesTheOtherWayRoundFromTheRadioBox) {
    addRungPath(0, 3);
    for (int radio : {0, 1}) {
        editor->snapEpsilonMode->setValue(radio);
        press(editor->pathOperations3, 1);
        auto const* snap = static_cast<PathEditSnapNodes const*>(editor->getUndoBuffer().operations.last().ptr());
        ASSERT_TRUE(snap->isOfType(PathEditSnapNodes::getClassTypeId()));
        EXPECT_EQ(snap->mode, radio == 0 ? 2 : 1);
        EXPECT_FLOAT_EQ(snap->tolerance, editor->SnapEpsilon->getValue(0));
    }
}

TEST_F(SurfacePathEditorTest, TheSmoothCommandLeavesNoUndoEntry) {
    addRungPath(0, 5);
    ASSERT_EQ(command({"ED", "addCP", "0", "3"}), 0);  // one undoable step before it
    const int64_t steps = historyLength();
    const int nodes = ps->pathSet.getNumNodesOnPath(0);
    EXPECT_EQ(command({"ED", "smooth", "0.5", "2"}), 0);
    EXPECT_EQ(historyLength(), steps);
    EXPECT_NE(ps->pathSet.getNumNodesOnPath(0), nodes) << "the zig-zag to vertex 3 was smoothed";
    press(editor->action, 0);
    EXPECT_EQ(ps->pathSet.getNumNodesOnPath(0), 6) << "undo takes back the step before the smoothing";
}

TEST_F(SurfacePathEditorTest, TheRetriangulationRowFollowsTheRegisteredTriangulators) {
    addRungPath(0, 3);
    PathTriangulatorFactory::unregisterTriangulator("Constrained Delaunay");
    PathTriangulatorFactory::unregisterTriangulator("Quality Delaunay");
    press(editor->pathOperations3, 0);
    EXPECT_FALSE(editor->retriangulate->isVisible());
    PathTriangulatorFactory::registerTriangulator("Constrained Delaunay", "pzQ");
    PathTriangulatorFactory::registerTriangulator("Quality Delaunay", "pqzS10Q");
    press(editor->pathOperations3, 0);
    EXPECT_TRUE(editor->retriangulate->isVisible());
}

}  // namespace
