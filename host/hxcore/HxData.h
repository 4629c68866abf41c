#pragma once
// HxData: an object that holds data (a surface, a path set, ...).

#include "HxObject.h"

class HxData : public HxObject {
    MC_TYPED_HEADER(HxData)
  public:
    HxData() = default;

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    // Writes the data to a file; on failure returns false and explains in `error`.
    virtual bool saveFile(char const* fileName, McString& error);
};
