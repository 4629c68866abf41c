#pragma once
// HxViewer: one 3D view of the controller's scene. It owns its scene root:
//   root -> camera, headlight, SoEventCallback (picks), depth test, the controller's geometry
// and an offscreen GL context of its window size, into which it renders without a display.
//
// Window coordinates have their origin at the bottom left, as Inventor events have.
// Every event, scripted or from a window, goes through processEvent (see HxController).
//
// A GUI shows the viewer in a window (setWindow): the window then draws the same scene root
// with its own GL context, which event callbacks draw into while the window's events are
// handled, and both sides keep the viewing mode and the size in step.

#include "McString.h"
#include "McVec3f.h"

#include <Inventor/SbLinear.h>
#include <Inventor/SbViewportRegion.h>

#include <memory>
#include <vector>

class HxGLContext;
class SoCamera;
class SoDirectionalLight;
class SoEvent;
class SoEventCallback;
class SoPerspectiveCamera;
class SoPickedPoint;
class SoRayPickAction;
class SoSeparator;

class HxViewerWindow {
  public:
    virtual ~HxViewerWindow() = default;
    // Makes the window's GL context current (for overlays drawn during an event).
    virtual bool makeCurrent() = 0;
    // The scene should be drawn again soon.
    virtual void scheduleRedraw() = 0;
    // The viewer's viewing mode changed (by a script or by Esc).
    virtual void viewingChanged(bool viewing) = 0;
};

class HxViewer {
  public:
    explicit HxViewer(int id);
    ~HxViewer();
    HxViewer(HxViewer const&) = delete;
    HxViewer& operator=(HxViewer const&) = delete;

    int getId() const { return mId; }
    SoSeparator* getSceneRoot() const { return mRoot; }
    SoCamera* getCamera() const;

    // === Window
    // The window size in pixels.
    SbVec2s getGlxSize() const { return mViewport.getWindowSize(); }
    SbViewportRegion const& getViewportRegion() const { return mViewport; }
    // Resizes the window (at least 1x1, at most the GL implementation's limit).
    bool setSize(int width, int height, McString& error);

    // === Modes
    // True in camera-navigation mode: mouse buttons move the camera and pick nothing.
    bool isViewing() const { return mViewing; }
    void setViewing(bool on);

    // === Window
    // Shows the viewer in a window (null: offscreen only); the caller keeps ownership.
    void setWindow(HxViewerWindow* window) { mWindow = window; }
    HxViewerWindow* getWindow() const { return mWindow; }

    // === Camera
    // Frames everything in the scene.
    void viewAll();
    // Screen position (pixels, origin bottom left) of a world point; false if it lies
    // behind the camera.
    bool project(McVec3f const& world, float& sx, float& sy) const;

    // === Rendering
    // Renders the scene now into the offscreen image, and has a window draw it again.
    void redraw();
    // Turns the headlight along the current view direction; done before every rendering.
    void aimHeadlight();
    // The last rendered image: width x height RGBA rows, bottom row first.
    unsigned char const* getImage() const;
    // Renders and writes a PNG (written to a temporary file, then renamed).
    bool snapshot(char const* fileName, McString& error);
    // Makes the viewer's GL context current (for overlays drawn while an event is handled):
    // the window's when there is one, else the offscreen one.
    bool makeCurrent();

    // === Events and picks
    // Dispatches one event (see HxController). Returns true when an event callback or the
    // scene handled it.
    bool processEvent(SoEvent* event);
    // The nearest object under a screen point; the action is kept until the next pick and
    // owns the picked point (null: nothing there).
    SoPickedPoint const* pick(float sx, float sy);

  private:
    static void sceneEventCB(void* data, SoEventCallback* node);
    void ensureContext();

    int mId;
    bool mViewing = false;
    HxViewerWindow* mWindow = nullptr;
    SbViewportRegion mViewport;
    SoSeparator* mRoot = nullptr;
    SoPerspectiveCamera* mCamera = nullptr;
    SoDirectionalLight* mHeadlight = nullptr;
    SoEventCallback* mEventCallback = nullptr;
    std::unique_ptr<HxGLContext> mContext;
    std::unique_ptr<SoRayPickAction> mLastPick;
    uint32_t mCacheContext;
};
