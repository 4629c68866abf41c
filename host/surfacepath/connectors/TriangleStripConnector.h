#pragma once
// TriangleStripConnector (connector name "TriangleStrip"): joins two nearby nodes of any kind
// by the shortest path through the strip of triangles that leads from one to the other:
// the strip is unfolded into the plane and the funnel algorithm pulls the path taut in it.
// The intermediate nodes are edge nodes where the path crosses the strip's edges and vertex
// nodes where it bends around a corner of the strip. On a plane the path is the straight
// segment.
//
// The strip is found by walking from one node towards the other, so the path is only locally
// shortest: it is meant for nodes a few triangles apart, as when smoothing moves nodes a
// little. The strip search gives up after `searchLimit` triangles.
//
// Tcl: `connector getName`, `connector getSearchLimit`, `connector setSearchLimit TRIANGLES`.

#include "PathConnector.h"

#include <cstdint>

class Surface;

class TriangleStripConnector : public PathConnector {
    MC_TYPED_HEADER(TriangleStripConnector)
    MC_TYPED_CREATABLE
  public:
    TriangleStripConnector() = default;

    using PathConnector::init;
    // Binds the connector to a surface without a path set; `progress` may be null.
    void init(Surface* surface, McProgressInterface* progress);
    void init(SurfacePathSet* pathSet, McProgressInterface* progress) override;
    bool computeConnection(SurfaceNode* from, SurfaceNode* to, McDArray<McHandle<SurfaceNode>>& between,
                           McProgressInterface* progress) override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;

    // === Options
    int getSearchLimit() const { return mSearchLimit; }
    void setSearchLimit(int triangles) { mSearchLimit = triangles < 1 ? 1 : triangles; }

  protected:
    char const* getCommands() const override { return "getName, getSearchLimit, setSearchLimit TRIANGLES"; }

  private:
    // The triangles from one of `from`'s to one of `to`'s, consecutive ones sharing a side:
    // aimStrip walks from `from` always heading for `to` in the plane of the current triangle
    // (on a plane: the triangles of the straight segment); where that walk fails (a border, a
    // loop) findStrip searches across sides from centroid to centroid. False when neither
    // finds a strip within the limit.
    bool aimStrip(Surface const& surface, SurfaceNode const* from, SurfaceNode const* to, McDArray<int>& strip) const;
    bool findStrip(Surface const& surface, SurfaceNode const* from, SurfaceNode const* to, McDArray<int>& strip) const;

    Surface* mSurface = nullptr;
    int mSearchLimit = 100000;
};
