#pragma once
// SurfaceVertexNode: a node at a surface vertex.

#include "SurfaceNode.h"

class SurfaceVertexNode : public SurfaceNode {
    MC_TYPED_HEADER(SurfaceVertexNode)
  public:
    SurfaceVertexNode(Surface* surface, int vertex) : SurfaceNode(surface), mVertex(vertex) {}

    int getKind() const override { return VERTEX; }
    char const* getTypeName() const override { return "Vertex"; }
    int getElement() const override { return mVertex; }
    void getParameters(float& u, float& v) const override { u = v = 0; }
    McVec3f getPosition() const override;
    McVec3f getNormal() const override;
    void getTriangles(McDArray<int>& triangles) const override;
    bool getBarycentric(int triangle, float bary[3]) const override;
    int getSharedEdge(SurfaceNode const* other) const override;
    bool validate(McString& problem) const override;
    SurfaceNode* copy(Surface* surface = nullptr) const override;

  protected:
    void getEdges(McDArray<int>& edges) const override;

  private:
    int mVertex;
};
