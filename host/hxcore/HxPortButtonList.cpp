#include "HxPortButtonList.h"

#include "HxInterpreter.h"

#include <cstring>

HxPortButtonList::HxPortButtonList(HxObject* owner, char const* name, int numButtons)
    : HxPortItemList(owner, name, numButtons) {
    mSensitive.resize(getNum());
    mSensitive.fill(true);
}

void HxPortButtonList::setSensitivity(int i, bool on) {
    if (hasItem(i)) mSensitive[i] = on;
}

bool HxPortButtonList::hit(int i) {
    if (!hasItem(i)) return false;
    mHitIndex = i;
    touch();
    return true;
}

void HxPortButtonList::untouch() {
    HxPortItemList::untouch();
    mHitIndex = -1;
}

McString HxPortButtonList::usage() const {
    return "hit I, getIndex, isSensitive ?I?, setSensitivity I 0|1, " + HxPortItemList::usage();
}

int HxPortButtonList::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    int i = 0;
    if (!strcmp(cmd, "hit")) return parseHit(interp, argc, argv);
    if (!strcmp(cmd, "setSensitivity")) return parseSetSensitivity(interp, argc, argv);
    if (!strcmp(cmd, "isSensitive")) {
        if (!parseOptionalIndex(interp, argc, argv, 0, getNum(), i, "isSensitive ?I?")) return TCL_ERROR;
        Tcl_VaSetResult(interp, "%d", isSensitive(i) ? 1 : 0);
        return TCL_OK;
    }
    if (!strcmp(cmd, "getIndex")) {
        if (argc != 1) return wrongArgs(interp, "getIndex");
        Tcl_VaSetResult(interp, "%d", mHitIndex);
        return TCL_OK;
    }
    return HxPortItemList::parse(interp, argc, argv);
}

int HxPortButtonList::parseHit(Tcl_Interp* interp, int argc, char** argv) {
    int i = 0;
    if (argc != 2) return wrongArgs(interp, "hit I");
    if (!parseIndex(interp, argv[1], getNum(), i)) return TCL_ERROR;
    if (!mSensitive[i]) {
        Tcl_VaSetResult(interp, "port \"%s\": button %d (\"%s\") is insensitive and cannot be pressed now", getName(),
                        i, getLabel(i));
        return TCL_ERROR;
    }
    hit(i);
    return TCL_OK;
}

int HxPortButtonList::parseSetSensitivity(Tcl_Interp* interp, int argc, char** argv) {
    int i = 0;
    int on = 0;
    if (argc != 3) return wrongArgs(interp, "setSensitivity I 0|1");
    if (!parseIndex(interp, argv[1], getNum(), i)) return TCL_ERROR;
    if (Tcl_GetBoolean(interp, argv[2], &on) != TCL_OK) return TCL_ERROR;
    setSensitivity(i, on != 0);
    return TCL_OK;
}
