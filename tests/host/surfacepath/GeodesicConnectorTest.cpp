// The geodesic connector against CGAL's exact shortest path over the whole mesh on real meshes,
// against the edge path, and its Tcl settings; the triangle-strip connector on a plane.

#include "DijkstraConnector.h"
#include "GeodesicConnector.h"
#include "HxInterpreter.h"
#include "PathConnectorFactory.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceIO.h"
#include "SurfaceNodeFactory.h"
#include "SurfacePathSet.h"
#include "SurfaceShortestPath.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"
#include "TestSurfaces.h"
#include "TriangleStripConnector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <utility>

namespace {

Surface readMesh(char const* name) {
    Surface s;
    McString error, warnings;
    EXPECT_TRUE(SurfaceIO::read(meshFile(name).c_str(), s, error, warnings)) << error;
    SurfaceNodeFactory::prepareSurface(&s);
    return s;
}

double polylineLength(SurfaceNode* from, McDArray<McHandle<SurfaceNode>> const& between, SurfaceNode* to) {
    double length = 0;
    McVec3f previous = from->getPosition();
    auto step = [&](SurfaceNode* node) {
        length += (node->getPosition() - previous).length();
        previous = node->getPosition();
    };
    for (SurfaceNode* node : between) step(node);
    step(to);
    return length;
}

// Each node shares a triangle with the next, and no node between is a triangle node.
void expectWalkOverTriangles(SurfaceNode* from, McDArray<McHandle<SurfaceNode>> const& between, SurfaceNode* to) {
    SurfaceNode* previous = from;
    for (SurfaceNode* node : between) {
        EXPECT_NE(node->getKind(), SurfaceNode::TRIANGLE);
        EXPECT_GE(previous->getSharedElement(node), 0) << "a step leaves the triangles of the last node";
        previous = node;
    }
    EXPECT_GE(previous->getSharedElement(to), 0);
}

// A node of a random kind at a random place.
McHandle<SurfaceNode> randomNode(Surface& s, std::mt19937& random) {
    std::uniform_real_distribution<float> unit(0.05f, 0.45f);
    switch (random() % 3) {
        case 0: return new SurfaceVertexNode(&s, int(random() % unsigned(s.getNumPoints())));
        case 1: return new SurfaceEdgeNode(&s, int(random() % unsigned(s.getNumEdges())), unit(random) * 2);
        default: return new SurfaceTriangleNode(&s, int(random() % unsigned(s.getNumTriangles())), unit(random), unit(random));
    }
}

// A node of the given kind at vertex v: the vertex, a point on one of its edges, or a point in
// one of its triangles.
McHandle<SurfaceNode> nodeAt(Surface& s, int v, int kind) {
    const int t = s.pointTriangles[s.pointTriangleStart[v]];
    const int corner = s.triangles[t].points[0] == v ? 0 : (s.triangles[t].points[1] == v ? 1 : 2);
    const int edge = s.triangles[t].edges[corner];
    switch (kind) {
        case SurfaceNode::VERTEX: return new SurfaceVertexNode(&s, v);
        case SurfaceNode::EDGE: return new SurfaceEdgeNode(&s, edge, s.edges[edge].points[0] == v ? 0.1f : 0.9f);
        default: {
            float bary[3] = {0.1f, 0.1f, 0.1f};
            bary[corner] = 0.8f;
            return new SurfaceTriangleNode(&s, t, bary[0], bary[1]);
        }
    }
}

// The vertices with the least and the greatest extent along a direction: far apart, so the
// geodesic may run on another side of a feature than the edge path.
std::pair<int, int> extremes(Surface const& s, McVec3f const& direction) {
    std::pair<int, int> found{0, 0};
    for (int v = 0; v < s.getNumPoints(); ++v) {
        if (s.points[v].dot(direction) < s.points[found.first].dot(direction)) found.first = v;
        if (s.points[v].dot(direction) > s.points[found.second].dot(direction)) found.second = v;
    }
    return found;
}

using NodePair = std::pair<McHandle<SurfaceNode>, McHandle<SurfaceNode>>;

// Vertex pairs far apart across the mesh.
std::vector<std::pair<int, int>> farVertexPairs(Surface const& s) {
    std::vector<std::pair<int, int>> pairs;
    for (McVec3f const& direction : {McVec3f(1, 1, 1), McVec3f(1, -1, 1), McVec3f(-1, 1, 1)})
        pairs.push_back(extremes(s, direction));
    return pairs;
}

// The far pairs with other kinds of nodes at their ends, then random pairs: every kind at
// either end.
std::vector<NodePair> testPairs(Surface& s) {
    std::vector<NodePair> pairs;
    int kind = 0;
    for (auto const& [first, last] : farVertexPairs(s)) {
        pairs.emplace_back(nodeAt(s, first, kind), nodeAt(s, last, (kind + 1) % 3));
        ++kind;
    }
    std::mt19937 random(11);
    for (int k = 0; k < 3; ++k) pairs.emplace_back(randomNode(s, random), randomNode(s, random));
    return pairs;
}

class RealMeshes : public testing::TestWithParam<char const*> {};

TEST_P(RealMeshes, GeodesicsAreAsShortAsTheExactOnesAndNoLongerThanEdgePaths) {
    Surface surface = readMesh(GetParam());
    SurfacePathSet set(&surface);
    GeodesicConnector geodesic;
    geodesic.init(&set, nullptr);
    McDArray<McHandle<SurfaceNode>> between;
    for (auto const& [from, to] : testPairs(surface)) {
        ASSERT_TRUE(geodesic.computeConnection(from, to, between, nullptr)) << geodesic.getFailure();
        expectWalkOverTriangles(from, between, to);
        const double length = polylineLength(from, between, to);
        SurfaceShortestPath::Result exact;
        McString error;
        ASSERT_TRUE(SurfaceShortestPath::compute(from, to, exact, error)) << error;
        EXPECT_LE(length, exact.length * 1.001) << from->getTypeName() << " to " << to->getTypeName();
        EXPECT_GE(length, exact.length * (1 - 1e-4)) << "shorter than the exact path: a step leaves the surface";
    }
    DijkstraConnector dijkstra;
    dijkstra.init(&set, nullptr);
    for (auto const& [first, last] : farVertexPairs(surface)) {
        McHandle<SurfaceNode> a = new SurfaceVertexNode(&surface, first), b = new SurfaceVertexNode(&surface, last);
        ASSERT_TRUE(geodesic.computeConnection(a, b, between, nullptr));
        const double geodesicLength = polylineLength(a, between, b);
        ASSERT_TRUE(dijkstra.computeConnection(a, b, between, nullptr));
        EXPECT_LE(geodesicLength, polylineLength(a, between, b) * (1 + 1e-6));
    }
}

INSTANTIATE_TEST_SUITE_P(Geodesic, RealMeshes, testing::Values("eight.off", "pig.off", "cactus.off", "head.off"));

TEST(GeodesicConnector, CrossesAPlaneStraightAndRefusesNodesOfAnotherSurface) {
    Surface grid = makeGrid(8), other = makeQuad();
    SurfacePathSet set(&grid);
    std::unique_ptr<PathConnector> geodesic(PathConnectorFactory::createConnector("Geodesic", nullptr));
    ASSERT_TRUE(geodesic);
    geodesic->init(&set, nullptr);
    McHandle<SurfaceNode> a = new SurfaceTriangleNode(&grid, 0, 0.2f, 0.1f), b = new SurfaceVertexNode(&grid, 80);
    McDArray<McHandle<SurfaceNode>> between;
    ASSERT_TRUE(geodesic->computeConnection(a, b, between, nullptr));
    EXPECT_NEAR(polylineLength(a, between, b), (a->getPosition() - b->getPosition()).length(), 1e-4);
    McHandle<SurfaceNode> elsewhere = new SurfaceVertexNode(&other, 0);
    EXPECT_FALSE(geodesic->computeConnection(a, elsewhere, between, nullptr));
    EXPECT_EQ(geodesic->getFailure(), "the two nodes lie on different surfaces");
}

TEST(GeodesicConnector, AnswersItsSettingsFromTcl) {
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    GeodesicConnector geodesic;
    auto run = [&](std::vector<char const*> words) {
        std::vector<char*> argv;
        for (char const* w : words) argv.push_back(const_cast<char*>(w));
        const int code = geodesic.parse(interp.getTclInterp(), int(argv.size()), argv.data());
        return std::to_string(code) + " " + Tcl_GetStringResult(interp.getTclInterp());
    };
    EXPECT_EQ(run({"E", "connector", "getName"}), "0 Geodesic");
    EXPECT_EQ(run({"E", "connector", "setBandWidth", "7"}), "0 ");
    EXPECT_EQ(run({"E", "connector", "getBandWidth"}), "0 7");
    EXPECT_EQ(run({"E", "connector", "setBandWidth", "wide"}),
              "1 connector setBandWidth RINGS: RINGS must be a whole number of triangle rings, at least 1, not wide");
    EXPECT_EQ(run({"E", "connector", "fly"}),
              "1 connector Geodesic: unknown command \"fly\" (commands: getName, getBandWidth, setBandWidth RINGS, "
              "getNumBandTriangles)");
}

TEST(TriangleStripConnector, GivesTheStraightSegmentOnAPlane) {
    Surface grid = makeGrid(6);
    TriangleStripConnector strip;
    strip.init(&grid, nullptr);
    std::mt19937 random(5);
    for (int k = 0; k < 20; ++k) {
        McHandle<SurfaceNode> a = randomNode(grid, random), b = randomNode(grid, random);
        McDArray<McHandle<SurfaceNode>> between;
        ASSERT_TRUE(strip.computeConnection(a, b, between, nullptr));
        expectWalkOverTriangles(a, between, b);
        const McVec3f pa = a->getPosition(), pb = b->getPosition();
        EXPECT_NEAR(polylineLength(a, between, b), (pa - pb).length(), 1e-4);
        for (SurfaceNode* node : between)
            EXPECT_NEAR((node->getPosition() - pa).cross(pb - pa).length(), 0, 1e-4) << "a node off the segment";
    }
}

}  // namespace
