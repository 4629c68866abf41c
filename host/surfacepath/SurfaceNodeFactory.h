#pragma once
// SurfaceNodeFactory: makes surface nodes on one surface, snaps nodes to nearby vertices and
// edges, and compares nodes.
//
// Snapping and comparing use the current (mode, tolerance) pair. Callers that need their own
// setting for a while save the current pair in the backup pair, write theirs, and restore the
// current pair from the backup afterwards; all four fields are public for that reason.
// Every node made here starts with reference count 0 and belongs to whoever takes it over.

#include "SurfaceNode.h"

class SurfaceNodeFactory {
  public:
    // How the tolerance is measured.
    enum Mode : unsigned char {
        BARYCENTRIC = 1,  // in barycentric coordinates of the node's triangle or edge
        WORLD = 2,        // as a distance in world units
    };

    explicit SurfaceNodeFactory(Surface* surface = nullptr) { setSurface(surface); }

    // === Settings (written directly by callers)
    unsigned char mode = BARYCENTRIC;
    float tolerance = 1e-5f;
    unsigned char backupMode = BARYCENTRIC;
    float backupTolerance = 1e-5f;

    // === Surface
    // A new surface also gets the derived tables that nodes need built (edges, triangles per
    // point, triangle normals); whoever changes a surface in place rebuilds them.
    void setSurface(Surface* surface);
    Surface* getSurface() const { return mSurface; }
    static void prepareSurface(Surface* surface);

    // === Creation (null when the element or parameters do not fit the surface)
    SurfaceNode* createVertexNode(int vertex) const;
    SurfaceNode* createEdgeNode(int edge, float t) const;
    SurfaceNode* createTriangleNode(int triangle, float u, float v) const;
    // A node of `kind` (SurfaceNode::Kind) near `point` on triangle `triangle`: the nearest
    // corner, the nearest point on the nearest side, or the nearest point of the triangle.
    SurfaceNode* createNode(int kind, int triangle, McVec3f const& point) const;
    // The same with the kind given by its type name ("Vertex", "Edge", "Triangle").
    SurfaceNode* createNode(char const* kindName, int triangle, McVec3f const& point) const;
    // The kind for a type name, -1 if there is none of that name.
    static int kindFromName(char const* kindName);

    // === Snapping and comparing (with the current setting)
    // A vertex or edge node replacing `node` if it lies within the tolerance of a vertex or
    // edge, keeping its control-point flag; `node` itself when nothing changes.
    SurfaceNode* convertNode(SurfaceNode* node) const;
    // True when both nodes denote the same surface point within the tolerance.
    bool isEqual(SurfaceNode* a, SurfaceNode* b) const;

  private:
    // The node if it fits its surface; otherwise deletes it and returns null.
    static SurfaceNode* keepValid(SurfaceNode* node);
    // A node on side `side` of a triangle (points[side] -> points[side + 1]) at parameter s.
    static SurfaceNode* createSideNode(Surface* surface, int triangle, int side, float s);
    SurfaceNode* snapBarycentric(SurfaceNode* node) const;
    SurfaceNode* snapWorld(SurfaceNode* node) const;
    static SurfaceNode* withFlagOf(SurfaceNode* original, SurfaceNode* replacement);

    Surface* mSurface = nullptr;
};
