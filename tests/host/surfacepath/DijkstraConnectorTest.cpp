// The Dijkstra connector against the Boost Graph Library's full Dijkstra on a real mesh, its
// refusals, and that a short connection settles few vertices.

#include "DijkstraConnector.h"
#include "HxInterpreter.h"
#include "HxObject.h"
#include "HxPortMultiMenu.h"
#include "PathConnectorFactory.h"
#include "Surface.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceIO.h"
#include "SurfacePathSet.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"
#include "TestSurfaces.h"

#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/dijkstra_shortest_paths.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

using Graph = boost::adjacency_list<boost::vecS, boost::vecS, boost::undirectedS, boost::no_property,
                                    boost::property<boost::edge_weight_t, double>>;

double distance(Surface const& s, int a, int b) {
    const McVec3f d = s.points[a] - s.points[b];
    return std::sqrt(double(d.x) * d.x + double(d.y) * d.y + double(d.z) * d.z);
}

std::vector<double> referenceDistances(Surface const& s, int source) {
    Graph graph(size_t(s.getNumPoints()));
    for (Surface::Edge const& e : s.edges) boost::add_edge(e.points[0], e.points[1], distance(s, e.points[0], e.points[1]), graph);
    std::vector<double> result(size_t(s.getNumPoints()));
    boost::dijkstra_shortest_paths(graph, source, boost::distance_map(result.data()));
    return result;
}

double lengthAlongEdges(Surface const& s, McDArray<int> const& vertices) {
    double length = 0;
    for (int64_t i = 1; i < vertices.size(); ++i) {
        EXPECT_GE(s.findEdge(vertices[i - 1], vertices[i]), 0) << "consecutive vertices are joined by an edge";
        length += distance(s, vertices[i - 1], vertices[i]);
    }
    return length;
}

// Read once for all tests.
Surface& elephant() {
    static Surface surface = [] {
        Surface s;
        McString error, warnings;
        EXPECT_TRUE(SurfaceIO::read(meshFile("elephant.off").c_str(), s, error, warnings)) << error;
        return s;
    }();
    return surface;
}

class Elephant : public testing::Test {
  protected:
    void SetUp() override { dijkstra.init(&set, nullptr); }
    Surface* surface = &elephant();
    SurfacePathSet set{surface};
    DijkstraConnector dijkstra;
};

TEST_F(Elephant, PathsAreShortestAsTheReferenceFindsThem) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyVertex(0, surface->getNumPoints() - 1);
    for (int source : {0, anyVertex(random), anyVertex(random)}) {
        const std::vector<double> reference = referenceDistances(*surface, source);
        for (int k = 0; k < 8; ++k) {
            const int target = anyVertex(random);
            McDArray<int> vertices;
            ASSERT_TRUE(dijkstra.findPath(surface, source, target, vertices));
            EXPECT_EQ(vertices[0], source);
            EXPECT_EQ(vertices.last(), target);
            EXPECT_NEAR(lengthAlongEdges(*surface, vertices), reference[size_t(target)], 1e-9 * (1 + reference[size_t(target)]));
        }
    }
}

TEST_F(Elephant, ConnectionsBetweenNodesAreNewVertexNodes) {
    McHandle<SurfaceNode> a = new SurfaceVertexNode(surface, 10), b = new SurfaceVertexNode(surface, 2000);
    McDArray<McHandle<SurfaceNode>> between;
    ASSERT_TRUE(dijkstra.computeConnection(a, b, between, nullptr));
    McDArray<int> vertices;
    vertices.append(10);
    for (SurfaceNode* node : between) {
        EXPECT_EQ(node->getKind(), SurfaceNode::VERTEX);
        EXPECT_EQ(node->isControlPoint, 0);
        EXPECT_EQ(node->refCount(), 1);
        vertices.append(node->getElement());
    }
    vertices.append(2000);
    EXPECT_NEAR(lengthAlongEdges(*surface, vertices), referenceDistances(*surface, 10)[2000], 1e-6);
    ASSERT_TRUE(dijkstra.computeConnection(a, a, between, nullptr));
    EXPECT_TRUE(between.empty()) << "a vertex joins itself without nodes in between";
}

