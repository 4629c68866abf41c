#pragma once
// TriangleBoxTree: a bounding-box hierarchy over the triangles of a mesh, so that a ray meets
// O(log n) boxes and a handful of triangles instead of every triangle.
//
// It refers to the caller's flat arrays (x y z per point, three point indices per triangle)
// and copies none of them: they must stay alive and unchanged while the tree is used. It
// keeps its own boxes and triangle order.
//
// Hand-written rather than taken from a geometry library: a page of code that builds in linear
// time after one radix sort (a tenth of a second for a million triangles), in single precision
// like the renderer.

#include <cstdint>
#include <functional>
#include <vector>

class TriangleBoxTree {
  public:
    // A ray hit: the point is origin + t * direction = (1 - u - v) p0 + u p1 + v p2.
    struct Hit {
        int triangle = -1;
        float t = 0, u = 0, v = 0;
        // True when the ray meets the side the points turn counter-clockwise around.
        bool front = true;
    };
    using HitFilter = std::function<bool(Hit const&)>;

    TriangleBoxTree(float const* points, uint32_t const* triangles, int numTriangles);

    // The nearest hit with t >= 0 that `accept` takes (null accepts every hit); false if none.
    bool nearestHit(float const origin[3], float const direction[3], HitFilter const& accept, Hit& hit) const;
    // Calls `visit` for every hit with t >= 0, in no particular order.
    void allHits(float const origin[3], float const direction[3], std::function<void(Hit const&)> const& visit) const;

    int getNumNodes() const { return static_cast<int>(mNodes.size()); }

  private:
    // A leaf holds mOrder[first .. first + count); an inner node (count 0) has its first child
    // right after it and its second at `first`.
    struct Node {
        float lo[3], hi[3];
        int32_t first;
        int32_t count;
    };
    struct Ray;

    // Orders the triangles along a space-filling curve through their centres.
    void sortAlongCurve(std::vector<float> const& centres);
    // Builds the subtree of mOrder[begin, end) at mNodes[node]; its box comes from its children.
    void build(int node, int begin, int end);
    bool intersectTriangle(Ray const& ray, int triangle, Hit& hit) const;
    // Visits the leaves the ray meets, nearest box first, while `visitLeaf` returns the
    // farthest t still of interest.
    template <class VisitLeaf>
    void traverse(Ray const& ray, float tMax, VisitLeaf visitLeaf) const;

    float const* mPoints;
    uint32_t const* mTriangles;
    std::vector<Node> mNodes;
    std::vector<int32_t> mOrder;
};
