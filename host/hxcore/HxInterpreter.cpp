#include "HxInterpreter.h"

#include <cstdarg>
#include <cstdio>

HxInterpreter& HxInterpreter::getTheInterpreter() {
    static HxInterpreter interpreter;
    return interpreter;
}

HxInterpreter::HxInterpreter() {
    Tcl_FindExecutable(nullptr);
    mInterp = Tcl_CreateInterp();
    // Without the init script the interpreter lacks `clock`, `info body` helpers and the
    // package index; a missing library is survivable, so failures are only reported.
    if (Tcl_Init(mInterp) != TCL_OK)
        std::fprintf(stderr, "Warning: Tcl library not initialised: %s\n", Tcl_GetStringResult(mInterp));
}

HxInterpreter::~HxInterpreter() {
    Tcl_DeleteInterp(mInterp);
}

char const* HxInterpreter::getVar(char const* name) const {
    return Tcl_GetVar(mInterp, name, TCL_GLOBAL_ONLY);
}

void HxInterpreter::setVar(char const* name, char const* value) {
    Tcl_SetVar(mInterp, name, value, TCL_GLOBAL_ONLY);
}

char const* HxInterpreter::eval(char const* format, ...) {
    McString script;
    va_list args;
    va_start(args, format);
    script.vprintf(format, args);
    va_end(args);
    mLastCode = Tcl_EvalEx(mInterp, script.c_str(), -1, TCL_EVAL_GLOBAL);
    return Tcl_GetStringResult(mInterp);
}

int HxInterpreter::evalScript(char const* script, McString& result) {
    mLastCode = Tcl_EvalEx(mInterp, script, -1, TCL_EVAL_GLOBAL);
    result = Tcl_GetStringResult(mInterp);
    return mLastCode;
}

int HxInterpreter::evalFile(char const* fileName, McString& result) {
    mLastCode = Tcl_EvalFile(mInterp, fileName);
    if (mLastCode == TCL_ERROR) {
        // errorInfo carries the message and the trace down to the file and line.
        char const* info = Tcl_GetVar(mInterp, "errorInfo", TCL_GLOBAL_ONLY);
        result = info ? info : Tcl_GetStringResult(mInterp);
    } else {
        result = Tcl_GetStringResult(mInterp);
    }
    return mLastCode;
}

void HxInterpreter::addCommand(char const* name, Tcl_CmdProc* proc, void* data) {
    Tcl_CreateCommand(mInterp, name, proc, data, nullptr);
}

void HxInterpreter::removeCommand(char const* name) { Tcl_DeleteCommand(mInterp, name); }

void HxInterpreter::renameCommand(char const* oldName, char const* newName) {
    Tcl_Obj* words[] = {Tcl_NewStringObj("rename", -1), Tcl_NewStringObj(oldName, -1), Tcl_NewStringObj(newName, -1)};
    Tcl_Obj* command = Tcl_NewListObj(3, words);
    Tcl_IncrRefCount(command);
    Tcl_EvalObjEx(mInterp, command, TCL_EVAL_GLOBAL);
    Tcl_DecrRefCount(command);
}

McDArray<HxCmdInfo>& getCmdInfo() {
    static McDArray<HxCmdInfo> commands;
    return commands;
}

int cmdError(Tcl_Interp* interp, int kind, char const* text) {
    switch (kind) {
        case HX_CMD_WRONG_ARGS:
            Tcl_VaSetResult(interp, "wrong # args: should be \"%s\"", text);
            break;
        case HX_CMD_BAD_VALUE:
            Tcl_VaSetResult(interp, "bad value: %s", text);
            break;
        default:
            Tcl_VaSetResult(interp, "%s", text);
            break;
    }
    return TCL_ERROR;
}

void Tcl_VaSetResult(Tcl_Interp* interp, char const* format, ...) {
    McString text;
    va_list args;
    va_start(args, format);
    text.vprintf(format, args);
    va_end(args);
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.c_str(), static_cast<int>(text.size())));
}
