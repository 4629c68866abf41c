#include "McTypedObject.h"

McTypeInfo const* McTypedObject::getClassTypeId() {
    static McTypeInfo const type("McTypedObject", nullptr, nullptr);
    return &type;
}

McTypeInfo const* McTypedObject::getTypeId() const { return getClassTypeId(); }
