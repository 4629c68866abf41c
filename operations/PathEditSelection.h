#pragma once
// PathEditSelection: a change of the editing selection as an undoable step of its own. It
// touches no path; the base's selection snapshots give undo and redo.
//
// The operation owns its copy of the selection to apply; the live selection is the editor's.

#include "SinglePathOperation.h"

class PathEditSelection : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditSelection)
  public:
    PathEditSelection(SelectionInfo* selection, SelectionInfo const& newSelection);

    // Applies the stored selection; never fails.
    bool exec() override;

    SelectionInfo newSelection;
};
