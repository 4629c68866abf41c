// Derived tables of Surface, checked as properties on the built-in surfaces and on a real
// mesh, plus the mutators and the copy.

#include "Surface.h"
#include "SurfaceIO.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <vector>

namespace {

using Triangle = Surface::Triangle;

int countBorderEdges(Surface const& s) {
    int n = 0;
    for (int e = 0; e < s.getNumEdges(); ++e) n += s.getNumTrianglesOfEdge(e) == 1;
    return n;
}

int eulerCharacteristic(Surface const& s) { return s.getNumPoints() - s.getNumEdges() + s.getNumTriangles(); }

// Every table agrees with the triangles: edges with the triangle sides, the triangles of an
// edge with the triangles that use it, neighbours with shared edges (both ways), the
// triangles around a point with the corners (each corner listed once), and normals are unit
// length.
void expectConsistentTables(Surface const& s) {
    ASSERT_EQ(s.edgeTriangleStart.size(), s.edges.size() + 1);
    ASSERT_EQ(s.neighbours.size(), 3 * s.triangles.size());
    ASSERT_EQ(s.normals.size(), s.triangles.size());
    ASSERT_EQ(s.pointTriangleStart.size(), s.points.size() + 1);
    std::set<std::pair<int, int>> pairs;
    for (Surface::Edge const& e : s.edges) {
        EXPECT_LT(e.points[0], e.points[1]);
        EXPECT_TRUE(pairs.insert({e.points[0], e.points[1]}).second) << "each point pair is one edge";
    }
    for (int t = 0; t < s.getNumTriangles(); ++t) {
        Surface::Triangle const& tri = s.triangles[t];
        for (int i = 0; i < 3; ++i) {
            const int e = tri.edges[i];
            ASSERT_GE(e, 0);
            EXPECT_EQ(s.findEdge(tri.points[i], tri.points[(i + 1) % 3]), e);
            EXPECT_EQ(s.findEdge(tri.points[(i + 1) % 3], tri.points[i]), e);
            int const* around = s.getTrianglesOfEdge(e);
            EXPECT_NE(std::find(around, around + s.getNumTrianglesOfEdge(e), t), around + s.getNumTrianglesOfEdge(e));
            const int n = s.neighbours[3 * t + i];
            if (s.getNumTrianglesOfEdge(e) != 2) {
                EXPECT_EQ(n, -1);
                continue;
            }
            ASSERT_GE(n, 0);
            EXPECT_EQ(std::count(s.neighbours.begin() + 3 * n, s.neighbours.begin() + 3 * n + 3, t), 1)
                << "neighbours are symmetric";
            EXPECT_NE(std::find(s.triangles[n].edges, s.triangles[n].edges + 3, e), s.triangles[n].edges + 3);
        }
        EXPECT_NEAR(s.normals[t].length(), 1.0f, 1e-6f);
    }
    std::vector<int> cornerCount(s.points.size());
    for (Surface::Triangle const& tri : s.triangles)
        for (int p : tri.points) ++cornerCount[size_t(p)];
    for (int p = 0; p < s.getNumPoints(); ++p) {
        EXPECT_EQ(s.pointTriangleStart[p + 1] - s.pointTriangleStart[p], cornerCount[size_t(p)]) << "point " << p;
        for (int k = s.pointTriangleStart[p]; k < s.pointTriangleStart[p + 1]; ++k) {
            int const* corners = s.triangles[s.pointTriangles[k]].points;
            EXPECT_NE(std::find(corners, corners + 3, p), corners + 3) << "point " << p;
        }
    }
}

struct Shape {
    char const* name;
    std::function<Surface()> make;
    int euler;
    int border;  // edges with one triangle
};

void PrintTo(Shape const& shape, std::ostream* out) { *out << shape.name; }

class BuiltInSurface : public testing::TestWithParam<Shape> {};

TEST_P(BuiltInSurface, TablesAreConsistentAndTopologyIsRight) {
    Surface s = GetParam().make();
    expectConsistentTables(s);
    EXPECT_EQ(eulerCharacteristic(s), GetParam().euler);
    EXPECT_EQ(countBorderEdges(s), GetParam().border);
    EXPECT_EQ(s.countNonManifoldEdges(), 0);
    EXPECT_EQ(s.countNonManifoldPoints(), 0);
    EXPECT_EQ(s.countZeroAreaTriangles(), 0);
}

INSTANTIATE_TEST_SUITE_P(Surface, BuiltInSurface,
                         testing::Values(Shape{"quad", makeQuad, 1, 4}, Shape{"fan", [] { return makeFan(7); }, 1, 7},
                                         Shape{"strip", [] { return makeStrip(5); }, 1, 7},
                                         Shape{"cube", makeCube, 2, 0}, Shape{"tetrahedron", makeTetrahedron, 2, 0}),
                         [](testing::TestParamInfo<Shape> const& info) { return std::string(info.param.name); });

TEST(Surface, CubeHasOutwardNormalsAndNoEdgeBetweenPointsThatShareNone) {
    Surface cube = makeCube();
    for (int t = 0; t < cube.getNumTriangles(); ++t) {
        int const* p = cube.triangles[t].points;
        const McVec3f centroid = (cube.points[p[0]] + cube.points[p[1]] + cube.points[p[2]]) / 3.0f;
        EXPECT_GT(cube.normals[t].dot(centroid - McVec3f(0.5f, 0.5f, 0.5f)), 0) << "triangle " << t;
    }
    EXPECT_EQ(cube.findEdge(0, 7), -1) << "body diagonal";
    EXPECT_EQ(cube.findEdge(3, 3), -1);
    EXPECT_EQ(cube.findEdge(0, 99), -1);
    Surface bare;
    bare.points = cube.points;
    bare.triangles = cube.triangles;
    EXPECT_EQ(bare.findEdge(0, 1), -1) << "no edges before createAllEdges";
}

// Thousands of triangles in file order exercise the bucketing of sides by their lower point.
// The mesh's counts and bounding box are checked by the surface script test.
TEST(Surface, RealMeshLoadsCleanlyAsAClosedManifoldWithConsistentTables) {
    Surface elephant;
    McString error, warnings;
    ASSERT_TRUE(SurfaceIO::read(meshFile("elephant.off").c_str(), elephant, error, warnings)) << error;
    EXPECT_EQ(warnings, "");
    expectConsistentTables(elephant);
    EXPECT_EQ(countBorderEdges(elephant), 0);
    EXPECT_EQ(elephant.countNonManifoldEdges() + elephant.countNonManifoldPoints(), 0);
}

TEST(Surface, CreateAllEdgesRebuildsTablesThatNoLongerMatchTheTriangles) {
    Surface s = makeStrip(2);
    s.points.append(McVec3f(2, 0, 0));
    s.triangles.append(Triangle(2, 4, 3));
    s.createAllEdges(0);
    EXPECT_EQ(s.getNumEdges(), 7) << "sides 2-4 and 4-3 are new";
    EXPECT_EQ(s.findEdge(2, 4), s.triangles.last().edges[0]);
    EXPECT_EQ(s.getNumTrianglesOfEdge(s.findEdge(2, 3)), 2);
    s.triangles.last().points[2] = 1;  // same count, other corner
    s.createAllEdges(0);
    EXPECT_EQ(s.findEdge(3, 4), -1);
    EXPECT_GE(s.findEdge(1, 4), 0);
}

// Counting non-manifold edges and points and zero-area triangles is checked through the warning
// that a file with such defects loads with.
TEST(Surface, AnEdgeOfThreeTrianglesHasNoNeighboursAndATriangleWithoutAreaNoNormal) {
    Surface fin;  // three triangles on the edge 0-1
    fin.points = {McVec3f(0, 0, 0), McVec3f(1, 0, 0), McVec3f(0, 1, 0), McVec3f(0, -1, 0), McVec3f(0, 0, 1)};
    fin.triangles = {Triangle(0, 1, 2), Triangle(1, 0, 3), Triangle(0, 1, 4)};
    fin.buildAllTables();
    expectConsistentTables(fin);
    EXPECT_EQ(fin.getNumTrianglesOfEdge(fin.findEdge(0, 1)), 3);
    fin.points.append(McVec3f(2, 0, 0));
    fin.triangles.append(Triangle(0, 1, 5));  // collinear
    fin.computeNormalsPerTriangle();
    EXPECT_EQ(fin.normals[3], McVec3f());
}

TEST(Surface, RemoveObsoleteTrianglesKeepsTheOthersInOrderAndClearsTables) {
    Surface s = makeStrip(3);
    s.triangles.insert(1, Triangle(0, 0, 1));
    s.triangles.append(Triangle(1, 2, 99));
    s.triangles.append(Triangle(3, -1, 2));
    s.createAllEdges(1);
    EXPECT_EQ(s.removeObsoleteTriangles(), 3);
    Surface expected = makeStrip(3);
    ASSERT_EQ(s.getNumTriangles(), expected.getNumTriangles());
    for (int t = 0; t < s.getNumTriangles(); ++t)
        EXPECT_TRUE(std::equal(s.triangles[t].points, s.triangles[t].points + 3, expected.triangles[t].points));
    EXPECT_TRUE(s.edges.empty() && s.neighbours.empty());
    EXPECT_EQ(s.triangles[0].edges[0], -1);
    s.buildAllTables();
    EXPECT_EQ(s.removeObsoleteTriangles(), 0);
    EXPECT_FALSE(s.edges.empty()) << "nothing removed, nothing cleared";
}

TEST(Surface, CopiesAreIndependentDownToNestedParameters) {
    HxParamBundle parameters("Parameters");
    parameters.getBundle("Materials", true)->set("Inside", "bone");
    Surface original(&parameters);
    parameters.getBundle("Materials")->set("Inside", "air");
    ASSERT_NE(original.parameters.getBundle("Materials"), nullptr);
    EXPECT_STREQ(original.parameters.getBundle("Materials")->find("Inside"), "bone") << "the surface keeps a copy";
    original.copyData(makeCube());  // takes the cube's empty parameters as well
    original.parameters.getBundle("Materials", true)->set("Inside", "bone");
    Surface copy(nullptr);
    copy.copyData(original);
    EXPECT_EQ(copy.points, original.points);
    EXPECT_EQ(copy.parameters, original.parameters);
    expectConsistentTables(copy);
    copy.buildAllTables();
    EXPECT_TRUE(copy.points.isSharedWith(original.points) && copy.triangles.isSharedWith(original.triangles))
        << "a copy shares the arrays, and rebuilding the derived tables only reads the primary ones";
    copy.points[0] = McVec3f(5, 5, 5);
    copy.parameters.getBundle("Materials")->set("Inside", "air");
    EXPECT_EQ(original.points[0], McVec3f(0, 0, 0));
    EXPECT_STREQ(original.parameters.getBundle("Materials")->find("Inside"), "bone");
    copy.copyData(copy);
    EXPECT_EQ(copy.points[0], McVec3f(5, 5, 5)) << "copying onto itself changes nothing";
}

TEST(Surface, BoundingBoxSpansAllPointsAndIsZeroWithoutThem) {
    McVec3f min, max;
    Surface fan = makeFan(4);
    fan.points.append(McVec3f(0, 0, -3));  // a point of no triangle still counts
    fan.getBoundingBox(min, max);
    EXPECT_EQ(min, McVec3f(-1, -1, -3));
    Surface().getBoundingBox(min, max);
    EXPECT_EQ(max, McVec3f());
}

TEST(HxParamBundle, ValuesKeepTheirOrderAndNumbersReadBackExactly) {
    HxParamBundle b;
    b.set("a", "1");
    b.set("b", "x2");
    b.set("a", "3");
    b.set("scale", 0.1);
    ASSERT_EQ(b.getNumValues(), 3);
    EXPECT_STREQ(b.getValueName(0), "a");
    EXPECT_STREQ(b.getValue(0), "3");
    double value = 0;
    EXPECT_TRUE(b.findNum("scale", value));
    EXPECT_EQ(value, 0.1);
    EXPECT_FALSE(b.findNum("b", value)) << "not a number";
    EXPECT_EQ(b.getBundle("sub", true), b.getBundle("sub", true)) << "made once";
}

}  // namespace
