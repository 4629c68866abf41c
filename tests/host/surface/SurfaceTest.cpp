// Derived tables of Surface, checked as properties on the built-in surfaces and on a larger
// grid, plus the mutators and the copy.

#include "Surface.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>

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
// triangles around a point with the corners, and normals are unit length.
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
            const int p = tri.points[i], q = tri.points[(i + 1) % 3];
            const int e = tri.edges[i];
            ASSERT_GE(e, 0);
            EXPECT_EQ(s.findEdge(p, q), e);
            EXPECT_EQ(s.findEdge(q, p), e);
            int const* around = s.getTrianglesOfEdge(e);
            EXPECT_NE(std::find(around, around + s.getNumTrianglesOfEdge(e), t), around + s.getNumTrianglesOfEdge(e));
            const int n = s.neighbours[3 * t + i];
            if (s.getNumTrianglesOfEdge(e) == 2) {
                ASSERT_GE(n, 0);
                EXPECT_EQ(std::count(s.neighbours.begin() + 3 * n, s.neighbours.begin() + 3 * n + 3, t), 1)
                    << "neighbours are symmetric";
                EXPECT_NE(std::find(s.triangles[n].edges, s.triangles[n].edges + 3, e), s.triangles[n].edges + 3);
            } else {
                EXPECT_EQ(n, -1);
            }
        }
        EXPECT_NEAR(s.normals[t].length(), 1.0f, 1e-6f);
    }
    int64_t listed = 0;
    for (int p = 0; p < s.getNumPoints(); ++p) {
        for (int k = s.pointTriangleStart[p]; k < s.pointTriangleStart[p + 1]; ++k) {
            int const* corners = s.triangles[s.pointTriangles[k]].points;
            EXPECT_NE(std::find(corners, corners + 3, p), corners + 3) << "point " << p;
            ++listed;
        }
    }
    EXPECT_EQ(listed, 3 * s.triangles.size()) << "every corner is listed once";
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

TEST(Surface, CubeHasEighteenEdgesOfTwoTrianglesAndOutwardNormals) {
    Surface cube = makeCube();
    EXPECT_EQ(cube.getNumEdges(), 18);
    for (int e = 0; e < cube.getNumEdges(); ++e) EXPECT_EQ(cube.getNumTrianglesOfEdge(e), 2);
    const McVec3f center(0.5f, 0.5f, 0.5f);
    for (int t = 0; t < cube.getNumTriangles(); ++t) {
        int const* p = cube.triangles[t].points;
        const McVec3f centroid = (cube.points[p[0]] + cube.points[p[1]] + cube.points[p[2]]) / 3.0f;
        EXPECT_GT(cube.normals[t].dot(centroid - center), 0) << "triangle " << t;
    }
    // Corners 0 and 7 end the diagonal cuts of their three sides, so they touch six triangles.
    for (int p = 0; p < 8; ++p)
        EXPECT_EQ(cube.pointTriangleStart[p + 1] - cube.pointTriangleStart[p], p == 0 || p == 7 ? 6 : 4) << p;
}

TEST(Surface, FindEdgeAnswersOnlyForPointsThatShareAnEdge) {
    Surface cube = makeCube();
    EXPECT_EQ(cube.findEdge(0, 7), -1) << "body diagonal";
    EXPECT_EQ(cube.findEdge(3, 3), -1);
    EXPECT_EQ(cube.findEdge(0, 99), -1);
    EXPECT_GE(cube.findEdge(0, 3), 0) << "diagonal cut of the side z = 0";
    Surface fresh;
    fresh.points = makeQuad().points;
    fresh.triangles.append(Triangle(0, 1, 2));
    EXPECT_EQ(fresh.findEdge(0, 1), -1) << "no edges before createAllEdges";
}

// A grid in shuffled triangle order exercises the bucketing with many points per bucket.
TEST(Surface, LargeShuffledGridKeepsItsTopology) {
    const int n = 120;
    Surface grid;
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x <= n; ++x) grid.points.append(McVec3f(float(x), float(y), 0));
    auto at = [n](int x, int y) { return y * (n + 1) + x; };
    for (int y = 0; y < n; ++y) {
        for (int x = 0; x < n; ++x) {
            grid.triangles.append(Triangle(at(x, y), at(x + 1, y), at(x + 1, y + 1)));
            grid.triangles.append(Triangle(at(x, y), at(x + 1, y + 1), at(x, y + 1)));
        }
    }
    std::shuffle(grid.triangles.begin(), grid.triangles.end(), std::mt19937(7));
    grid.buildAllTables();
    expectConsistentTables(grid);
    EXPECT_EQ(eulerCharacteristic(grid), 1);
    EXPECT_EQ(countBorderEdges(grid), 4 * n);
    EXPECT_EQ(grid.getNumEdges(), 3 * n * n + 2 * n);
}

