#include "HxPort.h"

#include "HxInterpreter.h"
#include "HxObject.h"

#include <cfloat>
#include <cmath>
#include <cstring>

HxPort::HxPort(HxObject* owner, char const* name) : mOwner(owner), mName(name ? name : ""), mLabel(mName) {
    if (mOwner) mOwner->addPort(this);
}

HxPort::~HxPort() {
    if (mOwner) mOwner->removePort(this);
}

void HxPort::setLabel(char const* label) { mLabel = label ? label : ""; }
void HxPort::show() { mVisible = true; }
void HxPort::hide() { mVisible = false; }

McString HxPort::usage() const { return "getLabel, setLabel, isVisible, show, hide, isNew, touch"; }

int HxPort::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    if (!strcmp(cmd, "getLabel") && argc == 1) {
        Tcl_SetResult(interp, const_cast<char*>(getLabel()), TCL_VOLATILE);
    } else if (!strcmp(cmd, "setLabel") && argc == 2) {
        setLabel(argv[1]);
    } else if (!strcmp(cmd, "isVisible") && argc == 1) {
        Tcl_VaSetResult(interp, "%d", isVisible() ? 1 : 0);
    } else if (!strcmp(cmd, "show") && argc == 1) {
        show();
    } else if (!strcmp(cmd, "hide") && argc == 1) {
        hide();
    } else if (!strcmp(cmd, "isNew") && argc == 1) {
        Tcl_VaSetResult(interp, "%d", isNew() ? 1 : 0);
    } else if (!strcmp(cmd, "touch") && argc == 1) {
        touch();
    } else {
        McString text = McString::format("port \"%s\": unknown subcommand or wrong arguments \"%s\"; expected one of: %s",
                                          getName(), cmd, usage().c_str());
        return cmdError(interp, HX_CMD_UNKNOWN, text.c_str());
    }
    return TCL_OK;
}

bool HxPort::parseIndex(Tcl_Interp* interp, char const* text, int n, int& index) const {
    if (!parseInt(interp, text, index)) return false;
    if (n <= 0) {
        Tcl_VaSetResult(interp, "port \"%s\": index %d out of range (the port has no items)", getName(), index);
        return false;
    }
    if (index < 0 || index >= n) {
        Tcl_VaSetResult(interp, "port \"%s\": index %d out of range (0 to %d)", getName(), index, n - 1);
        return false;
    }
    return true;
}

bool HxPort::parseOptionalIndex(Tcl_Interp* interp, int argc, char** argv, int tail, int n, int& index,
                                char const* usage) const {
    const int optional = argc - 1 - tail;
    if (optional != 0 && optional != 1) {
        wrongArgs(interp, usage);
        return false;
    }
    if (optional == 0) {
        index = 0;
        if (n > 0) return true;
        Tcl_VaSetResult(interp, "port \"%s\" has no items", getName());
        return false;
    }
    return parseIndex(interp, argv[1], n, index);
}

bool HxPort::parseInt(Tcl_Interp* interp, char const* text, int& value) {
    return Tcl_GetInt(interp, text, &value) == TCL_OK;
}

bool HxPort::parseFloat(Tcl_Interp* interp, char const* text, float& value) {
    double d = 0;
    if (Tcl_GetDouble(interp, text, &d) != TCL_OK) return false;
    if (!std::isfinite(d)) {
        Tcl_VaSetResult(interp, "expected a finite number but got \"%s\"", text);
        return false;
    }
    if (std::fabs(d) > FLT_MAX) {
        Tcl_VaSetResult(interp, "the number \"%s\" is too large (at most %g in magnitude)", text,
                        static_cast<double>(FLT_MAX));
        return false;
    }
    value = static_cast<float>(d);
    return true;
}

int HxPort::wrongArgs(Tcl_Interp* interp, char const* usageText) const {
    McString text = McString::format("%s %s", getName(), usageText);
    return cmdError(interp, HX_CMD_WRONG_ARGS, text.c_str());
}
