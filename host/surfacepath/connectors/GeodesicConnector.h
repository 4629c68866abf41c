#pragma once
// GeodesicConnector (connector name "Geodesic"): joins two nodes of any kind by the shortest
// path on the surface, straight inside triangles; the intermediate nodes are edge nodes where
// it crosses an edge and vertex nodes where it passes through a vertex.
//
// The exact computation (SurfaceShortestPath) is restricted to a band of triangles, so a
// click on a large mesh costs what the region around the path costs. Where the band lies
// decides which geodesic comes out: a band around the shortest edge path often misses the
// shortest one, as edge paths are up to 15% long and so may pass a feature on its other
// side. The band is therefore laid around a route through six points per edge
// (SteinerRoute), a fraction of a percent long and on the geodesic's side of nearly every
// feature, `bandWidth` rings wide. The exact path in the band then walks to the geodesic:
// while it passes through a vertex on the band's border, or is still getting shorter, the
// band is laid anew around it, and doubled where that no longer shortens it, until the path
// stays inside or the band covers its connected part of the surface. A wide band is slow
// (the exact search costs more per triangle the wider it is), while moving a narrow one
// costs little; three rings find the shortest path for nearly every pair (on small real
// meshes one pair in some 450 was another geodesic beside it, 0.3% longer).
//
// Tcl: `connector getName`, `connector getBandWidth`, `connector setBandWidth RINGS`,
// `connector getNumBandTriangles` (triangles of the last band searched).

#include "PathConnector.h"
#include "SteinerRoute.h"

#include <cstdint>
#include <vector>

class Surface;

class GeodesicConnector : public PathConnector {
    MC_TYPED_HEADER(GeodesicConnector)
    MC_TYPED_CREATABLE
  public:
    GeodesicConnector() = default;

    bool computeConnection(SurfaceNode* from, SurfaceNode* to, McDArray<McHandle<SurfaceNode>>& between,
                           McProgressInterface* progress) override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;

    // === Options
    int getBandWidth() const { return mBandWidth; }
    // At least one ring.
    void setBandWidth(int rings) { mBandWidth = rings < 1 ? 1 : rings; }

    // === Queries
    int64_t getNumBandTriangles() const { return mNumBandTriangles; }

  protected:
    char const* getCommands() const override {
        return "getName, getBandWidth, setBandWidth RINGS, getNumBandTriangles";
    }

  private:
    void prepare(Surface* surface);
    // `rings` rings of triangles around the given vertices, marked as the current band.
    void collectBand(Surface const& surface, McDArray<int> const& vertices, int rings, McDArray<int>& triangles);
    bool inBand(int triangle) const { return mTriangleStamp[size_t(triangle)] == mStamp; }
    // The vertices of the triangles a path from `from` over `between` to `to` crosses.
    static void cornersOf(SurfaceNode const* from, McDArray<McHandle<SurfaceNode>> const& between,
                          SurfaceNode const* to, McDArray<int>& corners);
    bool onBandBorder(Surface const& surface, SurfaceNode const* node) const;
    bool touchesBandBorder(Surface const& surface, McDArray<McHandle<SurfaceNode>> const& path) const;

    int mBandWidth = 3;
    int64_t mNumBandTriangles = 0;
    SteinerRoute mRoute{6};
    // Per-surface marks, current where they equal mStamp, so a band touches only its own
    // triangles and vertices.
    Surface const* mPreparedSurface = nullptr;
    std::vector<uint32_t> mTriangleStamp, mVertexStamp;
    uint32_t mStamp = 0;
};
