#pragma once
// SurfaceVertexPathEditor: the interactive editor for path sets whose nodes all sit on surface
// vertices. Shift+click adds paths and control points, a plain click selects, 's' and 'i'
// held toggle the selection or insert, Delete removes, the middle button undoes, and with
// free-hand drawing on a stroke becomes new paths. Its ports live on the editor module.
//
// The ports belong to the module; the editor keeps plain pointers to them. Connectors are
// made on first choice and kept for the editor's life, also when init() empties the cache;
// the free-hand drawers (one per setPathSet) likewise. The editor releases both when it goes.

#include "McDArray.h"
#include "McString.h"
#include "SurfacePathEditorGUIBase.h"

#include <memory>
#include <vector>

class FreeHandDrawer;
class HxPortButtonList;
class HxPortInfo;
class HxPortIntSlider;
class HxPortMultiMenu;
class HxPortRadioBox;
class HxPortSeparator;
class HxPortToggleList;
class PathConnector;

class SurfaceVertexPathEditor : public SurfacePathEditorGUIBase {
    MC_TYPED_HEADER(SurfaceVertexPathEditor)
    MC_TYPED_CREATABLE
  public:
    SurfaceVertexPathEditor();
    explicit SurfaceVertexPathEditor(HxSurfacePathSet* pathSet);
    ~SurfaceVertexPathEditor() override;

    // === Editor operations (the module calls them)
    bool canEditPathSet(HxSurfacePathSet* pathSet) override;
    void setPathSet(HxSurfacePathSet* pathSet) override;
    // Refreshes the surface and the cached connectors after an undo or redo changed them.
    void updateData() override;
    int keyCB(SoEvent const* event) override;
    void mousePickCB(SoEventCallback* cb) override;
    void initButtons(HxSurfacePathEditor* module) override;
    void checkButtons() override;
    void update() override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    void init() override;
    virtual void enableAll() {}
    virtual void disableAll() {}

    // === Helpers
    void initConnectors();
    // Asks whether an operation applies to the selected paths (true) or to all.
    bool askForSelection();
    void setFreeHandDraw(bool on) { freeHandDraw = on; }
    // Entangles the selected paths (the "Entangle" button); nothing without a selection.
    virtual void entangle();
    // Deletes the active control point, or else the active paths.
    void deleteOperations();

    // === State
    McString connectorVariable;
    PathConnector* currentConnector = nullptr;
    McDArray<PathConnector*> connectorCache;
    int newNodeType = 0;
    int modeKey = '0';

    // === Ports (on the module)
    HxPortToggleList* advancedOptions = nullptr;
    HxPortButtonList* action = nullptr;
    HxPortButtonList* pathOperations1 = nullptr;
    HxPortButtonList* pathOperations2 = nullptr;
    HxPortButtonList* surfaceOperations = nullptr;
    HxPortMultiMenu* connector = nullptr;
    HxPortRadioBox* controlPointType = nullptr;
    HxPortInfo* info = nullptr;
    HxPortInfo* hitGeometry = nullptr;
    HxPortSeparator* sep = nullptr;
    HxPortIntSlider* selectPath = nullptr;
    HxPortIntSlider* selectCP = nullptr;
    HxPortButtonList* pathSelection = nullptr;

    FreeHandDrawer* freeHandDrawer = nullptr;
    bool freeHandDraw = false;
    HxPortButtonList* freeHandDrawing = nullptr;
    bool freeHandToggled = false;

  protected:
    // Every port change of one update, in the order the buttons act.
    void handleActionButtons(SelectionInfo* selection, PathConnector* connectorOfMenu);
    void handlePathOperations(SelectionInfo* selection, PathConnector* connectorOfMenu);
    void handleSurfaceOperations(SelectionInfo* selection);
    bool handleConnectorMenu();
    void handleSliders(SelectionInfo* selection);
    void handleFreeHandToggle();
    // Fires the path set (all changed) and calls the editor callback.
    void touchAndFire();
    PathConnector* connectorOfMenuIndex() const;
    void callEditorCallback();

  private:
    void setInfoLines(SelectionInfo const& selection);
    void setPathButtonSensitivity(SelectionInfo const& selection);
    void showAdvancedPorts();
    void handleStroke(SoEventCallback* cb, SelectionInfo* selection);
    void handleClick(SoEventCallback* cb, SelectionInfo* selection, bool shift);
    void resetConnectorCache();
    // Makes the connector of menu entry i and keeps it for the editor's life.
    PathConnector* makeConnector(int i);

    // Drawers replaced by setPathSet: never used again, released with the editor.
    McDArray<FreeHandDrawer*> mRetiredDrawers;
    std::vector<std::unique_ptr<PathConnector>> mMadeConnectors;
};
