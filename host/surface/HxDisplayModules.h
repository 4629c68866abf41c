#pragma once
// HxDisplayModules: the display modules that read a data object through their data port, as
// the `show` and `hide` commands of surfaces and path sets find, make and remove them.

#include "McDArray.h"

class HxModule;
class HxObject;
class McTypeInfo;

class HxDisplayModules {
  public:
    // The modules of class `type` whose data port reads `data`, in connection order.
    static McDArray<HxModule*> find(HxObject const* data, McTypeInfo const* type);
    // The first display of class Display reading `data`; with `create`, a new one (see add)
    // when there is none. Else null.
    template <class Display>
    static Display* findOrAdd(HxObject* data, bool create) {
        McDArray<HxModule*> displays = find(data, Display::getClassTypeId());
        if (!displays.empty()) return static_cast<Display*>(displays[0]);
        if (!create) return nullptr;
        auto* display = new Display;
        add(display, data);
        return display;
    }
    // Labels `display` "<data label>-display", connects its data port to `data`, adds it to
    // the object pool (which takes it over) and fires it, so that it shows the data.
    static void add(HxModule* display, HxObject* data);
    // Disconnects the modules of class `type` from `data`, so that they show nothing even if
    // something else still holds one, and removes them from the object pool.
    static void remove(HxObject* data, McTypeInfo const* type);
};
