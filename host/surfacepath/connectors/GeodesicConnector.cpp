#include "GeodesicConnector.h"

#include "HxInterpreter.h"
#include "Surface.h"
#include "SurfacePathSet.h"
#include "SurfaceShortestPath.h"

#include <algorithm>
#include <cmath>
#include <cstring>

MC_TYPED_IMPL_CREATABLE(GeodesicConnector, PathConnector)

void GeodesicConnector::prepare(Surface* surface) {
    if (surface->pointTriangleStart.size() != surface->getNumPoints() + 1) surface->computeTrianglesPerPoint();
    if (surface->getNumEdges() == 0 && surface->getNumTriangles() > 0) surface->createAllEdges(0);
    if (surface == mPreparedSurface && mTriangleStamp.size() == size_t(surface->getNumTriangles()) &&
        mVertexStamp.size() == size_t(surface->getNumPoints()))
        return;
    mTriangleStamp.assign(size_t(surface->getNumTriangles()), 0);
    mVertexStamp.assign(size_t(surface->getNumPoints()), 0);
    mStamp = 0;
    mPreparedSurface = surface;
}

void GeodesicConnector::collectBand(Surface const& surface, McDArray<int> const& vertices, int rings,
                                    McDArray<int>& triangles) {
    if (++mStamp == 0) {  // the counter wrapped: old marks could look current
        std::fill(mTriangleStamp.begin(), mTriangleStamp.end(), 0);
        std::fill(mVertexStamp.begin(), mVertexStamp.end(), 0);
        mStamp = 1;
    }
    triangles.clear();
    McDArray<int> frontier, next;
    for (int v : vertices)
        if (mVertexStamp[size_t(v)] != mStamp) {
            mVertexStamp[size_t(v)] = mStamp;
            frontier.append(v);
        }
    for (int ring = 0; ring < rings && !frontier.empty(); ++ring) {
        next.clear();
        for (int v : frontier)
            for (int i = surface.pointTriangleStart[v]; i < surface.pointTriangleStart[v + 1]; ++i) {
                const int t = surface.pointTriangles[i];
                if (inBand(t)) continue;
                mTriangleStamp[size_t(t)] = mStamp;
                triangles.append(t);
                for (int p : surface.triangles[t].points)
                    if (mVertexStamp[size_t(p)] != mStamp) {
                        mVertexStamp[size_t(p)] = mStamp;
                        next.append(p);
                    }
            }
        std::swap(frontier, next);
    }
}

bool GeodesicConnector::onBandBorder(Surface const& surface, SurfaceNode const* node) const {
    McDArray<int> triangles;
    if (node->getKind() == SurfaceNode::VERTEX) {
        const int v = node->getElement();
        for (int i = surface.pointTriangleStart[v]; i < surface.pointTriangleStart[v + 1]; ++i)
            if (!inBand(surface.pointTriangles[i])) return true;
        return false;
    }
    node->getTriangles(triangles);
    for (int t : triangles)
        if (!inBand(t)) return true;
    return false;
}

void GeodesicConnector::cornersOf(SurfaceNode const* from, McDArray<McHandle<SurfaceNode>> const& between,
                                  SurfaceNode const* to, McDArray<int>& corners) {
    Surface const& surface = *from->getSurface();
    corners.clear();
    McDArray<int> triangles;
    for (SurfaceNode const* end : {from, to}) {
        end->getTriangles(triangles);
        for (int t : triangles) corners.append(3, surface.triangles[t].points);
    }
    for (SurfaceNode const* node : between) {
        if (node->getKind() == SurfaceNode::VERTEX) corners.append(node->getElement());
        else corners.append(2, surface.edges[node->getElement()].points);
    }
}

bool GeodesicConnector::touchesBandBorder(Surface const& surface, McDArray<McHandle<SurfaceNode>> const& path) const {
    return std::any_of(path.begin(), path.end(), [&](SurfaceNode* node) { return onBandBorder(surface, node); });
}

bool GeodesicConnector::computeConnection(SurfaceNode* from, SurfaceNode* to,
                                          McDArray<McHandle<SurfaceNode>>& between, McProgressInterface*) {
    mNumBandTriangles = 0;
    Surface* surface = startConnection(from, to, between);
    if (!surface) return false;
    prepare(surface);
    McDArray<int> around;
    if (!mRoute.find(from, to, around)) return fail("no path on the surface joins the two nodes");

    McDArray<int> band;
    SurfaceShortestPath::Result result;
    McString error;
    double previousLength = HUGE_VAL;
    int64_t previousSize = -1;
    bool widened = false;
    for (int rings = mBandWidth;;) {
        collectBand(*surface, around, rings, band);
        if (widened && band.size() == previousSize) break;  // the whole connected part: nothing to add
        mNumBandTriangles = band.size();
        if (!SurfaceShortestPath::compute(band, from, to, result, error)) return fail(error);
        const bool shortened = result.length < previousLength * (1 - 1e-6);
        const bool firstBand = previousLength == HUGE_VAL;
        if (!touchesBandBorder(*surface, result.between) && (firstBand || !shortened)) break;
        widened = !shortened;
        if (widened) rings *= 2;
        previousLength = result.length;
        previousSize = band.size();
        cornersOf(from, result.between, to, around);
    }
    between = result.between;
    return true;
}

int GeodesicConnector::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc == 3 && !strcmp(argv[2], "getNumBandTriangles")) {
        Tcl_SetObjResult(interp, Tcl_NewWideIntObj(mNumBandTriangles));
        return TCL_OK;
    }
    const int code = parseCountOption(interp, argc, argv, "BandWidth", "RINGS", "triangle rings", mBandWidth);
    if (code >= 0) return code;
    return PathConnector::parse(interp, argc, argv);
}
