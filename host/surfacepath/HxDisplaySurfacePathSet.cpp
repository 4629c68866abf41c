#include "HxDisplaySurfacePathSet.h"

#include "HxController.h"
#include "HxSurfacePathSet.h"
#include "SoControlPointSeparator.h"
#include "Surface.h"
#include "SurfacePathSet.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/nodes/SoComplexity.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <algorithm>

MC_TYPED_IMPL_CREATABLE(HxDisplaySurfacePathSet, HxModule)

namespace {

// Orange paths and cyan active paths over the grey surface; green control points, and the
// active one larger and red.
const uint32_t kPathColour = 0xff8c1aff;
const uint32_t kActivePathColour = 0x33e6ffff;
const float kControlPointColour[3] = {0.3f, 0.9f, 0.3f};
const float kActiveControlPointColour[3] = {1.0f, 0.15f, 0.15f};
const float kLineWidth = 2.5f;
// Marker radius as a fraction of the surface's bounding-box diagonal.
const float kMarkerRadius = 0.006f;
const float kActiveMarkerScale = 1.6f;

template <class Field, class T>
void assign(Field& field, std::vector<T> const& values) {
    field.setNum(static_cast<int>(values.size()));
    if (!values.empty()) field.setValues(0, static_cast<int>(values.size()), values.data());
}

SbVec3f toSb(McVec3f const& p) { return SbVec3f(p.x, p.y, p.z); }

void appendPair(Tcl_Interp* interp, Tcl_Obj* words, char const* key, int value) {
    Tcl_ListObjAppendElement(interp, words, Tcl_NewStringObj(key, -1));
    Tcl_ListObjAppendElement(interp, words, Tcl_NewIntObj(value));
}

}  // namespace

HxDisplaySurfacePathSet::HxDisplaySurfacePathSet() : HxModule(HxSurfacePathSet::getClassTypeId()) {
    HxController::getTheController();  // starts the scene-graph library
    SoControlPointSeparator::initClass();
    buildScene();
}

HxDisplaySurfacePathSet::~HxDisplaySurfacePathSet() {
    mMarkerLook->unref();
    mActiveMarkerLook->unref();
    mRoot->unref();
}

void HxDisplaySurfacePathSet::buildScene() {
    mRoot = new SoSeparator;
    mRoot->ref();
    mRoot->setName("pathSetDisplay");

    auto* lines = new SoSeparator;
    auto* lightModel = new SoLightModel;
    lightModel->model = SoLightModel::BASE_COLOR;
    auto* width = new SoDrawStyle;
    width->lineWidth = kLineWidth;
    mLineProperty = new SoVertexProperty;
    mLineProperty->materialBinding = SoVertexProperty::PER_FACE;  // one colour per polyline
    mLineSet = new SoIndexedLineSet;
    mLineSet->vertexProperty = mLineProperty;
    lines->addChild(lightModel);
    lines->addChild(width);
    lines->addChild(mLineSet);

    mMarkers = new SoSeparator;
    mMarkerSphere = new SoSphere;
    mActiveMarkerSphere = new SoSphere;
    mMarkerLook = makeMarkerLook(kControlPointColour[0], kControlPointColour[1], kControlPointColour[2], mMarkerSphere);
    mActiveMarkerLook = makeMarkerLook(kActiveControlPointColour[0], kActiveControlPointColour[1],
                                       kActiveControlPointColour[2], mActiveMarkerSphere);
    mRoot->addChild(lines);
    mRoot->addChild(mMarkers);
}

// Coarse spheres: thousands of markers must stay cheap to draw.
SoGroup* HxDisplaySurfacePathSet::makeMarkerLook(float r, float g, float b, SoSphere* sphere) {
    auto* look = new SoGroup;
    look->ref();
    auto* complexity = new SoComplexity;
    complexity->value = 0.2f;
    auto* material = new SoMaterial;
    material->diffuseColor.setValue(r, g, b);
    material->specularColor.setValue(0.3f, 0.3f, 0.3f);
    look->addChild(complexity);
    look->addChild(material);
    look->addChild(sphere);
    return look;
}

// === Updates

void HxDisplaySurfacePathSet::update() {
    HxSurfacePathSet* source = portData.source<HxSurfacePathSet>();
    if (source != mShownSet) {
        mSelection = SelectionInfo(source ? &source->pathSet : nullptr);
        mShownSet = source;
    }
    refresh();
}

void HxDisplaySurfacePathSet::refresh() {
    HxSurfacePathSet* source = portData.source<HxSurfacePathSet>();
    SurfacePathSet empty;
    buildLines(source ? source->pathSet : empty);
    buildMarkers(source ? source->pathSet : empty);
    if (source)
        showGeomInFront(mRoot);
    else
        hideGeom(mRoot);
}

