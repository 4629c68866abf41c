#pragma once
// PathEditSnapNodes: replaces the nodes of chosen paths that lie close to a surface vertex or
// edge by nodes of that simpler kind, through the path set's node factory.
//
// Only node objects change: every path keeps its node indices, so a node shared with a path
// that was not chosen changes for that path too. The factory's own setting is put back after
// the run. Never fails: a run that replaces nothing is still an undoable step.

#include "McBitfield.h"
#include "SinglePathOperation.h"

class PathEditSnapNodes : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditSnapNodes)
  public:
    explicit PathEditSnapNodes(SurfacePathSet* pathSet);

    bool exec() override;
    // The number of nodes replaced; 0 when the set has no surface.
    int snapNodes();

    float tolerance;
    // SurfaceNodeFactory::Mode: 1 barycentric, 2 world; only the low byte reaches the factory.
    int mode;
    // Empty: every node of the table, on a path or not.
    McDArray<int> paths;

  private:
    McBitfield chosenNodes() const;
};
