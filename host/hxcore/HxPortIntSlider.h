#pragma once
// HxPortIntSlider: an integer chosen in a closed range (0 to 100 at first, value 0).
// The value always lies in the range: setValue clamps into it, and setMinMax moves a value
// that falls outside the new range to its nearest end.

#include "HxPort.h"
#include "HxPortRange.h"

class HxPortIntSlider : public HxPort {
  public:
    HxPortIntSlider(HxObject* owner, char const* name);

    // === Queries
    int getValue() const { return mValue; }
    int getMinValue() const { return mRange.getMin(); }
    int getMaxValue() const { return mRange.getMax(); }

    // === Mutators
    // Sets the range; the two ends may come in either order.
    void setMinMax(int min, int max);
    // Sets the value, clamped into the range, without marking the port new.
    void setValue(int value) { mValue = mRange.clamp(value); }

    // === Tcl
    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    int parseSetValue(Tcl_Interp* interp, int argc, char** argv);

    HxPortRange<int> mRange{0, 100};
    int mValue = 0;
};
