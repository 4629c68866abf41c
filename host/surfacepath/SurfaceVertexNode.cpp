#include "SurfaceVertexNode.h"

#include "Surface.h"

MC_TYPED_IMPL(SurfaceVertexNode, SurfaceNode)

McVec3f SurfaceVertexNode::getPosition() const { return surface().points[mVertex]; }

McVec3f SurfaceVertexNode::getNormal() const {
    McDArray<int> triangles;
    getTriangles(triangles);
    McVec3f sum;
    for (int t : triangles) sum += surface().normals[t];
    return sum.normalized();
}

void SurfaceVertexNode::getTriangles(McDArray<int>& triangles) const {
    triangles.clear();
    for (int i = surface().pointTriangleStart[mVertex]; i < surface().pointTriangleStart[mVertex + 1]; ++i)
        triangles.append(surface().pointTriangles[i]);
}

void SurfaceVertexNode::getEdges(McDArray<int>& edges) const {
    edges.clear();
    McDArray<int> triangles;
    getTriangles(triangles);
    for (int t : triangles) {
        Surface::Triangle const& triangle = surface().triangles[t];
        for (int side = 0; side < 3; ++side) {
            const int e = triangle.edges[side];
            if (e < 0 || edges.findFirst(e) >= 0) continue;
            Surface::Edge const& edge = surface().edges[e];
            if (edge.points[0] == mVertex || edge.points[1] == mVertex) edges.append(e);
        }
    }
}

// Two vertices share the edge between them; the generic test would also do, but this is the
// common case of vertex paths and needs no edge lists.
int SurfaceVertexNode::getSharedEdge(SurfaceNode const* other) const {
    if (other && other->getKind() == VERTEX && other->getSurface() == mSurface)
        return mSurface->findEdge(mVertex, other->getElement());
    return SurfaceNode::getSharedEdge(other);
}

bool SurfaceVertexNode::getBarycentric(int triangle, float bary[3]) const {
    Surface::Triangle const& t = surface().triangles[triangle];
    for (int i = 0; i < 3; ++i) bary[i] = t.points[i] == mVertex ? 1.f : 0.f;
    return t.points[0] == mVertex || t.points[1] == mVertex || t.points[2] == mVertex;
}

bool SurfaceVertexNode::validate(McString& problem) const {
    if (!validateSurface(problem)) return false;
    if (mVertex < 0 || mVertex >= mSurface->getNumPoints()) {
        problem.printf("vertex %d does not exist (the surface has %d vertices)", mVertex, mSurface->getNumPoints());
        return false;
    }
    return true;
}

SurfaceNode* SurfaceVertexNode::copy(Surface* surface) const {
    auto* node = new SurfaceVertexNode(surface ? surface : mSurface, mVertex);
    node->isControlPoint = isControlPoint;
    return node;
}
