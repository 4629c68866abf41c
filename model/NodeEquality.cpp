#include "NodeEquality.h"

#include "SurfaceNodeFactory.h"

bool NodeEquality::meet(SurfaceNodeFactory const& factory, SurfaceNode* a, SurfaceNode* b) {
    return factory.isEqual(a, b) && a->isSameSurfacePoint(b);
}
