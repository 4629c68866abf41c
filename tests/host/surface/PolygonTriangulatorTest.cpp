// Faces of more than three corners: concave ones keep their shape, and what cannot be clipped
// is refused (the reader then fans it) instead of crashing the load.

#include "PolygonTriangulator.h"
#include "Surface.h"
#include "SurfaceIO.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace {

using Corners = std::vector<std::array<double, 3>>;

double signedArea(Corners const& c, std::array<int, 3> const& t) {
    auto const& a = c[size_t(t[0])];
    auto const& b = c[size_t(t[1])];
    auto const& d = c[size_t(t[2])];
    return 0.5 * ((b[0] - a[0]) * (d[1] - a[1]) - (b[1] - a[1]) * (d[0] - a[0]));
}

TEST(PolygonTriangulator, ConcaveFaceIsCoveredExactlyWithItsOrientation) {
    // An L of area 3 in the plane z = 1, counter-clockwise seen from +z.
    const Corners l = {{0, 0, 1}, {2, 0, 1}, {2, 1, 1}, {1, 1, 1}, {1, 2, 1}, {0, 2, 1}};
    std::vector<std::array<int, 3>> triangles;
    ASSERT_TRUE(PolygonTriangulator::triangulate(l, triangles));
    ASSERT_EQ(triangles.size(), 4u);
    double area = 0;
    for (auto const& t : triangles) {
        EXPECT_GT(signedArea(l, t), 0) << "every triangle keeps the face's orientation";
        area += signedArea(l, t);
    }
    EXPECT_NEAR(area, 3.0, 1e-12);
}

TEST(PolygonTriangulator, RefusesWhatItCannotClip) {
    std::vector<std::array<int, 3>> triangles;
    const Corners bowTie = {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_FALSE(PolygonTriangulator::triangulate(bowTie, triangles));
    const Corners line = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    EXPECT_FALSE(PolygonTriangulator::triangulate(line, triangles));
    Corners many;
    for (size_t i = 0; i <= PolygonTriangulator::kMaxCorners; ++i) {
        const double angle = 2 * M_PI * double(i) / double(PolygonTriangulator::kMaxCorners + 1);
        many.push_back({std::cos(angle), std::sin(angle), 0});
    }
    EXPECT_FALSE(PolygonTriangulator::triangulate(many, triangles));
    EXPECT_TRUE(triangles.empty());
}

// Fuzzing found faces whose triangulation crashed the library that did it before.
TEST(PolygonTriangulator, FacesThatOnceCrashedTheLoadAreRead) {
    const std::filesystem::path folder = std::filesystem::path(__FILE__).parent_path() / "../../data/fuzz-findings";
    for (char const* name : {"off-polygon-cdt-null-segv.off", "obj-polygon-cdt-null-segv.obj"}) {
        Surface surface;
        McString error, warnings;
        SurfaceIO::read((folder / name).string().c_str(), surface, error, warnings);
        EXPECT_EQ(std::string(error.c_str()).find('\n'), std::string::npos) << name;
    }
}

}  // namespace