TEST(Surface, CreateAllEdgesRebuildsTablesThatNoLongerMatchTheTriangles) {
    Surface s = makeStrip(2);
    ASSERT_EQ(s.getNumEdges(), 5);
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

TEST(Surface, NeighbourAcrossAnEdgeOfThreeTrianglesIsNone) {
    Surface fin;
    fin.points = {McVec3f(0, 0, 0), McVec3f(1, 0, 0), McVec3f(0, 1, 0), McVec3f(0, -1, 0), McVec3f(0, 0, 1)};
    fin.triangles = {Triangle(0, 1, 2), Triangle(1, 0, 3), Triangle(0, 1, 4)};
    fin.buildAllTables();
    const int shared = fin.findEdge(0, 1);
    ASSERT_GE(shared, 0);
    EXPECT_EQ(fin.getNumTrianglesOfEdge(shared), 3);
    for (int t = 0; t < 3; ++t)
        for (int i = 0; i < 3; ++i) EXPECT_EQ(fin.neighbours[3 * t + i], -1);
    EXPECT_EQ(fin.countNonManifoldEdges(), 1);
}

TEST(Surface, TwoFansTouchingAtAPointMakeItNonManifold) {
    Surface bowtie;
    bowtie.points = {McVec3f(0, 0, 0), McVec3f(1, 0, 0), McVec3f(1, 1, 0), McVec3f(-1, 0, 0), McVec3f(-1, -1, 0)};
    bowtie.triangles = {Triangle(0, 1, 2), Triangle(0, 3, 4)};
    bowtie.buildAllTables();
    EXPECT_EQ(bowtie.countNonManifoldPoints(), 1);
    EXPECT_EQ(bowtie.countNonManifoldEdges(), 0);
    EXPECT_EQ(makeFan(5).countNonManifoldPoints(), 0) << "a closed fan around an interior point is one sheet";
}

TEST(Surface, TrianglesWithoutAreaAreCountedAndGetAZeroNormal) {
    Surface s = makeQuad();
    s.points.append(McVec3f(2, 0, 0));
    s.points.append(McVec3f(2, 0, 0));
    s.triangles.append(Triangle(0, 1, 4));  // collinear
    s.triangles.append(Triangle(1, 4, 5));  // two corners at one place
    s.computeNormalsPerTriangle();
    EXPECT_EQ(s.countZeroAreaTriangles(), 2);
    EXPECT_EQ(s.normals[2], McVec3f());
    EXPECT_EQ(s.normals[3], McVec3f());
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
    EXPECT_TRUE(s.edges.empty());
    EXPECT_TRUE(s.neighbours.empty());
    EXPECT_EQ(s.triangles[0].edges[0], -1);
    s.buildAllTables();
    expectConsistentTables(s);
    EXPECT_EQ(s.removeObsoleteTriangles(), 0);
    EXPECT_FALSE(s.edges.empty()) << "nothing removed, nothing cleared";
}

TEST(Surface, CopyDataMakesAnIndependentCopyOfEverything) {
    HxParamBundle parameters;
    parameters.set("Source", "cube");
    Surface original = makeCube();
    original.parameters = parameters;
    Surface copy(nullptr);
    copy.copyData(original);
    EXPECT_EQ(copy.points, original.points);
    EXPECT_EQ(copy.neighbours, original.neighbours);
    EXPECT_EQ(copy.pointTriangles, original.pointTriangles);
    EXPECT_EQ(copy.parameters, parameters);
    copy.points[0] = McVec3f(5, 5, 5);
    copy.triangles[0].points[0] = 7;
    copy.parameters.set("Source", "changed");
    EXPECT_EQ(original.points[0], McVec3f(0, 0, 0));
    EXPECT_EQ(original.triangles[0].points[0], 0);
    EXPECT_STREQ(original.parameters.find("Source"), "cube");
    copy.copyData(copy);
    EXPECT_EQ(copy.points[0], McVec3f(5, 5, 5)) << "copying onto itself changes nothing";
}

TEST(Surface, BoundingBoxSpansAllPoints) {
    McVec3f min, max;
    Surface fan = makeFan(4);
    fan.points.append(McVec3f(0, 0, -3));  // a point of no triangle still counts
    fan.getBoundingBox(min, max);
    EXPECT_EQ(min, McVec3f(-1, -1, -3));
    EXPECT_NEAR(max.x, 1, 1e-6);
    EXPECT_NEAR(max.y, 1, 1e-6);
    EXPECT_EQ(max.z, 0);
    Surface().getBoundingBox(min, max);
    EXPECT_EQ(min, McVec3f());
    EXPECT_EQ(max, McVec3f());
}

TEST(Surface, KeepsItsOwnCopyOfTheParameterBundle) {
    HxParamBundle parameters("Parameters");
    parameters.set("Scale", 0.1);
    parameters.getBundle("Materials", true)->set("Inside", "bone");
    Surface s(&parameters);
    parameters.getBundle("Materials")->set("Inside", "air");
    parameters.set("Scale", 2.0);
    double scale = 0;
    ASSERT_TRUE(s.parameters.findNum("Scale", scale));
    EXPECT_EQ(scale, 0.1) << "numbers read back exactly";
    ASSERT_NE(s.parameters.getBundle("Materials"), nullptr);
    EXPECT_STREQ(s.parameters.getBundle("Materials")->find("Inside"), "bone") << "nested bundles are deep copies";
}

TEST(HxParamBundle, ValuesKeepTheirOrderAndNonNumbersAreNotNumbers) {
    HxParamBundle b;
    b.set("a", "1");
    b.set("b", "x2");
    b.set("a", "3");
    ASSERT_EQ(b.getNumValues(), 2);
    EXPECT_STREQ(b.getValueName(0), "a");
    EXPECT_STREQ(b.getValue(0), "3");
    double value = 0;
    EXPECT_FALSE(b.findNum("b", value));
    EXPECT_FALSE(b.findNum("missing", value));
    EXPECT_EQ(b.find("missing"), nullptr);
    EXPECT_TRUE(b.remove("a"));
    EXPECT_FALSE(b.remove("a"));
    EXPECT_EQ(b.getBundle("none"), nullptr);
    EXPECT_EQ(b.getBundle("sub", true), b.getBundle("sub", true)) << "made once";
    EXPECT_TRUE(b.removeBundle("sub"));
}

}  // namespace
