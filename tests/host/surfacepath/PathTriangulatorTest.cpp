// Retriangulating a surface along its paths: afterwards every path runs along mesh edges
// through vertex nodes at the places its nodes had, the surface keeps its area (per patch),
// its borders and all triangles no path touched; a failure changes nothing.
//
// On the quad (unit square, triangles 0-1-2 and 0-2-3) a path crosses the diagonal 0-2.

#include "PathTriangulator.h"
#include "PathTriangulatorFactory.h"
#include "Surface.h"
#include "SurfaceIO.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>

namespace {

double triangleArea(Surface const& s, Surface::Triangle const& t) {
    const McVec3f a = s.points[t.points[0]], b = s.points[t.points[1]], c = s.points[t.points[2]];
    const double ux = double(b.x) - a.x, uy = double(b.y) - a.y, uz = double(b.z) - a.z;
    const double vx = double(c.x) - a.x, vy = double(c.y) - a.y, vz = double(c.z) - a.z;
    const double x = uy * vz - uz * vy, y = uz * vx - ux * vz, z = ux * vy - uy * vx;
    return 0.5 * std::sqrt(x * x + y * y + z * z);
}

std::map<int, double> areaPerPatch(Surface const& s) {
    std::map<int, double> area;
    for (Surface::Triangle const& t : s.triangles) area[t.patch] += triangleArea(s, t);
    return area;
}

int borderEdges(Surface const& s) {
    int count = 0;
    for (int e = 0; e < s.getNumEdges(); ++e) count += s.getNumTrianglesOfEdge(e) == 1;
    return count;
}

double diagonal(Surface const& s) {
    McVec3f min, max;
    s.getBoundingBox(min, max);
    return (max - min).length();
}

// What a retriangulation must keep, taken before it runs.
struct Before {
    explicit Before(SurfacePathSet const& set) : surface(*set.getSurface()), area(areaPerPatch(surface)) {
        for (int p = 0; p < set.getNumPaths(); ++p) {
            std::vector<McVec3f> path;
            for (int i = 0; i < set.getNumNodesOnPath(p); ++i) path.push_back(set.getSurfaceNode(p, i)->getPosition());
            paths.push_back(path);
        }
        for (int i = 0; i < set.getNumNodes(); ++i) {  // every node of the table becomes a vertex
            McDArray<int> triangles;
            if (set.getNode(i)->getKind() != SurfaceNode::VERTEX) set.getNode(i)->getTriangles(triangles);
            touched.insert(triangles.begin(), triangles.end());
        }
    }
    Surface surface;
    std::map<int, double> area;
    std::vector<std::vector<McVec3f>> paths;
    std::set<int> touched;
};

::testing::AssertionResult keepsTheInvariants(Before const& before, SurfacePathSet const& set) {
    Surface const& s = *set.getSurface();
    const double eps = 1e-6 * diagonal(before.surface);
    for (int p = 0; p < set.getNumPaths(); ++p) {
        size_t next = 0;  // the next old node to find on the new path
        for (int i = 0; i < set.getNumNodesOnPath(p); ++i) {
            SurfaceNode* node = set.getSurfaceNode(p, i);
            if (node->getKind() != SurfaceNode::VERTEX)
                return ::testing::AssertionFailure() << "path " << p << " position " << i << " is no vertex node";
            if (i > 0 && s.findEdge(set.getSurfaceNode(p, i - 1)->getElement(), node->getElement()) < 0)
                return ::testing::AssertionFailure() << "path " << p << " segment " << i - 1 << " is no mesh edge";
            while (next < before.paths[p].size() && (before.paths[p][next] - node->getPosition()).length() <= eps) ++next;
        }
        if (next != before.paths[p].size())
            return ::testing::AssertionFailure() << "path " << p << " lost the place of its node " << next;
    }
    const std::map<int, double> area = areaPerPatch(s);
    for (auto const& [patch, a] : before.area)
        if (std::abs(area.at(patch) - a) > 1e-9 * (1 + a) + 1e-6 * a)
            return ::testing::AssertionFailure() << "patch " << patch << " area " << a << " -> " << area.at(patch);
    for (int t = 0; t < before.surface.getNumTriangles(); ++t) {
        auto const &old = before.surface.triangles[t].points, &now = s.triangles[t].points;
        if (!std::equal(old, old + 3, now) && !before.touched.count(t))
            return ::testing::AssertionFailure() << "triangle " << t << " changed though no path touched it " << old[0] << " " << old[1] << " " << old[2] << " -> " << now[0] << " " << now[1] << " " << now[2] << " of " << before.surface.getNumTriangles();
    }
    if (borderEdges(s) < borderEdges(before.surface) || s.countNonManifoldEdges() != before.surface.countNonManifoldEdges())
        return ::testing::AssertionFailure() << "the new triangles do not meet their neighbours edge to edge";
    McString problem;
    int badPath = -1;
    if (!set.isConsistent(true, &badPath, problem)) return ::testing::AssertionFailure() << problem;
    return ::testing::AssertionSuccess();
}

bool retriangulate(SurfacePathSet& set, char const* name, float tolerance) {
    std::unique_ptr<PathTriangulator> triangulator(PathTriangulatorFactory::createPathTriangulator(name));
    triangulator->setTolerance(tolerance);
    triangulator->setPathSet(&set);
    return triangulator->run(false);
}

// That every offered name makes a triangulator that runs is the retriangulate operation's test.
TEST(PathTriangulatorFactory, QualitySwitchesAreCheckedAndUnknownNamesMakeNothing) {
    std::unique_ptr<PathTriangulator> plain(PathTriangulatorFactory::createPathTriangulator("Constrained Delaunay"));
    std::unique_ptr<PathTriangulator> quality(PathTriangulatorFactory::createPathTriangulator("Quality Delaunay"));
    EXPECT_EQ(plain->getMaxExtraPoints(), 0);
    EXPECT_EQ(quality->getMaxExtraPoints(), 10);
    EXPECT_FALSE(quality->setSwitches("pqzX"));
    EXPECT_EQ(quality->getSwitches(), "pqzS10Q");
    EXPECT_TRUE(quality->setSwitches("pqS3"));
    EXPECT_EQ(quality->getMaxExtraPoints(), 3);
    EXPECT_EQ(PathTriangulatorFactory::createPathTriangulator("Triangle"), nullptr);
    EXPECT_FALSE(plain->run(false)) << "no path set";
}

class QuadPaths : public testing::Test {
  protected:
    int edgeNode(int p, int q, float t) { return set.addNode(set.nodeFactory.createEdgeNode(quad.findEdge(p, q), t)); }
    int triangleNode(int triangle, float u, float v) {
        return set.addNode(set.nodeFactory.createTriangleNode(triangle, u, v));
    }

