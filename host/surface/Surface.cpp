#include "Surface.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace {

// Ends of side i of a triangle, in the triangle's order.
inline int sideStart(Surface::Triangle const& t, int i) { return t.points[i]; }
inline int sideEnd(Surface::Triangle const& t, int i) { return t.points[(i + 1) % 3]; }

// A side gets an edge only when both ends exist and differ.
inline bool sideHasEdge(Surface::Triangle const& t, int i, int numPoints) {
    const int a = sideStart(t, i), b = sideEnd(t, i);
    return a != b && a >= 0 && b >= 0 && a < numPoints && b < numPoints;
}

// Turns per-bucket counts in start[1..n] into bucket starts (a compressed row table).
void countsToStarts(McDArray<int>& start) {
    for (int64_t i = 1; i < start.size(); ++i) start[i] += start[i - 1];
}

// Finds the representative of a set and halves the path to it on the way.
int findRoot(McDArray<int>& parent, int i) {
    while (parent[i] != i) {
        parent[i] = parent[parent[i]];
        i = parent[i];
    }
    return i;
}

void unite(McDArray<int>& parent, int a, int b) {
    a = findRoot(parent, a);
    b = findRoot(parent, b);
    if (a != b) parent[std::max(a, b)] = std::min(a, b);
}

int cornerOf(Surface::Triangle const& t, int point) {
    for (int i = 0; i < 3; ++i)
        if (t.points[i] == point) return i;
    return -1;
}

}  // namespace

Surface::Surface(HxParamBundle* parameters) {
    if (parameters) this->parameters = *parameters;
}

void Surface::copyData(Surface const& other) {
    if (this != &other) *this = other;
}

bool Surface::edgesAreUpToDate() const {
    const int numPoints = getNumPoints();
    if (edgeTriangleStart.size() != edges.size() + 1 || edgeTriangleStart.last() != edgeTriangles.size()) return false;
    int64_t numSides = 0;
    for (Triangle const& t : triangles) {
        for (int i = 0; i < 3; ++i) {
            const int e = t.edges[i];
            if (!sideHasEdge(t, i, numPoints)) {
                if (e != -1) return false;
                continue;
            }
            ++numSides;
            const int a = std::min(sideStart(t, i), sideEnd(t, i));
            const int b = std::max(sideStart(t, i), sideEnd(t, i));
            if (e < 0 || e >= getNumEdges() || edges[e].points[0] != a || edges[e].points[1] != b) return false;
        }
    }
    return numSides == edgeTriangles.size();
}

// Sorts the triangle sides into buckets by their lower point and, inside a bucket, by the
// upper point; equal pairs then lie next to each other and become one edge. Linear apart
// from the small per-bucket sorts.
void Surface::createAllEdges(int rebuild) {
    if (!rebuild && edgesAreUpToDate()) return;
    const int numPoints = getNumPoints();
    const int numTriangles = getNumTriangles();
    auto lowerOf = [this](int side) {
        Triangle const& t = triangles[side / 3];
        return std::min(sideStart(t, side % 3), sideEnd(t, side % 3));
    };
    auto upperOf = [this](int side) {
        Triangle const& t = triangles[side / 3];
        return std::max(sideStart(t, side % 3), sideEnd(t, side % 3));
    };

    McDArray<int> bucketStart(numPoints + 1);
    for (int t = 0; t < numTriangles; ++t)
        for (int i = 0; i < 3; ++i)
            if (sideHasEdge(triangles[t], i, numPoints)) ++bucketStart[lowerOf(3 * t + i) + 1];
    countsToStarts(bucketStart);
    McDArray<int> sides(bucketStart.last());
    McDArray<int> fill = bucketStart;
    for (int t = 0; t < numTriangles; ++t) {
        for (int i = 0; i < 3; ++i) {
            triangles[t].edges[i] = -1;
            if (sideHasEdge(triangles[t], i, numPoints)) sides[fill[lowerOf(3 * t + i)]++] = 3 * t + i;
        }
    }
    int numEdges = 0;
    for (int p = 0; p < numPoints; ++p) {
        int* begin = sides.dataPtr() + bucketStart[p];
        int* end = sides.dataPtr() + bucketStart[p + 1];
        std::sort(begin, end, [&](int a, int b) {
            const int ua = upperOf(a), ub = upperOf(b);
            return ua != ub ? ua < ub : a < b;
        });
        for (int* s = begin; s != end; ++s)
            if (s == begin || upperOf(*s) != upperOf(s[-1])) ++numEdges;
    }

    edges.resize(numEdges);
    edgeTriangleStart.resize(numEdges + 1);
    edgeTriangles.resize(sides.size());
    int e = -1;
    for (int64_t k = 0; k < sides.size(); ++k) {
        const int side = sides[k];
        if (k == 0 || lowerOf(side) != lowerOf(sides[k - 1]) || upperOf(side) != upperOf(sides[k - 1])) {
            ++e;
            edges[e].points[0] = lowerOf(side);
            edges[e].points[1] = upperOf(side);
            edgeTriangleStart[e] = static_cast<int>(k);
        }
        triangles[side / 3].edges[side % 3] = e;
        edgeTriangles[k] = side / 3;
    }
    edgeTriangleStart[numEdges] = static_cast<int>(sides.size());
}

