#pragma once
// SurfaceShortestPath: the exact shortest path between two surface nodes over a chosen set of
// a surface's triangles (CGAL's Surface_mesh_shortest_path, after Mitchell, Mount and
// Papadimitriou). Its cost grows with the number of triangles given, so callers hand it a band
// around where they expect the path, or every triangle when they want the global answer.
//
// This is the only translation unit that instantiates CGAL's shortest-path templates.

#include "McDArray.h"
#include "McHandle.h"
#include "McString.h"
#include "SurfaceNode.h"

class Surface;

class SurfaceShortestPath {
  public:
    struct Result {
        // The nodes from `from` to `to`, both excluded: edge nodes where the path crosses an
        // edge, vertex nodes where it passes through a vertex.
        McDArray<McHandle<SurfaceNode>> between;
        // The length as CGAL measures it.
        double length = 0;
    };

    // Shortest path within `triangles` (indices into the nodes' surface; triangles that do
    // not form a manifold with the others are left out). False, with `error` saying why, when
    // a node lies on none of the triangles or the triangles do not join the two nodes.
    static bool compute(McDArray<int> const& triangles, SurfaceNode const* from, SurfaceNode const* to,
                        Result& result, McString& error);
    // Over every triangle of the surface.
    static bool compute(SurfaceNode const* from, SurfaceNode const* to, Result& result, McString& error);
};