// One polyline per path of two or more nodes. A node that is missing repeats the position
// before it, so that every path entry keeps its vertex and segment positions stay right.
void HxDisplaySurfacePathSet::buildLines(SurfacePathSet const& set) {
    std::vector<SbVec3f> points;
    std::vector<int32_t> indices;
    std::vector<uint32_t> colours;
    mLinePaths.clear();
    mLineFirstSegment.clear();
    mNumSegments = 0;
    for (int path = 0; path < set.getNumPaths(); ++path) {
        McDArray<int> const& nodes = set.paths[path].nodeIndices;
        if (nodes.size() < 2) continue;
        mLinePaths.push_back(path);
        mLineFirstSegment.push_back(mNumSegments);
        mNumSegments += static_cast<int>(nodes.size()) - 1;
        colours.push_back(mSelection.isPathActive(path) ? kActivePathColour : kPathColour);
        SbVec3f position(0, 0, 0);
        for (int node : nodes) {
            if (SurfaceNode const* surfaceNode = set.getNode(node)) position = toSb(surfaceNode->getPosition());
            indices.push_back(static_cast<int32_t>(points.size()));
            points.push_back(position);
        }
        indices.push_back(-1);
    }
    assign(mLineProperty->vertex, points);
    assign(mLineProperty->orderedRGBA, colours);
    assign(mLineSet->coordIndex, indices);
}

void HxDisplaySurfacePathSet::buildMarkers(SurfacePathSet const& set) {
    const float radius = markerRadius(set);
    mMarkerSphere->radius = radius;
    mActiveMarkerSphere->radius = kActiveMarkerScale * radius;
    // One notification for the whole rebuild, not one per marker.
    mMarkers->enableNotify(FALSE);
    mMarkers->removeAllChildren();
    std::vector<bool> drawn(static_cast<size_t>(set.getNumNodes()), false);
    for (SurfacePathSet::SurfacePath const& path : set.paths) {
        for (int node : path.nodeIndices) {
            SurfaceNode const* surfaceNode = set.getNode(node);
            if (!surfaceNode || !surfaceNode->isControlPoint || drawn[node]) continue;
            drawn[node] = true;
            auto* marker = new SoControlPointSeparator;
            marker->setNodeIndex(node);
            auto* at = new SoTranslation;
            at->translation = toSb(surfaceNode->getPosition());
            marker->addChild(at);
            marker->addChild(node == mSelection.getActiveCP() ? mActiveMarkerLook : mMarkerLook);
            mMarkers->addChild(marker);
        }
    }
    mMarkers->enableNotify(TRUE);
    mMarkers->touch();
}

float HxDisplaySurfacePathSet::markerRadius(SurfacePathSet const& set) const {
    McVec3f min, max;
    if (Surface const* surface = set.getSurface()) surface->getBoundingBox(min, max);
    const float diagonal = (max - min).length();
    return kMarkerRadius * (diagonal > 0 ? diagonal : 1.0f);
}

// === Picks

int HxDisplaySurfacePathSet::getPathOfLine(int line) const {
    return line >= 0 && line < static_cast<int>(mLinePaths.size()) ? mLinePaths[line] : -1;
}

// Coin counts the parts of an indexed line set over all its polylines: the first segment of
// polyline L has part index mLineFirstSegment[L].
int HxDisplaySurfacePathSet::computePathIndexFromInventorSegmentIndex(int part) const {
    if (part < 0 || part >= mNumSegments) return -1;
    auto line = std::upper_bound(mLineFirstSegment.begin(), mLineFirstSegment.end(), part) - 1;
    return part - *line;
}

SoControlPointSeparator* HxDisplaySurfacePathSet::findControlPoint(SoPath const* path) {
    for (int i = path ? path->getLength() - 1 : -1; i >= 0; --i) {
        SoNode* node = path->getNode(i);
        if (node->isOfType(SoControlPointSeparator::getClassTypeId()))
            return static_cast<SoControlPointSeparator*>(node);
    }
    return nullptr;
}

void HxDisplaySurfacePathSet::describePick(SoPickedPoint const& pick, Tcl_Interp* interp, Tcl_Obj* words) const {
    if (SoControlPointSeparator const* marker = findControlPoint(pick.getPath())) {
        HxSurfacePathSet const* source = portData.source<HxSurfacePathSet>();
        appendPair(interp, words, "controlPoint", marker->getNodeIndex());
        appendPair(interp, words, "path", source ? source->pathSet.getPathForNode(marker->getNodeIndex()) : -1);
        return;
    }
    SoDetail const* detail = pick.getDetail(mLineSet);
    if (!detail || !detail->isOfType(SoLineDetail::getClassTypeId())) return;
    auto const* line = static_cast<SoLineDetail const*>(detail);
    appendPair(interp, words, "path", getPathOfLine(line->getLineIndex()));
    appendPair(interp, words, "segment", computePathIndexFromInventorSegmentIndex(line->getPartIndex()));
    appendPair(interp, words, "line", line->getLineIndex());
    appendPair(interp, words, "part", line->getPartIndex());
}
