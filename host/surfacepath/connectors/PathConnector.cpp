#include "PathConnector.h"

#include "HxInterpreter.h"

#include <cstring>

MC_TYPED_IMPL(PathConnector, McTypedObject)

void PathConnector::init(SurfacePathSet* pathSet, McProgressInterface*) { mPathSet = pathSet; }

bool PathConnector::fail(McString const& reason) {
    mFailure = reason;
    return false;
}

Surface* PathConnector::startConnection(SurfaceNode const* from, SurfaceNode const* to,
                                        McDArray<McHandle<SurfaceNode>>& between) {
    between.clear();
    mFailure.clear();
    if (!from || !to) return nullptr;
    Surface* surface = from->getSurface();
    if (surface && to->getSurface() == surface) return surface;
    fail("the two nodes lie on different surfaces");
    return nullptr;
}

McString PathConnector::getName() const {
    McString name = getTypeId()->getName();
    static const McString suffix = "Connector";
    if (name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0)
        name.resize(name.size() - suffix.size());
    return name;
}

int PathConnector::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc == 3 && !strcmp(argv[2], "getName")) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj(getName().c_str(), -1));
        return TCL_OK;
    }
    Tcl_VaSetResult(interp, "connector %s: unknown command \"%s\" (commands: %s)", getName().c_str(),
                    argc >= 3 ? argv[2] : "", getCommands());
    return TCL_ERROR;
}

int PathConnector::parseCountOption(Tcl_Interp* interp, int argc, char** argv, char const* option,
                                    char const* valueName, char const* things, int& value) {
    if (argc < 3 || strlen(argv[2]) < 3 || strcmp(argv[2] + 3, option) != 0) return -1;
    if (!strncmp(argv[2], "get", 3) && argc == 3) {
        Tcl_SetObjResult(interp, Tcl_NewIntObj(value));
        return TCL_OK;
    }
    if (strncmp(argv[2], "set", 3) != 0) return -1;
    int count = 0;
    if (argc != 4 || Tcl_GetInt(nullptr, argv[3], &count) != TCL_OK || count < 1) {
        Tcl_VaSetResult(interp, "connector set%s %s: %s must be a whole number of %s, at least 1%s%s", option,
                        valueName, valueName, things, argc == 4 ? ", not " : "", argc == 4 ? argv[3] : "");
        return TCL_ERROR;
    }
    value = count;
    Tcl_ResetResult(interp);
    return TCL_OK;
}
