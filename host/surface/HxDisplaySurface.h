#pragma once
// HxDisplaySurface: shows the HxSurface connected to its data port in every viewer: shaded
// light grey, as lines, as points, or shaded with its edges on top (port `drawStyle`).
//
// It owns its scene (getSceneNode); the surface in it is one SoSurfaceMeshShape, so a pick on
// it has an SoFaceDetail whose face index is the surface's triangle index. The shape keeps a
// copy of the surface, rebuilt whenever the surface fires; the scene is shown while a surface
// is connected and hidden when the connection goes (also when the surface is removed).

#include "HxModule.h"
#include "HxPortDrawStyle.h"

class HxSurface;
class SoDrawStyle;
class SoSeparator;
class SoSurfaceMeshShape;
class SoSwitch;

class HxDisplaySurface : public HxModule {
    MC_TYPED_HEADER(HxDisplaySurface)
    MC_TYPED_CREATABLE
  public:
    HxDisplaySurface();
    ~HxDisplaySurface() override;

    HxPortDrawStyle drawStyle;

    // The root of this display's scene; every pick on the surface runs through it.
    SoSeparator* getSceneNode() const { return mRoot; }
    SoSurfaceMeshShape* getShape() const { return mShape; }

    void update() override;
    // Adds `triangle T` for a pick on the surface.
    void describePick(SoPickedPoint const& pick, Tcl_Interp* interp, Tcl_Obj* words) const override;

  private:
    void buildScene();
    SoSeparator* makeEdges();
    void applyDrawStyle();

    SoSeparator* mRoot = nullptr;
    SoSurfaceMeshShape* mShape = nullptr;
    SoDrawStyle* mStyle = nullptr;
    SoSwitch* mEdges = nullptr;
    // The surface whose copy the shape holds (null: none).
    HxSurface* mShownSurface = nullptr;
};
