#pragma once
// GeodesicConnector (connector name "Geodesic"): joins two nodes of any kind by the shortest
// path on the surface, straight inside triangles; the intermediate nodes are edge nodes where
// it crosses an edge and vertex nodes where it passes through a vertex.
//
// The exact computation (SurfaceShortestPath) is restricted to a band of triangles around the
// shortest edge path (A*) between vertices next to the two nodes, so a click on a large mesh
// costs what the region around the path costs. The band is `bandWidth` rings of triangles
// wide; while the result passes through a vertex on the band's border (where a wider band
// might offer a shorter way) the band is doubled, until the result stays inside or the band
// covers the whole connected part of the surface.
//
// Tcl: `connector getName`, `connector getBandWidth`, `connector setBandWidth RINGS`,
// `connector getNumBandTriangles` (triangles of the last band searched).

#include "DijkstraConnector.h"
#include "PathConnector.h"

#include <cstdint>
#include <vector>

class Surface;

class GeodesicConnector : public PathConnector {
    MC_TYPED_HEADER(GeodesicConnector)
    MC_TYPED_CREATABLE
  public:
    GeodesicConnector() = default;

    void init(SurfacePathSet* pathSet, McProgressInterface* progress) override;
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
    // The surface vertex the edge path starts or ends at for a node: the node's own vertex or
    // the nearest corner of its edge or triangle.
    static int nearestVertex(SurfaceNode const* node);
    void prepare(Surface* surface);
    // `rings` rings of triangles around the given vertices, marked as the current band.
    void collectBand(Surface const& surface, McDArray<int> const& vertices, int rings, McDArray<int>& triangles);
    bool inBand(int triangle) const { return mTriangleStamp[size_t(triangle)] == mStamp; }
    bool onBandBorder(Surface const& surface, SurfaceNode const* node) const;

    int mBandWidth = 4;
    int64_t mNumBandTriangles = 0;
    DijkstraConnector mEdgePaths;
    // Per-surface marks, current where they equal mStamp, so a band touches only its own
    // triangles and vertices.
    Surface const* mPreparedSurface = nullptr;
    std::vector<uint32_t> mTriangleStamp, mVertexStamp;
    uint32_t mStamp = 0;
};
