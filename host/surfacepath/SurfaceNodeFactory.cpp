#include "SurfaceNodeFactory.h"

#include "Surface.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceGeometry.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"

#include <algorithm>
#include <cstring>
#include <utility>

void SurfaceNodeFactory::setSurface(Surface* surface) {
    if (surface == mSurface) return;
    mSurface = surface;
    prepareSurface(surface);
}

void SurfaceNodeFactory::prepareSurface(Surface* surface) {
    if (!surface) return;
    surface->createAllEdges(0);
    surface->computeTrianglesPerPoint();
    surface->computeNormalsPerTriangle();
}

SurfaceNode* SurfaceNodeFactory::keepValid(SurfaceNode* node) {
    McString problem;
    if (node->validate(problem)) return node;
    delete node;
    return nullptr;
}

SurfaceNode* SurfaceNodeFactory::createVertexNode(int vertex) const {
    return keepValid(new SurfaceVertexNode(mSurface, vertex));
}

SurfaceNode* SurfaceNodeFactory::createEdgeNode(int edge, float t) const {
    return keepValid(new SurfaceEdgeNode(mSurface, edge, t));
}

SurfaceNode* SurfaceNodeFactory::createTriangleNode(int triangle, float u, float v) const {
    return keepValid(new SurfaceTriangleNode(mSurface, triangle, u, v));
}

int SurfaceNodeFactory::kindFromName(char const* kindName) {
    if (!kindName) return -1;
    if (!strcmp(kindName, "Vertex")) return SurfaceNode::VERTEX;
    if (!strcmp(kindName, "Edge")) return SurfaceNode::EDGE;
    if (!strcmp(kindName, "Triangle")) return SurfaceNode::TRIANGLE;
    return -1;
}

SurfaceNode* SurfaceNodeFactory::createNode(char const* kindName, int triangle, McVec3f const& point) const {
    return createNode(kindFromName(kindName), triangle, point);
}

SurfaceNode* SurfaceNodeFactory::createSideNode(Surface* surface, int triangle, int side, float s) {
    Surface::Triangle const& t = std::as_const(*surface).triangles[triangle];
    const int edge = t.edges[side];
    if (edge < 0) return nullptr;
    const bool forward = std::as_const(*surface).edges[edge].points[0] == t.points[side];
    return keepValid(new SurfaceEdgeNode(surface, edge, forward ? s : 1 - s));
}

SurfaceNode* SurfaceNodeFactory::createNode(int kind, int triangle, McVec3f const& point) const {
    if (!mSurface || triangle < 0 || triangle >= mSurface->getNumTriangles()) return nullptr;
    Surface::Triangle const& t = std::as_const(*mSurface).triangles[triangle];
    McVec3f corner[3];
    for (int i = 0; i < 3; ++i) corner[i] = std::as_const(*mSurface).points[t.points[i]];
    if (kind == SurfaceNode::VERTEX) {
        int nearest = 0;
        for (int i = 1; i < 3; ++i)
            if ((corner[i] - point).length2() < (corner[nearest] - point).length2()) nearest = i;
        return createVertexNode(t.points[nearest]);
    }
    if (kind == SurfaceNode::EDGE) {
        int bestSide = 0;
        float bestS = 0, bestDist2 = 0;
        for (int side = 0; side < 3; ++side) {
            McVec3f const &a = corner[side], &b = corner[(side + 1) % 3];
            const float s = SurfaceGeometry::closestSegmentParameter(a, b, point);
            const float dist2 = (a * (1 - s) + b * s - point).length2();
            if (side == 0 || dist2 < bestDist2) {
                bestSide = side;
                bestS = s;
                bestDist2 = dist2;
            }
        }
        return createSideNode(mSurface, triangle, bestSide, bestS);
    }
    if (kind == SurfaceNode::TRIANGLE) {
        float bary[3];
        SurfaceGeometry::closestTriangleBarycentric(corner[0], corner[1], corner[2], point, bary);
        return createTriangleNode(triangle, bary[1], bary[2]);
    }
    return nullptr;
}

