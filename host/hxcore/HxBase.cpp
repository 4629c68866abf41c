#include "HxBase.h"

MC_TYPED_IMPL(HxBase, McTypedObject)
