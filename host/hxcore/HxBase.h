#pragma once
// HxBase: anything in the host with a label.

#include "McString.h"
#include "McTypedObject.h"

class HxBase : public McTypedObject {
    MC_TYPED_HEADER(HxBase)
  public:
    HxBase() = default;
    virtual void setLabel(char const* label) { mLabel = label ? label : ""; }
    char const* getLabel() const { return mLabel.c_str(); }

  private:
    McString mLabel;
};
