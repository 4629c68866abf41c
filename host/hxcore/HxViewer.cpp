#include "HxViewer.h"

#include "HxController.h"
#include "HxGLContext.h"
#include "HxPngFile.h"

#include <Inventor/SbViewVolume.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoDepthBuffer.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoEventCallback.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <GL/gl.h>

namespace {
// A dark neutral background, against which the grey surface and coloured paths stand out.
const float kBackground[3] = {0.13f, 0.14f, 0.17f};
}  // namespace

HxViewer::HxViewer(int id) : mId(id), mViewport(640, 480) {
    mRoot = new SoSeparator;
    mRoot->ref();
    mCamera = new SoPerspectiveCamera;
    mHeadlight = new SoDirectionalLight;
    mEventCallback = new SoEventCallback;
    mEventCallback->addEventCallback(SoMouseButtonEvent::getClassTypeId(), sceneEventCB, this);
    mRoot->addChild(mCamera);
    mRoot->addChild(mHeadlight);
    mRoot->addChild(mEventCallback);
    mRoot->addChild(new SoDepthBuffer);  // a bare render action leaves depth testing off
    mRoot->addChild(HxController::getTheController()->getGeometryRoot());
    mCacheContext = SoGLCacheContextElement::getUniqueCacheContext();
}

HxViewer::~HxViewer() {
    mLastPick.reset();
    mRoot->unref();
}

SoCamera* HxViewer::getCamera() const { return mCamera; }

bool HxViewer::setSize(int width, int height, McString& error) {
    if (width < 1 || height < 1 || width > HxGLContext::kMaxSize || height > HxGLContext::kMaxSize) {
        error.printf("a viewer's size must be between 1 and %d pixels on each side, not %d x %d", HxGLContext::kMaxSize,
                     width, height);
        return false;
    }
    mViewport.setWindowSize(short(width), short(height));
    if (mContext) mContext->setSize(width, height);
    return true;
}

void HxViewer::viewAll() { mCamera->viewAll(HxController::getTheController()->getGeometryRoot(), mViewport); }

// The camera maps its view volume onto the window as Inventor's ADJUST_CAMERA mapping does:
// a window taller than wide widens the volume by 1 / aspect.
static SbViewVolume windowViewVolume(SoCamera const* camera, SbViewportRegion const& viewport) {
    const float aspect = viewport.getViewportAspectRatio();
    SbViewVolume volume = camera->getViewVolume(aspect);
    if (aspect < 1.0f) volume.scale(1.0f / aspect);
    return volume;
}

bool HxViewer::project(McVec3f const& world, float& sx, float& sy) const {
    SbViewVolume volume = windowViewVolume(mCamera, mViewport);
    const SbVec3f point(world[0], world[1], world[2]);
    SbVec3f toPoint = point - volume.getProjectionPoint();
    if (toPoint.dot(volume.getProjectionDirection()) <= 0.0f) return false;
    SbVec3f normalized;
    volume.projectToScreen(point, normalized);
    SbVec2s origin = mViewport.getViewportOriginPixels();
    SbVec2s size = mViewport.getViewportSizePixels();
    sx = origin[0] + normalized[0] * size[0];
    sy = origin[1] + normalized[1] * size[1];
    return true;
}

void HxViewer::ensureContext() {
    if (mContext) return;
    mContext = std::make_unique<HxGLContext>();
    SbVec2s size = mViewport.getWindowSize();
    mContext->setSize(size[0], size[1]);
}

void HxViewer::setViewing(bool on) {
    if (on == mViewing) return;
    mViewing = on;
    if (mWindow) mWindow->viewingChanged(on);
}

bool HxViewer::makeCurrent() {
    if (mWindow) return mWindow->makeCurrent();
    ensureContext();
    return mContext->makeCurrent();
}

void HxViewer::aimHeadlight() {
    // The light shines along the view direction, slightly from the upper left.
    SbVec3f direction;
    mCamera->orientation.getValue().multVec(SbVec3f(0.3f, -0.4f, -1.0f), direction);
    if (mHeadlight->direction.getValue() != direction) mHeadlight->direction = direction;
}

void HxViewer::redraw() {
    if (mWindow) mWindow->scheduleRedraw();
    ensureContext();
    if (!mContext->makeCurrent()) return;
    aimHeadlight();

    SbVec2s size = mViewport.getWindowSize();
    glViewport(0, 0, size[0], size[1]);
    glClearColor(kBackground[0], kBackground[1], kBackground[2], 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    SoGLRenderAction render(mViewport);
    render.setCacheContext(mCacheContext);
    render.setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
    render.apply(mRoot);
    glFinish();
}

unsigned char const* HxViewer::getImage() const { return mContext ? mContext->getPixels() : nullptr; }

bool HxViewer::snapshot(char const* fileName, McString& error) {
    redraw();
    if (!mContext || !mContext->isValid()) {
        error = "no offscreen graphics context could be made";
        return false;
    }
    return HxPngFile::write(fileName, mContext->getWidth(), mContext->getHeight(), mContext->getPixels(), error);
}

// === Events and picks

bool HxViewer::processEvent(SoEvent* event) {
    if (!event) return false;
    // Overlays are drawn from inside event callbacks: they need this viewer's context.
    makeCurrent();
    HxController* controller = HxController::getTheController();
    bool handled = controller->callEventCallbacks(event, this);
    if (!handled && !mViewing && event->isOfType(SoMouseButtonEvent::getClassTypeId())) {
        SoHandleEventAction action(mViewport);
        action.setEvent(event);
        action.apply(mRoot);
        handled = action.isHandled();
    }
    // Esc switches between viewing and picking, as in the viewer window.
    if (!handled && SO_KEY_PRESS_EVENT(event, ESCAPE)) {
        setViewing(!mViewing);
        handled = true;
    }
    return handled;
}

void HxViewer::sceneEventCB(void*, SoEventCallback* node) { HxController::getTheController()->callPickCallbacks(node); }

SoPickedPoint const* HxViewer::pick(float sx, float sy) {
    SbVec2s size = mViewport.getViewportSizePixels();
    SbVec2s origin = mViewport.getViewportOriginPixels();
    mLastPick = std::make_unique<SoRayPickAction>(mViewport);
    mLastPick->setNormalizedPoint(SbVec2f((sx - origin[0]) / size[0], (sy - origin[1]) / size[1]));
    mLastPick->setRadius(3.0f);
    mLastPick->apply(mRoot);
    return mLastPick->getPickedPoint(0);
}
