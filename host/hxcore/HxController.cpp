#include "HxController.h"

#include "HxGLContext.h"
#include "HxViewer.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoPath.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodekits/SoNodeKit.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdio>
#include <cstring>

namespace {
// Coin warns that it finds no GLX context; offscreen rendering through EGL needs none,
// so that warning is noise. Everything else is reported.
void coinMessageHandler(SoError const* error, void*) {
    char const* text = error->getDebugString().getString();
    if (strstr(text, "GLX")) return;
    std::fprintf(stderr, "%s\n", text);
}
}  // namespace

HxController* HxController::getTheController() {
    // Never destroyed: scene nodes may still be released by objects that go at exit.
    static HxController* controller = new HxController;
    return controller;
}

HxController::HxController() {
    HxGLContext::installOffscreenCallbacks();
    SoDB::init();
    SoNodeKit::init();
    SoDebugError::setHandlerCallback(coinMessageHandler, nullptr);
    mGeometry = new SoSeparator;
    mGeometry->setName("geometry");
    mGeometry->ref();
}

HxController::~HxController() {
    for (HxViewer*& viewer : mViewers) delete viewer;
    mGeometry->unref();
}

// === Callbacks

void HxController::addPickCallback(PickCallback f, void* data) { mPickCallbacks.append(PickEntry{f, data}); }

void HxController::removePickCallback(PickCallback f, void* data) {
    for (int64_t i = 0; i < mPickCallbacks.size(); ++i) {
        if (mPickCallbacks[i].f == f && mPickCallbacks[i].data == data) {
            mPickCallbacks.remove(i);
            return;
        }
    }
}

void HxController::addEventCallback(EventCallback f, void* data) { mEventCallbacks.append(EventEntry{f, data}); }

void HxController::removeEventCallback(EventCallback f, void* data) {
    for (int64_t i = 0; i < mEventCallbacks.size(); ++i) {
        if (mEventCallbacks[i].f == f && mEventCallbacks[i].data == data) {
            mEventCallbacks.remove(i);
            return;
        }
    }
}

// A callback may register or remove callbacks (an editor starting a stroke, one switching
// off): the loops walk a copy and skip entries that were removed meanwhile.
bool HxController::callEventCallbacks(SoEvent const* event, HxViewer* viewer) {
    McDArray<EventEntry> entries = mEventCallbacks;
    for (EventEntry const& entry : entries) {
        if (!isRegistered(mEventCallbacks, entry)) continue;
        if (entry.f(event, viewer, entry.data) != 0) return true;
    }
    return false;
}

void HxController::callPickCallbacks(SoEventCallback* node) {
    McDArray<PickEntry> entries = mPickCallbacks;
    for (PickEntry const& entry : entries)
        if (isRegistered(mPickCallbacks, entry)) entry.f(entry.data, node);
}

// === Viewers

HxViewer* HxController::viewer(int id, int create, QWidget*) {
    if (id < 0 || id >= kMaxViewers) return nullptr;
    if (!mViewers[id] && create) mViewers[id] = new HxViewer(id);
    return mViewers[id];
}

void HxController::redrawAll() {
    for (HxViewer* viewer : mViewers)
        if (viewer) viewer->redraw();
}

// === Geometry

bool HxController::addGeometry(HxModule* owner, SoNode* node, bool inFront) {
    if (!node) return false;
    for (GeometryEntry const& entry : mGeometryEntries)
        if (entry.owner == owner && entry.node == node) return false;
    mGeometryEntries.append(GeometryEntry{owner, node});
    if (inFront)
        mGeometry->insertChild(node, 0);
    else
        mGeometry->addChild(node);
    return true;
}

bool HxController::removeGeometry(HxModule* owner, SoNode* node) {
    for (int64_t i = 0; i < mGeometryEntries.size(); ++i) {
        if (mGeometryEntries[i].owner == owner && mGeometryEntries[i].node == node) {
            mGeometryEntries.remove(i);
            const int child = mGeometry->findChild(node);
            if (child >= 0) mGeometry->removeChild(child);
            return true;
        }
    }
    return false;
}

void HxController::removeAllGeometry(HxModule* owner) {
    for (int64_t i = mGeometryEntries.size() - 1; i >= 0; --i)
        if (mGeometryEntries[i].owner == owner) removeGeometry(owner, mGeometryEntries[i].node);
}

HxModule* HxController::findGeometryOwner(SoPath const* path) const {
    if (!path) return nullptr;
    for (int i = path->getLength() - 1; i >= 0; --i) {
        SoNode* node = path->getNode(i);
        for (GeometryEntry const& entry : mGeometryEntries)
            if (entry.node == node) return entry.owner;
    }
    return nullptr;
}
