#include "PathEditSelection.h"

MC_TYPED_IMPL(PathEditSelection, SinglePathOperation)

PathEditSelection::PathEditSelection(SelectionInfo* selection_, SelectionInfo const& newSelection_)
    : SinglePathOperation(nullptr, selection_, nullptr), newSelection(newSelection_) {}

bool PathEditSelection::exec() {
    if (selection) *selection = newSelection;
    return true;
}
