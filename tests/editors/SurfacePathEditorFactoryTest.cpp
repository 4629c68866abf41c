// The editor factory: rows of the three Tcl lists are matched by position and the first type
// wins; only a missing library or class speaks; an editor that refuses the set is destroyed.

#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxPortMultiMenu.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "SurfacePathEditorFactory.h"
#include "TestPathEditor.h"
#include "TestSurfaces.h"
#include "TestTcl.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

HxInterpreter& tcl() { return HxInterpreter::getTheInterpreter(); }

class SurfacePathEditorFactoryTest : public testing::Test {
  protected:
    void SetUp() override {
        TestPathEditor::initClass();
        TestPathEditor::refuse = false;
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        evalOk("create HxSurface S");
        static_cast<HxSurface*>(HxObjectPool::getTheObjectPool().findObject("S"))->surface = makeQuad();
        evalOk("create HxSurfacePathSet PS; PS surface connect S");
        pathSet = static_cast<HxSurfacePathSet*>(HxObjectPool::getTheObjectPool().findObject("PS"));
    }
    void TearDown() override {
        editor.reset();
        evalOk("catch {namespace delete hxsurfacepathedit}; namespace eval hxsurfacepathedit {}");
        HxObjectPool::getTheObjectPool().removeAll();
    }

    void configure(char const* types, char const* classes, char const* libs) {
        evalOk(std::string("namespace eval hxsurfacepathedit {variable editorTypes {") + types +
             "}; variable editorClasses {" + classes + "}; variable editorLibs {" + libs + "}}");
    }
    // Creates an editor of `type` and returns what the console printed meanwhile.
    std::string create(char const* type, HxSurfacePathSet* on = nullptr) {
        HxMessage::getTheMsg()->startCapture();
        editor.reset(SurfacePathEditorFactory::createEditor(type, on ? on : pathSet));
        return HxMessage::getTheMsg()->stopCapture();
    }

    HxSurfacePathSet* pathSet = nullptr;
    std::unique_ptr<SurfacePathEditorViewerBase> editor;
};

TEST_F(SurfacePathEditorFactoryTest, TheFirstRowOfATypeMakesItsClassOnThePathSet) {
    configure("Other Twice Twice", "NoSuchClass TestPathEditor NoSuchClass", "hxsurfacepathedit hxsurfacepathedit x");
    EXPECT_EQ(create("Twice"), "");
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(editor->isOfType(TestPathEditor::getClassTypeId()));
    EXPECT_EQ(editor->getPathSet(), pathSet);
}

TEST_F(SurfacePathEditorFactoryTest, UnknownTypesAndClassesThatCannotBeMadeGiveNullSilently) {
    configure("Plain Op", "TestPathEditor PathEditAddCP", "hxsurfacepathedit hxsurfacepathedit");
    EXPECT_EQ(create("plain"), "") << "types compare case-sensitively";
    EXPECT_EQ(editor, nullptr);
    EXPECT_EQ(create("Op"), "") << "a registered class without a creation function";
    EXPECT_EQ(editor, nullptr);
    evalOk("namespace delete hxsurfacepathedit; namespace eval hxsurfacepathedit {}");
    EXPECT_EQ(create("Plain"), "") << "no lists at all";
    EXPECT_EQ(editor, nullptr);
}

TEST_F(SurfacePathEditorFactoryTest, APathSetWithoutSurfaceNeverTouchesTheInterpreter) {
    configure("Plain", "TestPathEditor", "hxsurfacepathedit");
    evalOk("set ::reads 0; trace add variable hxsurfacepathedit::editorTypes read {incr ::reads;#}");
    evalOk("create HxSurfacePathSet Bare");
    EXPECT_EQ(create("Plain", static_cast<HxSurfacePathSet*>(HxObjectPool::getTheObjectPool().findObject("Bare"))), "");
    EXPECT_EQ(editor, nullptr);
    EXPECT_STREQ(tcl().getVar("reads"), "0");
}

TEST_F(SurfacePathEditorFactoryTest, AMissingLibraryOrClassIsReportedByFileAndClassName) {
    configure("Lib Cls", "TestPathEditor NoSuchClass", "nosuchlib hxsurfacepathedit");
    EXPECT_EQ(create("Lib"), "Internal error: could not open libnosuchlib.so\n");
    EXPECT_EQ(editor, nullptr);
    EXPECT_EQ(create("Cls"), "Internal error: displacer NoSuchClass could not be created\n");
    EXPECT_EQ(editor, nullptr);
}

TEST_F(SurfacePathEditorFactoryTest, AnEditorThatRefusesThePathSetIsDestroyedWithoutAWord) {
    configure("Plain", "TestPathEditor", "hxsurfacepathedit");
    TestPathEditor::refuse = true;
    const int destroyedBefore = TestPathEditor::destroyed;
    EXPECT_EQ(create("Plain"), "");
    EXPECT_EQ(editor, nullptr);
    EXPECT_EQ(TestPathEditor::destroyed, destroyedBefore + 1);
}

TEST_F(SurfacePathEditorFactoryTest, TheMenuListsTheNamedListOrElseTheEditorTypes) {
    HxPortMultiMenu menu(nullptr, "menu", 1);
    configure("A B", "x y", "x y");
    SurfacePathEditorFactory::initPortEditors(&menu, "");
    ASSERT_EQ(menu.getNum(0), 2);
    EXPECT_STREQ(menu.getLabel(0, 1), "B");

    evalOk("set ::mine {C {D E} F}; set ::empty {}");
    SurfacePathEditorFactory::initPortEditors(&menu, "mine");
    ASSERT_EQ(menu.getNum(0), 3);
    EXPECT_STREQ(menu.getLabel(0, 1), "D E");
    SurfacePathEditorFactory::initPortEditors(&menu, "empty");
    EXPECT_EQ(menu.getNum(0), 2) << "an empty named list falls back on editorTypes";

    evalOk("namespace delete hxsurfacepathedit; namespace eval hxsurfacepathedit {}");
    HxMessage::getTheMsg()->startCapture();
    SurfacePathEditorFactory::initPortEditors(&menu, "");
    EXPECT_EQ(HxMessage::getTheMsg()->stopCapture(), "Internal error: missing editor info\n");
    EXPECT_EQ(menu.getNum(0), 2) << "the menu is left as it was";
}

}  // namespace
