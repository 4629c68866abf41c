#pragma once
// SurfacePathEditor: the general-purpose path editor. It keeps all of the vertex editor's
// editing and adds smoothing and snapping of paths (a third row of path operations with a
// snapping tolerance), retriangulation of the surface along the paths by every registered
// triangulator, and a choice of control-point type (vertex, edge or triangle nodes). It accepts
// every path set and offers its own list of connectors.
//
// Tcl: everything the vertex editor understands, and `smooth FACTOR ITERATIONS`, which smooths
// every path at once without an entry in the undo history (a batch step, not an edit).

#include "SurfaceVertexPathEditor.h"

class HxPortFloatTextN;

class SurfacePathEditor : public SurfaceVertexPathEditor {
    MC_TYPED_HEADER(SurfacePathEditor)
    MC_TYPED_CREATABLE
  public:
    SurfacePathEditor();
    explicit SurfacePathEditor(HxSurfacePathSet* pathSet);

    bool canEditPathSet(HxSurfacePathSet*) override { return true; }
    void initButtons(HxSurfacePathEditor* module) override;
    void checkButtons() override;
    void update() override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    void init() override;
    void enableAll() override;
    void disableAll() override;
    // Entangles the active paths with the snapping tolerance; nothing without an active path.
    void entangle() override;

    // Switches of the triangulator back ends, in the constrained-Delaunay switch syntax: the
    // plain insertion of the paths and the quality refinement. Public, so scripts and other
    // libraries can read and change them (linked to Tcl as hxsurfacepathedit::refine and
    // hxsurfacepathedit::refineConforming when the package loads).
    static char* refine;
    static char* refineConforming;
    // Links the two switch settings to Tcl variables; done once, when the package loads.
    static void linkSettings(Tcl_Interp* interp);

    // === Ports (on the module)
    HxPortSeparator* separator = nullptr;
    HxPortButtonList* pathOperations3 = nullptr;
    HxPortButtonList* retriangulate = nullptr;
    HxPortFloatTextN* SnapEpsilon = nullptr;
    HxPortRadioBox* snapEpsilonMode = nullptr;

  private:
    void handleSmoothAndSnap();
    void handleRetriangulate();
    void showRetriangulateIfAnyTriangulator();
    int smoothCommand(Tcl_Interp* interp, int argc, char** argv);
};
