#pragma once
// SurfaceNode: a point on a triangulated surface, shared between paths through McHandle.
//
// A node keeps a plain pointer to the Surface it lies on and answers its geometric queries
// from it; it does not own the surface, and whoever owns the path set keeps the surface alive
// for as long as the nodes exist. The surface's derived tables (edges, triangles per point,
// triangle normals) must be built; SurfaceNodeFactory::setSurface builds them.
//
// Three kinds derive from it: SurfaceVertexNode (at a vertex), SurfaceEdgeNode (on an edge at
// parameter t from its first to its second point) and SurfaceTriangleNode (inside a triangle
// at barycentric parameters u, v of its second and third point).

#include "McDArray.h"
#include "McHandable.h"
#include "McHandle.h"
#include "McString.h"
#include "McTypedObject.h"
#include "McVec3f.h"

class Surface;

class SurfaceNode : public McTypedObject, public McHandable {
    MC_TYPED_HEADER(SurfaceNode)
  public:
    enum Kind { VERTEX = 0, EDGE = 1, TRIANGLE = 2 };

    explicit SurfaceNode(Surface* surface) : mSurface(surface) {}

    // Set to 1 when the user placed the node; intermediate nodes have 0.
    unsigned char isControlPoint = 0;

    // === Queries
    Surface* getSurface() const { return mSurface; }
    virtual int getKind() const = 0;
    // "Vertex", "Edge" or "Triangle".
    virtual char const* getTypeName() const = 0;
    // The vertex, edge or triangle index the node lies on.
    virtual int getElement() const = 0;
    // The node's parameters: t for an edge node, u and v for a triangle node, unused ones 0.
    virtual void getParameters(float& u, float& v) const = 0;
    virtual McVec3f getPosition() const = 0;
    // Unit surface normal at the node (averaged over the triangles that meet there).
    virtual McVec3f getNormal() const = 0;
    // The triangles the node lies on: one for a triangle node, those of its edge or vertex else.
    virtual void getTriangles(McDArray<int>& triangles) const = 0;
    // The node's barycentric coordinates in `triangle`; false if it does not lie on it.
    virtual bool getBarycentric(int triangle, float bary[3]) const = 0;

    // A triangle both nodes lie on, -1 if none.
    virtual int getSharedElement(SurfaceNode const* other) const;
    // The edge both nodes lie on, -1 if none (a triangle node lies on no edge).
    virtual int getSharedEdge(SurfaceNode const* other) const;
    // True when both nodes lie on a common triangle with barycentric coordinates that differ
    // by at most `tolerance` each.
    virtual bool isSameSurfacePoint(SurfaceNode const* other, float tolerance = 1e-5f) const;
    // False with a description in `problem` when the node does not fit its surface.
    virtual bool validate(McString& problem) const = 0;

    // === Copies
    // A new node at the same place with the same control-point flag, reference count 0, on
    // `surface` (null: the same surface).
    virtual SurfaceNode* copy(Surface* surface = nullptr) const = 0;

  protected:
    // The edges the node lies on: its own edge, or the edges around its vertex.
    virtual void getEdges(McDArray<int>& edges) const = 0;
    // Common start of every validate(): a node needs a surface with built edges.
    bool validateSurface(McString& problem) const;
    // Reads of the surface's tables go through here: const access keeps a surface that shares
    // its tables with a copy from copying them.
    Surface const& surface() const { return *mSurface; }

    Surface* mSurface;

  private:
    using ElementList = void (SurfaceNode::*)(McDArray<int>&) const;
    // The first element of this node's list that the other node's list holds too, -1 if none.
    int firstCommonElement(SurfaceNode const* other, ElementList list) const;
};
