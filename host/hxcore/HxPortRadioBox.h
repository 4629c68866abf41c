#pragma once
// HxPortRadioBox: a set of buttons of which exactly one is chosen (button 0 at first; -1 only
// for a box without buttons).

#include "HxPortItemList.h"

class HxPortRadioBox : public HxPortItemList {
  public:
    HxPortRadioBox(HxObject* owner, char const* name, int numButtons);

    int getValue() const { return mValue; }
    // Chooses button i without marking the port new; ignored for no such button.
    void setValue(int i);

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    int parseSetValue(Tcl_Interp* interp, int argc, char** argv);

    int mValue;
};
