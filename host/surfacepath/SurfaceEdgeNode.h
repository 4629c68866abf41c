#pragma once
// SurfaceEdgeNode: a node on a surface edge at parameter t, 0 at the edge's first point and
// 1 at its second.

#include "SurfaceNode.h"

class SurfaceEdgeNode : public SurfaceNode {
    MC_TYPED_HEADER(SurfaceEdgeNode)
  public:
    SurfaceEdgeNode(Surface* surface, int edge, float t) : SurfaceNode(surface), mEdge(edge), mT(t) {}

    int getKind() const override { return EDGE; }
    char const* getTypeName() const override { return "Edge"; }
    int getElement() const override { return mEdge; }
    float getT() const { return mT; }
    void getParameters(float& u, float& v) const override {
        u = mT;
        v = 0;
    }
    McVec3f getPosition() const override;
    McVec3f getNormal() const override;
    void getTriangles(McDArray<int>& triangles) const override;
    bool getBarycentric(int triangle, float bary[3]) const override;
    bool validate(McString& problem) const override;
    SurfaceNode* copy(Surface* surface = nullptr) const override;

  protected:
    void getEdges(McDArray<int>& edges) const override;

  private:
    int mEdge;
    float mT;
};
