#include "SurfaceContours.h"

#include "Surface.h"

namespace {

// The contour edges around each point, in edge order, and which of them a chain has taken.
class ContourGraph {
  public:
    explicit ContourGraph(Surface const& surface) : mSurface(surface) {
        const int numPoints = surface.getNumPoints();
        mStart.resize(numPoints + 1);
        for (int e = 0; e < surface.getNumEdges(); ++e)
            if (SurfaceContours::isContourEdge(surface, e))
                for (int end : surface.edges[e].points) ++mStart[end + 1];
        for (int p = 0; p < numPoints; ++p) mStart[p + 1] += mStart[p];
        mEdges.resize(mStart.last());
        McDArray<int> fill = mStart;
        for (int e = 0; e < surface.getNumEdges(); ++e)
            if (SurfaceContours::isContourEdge(surface, e))
                for (int end : surface.edges[e].points) mEdges[fill[end]++] = e;
        mTaken.resize(surface.getNumEdges());
    }

    bool isFree(int edge) const { return SurfaceContours::isContourEdge(mSurface, edge) && !mTaken[edge]; }
    int degree(int point) const { return mStart[point + 1] - mStart[point]; }

    int firstFreeEdge(int point) const {
        for (int i = mStart[point]; i < mStart[point + 1]; ++i)
            if (!mTaken[mEdges[i]]) return mEdges[i];
        return -1;
    }

    // Follows free edges from `start` until a junction, a dead end or `start` again.
    McDArray<int> walk(int start) {
        McDArray<int> chain{start};
        int point = start;
        for (int edge = firstFreeEdge(start); edge >= 0; edge = firstFreeEdge(point)) {
            mTaken[edge] = 1;
            Surface::Edge const& ends = mSurface.edges[edge];
            point = ends.points[0] == point ? ends.points[1] : ends.points[0];
            chain.append(point);
            if (point == start || degree(point) != 2) break;
        }
        return chain;
    }

  private:
    Surface const& mSurface;
    McDArray<int> mStart, mEdges;
    McDArray<char> mTaken;
};

}  // namespace

namespace SurfaceContours {

bool isContourEdge(Surface const& surface, int edge) {
    const int count = surface.getNumTrianglesOfEdge(edge);
    if (count == 1) return true;
    int const* triangles = surface.getTrianglesOfEdge(edge);
    for (int i = 1; i < count; ++i)
        if (surface.triangles[triangles[i]].patch != surface.triangles[triangles[0]].patch) return true;
    return false;
}

McDArray<McDArray<int>> find(Surface const& surface) {
    McDArray<McDArray<int>> contours;
    if (surface.getNumEdges() == 0) return contours;
    ContourGraph graph(surface);
    for (int p = 0; p < surface.getNumPoints(); ++p)
        if (graph.degree(p) != 2)
            while (graph.firstFreeEdge(p) >= 0) contours.append(graph.walk(p));
    for (int e = 0; e < surface.getNumEdges(); ++e) {
        if (graph.isFree(e)) contours.append(graph.walk(surface.edges[e].points[0]));
    }
    return contours;
}

}  // namespace SurfaceContours
