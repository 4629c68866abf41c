#pragma once
// SurfacePathEditorGUIBase: the editor base with a GUI: it installs editorCallBack (which
// keeps the buttons in step with the data after every change) and declares the operations
// through which the editor module hands its ports and commands to the editor.

#include "SurfacePathEditorViewerBase.h"

class HxSurfacePathEditor;

class SurfacePathEditorGUIBase : public SurfacePathEditorViewerBase {
    MC_TYPED_HEADER(SurfacePathEditorGUIBase)
  public:
    SurfacePathEditorGUIBase();
    explicit SurfacePathEditorGUIBase(HxSurfacePathSet* pathSet);

    // Creates the editor's ports on the module.
    virtual void initButtons(HxSurfacePathEditor* module) = 0;
    // Makes the ports' sensitivity, visibility and info lines follow the data.
    virtual void checkButtons() = 0;
    // Reacts to changed ports (the module forwards its update).
    virtual void update() = 0;
    // The module's Tcl command: 0 when handled, 1 to pass it on to the host.
    virtual int parse(Tcl_Interp* interp, int argc, char** argv) = 0;
    virtual void init() {}
};

// The default editor callback: checkButtons() on the editor given as data (null: nothing).
void editorCallBack(void* data);
