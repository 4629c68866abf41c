#include "FreeHandDrawer.h"

#include "HxConnection.h"
#include "HxController.h"
#include "HxDisplaySurface.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "PathConnector.h"

#include <Inventor/SbViewVolume.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/events/SoLocation2Event.h>
#include <Inventor/lists/SoPickedPointList.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <GL/gl.h>

MC_TYPED_IMPL(FreeHandDrawer, McTypedObject)

FreeHandDrawer::FreeHandDrawer(HxSurface* surface_, HxSurfacePathSet* pathSet_)
    : surface(surface_), pathSet(pathSet_) {}

// === Stroke

void FreeHandDrawer::activate(int nodeType_, PathConnector* connector_) {
    if (active) return;
    active = true;
    nodeType = nodeType_;
    connector = connector_;
    if (!connector || nodeType < 0) return;
    samples.clear();
    HxController::getTheController()->addEventCallback(dragCallBack, this);
}

void FreeHandDrawer::deactivate() {
    if (!active) return;
    active = false;
    HxController::getTheController()->removeEventCallback(dragCallBack, this);
}

void FreeHandDrawer::handleDrag(McDArray<NodeList>& pieces) {
    if (!connector || samples.empty()) return;
    pieces.clear();
    pieces.resize(1);
    int64_t current = 0;
    for (int64_t k = 0; k + 1 < samples.size(); ++k) {
        SurfaceNode* a = samples[k];
        SurfaceNode* b = samples[k + 1];
        if (a->getSharedElement(b) != -1) continue;
        NodeList between;
        const bool connected = connector->computeConnection(a, b, between, nullptr);
        pieces[current].append(samples[k]);
        if (connected) {
            pieces[current].appendArray(between);
        } else {
            pieces.append(NodeList());
            current = pieces.size() - 1;
        }
    }
    pieces[current].append(samples.last());
    samples.clear();
    pathSet->touch(~0u);
    pathSet->fire(1);
}

// === Viewer

int FreeHandDrawer::dragCallBack(SoEvent const* e, HxViewer*, void* data) {
    if (!e || !data) return 0;
    if (e->isOfType(SoLocation2Event::getClassTypeId())) static_cast<FreeHandDrawer*>(data)->dragCB(e);
    return 0;
}

int FreeHandDrawer::dragCB(SoEvent const* e) {
    HxViewer* viewer = HxController::getTheController()->viewer(0, 1);
    if (!viewer->isViewing()) {
        SbVec2s pos = e->getPosition(viewer->getViewportRegion());
        McVec3f point;
        int triangle = -1;
        SoPickedPointList picks;
        if (rayPick(McVec2i(pos[0], pos[1]), viewer, point, triangle, picks)) addSample(point, triangle);
    }
    drawDrag();
    return 0;
}

void FreeHandDrawer::addSample(McVec3f const& point, int triangle) {
    McVec3f min, max;
    surface->getSurface()->getBoundingBox(min, max);
    const float d = (max - min).length();
    // Deliberately a squared distance against a length: on small surfaces it thins a stroke
    // much more than a plain distance would.
    if (!samples.empty() && (samples.last()->getPosition() - point).length2() <= d * 0.0001f) return;
    McHandle<SurfaceNode> node = pathSet->pathSet.nodeFactory.createNode(nodeType, triangle, point);
    if (!node) return;
    node->isControlPoint = 0;
    samples.append(node);
}

HxDisplaySurface* FreeHandDrawer::findDisplay() const {
    if (!surface) return nullptr;
    HxDisplaySurface* display = nullptr;
    for (HxConnection* connection : surface->getDownstreamConnections()) {
        HxObject* owner = connection->getOwner();
        if (owner && owner->isOfType(HxDisplaySurface::getClassTypeId())) display = static_cast<HxDisplaySurface*>(owner);
    }
    return display;
}

