#include "HxPortObserver.h"

namespace {
HxPortObserver* theObserver = nullptr;
}

void HxPortObserver::setObserver(HxPortObserver* observer) { theObserver = observer; }

void HxPortObserver::notifyPortsChanged(HxObject* object) {
    if (theObserver) theObserver->portsChanged(object);
}

void HxPortObserver::notifyObjectFired(HxObject* object) {
    if (theObserver) theObserver->objectFired(object);
}

void HxPortObserver::notifyPoolChanged() {
    if (theObserver) theObserver->poolChanged();
}
