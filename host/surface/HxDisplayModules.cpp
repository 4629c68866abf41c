#include "HxDisplayModules.h"

#include "HxModule.h"
#include "HxObjectPool.h"

McDArray<HxModule*> HxDisplayModules::find(HxObject const* data, McTypeInfo const* type) {
    McDArray<HxModule*> displays;
    for (HxConnection* connection : data->getDownstreamConnections()) {
        HxObject* owner = connection->getOwner();
        if (!owner || !owner->isOfType(type) || !owner->isOfType(HxModule::getClassTypeId())) continue;
        auto* module = static_cast<HxModule*>(owner);
        if (connection == &module->portData) displays.append(module);
    }
    return displays;
}

void HxDisplayModules::add(HxModule* display, HxObject* data) {
    display->HxBase::setLabel(McString::format("%s-display", data->getLabel()).c_str());
    display->portData.connect(data);
    HxObjectPool::getTheObjectPool().addObject(display);
    display->fire();
}

void HxDisplayModules::remove(HxObject* data, McTypeInfo const* type) {
    for (HxModule* display : find(data, type)) {
        display->portData.disconnect();
        display->fire();
        HxObjectPool::getTheObjectPool().removeObject(display);
    }
}
