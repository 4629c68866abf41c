#pragma once
// PathEditFixIntersections: splits paths where they cross or run into one another, so that
// every place where paths meet becomes a node shared by new paths that end there.
//
// Three stages: the entangler makes crossing paths share a node at each crossing; a graph of
// the nodes (vertices) and path segments (edges) is cut into new paths by a depth-first walk
// that breaks a path wherever the set of input paths through a node changes; last, pieces of
// one input path are optionally joined again (`smooth`), formerly closed loops are re-closed
// and coinciding nodes merged. The ends of every new path become control points.
//
// The selected-only form works on a temporary set of the listed paths (with `smooth` on) and
// appends the result after the unselected paths, which stay as they were.
//
// The graph lives for one updatePathset() and is owned by the operation while it does; the
// path set, selection and the nodes the graph points to are not. Memory and time are linear
// in the set's size: the walk keeps its own stack, and the available segments are flags next
// to each vertex's neighbours.

#include "McBitfield.h"
#include "SinglePathOperation.h"

#include <memory>

class PathEditFixIntersections : public SinglePathOperation {
    MC_TYPED_HEADER(PathEditFixIntersections)
  public:
    // One vertex of the graph: a node of the set and what runs through it.
    struct GraphSurfaceNode {
        SurfaceNode* node = nullptr;
        // The paths through the node, each once, in order of discovery.
        McDArray<int> pathIndices;
        // The distinct vertices next to this one along any path, in order of discovery.
        McDArray<GraphSurfaceNode*> neighbours;
        // Set when the walk first enters the vertex.
        bool marked = false;
    };

    // Which segments are still to be walked: one flag per entry of each vertex's `neighbours`,
    // vertex i's flags starting at `first[i]`. A segment's two flags are set and cleared
    // together.
    struct SegmentFlags {
        McDArray<int64_t> first;
        McDArray<unsigned char> available;
    };

    // All paths.
    PathEditFixIntersections(SurfacePathSet* pathSet, SelectionInfo* selection, bool smooth);
    // Only the listed paths (empty: all).
    PathEditFixIntersections(SurfacePathSet* pathSet, SelectionInfo* selection, McDArray<int> const& selectedPaths,
                             bool smooth);
    ~PathEditFixIntersections() override;

    // Never fails.
    bool updatePathset() override;

    // === Graph
    void buildGraph();
    // Cuts the graph into new paths by walking it from every start vertex.
    void buildNewPathSet(McDArray<SurfacePathSet::SurfacePath*>& newPaths);
    // Walks on from g, whose index `current` already ends with, appending finished pieces to
    // newPaths.
    void dfs(GraphSurfaceNode* g, McDArray<int>& current, McDArray<SurfacePathSet::SurfacePath*>& newPaths);
    // The first node of the first path whose vertex has a neighbour and is not yet marked.
    GraphSurfaceNode* getUnmarkedStartNode();

    // === Where paths begin and end
    // Whether some path through g does not pass through next.
    bool pathEndsHere(GraphSurfaceNode* g, GraphSurfaceNode* next) const;
    // Whether some path through the last vertex of current does not pass through the one
    // before it; false for fewer than two entries.
    bool pathStartsHere(McDArray<int> const& current) const;
    // Whether some path through b does not pass through a.
    bool startNewPathAt(GraphSurfaceNode* a, GraphSurfaceNode* b) const;
    // Whether the array holds path or its reverse, judged by the first segment.
    bool isPathInArray(SurfacePathSet::SurfacePath* path, McDArray<SurfacePathSet::SurfacePath*> const& array) const;
    SurfacePathSet::SurfacePath* createNewSurfacePath(McDArray<int> const& nodes) const;

    // === Joining pieces of one input path
    // The longest path of the set whose bit in done is clear (the lowest index on a tie); -1
    // when there is none.
    int getLongestPath(McBitfield const& done) const;
    // Joins the pieces in newPaths that belong to path pathIndex end to end, moving the result
    // to patched.
    void patchPaths(int pathIndex, McDArray<SurfacePathSet::SurfacePath*>& newPaths,
                    McDArray<SurfacePathSet::SurfacePath*>& patched);
    void smoothPaths(McDArray<SurfacePathSet::SurfacePath*>& newPaths);

    // === The selected-only form
    void createSelectedPathsSet(SurfacePathSet& tmp);
    void deleteSelectedPaths();
    void copyFixedPathsBack(SurfacePathSet& tmp);

    SurfacePathSet* fixedSet;
    McDArray<int> selectedPaths;
    bool smooth;
    float entangleTolerance = 0.001f;
    McDArray<GraphSurfaceNode*> graphNodes;
    SegmentFlags edgeAvailable;

  private:
    bool fixAllPaths();
    bool fixSelectedPaths();
    McDArray<int> closedPaths() const;
    void replacePaths(McDArray<SurfacePathSet::SurfacePath*>& newPaths);
    void markControlPoint(int nodeIndex);
    void recloseLoops(McDArray<int> closedStarts);
    void releaseGraph();

    int indexOf(GraphSurfaceNode const* g) const { return static_cast<int>(g - mRecords.get()); }
    bool isEdgeAvailable(int from, int to) const;
    void useEdge(int from, int to);
    int64_t flagOf(int from, int to) const;
    void emit(McDArray<int> const& current, McDArray<SurfacePathSet::SurfacePath*>& newPaths) const;
    // The first piece of newPaths belonging to the path marked in mOnPath, moved out; null if none.
    SurfacePathSet::SurfacePath* takeSeed(McDArray<SurfacePathSet::SurfacePath*>& newPaths) const;
    bool belongsToMarkedPath(SurfacePathSet::SurfacePath const* piece) const;
    static bool joinIfTouching(SurfacePathSet::SurfacePath& seed, SurfacePathSet::SurfacePath& piece);

    // The graph's vertices, one block; graphNodes points into it.
    std::unique_ptr<GraphSurfaceNode[]> mRecords;
    // Paths before this one offer no start vertex any more (marks and neighbours only grow).
    int mNextStartPath = 0;
    // The nodes of the path patchPaths is serving.
    McBitfield mOnPath;
};
