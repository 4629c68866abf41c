#pragma once
// PathOperation: one undoable change of a surface path set. Operations are shared through
// McHandle; the undo buffer that records an operation owns it.

#include "McHandable.h"
#include "McTypedObject.h"

class PathOperation : public McTypedObject, public McHandable {
    MC_TYPED_HEADER(PathOperation)
  public:
    ~PathOperation() override = default;

    // Carries the operation out; true on success.
    virtual bool exec() = 0;
    // Take the state before / after exec.
    virtual void initUndo() {}
    virtual void initRedo() {}
    // Restore the state before / after exec.
    virtual void undo() {}
    virtual void redo() {}
};
