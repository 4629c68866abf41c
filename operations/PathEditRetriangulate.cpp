#include "PathEditRetriangulate.h"

#include "HxSurface.h"
#include "PathTriangulator.h"
#include "PathTriangulatorFactory.h"
#include "SurfacePathEditorViewerBase.h"

#include <memory>

MC_TYPED_IMPL(PathEditRetriangulate, SinglePathOperation)

PathEditRetriangulate::PathEditRetriangulate(SurfacePathSet* pathSet_, char const* name, float tolerance_, bool flag_)
    : SinglePathOperation(nullptr, nullptr, nullptr), triangulatorName(name ? name : ""), flag(flag_),
      tolerance(tolerance_) {
    pathSet = pathSet_;
    if (pathSet) surface = pathSet->getSurface();
}

bool PathEditRetriangulate::exec() {
    std::unique_ptr<PathTriangulator> triangulator(
        PathTriangulatorFactory::createPathTriangulator(triangulatorName.c_str()));
    triangulator->setTolerance(tolerance);
    triangulator->setPathSet(pathSet);
    const bool success = triangulator->run(flag);
    if (viewer) viewer->updateData();
    return success;
}

void PathEditRetriangulate::undo() {
    undoRedo(0);
    rebuildSurface();
}

void PathEditRetriangulate::redo() {
    undoRedo(1);
    rebuildSurface();
}

void PathEditRetriangulate::rebuildSurface() {
    Surface* restored = pathSet ? pathSet->getSurface() : nullptr;
    if (!restored) return;
    restored->removeObsoleteTriangles();
    restored->createAllEdges(1);
    restored->computeNormalsPerTriangle();
    restored->computeTrianglesPerPoint();
    restored->createNeighbours();
    if (HxSurface* holder = HxSurface::findHolder(restored)) {
        holder->touch(~0u);
        holder->fire(1);
    }
}
