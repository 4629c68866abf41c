#include "HxPortItemList.h"

#include "HxInterpreter.h"

#include <cstring>

HxPortItemList::HxPortItemList(HxObject* owner, char const* name, int numItems)
    : HxPort(owner, name), mItems(numItems) {}

McString HxPortItemList::usage() const { return "getNum, getLabel ?I?, setLabel ?I? TEXT, " + HxPort::usage(); }

int HxPortItemList::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    int i = 0;
    if (!strcmp(cmd, "getNum")) {
        if (argc != 1) return wrongArgs(interp, "getNum");
        Tcl_VaSetResult(interp, "%d", getNum());
        return TCL_OK;
    }
    if (!strcmp(cmd, "getLabel") && argc == 2) {
        if (!parseIndex(interp, argv[1], getNum(), i)) return TCL_ERROR;
        Tcl_SetResult(interp, const_cast<char*>(getLabel(i)), TCL_VOLATILE);
        return TCL_OK;
    }
    if (!strcmp(cmd, "setLabel") && argc == 3) {
        if (!parseIndex(interp, argv[1], getNum(), i)) return TCL_ERROR;
        setLabel(i, argv[2]);
        return TCL_OK;
    }
    return HxPort::parse(interp, argc, argv);
}
