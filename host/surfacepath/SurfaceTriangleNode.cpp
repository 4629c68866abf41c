#include "SurfaceTriangleNode.h"

#include "Surface.h"

MC_TYPED_IMPL(SurfaceTriangleNode, SurfaceNode)

McVec3f SurfaceTriangleNode::getPosition() const {
    Surface::Triangle const& t = surface().triangles[mTriangle];
    return surface().points[t.points[0]] * (1 - mU - mV) + surface().points[t.points[1]] * mU +
           surface().points[t.points[2]] * mV;
}

McVec3f SurfaceTriangleNode::getNormal() const { return surface().normals[mTriangle]; }

void SurfaceTriangleNode::getTriangles(McDArray<int>& triangles) const {
    triangles.clear();
    triangles.append(mTriangle);
}

bool SurfaceTriangleNode::getBarycentric(int triangle, float bary[3]) const {
    if (triangle != mTriangle) return false;
    bary[0] = 1 - mU - mV;
    bary[1] = mU;
    bary[2] = mV;
    return true;
}

bool SurfaceTriangleNode::validate(McString& problem) const {
    if (!validateSurface(problem)) return false;
    if (mTriangle < 0 || mTriangle >= mSurface->getNumTriangles()) {
        problem.printf("triangle %d does not exist (the surface has %d triangles)", mTriangle,
                       mSurface->getNumTriangles());
        return false;
    }
    if (!(mU >= 0 && mU <= 1 && mV >= 0 && mV <= 1 && mU + mV <= 1 + 1e-6f)) {
        problem.printf("the parameters u=%g v=%g in triangle %d lie outside the triangle (need u, v >= 0 and u + v <= 1)",
                       mU, mV, mTriangle);
        return false;
    }
    return true;
}

SurfaceNode* SurfaceTriangleNode::copy(Surface* surface) const {
    auto* node = new SurfaceTriangleNode(surface ? surface : mSurface, mTriangle, mU, mV);
    node->isControlPoint = isControlPoint;
    return node;
}
