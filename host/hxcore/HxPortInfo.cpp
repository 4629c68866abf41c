#include "HxPortInfo.h"

#include "HxInterpreter.h"

#include <cstdarg>
#include <cstring>

HxPortInfo::HxPortInfo(HxObject* owner, char const* name) : HxPort(owner, name) {}

void HxPortInfo::printf(char const* format, ...) {
    va_list args;
    va_start(args, format);
    mText.vprintf(format, args);
    va_end(args);
}

McString HxPortInfo::usage() const { return "getText, " + HxPort::usage(); }

int HxPortInfo::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc > 0 && !strcmp(argv[0], "getText")) {
        if (argc != 1) return wrongArgs(interp, "getText");
        Tcl_SetResult(interp, const_cast<char*>(getText()), TCL_VOLATILE);
        return TCL_OK;
    }
    return HxPort::parse(interp, argc, argv);
}
