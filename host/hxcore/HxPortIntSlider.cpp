#include "HxPortIntSlider.h"

#include "HxInterpreter.h"

#include <cstring>

HxPortIntSlider::HxPortIntSlider(HxObject* owner, char const* name) : HxPort(owner, name) {}

void HxPortIntSlider::setMinMax(int min, int max) {
    mRange.set(min, max);
    setValue(mValue);
}

McString HxPortIntSlider::usage() const {
    return "getValue, setValue V, getMinMax, setMinMax MIN MAX, " + HxPort::usage();
}

int HxPortIntSlider::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    int code = TCL_OK;
    if (!strcmp(cmd, "setValue")) return parseSetValue(interp, argc, argv);
    if (!strcmp(cmd, "getValue")) {
        if (argc != 1) return wrongArgs(interp, "getValue");
        Tcl_VaSetResult(interp, "%d", mValue);
        return TCL_OK;
    }
    if (mRange.parse(*this, interp, argc, argv, code)) {
        setMinMax(getMinValue(), getMaxValue());  // pulls the value into a range set by the script
        return code;
    }
    return HxPort::parse(interp, argc, argv);
}

// The result is the value kept, so that a script sees when it was clamped.
int HxPortIntSlider::parseSetValue(Tcl_Interp* interp, int argc, char** argv) {
    int value = 0;
    if (argc != 2) return wrongArgs(interp, "setValue V");
    if (!parseInt(interp, argv[1], value)) return TCL_ERROR;
    setValue(value);
    touch();
    Tcl_VaSetResult(interp, "%d", mValue);
    return TCL_OK;
}
