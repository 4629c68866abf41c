#include "HxInterpreter.h"
#include "HxModule.h"
#include "HxObjectPool.h"
#include "HxPortButtonList.h"
#include "HxPortDrawStyle.h"
#include "HxPortFloatTextN.h"
#include "HxPortInfo.h"
#include "HxPortIntSlider.h"
#include "HxPortMultiMenu.h"
#include "HxPortRadioBox.h"
#include "HxPortSeparator.h"
#include "HxPortToggleList.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

// A module with one port of each kind that records what its update() saw.
class PortModule : public HxModule {
  public:
    PortModule()
        : info(this, "info"),
          buttons(this, "buttons", 3),
          menu(this, "menu", 2),
          toggles(this, "toggles", 2),
          radio(this, "radio", 3),
          slider(this, "slider"),
          floats(this, "floats", 2),
          sep(this, "sep", true),
          drawStyle(this, "drawStyle") {
        setLabel("ports");
    }

    void update() override {
        ++updates;
        newPorts.clear();
        for (HxPort* port : getPorts())
            if (port->isNew()) newPorts += McString(newPorts.empty() ? "" : " ") + port->getName();
        hitIndexSeen = buttons.getIndex();
        button1WasHit = buttons.wasHit(1);
        button0WasHit = buttons.wasHit(0);
    }

    HxPortInfo info;
    HxPortButtonList buttons;
    HxPortMultiMenu menu;
    HxPortToggleList toggles;
    HxPortRadioBox radio;
    HxPortIntSlider slider;
    HxPortFloatTextN floats;
    HxPortSeparator sep;
    HxPortDrawStyle drawStyle;

    int updates = 0;
    McString newPorts;
    int hitIndexSeen = -2;
    bool button0WasHit = false;
    bool button1WasHit = false;
};

// The module lives in the pool, so every check can go through its Tcl command.
class HxPorts : public testing::Test {
  protected:
    void SetUp() override {
        module = new PortModule;
        HxObjectPool::getTheObjectPool().addObject(module);
    }
    void TearDown() override { HxObjectPool::getTheObjectPool().removeObject(module); }

    // Runs "MODULE words" and expects it to succeed; returns the result.
    McString ok(char const* words) {
        McString result;
        const int code = run(words, result);
        EXPECT_EQ(code, TCL_OK) << words << ": " << result;
        return result;
    }
    // Runs "MODULE words" and expects it to fail; returns the error message.
    McString fails(char const* words) {
        McString result;
        EXPECT_EQ(run(words, result), TCL_ERROR) << words << " succeeded with: " << result;
        return result;
    }
    int run(char const* words, McString& result) {
        McString script = McString::format("%s %s", module->getLabel(), words);
        return HxInterpreter::getTheInterpreter().evalScript(script.c_str(), result);
    }

    PortModule* module = nullptr;
};

#define EXPECT_CONTAINS(text, part) EXPECT_NE(McString(text).find(part), std::string::npos) << (text)

// === Module and base behaviour

TEST_F(HxPorts, PortsAreListedInCreationOrderAndUnlistedWhenDeleted) {
    EXPECT_EQ(ok("getPorts"), "data info buttons menu toggles radio slider floats sep drawStyle");
    auto extra = std::make_unique<HxPortInfo>(module, "extra");
    EXPECT_EQ(ok("getPorts"), "data info buttons menu toggles radio slider floats sep drawStyle extra");
    EXPECT_EQ(ok("extra getText"), "");
    extra.reset();
    EXPECT_EQ(ok("getPorts"), "data info buttons menu toggles radio slider floats sep drawStyle");
    EXPECT_CONTAINS(fails("extra getText"), "unknown command or port \"extra\"");
}

TEST_F(HxPorts, FireLetsUpdateSeeEveryEditedPortThenClearsTheFlags) {
    ok("buttons hit 0");
    ok("menu setNum 3");
    ok("menu setIndex 2");
    ok("toggles setValue 1");
    ok("radio setValue 1");
    ok("slider setValue 5");
    ok("floats setValue 1 2.5");
    ok("drawStyle setValue 2");
    ok("fire");
    EXPECT_EQ(module->updates, 1);
    EXPECT_EQ(module->newPorts, "buttons menu toggles radio slider floats drawStyle");
    for (HxPort* port : module->getPorts()) EXPECT_FALSE(port->isNew()) << port->getName();
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
    for (HxPort* port : module->getPorts()) EXPECT_FALSE(port->isNew()) << port->getName();
    EXPECT_FALSE(module->buttons.wasHit(1)) << "a recorded index without the flag is no press";
}

