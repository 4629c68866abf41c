#include "PathOperation.h"

MC_TYPED_IMPL(PathOperation, McTypedObject)
