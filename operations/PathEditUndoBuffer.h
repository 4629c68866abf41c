#pragma once
// PathEditUndoBuffer: the linear, unbounded undo history of one editor. It owns its
// operations through handles; entries 0..current are done, the ones after are undone.
// Recording a new operation discards the undone ones.

#include "McDArray.h"
#include "McHandle.h"
#include "PathOperation.h"

class PathEditUndoBuffer {
  public:
    // Records an operation that has just been executed and whose redo state is taken.
    void push(PathOperation* op);
    void undo();
    void redo();
    void clear();

    int current = -1;
    McDArray<McHandle<PathOperation>> operations;
};
