#pragma once
// HxDisplaySurfacePathSet: shows the HxSurfacePathSet connected to its data port: every path
// as a polyline on the surface, every control point as a small marker, the active paths and
// the active control point in colours of their own.
//
// It owns the editing selection of the set (getSelectionInfo): editors change it and call
// refresh(). It starts empty and starts again empty when another set is connected.
//
// Scene (getSceneNode):
//   root -> lines:   unlit, one SoIndexedLineSet (getPathLineNode) holding one polyline per
//                    path of at least two nodes, in path order
//        -> markers: an SoSeparator (getControlPointNode) holding one SoControlPointSeparator
//                    per control point on a path
// A pick on a line has an SoLineDetail whose line index counts the drawn polylines and whose
// part index counts segments over the whole line set; getPathOfLine and
// computePathIndexFromInventorSegmentIndex turn them into a path and a position on it.
//
// The scene goes in front of the other viewer geometry, so that lines lying exactly on the
// surface are met before the surface when drawing (the surface is pushed back) and picking
// (the surface then leaves a line hit just behind it in place).

#include "HxModule.h"
#include "SelectionInfo.h"

#include <vector>

class HxSurfacePathSet;
class SoControlPointSeparator;
class SoGroup;
class SoIndexedLineSet;
class SoPath;
class SoSeparator;
class SoSphere;
class SoVertexProperty;
class SurfacePathSet;

class HxDisplaySurfacePathSet : public HxModule {
    MC_TYPED_HEADER(HxDisplaySurfacePathSet)
    MC_TYPED_CREATABLE
  public:
    HxDisplaySurfacePathSet();
    ~HxDisplaySurfacePathSet() override;

    // === Selection
    SelectionInfo& getSelectionInfo() { return mSelection; }

    // === Scene
    SoSeparator* getSceneNode() const { return mRoot; }
    SoIndexedLineSet* getPathLineNode() const { return mLineSet; }
    SoSeparator* getControlPointNode() const { return mMarkers; }
    // Rebuilds lines and markers from the set and the selection, and shows them; while no set
    // is connected, empties and hides them.
    void refresh();

    // === Picks
    // The path drawn as polyline `line`; -1 for no such line.
    int getPathOfLine(int line) const;
    // The position on its path of the segment with line-set part index `part` (the segment
    // from position k to k + 1 is at position k); -1 for no such segment.
    int computePathIndexFromInventorSegmentIndex(int part) const;
    // The control-point separator nearest the tail of a pick's path, or null.
    static SoControlPointSeparator* findControlPoint(SoPath const* path);

    void update() override;
    // `path P segment S line L part Q` for a line, `controlPoint N path P` for a marker.
    void describePick(SoPickedPoint const& pick, Tcl_Interp* interp, Tcl_Obj* words) const override;

  private:
    void buildScene();
    SoGroup* makeMarkerLook(float r, float g, float b, SoSphere* sphere);
    void buildLines(SurfacePathSet const& set);
    void buildMarkers(SurfacePathSet const& set);
    float markerRadius(SurfacePathSet const& set) const;

    SelectionInfo mSelection;
    // The set the selection belongs to (null: none).
    HxSurfacePathSet* mShownSet = nullptr;

    SoSeparator* mRoot = nullptr;
    SoIndexedLineSet* mLineSet = nullptr;
    SoVertexProperty* mLineProperty = nullptr;
    SoSeparator* mMarkers = nullptr;
    // Shared by every marker: complexity, material and sphere.
    SoGroup* mMarkerLook = nullptr;
    SoGroup* mActiveMarkerLook = nullptr;
    SoSphere* mMarkerSphere = nullptr;
    SoSphere* mActiveMarkerSphere = nullptr;

    // Per drawn polyline: its path and the line-set part index of its first segment.
    std::vector<int> mLinePaths;
    std::vector<int> mLineFirstSegment;
    int mNumSegments = 0;
};
