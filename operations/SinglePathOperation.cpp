#include "SinglePathOperation.h"

#include "SurfacePathEditorViewerBase.h"

MC_TYPED_IMPL(SinglePathOperation, PathOperation)

SinglePathOperation::SinglePathOperation(SurfacePathSet* pathSet_, SelectionInfo* selection_, Surface* surface_)
    : pathSet(pathSet_),
      selection(selection_),
      surface(surface_),
      surfaceState{Surface(nullptr), Surface(nullptr)},
      viewer(nullptr) {}

// Surfaces, then selections, then path sets, as the snapshots were declared in reverse.
SinglePathOperation::~SinglePathOperation() = default;

void SinglePathOperation::init(int i) {
    if (pathSet) pathSetState[i].copyData(*pathSet, nullptr);
    if (selection) selectionState[i] = *selection;
    if (surface) surfaceState[i].copyData(*surface);
}

void SinglePathOperation::undoRedo(int i) {
    if (pathSet) pathSet->copyData(pathSetState[i], nullptr);
    if (selection) *selection = selectionState[i];
    if (surface) surface->copyData(surfaceState[i]);
    // The editor refreshes what depends on the surface (displays, connectors).
    if (viewer) viewer->updateData();
}

bool SinglePathOperation::exec() {
    if (!pathSet) return false;
    int cp = -1, pathsBefore = -1, cpOrdinal = -1, cpCountBefore = -1;
    McVec3f posBefore(0, 0, 0);
    if (selection) {
        cp = selection->getActiveCP();
        pathsBefore = static_cast<int>(pathSet->paths.size());
        if (cp > -1) {
            const int ap = selection->getActivePath();
            cpOrdinal = pathSet->getCPIndexOnPath(cp, ap);
            cpCountBefore = pathSet->getNumControlPointsOnPath(ap);
            if (SurfaceNode* node = pathSet->getNode(cp)) posBefore = node->getPosition();
        }
    }
    if (!updatePathset()) return false;
    if (!selection) return true;
    repairSelection(cp, pathsBefore, cpOrdinal, cpCountBefore, posBefore);
    return true;
}

// The active control point survives only if the set has as many paths as before, the active
// path as many control points, and the control point of the same ordinal lies where the old
// one lay; its node index is re-mapped, since the operation may have replaced the node.
void SinglePathOperation::repairSelection(int cp, int pathsBefore, int cpOrdinal, int cpCountBefore,
                                          McVec3f const& posBefore) {
    const int pathsAfter = static_cast<int>(pathSet->paths.size());
    if (pathsBefore < pathsAfter) {
        selection->deselectAll();
        selection->setSinglePathActive(pathsAfter - 1);
        return;
    }
    if (pathsBefore > pathsAfter) {
        selection->deselectAll();
        return;
    }
    if (cp == -1) {
        selection->setActiveCP(-1);
        return;
    }
    const int ap = selection->getActivePath();
    if (pathSet->getNumControlPointsOnPath(ap) != cpCountBefore) {
        selection->setActiveCP(-1);
        return;
    }
    const int newCp = pathSet->getIndexOfIthCP(cpOrdinal, ap);
    SurfaceNode* node = pathSet->getNode(newCp);
    if (!node) {  // the old control point was not on the active path: nothing to re-find
        selection->setActiveCP(-1);
        return;
    }
    const McVec3f posAfter = node->getPosition();
    const McVec3f d = posBefore - posAfter;
    // Single precision on purpose, summed in this order.
    const float distance2 = d.x * d.x + d.y * d.y + d.z * d.z;
    const float tolerance = 1e-06f;
    const float tolerance2 = tolerance * tolerance;
    selection->setActiveCP(distance2 > tolerance2 ? -1 : newCp);
}
