#include "HxPortFloatTextN.h"

#include "HxInterpreter.h"

#include <algorithm>
#include <cstring>

HxPortFloatTextN::HxPortFloatTextN(HxObject* owner, char const* name, int numFields) : HxPort(owner, name) {
    mValues.resize(std::max(numFields, 0));
}

void HxPortFloatTextN::setMinMax(float min, float max) {
    mRange.set(min, max);
    for (float& value : mValues) value = mRange.clamp(value);
}

void HxPortFloatTextN::setValue(int i, float value) {
    if (hasField(i)) mValues[i] = mRange.clamp(value);
}

McString HxPortFloatTextN::usage() const {
    return "getNum, getValue ?I?, setValue ?I? V, getMinMax, setMinMax MIN MAX, " + HxPort::usage();
}

int HxPortFloatTextN::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    int code = TCL_OK;
    if (!strcmp(cmd, "getValue")) return parseGetValue(interp, argc, argv);
    if (!strcmp(cmd, "setValue")) return parseSetValue(interp, argc, argv);
    if (!strcmp(cmd, "getNum")) {
        if (argc != 1) return wrongArgs(interp, "getNum");
        Tcl_VaSetResult(interp, "%d", getNum());
        return TCL_OK;
    }
    if (mRange.parse(*this, interp, argc, argv, code)) {
        setMinMax(getMinValue(), getMaxValue());  // pulls the values into a range set by the script
        return code;
    }
    return HxPort::parse(interp, argc, argv);
}

int HxPortFloatTextN::parseGetValue(Tcl_Interp* interp, int argc, char** argv) const {
    int i = 0;
    if (!parseOptionalIndex(interp, argc, argv, 0, getNum(), i, "getValue ?I?")) return TCL_ERROR;
    Tcl_SetResult(interp, const_cast<char*>(mRange.format(mValues[i]).c_str()), TCL_VOLATILE);
    return TCL_OK;
}

// The result is the value kept, so that a script sees when it was clamped.
int HxPortFloatTextN::parseSetValue(Tcl_Interp* interp, int argc, char** argv) {
    int i = 0;
    float value = 0;
    if (!parseOptionalIndex(interp, argc, argv, 1, getNum(), i, "setValue ?I? V")) return TCL_ERROR;
    if (!parseFloat(interp, argv[argc - 1], value)) return TCL_ERROR;
    setValue(i, value);
    touch();
    Tcl_SetResult(interp, const_cast<char*>(mRange.format(mValues[i]).c_str()), TCL_VOLATILE);
    return TCL_OK;
}
