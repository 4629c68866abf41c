#pragma once
// A module with one port of each kind, for the tests of the ports' commands and of the panel
// that shows them. Its update() records what it saw and then runs `onUpdate`, if set.

#include "HxModule.h"
#include "HxPortButtonList.h"
#include "HxPortDrawStyle.h"
#include "HxPortFloatTextN.h"
#include "HxPortInfo.h"
#include "HxPortIntSlider.h"
#include "HxPortMultiMenu.h"
#include "HxPortRadioBox.h"
#include "HxPortSeparator.h"
#include "HxPortToggleList.h"

#include <functional>
#include <memory>

class AllPortsModule : public HxModule {
  public:
    AllPortsModule()
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
        hitSeen = buttons.getIndex();
        if (onUpdate) onUpdate();
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
    std::unique_ptr<HxPort> extra;  // a port that a test adds and removes
    std::function<void()> onUpdate;

    int updates = 0;
    McString newPorts;  // the names of the ports marked new, in port order
    int hitSeen = -2;   // the pressed button's index; -1 for none
};
