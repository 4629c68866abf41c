#include "PathEditClosePath.h"

MC_TYPED_IMPL(PathEditClosePath, SinglePathOperation)

PathEditClosePath::PathEditClosePath(SurfacePathSet* pathSet_, int pathIndex_, PathConnector* connector_)
    : SinglePathOperation(pathSet_, nullptr, nullptr), pathIndex(pathIndex_), connector(connector_) {}

bool PathEditClosePath::exec() {
    if (!pathSet || pathIndex > pathSet->getNumPaths() - 1) return false;
    if (pathSet->isPathClosed(pathIndex)) return false;
    // Also refuses a negative index, which names a path without control points.
    if (pathSet->getNumControlPointsOnPath(pathIndex) < 2) return false;
    McDArray<int>& indices = pathSet->paths[pathIndex].nodeIndices;
    indices.append(indices[0]);
    const int n = static_cast<int>(indices.size());
    return pathSet->connectSurfaceNodes(pathIndex, n - 2, n - 1, connector);
}
