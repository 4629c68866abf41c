#pragma once
// Shared helpers for operation tests: a path set on a small surface, the editor's protocol,
// and a snapshot of everything an operation may change, compared by node identity.

#include "DijkstraConnector.h"
#include "McHandle.h"
#include "PathOperation.h"
#include "SelectionInfo.h"
#include "Surface.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

// The surface vertices or the node indices of a path, in path order.
using Vertices = std::vector<int>;

// A path set on its own surface with a selection, as an editor holds them.
struct EditedPathSet {
    explicit EditedPathSet(Surface surface);
    EditedPathSet(EditedPathSet const&) = delete;

    // Appends a path through new vertex nodes at the given surface vertices. Repeating the
    // first vertex at the end closes the path (the same node index). Control points: the
    // vertices listed in `controlPoints`, or both ends when it is empty.
    int addVertexPath(std::vector<int> vertices, std::vector<int> const& controlPoints = {});
    // Node index of the node at `position` of `path`.
    int nodeAt(int path, int position) const;
    // Makes `path` the only active path, edited at the control point at `position`.
    void select(int path, int position);

    Surface surface;
    SurfacePathSet pathSet;
    SelectionInfo selection;
};

// Runs an operation as an editor does: initUndo, exec, then initRedo on success or undo on
// failure. Returns what exec returned. A handle holds the operation for the call, so a new
// operation may be passed directly.
bool runProtocol(McHandle<PathOperation> const& op);

// Everything an operation may change, with nodes by identity.
struct PathSetState {
    std::vector<std::vector<int>> paths;
    std::vector<SurfaceNode const*> nodes;
    std::vector<bool> controlPoints;
    std::vector<int> activePaths;
    int activeCP = -1;

    bool operator==(PathSetState const& other) const;
};
PathSetState captureState(EditedPathSet const& edited);
std::ostream& operator<<(std::ostream& out, PathSetState const& state);

// Runs an operation that must succeed through the protocol, then checks that undo() restores
// the state before it and redo() the state after it. Returns the state after it.
PathSetState expectUndoRedoRestores(EditedPathSet& edited, McHandle<PathOperation> const& op);
// Success when an operation run through the protocol fails and leaves paths, node table and
// selection as they were.
::testing::AssertionResult failsWithoutChange(EditedPathSet& edited, McHandle<PathOperation> const& op);

// The node indices of a path as a plain vector.
std::vector<int> pathOf(SurfacePathSet const& pathSet, int path);
// The surface vertices of a path whose nodes are all vertex nodes (-1 for other nodes).
std::vector<int> verticesOf(SurfacePathSet const& pathSet, int path);
// The vertices of every path in path order.
std::vector<Vertices> verticesOfAllPaths(SurfacePathSet const& pathSet);
// The surface vertices of a path's control points in path order (-1 for non-vertex nodes); a
// closed path lists its first control point again at the end.
std::vector<int> controlPointVerticesOf(SurfacePathSet const& pathSet, int path);
// Success when the set passes its structural check with segments, else the problem found.
::testing::AssertionResult isConsistent(SurfacePathSet const& pathSet);

// A new vertex node at `vertex`, flagged as a control point; reference count 0, so the
// operation or node table that takes it over owns it.
SurfaceNode* makeControlPoint(SurfacePathSet const& pathSet, int vertex);

// A path set being edited on the strip of eight triangles, joined by shortest edge paths. The
// strip's bottom row is at the even vertices (0, 2, 4, ...), its top row at the odd ones, one
// unit apart; vertex 0 is the origin.
class StripEditTest : public ::testing::Test {
  protected:
    StripEditTest() { dijkstra.init(&set.pathSet, nullptr); }
    // A new control point inside `triangle`, where the connector cannot go.
    SurfaceNode* insideTriangle(int triangle) const;

    EditedPathSet set{makeStrip(8)};
    DijkstraConnector dijkstra;
};