void Surface::createNeighbours() {
    createAllEdges(0);
    neighbours.resize(3 * triangles.size());
    neighbours.fill(-1);
    for (int t = 0; t < getNumTriangles(); ++t) {
        for (int i = 0; i < 3; ++i) {
            const int e = std::as_const(triangles)[t].edges[i];
            if (e < 0 || getNumTrianglesOfEdge(e) != 2) continue;
            int const* pair = getTrianglesOfEdge(e);
            const int other = pair[0] == t ? pair[1] : pair[0];
            if (other != t) neighbours[3 * t + i] = other;
        }
    }
}

void Surface::computeNormalsPerTriangle() {
    const int numPoints = getNumPoints();
    Surface const& self = *this;  // const reads: arrays shared with a copy stay shared
    normals.resize(triangles.size());
    for (int t = 0; t < getNumTriangles(); ++t) {
        int const* p = self.triangles[t].points;
        normals[t] = McVec3f();
        if (std::any_of(p, p + 3, [numPoints](int i) { return i < 0 || i >= numPoints; })) continue;
        // In double precision, so that small triangles far from the origin keep their normal.
        double u[3] = {}, v[3] = {};
        for (int k = 0; k < 3; ++k) {
            u[k] = double(self.points[p[1]][k]) - self.points[p[0]][k];
            v[k] = double(self.points[p[2]][k]) - self.points[p[0]][k];
        }
        const double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        if (length > 0) normals[t] = McVec3f(float(n[0] / length), float(n[1] / length), float(n[2] / length));
    }
}

void Surface::computeTrianglesPerPoint() {
    const int numPoints = getNumPoints();
    // A triangle that repeats a point is listed once around it.
    auto isNewCorner = [numPoints](Triangle const& t, int i) {
        const int p = t.points[i];
        return p >= 0 && p < numPoints && std::find(t.points, t.points + i, p) == t.points + i;
    };
    pointTriangleStart.resize(numPoints + 1);
    pointTriangleStart.fill(0);
    Surface const& self = *this;  // const reads: arrays shared with a copy stay shared
    for (Triangle const& t : self.triangles)
        for (int i = 0; i < 3; ++i)
            if (isNewCorner(t, i)) ++pointTriangleStart[t.points[i] + 1];
    countsToStarts(pointTriangleStart);
    pointTriangles.resize(pointTriangleStart.last());
    McDArray<int> fill = pointTriangleStart;
    for (int t = 0; t < getNumTriangles(); ++t)
        for (int i = 0; i < 3; ++i)
            if (isNewCorner(self.triangles[t], i)) pointTriangles[fill[self.triangles[t].points[i]]++] = t;
}

void Surface::buildAllTables() {
    createAllEdges(0);
    createNeighbours();
    computeNormalsPerTriangle();
    computeTrianglesPerPoint();
}

