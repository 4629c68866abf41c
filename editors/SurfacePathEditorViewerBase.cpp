#include "SurfacePathEditorViewerBase.h"

#include "HxController.h"
#include "HxDisplaySurface.h"
#include "HxDisplaySurfacePathSet.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "PathOperation.h"
#include "SoControlPointSeparator.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoEventCallback.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoSeparator.h>

MC_TYPED_IMPL(SurfacePathEditorViewerBase, McTypedObject)

namespace {

McVec3f toVec(SbVec3f const& v) { return McVec3f(v[0], v[1], v[2]); }

// The element both nodes at `position` and `position + 1` of a path lie on, -1 if none.
int sharedElementOfSegment(SurfacePathSet const& set, int path, int position) {
    SurfaceNode* a = set.getSurfaceNode(path, position);
    SurfaceNode* b = set.getSurfaceNode(path, position + 1);
    return a && b ? a->getSharedElement(b) : -1;
}

int sharedEdgeOfSegment(SurfacePathSet const& set, int path, int position) {
    SurfaceNode* a = set.getSurfaceNode(path, position);
    SurfaceNode* b = set.getSurfaceNode(path, position + 1);
    return a && b ? a->getSharedEdge(b) : -1;
}

SoControlPointSeparator* lastControlPointOn(SoPath const* path) {
    for (int i = path->getLength() - 1; i >= 0; --i) {
        SoNode* node = path->getNode(i);
        if (node->isOfType(SoControlPointSeparator::getClassTypeId())) return static_cast<SoControlPointSeparator*>(node);
    }
    return nullptr;
}

}  // namespace

SurfacePathEditorViewerBase::SurfacePathEditorViewerBase() = default;

SurfacePathEditorViewerBase::SurfacePathEditorViewerBase(HxSurfacePathSet* ps)
    : surface(ps ? ps->getSurface() : nullptr), pathSet(ps) {}

// Our own deactivate: the derived part of the editor is already gone.
SurfacePathEditorViewerBase::~SurfacePathEditorViewerBase() {
    SurfacePathEditorViewerBase::deactivate();
    undoBuffer.clear();
    lineViewHandle = nullptr;
    surfaceViewHandle = nullptr;
}

void SurfacePathEditorViewerBase::setPathSet(HxSurfacePathSet* ps) {
    pathSet = ps;
    surface = ps ? ps->getSurface() : nullptr;
    activate();
}

void SurfacePathEditorViewerBase::setEditorCallback(void (*callback)(void*), void* data) {
    editorCallback = callback;
    editorCallbackData = data;
}

SelectionInfo* SurfacePathEditorViewerBase::getSelection() {
    SelectionInfo& selection = pathSet->getDisplaySurfacePathSet(false)->getSelectionInfo();
    selection.synchronize();
    return &selection;
}

// === Activation

void SurfacePathEditorViewerBase::activate() {
    if (!pathSet || !surface) return;
    if (!surfaceViewHandle) surfaceViewHandle = surfaceView();
    if (!lineViewHandle) lineViewHandle = lineView();
    HxController* controller = HxController::getTheController();
    if (!pickCallbackInstalled && surfaceViewHandle) {
        controller->addPickCallback(pickCallBack, this);
        pickCallbackInstalled = 1;
    }
    if (!eventCallbackInstalled) {
        controller->addEventCallback(keyCallBack, this);
        eventCallbackInstalled = 1;
    }
    prepareSurfaceForPicking();
    if (!pathSet->pathSet.isConsistent(true, nullptr))
        HxMessage::getTheMsg()->printf("Warning: surface paths not consistent");
}

// Nodes made from picks ask the surface for edges, normals and the triangles around points.
void SurfacePathEditorViewerBase::prepareSurfaceForPicking() {
    Surface* s = surface->getSurface();
    s->createAllEdges(1);
    s->computeNormalsPerTriangle();
    s->computeTrianglesPerPoint();
}

