#pragma once
// HxPortFloatTextN: a row of number fields sharing one closed range (unbounded at first;
// every field starts at 0). Each value always lies in the range: setValue clamps into it,
// and setMinMax moves values that fall outside the new range to its nearest end.

#include "HxPort.h"
#include "HxPortRange.h"
#include "McDArray.h"

#include <cfloat>

class HxPortFloatTextN : public HxPort {
  public:
    HxPortFloatTextN(HxObject* owner, char const* name, int numFields);

    // === Queries
    int getNum() const { return static_cast<int>(mValues.size()); }
    // Value of field i; 0 for no such field.
    float getValue(int i = 0) const { return hasField(i) ? mValues[i] : 0.0f; }
    float getMinValue() const { return mRange.getMin(); }
    float getMaxValue() const { return mRange.getMax(); }

    // === Mutators
    // Sets the range; the two ends may come in either order.
    void setMinMax(float min, float max);
    // Sets field i, clamped into the range, without marking the port new; ignored for no
    // such field.
    void setValue(int i, float value);

    // === Tcl
    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    bool hasField(int i) const { return i >= 0 && i < getNum(); }
    int parseGetValue(Tcl_Interp* interp, int argc, char** argv) const;
    int parseSetValue(Tcl_Interp* interp, int argc, char** argv);

    McDArray<float> mValues;
    HxPortRange<float> mRange{-FLT_MAX, FLT_MAX};
};
