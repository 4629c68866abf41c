#include "StraightestGeodesic.h"

#include "Surface.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceGeometry.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"

#include <algorithm>
#include <cmath>

namespace {

using SurfaceGeometry::barycentricDirection;
using SurfaceGeometry::triangleAcross;

// Coordinates within this of zero count as zero: the walk is then on a side or at a corner.
const double onSide = 1e-7;

double angleBetween(McVec3f const& a, McVec3f const& b) {
    return std::atan2(double(a.cross(b).length()), double(a.dot(b)));
}

// `direction` without its component along the unit normal of `triangle`, normalised.
McVec3f inPlane(Surface const& s, int triangle, McVec3f const& direction) {
    McVec3f const& n = s.normals[triangle];
    return (direction - n * direction.dot(n)).normalized();
}

int cornerOf(Surface const& s, int triangle, int point) {
    for (int i = 0; i < 3; ++i)
        if (s.triangles[triangle].points[i] == point) return i;
    return -1;
}

// The side of `triangle` between two of its corners.
int sideJoining(Surface const& s, int triangle, int a, int b) {
    const int ca = cornerOf(s, triangle, a), cb = cornerOf(s, triangle, b);
    return (ca + 1) % 3 == cb ? ca : cb;
}

}  // namespace

McVec3f StraightestGeodesic::position(Walker const& w) const {
    Surface::Triangle const& tri = mSurface->triangles[w.triangle];
    return mSurface->points[tri.points[0]] * float(w.at[0]) + mSurface->points[tri.points[1]] * float(w.at[1]) +
           mSurface->points[tri.points[2]] * float(w.at[2]);
}

bool StraightestGeodesic::beginAtVertex(int vertex, McVec3f const& direction, Walker& w) const {
    Surface const& s = *mSurface;
    for (int i = s.pointTriangleStart[vertex]; i < s.pointTriangleStart[vertex + 1]; ++i) {
        const int t = s.pointTriangles[i];
        const McVec3f d = inPlane(s, t, direction);
        double change[3];
        barycentricDirection(s, t, d, change);
        const int corner = cornerOf(s, t, vertex);
        if (d.length2() == 0 || change[(corner + 1) % 3] < -onSide || change[(corner + 2) % 3] < -onSide) continue;
        w.triangle = t;
        w.at[0] = w.at[1] = w.at[2] = 0;
        w.at[corner] = 1;
        w.direction = d;
        return true;
    }
    return false;
}

bool StraightestGeodesic::begin(SurfaceNode* start, McVec3f const& direction, Walker& w) const {
    if (start->getKind() == SurfaceNode::VERTEX) return beginAtVertex(start->getElement(), direction, w);
    McDArray<int> triangles;
    start->getTriangles(triangles);
    for (int t : triangles) {
        float bary[3];
        const McVec3f d = inPlane(*mSurface, t, direction);
        if (d.length2() == 0 || !start->getBarycentric(t, bary)) continue;
        double change[3];
        barycentricDirection(*mSurface, t, d, change);
        // On an edge, the direction must lead into this triangle: towards its third corner.
        bool leaves = false;
        for (int i = 0; i < 3; ++i) leaves = leaves || (bary[i] <= onSide && change[i] < 0);
        if (leaves) continue;
        w.triangle = t;
        for (int i = 0; i < 3; ++i) w.at[i] = bary[i];
        w.direction = d;
        return true;
    }
    return false;
}

bool StraightestGeodesic::crossSide(int side, Walker& w) const {
    Surface const& s = *mSurface;
    const int next = triangleAcross(s, w.triangle, side);
    if (next < 0) return false;
    Surface::Triangle const& tri = s.triangles[w.triangle];
    const int p = tri.points[side], q = tri.points[(side + 1) % 3];
    const McVec3f axis = (s.points[q] - s.points[p]).normalized();
    const McVec3f out = (w.direction - axis * w.direction.dot(axis)).normalized();
    int third = 0;
    while (s.triangles[next].points[third] == p || s.triangles[next].points[third] == q) ++third;
    const McVec3f toThird = s.points[s.triangles[next].points[third]] - s.points[p];
    const McVec3f in = (toThird - axis * toThird.dot(axis)).normalized();
    // Rotating about the edge keeps the angle to the edge the same on both sides.
    const McVec3f direction = axis * w.direction.dot(axis) + in * w.direction.dot(out);
    const double weightP = w.at[side], weightQ = w.at[(side + 1) % 3];
    for (int i = 0; i < 3; ++i) {
        const int point = s.triangles[next].points[i];
        w.at[i] = point == p ? weightP / (weightP + weightQ) : point == q ? weightQ / (weightP + weightQ) : 0;
    }
    w.triangle = next;
    w.direction = direction.normalized();
    return true;
}

