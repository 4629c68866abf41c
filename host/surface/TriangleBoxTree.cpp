#include "TriangleBoxTree.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int kLeafSize = 4;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

void sub(float const* a, float const* b, float* out) {
    for (int i = 0; i < 3; ++i) out[i] = a[i] - b[i];
}
void cross(float const* a, float const* b, float* out) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}
float dot(float const* a, float const* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

}  // namespace

struct TriangleBoxTree::Ray {
    float origin[3], direction[3], inverse[3];
};

TriangleBoxTree::TriangleBoxTree(float const* points, uint32_t const* triangles, int numTriangles)
    : mPoints(points), mTriangles(triangles), mOrder(static_cast<size_t>(std::max(numTriangles, 0))) {
    if (numTriangles <= 0) return;
    std::vector<float> centres(3 * size_t(numTriangles));
    for (size_t t = 0; t < size_t(numTriangles); ++t) {
        for (int corner = 0; corner < 3; ++corner) {
            float const* p = mPoints + 3 * size_t(mTriangles[3 * t + corner]);
            for (int axis = 0; axis < 3; ++axis) centres[3 * t + axis] += p[axis] / 3.0f;
        }
    }
    sortAlongCurve(centres);
    mNodes.reserve(size_t(numTriangles) / 2 + 2);
    mNodes.push_back(Node{});
    build(0, 0, numTriangles);
}

namespace {

// Spreads the low 10 bits of x apart, two zero bits between neighbours.
uint32_t spreadBits(uint32_t x) {
    x &= 0x3ffu;
    x = (x | (x << 16)) & 0x030000ffu;
    x = (x | (x << 8)) & 0x0300f00fu;
    x = (x | (x << 4)) & 0x030c30c3u;
    x = (x | (x << 2)) & 0x09249249u;
    return x;
}

}  // namespace

// Morton order of the centres on a 1024^3 grid over their box, sorted by a two-pass radix
// sort: neighbours in the order are neighbours in space, so ranges of it make tight boxes.
void TriangleBoxTree::sortAlongCurve(std::vector<float> const& centres) {
    const size_t n = mOrder.size();
    float lo[3] = {kInfinity, kInfinity, kInfinity}, hi[3] = {-kInfinity, -kInfinity, -kInfinity};
    for (size_t t = 0; t < n; ++t) {
        for (int axis = 0; axis < 3; ++axis) {
            lo[axis] = std::min(lo[axis], centres[3 * t + axis]);
            hi[axis] = std::max(hi[axis], centres[3 * t + axis]);
        }
    }
    std::vector<uint32_t> keys(n), sortedKeys(n);
    for (size_t t = 0; t < n; ++t) {
        uint32_t code = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const float extent = hi[axis] - lo[axis];
            const float cell = extent > 0 ? (centres[3 * t + axis] - lo[axis]) / extent * 1023.0f : 0.0f;
            code |= spreadBits(uint32_t(std::clamp(cell, 0.0f, 1023.0f))) << axis;
        }
        keys[t] = code;
        mOrder[t] = int32_t(t);
    }
    std::vector<int32_t> sortedOrder(n);
    for (int shift = 0; shift < 32; shift += 16) {
        std::vector<size_t> start(size_t(1) << 16, 0);
        for (uint32_t key : keys) ++start[(key >> shift) & 0xffffu];
        size_t sum = 0;
        for (size_t& s : start) sum += std::exchange(s, sum);
        for (size_t i = 0; i < n; ++i) {
            const size_t to = start[(keys[i] >> shift) & 0xffffu]++;
            sortedKeys[to] = keys[i];
            sortedOrder[to] = mOrder[i];
        }
        keys.swap(sortedKeys);
        mOrder.swap(sortedOrder);
    }
}

// Leaves of kLeafSize triangles, split half and half along the curve.
void TriangleBoxTree::build(int node, int begin, int end) {
    if (end - begin <= kLeafSize) {
        Node leaf{{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}, begin, end - begin};
        for (int i = begin; i < end; ++i) {
            for (int corner = 0; corner < 3; ++corner) {
                float const* p = mPoints + 3 * size_t(mTriangles[3 * size_t(mOrder[i]) + corner]);
                for (int axis = 0; axis < 3; ++axis) {
                    leaf.lo[axis] = std::min(leaf.lo[axis], p[axis]);
                    leaf.hi[axis] = std::max(leaf.hi[axis], p[axis]);
                }
            }
        }
        mNodes[node] = leaf;
        return;
    }
    const int numLeaves = (end - begin + kLeafSize - 1) / kLeafSize;
    const int middle = begin + kLeafSize * (numLeaves / 2);
    const int firstChild = static_cast<int>(mNodes.size());
    mNodes.push_back(Node{});
    build(firstChild, begin, middle);
    const int secondChild = static_cast<int>(mNodes.size());
    mNodes.push_back(Node{});
    build(secondChild, middle, end);
    Node inner{{}, {}, secondChild, 0};
    for (int axis = 0; axis < 3; ++axis) {
        inner.lo[axis] = std::min(mNodes[firstChild].lo[axis], mNodes[secondChild].lo[axis]);
        inner.hi[axis] = std::max(mNodes[firstChild].hi[axis], mNodes[secondChild].hi[axis]);
    }
    mNodes[node] = inner;
}

