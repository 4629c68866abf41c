#pragma once
// PathEntangler: makes paths that cross or touch share a node-table entry there, so that the
// meeting shows in the node lists of both.
//
// Where two segments cross, both paths get a new node at the crossing (a vertex, edge or
// triangle node, whichever the point lies on within the tolerance); where a path's node lies
// on a segment of another path, that node is inserted into the other path; where two nodes
// coincide (the same vertex, or within the tolerance), one of them replaces the other in every
// chosen path. A path crossing itself shares a node with itself the same way.
//
// The tolerance is a fraction of the size (longest side) of the triangle in which two segments
// meet, so it means the same on any mesh, whatever its units: 0.001 joins paths that pass within
// a thousandth of a triangle of each other.
//
// With `markControlPoints` the shared nodes become control points: re-connecting a path between
// its control points (as moving one does) then keeps them, which an interactive entangle needs.
// Without it flags stay as they are; callers that cut the paths at the shared nodes make the
// pieces' ends control points themselves. A node that already had other holders (copies of the
// set, undo snapshots) is never changed in place: its table entry gets a flagged copy.
//
// Segments are bucketed by the triangles they lie on and only segments of one triangle are
// compared, so the cost grows with the number of segments, not with its square. Crossings that
// lie within the tolerance of each other meet only once they are nodes, so passes repeat (a
// few at most) until nothing changes. Existing entries never move; new nodes are appended.

#include "McDArray.h"
#include "TrianglePlane.h"

#include <map>
#include <utility>
#include <vector>

class SurfacePathSet;

class PathEntangler {
  public:
    // All paths of the set.
    PathEntangler(SurfacePathSet* pathSet, float tolerance, bool markControlPoints);
    // Only the listed paths (empty: all); the others keep their node lists.
    PathEntangler(SurfacePathSet* pathSet, McDArray<int> const& paths, float tolerance, bool markControlPoints);

    // True when some path changed. A set without a surface stays as it is.
    bool compute();

  private:
    struct Segment {
        int path, position, from, to;
        McDArray<int> triangles;  // those both ends lie on
    };
    struct Insertion {
        int segment;
        double parameter;
        int node;
    };

    bool entangleOnce();
    void collectSegments();
    void compareSegmentsPerTriangle();
    bool areNeighbours(Segment const& a, Segment const& b) const;
    void meet(int triangle, int a, int b);
    // Whether `node` at `point` lies on `segment` (from q0 to q1) within `d`; if so, it joins
    // the segment's end there or is inserted into it.
    bool touch(int node, TrianglePlane::Point const& point, int segment, TrianglePlane::Point const& q0,
               TrianglePlane::Point const& q1, double d);
    int crossingNode(int triangle, float bary[3]);
    void joinNodesAtOneVertex();
    void join(int a, int b);
    int representative(int node);
    bool covers(int node, int other) const;
    bool rebuildPaths();
    void markSharedNodes();
    void releaseWorkspace();

    SurfacePathSet* mSet;
    McDArray<int> mPaths;
    float mTolerance;
    bool mMarkControlPoints;

    McDArray<Segment> mSegments;
    McDArray<int> mPathSegmentStart;  // first segment of each chosen path
    McDArray<Insertion> mInsertions;
    McDArray<int> mParent;            // union of coinciding nodes
    std::map<std::pair<int, int>, std::vector<int>> mCreated;  // crossing nodes by kind and element
    McDArray<int> mMet;               // nodes where paths meet
};
