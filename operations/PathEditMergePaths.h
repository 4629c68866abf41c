#pragma once
// PathEditMergePaths: joins the listed paths whose ends meet into longer paths, end to start,
// reversing paths as needed. Afterwards every empty path of the set is removed and the doubled
// node at each join is merged.
//
// Indices are not checked: the caller passes valid ones. A path listed twice meets itself and
// is dropped; the split at intersections relies on that for lone closed loops.

#include "SinglePathOperation.h"

class PathEditMergePaths : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditMergePaths)
  public:
    PathEditMergePaths(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<int> pathIndices);

    // False, changing nothing, for fewer than two indices; true otherwise, joined or not.
    bool updatePathset() override;

    McDArray<int> pathIndices;

  private:
    // Joins every later listed path that meets the path at list position i, one after another.
    void mergeIntoPathAt(int64_t i);
    // Joins q to the end of p if their ends meet, reversing them as needed; false if not.
    bool joinIfMeeting(int p, int q);
    bool meet(SurfaceNode* a, SurfaceNode* b) const;
    void reversePath(int path);
    void removeEmptyPaths();
};