int FreeHandDrawer::rayPick(McVec2i const& pos, HxViewer* viewer, McVec3f& point, int& triangle,
                            SoPickedPointList& picks) {
    if (!viewer) return 0;
    HxDisplaySurface* display = findDisplay();
    if (!display) return 0;

    SoRayPickAction action(viewer->getViewportRegion());
    const SbViewVolume volume = windowViewVolume(viewer);
    const SbVec3f start = volume.getProjectionPoint();
    action.setRay(start, farPointUnder(pos, viewer, volume) - start, -1, -1);
    action.apply(display->getSceneNode());

    SoPickedPoint const* picked = action.getPickedPoint();
    if (!picked || !picked->getDetail() || !picked->getDetail()->isOfType(SoFaceDetail::getClassTypeId())) return 0;
    SbVec3f const& hit = picked->getPoint();
    point = McVec3f(hit[0], hit[1], hit[2]);
    triangle = static_cast<SoFaceDetail const*>(picked->getDetail())->getFaceIndex();
    // The action owns its points, and a list copied by assignment would share them.
    picks.truncate(0);
    SoPickedPointList const& list = action.getPickedPointList();
    for (int i = 0; i < list.getLength(); ++i) picks.append(list[i]->copy());
    return 1;
}

// The world point that the window position shows at the far end of the depth range.
SbVec3f FreeHandDrawer::farPointUnder(McVec2i const& pos, HxViewer* viewer, SbViewVolume const& volume) {
    // Without a current context nothing is reported: the default range stands.
    float depthRange[2] = {0.0f, 1.0f};
    glGetFloatv(GL_DEPTH_RANGE, depthRange);
    const float n = depthRange[0], f = depthRange[1];
    SbMatrix affine, projection;
    volume.getMatrices(affine, projection);
    SbMatrix toWorld = affine;
    toWorld.multRight(projection);
    toWorld = toWorld.inverse();

    SbVec2s size = viewer->getGlxSize();
    const float w = size[0], h = size[1];
    SbVec4f farClip((2 * pos.x - w) / w, (2 * pos.y - h) / h, 2 * (1 - (n + f) * 0.5f) / (f - n), 1);
    SbVec4f farWorld;
    toWorld.multVecMatrix(farClip, farWorld);
    return SbVec3f(farWorld[0] / farWorld[3], farWorld[1] / farWorld[3], farWorld[2] / farWorld[3]);
}

void FreeHandDrawer::drawDrag() {
    if (samples.empty()) return;
    HxViewer* viewer = HxController::getTheController()->viewer(0, 1);
    SoGLRenderAction render(viewer->getViewportRegion());
    render.apply(viewer->getCamera());
    // The action sets up the camera, but Coin restores the matrices when its traversal ends:
    // the stroke gets the camera's own, and the viewer's are given back afterwards.
    SbMatrix affine, projection;
    windowViewVolume(viewer).getMatrices(affine, projection);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadMatrixf(projection[0]);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadMatrixf(affine[0]);

    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_ENABLE_BIT | GL_VIEWPORT_BIT | GL_LINE_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_BLEND);
    glEnable(GL_COLOR_LOGIC_OP);
    glLogicOp(GL_XOR);
    glColor3f(1.0f, 0.5f, 0.0f);
    glLineWidth(2);
    glDrawBuffer(GL_FRONT);
    // Drawn plainly, not XORed: a stroke redrawn after every motion must not erase itself.
    glDisable(GL_COLOR_LOGIC_OP);
    glBegin(GL_LINE_STRIP);
    for (int64_t k = 0; k + 1 < samples.size(); ++k) {
        McVec3f const a = samples[k]->getPosition(), b = samples[k + 1]->getPosition();
        glVertex3f(a.x, a.y, a.z);
        glVertex3f(b.x, b.y, b.z);
    }
    glEnd();
    glFlush();
    glPopAttrib();
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
}

// The camera's volume mapped onto the window as the viewer draws it: a window taller than
// wide widens the volume by 1 / aspect.
SbViewVolume FreeHandDrawer::windowViewVolume(HxViewer* viewer) {
    const float aspect = viewer->getViewportRegion().getViewportAspectRatio();
    SbViewVolume volume = viewer->getCamera()->getViewVolume(aspect);
    if (aspect < 1.0f) volume.scale(1.0f / aspect);
    return volume;
}
