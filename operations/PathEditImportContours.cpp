#include "PathEditImportContours.h"

MC_TYPED_IMPL(PathEditImportContours, SinglePathOperation)

PathEditImportContours::PathEditImportContours(SurfacePathSet* pathSet_, SelectionInfo* selection_, Surface* surface_)
    : SinglePathOperation(pathSet_, selection_, nullptr), targetSet(pathSet_), contourSurface(surface_) {}

bool PathEditImportContours::updatePathset() {
    targetSet->importContours(contourSurface);
    return true;
}