// Möller and Trumbore's test; the determinant's sign says which side the ray meets.
bool TriangleBoxTree::intersectTriangle(Ray const& ray, int triangle, Hit& hit) const {
    uint32_t const* corners = mTriangles + 3 * size_t(triangle);
    float const* p0 = mPoints + 3 * size_t(corners[0]);
    float e1[3], e2[3], pv[3], tv[3], qv[3];
    sub(mPoints + 3 * size_t(corners[1]), p0, e1);
    sub(mPoints + 3 * size_t(corners[2]), p0, e2);
    cross(ray.direction, e2, pv);
    const float det = dot(e1, pv);
    if (det == 0.0f || !std::isfinite(det)) return false;
    const float inv = 1.0f / det;
    sub(ray.origin, p0, tv);
    const float u = dot(tv, pv) * inv;
    if (u < 0.0f || u > 1.0f) return false;
    cross(tv, e1, qv);
    const float v = dot(ray.direction, qv) * inv;
    if (v < 0.0f || u + v > 1.0f) return false;
    const float t = dot(e2, qv) * inv;
    if (t < 0.0f) return false;
    hit.triangle = triangle;
    hit.t = t;
    hit.u = u;
    hit.v = v;
    hit.front = det > 0.0f;
    return true;
}

template <class VisitLeaf>
void TriangleBoxTree::traverse(Ray const& ray, float tMax, VisitLeaf visitLeaf) const {
    if (mNodes.empty()) return;
    // Entry distance of the ray into a node's box, or infinity when it misses or enters
    // beyond tMax.
    auto enter = [&](Node const& node) {
        float near = 0.0f, far = tMax;
        for (int axis = 0; axis < 3; ++axis) {
            float t0 = (node.lo[axis] - ray.origin[axis]) * ray.inverse[axis];
            float t1 = (node.hi[axis] - ray.origin[axis]) * ray.inverse[axis];
            if (std::isnan(t0) || std::isnan(t1)) continue;  // the ray runs inside this slab's plane
            if (t0 > t1) std::swap(t0, t1);
            near = std::max(near, t0);
            far = std::min(far, t1);
        }
        return near <= far ? near : kInfinity;
    };
    struct Entry {
        int node;
        float t;
    };
    Entry stack[128];
    int depth = 0;
    const float rootT = enter(mNodes[0]);
    if (rootT == kInfinity) return;
    stack[depth++] = {0, rootT};
    while (depth > 0) {
        const Entry entry = stack[--depth];
        if (entry.t > tMax) continue;
        Node const& node = mNodes[entry.node];
        if (node.count > 0) {
            tMax = visitLeaf(node);
            continue;
        }
        Entry a{entry.node + 1, enter(mNodes[entry.node + 1])};
        Entry b{node.first, enter(mNodes[node.first])};
        if (a.t > b.t) std::swap(a, b);
        if (b.t != kInfinity) stack[depth++] = b;
        if (a.t != kInfinity) stack[depth++] = a;
    }
}

namespace {
void setRay(float const origin[3], float const direction[3], float* o, float* d, float* inv) {
    for (int i = 0; i < 3; ++i) {
        o[i] = origin[i];
        d[i] = direction[i];
        inv[i] = 1.0f / direction[i];
    }
}
}  // namespace

bool TriangleBoxTree::nearestHit(float const origin[3], float const direction[3], HitFilter const& accept,
                                 Hit& hit) const {
    Ray ray;
    setRay(origin, direction, ray.origin, ray.direction, ray.inverse);
    bool found = false;
    float best = kInfinity;
    traverse(ray, kInfinity, [&](Node const& leaf) {
        for (int i = leaf.first; i < leaf.first + leaf.count; ++i) {
            Hit candidate;
            if (!intersectTriangle(ray, mOrder[i], candidate) || candidate.t >= best) continue;
            if (accept && !accept(candidate)) continue;
            hit = candidate;
            best = candidate.t;
            found = true;
        }
        return best;
    });
    return found;
}

void TriangleBoxTree::allHits(float const origin[3], float const direction[3],
                              std::function<void(Hit const&)> const& visit) const {
    Ray ray;
    setRay(origin, direction, ray.origin, ray.direction, ray.inverse);
    traverse(ray, kInfinity, [&](Node const& leaf) {
        for (int i = leaf.first; i < leaf.first + leaf.count; ++i) {
            Hit candidate;
            if (intersectTriangle(ray, mOrder[i], candidate)) visit(candidate);
        }
        return kInfinity;
    });
}
