#pragma once
// PathEditClosePath: joins a path's last node back to its first with a segment computed by a
// connector. It works on the path set alone: no selection is kept with its snapshots or
// repaired after it.

#include "SinglePathOperation.h"

class PathConnector;

class PathEditClosePath : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditClosePath)
  public:
    PathEditClosePath(SurfacePathSet* pathSet, int pathIndex, PathConnector* connector);

    // False for an index past the last path, an already closed path, a path with fewer than
    // two control points, and when the connector cannot join the ends (the repeated first
    // node then stays appended; the caller rolls back).
    bool exec() override;

    int pathIndex;
    PathConnector* connector;  // not owned
};
