#include "SurfaceEdgeNode.h"

#include "Surface.h"

#include <cmath>

MC_TYPED_IMPL(SurfaceEdgeNode, SurfaceNode)

McVec3f SurfaceEdgeNode::getPosition() const {
    Surface::Edge const& edge = surface().edges[mEdge];
    return surface().points[edge.points[0]] * (1 - mT) + surface().points[edge.points[1]] * mT;
}

McVec3f SurfaceEdgeNode::getNormal() const {
    McVec3f sum;
    for (int i = 0; i < mSurface->getNumTrianglesOfEdge(mEdge); ++i)
        sum += surface().normals[mSurface->getTrianglesOfEdge(mEdge)[i]];
    return sum.normalized();
}

void SurfaceEdgeNode::getTriangles(McDArray<int>& triangles) const {
    triangles.clear();
    triangles.append(mSurface->getNumTrianglesOfEdge(mEdge), mSurface->getTrianglesOfEdge(mEdge));
}

void SurfaceEdgeNode::getEdges(McDArray<int>& edges) const {
    edges.clear();
    edges.append(mEdge);
}

bool SurfaceEdgeNode::getBarycentric(int triangle, float bary[3]) const {
    Surface::Edge const& edge = surface().edges[mEdge];
    Surface::Triangle const& t = surface().triangles[triangle];
    int found = 0;
    for (int i = 0; i < 3; ++i) {
        bary[i] = 0;
        if (t.points[i] == edge.points[0]) {
            bary[i] = 1 - mT;
            ++found;
        } else if (t.points[i] == edge.points[1]) {
            bary[i] = mT;
            ++found;
        }
    }
    return found == 2;
}

bool SurfaceEdgeNode::validate(McString& problem) const {
    if (!validateSurface(problem)) return false;
    if (mEdge < 0 || mEdge >= mSurface->getNumEdges()) {
        problem.printf("edge %d does not exist (the surface has %d edges)", mEdge, mSurface->getNumEdges());
        return false;
    }
    if (!(mT >= 0 && mT <= 1)) {
        problem.printf("the parameter %g along edge %d lies outside [0,1]", mT, mEdge);
        return false;
    }
    return true;
}

SurfaceNode* SurfaceEdgeNode::copy(Surface* surface) const {
    auto* node = new SurfaceEdgeNode(surface ? surface : mSurface, mEdge, mT);
    node->isControlPoint = isControlPoint;
    return node;
}
