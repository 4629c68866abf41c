#pragma once
// Shared helpers for operation tests: a path set on a small surface, the editor's protocol,
// and a snapshot of everything an operation may change, compared by node identity.

#include "PathOperation.h"
#include "SelectionInfo.h"
#include "Surface.h"
#include "SurfacePathSet.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>
#include <vector>

// A path set on its own surface with a selection, as an editor holds them.
struct EditedPathSet {
    explicit EditedPathSet(Surface surface);
    EditedPathSet(EditedPathSet const&) = delete;

    // Appends a path through new vertex nodes at the given surface vertices. Repeating the
    // first vertex at the end closes the path (the same node index). Control points: the
    // vertices listed in `controlPoints`, or both ends when it is empty.
    int addVertexPath(std::initializer_list<int> vertices, std::initializer_list<int> controlPoints = {});
    // Node index of the node at `position` of `path`.
    int nodeAt(int path, int position) const;

    Surface surface;
    SurfacePathSet pathSet;
    SelectionInfo selection;
};

// Runs an operation as an editor does: initUndo, exec, then initRedo on success or undo on
// failure. Returns what exec returned.
bool runProtocol(PathOperation* op);

// Everything an operation may change, with nodes by identity.
struct PathSetState {
    std::vector<std::vector<int>> paths;
    std::vector<SurfaceNode const*> nodes;
    std::vector<bool> controlPoints;
    std::vector<int> activePaths;
    int activeCP = -1;

    bool operator==(PathSetState const& other) const;
    bool operator!=(PathSetState const& other) const { return !(*this == other); }
};
PathSetState captureState(SurfacePathSet const& pathSet, SelectionInfo const* selection = nullptr);
PathSetState captureState(EditedPathSet const& edited);
std::ostream& operator<<(std::ostream& out, PathSetState const& state);

// The node indices of a path as a plain vector.
std::vector<int> pathOf(SurfacePathSet const& pathSet, int path);
// The surface vertices of a path whose nodes are all vertex nodes (-1 for other nodes).
std::vector<int> verticesOf(SurfacePathSet const& pathSet, int path);

// A real mesh of the test data read through the host's reader, e.g. readMesh("elephant.off");
// a failed read fails the calling test.
Surface readMesh(char const* name);
// Appends a path through new vertex nodes at `vertices` (computed at run time), with control
// points at both ends; returns its index.
int addVertexPath(SurfacePathSet& pathSet, std::vector<int> const& vertices);

// A new vertex node at `vertex`, flagged as a control point; reference count 0, so the
// operation or node table that takes it over owns it.
SurfaceNode* makeControlPoint(SurfacePathSet const& pathSet, int vertex);
// The surface vertices of a path's control points in path order (-1 for non-vertex nodes); a
// closed path lists its first control point again at the end.
std::vector<int> controlPointVerticesOf(SurfacePathSet const& pathSet, int path);
// Success when the set passes its structural check with segments, else the problem found.
::testing::AssertionResult isConsistent(SurfacePathSet const& pathSet);
// Runs an operation that must succeed through the protocol, then checks that undo() restores
// the state before it and redo() the state after it. Returns the state after it.
PathSetState expectUndoRedoRestores(EditedPathSet& edited, PathOperation* op);
// The vertices of a shortest edge path on `surface`, both ends included; empty if none.
std::vector<int> shortestVertexPath(Surface& surface, int from, int to);
// Appends a path through new control points at the vertices `before`, the existing node
// `shared`, and new control points at the vertices `after`: a path crossing another at a
// junction. Returns its index.
int addPathThrough(SurfacePathSet& pathSet, std::initializer_list<int> before, int shared,
                   std::initializer_list<int> after);
