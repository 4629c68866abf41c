#include "TriangleStripConnector.h"

#include "HxInterpreter.h"
#include "Surface.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceGeometry.h"
#include "SurfacePathSet.h"
#include "SurfaceVertexNode.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <queue>
#include <unordered_map>
#include <vector>

MC_TYPED_IMPL_CREATABLE(TriangleStripConnector, PathConnector)

namespace {

using SurfaceGeometry::triangleAcross;

struct Vec2 {
    double x = 0, y = 0;
    Vec2 operator-(Vec2 const& o) const { return {x - o.x, y - o.y}; }
    Vec2 operator+(Vec2 const& o) const { return {x + o.x, y + o.y}; }
    Vec2 operator*(double s) const { return {x * s, y * s}; }
};

// Positive when b lies to the left of a.
double cross(Vec2 const& a, Vec2 const& b) { return a.x * b.y - a.y * b.x; }

double distance(McVec3f const& a, McVec3f const& b) {
    const McVec3f d = a - b;
    return std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z);
}

McVec3f centroid(Surface const& s, int t) {
    Surface::Triangle const& tri = s.triangles[t];
    return (s.points[tri.points[0]] + s.points[tri.points[1]] + s.points[tri.points[2]]) / 3.0f;
}

// The side of `t` shared with `other`, -1 if none.
int sharedSide(Surface const& s, int t, int other) {
    for (int side = 0; side < 3; ++side)
        if (triangleAcross(s, t, side) == other) return side;
    return -1;
}

// One side of the strip that the path passes: its two surface points, left and right as seen
// walking along the strip, and their places in the unfolded plane.
struct Portal {
    int left = -1, right = -1;
    Vec2 leftAt, rightAt;
    int edge = -1;
};

// Lays the strip flat triangle after triangle, each unfolded across the side it shares with
// its predecessor, and returns the sides between them plus the ends as zero-width portals.
class StripUnfolding {
  public:
    StripUnfolding(Surface const& s, McDArray<int> const& strip, SurfaceNode const* from, SurfaceNode const* to)
        : mSurface(s) {
        placeFirst(strip[0]);
        portals.push_back(endPortal(from, strip[0]));
        for (int64_t i = 0; i + 1 < strip.size(); ++i) {
            const int side = sharedSide(s, int(strip[i]), int(strip[i + 1]));
            Surface::Triangle const& tri = s.triangles[strip[i]];
            const int p = tri.points[side], q = tri.points[(side + 1) % 3], o = tri.points[(side + 2) % 3];
            Portal portal;
            portal.edge = tri.edges[side];
            const bool qIsLeft = cross(mPlaced[p] - mPlaced[o], mPlaced[q] - mPlaced[o]) > 0;
            portal.left = qIsLeft ? q : p;
            portal.right = qIsLeft ? p : q;
            portal.leftAt = mPlaced[portal.left];
            portal.rightAt = mPlaced[portal.right];
            portals.push_back(portal);
            placeAcross(int(strip[i + 1]), p, q, o);
        }
        portals.push_back(endPortal(to, int(strip.last())));
    }

    std::vector<Portal> portals;

  private:
    void placeFirst(int t) {
        Surface::Triangle const& tri = mSurface.triangles[t];
        const int a = tri.points[0], b = tri.points[1], c = tri.points[2];
        mPlaced[a] = {0, 0};
        mPlaced[b] = {length(a, b), 0};
        mPlaced[c] = apex(a, b, c, 1);
    }

    // Places the corner of `t` that is not p or q on the side of p-q away from o.
    void placeAcross(int t, int p, int q, int o) {
        Surface::Triangle const& tri = mSurface.triangles[t];
        for (int r : tri.points)
            if (r != p && r != q) {
                const double oSide = cross(mPlaced[q] - mPlaced[p], mPlaced[o] - mPlaced[p]);
                mPlaced[r] = apex(p, q, r, oSide > 0 ? -1 : 1);
            }
    }

    // The place of r from the places of p and q and the three side lengths; `sign` picks the
    // side of p-q (positive: left of p->q).
    Vec2 apex(int p, int q, int r, int sign) const {
        const double pq = length(p, q), pr = length(p, r), qr = length(q, r);
        const double along = pq > 0 ? (pq * pq + pr * pr - qr * qr) / (2 * pq) : 0;
        const double height = std::sqrt(std::max(0.0, pr * pr - along * along));
        const Vec2 axis = pq > 0 ? (mPlaced.at(q) - mPlaced.at(p)) * (1 / pq) : Vec2{1, 0};
        const Vec2 normal{-axis.y, axis.x};
        return mPlaced.at(p) + axis * along + normal * (sign * height);
    }

    Portal endPortal(SurfaceNode const* node, int t) {
        float bary[3] = {1, 0, 0};
        node->getBarycentric(t, bary);
        Surface::Triangle const& tri = mSurface.triangles[t];
        Vec2 at;
        for (int i = 0; i < 3; ++i) at = at + mPlaced[tri.points[i]] * bary[i];
        Portal portal;
        portal.leftAt = portal.rightAt = at;
        return portal;
    }

