#include "HxData.h"
#include "HxEditor.h"
#include "HxInterpreter.h"
#include "HxModule.h"
#include "HxObjectPool.h"
#include "HxPort.h"

#include <gtest/gtest.h>

namespace {

HxInterpreter& tcl() { return HxInterpreter::getTheInterpreter(); }
HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

// A module that records what its update() saw.
class RecordingModule : public HxModule {
  public:
    RecordingModule() : knob(this, "knob") {}
    void update() override {
        ++updates;
        knobWasNew = knob.isNew();
        dataWasNew = portData.isNew();
    }
    HxPort knob;
    int updates = 0;
    bool knobWasNew = false;
    bool dataWasNew = false;
};

class HxObjectTest : public testing::Test {
  protected:
    void TearDown() override { pool().removeAll(); }

    template <class T>
    T* add(T* object, char const* label) {
        object->HxBase::setLabel(label);
        pool().addObject(object);
        return object;
    }
};

TEST_F(HxObjectTest, FireRunsUpdateWithNewFlagsThenClearsThem) {
    auto* module = add(new RecordingModule, "rec");
    McString result;
    ASSERT_EQ(tcl().evalScript("rec knob touch", result), TCL_OK);
    EXPECT_TRUE(module->knob.isNew());
    module->fire();
    EXPECT_EQ(module->updates, 1);
    EXPECT_TRUE(module->knobWasNew);
    EXPECT_FALSE(module->knob.isNew()) << "cleared after update";
    module->fire();
    EXPECT_FALSE(module->knobWasNew);
}

TEST_F(HxObjectTest, FiringDataUpdatesModulesConnectedDownstream) {
    auto* data = add(new HxData, "data");
    auto* module = add(new RecordingModule, "rec");
    ASSERT_TRUE(module->portData.connect(data));
    module->fire();  // consume the connection's own new flag
    data->touch();
    data->fire();
    EXPECT_EQ(module->updates, 2);
    EXPECT_TRUE(module->dataWasNew) << "the reader sees its connection marked new";
    EXPECT_FALSE(module->portData.isNew());
    EXPECT_FALSE(data->isNew()) << "touch mask cleared by fire";
}

TEST_F(HxObjectTest, RemovingTheSourceDisconnectsAndFiresTheReader) {
    auto* data = add(new HxData, "data");
    auto* module = add(new RecordingModule, "rec");
    module->portData.connect(data);
    const int before = module->updates;
    pool().removeObject(data);
    EXPECT_EQ(module->portData.getSource(), nullptr);
    EXPECT_EQ(module->updates, before + 1);
}

TEST_F(HxObjectTest, ConnectionsRefuseWrongTypesAndThemselves) {
    auto* editor = add(new HxEditor(HxData::getClassTypeId()), "ed");
    auto* other = add(new HxModule, "other");
    EXPECT_FALSE(editor->portData.connect(other));
    EXPECT_FALSE(editor->typeCheck(editor));
    McString result;
    EXPECT_EQ(tcl().evalScript("ed data connect other", result), TCL_ERROR);
    EXPECT_NE(result.find("needs an object of class HxData"), McString::npos) << result;
    EXPECT_EQ(tcl().evalScript("ed data connect nothing", result), TCL_ERROR);
    EXPECT_NE(result.find("no object named \"nothing\""), McString::npos) << result;
}

TEST_F(HxObjectTest, LabelsAreUniqueAndNeverShadowTclCommands) {
    HxObject* a = add(new HxData, "paths");
    HxObject* b = add(new HxData, "paths");
    HxObject* c = add(new HxData, "set");
    EXPECT_STREQ(a->getLabel(), "paths");
    EXPECT_STREQ(b->getLabel(), "paths2");
    EXPECT_STREQ(c->getLabel(), "set2") << "the Tcl command `set` must survive";
    McString result;
    EXPECT_EQ(tcl().evalScript("set x 5", result), TCL_OK);
    b->setLabel("paths");  // taken by a: stays unique
    EXPECT_STREQ(b->getLabel(), "paths2");
    EXPECT_EQ(tcl().evalScript("paths2 setLabel renamed", result), TCL_OK);
    EXPECT_EQ(result, "renamed");
    EXPECT_EQ(pool().findObject("renamed"), b);
    EXPECT_EQ(tcl().evalScript("renamed getLabel", result), TCL_OK) << "the command follows the label";
    EXPECT_NE(tcl().evalScript("paths2 getLabel", result), TCL_OK);
}

TEST_F(HxObjectTest, ObjectCommandsDispatchToPortsAndReportUnknownWords) {
    add(new RecordingModule, "rec");
    McString result;
    ASSERT_EQ(tcl().evalScript("rec getPorts", result), TCL_OK);
    EXPECT_EQ(result, "data knob");
    ASSERT_EQ(tcl().evalScript("rec knob setLabel {Knob:}; rec knob getLabel", result), TCL_OK);
    EXPECT_EQ(result, "Knob:");
    EXPECT_EQ(tcl().evalScript("rec frobnicate", result), TCL_ERROR);
    EXPECT_NE(result.find("unknown command or port \"frobnicate\""), McString::npos) << result;
    EXPECT_EQ(tcl().evalScript("rec knob frobnicate", result), TCL_ERROR);
    EXPECT_NE(result.find("port \"knob\""), McString::npos) << result;
    EXPECT_EQ(tcl().evalScript("rec", result), TCL_ERROR);
    EXPECT_NE(result.find("wrong # args"), McString::npos) << result;
}

TEST_F(HxObjectTest, EditorAttachStartsAndDetachStopsEditing) {
    auto* data = add(new HxData, "data");
    auto* editor = add(new HxEditor(HxData::getClassTypeId()), "ed");
    McString result;
    ASSERT_EQ(tcl().evalScript("ed attach data", result), TCL_OK) << result;
    EXPECT_EQ(editor->getEditedData(), data);
    EXPECT_TRUE(data->isEditorActive());
    ASSERT_EQ(tcl().evalScript("ed detach", result), TCL_OK);
    EXPECT_EQ(editor->getEditedData(), nullptr);
    EXPECT_FALSE(data->isEditorActive());
    EXPECT_EQ(editor->portData.getSource(), nullptr);
    // Losing the data while editing stops the editor.
    editor->attach(data);
    pool().removeObject(data);
    EXPECT_EQ(editor->getEditedData(), nullptr);
}

TEST_F(HxObjectTest, RemoveChecksEveryNameBeforeRemovingAny) {
    add(new HxData, "a");
    add(new HxData, "b");
    McString result;
    EXPECT_EQ(tcl().evalScript("remove a nosuch", result), TCL_ERROR);
    EXPECT_NE(pool().findObject("a"), nullptr) << "a typo removes nothing";
    ASSERT_EQ(tcl().evalScript("remove a; all", result), TCL_OK);
    EXPECT_EQ(result, "b");
    ASSERT_EQ(tcl().evalScript("remove -all; all", result), TCL_OK);
    EXPECT_EQ(result, "");
}

}  // namespace
