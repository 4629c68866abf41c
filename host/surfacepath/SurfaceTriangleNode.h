#pragma once
// SurfaceTriangleNode: a node inside a triangle at barycentric parameters u and v, the
// weights of the triangle's second and third point (the first has 1 - u - v).

#include "SurfaceNode.h"

class SurfaceTriangleNode : public SurfaceNode {
    MC_TYPED_HEADER(SurfaceTriangleNode)
  public:
    SurfaceTriangleNode(Surface* surface, int triangle, float u, float v)
        : SurfaceNode(surface), mTriangle(triangle), mU(u), mV(v) {}

    int getKind() const override { return TRIANGLE; }
    char const* getTypeName() const override { return "Triangle"; }
    int getElement() const override { return mTriangle; }
    void getParameters(float& u, float& v) const override {
        u = mU;
        v = mV;
    }
    McVec3f getPosition() const override;
    McVec3f getNormal() const override;
    void getTriangles(McDArray<int>& triangles) const override;
    bool getBarycentric(int triangle, float bary[3]) const override;
    bool validate(McString& problem) const override;
    SurfaceNode* copy(Surface* surface = nullptr) const override;

  protected:
    void getEdges(McDArray<int>& edges) const override { edges.clear(); }

  private:
    int mTriangle;
    float mU, mV;
};
