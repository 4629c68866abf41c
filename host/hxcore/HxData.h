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

    // The absolute name of the file the data was last loaded from or saved to ("" if none),
    // so that files referring to this data can name it.
    char const* getFileName() const { return mFileName.c_str(); }
    void setFileName(char const* fileName);

  private:
    McString mFileName;
};
