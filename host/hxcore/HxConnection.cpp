#include "HxConnection.h"

#include "HxInterpreter.h"
#include "HxObject.h"
#include "HxObjectPool.h"

#include <cstring>

HxConnection::HxConnection(HxObject* owner, char const* name, McTypeInfo const* type)
    : HxPort(owner, name), mType(type) {}

HxConnection::~HxConnection() { disconnect(); }

bool HxConnection::accepts(HxObject* object) const {
    return object && object != getOwner() && (!mType || object->isOfType(mType));
}

bool HxConnection::connect(HxObject* object) {
    if (object == mSource) return true;
    if (object && !accepts(object)) return false;
    disconnect();
    mSource = object;
    if (mSource) mSource->addDownstream(this);
    touch();
    return true;
}

void HxConnection::disconnect() {
    if (!mSource) return;
    mSource->removeDownstream(this);
    mSource = nullptr;
    touch();
}

McString HxConnection::usage() const { return "connect OBJECT, disconnect, source, " + HxPort::usage(); }

int HxConnection::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc < 1) return HxPort::parse(interp, argc, argv);
    if (!strcmp(argv[0], "source") && argc == 1) {
        Tcl_SetResult(interp, const_cast<char*>(mSource ? mSource->getLabel() : ""), TCL_VOLATILE);
        return TCL_OK;
    }
    if (!strcmp(argv[0], "disconnect") && argc == 1) {
        disconnect();
        return TCL_OK;
    }
    if (strcmp(argv[0], "connect") != 0) return HxPort::parse(interp, argc, argv);
    if (argc != 2) return wrongArgs(interp, "connect OBJECT");
    HxObject* object = HxObjectPool::getTheObjectPool().findObject(argv[1]);
    if (!object) {
        Tcl_VaSetResult(interp, "cannot connect \"%s\": there is no object named \"%s\"", getName(), argv[1]);
        return TCL_ERROR;
    }
    if (!connect(object)) {
        Tcl_VaSetResult(interp, "cannot connect \"%s\" to \"%s\": it needs an object of class %s, not %s",
                        getName(), argv[1], mType ? mType->getName() : "any", object->getTypeId()->getName());
        return TCL_ERROR;
    }
    return TCL_OK;
}
