// The editor module: idle, attached (menu and start button) and editing (the editor's ports),
// back to idle with every port gone; the `create` command; commands passed from the editor to
// the host; losing the surface, the path set or the module itself while editing.

#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxPortButtonList.h"
#include "HxPortMultiMenu.h"
#include "HxSurface.h"
#include "HxSurfacePathEditor.h"
#include "HxSurfacePathSet.h"
#include "TestPathEditor.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <string>

namespace {

HxInterpreter& tcl() { return HxInterpreter::getTheInterpreter(); }
HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

class HxSurfacePathEditorTest : public testing::Test {
  protected:
    void SetUp() override {
        TestPathEditor::initClass();
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        eval("create HxSurface S");
        static_cast<HxSurface*>(pool().findObject("S"))->surface = makeQuad();
        eval("create HxSurfacePathSet PS; PS surface connect S");
        eval("namespace eval hxsurfacepathedit {variable editorTypes {{Test editor} Broken};"
             " variable editorClasses {TestPathEditor NoSuchClass};"
             " variable editorLibs {hxsurfacepathedit hxsurfacepathedit}}");
        HxMessage::getTheMsg()->startCapture();
        eval("create HxSurfacePathEditor ED");
        created = HxMessage::getTheMsg()->stopCapture();
        module = static_cast<HxSurfacePathEditor*>(pool().findObject("ED"));
    }
    void TearDown() override {
        pool().removeAll();
        eval("catch {namespace delete hxsurfacepathedit}; namespace eval hxsurfacepathedit {}");
    }

    std::string eval(std::string const& script) {
        McString result;
        EXPECT_EQ(tcl().evalScript(script.c_str(), result), TCL_OK) << script << ": " << result;
        return result;
    }
    std::string evalError(std::string const& script) {
        McString result;
        EXPECT_EQ(tcl().evalScript(script.c_str(), result), TCL_ERROR) << script << ": " << result;
        return result;
    }
    TestPathEditor* editor() const { return static_cast<TestPathEditor*>(module->getEditor()); }
    void start() { eval("ED attach PS; ED portStartEditor hit 0; ED fire"); }

    std::string created;
    HxSurfacePathEditor* module = nullptr;
};

TEST_F(HxSurfacePathEditorTest, IdleAttachedEditingAndBackToIdleWithEveryPortGone) {
    EXPECT_EQ(created, "Creating SurfacePathEditor\n");
    EXPECT_EQ(eval("ED getPorts"), "data");

    // The attached module's menu and button are checked by the editor module script.
    eval("ED attach PS");
    EXPECT_EQ(module->getEditor(), nullptr);

    const int destroyedBefore = TestPathEditor::destroyed;
    eval("ED portStartEditor hit 0; ED fire");
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->inits, 1);
    EXPECT_GE(editor()->checks, 1);
    EXPECT_EQ(eval("ED getPorts"), "data portEditorTypes portStartEditor testToggle");
    EXPECT_EQ(eval("ED portEditorTypes isVisible"), "0");
    EXPECT_EQ(eval("ED portStartEditor isVisible"), "0");
    EXPECT_EQ(eval("ED testToggle isNew"), "0") << "fire clears ports made during its update too";
    EXPECT_EQ(eval("all HxDisplaySurfacePathSet"), "PS-display");

    eval("ED fire");
    EXPECT_EQ(editor()->updates, 1) << "updates go to the running editor";

    eval("ED detach");
    EXPECT_EQ(module->getEditor(), nullptr);
    EXPECT_EQ(TestPathEditor::destroyed, destroyedBefore + 1);
    EXPECT_EQ(eval("ED getPorts"), "data");
    EXPECT_EQ(module->portEditorTypes, nullptr);
    EXPECT_EQ(module->portStartEditor, nullptr);
}

TEST_F(HxSurfacePathEditorTest, StoppingWhileAttachedDeletesMenuAndButtonAndForgetsTheRequest) {
    eval("ED attach PS; ED create 3");
    EXPECT_EQ(module->getRequestedEditor(), 3);
    module->stopEditing();
    EXPECT_EQ(eval("ED getPorts"), "data");
    EXPECT_EQ(module->getRequestedEditor(), -1);
    EXPECT_EQ(module->getPathSet(), pool().findObject("PS")) << "the path set is kept";
}

TEST_F(HxSurfacePathEditorTest, APathSetWithoutSurfaceIsRefusedWithADialog) {
    eval("create HxSurfacePathSet Bare");
    HxMessage::getTheMsg()->startCapture();
    eval("ED attach Bare");
    EXPECT_NE(HxMessage::getTheMsg()->stopCapture().find("PathSet is not attached to a surface! Cannot start editor!"),
              std::string::npos);
    EXPECT_EQ(eval("ED getPorts"), "data");
}

TEST_F(HxSurfacePathEditorTest, TheCreateCommandTakesOneNumberAndEveryCommandGrowsTheCommandList) {
    const int64_t entries = getCmdInfo().size();
    EXPECT_EQ(eval("ED create 3"), "");
    EXPECT_EQ(module->getRequestedEditor(), 3);
    EXPECT_EQ(evalError("ED create"), "bad value: create");
    EXPECT_EQ(evalError("ED create 1 2"), "bad value: create");
    EXPECT_EQ(module->getRequestedEditor(), 3);
    EXPECT_EQ(eval("ED getPorts"), "data") << "other words go to the host";
    EXPECT_EQ(getCmdInfo().size(), entries + 4);
    EXPECT_EQ(getCmdInfo().last().name, "create");
}

TEST_F(HxSurfacePathEditorTest, CommandsTheEditorRejectsAreTriedByTheHost) {
    start();
    ASSERT_NE(editor(), nullptr);
    const int64_t entries = getCmdInfo().size();
    EXPECT_EQ(eval("ED handled"), "");
    EXPECT_EQ(eval("ED odd"), "") << "any code but 1 counts as handled";
    EXPECT_EQ(eval("ED getPorts"), "data portEditorTypes portStartEditor testToggle");
    EXPECT_NE(evalError("ED nonsense").find("unknown command or port \"nonsense\""), std::string::npos);
    EXPECT_EQ(getCmdInfo().size(), entries) << "only a module without editor adds `create`";
}

TEST_F(HxSurfacePathEditorTest, LosingTheSurfaceOrThePathSetStopsEditing) {
    start();
    ASSERT_NE(editor(), nullptr);
    eval("remove S");
    EXPECT_EQ(module->getEditor(), nullptr);
    EXPECT_EQ(eval("ED getPorts"), "data");
    eval("remove PS; ED fire");  // the kept pointer to the removed set is not used
    EXPECT_EQ(eval("ED getPorts"), "data");
}

TEST_F(HxSurfacePathEditorTest, RemovingTheModuleStopsAndDestroysItsEditor) {
    start();
    const int destroyedBefore = TestPathEditor::destroyed;
    eval("remove ED");
    EXPECT_EQ(TestPathEditor::destroyed, destroyedBefore + 1);
}

}  // namespace
