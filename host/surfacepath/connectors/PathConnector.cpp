#include "PathConnector.h"

#include "HxInterpreter.h"

#include <cstring>

MC_TYPED_IMPL(PathConnector, McTypedObject)

void PathConnector::init(SurfacePathSet* pathSet, McProgressInterface*) { mPathSet = pathSet; }

bool PathConnector::fail(McString const& reason) {
    mFailure = reason;
    return false;
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