int Surface::removeObsoleteTriangles() {
    const int numPoints = getNumPoints();
    auto isObsolete = [numPoints](Triangle const& t) {
        int const* p = t.points;
        return p[0] == p[1] || p[1] == p[2] || p[2] == p[0] ||
               std::any_of(p, p + 3, [numPoints](int i) { return i < 0 || i >= numPoints; });
    };
    if (std::none_of(std::as_const(triangles).begin(), std::as_const(triangles).end(), isObsolete)) return 0;
    Triangle* kept = std::remove_if(triangles.begin(), triangles.end(), isObsolete);
    const int removed = static_cast<int>(triangles.end() - kept);
    triangles.resize(kept - triangles.begin());
    for (Triangle& t : triangles) std::fill(t.edges, t.edges + 3, -1);
    for (McDArray<int>* table : {&edgeTriangleStart, &edgeTriangles, &neighbours, &pointTriangleStart, &pointTriangles})
        table->clear();
    edges.clear();
    normals.clear();
    return removed;
}

int Surface::findEdge(int p, int q) const {
    if (p == q) return -1;
    Edge key;
    key.points[0] = std::min(p, q);
    key.points[1] = std::max(p, q);
    auto before = [](Edge const& a, Edge const& b) {
        return a.points[0] != b.points[0] ? a.points[0] < b.points[0] : a.points[1] < b.points[1];
    };
    Edge const* found = std::lower_bound(edges.begin(), edges.end(), key, before);
    if (found == edges.end() || before(key, *found)) return -1;
    return static_cast<int>(found - edges.begin());
}

void Surface::getBoundingBox(McVec3f& min, McVec3f& max) const {
    min = max = points.empty() ? McVec3f() : points[0];
    for (McVec3f const& p : points) {
        for (int k = 0; k < 3; ++k) {
            min[k] = std::min(min[k], p[k]);
            max[k] = std::max(max[k], p[k]);
        }
    }
}

int Surface::countZeroAreaTriangles() const {
    const int numPoints = getNumPoints();
    int count = 0;
    for (Triangle const& t : triangles) {
        int const* p = t.points;
        if (std::any_of(p, p + 3, [numPoints](int i) { return i < 0 || i >= numPoints; })) continue;
        McVec3f const& a = points[p[0]];
        McVec3f const& b = points[p[1]];
        McVec3f const& c = points[p[2]];
        const double twiceArea = (b - a).cross(c - a).length();
        const double longest2 = std::max({(b - a).length2(), (c - b).length2(), (a - c).length2()});
        // Height below 1e-7 of the longest side: at the resolution of float coordinates.
        if (twiceArea <= 1e-7 * longest2) ++count;
    }
    return count;
}

int Surface::countNonManifoldEdges() const {
    int count = 0;
    for (int e = 0; e + 1 < edgeTriangleStart.size(); ++e)
        if (getNumTrianglesOfEdge(e) > 2) ++count;
    return count;
}

// Joins the corners of neighbouring triangles that sit on the same point; a point whose
// corners fall into more than one group is where separate fans touch.
int Surface::countNonManifoldPoints() const {
    const int numPoints = getNumPoints();
    const int numCorners = 3 * getNumTriangles();
    McDArray<int> group(numCorners);
    std::iota(group.begin(), group.end(), 0);
    for (int t = 0; t < getNumTriangles() && neighbours.size() == numCorners; ++t) {
        for (int i = 0; i < 3; ++i) {
            const int n = neighbours[3 * t + i];
            if (n < 0) continue;
            for (int end : {i, (i + 1) % 3}) {
                const int j = cornerOf(triangles[n], triangles[t].points[end]);
                if (j >= 0) unite(group, 3 * t + end, 3 * n + j);
            }
        }
    }
    McDArray<int> groupsAtPoint(numPoints);
    for (int c = 0; c < numCorners; ++c) {
        const int p = triangles[c / 3].points[c % 3];
        if (p >= 0 && p < numPoints && findRoot(group, c) == c) ++groupsAtPoint[p];
    }
    return static_cast<int>(std::count_if(groupsAtPoint.begin(), groupsAtPoint.end(), [](int n) { return n > 1; }));
}