    double length(int a, int b) const { return distance(mSurface.points[a], mSurface.points[b]); }

    Surface const& mSurface;
    // A point met again further along the strip (around a vertex) is placed anew; the
    // portals keep the places each had when they were made.
    std::unordered_map<int, Vec2> mPlaced;
};

// A corner of the taut path: its place and the index of the portal where the funnel found it.
struct Corner {
    Vec2 at;
    int portal;
    int point;  // surface point, -1 for the two ends
};

// The simple stupid funnel algorithm (Mononen) over the portals.
std::vector<Corner> pullTaut(std::vector<Portal> const& portals) {
    const int n = int(portals.size());
    std::vector<Corner> corners{{portals[0].leftAt, 0, -1}};
    Vec2 apex = portals[0].leftAt, left = apex, right = apex;
    int apexIndex = 0, leftIndex = 0, rightIndex = 0;
    auto restartAt = [&](Vec2 const& at, int index, int point) {
        corners.push_back({at, index, point});
        apex = left = right = at;
        apexIndex = leftIndex = rightIndex = index;
    };
    for (int i = 1; i < n; ++i) {
        Portal const& portal = portals[size_t(i)];
        if (cross(right - apex, portal.rightAt - apex) >= 0) {  // the right side narrows the funnel
            if (apexIndex == rightIndex || cross(left - apex, portal.rightAt - apex) < 0) {
                right = portal.rightAt;
                rightIndex = i;
            } else {  // it crosses the left side: the left corner is on the path
                restartAt(left, leftIndex, portals[size_t(leftIndex)].left);
                i = apexIndex;
                continue;
            }
        }
        if (cross(left - apex, portal.leftAt - apex) <= 0) {  // the left side narrows the funnel
            if (apexIndex == leftIndex || cross(right - apex, portal.leftAt - apex) > 0) {
                left = portal.leftAt;
                leftIndex = i;
            } else {
                restartAt(right, rightIndex, portals[size_t(rightIndex)].right);
                i = apexIndex;
                continue;
            }
        }
    }
    if (corners.back().portal != n - 1) corners.push_back({portals.back().leftAt, n - 1, -1});
    return corners;
}

// Where the taut path crosses each inner portal, as surface nodes; a crossing at a portal's
// end is that vertex.
void crossings(Surface* surface, std::vector<Portal> const& portals, std::vector<Corner> const& corners,
               McDArray<McHandle<SurfaceNode>>& nodes) {
    size_t k = 0;
    int lastVertex = -1;
    for (int i = 1; i + 1 < int(portals.size()); ++i) {
        while (k + 2 < corners.size() && corners[k + 1].portal <= i) ++k;
        Portal const& portal = portals[size_t(i)];
        Vec2 const& a = corners[k].at;
        const Vec2 direction = corners[k + 1].at - a, side = portal.leftAt - portal.rightAt;
        const double denominator = cross(direction, side);
        double s = denominator != 0 ? cross(a - portal.rightAt, direction) / -denominator : 0;
        s = std::min(1.0, std::max(0.0, s));
        for (Corner const* corner : {&corners[k], &corners[k + 1]})  // exact where the path bends
            if (corner->point >= 0 && (corner->point == portal.left || corner->point == portal.right))
                s = corner->point == portal.left;
        const double atCorner = 1e-6;
        if (s <= atCorner || s >= 1 - atCorner) {
            const int vertex = s <= atCorner ? portal.right : portal.left;
            if (vertex != lastVertex) nodes.append(new SurfaceVertexNode(surface, vertex));
            lastVertex = vertex;
            continue;
        }
        lastVertex = -1;
        const float t = float(surface->edges[portal.edge].points[0] == portal.right ? s : 1 - s);
        nodes.append(new SurfaceEdgeNode(surface, portal.edge, t));
    }
}

bool isSameVertex(SurfaceNode const* a, SurfaceNode const* b) {
    return a->getKind() == SurfaceNode::VERTEX && b->getKind() == SurfaceNode::VERTEX && a->getElement() == b->getElement();
}

}  // namespace

void TriangleStripConnector::init(Surface* surface, McProgressInterface*) { mSurface = surface; }

void TriangleStripConnector::init(SurfacePathSet* pathSet, McProgressInterface* progress) {
    PathConnector::init(pathSet, progress);
    init(pathSet ? pathSet->getSurface() : nullptr, progress);
}

