#pragma once
// SelectionInfo: the editing selection on a path set: the active paths and, on them, at most
// one active control point (a node index). A plain value: copies are how editors snapshot
// and restore it. It refers to its path set without owning it.
//
// Exactly one active path means the path is being edited (isInEditMode); getActivePath()
// names it, and is -1 with none or several active paths.

#include "McDArray.h"

class SurfacePathSet;

class SelectionInfo {
  public:
    SelectionInfo() = default;
    explicit SelectionInfo(SurfacePathSet* pathSet) : mPathSet(pathSet) {}

    // === Queries
    SurfacePathSet* getPathSet() const { return mPathSet; }
    McDArray<int> const& getActivePaths() const { return mActivePaths; }
    int getActivePath() const { return mActivePaths.size() == 1 ? mActivePaths[0] : -1; }
    int getActiveCP() const { return mActiveCP; }
    bool isPathActive(int path) const { return mActivePaths.findFirst(path) >= 0; }
    bool noPathSelected() const { return mActivePaths.empty(); }
    bool isInEditMode() const { return mActivePaths.size() == 1; }
    // True when the node index lies on one of the active paths.
    bool isCPOnActivePath(int nodeIndex) const;

    // === Mutators
    // Adds a path (once) to the active paths; negative indices are ignored.
    void addToActivePaths(int path);
    // The path becomes the only active path (-1: none); the active control point is kept
    // only if it lies on that path.
    void setSinglePathActive(int path);
    // Removes a path from the active paths, and the active control point if it was on it.
    void deselectPath(int path);
    void deselectAll();
    // -1 clears.
    void setActiveCP(int nodeIndex) { mActiveCP = nodeIndex < 0 ? -1 : nodeIndex; }
    // Drops active paths the set no longer has and an active control point that is no longer
    // a control point on an active path.
    void synchronize();

  private:
    SurfacePathSet* mPathSet = nullptr;
    McDArray<int> mActivePaths;
    int mActiveCP = -1;
};
