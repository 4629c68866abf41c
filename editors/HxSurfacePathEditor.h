#pragma once
// HxSurfacePathEditor: the editor module for surface path sets. Attached to a path set it
// offers a menu of the configured path editors and a start button; once an editor runs, the
// module hands its ports, updates and Tcl commands over to it.
//
// The module owns the running editor and every port on it except the host's data connection,
// including the ports the editor created; stopEditing deletes them all. The path set is the
// host's.

#include "HxEditor.h"

class HxPortButtonList;
class HxPortMultiMenu;
class HxSurfacePathSet;
class SurfacePathEditorGUIBase;
class SurfacePathEditorViewerBase;

class HxSurfacePathEditor : public HxEditor {
    MC_TYPED_HEADER(HxSurfacePathEditor)
    MC_TYPED_CREATABLE
  public:
    HxSurfacePathEditor();

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    void update() override;
    void startEditing(HxData* data) override;
    void stopEditing() override;
    // Initialises a freshly started editor and brings the display and buttons up to date.
    void init();

    // === Queries
    SurfacePathEditorViewerBase* getEditor() const { return editor; }
    HxSurfacePathSet* getPathSet() const { return pathSet; }
    // The number given to the `create` command (-1: none); nothing reads it.
    int getRequestedEditor() const { return requestedEditor; }

  private:
    // Every editor the factory makes derives from the GUI base.
    SurfacePathEditorGUIBase* guiEditor() const;
    void createStartPorts();
    void startSelectedEditor();
    void updateDisplay();
    void touchAndFirePathSet();
    void deleteAllPorts();
    int parseWithoutEditor(Tcl_Interp* interp, int argc, char** argv);

    SurfacePathEditorViewerBase* editor = nullptr;
    HxSurfacePathSet* pathSet = nullptr;
    bool portWidgetsCreated = false;
    int requestedEditor = -1;

  public:
    // Made by startEditing, deleted by stopEditing; hidden while an editor runs.
    HxPortMultiMenu* portEditorTypes = nullptr;
    HxPortButtonList* portStartEditor = nullptr;
};
