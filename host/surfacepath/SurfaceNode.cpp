#include "SurfaceNode.h"

#include "Surface.h"

#include <algorithm>
#include <cmath>

MC_TYPED_IMPL(SurfaceNode, McTypedObject)

int SurfaceNode::firstCommonElement(SurfaceNode const* other, ElementList list) const {
    if (!other || other->mSurface != mSurface) return -1;
    McDArray<int> mine, theirs;
    (this->*list)(mine);
    (other->*list)(theirs);
    for (int x : mine)
        if (theirs.findFirst(x) >= 0) return x;
    return -1;
}

int SurfaceNode::getSharedElement(SurfaceNode const* other) const {
    return firstCommonElement(other, &SurfaceNode::getTriangles);
}

int SurfaceNode::getSharedEdge(SurfaceNode const* other) const { return firstCommonElement(other, &SurfaceNode::getEdges); }

bool SurfaceNode::isSameSurfacePoint(SurfaceNode const* other, float tolerance) const {
    const int triangle = getSharedElement(other);
    if (triangle < 0) return false;
    float a[3], b[3];
    if (!getBarycentric(triangle, a) || !other->getBarycentric(triangle, b)) return false;
    for (int i = 0; i < 3; ++i)
        if (std::fabs(a[i] - b[i]) > tolerance) return false;
    return true;
}

bool SurfaceNode::validateSurface(McString& problem) const {
    if (!mSurface) {
        problem = "the node has no surface";
        return false;
    }
    if (mSurface->getNumEdges() == 0 && mSurface->getNumTriangles() > 0) {
        problem = "the surface's edges are not built";
        return false;
    }
    return true;
}
