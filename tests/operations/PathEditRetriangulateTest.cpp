// Retriangulating along the paths as an undoable step: undo brings back the old triangles, the
// paths and every derived table of the surface; the selection is no part of the step.
//
// On the strip, the path runs through the middles of edges 0-1, 1-2 and 2-3 (triangles 0, 1).

#include "OperationTestSupport.h"
#include "PathEditRetriangulate.h"
#include "PathTriangulatorFactory.h"

#include <gtest/gtest.h>

namespace {

// The surface as the tables say it is; derived ones compared through their sizes and contents.
struct SurfaceState {
    explicit SurfaceState(Surface const& s) {
        for (Surface::Triangle const& t : s.triangles) triangles.insert(triangles.end(), t.points, t.points + 3);
        for (Surface::Edge const& e : s.edges) edges.insert(edges.end(), e.points, e.points + 2);
        for (McVec3f const& n : s.normals) normals.insert(normals.end(), {n.x, n.y, n.z});
        neighbours.assign(s.neighbours.begin(), s.neighbours.end());
        pointTriangles.assign(s.pointTriangles.begin(), s.pointTriangles.end());
        points = s.getNumPoints();
    }
    bool operator==(SurfaceState const& o) const {
        return triangles == o.triangles && edges == o.edges && normals == o.normals && neighbours == o.neighbours &&
               pointTriangles == o.pointTriangles && points == o.points;
    }
    std::vector<int> triangles, edges, neighbours, pointTriangles;
    std::vector<float> normals;
    int points;
};

class Retriangulate : public testing::TestWithParam<char const*> {
  protected:
    Retriangulate() {
        McDArray<int> path;
        for (auto [p, q] : {std::pair(0, 1), std::pair(1, 2), std::pair(2, 3)})
            path.append(set.addNode(set.nodeFactory.createEdgeNode(strip.surface.findEdge(p, q), 0.5f)));
        set.addPath(path);
        strip.addVertexPath({3, 5});
        strip.select(1, 0);
    }

    EditedPathSet strip{makeStrip(4)};
    SurfacePathSet& set = strip.pathSet;
};

TEST_P(Retriangulate, UndoBringsBackTheTrianglesTablesAndPathsButLeavesTheSelection) {
    const SurfaceState surfaceBefore(strip.surface);
    const PathSetState pathsBefore = captureState(strip);
    McHandle<PathOperation> op = new PathEditRetriangulate(&set, GetParam(), 0.01f, false);
    ASSERT_TRUE(runProtocol(op));
    EXPECT_TRUE(set.isPureSurfaceVertexPath());
    EXPECT_TRUE(isConsistent(set));
    EXPECT_GT(strip.surface.getNumTriangles(), 4);
    const SurfaceState surfaceAfter(strip.surface);
    const PathSetState pathsAfter = captureState(strip);

    strip.selection.deselectAll();
    op->undo();
    EXPECT_TRUE(SurfaceState(strip.surface) == surfaceBefore);
    EXPECT_EQ(captureState(strip).paths, pathsBefore.paths);
    EXPECT_EQ(captureState(strip).nodes, pathsBefore.nodes);
    EXPECT_TRUE(strip.selection.noPathSelected()) << "the selection is not restored";
    op->redo();
    EXPECT_TRUE(SurfaceState(strip.surface) == surfaceAfter);
    EXPECT_EQ(captureState(strip).nodes, pathsAfter.nodes);
}

TEST_P(Retriangulate, AFailureLeavesSurfaceAndPathsAsTheyWere) {
    // A segment between nodes on no common triangle cannot become an edge.
    const int farAway = set.addNode(set.nodeFactory.createEdgeNode(strip.surface.findEdge(0, 1), 0.3f));
    set.paths[1].nodeIndices = McDArray<int>({set.paths[1].nodeIndices[0], farAway, set.paths[1].nodeIndices[1]});
    const SurfaceState surfaceBefore(strip.surface);
    EXPECT_TRUE(failsWithoutChange(strip, new PathEditRetriangulate(&set, GetParam(), 0.01f, false)));
    EXPECT_TRUE(SurfaceState(strip.surface) == surfaceBefore);
}

INSTANTIATE_TEST_SUITE_P(EveryTriangulator, Retriangulate,
                         testing::Values("Constrained Delaunay", "Quality Delaunay"));

TEST(RetriangulateFactory, EveryNameOfTheFactoryMakesAnOperationThatRuns) {
    for (McString const& name : PathTriangulatorFactory::getNames()) {
        EditedPathSet quad{makeQuad()};
        quad.addVertexPath({0, 2});
        EXPECT_TRUE(runProtocol(new PathEditRetriangulate(&quad.pathSet, name.c_str(), 0, true))) << name;
    }
}

}  // namespace
