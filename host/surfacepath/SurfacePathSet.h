#pragma once
// SurfacePathSet: polyline paths on one triangulated surface.
//
// All paths share one table of nodes (`nodes`); a path is an ordered list of indices into it.
// A path is closed when it has more than one entry and its first and last entries are equal.
// The set owns its paths and, through counted handles, shares its nodes with whoever else
// holds them (copies of the set, undo snapshots). Copies also share the arrays themselves
// until one side writes (see McDArray), so read them through const access where nothing is
// written. It does not own its surface.
//
// `paths` and `nodes` are written directly by the editing code, so the set keeps no derived
// state about them: every query looks at them afresh.
//
// Positions are indices into one path's node list; node indices are indices into `nodes`.

#include "McDArray.h"
#include "McHandle.h"
#include "McString.h"
#include "SurfaceNode.h"
#include "SurfaceNodeFactory.h"

class PathConnector;
class Surface;

class SurfacePathSet {
  public:
    struct SurfacePath {
        McDArray<int> nodeIndices;
    };

    explicit SurfacePathSet(Surface* surface = nullptr) : nodeFactory(surface) {}

    McDArray<SurfacePath> paths;
    McDArray<McHandle<SurfaceNode>> nodes;
    SurfaceNodeFactory nodeFactory;
    // Old node index -> new node index (-1: dropped) of the last removeDuplicateNodes that
    // renumbered the node table, so that holders of node indices can follow; empty otherwise.
    McDArray<int> nodeRemap;

    // === Surface
    Surface* getSurface() const { return nodeFactory.getSurface(); }
    void setSurface(Surface* surface) { nodeFactory.setSurface(surface); }

    // === Copies
    // Makes this a copy of `other` at the cost of one reference per array: the path lists and
    // the node table are shared until either set writes to them. A non-null surface replaces
    // this set's surface and the nodes are then copied onto it instead of shared.
    void copyData(SurfacePathSet const& other, Surface* surface);
    // Removes every path and node.
    void clear();

    // === Paths
    int getNumPaths() const { return static_cast<int>(paths.size()); }
    int getNumNodesOnPath(int path) const;
    bool isValidPath(int path) const { return path >= 0 && path < getNumPaths(); }
    // Copy of the path's node indices into `nodeIndices`; false (and empty) for no such path.
    bool getPath(int path, McDArray<int>& nodeIndices) const;
    bool isPathClosed(int path) const;
    // True for a path without nodes and for an index that names no path.
    bool isPathEmpty(int path) const;
    // Sum of the segment lengths (0 for no such path).
    float getPathLength(int path) const;
    // Appends a path of the given node indices; returns its index.
    int addPath(McDArray<int> const& nodeIndices);

    // === Nodes
    int getNumNodes() const { return static_cast<int>(nodes.size()); }
    // The node of a node index, or of a position on a path; null when there is none.
    SurfaceNode* getNode(int nodeIndex) const;
    SurfaceNode* getSurfaceNode(int path, int position) const;
    // Appends a node to the table; returns its index.
    int addNode(SurfaceNode* node);
    // First position of a node index on a path, -1 if it is not there.
    int getNodeIndexOnPath(int path, int nodeIndex) const;
    // First path holding a node index, -1 if none does.
    int getPathForNode(int nodeIndex) const;
    // True when every node of the table is a vertex node.
    bool isPureSurfaceVertexPath() const;

    // === Control points
    // Counted without the repeated last entry of a closed path.
    int getNumControlPointsOnPath(int path) const;
    // Which control point of the path (0-based, in path order) the node is; -1 if none.
    int getCPIndexOnPath(int nodeIndex, int path) const;
    // Node index of the i-th control point of the path, -1 if there is none.
    int getIndexOfIthCP(int i, int path) const;
    // Position of the nearest control point before / after `position`. On an open path the
    // first (last) position is its own previous (next) control point, and the search stops
    // at the path's ends; on a closed path it wraps across the seam. -1 for bad arguments.
    int getPrevControlPoint(int path, int position) const;
    int getNextControlPoint(int path, int position) const;

    // === Editing
    // Removes the nodes strictly between two positions. With from > to on a closed path the
    // stretch wraps past the end: positions after `from` and before `to` go, first and last
    // entry included. False (nothing changed) for bad arguments.
    bool removeIntermediateNodesFromPath(int path, int from, int to);
    // Replaces the nodes strictly between two positions (from < to) by the intermediate nodes
    // the connector computes, appended to the node table. False, changing nothing, when the
    // connector finds no connection.
    bool connectSurfaceNodes(int path, int from, int to, PathConnector* connector);
    // Removes triangle nodes whose two neighbours on the path lie on a common triangle, so the
    // straight segment between the neighbours stays on the surface; with `keepControlPoints`
    // non-zero control points stay. Returns the number removed.
    int removeInteriorNodes(int path, int keepControlPoints);
    // Merges nodes within `tolerance` (world distance) that lie on a common triangle: path
    // entries are redirected to the lowest such index, which becomes a control point if any
    // merged node was one, and repeated consecutive entries collapse. With `compact` non-zero,
    // nodes no path uses are then dropped and the table renumbered (see nodeRemap).
    // Returns the number of nodes merged.
    int removeDuplicateNodes(float tolerance, int compact);
    // Gives every node-table entry that the chosen paths (empty: all) share, or that one path
    // passes twice, to each further user as a copy of its own, appended to the table: the
    // lowest path index keeps the entry, a loop's repeated end counts once. A copy keeps the
    // control-point flag and is a control point at an open path's end, where paths start.
    void untangle(McDArray<int> const& paths);
    // Adds the contours of `surface` (boundary loops and borders between patches, cut where
    // three or more contour edges meet; see SurfaceContours) as paths of vertex nodes. Paths
    // that meet at a junction share its node; path ends are control points. A set without a
    // surface takes this one; another surface than the set's, or null, adds nothing.
    void importContours(Surface* surface);

    // === Checks
    // Structural self-check: every path entry names a node, every node fits its surface; with
    // `checkSegments` also every two consecutive nodes of a path share a triangle. The first
    // bad path goes to *badPath (-1 when the node table is at fault).
    bool isConsistent(bool checkSegments, int* badPath) const;
    // The same, explaining the first problem in `problem`.
    bool isConsistent(bool checkSegments, int* badPath, McString& problem) const;

  private:
    bool isControlPointAt(McDArray<int> const& indices, int position) const;
    bool checkPath(int path, bool checkSegments, McString& problem) const;
    void redirectPathEntries(McDArray<int> const& representative);
    void compactNodes();
    McDArray<int> chosenPaths(McDArray<int> const& paths) const;
    int copyOfNode(int nodeIndex, bool atOpenEnd);
};