SurfaceNode* SurfaceNodeFactory::withFlagOf(SurfaceNode* original, SurfaceNode* replacement) {
    if (!replacement) return original;
    replacement->isControlPoint = original->isControlPoint;
    return replacement;
}

SurfaceNode* SurfaceNodeFactory::convertNode(SurfaceNode* node) const {
    if (!node || node->getKind() == SurfaceNode::VERTEX || !node->getSurface()) return node;
    return mode == WORLD ? snapWorld(node) : snapBarycentric(node);
}

SurfaceNode* SurfaceNodeFactory::snapBarycentric(SurfaceNode* node) const {
    Surface* surface = node->getSurface();
    if (node->getKind() == SurfaceNode::EDGE) {
        float t, unused;
        node->getParameters(t, unused);
        Surface::Edge const& edge = std::as_const(*surface).edges[node->getElement()];
        if (t <= tolerance) return withFlagOf(node, new SurfaceVertexNode(surface, edge.points[0]));
        if (1 - t <= tolerance) return withFlagOf(node, new SurfaceVertexNode(surface, edge.points[1]));
        return node;
    }
    const int triangle = node->getElement();
    float w[3];
    node->getBarycentric(triangle, w);
    const int largest = int(std::max_element(w, w + 3) - w);
    if (1 - w[largest] <= tolerance)
        return withFlagOf(node, new SurfaceVertexNode(surface, std::as_const(*surface).triangles[triangle].points[largest]));
    const int smallest = int(std::min_element(w, w + 3) - w);
    if (w[smallest] > tolerance) return node;
    // The side opposite the smallest weight runs from corner smallest + 1 to smallest + 2.
    const int from = (smallest + 1) % 3, to = (smallest + 2) % 3;
    const float s = w[to] / (w[from] + w[to]);
    return withFlagOf(node, createSideNode(surface, triangle, from, s));
}

SurfaceNode* SurfaceNodeFactory::snapWorld(SurfaceNode* node) const {
    Surface* surface = node->getSurface();
    const McVec3f p = node->getPosition();
    const float tol2 = tolerance * tolerance;
    if (node->getKind() == SurfaceNode::EDGE) {
        Surface::Edge const& edge = std::as_const(*surface).edges[node->getElement()];
        for (int end = 0; end < 2; ++end)
            if ((std::as_const(*surface).points[edge.points[end]] - p).length2() <= tol2)
                return withFlagOf(node, new SurfaceVertexNode(surface, edge.points[end]));
        return node;
    }
    const int triangle = node->getElement();
    Surface::Triangle const& t = std::as_const(*surface).triangles[triangle];
    int nearestCorner = -1, nearestSide = -1;
    float cornerDist2 = tol2, sideDist2 = tol2, sideS = 0;
    for (int i = 0; i < 3; ++i) {
        McVec3f const &a = std::as_const(*surface).points[t.points[i]], &b = std::as_const(*surface).points[t.points[(i + 1) % 3]];
        if ((a - p).length2() <= cornerDist2) {
            nearestCorner = i;
            cornerDist2 = (a - p).length2();
        }
        const float s = SurfaceGeometry::closestSegmentParameter(a, b, p);
        const float dist2 = (a * (1 - s) + b * s - p).length2();
        if (dist2 <= sideDist2) {
            nearestSide = i;
            sideDist2 = dist2;
            sideS = s;
        }
    }
    if (nearestCorner >= 0) return withFlagOf(node, new SurfaceVertexNode(surface, t.points[nearestCorner]));
    if (nearestSide < 0) return node;
    return withFlagOf(node, createSideNode(surface, triangle, nearestSide, sideS));
}

bool SurfaceNodeFactory::isEqual(SurfaceNode* a, SurfaceNode* b) const {
    if (!a || !b) return false;
    if (a == b) return true;
    if (mode == WORLD) return (a->getPosition() - b->getPosition()).length2() <= tolerance * tolerance;
    return a->isSameSurfacePoint(b, tolerance);
}
