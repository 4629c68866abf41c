#include "HxObject.h"

#include "HxPortObserver.h"

#include "HxConnection.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxPort.h"

#include <cstring>

MC_TYPED_IMPL(HxObject, HxBase)

HxObject::~HxObject() {
    detachReaders();
    for (HxPort* port : mPorts) port->detachOwner();
}

void HxObject::detachReaders() {
    // Objects reading from this one lose their source and are told so.
    while (!mDownstream.empty()) {
        HxConnection* connection = mDownstream.last();
        connection->disconnect();
        if (HxObject* reader = connection->getOwner()) reader->fire();
    }
}

void HxObject::setLabel(char const* label) {
    HxObjectPool& pool = HxObjectPool::getTheObjectPool();
    if (pool.contains(this))
        pool.renameObject(this, label);
    else
        HxBase::setLabel(label);
}

HxPort* HxObject::getPort(char const* name) const {
    for (HxPort* port : mPorts)
        if (!strcmp(port->getName(), name)) return port;
    return nullptr;
}

void HxObject::addPort(HxPort* port) { mPorts.append(port); }

void HxObject::removePort(HxPort* port) {
    const int64_t i = mPorts.findFirst(port);
    if (i >= 0) mPorts.remove(i);
}

void HxObject::addDownstream(HxConnection* connection) { mDownstream.append(connection); }

void HxObject::removeDownstream(HxConnection* connection) {
    const int64_t i = mDownstream.findFirst(connection);
    if (i >= 0) mDownstream.remove(i);
}

void HxObject::fire(int arg) {
    if (mFiring) return;  // a cycle of connections must not recurse forever
    mFiring = true;
    update();
    // Every port's new-value flag is cleared after update(), including ports that update()
    // itself created: a port made pressed in an update (an editor's freeHandDrawing button,
    // left pressed by initButtons) is seen as pressed only by code that runs inside that
    // update, never by the next fire. update() may create or delete ports, so walk a copy
    // taken after it.
    McDArray<HxPort*> ports = mPorts;
    for (HxPort* port : ports)
        if (mPorts.findFirst(port) >= 0) port->untouch();
    mTouchMask = 0;
    HxPortObserver::notifyObjectFired(this);
    McDArray<HxConnection*> downstream = mDownstream;
    for (HxConnection* connection : downstream) {
        if (mDownstream.findFirst(connection) < 0) continue;
        connection->touch();
        if (HxObject* reader = connection->getOwner()) reader->fire(arg);
    }
    mFiring = false;
}

int HxObject::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* name = argc > 0 ? argv[0] : getLabel();
    if (argc < 2) {
        McString usage = McString::format("%s SUBCOMMAND ?ARG ...?", name);
        return cmdError(interp, HX_CMD_WRONG_ARGS, usage.c_str());
    }
    char const* cmd = argv[1];
    if (!strcmp(cmd, "getLabel") && argc == 2) {
        Tcl_SetResult(interp, const_cast<char*>(getLabel()), TCL_VOLATILE);
        return TCL_OK;
    }
    if (!strcmp(cmd, "setLabel") && argc == 3) {
        setLabel(argv[2]);
        Tcl_SetResult(interp, const_cast<char*>(getLabel()), TCL_VOLATILE);
        return TCL_OK;
    }
    if (!strcmp(cmd, "fire") && argc == 2) {
        fire();
        // Updates may evaluate Tcl; their results are not the answer of `fire`.
        Tcl_ResetResult(interp);
        return TCL_OK;
    }
    if (!strcmp(cmd, "getTypeId") && argc == 2) {
        Tcl_SetResult(interp, const_cast<char*>(getTypeId()->getName()), TCL_VOLATILE);
        return TCL_OK;
    }
    if (!strcmp(cmd, "getPorts") && argc == 2) {
        for (HxPort* port : mPorts) Tcl_AppendElement(interp, port->getName());
        return TCL_OK;
    }
    if (HxPort* port = getPort(cmd)) return parsePort(interp, port, argc - 2, argv + 2);
    // Reaches a port whose name a module's own command shadows (an editor's `connector`).
    if (!strcmp(cmd, "port") && argc >= 3) {
        if (HxPort* port = getPort(argv[2])) return parsePort(interp, port, argc - 3, argv + 3);
        McString text = McString::format("%s: no port \"%s\"", name, argv[2]);
        return cmdError(interp, HX_CMD_UNKNOWN, text.c_str());
    }
    McString text = McString::format("%s: unknown command or port \"%s\" (commands: getLabel, setLabel, fire, "
                                     "getTypeId, getPorts, port NAME ..., or a port name)",
                                     name, cmd);
    return cmdError(interp, HX_CMD_UNKNOWN, text.c_str());
}

int HxObject::parsePort(Tcl_Interp* interp, HxPort* port, int argc, char** argv) {
    if (argc < 1) {
        McString usage = McString::format("%s %s SUBCOMMAND ?ARG ...? (subcommands: %s)", getLabel(),
                                          port->getName(), port->usage().c_str());
        return cmdError(interp, HX_CMD_WRONG_ARGS, usage.c_str());
    }
    return port->parse(interp, argc, argv);
}