void SurfacePathEditorViewerBase::deactivate() {
    editorCallback = nullptr;
    HxController* controller = HxController::getTheController();
    if (pickCallbackInstalled) {
        controller->removePickCallback(pickCallBack, this);
        pickCallbackInstalled = 0;
    }
    if (eventCallbackInstalled) {
        controller->removeEventCallback(keyCallBack, this);
        eventCallbackInstalled = 0;
    }
    HxDisplaySurfacePathSet* display = pathSet ? pathSet->getDisplaySurfacePathSet(false) : nullptr;
    if (!display) return;
    display->getSelectionInfo().deselectAll();
    pathSet->touch(~0u);
    pathSet->fire(1);
    lineViewHandle = nullptr;
    surfaceViewHandle = nullptr;
}

// === Displays

HxDisplaySurface* SurfacePathEditorViewerBase::surfaceView(HxSurfacePathSet* ps) {
    return findOrMakeSurfaceView(ps ? ps->getSurface() : nullptr);
}

HxDisplaySurface* SurfacePathEditorViewerBase::surfaceView() { return findOrMakeSurfaceView(surface); }

HxDisplaySurface* SurfacePathEditorViewerBase::findOrMakeSurfaceView(HxSurface* s) {
    if (!s) return nullptr;
    for (HxConnection* connection : s->getDownstreamConnections()) {
        HxObject* owner = connection->getOwner();
        if (owner && owner->getTypeId()->isOfType(HxDisplaySurface::getClassTypeId()))
            return static_cast<HxDisplaySurface*>(owner);
    }
    auto* view = new HxDisplaySurface;
    view->drawStyle.setValue(0);
    view->setLabel("SurfaceView");
    view->portData.connect(s);
    HxObjectPool::getTheObjectPool().addObject(view);
    view->fire(1);
    return view;
}

HxDisplaySurfacePathSet* SurfacePathEditorViewerBase::lineView() { return pathSet->getDisplaySurfacePathSet(true); }

// === Callbacks

int SurfacePathEditorViewerBase::keyCallBack(SoEvent const* e, HxViewer* v, void* data) {
    if (!e || !e->isOfType(SoKeyboardEvent::getClassTypeId())) return 0;
    return static_cast<SurfacePathEditorViewerBase*>(data)->keyCB(e);
}

void SurfacePathEditorViewerBase::pickCallBack(void* data, SoEventCallback* cb) {
    static_cast<SurfacePathEditorViewerBase*>(data)->mousePickCB(cb);
}

// === Clicks

void SurfacePathEditorViewerBase::initClickInfo(PathEditClickInfo* ci, SoEventCallback* cb, HxSurfacePathSet* ps) {
    SoHandleEventAction* action = cb ? cb->getAction() : nullptr;
    if (!action) return;
    SoPickedPointList const& picks = action->getPickedPointList();
    SoPickedPoint const* first = action->getPickedPoint();
    if (!first) return;
    ci->point = toVec(first->getPoint());
    if (SoEvent const* event = cb->getEvent()) {
        if (SO_MOUSE_RELEASE_EVENT(event, BUTTON1))
            ci->button = 1;
        else if (SO_MOUSE_RELEASE_EVENT(event, BUTTON2))
            ci->button = 2;
    }
    initPathClickInfo(ci, ps, picks);
}

