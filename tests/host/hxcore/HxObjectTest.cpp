#include "HxData.h"
#include "HxEditor.h"
#include "HxModule.h"
#include "HxObjectPool.h"
#include "HxPort.h"
#include "TestTcl.h"

#include <gtest/gtest.h>

namespace {

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
    evalOk("rec knob touch");
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
    EXPECT_NE(evalError("ed data connect other").find("needs an object of class HxData"), std::string::npos);
    EXPECT_NE(evalError("ed data connect nothing").find("no object named \"nothing\""), std::string::npos);
}

TEST_F(HxObjectTest, LabelsAreUniqueAndNeverShadowTclCommands) {
    HxObject* a = add(new HxData, "paths");
    HxObject* b = add(new HxData, "paths");
    HxObject* c = add(new HxData, "set");
    EXPECT_STREQ(a->getLabel(), "paths");
    EXPECT_STREQ(b->getLabel(), "paths2");
    EXPECT_STREQ(c->getLabel(), "set2") << "the Tcl command `set` must survive";
    evalOk("set x 5");
    b->setLabel("paths");  // taken by a: stays unique
    EXPECT_STREQ(b->getLabel(), "paths2");
    EXPECT_EQ(evalOk("paths2 setLabel renamed"), "renamed");
    EXPECT_EQ(pool().findObject("renamed"), b);
    EXPECT_EQ(evalOk("renamed getLabel"), "renamed") << "the command follows the label";
    evalError("paths2 getLabel");
}

TEST_F(HxObjectTest, ObjectCommandsDispatchToPortsAndReportUnknownWords) {
    add(new RecordingModule, "rec");
    EXPECT_EQ(evalOk("rec getPorts"), "data knob");
    EXPECT_EQ(evalOk("rec knob setLabel {Knob:}; rec knob getLabel"), "Knob:");
    EXPECT_NE(evalError("rec frobnicate").find("unknown command or port \"frobnicate\""), std::string::npos);
    EXPECT_NE(evalError("rec knob frobnicate").find("port \"knob\""), std::string::npos);
    EXPECT_NE(evalError("rec").find("wrong # args"), std::string::npos);
}

TEST_F(HxObjectTest, EditorAttachStartsAndDetachStopsEditing) {
    auto* data = add(new HxData, "data");
    auto* editor = add(new HxEditor(HxData::getClassTypeId()), "ed");
    evalOk("ed attach data");
    EXPECT_EQ(editor->getEditedData(), data);
    EXPECT_TRUE(data->isEditorActive());
    evalOk("ed detach");
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
    evalError("remove a nosuch");
    EXPECT_NE(pool().findObject("a"), nullptr) << "a typo removes nothing";
    EXPECT_EQ(evalOk("remove a; all"), "b");
    EXPECT_EQ(evalOk("remove -all; all"), "");
}

}  // namespace
