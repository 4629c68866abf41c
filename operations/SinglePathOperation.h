#pragma once
// SinglePathOperation: the base of every concrete path operation. It implements undo and redo
// by whole snapshots of the path set, the selection and (for operations that change the
// triangulation) the surface, taken before (index 0) and after (index 1) the change, so a
// concrete operation only has to make its change in updatePathset().
//
// The snapshots are owned by the operation; the edited path set, selection, surface and the
// viewer are not.

#include "PathOperation.h"
#include "SelectionInfo.h"
#include "Surface.h"
#include "SurfacePathSet.h"

class SurfacePathEditorViewerBase;

class SinglePathOperation : public PathOperation {
    MC_TYPED_HEADER(SinglePathOperation)
  public:
    SinglePathOperation(SurfacePathSet* pathSet, SelectionInfo* selection, Surface* surface);
    ~SinglePathOperation() override;

    // Runs updatePathset(), then repairs the selection.
    bool exec() override;
    void initUndo() override { init(0); }
    void initRedo() override { init(1); }
    void undo() override { undoRedo(0); }
    void redo() override { undoRedo(1); }
    // The change itself; the base has none and fails.
    virtual bool updatePathset() { return false; }

    // Takes snapshot i of whatever is present.
    void init(int i);
    // Restores snapshot i.
    void undoRedo(int i);

    SurfacePathSet* pathSet;
    SelectionInfo* selection;
    Surface* surface;
    SurfacePathSet pathSetState[2];
    SelectionInfo selectionState[2];
    Surface surfaceState[2];
    SurfacePathEditorViewerBase* viewer;

  private:
    void repairSelection(int cp, int pathsBefore, int cpOrdinal, int cpCountBefore, McVec3f const& posBefore);
};
