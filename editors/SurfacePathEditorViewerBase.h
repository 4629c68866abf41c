#pragma once
// SurfacePathEditorViewerBase: the root of every interactive path editor. It binds the editor
// to one path set and its surface, switches it on and off in the viewer (pick and key
// callbacks with the controller, the surface and path-set displays it needs), turns picks
// into click records, makes new surface nodes from clicks and runs operations through the
// editor's own undo buffer.
//
// The editor owns its undo buffer (and through it the operations) and one reference on each
// of its two display modules; the path set and surface are the host's.

#include "McHandle.h"
#include "McTypedObject.h"
#include "PathEditClickInfo.h"
#include "PathEditUndoBuffer.h"

#include <tcl.h>

class HxDisplaySurface;
class HxDisplaySurfacePathSet;
class HxSurface;
class HxSurfacePathSet;
class HxViewer;
class PathOperation;
class SelectionInfo;
class SoEvent;
class SoEventCallback;
class SoPickedPoint;
class SoPickedPointList;
class SurfaceNode;
class SurfacePathSet;

class SurfacePathEditorViewerBase : public McTypedObject {
    MC_TYPED_HEADER(SurfacePathEditorViewerBase)
  public:
    SurfacePathEditorViewerBase();
    explicit SurfacePathEditorViewerBase(HxSurfacePathSet* pathSet);
    ~SurfacePathEditorViewerBase() override;

    // === Virtual operations (the editor module and the factory call them in this order)
    virtual bool canEditPathSet(HxSurfacePathSet* ps) { return true; }
    virtual void activate();
    virtual void deactivate();
    virtual void setPathSet(HxSurfacePathSet* pathSet);
    // Called by the operations after undo and redo.
    virtual void updateData() {}
    virtual void setEditorCallback(void (*callback)(void*), void* data);
    virtual int keyCB(SoEvent const* event) = 0;
    virtual void mousePickCB(SoEventCallback* cb) = 0;

    // === Queries
    HxSurfacePathSet* getPathSet() const { return pathSet; }
    // The selection of the path set's display, synchronised with the set; a display must exist.
    SelectionInfo* getSelection();

    // This editor's history (what Undo and Redo walk).
    PathEditUndoBuffer const& getUndoBuffer() const { return undoBuffer; }

    // === Displays
    // The first surface display reading the path set's (or the stored) surface, or a new one.
    HxDisplaySurface* surfaceView(HxSurfacePathSet* ps);
    HxDisplaySurface* surfaceView();
    HxDisplaySurfacePathSet* lineView();

    // === Callbacks registered with the controller
    static int keyCallBack(SoEvent const* e, HxViewer* v, void* data);
    static void pickCallBack(void* data, SoEventCallback* cb);

    // === Clicks
    void initClickInfo(PathEditClickInfo* ci, SoEventCallback* cb, HxSurfacePathSet* ps);
    void initPathClickInfo(PathEditClickInfo* ci, HxSurfacePathSet* ps, SoPickedPointList const& picks);
    // A new node for the click (owned by the caller), or null when the click hit no element.
    SurfaceNode* createNewSurfaceNode(SurfacePathSet* ps, PathEditClickInfo& ci, int nodeType);

    // === Operations
    // initUndo, run, and on success initRedo and push on the undo buffer (which holds the
    // operation from then on); on failure a message and undo. True on success. A failed
    // operation that no handle holds is deleted: hold one to look at it afterwards.
    bool exec(PathOperation* op);

  protected:
    void (*editorCallback)(void*) = nullptr;
    void* editorCallbackData = nullptr;
    HxSurface* surface = nullptr;
    HxSurfacePathSet* pathSet = nullptr;
    McHandle<HxDisplaySurface> surfaceViewHandle;
    McHandle<HxDisplaySurfacePathSet> lineViewHandle;
    PathEditUndoBuffer undoBuffer;
    short pickCallbackInstalled = 0;
    short eventCallbackInstalled = 0;

  public:
    int lastHitKind = -1;

  private:
    void prepareSurfaceForPicking();
    HxDisplaySurface* findOrMakeSurfaceView(HxSurface* s);
    void initLineHit(PathEditClickInfo* ci, HxSurfacePathSet* ps, HxDisplaySurfacePathSet* display,
                     SoPickedPoint const& pick);
    void initControlPointHit(PathEditClickInfo* ci, HxSurfacePathSet* ps, HxDisplaySurfacePathSet* display,
                             int controlPoint);
};