TEST_F(HxPorts, BaseSubcommandsWorkOnEveryKindAndUnknownOnesListTheUsage) {
    EXPECT_EQ(ok("sep isVisible"), "1");
    ok("sep hide");
    EXPECT_EQ(ok("sep isVisible"), "0");
    EXPECT_FALSE(module->sep.isVisible());
    EXPECT_TRUE(module->sep.hasLine());
    ok("radio setLabel {Snap mode}");
    EXPECT_EQ(ok("radio getLabel"), "Snap mode");
    McString error = fails("slider frobnicate");
    EXPECT_CONTAINS(error, "\"frobnicate\"");
    EXPECT_CONTAINS(error, "setMinMax MIN MAX");
}

TEST_F(HxPorts, EveryPortRejectsBadArgumentsWithAClearMessage) {
    module->menu.setNum(1, 2);
    struct Case {
        char const* words;
        char const* message;
    };
    Case const cases[] = {
        // button list
        {"buttons hit 3", "port \"buttons\": index 3 out of range (0 to 2)"},
        {"buttons hit -1", "index -1 out of range"},
        {"buttons hit one", "expected integer but got \"one\""},
        {"buttons hit", "wrong # args: should be \"buttons hit I\""},
        {"buttons setSensitivity 0 maybe", "expected boolean value but got \"maybe\""},
        {"buttons setSensitivity 0", "should be \"buttons setSensitivity I 0|1\""},
        {"buttons isSensitive 0 1", "should be \"buttons isSensitive ?I?\""},
        {"buttons setLabel 9 x", "index 9 out of range"},
        // menu
        {"menu setIndex 0", "port \"menu\": menu 0 has no entries"},
        {"menu setIndex 1 5", "menu 1 has no entry 5 (0 to 1)"},
        {"menu getLabel 1 7", "menu 1 has no entry 7"},
        {"menu getNum 2", "index 2 out of range (0 to 1)"},
        {"menu setNum -1", "a menu cannot have -1 entries"},
        {"menu setNum x", "expected integer but got \"x\""},
        {"menu setIndex 0 1 1", "should be \"menu setIndex ?MENU? I\""},
        // toggle list
        {"toggles setValue 2 1", "index 2 out of range (0 to 1)"},
        {"toggles setValue 0 on off", "should be \"toggles setValue ?I? 0|1\""},
        {"toggles setValue 0 sometimes", "expected boolean value but got \"sometimes\""},
        {"toggles getValue x", "expected integer but got \"x\""},
        // radio box and draw style
        {"radio setValue 3", "index 3 out of range (0 to 2)"},
        {"radio setValue", "should be \"radio setValue I\""},
        {"radio getValue 1", "should be \"radio getValue\""},
        {"drawStyle setValue 4", "index 4 out of range (0 to 3)"},
        // slider
        {"slider setMinMax 5 2", "the minimum 5 is greater than the maximum 2"},
        {"slider setMinMax 1", "should be \"slider setMinMax MIN MAX\""},
        {"slider setValue 2.5", "expected integer but got \"2.5\""},
        {"slider getMinMax 1", "should be \"slider getMinMax\""},
        // float fields
        {"floats setValue 0 inf", "expected a finite number but got \"inf\""},
        {"floats setValue 0 nan", "Not a Number"},
        {"floats setValue 0 1e39", "too large"},
        {"floats setValue 0 abc", "expected floating-point number but got \"abc\""},
        {"floats getValue 2", "index 2 out of range (0 to 1)"},
        {"floats setMinMax 2 1", "the minimum 2 is greater than the maximum 1"},
        {"floats setValue", "should be \"floats setValue ?I? V\""},
        // info
        {"info getText now", "should be \"info getText\""},
    };
    for (Case const& c : cases) EXPECT_CONTAINS(fails(c.words), c.message);
    for (HxPort* port : module->getPorts()) EXPECT_FALSE(port->isNew()) << "refused edits: " << port->getName();
    EXPECT_EQ(ok("slider getMinMax"), "0 100") << "a refused range changes nothing";
    EXPECT_EQ(ok("menu getIndex 1"), "0");
}

// === HxPortButtonList

