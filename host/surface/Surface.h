#pragma once
// Surface: a triangulated surface, held by value (copyable).
//
// The primary data are `points` and `triangles` (three point indices and a patch index).
// Everything else is derived and rebuilt on request: edges and the triangles of each edge
// (createAllEdges), the neighbour across each triangle side (createNeighbours), one normal
// per triangle (computeNormalsPerTriangle) and the triangles around each point
// (computeTrianglesPerPoint). Derived tables are empty until built; a change of points or
// triangles leaves them stale until rebuilt.
//
// Edges are numbered in the order of their point pairs (points[0], then points[1]), which
// findEdge relies on. Triangle sides whose ends coincide or do not exist get no edge. Every
// table is built in linear memory and at most O(n log n) time.

#include "HxParamBundle.h"
#include "McDArray.h"
#include "McVec3f.h"

class Surface {
  public:
    struct Triangle {
        Triangle() = default;
        Triangle(int a, int b, int c, int patch_ = 0) : points{a, b, c}, patch(patch_) {}
        int points[3] = {-1, -1, -1};
        // Edge of side i (points[i] -> points[(i + 1) % 3]); -1 until createAllEdges.
        int edges[3] = {-1, -1, -1};
        int patch = 0;
    };
    struct Edge {
        int points[2] = {-1, -1};  // points[0] < points[1]
    };

    // The surface keeps a copy of the given parameters.
    explicit Surface(HxParamBundle* parameters = nullptr);

    // === Primary data
    HxParamBundle parameters;
    McDArray<McVec3f> points;
    McDArray<Triangle> triangles;

    // === Derived data
    McDArray<Edge> edges;
    // Triangles of edge e: edgeTriangles[edgeTriangleStart[e] .. edgeTriangleStart[e + 1]).
    McDArray<int> edgeTriangleStart;
    McDArray<int> edgeTriangles;
    // Triangle across side i of triangle t: neighbours[3 * t + i]; -1 at a border or where
    // the side is shared by more than two triangles.
    McDArray<int> neighbours;
    // One unit normal per triangle, (p1 - p0) x (p2 - p0); zero for a triangle without area.
    McDArray<McVec3f> normals;
    // Triangles around point p: pointTriangles[pointTriangleStart[p] .. pointTriangleStart[p + 1]).
    McDArray<int> pointTriangleStart;
    McDArray<int> pointTriangles;

    // === Operations
    // Makes this a copy of `other` (primary and derived data). The copy shares the arrays
    // until either surface writes to them, so code that only reads goes through const access.
    void copyData(Surface const& other);
    // Builds `edges`, the triangles' edge indices and the triangles of each edge.
    // With `rebuild` 0, tables that are already up to date are kept.
    void createAllEdges(int rebuild = 0);
    void createNeighbours();
    void computeNormalsPerTriangle();
    void computeTrianglesPerPoint();
    // All of the above: edges (if stale), neighbours, normals and triangles per point.
    void buildAllTables();
    // Removes triangles that repeat a point or refer to a point that does not exist; when any
    // is removed, the derived tables are cleared. Returns the number removed.
    int removeObsoleteTriangles();

    // === Queries
    int getNumPoints() const { return static_cast<int>(points.size()); }
    int getNumTriangles() const { return static_cast<int>(triangles.size()); }
    int getNumEdges() const { return static_cast<int>(edges.size()); }
    // The edge between two points, -1 if none (needs createAllEdges).
    int findEdge(int p, int q) const;
    int getNumTrianglesOfEdge(int e) const { return edgeTriangleStart[e + 1] - edgeTriangleStart[e]; }
    int const* getTrianglesOfEdge(int e) const { return edgeTriangles.dataPtr() + edgeTriangleStart[e]; }
    // Over all points; an empty surface has an empty box at the origin.
    void getBoundingBox(McVec3f& min, McVec3f& max) const;

    // === Checks (for reporting defects of loaded data)
    // Triangles whose height is negligible against their longest side (or zero).
    int countZeroAreaTriangles() const;
    // Edges shared by more than two triangles (needs createAllEdges).
    int countNonManifoldEdges() const;
    // Points where the triangles around them do not form one connected fan, such as the tip
    // shared by two cones (needs createNeighbours).
    int countNonManifoldPoints() const;

  private:
    bool edgesAreUpToDate() const;
};
