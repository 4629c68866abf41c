#include "PathEditUndoBuffer.h"

void PathEditUndoBuffer::push(PathOperation* op) {
    const int64_t count = operations.size();
    if (count - 1 > current) operations.remove(current + 1, count - 1 - current);
    ++current;
    operations.append(McHandle<PathOperation>(op));
}

void PathEditUndoBuffer::undo() {
    if (current < 0) return;
    --current;
    if (PathOperation* op = operations[current + 1]) op->undo();
}

void PathEditUndoBuffer::redo() {
    if (current + 1 >= operations.size()) return;
    ++current;
    if (PathOperation* op = operations[current]) op->redo();
}

void PathEditUndoBuffer::clear() {
    operations.clear();
    current = -1;
}
