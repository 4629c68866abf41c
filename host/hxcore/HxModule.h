#pragma once
// HxModule: an object that computes or edits; it reads its input through `portData`.
//
// A module may show scene-graph nodes in the viewers (showGeom); it keeps one reference on
// each shown node, and its geometry leaves the viewers when it is hidden or the module goes.

#include "HxConnection.h"
#include "HxObject.h"

class SoNode;
class SoPickedPoint;

class HxModule : public HxObject {
    MC_TYPED_HEADER(HxModule)
  public:
    // `dataType`: the class of data the module reads (null: any object).
    explicit HxModule(McTypeInfo const* dataType = nullptr);
    ~HxModule() override;

    // True when `object` may be connected to portData.
    bool typeCheck(HxObject* object) const { return portData.accepts(object); }

    // === Scene geometry
    // Adds a node to every viewer's scene (once; showing it again does nothing).
    void showGeom(SoNode* node);
    // Like showGeom, but before the geometry shown the ordinary way, so that at equal depth
    // this node wins picks (lines drawn on a surface).
    void showGeomInFront(SoNode* node);
    // Takes the node out of the viewers again.
    void hideGeom(SoNode* node);
    // What a pick on this module's geometry hit, appended to `words` as Tcl key-value
    // pairs (for `viewer ID pick`). The base adds nothing.
    virtual void describePick(SoPickedPoint const& pick, Tcl_Interp* interp, Tcl_Obj* words) const {}

    HxConnection portData;

  private:
    int mNumShownGeometry = 0;
};
