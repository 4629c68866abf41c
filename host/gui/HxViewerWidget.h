#pragma once
// HxViewerWidget: a host viewer shown in a window, as an examiner viewer on the viewer's own
// scene root and camera. Every mouse and key event goes into HxViewer::processEvent, the
// dispatch path that scripted events use; only what nothing there consumed moves the camera,
// and only in viewing mode. The window's GL context is the one that overlays draw into
// while an event is handled, and the viewing mode (Esc, the viewer's buttons, scripts) and
// the window size are kept the same on both sides.

#include "HxViewer.h"

#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>

class HxViewerWidget : public SoQtExaminerViewer, public HxViewerWindow {
  public:
    HxViewerWidget(QWidget* parent, HxViewer* viewer);
    ~HxViewerWidget() override;

    HxViewer* getViewer() const { return mViewer; }

    // HxViewerWindow
    bool makeCurrent() override;
    void scheduleRedraw() override { SoQtExaminerViewer::scheduleRedraw(); }
    void viewingChanged(bool viewing) override;

    // SoQtViewer
    void setViewing(SbBool enable) override;

  protected:
    SbBool processSoEvent(SoEvent const* const event) override;
    void sizeChanged(SbVec2s const& size) override;
    void actualRedraw() override;

  private:
    HxViewer* mViewer;
};
