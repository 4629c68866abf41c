#include "HxModule.h"

MC_TYPED_IMPL(HxModule, HxObject)

HxModule::HxModule(McTypeInfo const* dataType) : portData(this, "data", dataType) {}