    Surface quad = makeQuad();
    SurfacePathSet set{&quad};
};

TEST_F(QuadPaths, APathAcrossBothTrianglesRunsAlongNewEdgesInBothModes) {
    for (char const* name : {"Constrained Delaunay", "Quality Delaunay"}) {
        SCOPED_TRACE(name);
        quad = makeQuad();
        set.clear();
        set.nodeFactory.setSurface(&quad);
        const int shared = edgeNode(0, 2, 0.4f);
        set.addPath(McDArray<int>({edgeNode(0, 1, 0.5f), triangleNode(0, 0.3f, 0.2f), shared, edgeNode(2, 3, 0.5f)}));
        set.addPath(McDArray<int>({triangleNode(1, 0.1f, 0.6f), shared}));
        set.nodes[shared]->isControlPoint = 1;
        const Before before(set);
        ASSERT_TRUE(retriangulate(set, name, 0.001f));
        EXPECT_TRUE(keepsTheInvariants(before, set));
        EXPECT_EQ(set.getSurfaceNode(0, 2)->getElement(), set.getSurfaceNode(1, 1)->getElement());
        EXPECT_EQ(set.getNode(shared)->isControlPoint, 1);
        const int added = quad.getNumPoints() - 4;
        EXPECT_GE(added, 5);
        EXPECT_LE(added, std::string(name) == "Quality Delaunay" ? 5 + 2 * 10 : 5);
    }
}

TEST_F(QuadPaths, NodesNearAVertexSnapToItInsteadOfMakingSlivers) {
    set.addPath(McDArray<int>({edgeNode(0, 1, 0.995f), triangleNode(0, 0.5f, 0.25f), edgeNode(2, 3, 0.003f)}));
    ASSERT_TRUE(retriangulate(set, "Constrained Delaunay", 0.01f));
    EXPECT_EQ(quad.getNumPoints(), 5) << "only the node inside triangle 0 is new";
    EXPECT_EQ(set.getSurfaceNode(0, 0)->getElement(), 1);
    EXPECT_EQ(set.getSurfaceNode(0, 2)->getElement(), 2);
}

TEST_F(QuadPaths, CrossingPathsWithoutACommonNodeFailAndChangeNothing) {
    set.addPath(McDArray<int>({edgeNode(0, 1, 0.5f), edgeNode(1, 2, 0.5f)}));
    set.addPath(McDArray<int>({set.addNode(set.nodeFactory.createVertexNode(1)), edgeNode(0, 2, 0.5f)}));
    set.addPath(McDArray<int>({edgeNode(0, 1, 0.2f), edgeNode(2, 3, 0.2f)}));  // no common triangle
    const Surface surfaceBefore = quad;
    const int nodesBefore = set.getNumNodes();
    SurfaceNode* first = set.getNode(0);
    for (int paths : {3, 2}) {
        set.paths.resize(paths);
        EXPECT_FALSE(retriangulate(set, "Constrained Delaunay", 0));
        EXPECT_EQ(quad.getNumPoints(), 4);
        EXPECT_EQ(quad.getNumTriangles(), 2);
        EXPECT_TRUE(std::equal(quad.triangles[0].points, quad.triangles[0].points + 3, surfaceBefore.triangles[0].points));
        EXPECT_EQ(set.getNumNodes(), nodesBefore);
        EXPECT_EQ(set.getNode(0), first);
    }
}

// Walks of edge and triangle nodes through neighbouring triangles that no walk visited yet,
// so that no two segments cross.
void addWalks(SurfacePathSet& set, int walks, int steps, unsigned seed) {
    Surface const& s = *set.getSurface();
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> unit(0.1f, 0.9f);
    std::set<int> visited;
    for (int w = 0; w < walks; ++w) {
        int t = int(random() % unsigned(s.getNumTriangles()));
        McDArray<int> path;
        for (int step = 0; step < steps && t >= 0 && visited.insert(t).second; ++step) {
            const float u = unit(random) * 0.5f, v = unit(random) * 0.5f;
            path.append(set.addNode(set.nodeFactory.createTriangleNode(t, u, v)));
            const int side = int(random() % 3u), next = s.neighbours[3 * t + side];
            if (next < 0 || visited.count(next)) break;
            path.append(set.addNode(set.nodeFactory.createEdgeNode(s.triangles[t].edges[side], unit(random))));
            t = next;
        }
        if (path.size() > 1) set.addPath(path);
    }
}

TEST(PathTriangulatorMesh, WalksOnARealMeshKeepEveryInvariantInBothModes) {
    for (char const* name : {"Constrained Delaunay", "Quality Delaunay"}) {
        SCOPED_TRACE(name);
        Surface elephant;
        McString error, warnings;
        ASSERT_TRUE(SurfaceIO::read(meshFile("elephant.off").c_str(), elephant, error, warnings)) << error;
        elephant.buildAllTables();
        for (int t = 0; t < elephant.getNumTriangles(); ++t) elephant.triangles[t].patch = t % 4;
        SurfacePathSet set(&elephant);
        addWalks(set, 100, 25, 7);
        ASSERT_GT(set.getNumNodes(), 400);
        const Before before(set);
        ASSERT_TRUE(retriangulate(set, name, 0.001f));
        EXPECT_TRUE(keepsTheInvariants(before, set));
        EXPECT_TRUE(set.isPureSurfaceVertexPath());
    }
}

}  // namespace
