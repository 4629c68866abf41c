#pragma once
// HxInterpreter: the host's one embedded Tcl interpreter, made on first use.
// Also home of the small helpers every command handler uses: the global list of command
// descriptions, usage errors and formatted results.

#include "McDArray.h"
#include "McString.h"

#include <tcl.h>

class HxInterpreter {
  public:
    static HxInterpreter& getTheInterpreter();

    Tcl_Interp* getTclInterp() const { return mInterp; }

    // The value text of a variable (namespaces allowed), or null if it is not set.
    char const* getVar(char const* name) const;
    void setVar(char const* name, char const* value);

    // Evaluates the command built from a printf format and returns the result text, valid
    // until the next evaluation. On a Tcl error the result is the error message and
    // lastCode() is TCL_ERROR.
    virtual char const* eval(char const* format, ...) __attribute__((format(printf, 2, 3)));
    // Evaluates a script; returns the Tcl code and the result text.
    int evalScript(char const* script, McString& result);
    // Sources a file; on error the result holds the message with the file's name and line.
    int evalFile(char const* fileName, McString& result);
    int lastCode() const { return mLastCode; }

    void addCommand(char const* name, Tcl_CmdProc* proc, void* data);
    void removeCommand(char const* name);
    void renameCommand(char const* oldName, char const* newName);

    virtual ~HxInterpreter();

  private:
    HxInterpreter();
    HxInterpreter(HxInterpreter const&) = delete;
    HxInterpreter& operator=(HxInterpreter const&) = delete;

    Tcl_Interp* mInterp;
    int mLastCode = TCL_OK;
};

// A command's name and its usage text, as `help` shows it.
struct HxCmdInfo {
    McString name;
    McString usage;
};

// The global list of command descriptions; modules append their own.
McDArray<HxCmdInfo>& getCmdInfo();

// Kinds of usage errors reported by cmdError.
enum HxCmdErrorKind {
    HX_CMD_WRONG_ARGS = 0,  // text: the correct usage
    HX_CMD_UNKNOWN = 1,     // text: what is unknown and what is known
    HX_CMD_BAD_VALUE = 2,   // text: what is wrong with the value
};

// Sets a usage error as the command's result and returns TCL_ERROR.
int cmdError(Tcl_Interp* interp, int kind, char const* text);

// Sets a command's result from a printf format.
void Tcl_VaSetResult(Tcl_Interp* interp, char const* format, ...) __attribute__((format(printf, 2, 3)));