TEST_F(HxPorts, ButtonHitLastsExactlyOneUpdate) {
    EXPECT_EQ(ok("buttons getIndex"), "-1");
    ok("buttons hit 1");
    EXPECT_EQ(ok("buttons isNew"), "1");
    EXPECT_EQ(ok("buttons getIndex"), "1");
    EXPECT_EQ(module->updates, 0) << "a hit alone runs no update";
    ok("fire");
    EXPECT_EQ(module->hitIndexSeen, 1);
    EXPECT_TRUE(module->button1WasHit);
    EXPECT_FALSE(module->button0WasHit);
    EXPECT_EQ(module->buttons.getIndex(), -1);
    EXPECT_FALSE(module->buttons.isNew());
    ok("fire");
    EXPECT_EQ(module->hitIndexSeen, -1);
    EXPECT_FALSE(module->button1WasHit);
}

TEST_F(HxPorts, ProgramCanLeaveAButtonInTheJustPressedState) {
    module->buttons.setSensitivity(0, false);
    EXPECT_TRUE(module->buttons.hit(0)) << "the program may press even an insensitive button";
    EXPECT_FALSE(module->buttons.hit(3));
    EXPECT_EQ(module->buttons.getIndex(), 0);
    module->fire();
    EXPECT_TRUE(module->button0WasHit);
    EXPECT_EQ(module->buttons.getIndex(), -1);
}

TEST_F(HxPorts, InsensitiveButtonRefusesAScriptPress) {
    EXPECT_EQ(ok("buttons isSensitive 2"), "1");
    module->buttons.setLabel(2, "Delete Vertex");
    ok("buttons setSensitivity 2 0");
    EXPECT_FALSE(module->buttons.isSensitive(2));
    EXPECT_EQ(ok("buttons isSensitive 2"), "0");
    EXPECT_EQ(ok("buttons isSensitive"), "1") << "without an index: button 0";
    McString error = fails("buttons hit 2");
    EXPECT_CONTAINS(error, "button 2 (\"Delete Vertex\") is insensitive");
    EXPECT_FALSE(module->buttons.isNew());
    EXPECT_EQ(module->buttons.getIndex(), -1);
    ok("buttons setSensitivity 2 true");
    ok("buttons hit 2");
    EXPECT_TRUE(module->buttons.wasHit(2));
}

TEST_F(HxPorts, ButtonLabelsAreKeptBesideThePortLabel) {
    ok("buttons setLabel 1 Redo");
    ok("buttons setLabel Edit");
    EXPECT_EQ(ok("buttons getLabel 1"), "Redo");
    EXPECT_STREQ(module->buttons.getLabel(1), "Redo");
    EXPECT_EQ(ok("buttons getLabel"), "Edit");
    EXPECT_STREQ(module->buttons.getLabel(), "Edit");
    EXPECT_EQ(ok("buttons getLabel 0"), "");
    EXPECT_EQ(ok("buttons getNum"), "3");
    EXPECT_STREQ(module->buttons.getLabel(7), "") << "no such button";
}

// === HxPortMultiMenu

TEST_F(HxPorts, MenuPortAlwaysHasAMenuToFill) {
    HxModule owner;
    HxPortMultiMenu connector(&owner, "connector", 0);
    EXPECT_EQ(connector.getNumMenus(), 1);
    EXPECT_EQ(connector.getNum(0), 0);
    EXPECT_EQ(connector.getIndex(0), -1) << "an empty menu has no selection";
    connector.setNum(0, 2);
    EXPECT_EQ(connector.getIndex(0), 0) << "filling a menu selects its first entry";
    EXPECT_EQ(connector.getNum(1), -1) << "no such menu";
    EXPECT_EQ(connector.getIndex(1), -1);
}

TEST_F(HxPorts, MenuSelectionFollowsResizing) {
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
    EXPECT_STREQ(module->menu.getLabel(1, 2), "Geodesic");
    EXPECT_EQ(ok("menu getLabel"), "menu") << "without an entry: the port's label";
    EXPECT_FALSE(module->menu.isNew()) << "filling a menu is not a choice";
    ok("menu setIndex 1 2");
    EXPECT_TRUE(module->menu.isNew());
    EXPECT_EQ(ok("menu getIndex 1"), "2");
    EXPECT_EQ(ok("menu getIndex"), "0");
}

// === HxPortToggleList

TEST_F(HxPorts, ToggleValuesFromScriptsAreUserEdits) {
    EXPECT_EQ(ok("toggles getValue 1"), "0");
    ok("toggles setValue 1 yes");
    EXPECT_EQ(module->toggles.getValue(1), 1);
    EXPECT_EQ(ok("toggles getValue"), "0") << "without an index: toggle 0";
    EXPECT_TRUE(module->toggles.isNew());
    ok("toggles setValue 0");
    EXPECT_EQ(module->toggles.getValue(0), 0);
    module->toggles.setValue(0, 5);
    EXPECT_EQ(ok("toggles getValue 0"), "1") << "any non-zero value is on";
    module->toggles.setLabel(0, "show");
    EXPECT_EQ(ok("toggles getLabel 0"), "show");
    EXPECT_EQ(module->toggles.getValue(9), 0) << "no such toggle";
}

