// Faces of more than three corners: what cannot be clipped is refused (the reader then fans it)
// instead of crashing the load. A concave face read from a file is checked by the reader's tests.

#include "PolygonTriangulator.h"
#include "Surface.h"
#include "SurfaceIO.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace {

using Corners = std::vector<std::array<double, 3>>;

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
