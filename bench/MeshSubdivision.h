#pragma once
// MeshSubdivision: midpoint subdivision for benchmark meshes: every triangle becomes four,
// with one new point at the middle of every edge. The shape stays the same; the mesh grows.

class Surface;

class MeshSubdivision {
  public:
    // Replaces `surface` by its subdivision, `levels` times, and rebuilds its edges.
    static void subdivide(Surface& surface, int levels);
};
