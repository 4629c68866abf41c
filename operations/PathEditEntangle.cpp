#include "PathEditEntangle.h"

#include "PathEntangler.h"

MC_TYPED_IMPL(PathEditEntangle, SinglePathOperation)

PathEditEntangle::PathEditEntangle(SurfacePathSet* pathSet_, SelectionInfo* selection_, McDArray<int> const& paths,
                                   float tolerance)
    : SinglePathOperation(pathSet_, selection_, nullptr), entangleTolerance(tolerance), pathIndices(paths) {}

PathEditEntangle::PathEditEntangle(SurfacePathSet* pathSet_, SelectionInfo* selection_, float tolerance)
    : PathEditEntangle(pathSet_, selection_, McDArray<int>(), tolerance) {}

bool PathEditEntangle::updatePathset() {
    PathEntangler entangler(pathSet, pathIndices, entangleTolerance, true);
    entangler.compute();
    return true;
}
