#include "HxViewerWidget.h"

#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/events/SoEvent.h>
#include <Inventor/nodes/SoSeparator.h>

#include <QTimer>
#include <QWidget>

namespace {
// The offscreen viewer's background, so that window and snapshots look the same.
const SbColor kBackground(0.13f, 0.14f, 0.17f);
const int kResizeRedrawDelayMs = 100;
}  // namespace

HxViewerWidget::HxViewerWidget(QWidget* parent, HxViewer* viewer)
    : SoQtExaminerViewer(parent, "surfpathViewer"), mViewer(viewer) {
    // The scene brings its own camera and headlight (aimed before every rendering).
    setHeadlight(FALSE);
    // Overlays (the free-hand trace) draw into the front buffer while an event is handled; a
    // single buffer is the picture on the screen, so they appear over it and not over an
    // undefined copy of it.
    setDoubleBuffer(FALSE);
    setBackgroundColor(kBackground);
    setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
    setSceneGraph(mViewer->getSceneRoot());
    SoQtExaminerViewer::setViewing(mViewer->isViewing());
    // Mode keys ('s', 'i', Esc) reach the viewer once it was clicked into.
    getGLWidget()->setFocusPolicy(Qt::StrongFocus);
    mViewer->setWindow(this);
}

HxViewerWidget::~HxViewerWidget() {
    if (mViewer->getWindow() == this) mViewer->setWindow(nullptr);
}

bool HxViewerWidget::makeCurrent() {
    glLockNormal();
    return true;
}

void HxViewerWidget::viewingChanged(bool viewing) {
    if (bool(isViewing()) != viewing) SoQtExaminerViewer::setViewing(viewing);
}

void HxViewerWidget::setViewing(SbBool enable) {
    SoQtExaminerViewer::setViewing(enable);
    mViewer->setViewing(enable);
}

SbBool HxViewerWidget::processSoEvent(SoEvent const* const event) {
    // Callbacks receive the event as scripts send it; the viewer does not change it.
    if (mViewer->processEvent(const_cast<SoEvent*>(event))) return TRUE;
    // Picking mode: the viewer already offered mouse buttons to the scene, and handing the
    // event on would pick a second time.
    if (!isViewing()) return FALSE;
    return SoQtExaminerViewer::processSoEvent(event);
}

// `size` includes the viewer's decorations; picks and overlays need the drawing area's.
void HxViewerWidget::sizeChanged(SbVec2s const& size) {
    SoQtExaminerViewer::sizeChanged(size);
    const SbVec2s area = getGLSize();
    McString error;
    if (area[0] > 0 && area[1] > 0) mViewer->setSize(area[0], area[1], error);
    // A single-buffered window drawn before the display server has resized it keeps a picture
    // of the old size; drawing once more a moment later fills the whole area.
    QTimer::singleShot(kResizeRedrawDelayMs, getGLWidget(), [this] { scheduleRedraw(); });
}

void HxViewerWidget::actualRedraw() {
    mViewer->aimHeadlight();
    SoQtExaminerViewer::actualRedraw();
}
