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
#include "TestTcl.h"

#include <gtest/gtest.h>

#include <string>

namespace {

HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

class HxSurfacePathEditorTest : public testing::Test {
  protected:
    void SetUp() override {
        TestPathEditor::initClass();
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        evalOk("create HxSurface S");
        static_cast<HxSurface*>(pool().findObject("S"))->surface = makeQuad();
        evalOk("create HxSurfacePathSet PS; PS surface connect S");
        evalOk("namespace eval hxsurfacepathedit {variable editorTypes {{Test editor} Broken};"
             " variable editorClasses {TestPathEditor NoSuchClass};"
             " variable editorLibs {hxsurfacepathedit hxsurfacepathedit}}");
        HxMessage::getTheMsg()->startCapture();
        evalOk("create HxSurfacePathEditor ED");
        created = HxMessage::getTheMsg()->stopCapture();
        module = static_cast<HxSurfacePathEditor*>(pool().findObject("ED"));
    }
    void TearDown() override {
        pool().removeAll();
        evalOk("catch {namespace delete hxsurfacepathedit}; namespace eval hxsurfacepathedit {}");
    }

    TestPathEditor* editor() const { return static_cast<TestPathEditor*>(module->getEditor()); }
    void start() { evalOk("ED attach PS; ED portStartEditor hit 0; ED fire"); }

    std::string created;
    HxSurfacePathEditor* module = nullptr;
};

TEST_F(HxSurfacePathEditorTest, IdleAttachedEditingAndBackToIdleWithEveryPortGone) {
    EXPECT_EQ(created, "Creating SurfacePathEditor\n");
    EXPECT_EQ(evalOk("ED getPorts"), "data");

    // The attached module's menu and button are checked by the editor module script.
    evalOk("ED attach PS");
    EXPECT_EQ(module->getEditor(), nullptr);

    const int destroyedBefore = TestPathEditor::destroyed;
    evalOk("ED portStartEditor hit 0; ED fire");
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->inits, 1);
    EXPECT_GE(editor()->checks, 1);
    EXPECT_EQ(evalOk("ED getPorts"), "data portEditorTypes portStartEditor testToggle");
    EXPECT_EQ(evalOk("ED portEditorTypes isVisible"), "0");
    EXPECT_EQ(evalOk("ED portStartEditor isVisible"), "0");
    EXPECT_EQ(evalOk("ED testToggle isNew"), "0") << "fire clears ports made during its update too";
    EXPECT_EQ(evalOk("all HxDisplaySurfacePathSet"), "PS-display");

    evalOk("ED fire");
    EXPECT_EQ(editor()->updates, 1) << "updates go to the running editor";

    evalOk("ED detach");
    EXPECT_EQ(module->getEditor(), nullptr);
    EXPECT_EQ(TestPathEditor::destroyed, destroyedBefore + 1);
    EXPECT_EQ(evalOk("ED getPorts"), "data");
    EXPECT_EQ(module->portEditorTypes, nullptr);
    EXPECT_EQ(module->portStartEditor, nullptr);
}

TEST_F(HxSurfacePathEditorTest, StoppingWhileAttachedDeletesMenuAndButtonAndForgetsTheRequest) {
    evalOk("ED attach PS; ED create 3");
    EXPECT_EQ(module->getRequestedEditor(), 3);
    module->stopEditing();
    EXPECT_EQ(evalOk("ED getPorts"), "data");
    EXPECT_EQ(module->getRequestedEditor(), -1);
    EXPECT_EQ(module->getPathSet(), pool().findObject("PS")) << "the path set is kept";
}

TEST_F(HxSurfacePathEditorTest, APathSetWithoutSurfaceIsRefusedWithADialog) {
    evalOk("create HxSurfacePathSet Bare");
    HxMessage::getTheMsg()->startCapture();
    evalOk("ED attach Bare");
    EXPECT_NE(HxMessage::getTheMsg()->stopCapture().find("PathSet is not attached to a surface! Cannot start editor!"),
              std::string::npos);
    EXPECT_EQ(evalOk("ED getPorts"), "data");
}

TEST_F(HxSurfacePathEditorTest, TheCreateCommandTakesOneNumberAndEveryCommandGrowsTheCommandList) {
    const int64_t entries = getCmdInfo().size();
    EXPECT_EQ(evalOk("ED create 3"), "");
    EXPECT_EQ(module->getRequestedEditor(), 3);
    EXPECT_EQ(evalError("ED create"), "bad value: create");
    EXPECT_EQ(evalError("ED create 1 2"), "bad value: create");
    EXPECT_EQ(module->getRequestedEditor(), 3);
    EXPECT_EQ(evalOk("ED getPorts"), "data") << "other words go to the host";
    EXPECT_EQ(getCmdInfo().size(), entries + 4);
    EXPECT_EQ(getCmdInfo().last().name, "create");
}

TEST_F(HxSurfacePathEditorTest, CommandsTheEditorRejectsAreTriedByTheHost) {
    start();
    ASSERT_NE(editor(), nullptr);
    const int64_t entries = getCmdInfo().size();
    EXPECT_EQ(evalOk("ED handled"), "");
    EXPECT_EQ(evalOk("ED odd"), "") << "any code but 1 counts as handled";
    EXPECT_EQ(evalOk("ED getPorts"), "data portEditorTypes portStartEditor testToggle");
    EXPECT_NE(evalError("ED nonsense").find("unknown command or port \"nonsense\""), std::string::npos);
    EXPECT_EQ(getCmdInfo().size(), entries) << "only a module without editor adds `create`";
}

TEST_F(HxSurfacePathEditorTest, LosingTheSurfaceOrThePathSetStopsEditing) {
    start();
    ASSERT_NE(editor(), nullptr);
    evalOk("remove S");
    EXPECT_EQ(module->getEditor(), nullptr);
    EXPECT_EQ(evalOk("ED getPorts"), "data");
    evalOk("remove PS; ED fire");  // the kept pointer to the removed set is not used
    EXPECT_EQ(evalOk("ED getPorts"), "data");
}

TEST_F(HxSurfacePathEditorTest, RemovingTheModuleStopsAndDestroysItsEditor) {
    start();
    const int destroyedBefore = TestPathEditor::destroyed;
    evalOk("remove ED");
    EXPECT_EQ(TestPathEditor::destroyed, destroyedBefore + 1);
}

}  // namespace
