#include "AllPortsModule.h"
#include "HxObjectPool.h"
#include "TestTcl.h"

#include <gtest/gtest.h>

namespace {

// The module lives in the pool, so every check can go through its Tcl command.
class HxPorts : public testing::Test {
  protected:
    void SetUp() override {
        module = new AllPortsModule;
        HxObjectPool::getTheObjectPool().addObject(module);
    }
    void TearDown() override { HxObjectPool::getTheObjectPool().removeObject(module); }

    // "MODULE words", expected to succeed or to fail.
    McString ok(char const* words) { return evalOk(McString(module->getLabel()) + " " + words); }
    McString fails(char const* words) { return evalError(McString(module->getLabel()) + " " + words); }
    void expectNoPortNew(char const* why) {
        for (HxPort* port : module->getPorts()) EXPECT_FALSE(port->isNew()) << why << ": " << port->getName();
    }

    AllPortsModule* module = nullptr;
};

#define EXPECT_CONTAINS(text, part) EXPECT_NE(McString(text).find(part), std::string::npos) << (text)

// === Module and base behaviour

TEST_F(HxPorts, PortsAreListedInCreationOrderAndUnlistedWhenDeleted) {
    const McString all = "data info buttons menu toggles radio slider floats sep drawStyle";
    module->extra = std::make_unique<HxPortInfo>(module, "extra");
    EXPECT_EQ(ok("getPorts"), all + " extra");
    EXPECT_EQ(ok("extra getText"), "");
    module->extra.reset();
    EXPECT_EQ(ok("getPorts"), all);
    EXPECT_CONTAINS(fails("extra getText"), "unknown command or port \"extra\"");
}

TEST_F(HxPorts, FireLetsUpdateSeeEveryEditedPortThenClearsTheFlags) {
    for (char const* edit : {"buttons hit 0", "menu setNum 3", "menu setIndex 2", "toggles setValue 1",
                             "radio setValue 1", "slider setValue 5", "floats setValue 1 2.5", "drawStyle setValue 2"})
        ok(edit);
    ok("fire");
    EXPECT_EQ(module->updates, 1);
    EXPECT_EQ(module->newPorts, "buttons menu toggles radio slider floats drawStyle");
    expectNoPortNew("after fire");
    // The values themselves outlive the update; only the flags are cleared.
    EXPECT_EQ(ok("menu getIndex"), "2");
    EXPECT_EQ(ok("slider getValue"), "5");
}

TEST_F(HxPorts, ProgramSettersDoNotMarkPortsNew) {
    module->buttons.setIndex(1);
    module->menu.setNum(0, 2);
    module->menu.setIndex(0, 1);
    module->toggles.setValue(0, 1);
    module->radio.setValue(2);
    module->slider.setValue(7);
    module->floats.setValue(0, 1.5f);
    module->drawStyle.setValue(HxPortDrawStyle::POINTS);
    module->info.printf("%d paths", 3);
    expectNoPortNew("program setter");
    EXPECT_FALSE(module->buttons.wasHit(1)) << "a recorded index without the flag is no press";
    EXPECT_EQ(ok("info getText"), "3 paths");
}

TEST_F(HxPorts, BaseSubcommandsWorkOnEveryKindAndUnknownOnesListTheUsage) {
    ok("sep hide");
    EXPECT_EQ(ok("sep isVisible"), "0");
    ok("sep show");
    EXPECT_EQ(ok("sep isVisible"), "1");
    ok("radio setLabel {Snap mode}");
    EXPECT_EQ(ok("radio getLabel"), "Snap mode");
    McString error = fails("slider frobnicate");
    EXPECT_CONTAINS(error, "\"frobnicate\"");
    EXPECT_CONTAINS(error, "setMinMax MIN MAX");
}

TEST_F(HxPorts, EveryPortRejectsBadArgumentsWithAClearMessage) {
    module->menu.setNum(1, 2);
    struct Case { char const* words; char const* message; };
    Case const cases[] = {
        // button list
        {"buttons hit 3", "port \"buttons\": index 3 out of range (0 to 2)"},
        {"buttons hit", "wrong # args: should be \"buttons hit I\""},
        {"buttons setSensitivity 0 maybe", "expected boolean value but got \"maybe\""},
        {"buttons isSensitive 0 1", "should be \"buttons isSensitive ?I?\""},
        // menu
        {"menu setIndex 0", "port \"menu\": menu 0 has no entries"},
        {"menu setIndex 1 5", "menu 1 has no entry 5 (0 to 1)"},
        {"menu getNum 2", "index 2 out of range (0 to 1)"},
        {"menu setNum -1", "a menu cannot have -1 entries"},
        {"menu setIndex 0 1 1", "should be \"menu setIndex ?MENU? I\""},
        // toggle list
        {"toggles setValue 0 on off", "should be \"toggles setValue ?I? 0|1\""},
        // radio box
        {"radio setValue 3", "index 3 out of range (0 to 2)"},
        // slider
        {"slider setMinMax 5 2", "the minimum 5 is greater than the maximum 2"},
        {"slider setValue 2.5", "expected integer but got \"2.5\""},
        // float fields
        {"floats setValue 0 inf", "expected a finite number but got \"inf\""},
        {"floats setValue 0 nan", "Not a Number"},
        {"floats setValue 0 1e39", "too large"},
        {"floats setValue", "should be \"floats setValue ?I? V\""},
    };
    for (Case const& c : cases) EXPECT_CONTAINS(fails(c.words), c.message);
    expectNoPortNew("refused edit");
    EXPECT_EQ(ok("slider getMinMax"), "0 100") << "a refused range changes nothing";
    EXPECT_EQ(ok("menu getIndex 1"), "0");
}

// === HxPortButtonList

TEST_F(HxPorts, ButtonHitLastsExactlyOneUpdate) {
    ok("buttons hit 1");
    EXPECT_EQ(ok("buttons isNew"), "1");
    EXPECT_EQ(ok("buttons getIndex"), "1");
    EXPECT_EQ(module->updates, 0) << "a hit alone runs no update";
    ok("fire");
    EXPECT_EQ(module->hitSeen, 1);
    EXPECT_EQ(ok("buttons getIndex"), "-1");
    ok("fire");
    EXPECT_EQ(module->hitSeen, -1);
}

TEST_F(HxPorts, InsensitiveButtonRefusesAScriptPressButNotTheProgram) {
    module->buttons.setLabel(2, "Delete Vertex");
    ok("buttons setSensitivity 2 0");
    EXPECT_EQ(ok("buttons isSensitive 2"), "0");
    EXPECT_EQ(ok("buttons isSensitive"), "1") << "without an index: button 0";
    EXPECT_CONTAINS(fails("buttons hit 2"), "button 2 (\"Delete Vertex\") is insensitive");
    EXPECT_FALSE(module->buttons.isNew());
    EXPECT_EQ(module->buttons.getIndex(), -1);
    EXPECT_TRUE(module->buttons.hit(2)) << "the program may press even an insensitive button";
    module->fire();
    EXPECT_EQ(module->hitSeen, 2);
    ok("buttons setSensitivity 2 true");
    ok("buttons hit 2");
    EXPECT_TRUE(module->buttons.wasHit(2));
}

// === HxPortMultiMenu

TEST_F(HxPorts, MenuPortAlwaysHasAMenuAndItsSelectionFollowsResizing) {
    HxModule owner;
    HxPortMultiMenu connector(&owner, "connector", 0);
    EXPECT_EQ(connector.getNumMenus(), 1);
    EXPECT_EQ(connector.getIndex(0), -1) << "an empty menu has no selection";
    connector.setNum(0, 2);
    EXPECT_EQ(connector.getIndex(0), 0) << "filling a menu selects its first entry";

    HxPortMultiMenu& menu = module->menu;
    menu.setNum(1, 4);
    menu.setIndex(1, 3);
    menu.setNum(1, 5);
    EXPECT_EQ(menu.getIndex(1), 3) << "a selection that still exists stays";
    menu.setNum(1, 2);
    EXPECT_EQ(menu.getIndex(1), 1) << "moves to the nearest entry";
    menu.setIndex(1, 5);
    EXPECT_EQ(menu.getIndex(1), 1) << "no such entry: ignored";
    menu.setNum(1, 0);
    EXPECT_EQ(menu.getIndex(1), -1);
    EXPECT_EQ(menu.getNum(0), 0) << "the other menu is untouched";
}

TEST_F(HxPorts, MenuSubcommandsTakeAnOptionalMenuIndex) {
    ok("menu setNum 2");
    ok("menu setNum 1 3");
    EXPECT_EQ(ok("menu getNum"), "2");
    EXPECT_EQ(ok("menu getNum 1"), "3");
    ok("menu setLabel 1 Dijkstra");
    ok("menu setLabel 1 2 Geodesic");
    EXPECT_EQ(ok("menu getLabel 1"), "Dijkstra");
    EXPECT_EQ(ok("menu getLabel 1 2"), "Geodesic");
    EXPECT_EQ(ok("menu getLabel"), "menu") << "without an entry: the port's label";
    EXPECT_FALSE(module->menu.isNew()) << "filling a menu is not a choice";
    ok("menu setIndex 1 2");
    EXPECT_EQ(ok("menu getIndex 1"), "2");
    EXPECT_EQ(ok("menu getIndex"), "0");
}

// === Toggles and radio boxes

TEST_F(HxPorts, ChoicePortsReadBackTheChosenEntries) {
    ok("toggles setValue 1 yes");
    EXPECT_EQ(ok("toggles getValue 1"), "1");
    EXPECT_EQ(ok("toggles getValue"), "0") << "without an index: toggle 0";
    ok("toggles setValue 1");
    EXPECT_EQ(module->toggles.getValue(0), 1);
    module->toggles.setValue(1, 5);
    EXPECT_EQ(ok("toggles getValue 1"), "1") << "any non-zero value is on";
    ok("radio setValue 2");
    module->radio.setValue(3);
    EXPECT_EQ(ok("radio getValue"), "2") << "no such button: ignored";
}

// === Numeric ports

TEST_F(HxPorts, SliderValueIsClampedIntoItsRange) {
    EXPECT_EQ(ok("slider getMinMax"), "0 100");
    EXPECT_EQ(ok("slider setValue 500"), "100") << "the result is the value kept";
    ok("slider setMinMax -1 3");
    EXPECT_EQ(module->slider.getValue(), 3) << "a new range pulls the value in";
    module->slider.setMinMax(5, 2);
    EXPECT_EQ(ok("slider getMinMax"), "2 5") << "the ends may come in either order";
    module->slider.setValue(-7);
    EXPECT_EQ(ok("slider getValue"), "2");
}

TEST_F(HxPorts, FloatFieldsShareOneRangeAndReadBackAsTyped) {
    EXPECT_EQ(ok("floats getNum"), "2");
    EXPECT_EQ(ok("floats setValue 1 0.1"), "0.1");
    ok("floats setValue -3");
    EXPECT_EQ(ok("floats getValue"), "-3") << "without an index: field 0";
    module->floats.setMinMax(50, 0);
    EXPECT_EQ(ok("floats getMinMax"), "0 50");
    EXPECT_EQ(ok("floats getValue 0"), "0") << "a new range pulls every field in";
    EXPECT_EQ(ok("floats setValue 1 99"), "50");
    ok("floats setMinMax 0.25 1");
    EXPECT_EQ(ok("floats getValue 0"), "0.25");
}

}  // namespace
