#include "HxPortToggleList.h"

#include "HxInterpreter.h"

#include <cstring>

HxPortToggleList::HxPortToggleList(HxObject* owner, char const* name, int numToggles)
    : HxPortItemList(owner, name, numToggles) {
    mValues.resize(getNum());
    mValues.fill(false);
}

void HxPortToggleList::setValue(int i, int value) {
    if (hasItem(i)) mValues[i] = value != 0;
}

McString HxPortToggleList::usage() const { return "getValue ?I?, setValue ?I? 0|1, " + HxPortItemList::usage(); }

int HxPortToggleList::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    int i = 0;
    if (!strcmp(cmd, "setValue")) return parseSetValue(interp, argc, argv);
    if (!strcmp(cmd, "getValue")) {
        if (!parseOptionalIndex(interp, argc, argv, 0, getNum(), i, "getValue ?I?")) return TCL_ERROR;
        Tcl_VaSetResult(interp, "%d", getValue(i));
        return TCL_OK;
    }
    return HxPortItemList::parse(interp, argc, argv);
}

int HxPortToggleList::parseSetValue(Tcl_Interp* interp, int argc, char** argv) {
    int i = 0;
    int on = 0;
    if (!parseOptionalIndex(interp, argc, argv, 1, getNum(), i, "setValue ?I? 0|1")) return TCL_ERROR;
    if (Tcl_GetBoolean(interp, argv[argc - 1], &on) != TCL_OK) return TCL_ERROR;
    setValue(i, on);
    touch();
    return TCL_OK;
}