TEST_F(Elephant, ShortConnectionsStayLocal) {
    McDArray<int> vertices;
    const int neighbour = surface->edges[0].points[1];
    ASSERT_TRUE(dijkstra.findPath(surface, surface->edges[0].points[0], neighbour, vertices));
    EXPECT_LT(dijkstra.getNumSettled(), 50) << "of " << surface->getNumPoints() << " vertices";
}

TEST(DijkstraConnector, RefusesWhatItCannotJoin) {
    Surface apart;  // two triangles that touch nowhere
    apart.points = {McVec3f(0, 0, 0), McVec3f(1, 0, 0), McVec3f(0, 1, 0),
                    McVec3f(5, 0, 0), McVec3f(6, 0, 0), McVec3f(5, 1, 0)};
    apart.triangles = {Surface::Triangle(0, 1, 2), Surface::Triangle(3, 4, 5)};
    SurfacePathSet set(&apart);
    DijkstraConnector dijkstra;
    dijkstra.init(&set, nullptr);
    McHandle<SurfaceNode> a = new SurfaceVertexNode(&apart, 0), b = new SurfaceVertexNode(&apart, 4);
    McHandle<SurfaceNode> inside = new SurfaceTriangleNode(&apart, 0, 0.2f, 0.2f);
    McHandle<SurfaceNode> onEdge = new SurfaceEdgeNode(&apart, 0, 0.5f);
    Surface quad = makeQuad();
    McHandle<SurfaceNode> elsewhere = new SurfaceVertexNode(&quad, 1);
    struct Refusal {
        SurfaceNode* from;
        SurfaceNode* to;
        char const* failure;
    };
    for (Refusal const& refusal : {
             Refusal{a, inside, "the Dijkstra connector joins vertex nodes only, and the end node is a triangle node"},
             Refusal{onEdge, b, "the Dijkstra connector joins vertex nodes only, and the start node is an edge node"},
             Refusal{a, elsewhere, "the two nodes lie on different surfaces"},
             Refusal{a, b, ""},  // separate components: there is simply no connection
         }) {
        McDArray<McHandle<SurfaceNode>> between;
        EXPECT_FALSE(dijkstra.computeConnection(refusal.from, refusal.to, between, nullptr));
        EXPECT_EQ(dijkstra.getFailure(), refusal.failure);
        EXPECT_TRUE(between.empty());
    }
}

TEST(DijkstraConnector, FollowsAChangedSurface) {
    Surface strip = makeStrip(2);
    SurfacePathSet set(&strip);
    DijkstraConnector dijkstra;
    dijkstra.init(&set, nullptr);
    McDArray<int> vertices;
    ASSERT_TRUE(dijkstra.findPath(&strip, 0, 3, vertices));
    strip.copyData(makeStrip(4));
    ASSERT_TRUE(dijkstra.findPath(&strip, 0, 5, vertices)) << "the graph is rebuilt for the larger strip";
    EXPECT_EQ(vertices.size(), 4);
}

TEST(PathConnectorFactory, RefusesWhatIsNoConnectorAndFillsAMenuFromATclList) {
    McString error;
    EXPECT_EQ(PathConnectorFactory::createConnector("Teleport", nullptr, error), nullptr);
    EXPECT_EQ(error, "there is no path connector named \"Teleport\"");
    EXPECT_EQ(PathConnectorFactory::createConnector("SurfaceNode", nullptr, error), nullptr)
        << "only connector classes";
    HxObject owner;
    HxPortMultiMenu menu(&owner, "connector", 1);
    HxInterpreter::getTheInterpreter().eval("set ::testConnectors {Dijkstra {Two Words}}");
    PathConnectorFactory::initPortConnector(&menu, "::testConnectors");
    ASSERT_EQ(menu.getNum(0), 2);
    EXPECT_STREQ(menu.getLabel(0, 1), "Two Words");
    PathConnectorFactory::initPortConnector(&menu, "::noSuchVariable");
    EXPECT_EQ(menu.getNum(0), 0);
    EXPECT_EQ(menu.getIndex(0), -1);
}

}  // namespace