// === HxPortRadioBox and HxPortDrawStyle

TEST_F(HxPorts, RadioBoxChoosesExactlyOneButton) {
    EXPECT_EQ(ok("radio getValue"), "0");
    ok("radio setValue 2");
    EXPECT_EQ(module->radio.getValue(), 2);
    EXPECT_TRUE(module->radio.isNew());
    module->radio.setValue(3);
    EXPECT_EQ(module->radio.getValue(), 2) << "no such button: ignored";
    EXPECT_CONTAINS(fails("radio setValue 3"), "index 3 out of range (0 to 2)");
    EXPECT_CONTAINS(fails("radio setValue"), "should be \"radio setValue I\"");
    EXPECT_CONTAINS(fails("radio getValue 1"), "should be \"radio getValue\"");
    ok("radio setLabel 1 barycentric");
    EXPECT_STREQ(module->radio.getLabel(1), "barycentric");
    EXPECT_EQ(ok("radio getNum"), "3");
}

TEST_F(HxPorts, DrawStyleOffersTheFixedStyles) {
    EXPECT_EQ(module->drawStyle.getStyle(), HxPortDrawStyle::SHADED);
    EXPECT_EQ(ok("drawStyle getLabel"), "Draw style");
    EXPECT_EQ(ok("drawStyle getNum"), "4");
    EXPECT_EQ(ok("drawStyle getLabel 3"), "outlined");
    ok("drawStyle setValue 1");
    EXPECT_EQ(module->drawStyle.getStyle(), HxPortDrawStyle::LINES);
    EXPECT_CONTAINS(fails("drawStyle setValue 4"), "index 4 out of range (0 to 3)");
}

// === HxPortIntSlider

TEST_F(HxPorts, SliderValueIsClampedIntoItsRange) {
    EXPECT_EQ(ok("slider getMinMax"), "0 100");
    EXPECT_EQ(ok("slider setValue 500"), "100") << "the result is the value kept";
    EXPECT_EQ(module->slider.getValue(), 100);
    ok("slider setMinMax -1 3");
    EXPECT_EQ(module->slider.getValue(), 3) << "a new range pulls the value in";
    module->slider.setMinMax(-1, -1);
    EXPECT_EQ(ok("slider getValue"), "-1");
    module->slider.setMinMax(5, 2);
    EXPECT_EQ(ok("slider getMinMax"), "2 5") << "the ends may come in either order";
    module->slider.setValue(-7);
    EXPECT_EQ(module->slider.getValue(), 2);
}

// === HxPortFloatTextN

TEST_F(HxPorts, FloatFieldsShareOneRangeAndReadBackAsTyped) {
    EXPECT_EQ(ok("floats getNum"), "2");
    EXPECT_EQ(ok("floats setValue 1 0.1"), "0.1");
    EXPECT_FLOAT_EQ(module->floats.getValue(1), 0.1f);
    EXPECT_TRUE(module->floats.isNew());
    ok("floats setValue -3");
    EXPECT_EQ(ok("floats getValue"), "-3") << "without an index: field 0";
    module->floats.setMinMax(50, 0);
    EXPECT_EQ(ok("floats getMinMax"), "0 50");
    EXPECT_FLOAT_EQ(module->floats.getValue(0), 0.0f) << "a new range pulls every field in";
    EXPECT_EQ(ok("floats setValue 1 99"), "50");
    module->floats.setValue(0, 0.5f);
    EXPECT_EQ(ok("floats getValue 0"), "0.5");
    EXPECT_FLOAT_EQ(module->floats.getValue(5), 0.0f) << "no such field";
}

// === HxPortInfo

TEST_F(HxPorts, InfoLineIsFormattedAndReadable) {
    EXPECT_EQ(ok("info getText"), "");
    module->info.printf("%d paths, %s", 3, "none selected");
    EXPECT_STREQ(module->info.getText(), "3 paths, none selected");
    EXPECT_EQ(ok("info getText"), "3 paths, none selected");
    module->info.printf("%s", "");
    EXPECT_EQ(ok("info getText"), "") << "each printf replaces the line";
    EXPECT_FALSE(module->info.isNew());
}

}  // namespace
