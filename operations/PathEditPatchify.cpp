#include "PathEditPatchify.h"

#include "SurfacePathEditorViewerBase.h"
#include "SurfacePathPatchifier.h"

MC_TYPED_IMPL(PathEditPatchify, SinglePathOperation)

PathEditPatchify::PathEditPatchify(SurfacePathSet* pathSet_)
    : SinglePathOperation(nullptr, nullptr, nullptr), patchSet(pathSet_) {
    if (patchSet) surface = patchSet->getSurface();
}

bool PathEditPatchify::exec() {
    SurfacePathPatchifier patchifier(patchSet, patchSet ? patchSet->getSurface() : nullptr);
    if (!patchifier.compute(true)) return false;
    if (viewer) viewer->updateData();
    return true;
}
