#pragma once
// HxPort: a control on an object (button list, menu, slider, connection, ...). The port lists
// itself on its owner while it lives; whoever created the port owns and deletes it.
//
// Every port has a script name (its Tcl word), a label, a visibility and a new-value flag.
// The flag is set when the value changes from outside (user or script) and cleared by the
// owner's fire() after its update() has seen it.

#include "McString.h"

#include <tcl.h>

class HxObject;

class HxPort {
  public:
    HxPort(HxObject* owner, char const* name);
    virtual ~HxPort();
    HxPort(HxPort const&) = delete;
    HxPort& operator=(HxPort const&) = delete;

    // === Queries
    HxObject* getOwner() const { return mOwner; }
    char const* getName() const { return mName.c_str(); }
    char const* getLabel() const { return mLabel.c_str(); }
    bool isNew() const { return mNewValue; }
    bool isVisible() const { return mVisible; }

    // === Mutators
    virtual void setLabel(char const* label);
    virtual void show();
    virtual void hide();
    // Marks the port as changed from outside, as a user edit would.
    virtual void touch() { mNewValue = true; }
    // Clears the new-value flag (and anything else that lasts one update only).
    virtual void untouch() { mNewValue = false; }

    // === Tcl
    // Handles `OBJ PORT SUBCMD ...`; argv[0] is the subcommand. Returns a Tcl code.
    virtual int parse(Tcl_Interp* interp, int argc, char** argv);
    // The subcommands this port understands, for error messages.
    virtual McString usage() const;

    // Called when the object that owns the port goes away before the port.
    void detachOwner() { mOwner = nullptr; }

    // === Tcl argument helpers (public so that the helpers of ports, such as ranges, can use them)
    // Parses an index argument in [0, n); on failure leaves an error in the interpreter.
    bool parseIndex(Tcl_Interp* interp, char const* text, int n, int& index) const;
    // For `SUBCMD ?I? ARG...` with `tail` fixed arguments after the optional index: the index
    // in [0, n), item 0 when omitted. On a wrong word count reports `usage` (the subcommand's
    // usage without the port name); false on any error, with the message in the interpreter.
    bool parseOptionalIndex(Tcl_Interp* interp, int argc, char** argv, int tail, int n, int& index,
                            char const* usage) const;
    static bool parseInt(Tcl_Interp* interp, char const* text, int& value);
    static bool parseFloat(Tcl_Interp* interp, char const* text, float& value);
    int wrongArgs(Tcl_Interp* interp, char const* usage) const;

  private:
    HxObject* mOwner;
    McString mName;
    McString mLabel;
    bool mNewValue = false;
    bool mVisible = true;
};