bool StraightestGeodesic::passVertex(int vertex, Walker& w) const {
    Surface const& s = *mSurface;
    // The total angle around the vertex; a border vertex ends the walk.
    double total = 0;
    for (int i = s.pointTriangleStart[vertex]; i < s.pointTriangleStart[vertex + 1]; ++i) {
        const int t = s.pointTriangles[i], c = cornerOf(s, t, vertex);
        for (int side : {c, (c + 2) % 3})
            if (triangleAcross(s, t, side) < 0) return false;
        Surface::Triangle const& tri = s.triangles[t];
        total += angleBetween(s.points[tri.points[(c + 1) % 3]] - s.points[vertex], s.points[tri.points[(c + 2) % 3]] - s.points[vertex]);
    }
    // Turn from the way back around the vertex until half the total angle lies behind.
    const McVec3f v = s.points[vertex];
    int t = w.triangle, c = cornerOf(s, t, vertex);
    int first = s.triangles[t].points[(c + 1) % 3], other = s.triangles[t].points[(c + 2) % 3];
    double turned = angleBetween(-w.direction, s.points[other] - v);
    const int numTriangles = s.pointTriangleStart[vertex + 1] - s.pointTriangleStart[vertex];
    for (int step = 0; turned < total / 2 && step <= numTriangles; ++step) {
        const int next = triangleAcross(s, t, sideJoining(s, t, vertex, other));
        if (next < 0) return false;
        t = next;
        first = other;
        for (int p : s.triangles[t].points)
            if (p != vertex && p != first) other = p;
        const double wedge = angleBetween(s.points[first] - v, s.points[other] - v);
        if (turned + wedge >= total / 2) {
            const double angle = total / 2 - turned;
            const McVec3f e1 = (s.points[first] - v).normalized();
            McVec3f e2 = s.points[other] - v;
            e2 = (e2 - e1 * e2.dot(e1)).normalized();
            w.triangle = t;
            w.at[0] = w.at[1] = w.at[2] = 0;
            w.at[cornerOf(s, t, vertex)] = 1;
            w.direction = (e1 * float(std::cos(angle)) + e2 * float(std::sin(angle))).normalized();
            return true;
        }
        turned += wedge;
    }
    // Half the angle already lay in the arriving triangle (a degenerate fan): go straight on.
    return beginAtVertex(vertex, w.direction, w);
}

bool StraightestGeodesic::compute(SurfaceNode* start, McVec3f const& direction, float length,
                                  McHandle<SurfaceNode>& result) {
    result = nullptr;
    if (!mSurface || !start || start->getSurface() != mSurface) return false;
    Surface* s = mSurface;
    Walker w;
    if (!begin(start, direction, w)) return false;
    double remaining = std::max(0.0f, length);
    const int maxSteps = 4 * s->getNumTriangles() + 16;
    for (int step = 0; step < maxSteps; ++step) {
        double change[3];
        barycentricDirection(*s, w.triangle, w.direction, change);
        int leaving = -1;
        double reach = 0;
        for (int i = 0; i < 3; ++i) {
            if (change[i] >= -onSide * 1e-3) continue;  // not heading for the side opposite corner i
            const double distance = std::max(0.0, w.at[i]) / -change[i];
            if (leaving < 0 || distance < reach) {
                leaving = i;
                reach = distance;
            }
        }
        if (leaving < 0 || reach >= remaining) {  // the length runs out inside this triangle
            const double go = leaving < 0 ? 0 : remaining;
            double at[3];
            for (int i = 0; i < 3; ++i) at[i] = std::max(0.0, w.at[i] + go * change[i]);
            const double sum = at[0] + at[1] + at[2];
            result = new SurfaceTriangleNode(s, w.triangle, float(at[1] / sum), float(at[2] / sum));
            return true;
        }
        for (int i = 0; i < 3; ++i) w.at[i] = std::max(0.0, w.at[i] + reach * change[i]);
        w.at[leaving] = 0;
        remaining -= reach;
        const int side = (leaving + 1) % 3;
        Surface::Triangle const& tri = s->triangles[w.triangle];
        const int corner = w.at[side] >= 1 - onSide ? side : w.at[(side + 1) % 3] >= 1 - onSide ? (side + 1) % 3 : -1;
        if (corner >= 0) {
            const int vertex = tri.points[corner];
            if (passVertex(vertex, w)) continue;
            result = new SurfaceVertexNode(s, vertex);
            return true;
        }
        if (!crossSide(side, w)) {  // the border
            const int edge = tri.edges[side];
            const double t = s->edges[edge].points[0] == tri.points[side] ? w.at[(side + 1) % 3] : w.at[side];
            result = new SurfaceEdgeNode(s, edge, float(t));
            return true;
        }
    }
    return false;
}
