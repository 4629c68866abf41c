#pragma once
// HxPortInfo: a line of text that the owner shows to the user (status, counts, hints).
// It is output only: setting it never marks the port new.

#include "HxPort.h"

class HxPortInfo : public HxPort {
  public:
    HxPortInfo(HxObject* owner, char const* name);

    char const* getText() const { return mText.c_str(); }
    // Replaces the line with the formatted text.
    void printf(char const* format, ...) __attribute__((format(printf, 2, 3)));

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    McString mText;
};