bool TriangleStripConnector::aimStrip(Surface const& s, SurfaceNode const* from, SurfaceNode const* to,
                                      McDArray<int>& strip) const {
    McDArray<int> starts, goals;
    from->getTriangles(starts);
    to->getTriangles(goals);
    const McVec3f target = to->getPosition();
    int t = -1;
    float bary[3];
    for (int candidate : starts)  // the triangle of `from` nearest to the target
        if (t < 0 || (centroid(s, candidate) - target).length2() < (centroid(s, t) - target).length2()) t = candidate;
    if (t < 0 || !from->getBarycentric(t, bary)) return false;
    double at[3] = {bary[0], bary[1], bary[2]};
    strip.clear();
    for (int step = 0; step < mSearchLimit; ++step) {
        strip.append(t);
        if (std::find(goals.begin(), goals.end(), t) != goals.end()) return true;
        Surface::Triangle const& tri = s.triangles[t];
        const McVec3f here = s.points[tri.points[0]] * float(at[0]) + s.points[tri.points[1]] * float(at[1]) +
                             s.points[tri.points[2]] * float(at[2]);
        double change[3];
        SurfaceGeometry::barycentricDirection(s, t, target - here, change);
        int leaving = -1;  // the corner whose weight reaches zero first
        double reach = 0;
        for (int i = 0; i < 3; ++i)
            if (change[i] < 0 && (leaving < 0 || -at[i] / change[i] < reach)) {
                leaving = i;
                reach = -at[i] / change[i];
            }
        if (leaving < 0) return false;
        const int side = (leaving + 1) % 3;  // the side opposite that corner
        const int next = triangleAcross(s, t, side);
        if (next < 0 || std::find(strip.begin(), strip.end(), next) != strip.end()) return false;
        const int p = tri.points[side], q = tri.points[(side + 1) % 3];
        const double weightP = std::max(0.0, at[side] + reach * change[side]);
        const double weightQ = std::max(0.0, at[(side + 1) % 3] + reach * change[(side + 1) % 3]);
        for (int i = 0; i < 3; ++i) {
            const int point = s.triangles[next].points[i];
            at[i] = point == p ? weightP / (weightP + weightQ) : point == q ? weightQ / (weightP + weightQ) : 0;
        }
        t = next;
    }
    return false;
}

bool TriangleStripConnector::findStrip(Surface const& s, SurfaceNode const* from, SurfaceNode const* to,
                                       McDArray<int>& strip) const {
    McDArray<int> starts, goals;
    from->getTriangles(starts);
    to->getTriangles(goals);
    const McVec3f target = to->getPosition();
    struct Visit {
        double cost;
        int parent;
        bool settled;
    };
    std::unordered_map<int, Visit> visits;
    using Entry = std::pair<double, int>;  // estimated total, triangle
    std::priority_queue<Entry, std::vector<Entry>, std::greater<Entry>> queue;
    auto reach = [&](int t, int parent, double cost) {
        auto found = visits.find(t);
        if (found != visits.end() && (found->second.settled || found->second.cost <= cost)) return;
        visits[t] = {cost, parent, false};
        queue.emplace(cost + distance(centroid(s, t), target), t);
    };
    for (int t : starts) reach(t, -1, distance(from->getPosition(), centroid(s, t)));
    int settled = 0;
    while (!queue.empty() && settled < mSearchLimit) {
        const int t = queue.top().second;
        queue.pop();
        Visit& visit = visits[t];
        if (visit.settled) continue;
        visit.settled = true;
        ++settled;
        if (std::find(goals.begin(), goals.end(), t) != goals.end()) {
            strip.clear();
            for (int u = t; u >= 0; u = visits[u].parent) strip.append(u);
            strip.reverse();
            return true;
        }
        for (int side = 0; side < 3; ++side) {
            const int next = triangleAcross(s, t, side);
            if (next >= 0) reach(next, t, visit.cost + distance(centroid(s, t), centroid(s, next)));
        }
    }
    return false;
}

bool TriangleStripConnector::computeConnection(SurfaceNode* from, SurfaceNode* to,
                                               McDArray<McHandle<SurfaceNode>>& between, McProgressInterface*) {
    Surface* surface = startConnection(from, to, between);
    if (!surface) return false;
    if (surface->getNumEdges() == 0 && surface->getNumTriangles() > 0) surface->createAllEdges(0);
    McDArray<int> strip;
    if (!aimStrip(*surface, from, to, strip) && !findStrip(*surface, from, to, strip)) return false;
    // Start at the last triangle that still holds `from`: earlier ones would only lead the
    // path around its own start.
    McDArray<int> fromTriangles;
    from->getTriangles(fromTriangles);
    int64_t first = 0;
    for (int64_t i = 0; i < strip.size(); ++i)
        if (std::find(fromTriangles.begin(), fromTriangles.end(), strip[i]) != fromTriangles.end()) first = i;
    strip.remove(0, first);
    StripUnfolding unfolding(*surface, strip, from, to);
    crossings(surface, unfolding.portals, pullTaut(unfolding.portals), between);
    while (!between.empty() && isSameVertex(between[0], from)) between.remove(0);
    while (!between.empty() && isSameVertex(between.last(), to)) between.remove(between.size() - 1);
    return true;
}

int TriangleStripConnector::parse(Tcl_Interp* interp, int argc, char** argv) {
    const int code = parseCountOption(interp, argc, argv, "SearchLimit", "TRIANGLES", "triangles", mSearchLimit);
    if (code >= 0) return code;
    return PathConnector::parse(interp, argc, argv);
}
