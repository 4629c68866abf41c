#include "HxDisplaySurface.h"

#include "HxController.h"
#include "HxSurface.h"
#include "SoSurfaceMeshShape.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPickStyle.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoSwitch.h>

MC_TYPED_IMPL_CREATABLE(HxDisplaySurface, HxModule)

HxDisplaySurface::HxDisplaySurface() : HxModule(HxSurface::getClassTypeId()), drawStyle(this, "drawStyle") {
    HxController::getTheController();  // starts the scene-graph library
    SoSurfaceMeshShape::initClass();
    buildScene();
}

HxDisplaySurface::~HxDisplaySurface() { mRoot->unref(); }

// root -> hints, material, draw style, offset, surface, edges (a switch)
// Surfaces may be open or inconsistently oriented: the hints ask for two-sided lighting and no
// culling. The offset pushes the faces back, so that lines lying exactly on the surface (paths,
// the edges) win the depth test.
void HxDisplaySurface::buildScene() {
    mRoot = new SoSeparator;
    mRoot->ref();
    mRoot->setName("surfaceDisplay");
    mRoot->renderCaching = SoSeparator::OFF;  // the shape draws from its own arrays each time

    auto* hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    hints->shapeType = SoShapeHints::UNKNOWN_SHAPE_TYPE;
    auto* material = new SoMaterial;
    material->diffuseColor.setValue(0.72f, 0.72f, 0.70f);
    material->ambientColor.setValue(0.25f, 0.25f, 0.25f);
    material->specularColor.setValue(0.15f, 0.15f, 0.15f);
    material->shininess = 0.3f;
    mStyle = new SoDrawStyle;
    auto* offset = new SoPolygonOffset;
    offset->factor = 2.0f;
    offset->units = 2.0f;
    offset->styles = SoPolygonOffset::FILLED | SoPolygonOffset::LINES | SoPolygonOffset::POINTS;
    mShape = new SoSurfaceMeshShape;
    mEdges = new SoSwitch;
    mEdges->addChild(makeEdges());

    SoNode* const children[] = {hints, material, mStyle, offset, mShape, mEdges};
    for (SoNode* node : children) mRoot->addChild(node);
    applyDrawStyle();
}

// The same shape again as dark unlit lines, pushed back less than the faces, so that the edges
// lie between the faces and the paths; picks go to the faces only.
SoSeparator* HxDisplaySurface::makeEdges() {
    auto* edges = new SoSeparator;
    auto* pickStyle = new SoPickStyle;
    pickStyle->style = SoPickStyle::UNPICKABLE;
    auto* lightModel = new SoLightModel;
    lightModel->model = SoLightModel::BASE_COLOR;
    auto* colour = new SoBaseColor;
    colour->rgb.setValue(0.25f, 0.25f, 0.28f);
    auto* lines = new SoDrawStyle;
    lines->style = SoDrawStyle::LINES;
    auto* offset = new SoPolygonOffset;
    offset->styles = SoPolygonOffset::LINES;
    SoNode* const children[] = {pickStyle, lightModel, colour, lines, offset, mShape};
    for (SoNode* node : children) edges->addChild(node);
    return edges;
}

void HxDisplaySurface::applyDrawStyle() {
    const HxPortDrawStyle::Style style = drawStyle.getStyle();
    const SoDrawStyle::Style faces = style == HxPortDrawStyle::LINES    ? SoDrawStyle::LINES
                                     : style == HxPortDrawStyle::POINTS ? SoDrawStyle::POINTS
                                                                        : SoDrawStyle::FILLED;
    if (mStyle->style.getValue() != faces) mStyle->style = faces;
    const int edges = style == HxPortDrawStyle::OUTLINED ? 0 : SO_SWITCH_NONE;
    if (mEdges->whichChild.getValue() != edges) mEdges->whichChild = edges;
}

void HxDisplaySurface::update() {
    HxSurface* surface = portData.source<HxSurface>();
    if (!surface) {
        hideGeom(mRoot);
        if (mShownSurface) mShape->clear();
        mShownSurface = nullptr;
        return;
    }
    // The surface fires its readers when it changes, which marks the connection new.
    if (surface != mShownSurface || portData.isNew()) {
        mShape->setSurface(*surface->getSurface());
        mShownSurface = surface;
    }
    applyDrawStyle();
    showGeom(mRoot);
}

void HxDisplaySurface::describePick(SoPickedPoint const& pick, Tcl_Interp* interp, Tcl_Obj* words) const {
    SoDetail const* detail = pick.getDetail(mShape);
    if (!detail || !detail->isOfType(SoFaceDetail::getClassTypeId())) return;
    Tcl_ListObjAppendElement(interp, words, Tcl_NewStringObj("triangle", -1));
    Tcl_ListObjAppendElement(interp, words, Tcl_NewIntObj(static_cast<SoFaceDetail const*>(detail)->getFaceIndex()));
}
