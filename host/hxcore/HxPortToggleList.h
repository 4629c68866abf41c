#pragma once
// HxPortToggleList: a row of check boxes, each on (1) or off (0). All start off.

#include "HxPortItemList.h"

class HxPortToggleList : public HxPortItemList {
  public:
    HxPortToggleList(HxObject* owner, char const* name, int numToggles);

    // 1 when toggle i is on; 0 when it is off or does not exist.
    int getValue(int i) const { return hasItem(i) && mValues[i] ? 1 : 0; }
    // Sets toggle i (non-zero: on) without marking the port new; ignored for no such toggle.
    void setValue(int i, int value);

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    int parseSetValue(Tcl_Interp* interp, int argc, char** argv);

    McDArray<bool> mValues;
};