// The nearest picked object decides: every rule needs the kind still unset.
void SurfacePathEditorViewerBase::initPathClickInfo(PathEditClickInfo* ci, HxSurfacePathSet* ps,
                                                    SoPickedPointList const& picks) {
    HxDisplaySurfacePathSet* display = ps ? ps->getDisplaySurfacePathSet(false) : nullptr;
    HxDisplaySurface* view = surfaceView(ps);
    if (!display || picks.getLength() == 0) return;
    for (int i = 0; i < picks.getLength(); ++i) {
        SoPickedPoint const* pick = picks[i];
        SoPath const* path = pick->getPath();
        if (view && path->containsNode(view->getSceneNode()) && ci->element == -1) {
            SoDetail const* detail = pick->getDetail();
            if (detail && detail->isOfType(SoFaceDetail::getClassTypeId()))
                ci->element = static_cast<SoFaceDetail const*>(detail)->getFaceIndex();
            if (ci->kind == -1) {
                ci->kind = 0;
                ci->point = toVec(pick->getPoint());
            }
        }
        if (path->containsNode(display->getPathLineNode()) && pick->getDetail() && ci->kind == -1) {
            initLineHit(ci, ps, display, *pick);
            return;
        }
        if (path->containsNode(display->getControlPointNode())) {
            SoControlPointSeparator* marker = lastControlPointOn(path);
            if (marker && ci->kind == -1) {
                initControlPointHit(ci, ps, display, marker->getNodeIndex());
                return;
            }
        }
    }
}

// Paths of at most one node draw no line, so line indices skip them.
void SurfacePathEditorViewerBase::initLineHit(PathEditClickInfo* ci, HxSurfacePathSet* ps,
                                              HxDisplaySurfacePathSet* display, SoPickedPoint const& pick) {
    SurfacePathSet const& set = ps->pathSet;
    ci->kind = 1;
    SoDetail const* detail = pick.getDetail();
    if (!detail->isOfType(SoLineDetail::getClassTypeId())) return;
    auto const* line = static_cast<SoLineDetail const*>(detail);
    ci->path = line->getLineIndex();
    for (int p = 0; p <= ci->path && p < set.getNumPaths(); ++p)
        if (set.getNumNodesOnPath(p) <= 1) ++ci->path;
    if (line->getPartIndex() >= 0) ci->segment = display->computePathIndexFromInventorSegmentIndex(line->getPartIndex());
    ci->element = sharedElementOfSegment(set, ci->path, ci->segment);
}

// A control point on several active paths goes to the last of them.
void SurfacePathEditorViewerBase::initControlPointHit(PathEditClickInfo* ci, HxSurfacePathSet* ps,
                                                      HxDisplaySurfacePathSet* display, int controlPoint) {
    SurfacePathSet const& set = ps->pathSet;
    SelectionInfo const& selection = display->getSelectionInfo();
    ci->kind = 2;
    ci->controlPoint = controlPoint;
    if (!selection.isCPOnActivePath(controlPoint)) {
        ci->path = set.getPathForNode(controlPoint);
    } else {
        for (int active : selection.getActivePaths())
            if (set.getNodeIndexOnPath(active, controlPoint) >= 0) ci->path = active;
    }
    SurfaceNode* node = set.getNode(controlPoint);
    if (!node) return;
    ci->element = node->getElement();
    ci->point = node->getPosition();
    ci->segment = set.getNodeIndexOnPath(ci->path, controlPoint);
}

SurfaceNode* SurfacePathEditorViewerBase::createNewSurfaceNode(SurfacePathSet* ps, PathEditClickInfo& ci, int nodeType) {
    if (ci.element == -1) return nullptr;
    if (ci.kind == 2) {
        SurfaceNode* hit = ps->getNode(ci.controlPoint);
        return hit ? hit->copy() : nullptr;
    }
    SurfaceNode* node = nullptr;
    if (ci.kind == 1 && nodeType != 0 && sharedEdgeOfSegment(*ps, ci.path, ci.segment) >= 0)
        node = ps->nodeFactory.createNode("Edge", ci.element, ci.point);
    else
        node = ps->nodeFactory.createNode(nodeType, ci.element, ci.point);
    if (node) node->isControlPoint = 1;
    return node;
}

// === Operations

bool SurfacePathEditorViewerBase::exec(PathOperation* op) {
    // Releases an operation that nobody else holds when it fails.
    McHandle<PathOperation> hold(op);
    op->initUndo();
    const bool ok = op->exec();
    if (ok) {
        op->initRedo();
        undoBuffer.push(op);
    } else {
        HxMessage::getTheMsg()->printf("PathOperation failed ...");
        op->undo();
    }
    return ok;
}
