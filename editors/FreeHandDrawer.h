#pragma once
// FreeHandDrawer: turns a mouse stroke over the displayed surface into surface nodes. While
// active it samples every motion of viewer 0 by a ray pick, drops samples too close to the
// previous one and draws the stroke as an overlay; handleDrag then joins the samples with a
// connector into node lists, split where the connector finds no way.
//
// The drawer owns its samples (through handles). The surface, the path set and the
// connector are the editor's. Whoever destroys an active drawer deactivates it first: the
// controller would otherwise keep calling it.

#include "McDArray.h"
#include "McHandle.h"
#include "McTypedObject.h"
#include "McVec2i.h"
#include "McVec3f.h"
#include "SurfaceNode.h"

class HxDisplaySurface;
class HxSurface;
class HxSurfacePathSet;
class HxViewer;
class PathConnector;
class SbVec3f;
class SbViewVolume;
class SoEvent;
class SoPickedPointList;

class FreeHandDrawer : public McTypedObject {
    MC_TYPED_HEADER(FreeHandDrawer)
  public:
    using NodeList = McDArray<McHandle<SurfaceNode>>;

    FreeHandDrawer(HxSurface* surface, HxSurfacePathSet* pathSet);
    ~FreeHandDrawer() override = default;
    FreeHandDrawer(FreeHandDrawer const&) = delete;
    FreeHandDrawer& operator=(FreeHandDrawer const&) = delete;

    // === Stroke
    // Starts sampling with nodes of `nodeType` (SurfaceNode::Kind). Without a connector or
    // with a negative type the drawer is marked active but samples nothing. No effect while
    // active.
    void activate(int nodeType, PathConnector* connector);
    void deactivate();
    // Converts the samples into node lists (`pieces`), releases them and fires the path set.
    // Leaves `pieces` alone when there is no connector or no sample.
    void handleDrag(McDArray<NodeList>& pieces);

    // === Viewer
    // Registered with the controller; never consumes an event.
    static int dragCallBack(SoEvent const* e, HxViewer* v, void* data);
    int dragCB(SoEvent const* e);
    // 1 with the hit's world position, triangle and picked points when the ray through
    // window position `pos` meets the displayed surface; else 0.
    int rayPick(McVec2i const& pos, HxViewer* viewer, McVec3f& point, int& triangle, SoPickedPointList& picks);
    // The stroke over viewer 0's front buffer; needs viewer 0's context current.
    void drawDrag();

    // === State
    NodeList samples;
    HxSurface* surface;
    HxSurfacePathSet* pathSet;
    int nodeType = -1;
    PathConnector* connector = nullptr;
    bool active = false;

  private:
    // The display that shows the surface (the last one reading it), or null.
    HxDisplaySurface* findDisplay() const;
    // Appends a node at the hit unless the last sample lies too close.
    void addSample(McVec3f const& point, int triangle);
    static SbViewVolume windowViewVolume(HxViewer* viewer);
    static SbVec3f farPointUnder(McVec2i const& pos, HxViewer* viewer, SbViewVolume const& volume);
};
